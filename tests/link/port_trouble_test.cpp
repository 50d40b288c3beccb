#include "link/port_trouble.h"

#include <gtest/gtest.h>

#include "link/connecting.h"
#include "link/server_radio.h"
#include "support/virtual_console.h"

namespace {

using comm::PortTrouble;
using testing_support::BasicSite;
using testing_support::VirtualConsole;

class PortTroubleTest : public ::testing::Test {
 protected:
    PortTroubleTest() {
        condition.Device = "/dev/ttyUSB0";
        condition.Rights.Operator = "ann";
        condition.Rights.Group = "dialout";
    }

    [[nodiscard]] std::string Text(const std::string& reason = {}) const {
        return comm::PortTroubleText("COM5", condition, known, reason);
    }

    PortCondition condition;
    Enumerate::PortList known;
};

TEST_F(PortTroubleTest, NamesTheDeviceThatIsMissingAndThosePresent) {
    condition.Exists = false;
    Enumerate::AddPortEntry(known, "COM1", "Serial port (/dev/ttyS0)");
    Enumerate::AddPortEntry(known, "COM6", "Converter (/dev/ttyUSB1)");
    EXPECT_EQ(comm::TroubleOf(condition), PortTrouble::Missing);
    EXPECT_EQ(Text(),
              "There is no device COM5 (/dev/ttyUSB0): it is unplugged or switched off, or the "
              "radio is on another port.\nThese ports are there:\n"
              "    COM1 - Serial port (/dev/ttyS0)\n    COM6 - Converter (/dev/ttyUSB1)");
}

TEST_F(PortTroubleTest, SaysSoWhenNoPortIsThereAtAll) {
    condition.Exists = false;
    EXPECT_TRUE(Text().ends_with("\nThis computer shows no serial port by name."));
}

TEST_F(PortTroubleTest, WhatIsNoSerialPortIsSaidToBeNone) {
    condition.IsSerial = false;
    EXPECT_EQ(comm::TroubleOf(condition), PortTrouble::NotSerial);
    EXPECT_TRUE(Text().starts_with("COM5 (/dev/ttyUSB0) is no serial port.\n"));
}

TEST_F(PortTroubleTest, TellsTheGroupToJoinAndTheCommandForIt) {
    condition.Rights.MayOpen = false;
    EXPECT_EQ(comm::TroubleOf(condition), PortTrouble::NotAllowed);
    EXPECT_EQ(Text(),
              "The account ann may not use COM5 (/dev/ttyUSB0).\nThe group dialout may. Join it, "
              "then log out and in again:\n    sudo usermod -aG dialout ann\n");
}

TEST_F(PortTroubleTest, WhoJoinedTheGroupInThisSessionLogsInAgain) {
    condition.Rights.MayOpen = false;
    condition.Rights.InGroup = true;
    EXPECT_TRUE(Text().ends_with("log out and in again."));
    EXPECT_EQ(Text().find("usermod"), std::string::npos);
}

TEST_F(PortTroubleTest, WithoutAGroupOnlyAnAdministratorHelps) {
    condition.Rights.MayOpen = false;
    condition.Rights.Group.clear();
    EXPECT_TRUE(Text().ends_with("Only an administrator can allow it."));
}

TEST_F(PortTroubleTest, NamesThatAShellWouldTakeApartAreQuoted) {
    condition.Rights.MayOpen = false;
    condition.Rights.Operator = "ann o'neil";
    EXPECT_NE(Text().find("-aG dialout 'ann o'\\''neil'\n"), std::string::npos) << Text();
    condition.Rights.Operator.clear();
    EXPECT_NE(Text().find("-aG dialout $USER\n"), std::string::npos) << Text();
}

TEST_F(PortTroubleTest, NamesTheProgramsThatHaveThePort) {
    condition.Users = {{1234, "minicom"}, {77, ""}};
    EXPECT_EQ(comm::TroubleOf(condition), PortTrouble::InUse);
    EXPECT_EQ(Text(),
              "COM5 (/dev/ttyUSB0) is in use by minicom (process 1234), process 77. End it and try "
              "again.");
}

TEST_F(PortTroubleTest, ALockOfARunningProgramNamesIt) {
    condition.Lock = PortLock{"/var/lock/LCK..ttyUSB0", {99, "cu"}, true};
    EXPECT_EQ(comm::TroubleOf(condition), PortTrouble::InUse);
    EXPECT_EQ(Text(), "COM5 (/dev/ttyUSB0) is in use by cu (process 99). End it and try again.");
}

TEST_F(PortTroubleTest, APortOfAProgramThatTheSystemDoesNotNameTellsHowToFindIt) {
    condition.Busy = true;
    EXPECT_EQ(comm::TroubleOf(condition), PortTrouble::InUse);
    EXPECT_NE(Text().find("\n    sudo fuser -v /dev/ttyUSB0\n"), std::string::npos) << Text();
}

TEST_F(PortTroubleTest, ALockLeftBehindIsNamedWithTheCommandThatRemovesIt) {
    condition.Lock = PortLock{"/var/lock/LCK..ttyUSB0", {4711, ""}, false};
    EXPECT_EQ(comm::TroubleOf(condition), PortTrouble::LockLeft);
    EXPECT_EQ(Text(),
              "COM5 (/dev/ttyUSB0) is free, but a lock was left behind by process 4711, which has "
              "ended. Remove it:\n    sudo rm /var/lock/LCK..ttyUSB0\n");
    condition.Lock->Owner.Process = 0;
    EXPECT_NE(Text().find("by a program that it does not name. "), std::string::npos) << Text();
}

TEST_F(PortTroubleTest, AProgramThatHasThePortCountsMoreThanALockLeftBehind) {
    condition.Lock = PortLock{"/var/lock/LCK..ttyUSB0", {4711, ""}, false};
    condition.Users = {{12, "cu"}};
    EXPECT_EQ(comm::TroubleOf(condition), PortTrouble::InUse);
    EXPECT_NE(Text().find("cu (process 12)"), std::string::npos);
}

TEST_F(PortTroubleTest, WhatNothingExplainsIsToldInTheSystemsWords) {
    EXPECT_EQ(comm::TroubleOf(condition), PortTrouble::Unknown);
    EXPECT_EQ(Text("Input/output error"), "The system says: Input/output error");
    EXPECT_EQ(Text(), "");
}

TEST_F(PortTroubleTest, APortWithoutADeviceOfItsOwnGoesByItsName) {
    condition.Device.clear();
    condition.Busy = true;
    EXPECT_EQ(Text(),
              "COM5 is in use by another program, which the system does not name to you. Close it "
              "and try again.");
}

// ----- where it is told

class PortThatDoesNotOpen : public ::testing::Test {
 protected:
    PortThatDoesNotOpen() {
        entry_ = console_.AddSite(BasicSite(1));
        console_.Outside.Port.Missing = {1};
    }

