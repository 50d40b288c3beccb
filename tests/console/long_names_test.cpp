#include "book_bench.h"
#include "console/signal_monitor.h"

namespace {

using namespace testing_support;

constexpr std::size_t Megabyte = std::size_t{1} << 20U;

TEST(ShownNameTest, IsTheNameAsFarAsAScreenShowsIt) {
    EXPECT_EQ(ShownName(""), "");
    EXPECT_EQ(ShownName("Pump & Weir 3"), "Pump & Weir 3");
    const std::string fits(1000, 'n');
    EXPECT_EQ(ShownName(fits), fits);
    EXPECT_EQ(ShownName(fits + "n"), fits);
}

TEST(ShownNameTest, IsNotCutInsideACharacter) {
    const std::string before(998, 'n');
    EXPECT_EQ(ShownName(before + "\xC3\xBC\xC3\xBC"), before + "\xC3\xBC");
    EXPECT_EQ(ShownName(before + "n\xC3\xBCn"), before + "n");
    EXPECT_EQ(ShownName(before + "\xE2\x82\xAC"), before);
    EXPECT_EQ(ShownName(before.substr(1) + "\xF0\x9F\x9A\xB0"), before.substr(1));
    const std::string noCharacters(2000, '\x80');
    EXPECT_EQ(ShownName(noCharacters).size(), 997U) << "what is no character is cut somewhere";
}

/// A book whose second entry has a name of a megabyte.
class LongNamesTest : public BookBench {
 protected:
    LongNamesTest() {
        Entry(2).Name = name_;
        SaveAddressBook(Path, Book());
        LoadAddressBook(Path, Book(), console.View);
    }

    const std::string name_ = std::string(Megabyte, 'n');
    const std::string shown_ = std::string(1000, 'n');
};

TEST_F(LongNamesTest, AreKeptWholeAndListedAsFarAsTheyAreShown) {
    EXPECT_TRUE(Entry(2).Name == name_);
    EXPECT_EQ(console.View.Clients[1].Name, shown_);
    SaveAddressBook(Path, Book());
    AddressBook filed;
    ReadBookFile(Path, filed.Entries);
    ASSERT_EQ(filed.Entries.UpperBound(), 3);
    EXPECT_TRUE(filed.Entries[2].Name == name_);
}

TEST_F(LongNamesTest, StayWholeWhenTheirEntryIsDragged) {
    DropOnList(Drops(), shown_, 0);
    EXPECT_TRUE(Entry(1).Name == name_);
    EXPECT_EQ(console.View.Clients[0].Name, shown_);
}

TEST_F(LongNamesTest, AreTheTitleOfAWindowAsFarAsTheyAreShown) {
    EXPECT_EQ(console.OpenWindow(2)->Caption(), shown_);
}

TEST_F(LongNamesTest, AreAskedAboutAsFarAsTheyAreShown) {
    console.View.Selected = 2;
    Answer(BoxAnswer::No);
    DeleteClientRadio(Entries());
    ExpectBox("Confirm Delete",
              "Are you sure you want to delete client:\n\n     \"" + shown_ + "\"?", BoxIcon::None,
              BoxButtons::YesNo);
}

TEST_F(LongNamesTest, AreToldAsFarAsTheyAreShown) {
    dialogs.Name = "Twin";
    dialogs.Address = TextsOf(Entry(2).Channel, Entry(2).Mac);
    AddClientRadio(Entries());
    ExpectBox("Channel/MAC Not Unique",
              "Error: the following client radio already has the same channel and MAC "
              "number:\n\n    " +
                  shown_,
              BoxIcon::Exclamation);
}

TEST_F(LongNamesTest, AreNamedByTheSignalMonitorAsFarAsTheyAreShown) {
    struct View final : SignalView {
        void EnableNext(bool /*enable*/) override {}
        void ShowRadio(const RadioTexts& texts) override { Radio = texts; }
        void ShowLevel(const std::string& /*text*/, int /*barLength*/) override {}
        void HideMonitor() override {}
        RadioTexts Radio;
    } view;
    SignalMonitor monitor;
    monitor.ClientIndex = 2;
    DisplayClient(Book(), monitor, view);
    EXPECT_EQ(view.Radio.Name, shown_);
}

}  // namespace
