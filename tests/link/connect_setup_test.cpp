#include "link/connect_setup.h"

#include <gtest/gtest.h>

#include "support/virtual_host.h"

namespace {

using namespace testing_support;

Enumerate::PortList SomePorts() {
    Enumerate::PortList found;
    found.Append("COM5 - USB Serial Port");
    return Enumerate::OfferedPorts(found);
}

TEST(PortChoiceTest, IsTheEntryOfThePortInTheSettings) {
    EXPECT_EQ(comm::PortChoice(SomePorts(), "COM5"), 4);
    EXPECT_EQ(comm::PortChoice(SomePorts(), "COM16"), 15);
}

TEST(PortChoiceTest, DefaultCom1MatchesNothingAndSelectsEntry0) {
    EXPECT_EQ(comm::PortChoice(SomePorts(), "Com1"), 0);
    EXPECT_EQ(comm::PortChoice(SomePorts(), "Com5"), 0);
    EXPECT_EQ(comm::PortChoice(SomePorts(), ""), 0);
}

TEST(BaudChoiceTest, Rate4800IsNotInTheListAndSelects38400) {
    EXPECT_EQ(comm::BaudRates[static_cast<std::size_t>(comm::BaudChoice("4800"))], "38400");
    EXPECT_EQ(comm::BaudRates[static_cast<std::size_t>(comm::BaudChoice(""))], "38400");
}

TEST(BaudChoiceTest, IsTheRateOfTheSettings) {
    for (std::size_t i = 0; i < comm::BaudRates.size(); ++i) {
        EXPECT_EQ(comm::BaudChoice(comm::BaudRates[i]), static_cast<int>(i));
    }
}

class TakeChoicesTest : public ::testing::Test {
 protected:
    TakeChoicesTest() {
        settings.PortName = "COM1";
        settings.BaudRate = "38400";
        settings.AddressBookPath = "/nowhere/old.obk";
    }

    Settings settings;
    ScriptedBoxes boxes;
};

TEST_F(TakeChoicesTest, StoresAllFour) {
    const std::string book = FreshFolder("choices") + "/new.obk";
    WriteFile(book, "\r\n");
    ASSERT_TRUE(comm::TakeChoices({"COM5 - USB Serial Port", "9600", true, book}, settings, boxes));
    EXPECT_EQ(settings.PortName, "COM5");
    EXPECT_EQ(settings.BaudRate, "9600");
    EXPECT_EQ(settings.AutoDisconnect, "1");
    EXPECT_EQ(settings.AddressBookPath, book);
    EXPECT_TRUE(boxes.Shown.empty());
}

TEST_F(TakeChoicesTest, RefusedPathKeepsNothing) {
    ASSERT_FALSE(comm::TakeChoices({"COM5", "9600", true, "/nowhere/new.obk"}, settings, boxes));
    EXPECT_EQ(settings.PortName, "COM1");
    EXPECT_EQ(settings.BaudRate, "38400");
    EXPECT_EQ(settings.AutoDisconnect, "");
    EXPECT_EQ(settings.AddressBookPath, "/nowhere/old.obk");
    ASSERT_EQ(boxes.Shown.size(), 1U);
    EXPECT_EQ(boxes.Shown[0].Text, "Error: the address book path is not valid!");
    EXPECT_EQ(boxes.Shown[0].Title, "Address Book Not Found");
    EXPECT_EQ(boxes.Shown[0].Icon, BoxIcon::Exclamation);
    EXPECT_EQ(boxes.Shown[0].Buttons, BoxButtons::Ok);
}

TEST_F(TakeChoicesTest, UnchangedPathIsTakenThoughTheFileIsGone) {
    EXPECT_TRUE(comm::TakeChoices({"COM2", "9600", false, "/nowhere/old.obk"}, settings, boxes));
    EXPECT_EQ(settings.AutoDisconnect, "0");
    EXPECT_EQ(settings.PortName, "COM2");
}

TEST_F(TakeChoicesTest, NoBookAtAllIsFine) {
    EXPECT_TRUE(comm::TakeChoices({"COM2", "9600", false, ""}, settings, boxes));
    EXPECT_EQ(settings.AddressBookPath, "");
    EXPECT_TRUE(boxes.Shown.empty());
}

#ifndef _WIN32
TEST_F(TakeChoicesTest, DeviceExists) {
    EXPECT_TRUE(comm::TakeChoices({"COM2", "9600", false, "/dev/null"}, settings, boxes));
    EXPECT_TRUE(boxes.Shown.empty());
}
#endif

TEST_F(TakeChoicesTest, FolderIsNoBook) {
    EXPECT_FALSE(
        comm::TakeChoices({"COM2", "9600", false, FreshFolder("folder")}, settings, boxes));
}

}  // namespace