    VirtualConsole console_;
    int entry_ = 0;
    testing_support::ScriptedBoxes& boxes_ = console_.Outside.Boxes;
    testing_support::ScriptedInquiry& inquiry_ = console_.Outside.Inquiry;
};

TEST_F(PortThatDoesNotOpen, IsExplainedBelowTheMessageOfAConnect) {
    inquiry_.Conditions[1] = {.Device = "/dev/ttyS0", .Users = {{8, "cu"}}};
    comm::ConnectDialog dialog;
    comm::Connect(console_.Radio(), dialog, [](Pointer) {});
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Text,
              "Error opening port.  If this port exists, it \nmay be in use by another "
              "application.");
    EXPECT_EQ(boxes_.Shown[0].Details,
              "COM1 (/dev/ttyS0) is in use by cu (process 8). End it and try again.");
}

TEST_F(PortThatDoesNotOpen, IsExplainedBelowTheMessageOfAnOperation) {
    console_.State.LinkRecord.LinkState = LinkDisconnected;
    console_.State.LinkRecord.Connected = True;
    static_cast<void>(comm::SelectClient(console_.Radio(), console_.State.Book.Entries[entry_]));
    ASSERT_GE(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Title, "Connect Error");
    EXPECT_EQ(boxes_.Shown[0].Details, "The system says: no such port");
}

TEST_F(PortThatDoesNotOpen, ListsThePortsThatTheComputerHas) {
    inquiry_.Conditions[1] = {.Device = "/dev/ttyS0", .Exists = false};
    const std::string device = "SYSTEM\\CurrentControlSet\\Enum\\FTDIBUS\\A\\0";
    console_.Outside.LocalMachine.Set(device, "FriendlyName", "Converter (COM5)");
    console_.Outside.LocalMachine.Set(device + "\\Device Parameters", "PortName", "COM5");
    comm::ConnectDialog dialog;
    comm::Connect(console_.Radio(), dialog, [](Pointer) {});
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_NE(boxes_.Shown[0].Details.find("\n    COM5 - Converter"), std::string::npos);
}

TEST_F(PortThatDoesNotOpen, WithoutANumberNothingIsAskedOfTheSystem) {
    console_.State.SettingsRecord.PortName = "nonsense";
    comm::ConnectDialog dialog;
    comm::Connect(console_.Radio(), dialog, [](Pointer) {});
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Details, "");
    EXPECT_EQ(inquiry_.Asked, 0);
}

TEST_F(PortThatDoesNotOpen, AFailureOfAnEarlierTryIsNotToldOfALaterOne) {
    comm::ConnectDialog dialog;
    comm::Connect(console_.Radio(), dialog, [](Pointer) {});
    console_.State.SettingsRecord.PortName = "nonsense";
    comm::Connect(console_.Radio(), dialog, [](Pointer) {});
    ASSERT_EQ(boxes_.Shown.size(), 2U);
    EXPECT_NE(boxes_.Shown[0].Details, "");
    EXPECT_EQ(boxes_.Shown[1].Details, "");
}

}  // namespace
