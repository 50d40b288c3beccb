#include "console/book_operations.h"

#include <gtest/gtest.h>

#include "common/path_text.h"
#include "support/virtual_console.h"

namespace {

using testing_support::BasicSite;
using testing_support::FileContents;
using testing_support::FreshFolder;
using testing_support::VirtualConsole;
using testing_support::WriteFile;

class BookOperations : public ::testing::Test {
 protected:
    BookOperations() {
        console_.View.WhenClosingAll = [this] { CloseAll(); };
    }

    void CloseAll() {
        const auto open = console_.State.Windows.Slots;
        for (const auto& window : open) {
            if (window) {
                window->Unload();
            }
        }
    }

    std::string Write(const std::string& name, const std::string& contents) {
        std::string path = JoinPath(folder_, name);
        WriteFile(path, contents);
        return path;
    }

    /// A book in use, with one window open.
    void UseBook() {
        settings_.AddressBookPath = Write("old.obk", "\"Old\", 10, 00A096000001\r\n\r\n");
        LoadAddressBook(settings_.AddressBookPath, book_, console_.View);
        console_.OpenWindow(1);
    }

    void ExpectChangeBox() {
        ASSERT_EQ(console_.Outside.Boxes.Shown.size(), 1U);
        const BoxContent& box = console_.Outside.Boxes.Shown[0];
        EXPECT_EQ(
            box.Text,
            "The address book has changed.  Currently opened logger\nwindows will be closed.");
        EXPECT_EQ(box.Title, "Address Book Changed");
        EXPECT_EQ(box.Icon, BoxIcon::Information);
        EXPECT_EQ(box.Buttons, BoxButtons::OkCancel);
    }

