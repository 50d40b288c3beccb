#include "link/server_radio.h"

#include <gtest/gtest.h>

#include "link/port.h"
#include "support/virtual_console.h"

namespace {

using simulator::CutAfter;
using simulator::FaultKind;
using simulator::Plain;
using simulator::WrongAck;
using testing_support::BasicSite;
using testing_support::Millisecond;
using testing_support::VirtualConsole;
using Commands = std::vector<simulator::Bytes>;

const simulator::Bytes Enter{'A', 'T', '+', '+', '+', 0x0D};
const simulator::Bytes Leave{0xCC, 'A', 'T', 'O', 0x0D};
constexpr std::uint8_t ModeChange = 'A';

class ServerRadioTest : public ::testing::Test {
 protected:
    ServerRadioTest() { OpenPort(); }

    void OpenPort() {
        ASSERT_TRUE(comm::OpenPort(link_, console_.View, 1, "38400,N,8,1"));
        link_.LinkState = LinkConnecting;
        link_.Connected = True;
    }

    /// A connected console whose radio is on client 1, with the record of it cleared.
    void SelectFirst() {
        console_.AddSite(BasicSite(1));
        ASSERT_TRUE(Select(1));
        console_.Outside.Time.Run(testing_support::Second);
        port_.ClearInBuffer();
        network_.ClearRecord();
    }

    bool Select(int entry) {
        return comm::SelectClient(console_.Radio(), console_.State.Book.Entries[entry]);
    }

    void ExpectLinkDownBox() {
        ASSERT_EQ(boxes_.Shown.size(), 1U);
        EXPECT_EQ(boxes_.Shown[0].Text, "Error: unable to communicate with server radio");
        EXPECT_EQ(boxes_.Shown[0].Title, "Server Connection Error");
        EXPECT_EQ(boxes_.Shown[0].Icon, BoxIcon::Stop);
        EXPECT_EQ(boxes_.Shown[0].Buttons, BoxButtons::Ok);
    }

