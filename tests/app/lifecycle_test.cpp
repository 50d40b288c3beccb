#include "app/lifecycle.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <string>

#include "app/contrast.h"
#include "app/stored_settings.h"
#include "common/fault.h"
#include "common/help_file.h"
#include "common/path_text.h"
#include "link/port.h"
#include "support/virtual_console.h"

namespace {

using testing_support::BasicSite;
using testing_support::FileContents;
using testing_support::FreshFolder;
using testing_support::Millisecond;
using testing_support::Second;
using testing_support::VirtualConsole;
using testing_support::WriteFile;

class Lifecycle : public ::testing::Test {
 protected:
    bool Close() {
        return QueryUnload(console_.State, console_.View, {13400, 9500}, [this] {
            ++unloaded_;
            if (formsFault_) {
                throw Fault("a form faults while it unloads");
            }
        });
    }
    /// Values everywhere that a start has to replace.
    void LeaveTraces() {
        settings_ = {"COM9", "9600", "old.obk", "folder", {"f0", "f1", "f2", "f3"}, "1", "Yes"};
        link_.LinkState = LinkNormal;
        link_.CurrentChannel = 7;
        link_.CurrentMAC = {1, 2, 3};
        console_.State.Book.Entries.Append({});
        console_.State.Book.LastChannel = 9;
        console_.View.ServerState = "Connected - Normal";
        console_.View.SystemID = "42";
        console_.View.ComPort = "COM9";
        console_.View.LinkFields = true;
    }
    std::string Stored(const std::string& key) {
        return console_.Outside.Store.Values["Configuration/" + key];
    }