    VirtualConsole console_{"/program"};
    std::string folder_ = FreshFolder("books");
    Settings& settings_ = console_.State.SettingsRecord;
    AddressBook& book_ = console_.State.Book;
    testing_support::ScriptedDialogs& dialogs_ = console_.Outside.Dialogs;
    const std::string newBook_ = Write("new.obk", "\"New\", 11, 00A096000002\r\n\r\n");
};

TEST_F(BookOperations, LoadingShowsNameEntriesPictures) {
    LoadAddressBook(newBook_, book_, console_.View);
    EXPECT_EQ(console_.View.BookName, "new");
    ASSERT_EQ(console_.View.Clients.size(), 1U);
    EXPECT_EQ(console_.View.Clients[0].Name, "New");
    EXPECT_EQ(console_.View.Clients[0].Icon, IconNoWindow);
}

TEST_F(BookOperations, AnEmptyPathEmptiesTheBookButLeavesTheListStanding) {
    LoadAddressBook(newBook_, book_, console_.View);
    LoadAddressBook("", book_, console_.View);
    EXPECT_EQ(console_.View.BookName, "-- None --");
    EXPECT_EQ(book_.Entries.UpperBound(), 0);
    EXPECT_EQ(console_.View.Clients.size(), 1U);
}

TEST_F(BookOperations, EntryDefaultsComeFromTheFirstEntry) {
    TakeEntryDefaults(book_);
    EXPECT_EQ(book_.LastChannel, 16);
    EXPECT_EQ(book_.LastMacPrefix, (std::array<std::uint8_t, 3>{0, 0, 0}));
    LoadAddressBook(newBook_, book_, console_.View);
    TakeEntryDefaults(book_);
    EXPECT_EQ(book_.LastChannel, 0x11);
    EXPECT_EQ(book_.LastMacPrefix, (std::array<std::uint8_t, 3>{0x00, 0xA0, 0x96}));
}

TEST_F(BookOperations, SwappingTellsOpenWindowsTheirNumbers) {
    console_.AddSite(BasicSite(1));
    console_.AddSite(BasicSite(2));
    const auto window = console_.OpenWindow(1);
    SwapClientRadios(book_, console_.State.Windows, 1, 2);
    EXPECT_EQ(book_.Entries[1].Name, "Site 2");
    EXPECT_EQ(window->ClientIndex(), 2);
    SwapClientRadios(book_, console_.State.Windows, 2, 2);
    EXPECT_EQ(window->ClientIndex(), 2);
}

TEST_F(BookOperations, LoadAsksForAnExistingFile) {
    LoadOtherBook(console_.BookWork());
    ASSERT_EQ(dialogs_.Queries.size(), 1U);
    EXPECT_EQ(dialogs_.Queries[0].Title, "Load Address Book");
    EXPECT_EQ(dialogs_.Queries[0].DefaultExtension, ".obk");
    EXPECT_EQ(dialogs_.Queries[0].Filter, "Address Book Files (*.obk)|*.obk");
    EXPECT_EQ(dialogs_.Queries[0].InitialName, JoinPath("/program", "*.obk"));
    EXPECT_EQ(console_.State.OperationsRecord.OperationBusy, False);
    EXPECT_EQ(settings_.AddressBookPath, "") << "cancelled";
}

TEST_F(BookOperations, LoadTakesTheChosenBook) {
    dialogs_.Picks = {newBook_};
    LoadOtherBook(console_.BookWork());
    EXPECT_EQ(settings_.AddressBookPath, newBook_);
    EXPECT_EQ(book_.Entries[1].Name, "New");
    EXPECT_TRUE(console_.Outside.Boxes.Shown.empty());
}

TEST_F(BookOperations, ChoosingTheCurrentBookAgainChangesNothing) {
    UseBook();
    dialogs_.Picks = {settings_.AddressBookPath, settings_.AddressBookPath};
    LoadOtherBook(console_.BookWork());
    CreateBlankBook(console_.BookWork());
    EXPECT_EQ(console_.State.Windows.NumClientWindows, 1);
    EXPECT_EQ(book_.Entries.UpperBound(), 1);
    EXPECT_NE(FileContents(settings_.AddressBookPath), "\r\n");
}

TEST_F(BookOperations, LoadAsksBeforeItClosesWindows) {
    UseBook();
    dialogs_.Picks = {newBook_};
    LoadOtherBook(console_.BookWork());
    ExpectChangeBox();
    EXPECT_EQ(console_.View.ClosedAll, 1);
    EXPECT_EQ(console_.State.Windows.NumClientWindows, 0);
    EXPECT_EQ(book_.Entries[1].Name, "New");
}

TEST_F(BookOperations, LoadRefusedLeavesEverything) {
    UseBook();
    dialogs_.Picks = {newBook_};
    console_.Outside.Boxes.Answers = {BoxAnswer::Cancel};
    LoadOtherBook(console_.BookWork());
    ExpectChangeBox();
    EXPECT_EQ(console_.View.ClosedAll, 0);
    EXPECT_EQ(book_.Entries[1].Name, "Old");
    EXPECT_EQ(console_.State.OperationsRecord.OperationBusy, False);
}

TEST_F(BookOperations, CreatingClosesWindowsWithoutAsking) {
    UseBook();
    const std::string path = JoinPath(folder_, "blank.obk");
    dialogs_.Picks = {path};
    CreateBlankBook(console_.BookWork());
    EXPECT_EQ(dialogs_.Queries[0].Title, "Create New Blank Address Book");
    EXPECT_EQ(dialogs_.Prompts, std::vector<bool>{true});
    EXPECT_TRUE(console_.Outside.Boxes.Shown.empty());
    EXPECT_EQ(console_.State.Windows.NumClientWindows, 0);
    EXPECT_EQ(FileContents(path), "\r\n");
    EXPECT_EQ(settings_.AddressBookPath, path);
    EXPECT_EQ(console_.View.BookName, "blank");
    EXPECT_TRUE(console_.View.Clients.empty());
}

TEST_F(BookOperations, ABusyLinkOrASamplingModeBarsBookChanges) {
    console_.State.OperationsRecord.OperationBusy = True;
    LoadOtherBook(console_.BookWork());
    CreateBlankBook(console_.BookWork());
    EXPECT_EQ(console_.State.OperationsRecord.OperationBusy, True) << "the flag is its holder's";
    console_.State.OperationsRecord.OperationBusy = False;
    console_.State.SamplingRecord.ContinuousMode = ContinuousRead;
    LoadOtherBook(console_.BookWork());
    CreateBlankBook(console_.BookWork());
    EXPECT_TRUE(dialogs_.Queries.empty());
}

TEST_F(BookOperations, TheConnectDialogsBookIsTakenOnceWindowsMayClose) {
    UseBook();
    const std::string before = settings_.AddressBookPath;
    TakeBookOfConnectDialog(console_.BookWork(), before);
    EXPECT_TRUE(console_.Outside.Boxes.Shown.empty()) << "nothing changed";
    settings_.AddressBookPath = newBook_;
    console_.Outside.Boxes.Answers = {BoxAnswer::Cancel, BoxAnswer::Ok};
    TakeBookOfConnectDialog(console_.BookWork(), before);
    ExpectChangeBox();
    EXPECT_EQ(settings_.AddressBookPath, before) << "kept by the operator";
    settings_.AddressBookPath = newBook_;
    TakeBookOfConnectDialog(console_.BookWork(), before);
    EXPECT_EQ(book_.Entries[1].Name, "New");
}

TEST_F(BookOperations, TheConnectDialogsBookIsTakenAtOnceWithoutWindows) {
    settings_.AddressBookPath = newBook_;
    TakeBookOfConnectDialog(console_.BookWork(), "");
    EXPECT_EQ(book_.Entries[1].Name, "New");
    EXPECT_TRUE(console_.Outside.Boxes.Shown.empty());
}

}  // namespace
