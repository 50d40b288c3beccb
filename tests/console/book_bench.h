#ifndef ORVIA_TESTS_CONSOLE_BOOK_BENCH_H
#define ORVIA_TESTS_CONSOLE_BOOK_BENCH_H

#include <gtest/gtest.h>

#include <string>

#include "console/book_file.h"
#include "console/entry_editing.h"
#include "console/list_drop.h"
#include "support/fake_client_list.h"
#include "support/virtual_console.h"

/// A console with a book of three entries in a file of its own.
class BookBench : public ::testing::Test {
 protected:
    BookBench() {
        console.State.SettingsRecord.AddressBookPath = Path;
        for (int number = 1; number <= 3; ++number) {
            console.AddSite(testing_support::BasicSite(number));
        }
        SaveAddressBook(Path, Book());
    }

    AddressBook& Book() { return console.State.Book; }
    ClientRadio& Entry(int number) { return Book().Entries[number]; }
    [[nodiscard]] std::vector<BoxContent>& Shown() { return console.Outside.Boxes.Shown; }
    void Answer(BoxAnswer answer) { console.Outside.Boxes.Answers.push_back(answer); }

    /// Has the loggers answer nothing to that command.
    void Refuse(std::uint8_t code) {
        console.Outside.Network.Faults().OnRequest(
            code, simulator::Plain(simulator::FaultKind::LoseRequest), 9);
    }

    EntryContext Entries() { return console.Make.Entries(list, dialogs); }

    DropContext Drops() { return console.Make.Drops(list); }

    /// Names in book order, joined by commas; book, list and file agree on them.
    std::string Names() {
        std::string names;
        for (const ClientRadio& entry : Book().Entries) {
            names += (names.empty() ? "" : ",") + entry.Name;
        }
        std::string shown;
        for (const auto& item : console.View.Clients) {
            shown += (shown.empty() ? "" : ",") + item.Name;
        }
        EXPECT_EQ(shown, names) << "list and book differ";
        AddressBook filed;
        ReadBookFile(Path, filed.Entries);
        std::string kept;
        for (const ClientRadio& entry : filed.Entries) {
            kept += (kept.empty() ? "" : ",") + entry.Name;
        }
        EXPECT_EQ(kept, names) << "file and book differ";
        return names;
    }

    /// Expects that just this box was shown since the last look.
    void ExpectBox(const std::string& title, const std::string& text, BoxIcon icon,
                   BoxButtons buttons = BoxButtons::Ok) {
        ASSERT_EQ(Shown().size(), 1U);
        EXPECT_EQ(Shown()[0].Title, title);
        EXPECT_EQ(Shown()[0].Text, text);
        EXPECT_EQ(Shown()[0].Icon, icon);
        EXPECT_EQ(Shown()[0].Buttons, buttons);
        Shown().clear();
    }

    const std::string Path = testing_support::FreshFolder("book-bench") + "/book.obk";
    testing_support::VirtualConsole console;
    testing_support::FakeClientList list{console.View};
    testing_support::ScriptedEntryDialogs dialogs;
};

#endif  // ORVIA_TESTS_CONSOLE_BOOK_BENCH_H