    VirtualConsole console_;
    Link& link_ = console_.State.LinkRecord;
    testing_support::VirtualPort& port_ = console_.Outside.Port;
    simulator::Network& network_ = console_.Outside.Network;
    testing_support::ScriptedBoxes& boxes_ = console_.Outside.Boxes;
};

TEST_F(ServerRadioTest, EntersCommandMode) {
    EXPECT_TRUE(comm::EnterCommandMode(link_));
    EXPECT_EQ(link_.LinkState, LinkCommand);
    EXPECT_EQ(network_.Written(), Enter);
}

TEST_F(ServerRadioTest, ThreeBytesInsteadOfFourCountAsNoReply) {
    network_.RadioFaults().OnRequest(ModeChange, CutAfter(3));
    EXPECT_TRUE(comm::EnterCommandMode(link_)) << "the radio is left and asked again";
    EXPECT_EQ(network_.RadioCommands(), (Commands{Enter, Leave, Enter}));
}

TEST_F(ServerRadioTest, ARadioInCommandModeIsSentOutAndAskedAgain) {
    network_.Radio().SetCommandMode(true);
    std::vector<std::uint8_t> states;
    console_.Outside.Time.In(900 * Millisecond, [&] { states.push_back(link_.LinkState); });
    EXPECT_TRUE(comm::EnterCommandMode(link_));
    EXPECT_EQ(states, std::vector<std::uint8_t>{LinkNormal}) << "CC DAT says it has left";
    EXPECT_EQ(network_.RadioCommands(), (Commands{Leave, Enter}));
}

TEST_F(ServerRadioTest, ASilentRadioIsAskedThreeTimes) {
    network_.Radio().Silence();
    EXPECT_FALSE(comm::EnterCommandMode(link_));
    EXPECT_EQ(link_.LinkState, LinkConnecting);
    simulator::Bytes expected;
    for (int i = 0; i < 3; ++i) {
        expected.insert(expected.end(), Enter.begin(), Enter.end());
        expected.insert(expected.end(), Leave.begin(), Leave.end());
    }
    EXPECT_EQ(network_.Written(), expected);
}

TEST_F(ServerRadioTest, LeavingLeavesTheReplyForTheNextPurge) {
    ASSERT_TRUE(comm::EnterCommandMode(link_));
    EXPECT_TRUE(comm::LeaveCommandMode(link_));
    EXPECT_EQ(link_.LinkState, LinkNormal);
    EXPECT_EQ(port_.InBufferCount(), 4);
}

TEST_F(ServerRadioTest, LeavingIsTrueEvenWithoutAReply) {
    network_.Radio().Silence();
    EXPECT_TRUE(comm::LeaveCommandMode(link_));
    EXPECT_EQ(link_.LinkState, LinkNormal);
}

TEST_F(ServerRadioTest, ReadsTheSystemID) {
    network_.Radio().SetSystemId(42);
    ASSERT_TRUE(comm::EnterCommandMode(link_));
    network_.ClearRecord();
    EXPECT_EQ(comm::ReadServerSystemID(link_), 42);
    EXPECT_EQ(network_.Written(), (simulator::Bytes{0xCC, 0xC0, 0x76, 0x01}));
}

TEST_F(ServerRadioTest, ASystemIDWithNoReplyIs255) {
    ASSERT_TRUE(comm::EnterCommandMode(link_));
    network_.Radio().Silence();
    EXPECT_EQ(comm::ReadServerSystemID(link_), 255);
}

TEST_F(ServerRadioTest, SetsTheChannelFromNormalMode) {
    link_.LinkState = LinkNormal;
    EXPECT_TRUE(comm::SetServerChannel(link_, boxes_, 0x21));
    EXPECT_EQ(network_.RadioCommands(), (Commands{Enter, {0xCC, 0x02, 0x21}}));
    EXPECT_EQ(network_.Radio().Channel(), 0x21);
    EXPECT_EQ(link_.LinkState, LinkCommand);
    EXPECT_EQ(link_.CommBusy, False);
}

TEST_F(ServerRadioTest, AWrongEchoOfTheChannelTakesTheLinkDown) {
    network_.RadioFaults().OnRequest(0x02, simulator::CorruptByte(1));
    EXPECT_FALSE(comm::SetServerChannel(link_, boxes_, 0x21));
    ExpectLinkDownBox();
    EXPECT_EQ(link_.LinkState, LinkDisconnected);
    EXPECT_FALSE(port_.PortOpen());
    EXPECT_EQ(link_.CommBusy, False);
}

TEST_F(ServerRadioTest, ABusyOrClosedLinkRefusesTheChannelWithTheMessageAlone) {
    link_.CommBusy = True;
    EXPECT_FALSE(comm::SetServerChannel(link_, boxes_, 0x21));
    ExpectLinkDownBox();
    EXPECT_TRUE(port_.PortOpen()) << "the link is untouched";
    EXPECT_EQ(link_.LinkState, LinkConnecting);
    link_.CommBusy = False;
    link_.LinkState = LinkDisconnected;
    EXPECT_FALSE(comm::SetServerChannel(link_, boxes_, 0x21));
    EXPECT_EQ(boxes_.Shown.size(), 2U);
    EXPECT_TRUE(network_.Written().empty());
}

TEST_F(ServerRadioTest, SetsTheMac) {
    EXPECT_TRUE(comm::SetServerMAC(link_, boxes_, {0x1F, 0x2E, 0x3D}));
    EXPECT_EQ(network_.RadioCommands().back(), (simulator::Bytes{0xCC, 0x10, 0x1F, 0x2E, 0x3D}));
}

TEST_F(ServerRadioTest, StrayBytesOfALoggerAreThoseOfTheClientThatTheRadioLeaves) {
    link_.StrayInput = True;
    ASSERT_TRUE(comm::SetServerChannel(link_, boxes_, 0x21));
    EXPECT_EQ(link_.StrayInput, False);
    link_.StrayInput = True;
    ASSERT_TRUE(comm::SetServerMAC(link_, boxes_, {0x1F, 0x2E, 0x3D}));
    EXPECT_EQ(link_.StrayInput, False);
}

TEST_F(ServerRadioTest, SelectingTheSameClientAgainKeepsItsStrayBytesInMind) {
    SelectFirst();
    link_.StrayInput = True;
    ASSERT_TRUE(Select(1));
    EXPECT_EQ(link_.StrayInput, True);
}

TEST_F(ServerRadioTest, AWrongEchoOfAnyMacByteTakesTheLinkDown) {
    for (int byte = 1; byte <= 3; ++byte) {
        boxes_.Shown.clear();
        comm::ClosePort(link_);
        OpenPort();
        network_.RadioFaults().Clear().OnRequest(0x10, simulator::CorruptByte(byte));
        EXPECT_FALSE(comm::SetServerMAC(link_, boxes_, {0x1F, 0x2E, 0x3D}));
        ExpectLinkDownBox();
    }
}

TEST_F(ServerRadioTest, ABusyOrClosedLinkRefusesMacSignalSelectionWithoutAMessage) {
    console_.AddSite(BasicSite(1));
    std::uint8_t value = 0;
    link_.CommBusy = True;
    EXPECT_FALSE(comm::SetServerMAC(link_, boxes_, {1, 2, 3}));
    EXPECT_FALSE(comm::ReadRadioSignal(link_, boxes_, value));
    EXPECT_FALSE(Select(1));
    link_.CommBusy = False;
    link_.LinkState = LinkDisconnected;
    EXPECT_FALSE(comm::SetServerMAC(link_, boxes_, {1, 2, 3}));
    EXPECT_FALSE(comm::ReadRadioSignal(link_, boxes_, value));
    EXPECT_TRUE(boxes_.Shown.empty());
    EXPECT_TRUE(network_.Written().empty());
}

TEST_F(ServerRadioTest, ReadsTheSignalThenGoesBackToNormalMode) {
    network_.Radio().FixSignal(85);
    std::uint8_t value = 0;
    EXPECT_TRUE(comm::ReadRadioSignal(link_, boxes_, value));
    EXPECT_EQ(value, 85);
    EXPECT_EQ(network_.RadioCommands(), (Commands{Enter, {0xCC, 0x26}, Leave}));
    EXPECT_EQ(link_.LinkState, LinkNormal);
}

TEST_F(ServerRadioTest, ASignalReplyThatIsNoneTakesTheLinkDown) {
    for (const simulator::LineFault& fault : {WrongAck(0x55), Plain(FaultKind::LoseAnswer)}) {
        boxes_.Shown.clear();
        comm::ClosePort(link_);
        OpenPort();
        network_.RadioFaults().Clear().OnRequest(0x26, fault);
        std::uint8_t value = 0;
        EXPECT_FALSE(comm::ReadRadioSignal(link_, boxes_, value));
        ExpectLinkDownBox();
        EXPECT_EQ(link_.CommBusy, False);
    }
}

TEST_F(ServerRadioTest, ARadioThatCannotBeReachedInAnExchangeTakesTheLinkDown) {
    network_.Radio().Silence();
    EXPECT_FALSE(comm::SetServerMAC(link_, boxes_, {1, 2, 3}));
    ExpectLinkDownBox();
    EXPECT_EQ(link_.LinkState, LinkDisconnected);
}

TEST_F(ServerRadioTest, SelectsAClientByChannelThenMac) {
    console_.AddSite(BasicSite(7));
    EXPECT_TRUE(Select(1));
    EXPECT_EQ(network_.RadioCommands(),
              (Commands{Enter, {0xCC, 0x02, 0x10}, {0xCC, 0x10, 0x00, 0x00, 0x07}, Leave}));
    EXPECT_EQ(link_.CurrentChannel, 0x10);
    EXPECT_EQ(link_.CurrentMAC, (RadioAddress{0, 0, 7}));
    EXPECT_EQ(link_.LinkState, LinkNormal);
    EXPECT_EQ(link_.CommBusy, False);
}

TEST_F(ServerRadioTest, SelectClientWithTheRadioAlreadyRightSendsNothing) {
    SelectFirst();
    const auto before = console_.Outside.Time.Now();
    EXPECT_TRUE(Select(1));
    EXPECT_TRUE(network_.Written().empty());
    EXPECT_EQ(console_.Outside.Time.Now(), before);
}

TEST_F(ServerRadioTest, AnotherClientOnTheSameChannelSkipsTheChannelCommand) {
    SelectFirst();
    console_.AddSite(BasicSite(2));
    EXPECT_TRUE(Select(2));
    EXPECT_EQ(network_.RadioCommands(), (Commands{Enter, {0xCC, 0x10, 0, 0, 2}, Leave}));
}

TEST_F(ServerRadioTest, AfterTheIdleLimitThePortReopensWithOnlyALeaveCommand) {
    SelectFirst();
    comm::ClosePort(link_);
    link_.LinkState = LinkDisconnected;
    EXPECT_TRUE(Select(1));
    EXPECT_TRUE(port_.PortOpen());
    EXPECT_EQ(network_.Written(), Leave);
}

TEST_F(ServerRadioTest, AtTheEndOfTheProgramNothingIsSelectedNorOpened) {
    SelectFirst();
    comm::ClosePort(link_);
    link_.LinkState = LinkDisconnected;
    link_.ShuttingDown = True;
    EXPECT_FALSE(Select(1));
    EXPECT_FALSE(port_.PortOpen());
    EXPECT_TRUE(network_.Written().empty());
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(ServerRadioTest, ADeviceThatVanishedSinceIsOpenedAgain) {
    SelectFirst();
    port_.PullOut();
    port_.LookForHangUp();
    EXPECT_TRUE(Select(1));
    EXPECT_TRUE(port_.PortOpen());
    EXPECT_EQ(network_.Written(), Leave);
}

TEST_F(ServerRadioTest, SelectingUnconnectedTellsSo) {
    console_.AddSite(BasicSite(1));
    link_.Connected = False;
    EXPECT_FALSE(Select(1));
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Text,
              "Error: communications has not been established with the server radio modem.");
    EXPECT_EQ(boxes_.Shown[0].Title, "Connect Error");
    EXPECT_EQ(boxes_.Shown[0].Icon, BoxIcon::Exclamation);
    EXPECT_EQ(boxes_.Shown[0].Buttons, BoxButtons::Ok);
}

TEST_F(ServerRadioTest, APortThatWillNotReopenTellsSoThenTheStepsGoOn) {
    SelectFirst();
    comm::ClosePort(link_);
    link_.LinkState = LinkDisconnected;
    link_.CurrentChannel = UnknownChannel;
    port_.Missing = {1};
    EXPECT_FALSE(Select(1));
    ASSERT_EQ(boxes_.Shown.size(), 2U);
    EXPECT_EQ(
        boxes_.Shown[0].Text,
        "Error opening port.  If this port exists, it \nmay be in use by another application.");
    EXPECT_EQ(boxes_.Shown[0].Title, "Connect Error");
    EXPECT_EQ(boxes_.Shown[0].Icon, BoxIcon::Exclamation);
    EXPECT_EQ(boxes_.Shown[0].Buttons, BoxButtons::Ok);
    EXPECT_EQ(boxes_.Shown[1].Title, "Server Connection Error");
}

TEST_F(ServerRadioTest, APortNameWithoutANumberEndsTheSelectionSilently) {
    console_.AddSite(BasicSite(1));
    comm::ClosePort(link_);
    link_.LinkState = LinkDisconnected;
    console_.State.SettingsRecord.PortName = "COM";
    EXPECT_FALSE(Select(1));
    EXPECT_TRUE(boxes_.Shown.empty());
    EXPECT_EQ(link_.CommBusy, False);
}

TEST_F(ServerRadioTest, AnExchangeThatGotNoBytesEndsTheSelectionSilently) {
    console_.AddSite(BasicSite(1));
    network_.RadioFaults().OnRequest(0x02, Plain(FaultKind::LoseAnswer));
    EXPECT_FALSE(Select(1));
    EXPECT_TRUE(boxes_.Shown.empty());
    EXPECT_EQ(link_.CommBusy, False);
    EXPECT_EQ(link_.CurrentChannel, UnknownChannel);
    EXPECT_TRUE(Select(1)) << "the next one works";
}

// What the radio did not take the console must not believe: the next order would reach the client
// before.
TEST_F(ServerRadioTest, AnAddressThatTheRadioDidNotTakeIsSentAgain) {
    SelectFirst();
    console_.AddSite(BasicSite(2));
    network_.RadioFaults().OnRequest(0x10, Plain(FaultKind::LoseRequest));
    EXPECT_FALSE(Select(2));
    EXPECT_EQ(link_.CurrentMAC, (RadioAddress{0, 0, 1}));
    network_.ClearRecord();
    EXPECT_TRUE(Select(2));
    EXPECT_EQ(network_.RadioCommands(), (Commands{{0xCC, 0x10, 0, 0, 2}, Leave}));
    EXPECT_EQ(link_.CurrentMAC, (RadioAddress{0, 0, 2}));
}

TEST_F(ServerRadioTest, AChannelThatTheRadioDidNotTakeIsSentAgain) {
    SelectFirst();
    console_.AddSite(BasicSite(2));
    console_.State.Book.Entries[2].Channel = 0x21;
    network_.RadioFaults().OnRequest(0x02, Plain(FaultKind::LoseRequest));
    EXPECT_FALSE(Select(2));
    EXPECT_EQ(link_.CurrentChannel, 0x10);
    network_.ClearRecord();
    EXPECT_TRUE(Select(2));
    EXPECT_EQ(network_.RadioCommands(),
              (Commands{{0xCC, 0x02, 0x21}, {0xCC, 0x10, 0, 0, 2}, Leave}));
    EXPECT_EQ(link_.CurrentChannel, 0x21);
}

TEST_F(ServerRadioTest, AnEchoThatTakesTheLinkDownLeavesWhatIsKnownOfTheRadio) {
    SelectFirst();
    console_.AddSite(BasicSite(2));
    network_.RadioFaults().OnRequest(0x10, simulator::CorruptByte(3));
    EXPECT_FALSE(Select(2));
    EXPECT_EQ(link_.CurrentMAC, (RadioAddress{0, 0, 1}));
    EXPECT_EQ(link_.LinkState, LinkDisconnected);
}

// What a logger or the radio said before is no answer to a command.
TEST_F(ServerRadioTest, StrayBytesBeforeACommandAreNotItsAnswer) {
    const Bytes stray{0xCC, 0x77, 0x77, 0x77};
    port_.Receive(stray);
    EXPECT_TRUE(comm::EnterCommandMode(link_));
    EXPECT_EQ(network_.RadioCommands(), Commands{Enter}) << "taken at the first time of asking";
    port_.Receive(stray);
    EXPECT_TRUE(comm::SetServerChannel(link_, boxes_, 0x21));
    port_.Receive(stray);
    EXPECT_TRUE(comm::SetServerMAC(link_, boxes_, {0x1F, 0x2E, 0x3D}));
    network_.Radio().SetSystemId(42);
    port_.Receive(stray);
    EXPECT_EQ(comm::ReadServerSystemID(link_), 42);
    network_.Radio().FixSignal(85);
    port_.Receive(stray);
    std::uint8_t value = 0;
    EXPECT_TRUE(comm::ReadRadioSignal(link_, boxes_, value));
    EXPECT_EQ(value, 85);
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(ServerRadioTest, TheBookChangingDuringASelectionDoesNoHarm) {
    console_.AddSite(BasicSite(1));
    console_.Outside.Time.In(100 * Millisecond, [this] { console_.State.Book.Entries.Reset(); });
    EXPECT_TRUE(Select(1));
    EXPECT_EQ(link_.CurrentMAC, (RadioAddress{0, 0, 1}));
}

}  // namespace
