#include "console/entry_editing.h"

#include "book_bench.h"
#include "console/client_list.h"

namespace {

using namespace testing_support;

constexpr const char* Updated = "The current address book has been updated.";

class EntryEditingTest : public BookBench {
 protected:
    /// The wizard is filled in to its end.
    void FillWizard(const std::string& name, const AddressTexts& address) {
        dialogs.Name = name;
        dialogs.Address = address;
    }

    const AddressTexts NewAddress{"2A", {"00", "A0", "96", "12", "34", "56"}};
};

TEST_F(EntryEditingTest, AddedEntryGoesToTheEnd) {
    FillWizard("  Pump 3 ", NewAddress);
    AddClientRadio(Entries());
    EXPECT_EQ(Names(), "Site 1,Site 2,Site 3,Pump 3");
    EXPECT_EQ(Entry(4).Channel, 0x2A);
    EXPECT_EQ(Entry(4).Mac, (MacAddress{0x00, 0xA0, 0x96, 0x12, 0x34, 0x56}));
    EXPECT_EQ(Entry(4).WindowIndex, NoWindow);
    EXPECT_EQ(Entry(4).SmallIcon, IconNoWindow);
    ExpectBox("", Updated, BoxIcon::Information);
}

TEST_F(EntryEditingTest, WithoutABookNothingIsAdded) {
    console.State.SettingsRecord.AddressBookPath.clear();
    FillWizard("Pump 3", NewAddress);
    AddClientRadio(Entries());
    EXPECT_EQ(Book().Entries.UpperBound(), 3);
    ExpectBox("No Address Book Loaded",
              "Before adding a new client, you need to open an existing address book file\nor "
              "create a new address book file. Use the \"File\" pulldown menu.",
              BoxIcon::None);
    EXPECT_FALSE(dialogs.Offered);
}

TEST_F(EntryEditingTest, FullBookIsToldBeforeTheWizard) {
    while (Book().Entries.UpperBound() < MostEntries) {
        Book().Entries.Append({});
    }
    FillWizard("Pump 3", NewAddress);
    AddClientRadio(Entries());
    EXPECT_EQ(Book().Entries.UpperBound(), MostEntries);
    EXPECT_FALSE(dialogs.Offered);
    ExpectBox("Address Book Full", "The address book cannot take any more client radios.",
              BoxIcon::Exclamation);
}

TEST_F(EntryEditingTest, CancelOnPageOneAddsNothing) {
    AddClientRadio(Entries());
    EXPECT_EQ(Names(), "Site 1,Site 2,Site 3");
    EXPECT_FALSE(dialogs.Offered);
    EXPECT_TRUE(Shown().empty());
}

TEST_F(EntryEditingTest, CancelOnPageTwoLosesTheNameTyped) {
    dialogs.Name = "Pump 3";
    AddClientRadio(Entries());
    EXPECT_EQ(Names(), "Site 1,Site 2,Site 3");
    EXPECT_TRUE(dialogs.Offered);
    EXPECT_TRUE(Shown().empty());
}

TEST_F(EntryEditingTest, NextEntryIsOfferedChannelAndPrefixOfThisOne) {
    FillWizard("Pump 3", NewAddress);
    AddClientRadio(Entries());
    AddClientRadio(Entries());
    ASSERT_TRUE(dialogs.Offered);
    EXPECT_EQ(dialogs.Offered->Channel, "2A");
    EXPECT_EQ(dialogs.Offered->Mac,
              (std::array<std::string, 6>{"00", "A0", "96", "00", "00", "00"}));
}

TEST_F(EntryEditingTest, RejectedDuplicateKeepsItsDefaultsForTheNextAdd) {
    Entry(2).Channel = 0x15;
    Entry(2).Mac = {9, 8, 7, 6, 5, 4};
    FillWizard("Twin", TextsOf(0x15, {9, 8, 7, 6, 5, 4}));
    AddClientRadio(Entries());
    EXPECT_EQ(Book().Entries.UpperBound(), 3);
    ExpectBox("Channel/MAC Not Unique",
              "Error: the following client radio already has the same channel and MAC "
              "number:\n\n    Site 2",
              BoxIcon::Exclamation);
    EXPECT_EQ(Book().LastChannel, 0x15);
    EXPECT_EQ(Book().LastMacPrefix, (std::array<std::uint8_t, 3>{9, 8, 7}));
}

TEST_F(EntryEditingTest, EditChangesBookListAndFile) {
    console.View.Selected = 2;
    dialogs.Edited = EntryTexts{" Weir ", NewAddress};
    EditClientRadio(Entries());
    ASSERT_TRUE(dialogs.Shown);
    EXPECT_EQ(dialogs.Shown->Name, "Site 2");
    EXPECT_EQ(dialogs.Shown->Address.Mac[5], "02");
    EXPECT_EQ(Names(), "Site 1,Weir,Site 3");
    EXPECT_EQ(Entry(2).Channel, 0x2A);
    ExpectBox("", Updated, BoxIcon::Information);
}

TEST_F(EntryEditingTest, EntryCanBeEditedWhileItsWindowIsOpen) {
    const auto window = console.OpenWindow(2);
    dialogs.Edited = EntryTexts{"Weir", NewAddress};
    EditClientRadio(Entries());
    EXPECT_EQ(window->Title, "Weir");
    EXPECT_EQ(Entry(2).WindowIndex, 0);
    EXPECT_EQ(Entry(2).SmallIcon, IconWindowOpen);
}

TEST_F(EntryEditingTest, EditTakesAnyNameAndADuplicateAddress) {
    console.View.Selected = 2;
    dialogs.Edited = EntryTexts{"", TextsOf(Entry(1).Channel, Entry(1).Mac)};
    EditClientRadio(Entries());
    EXPECT_EQ(Names(), "Site 1,,Site 3");
    dialogs.Edited->Name = "Site 1";
    EditClientRadio(Entries());
    EXPECT_EQ(Names(), "Site 1,Site 1,Site 3");
}

TEST_F(EntryEditingTest, CancelledEditChangesNothing) {
    console.View.Selected = 2;
    EditClientRadio(Entries());
    EXPECT_EQ(Names(), "Site 1,Site 2,Site 3");
    EXPECT_TRUE(Shown().empty());
}

TEST_F(EntryEditingTest, NothingSelectedIsNothingToEditOrDelete) {
    for (const int selected : {0, -1, 4}) {
        console.View.Selected = selected;
        dialogs.Edited = EntryTexts{"Weir", NewAddress};
        EditClientRadio(Entries());
        DeleteClientRadio(Entries());
        EXPECT_FALSE(dialogs.Shown);
        EXPECT_TRUE(Shown().empty());
        EXPECT_EQ(Names(), "Site 1,Site 2,Site 3");
    }
}

TEST_F(EntryEditingTest, ItemThatTheKeysGoToButIsNotHighlightedIsNotSelected) {
    list.TakeFocus();
    ASSERT_EQ(console.View.Current, 1);
    dialogs.Edited = EntryTexts{"Weir", NewAddress};
    EditClientRadio(Entries());
    DeleteClientRadio(Entries());
    OpenOrActivateClient(Book(), console.State.Windows, console.View);
    EXPECT_FALSE(dialogs.Shown);
    EXPECT_TRUE(Shown().empty());
    EXPECT_EQ(Names(), "Site 1,Site 2,Site 3");
    EXPECT_EQ(console.State.Windows.NumClientWindows, 0);
}

TEST_F(EntryEditingTest, SelectionGoesToTheNeighbourOfADeletedEntry) {
    console.View.Selected = 2;
    DeleteClientRadio(Entries());
    DeleteClientRadio(Entries());
    EXPECT_EQ(Names(), "Site 1");
    EXPECT_EQ(console.View.Selected, 1);
}

TEST_F(EntryEditingTest, NewAddressOfAnOpenWindowAppliesFromItsNextSelection) {
    console.Connect();
    const auto window = console.OpenWindow(1);
    GetSample(console.Operation());
    console.View.Selected = 1;
    dialogs.Edited = EntryTexts{"Site 1", TextsOf(Entry(2).Channel, Entry(2).Mac)};
    EditClientRadio(Entries());
    GetSample(console.Operation());
    EXPECT_EQ(window->State.LoggerName, "Site 2");
}

TEST_F(EntryEditingTest, EntryWithAnOpenWindowCannotBeDeleted) {
    console.OpenWindow(2);
    console.View.Selected = 2;
    DeleteClientRadio(Entries());
    EXPECT_EQ(Names(), "Site 1,Site 2,Site 3");
    ExpectBox("Delete Error",
              "This client entry cannot be deleted because its client window is open",
              BoxIcon::Exclamation);
}

TEST_F(EntryEditingTest, ClosedWindowLetsItsEntryBeDeleted) {
    console.OpenWindow(2)->Unload();
    console.View.Selected = 2;
    DeleteClientRadio(Entries());
    EXPECT_EQ(Names(), "Site 1,Site 3");
}

TEST_F(EntryEditingTest, DeleteAsksAndTells) {
    console.View.Selected = 2;
    DeleteClientRadio(Entries());
    ASSERT_EQ(Shown().size(), 2U);
    EXPECT_EQ(Shown()[0].Text, "Are you sure you want to delete client:\n\n     \"Site 2\"?");
    EXPECT_EQ(Shown()[0].Title, "Confirm Delete");
    EXPECT_EQ(Shown()[0].Icon, BoxIcon::None);
    EXPECT_EQ(Shown()[0].Buttons, BoxButtons::YesNo);
    EXPECT_EQ(Shown()[1].Text, Updated);
    EXPECT_EQ(Shown()[1].Title, "");
    EXPECT_EQ(Names(), "Site 1,Site 3");
}

TEST_F(EntryEditingTest, NoKeepsTheEntry) {
    console.View.Selected = 2;
    Answer(BoxAnswer::No);
    DeleteClientRadio(Entries());
    EXPECT_EQ(Names(), "Site 1,Site 2,Site 3");
    EXPECT_EQ(Shown().size(), 1U);
}

TEST_F(EntryEditingTest, WindowsBehindADeletedEntryGetTheirNewNumbers) {
    const auto before = console.OpenWindow(1);
    const auto behind = console.OpenWindow(3);
    console.View.Selected = 2;
    DeleteClientRadio(Entries());
    EXPECT_EQ(before->Index, 1);
    EXPECT_EQ(behind->Index, 2);
    EXPECT_EQ(Entry(2).WindowIndex, 1);
    EXPECT_EQ(console.View.Clients[1].Icon, IconWindowOpen);
}

TEST_F(EntryEditingTest, SampledClientIsFollowedWhenAnEntryBeforeItIsDeleted) {
    Sampling& sampling = console.State.SamplingRecord;
    console.Connect();
    const auto window = console.OpenWindow(3);
    SampleContinuously(console.Operation());
    console.View.Selected = 1;
    DeleteClientRadio(Entries());
    EXPECT_EQ(sampling.ContinuousClient, 2);
    const auto points = window->Points.size();
    console.Outside.Time.Run(5 * Second);
    EXPECT_GT(window->Points.size(), points);
    EXPECT_NE(sampling.ContinuousMode, SamplingIdle);
}

TEST_F(EntryEditingTest, SampledClientThatIsDeletedLeavesItsNumberToNobody) {
    console.Connect();
    console.OpenWindow(1);
    SampleContinuously(console.Operation());
    console.Outside.Time.Run(3 * Second);
    std::static_pointer_cast<FakeClientWindow>(console.State.Windows.At(0))->Unload();
    console.View.Selected = 1;
    DeleteClientRadio(Entries());
    const auto other = console.OpenWindow(1);
    ASSERT_EQ(other->Title, "Site 2");
    ASSERT_EQ(Entry(1).WindowIndex, 0) << "number and slot are those of the sampled window";
    console.Outside.Time.Run(3 * Second);
    EXPECT_TRUE(other->Points.empty()) << "what the other logger measures is not shown here";
    EXPECT_EQ(console.State.SamplingRecord.ContinuousMode, SamplingIdle);
}

TEST_F(EntryEditingTest, DeletingBehindTheSampledClientKeepsItsNumber) {
    console.State.SamplingRecord.ContinuousClient = 1;
    console.View.Selected = 2;
    DeleteClientRadio(Entries());
    EXPECT_EQ(console.State.SamplingRecord.ContinuousClient, 1);
}

TEST_F(EntryEditingTest, ChosenClientIsSelectedInTheList) {
    dialogs.Picked = 3;
    EXPECT_TRUE(ChooseClientFromList(Entries()));
    EXPECT_EQ(dialogs.Names, (std::vector<std::string>{"Site 1", "Site 2", "Site 3"}));
    EXPECT_EQ(console.View.Selected, 3);
}

TEST_F(EntryEditingTest, CancelledChoiceSelectsNothing) {
    console.View.Selected = 1;
    EXPECT_FALSE(ChooseClientFromList(Entries()));
    EXPECT_EQ(console.View.Selected, 1);
}

TEST_F(EntryEditingTest, EmptyListOffersNoChoice) {
    console.View.ClearClients();
    dialogs.Picked = 1;
    EXPECT_FALSE(ChooseClientFromList(Entries()));
    EXPECT_TRUE(dialogs.Names.empty());
}

}  // namespace