    std::string folder_ = FreshFolder("program");
    VirtualConsole console_{folder_};
    Link& link_ = console_.State.LinkRecord;
    Settings& settings_ = console_.State.SettingsRecord;
    int unloaded_ = 0;
    bool formsFault_ = false;
};

TEST_F(Lifecycle, AFirstStartWithAnEmptyStoreHasTheDefaults) {
    LeaveTraces();
    BeginStart(console_.State, console_.View);
    EXPECT_EQ(settings_.PortName, "Com1");
    EXPECT_EQ(settings_.BaudRate, "38400");
    EXPECT_EQ(settings_.AddressBookPath, "");
    EXPECT_EQ(settings_.LastFilePath, "");
    EXPECT_EQ(settings_.LastFile, (std::array<std::string, 4>{}));
    EXPECT_EQ(settings_.AutoDisconnect, "");
    EXPECT_EQ(settings_.CSVDateTimeSingleColumn, "");
    EXPECT_EQ(link_.LinkState, LinkDisconnected);
    EXPECT_EQ(console_.View.ServerState, "Disconnected");
    EXPECT_EQ(console_.View.SystemID, "");
    EXPECT_EQ(console_.View.ComPort, "");
    EXPECT_FALSE(console_.View.LinkFields);
    EXPECT_EQ(console_.State.Book.Entries.UpperBound(), 0);
    EndStart(console_.State, console_.View);
    EXPECT_EQ(console_.View.BookName, "-- None --");
    EXPECT_EQ(console_.State.Book.LastChannel, 16);
    EXPECT_EQ(link_.CurrentChannel, 255);
    EXPECT_EQ(link_.CurrentMAC, (RadioAddress{0xFF, 0xFF, 0xFF}));
}

TEST_F(Lifecycle, AStoredBookThatNoLongerExistsIsSavedBackEmpty) {
    console_.Outside.Store.Values["Configuration/AddressBook"] = "/gone/site.obk";
    BeginStart(console_.State, console_.View);
    EXPECT_EQ(settings_.AddressBookPath, "");
    EXPECT_TRUE(Close());
    EXPECT_EQ(Stored("AddressBook"), "");
}

TEST_F(Lifecycle, TheStoredBookLoadsBehindTheConnectDialog) {
    const std::string book = JoinPath(folder_, "site.obk");
    WriteFile(book, "\"A\", 21, 00A0961F2E3D\r\n\r\n");
    console_.Outside.Store.Values["Configuration/AddressBook"] = book;
    BeginStart(console_.State, console_.View);
    EndStart(console_.State, console_.View);
    EXPECT_EQ(console_.View.BookName, "site");
    EXPECT_EQ(console_.State.Book.LastChannel, 0x21);
    EXPECT_EQ(console_.State.Book.LastMacPrefix, (std::array<std::uint8_t, 3>{0, 0xA0, 0x96}));
}

TEST_F(Lifecycle, AStoreOfNonsenseStarts) {
    for (const char* key : {"Port", "Baud", "AddressBook", "LastFilePath", "LastFile0", "LastFile3",
                            "AutoDisconnect", "CSVDateTimeSingleColumn"}) {
        console_.Outside.Store.Values[std::string("Configuration/") + key] =
            std::string("\xFF\0\n,;=[x]", 9) + std::string(5000, 'z');
    }
    BeginStart(console_.State, console_.View);
    EndStart(console_.State, console_.View);
    comm::ConnectDialog dialog;
    comm::Connect(console_.Radio(), dialog, [](Pointer) {});
    EXPECT_EQ(link_.Connected, False);
    EXPECT_TRUE(Close());
}

TEST_F(Lifecycle, TheSplashStandsForASecond) {
    AwaitSplash(link_);
    EXPECT_EQ(console_.Outside.Time.Now(), Second);
}

TEST_F(Lifecycle, TheTitleIsNameAndVersion) {
    EXPECT_EQ(ApplicationTitle(), "Orvia - v1.0.0");
    EXPECT_EQ(VersionText(), "1.0.0");
}

TEST_F(Lifecycle, HelpIsAFileBesideTheProgram) {
    EXPECT_EQ(HelpFile(folder_), "");
    WriteFile(JoinPath(folder_, "Orvia.chm"), "help");
    EXPECT_EQ(HelpFile(folder_), JoinPath(folder_, "Orvia.chm"));
}

TEST_F(Lifecycle, CataloguesAreReadFromBesideTheProgram) {
    WriteFile(JoinPath(folder_, "flumes.lst"), "[F1] \"Flume one\" E 0 1.5 2\r\n");
    WriteFile(JoinPath(folder_, "weirs.lst"), "[W1] \"Weir one\" E 0 2.5 3\r\n");
    ReadCatalogues(console_.State);
    EXPECT_EQ(console_.State.CataloguesRecord.FlumeList.UpperBound(), 1);
    EXPECT_EQ(console_.State.CataloguesRecord.WeirList.UpperBound(), 1);
}

TEST_F(Lifecycle, CataloguesOfTheUsersOwnAddToThoseBesideTheProgram) {
    const std::string own = FreshFolder("own");
    WriteFile(JoinPath(folder_, "flumes.lst"), "[F1] \"Flume one\" E 0 1.5 2\r\n");
    WriteFile(JoinPath(own, "flumes.lst"), "[F2] \"Flume two\" E 0 1.5 4\r\n");
    WriteFile(JoinPath(own, "weirs.lst"), "[W1] \"Weir one\" E 0 2.5 3\r\n");
    console_.State.Outside.UserFolder = own;
    ReadCatalogues(console_.State);
    const Catalogues& read = console_.State.CataloguesRecord;
    ASSERT_EQ(read.FlumeList.UpperBound(), 2);
    EXPECT_EQ(read.FlumeList[1].Tag, "F1");
    EXPECT_EQ(read.FlumeList[2].Tag, "F2");
    ASSERT_EQ(read.WeirList.UpperBound(), 1);
    EXPECT_EQ(read.WeirList[1].Tag, "W1");
}

TEST_F(Lifecycle, WithoutAFolderOfTheUsersOwnNothingIsAdded) {
    // A name alone would stand against whatever folder the program was started in.
    WriteFile(JoinPath(folder_, "flumes.lst"), "[F1] \"Flume one\" E 0 1.5 2\r\n");
    console_.State.Outside.UserFolder = JoinPath(folder_, "missing");
    ReadCatalogues(console_.State);
    EXPECT_EQ(console_.State.CataloguesRecord.FlumeList.UpperBound(), 1);
    EXPECT_EQ(console_.State.CataloguesRecord.WeirList.UpperBound(), 0);
}

TEST_F(Lifecycle, ACloseWhileAnExchangeRunsIsRefusedWithNoMessage) {
    link_.CommBusy = True;
    EXPECT_FALSE(Close());
    EXPECT_EQ(unloaded_, 0);
    EXPECT_EQ(link_.ShuttingDown, False);
    EXPECT_TRUE(console_.Outside.Store.Values.empty());
    EXPECT_TRUE(console_.Outside.Boxes.Shown.empty());
}

TEST_F(Lifecycle, ClosingLeavesCommandModeThenClosesThePort) {
    console_.Connect();
    EXPECT_TRUE(Close());
    EXPECT_FALSE(console_.Outside.Network.Radio().InCommandMode());
    EXPECT_FALSE(console_.Outside.Port.PortOpen());
    EXPECT_EQ(link_.LinkState, LinkDisconnected);
    EXPECT_EQ(unloaded_, 1);
    EXPECT_EQ(link_.ShuttingDown, True);
    EXPECT_EQ(link_.CommBusy, False);
}

TEST_F(Lifecycle, ClosingInNormalModeSendsNothing) {
    console_.AddSite(BasicSite(1));
    console_.Connect();
    ASSERT_TRUE(comm::SelectClient(console_.Radio(), console_.State.Book.Entries[1]));
    console_.Outside.Network.ClearRecord();
    EXPECT_TRUE(Close());
    EXPECT_TRUE(console_.Outside.Network.Written().empty());
}

TEST_F(Lifecycle, ASecondCloseInsideTheFirstIsRefused) {
    console_.Connect();
    bool second = true;
    console_.Outside.Time.In(200 * Millisecond, [&] { second = Close(); });
    EXPECT_TRUE(Close());
    EXPECT_FALSE(second);
    EXPECT_EQ(unloaded_, 1);
}

TEST_F(Lifecycle, AFaultWhileClosingStillCloses) {
    console_.Connect();
    settings_.BaudRate = "9600";
    console_.Outside.Store.Refused = {"Configuration/AddressBook"};
    console_.Outside.Time.In(200 * Millisecond, [] { throw Fault("the radio is left"); });
    formsFault_ = true;
    EXPECT_TRUE(Close());
    EXPECT_EQ(link_.ShuttingDown, True);
    EXPECT_EQ(link_.CommBusy, False);
    EXPECT_EQ(unloaded_, 1) << "each stage comes to its turn";
    EXPECT_EQ(console_.Outside.Store.Values.size(), 2U) << "the settings so far saved";
    EXPECT_EQ(Stored("Port"), "COM1");
    EXPECT_EQ(Stored("Baud"), "9600");
}

TEST_F(Lifecycle, AFaultInOneStageLeavesTheOthersWhole) {
    console_.Connect();
    formsFault_ = true;
    EXPECT_TRUE(Close());
    EXPECT_EQ(console_.Outside.Store.Values.size(), 10U);
    EXPECT_FALSE(console_.Outside.Port.PortOpen());
    EXPECT_EQ(link_.LinkState, LinkDisconnected);
    EXPECT_EQ(link_.ShuttingDown, True);
}

/// The store as every release has written it.
const std::map<std::string, std::string> TenKeys{
    {"Configuration/Port", "COM7"},         {"Configuration/Baud", "9600"},
    {"Configuration/AddressBook", "a.obk"}, {"Configuration/LastFilePath", "folder"},
    {"Configuration/LastFile0", "f0"},      {"Configuration/LastFile1", "f1"},
    {"Configuration/LastFile2", "f2"},      {"Configuration/LastFile3", "f3"},
    {"Configuration/AutoDisconnect", "1"},  {"Configuration/CSVDateTimeSingleColumn", "Yes"}};

TEST_F(Lifecycle, AllTenKeysAreSavedAsEdited) {
    settings_ = {"COM7", "9600", "a.obk", "folder", {"f0", "f1", "f2", "f3"}, "1", "Yes"};
    EXPECT_TRUE(Close());
    EXPECT_EQ(console_.Outside.Store.Values, TenKeys);
}

TEST_F(Lifecycle, AllTenKeysAreReadAsStored) {
    console_.Outside.Store.Values = TenKeys;
    const Settings read = ReadSettings(console_.Outside.Store);
    EXPECT_EQ(read.PortName, "COM7");
    EXPECT_EQ(read.BaudRate, "9600");
    EXPECT_EQ(read.AddressBookPath, "a.obk");
    EXPECT_EQ(read.LastFilePath, "folder");
    EXPECT_EQ(read.LastFile, (std::array<std::string, 4>{"f0", "f1", "f2", "f3"}));
    EXPECT_EQ(read.AutoDisconnect, "1");
    EXPECT_EQ(read.CSVDateTimeSingleColumn, "Yes");
}

TEST_F(Lifecycle, AfterAFailedConnectTheStoreHoldsTheEditedPort) {
    settings_.PortName = "COM9";
    console_.Outside.Port.Missing = {9};
    comm::ConnectDialog dialog;
    comm::Connect(console_.Radio(), dialog, [](Pointer) {});
    EXPECT_TRUE(Close());
    EXPECT_EQ(Stored("Port"), "COM9");
}

TEST_F(Lifecycle, TheVersionFileIsWrittenOnlyWithoutErrorTrapping) {
    const std::string path = JoinPath(folder_, "orvia.ini");
    EXPECT_EQ(console_.State.ErrorTrapping, True);
    EXPECT_TRUE(Close());
    EXPECT_FALSE(FileExists(path));
    WriteVersionFile(False, folder_, {13400, 9500});
    EXPECT_EQ(FileContents(path), "VERSION = 1.0.0\r\nWIDTH = 13400\r\nHEIGHT = 9500\r\n");
}

TEST_F(Lifecycle, NoBoxIsShownAfterShutdownBegan) {
    EXPECT_TRUE(Close());
    for (const BoxButtons buttons :
         {BoxButtons::Ok, BoxButtons::OkCancel, BoxButtons::YesNo, BoxButtons::YesNoCancel}) {
        BoxContent box;
        box.Buttons = buttons;
        EXPECT_EQ(console_.State.Boxes.Show(box), AnswerOfClosedBox(buttons));
    }
    EXPECT_TRUE(console_.Outside.Boxes.Shown.empty());
}

TEST(Contrast, EveryToldTextColourReadsOnItsGround) {
    for (const Colour colour :
         {Colour{255, 0, 0}, Colour{240, 128, 0}, Colour{0, 160, 0}, Colour{0, 0, 240}}) {
        EXPECT_GE(ContrastRatio(colour, GroundFor(colour)), 4.5);
    }
    EXPECT_NEAR(ContrastRatio({0, 0, 0}, {255, 255, 255}), 21, 1e-9);
}

}  // namespace
