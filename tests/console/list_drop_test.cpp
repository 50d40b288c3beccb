#include "console/list_drop.h"

#include "book_bench.h"

namespace {

using namespace testing_support;

/// Places in the list: the middle of an item.
int In(int item) {
    return (item - 1) * FakeClientList::ItemHeight + FakeClientList::ItemHeight / 2;
}

class ListDropTest : public BookBench {};

TEST_F(ListDropTest, ExchangesTwoEntriesAndFilesTheBook) {
    DropOnList(Drops(), "Site 1", In(3));
    EXPECT_EQ(Names(), "Site 3,Site 2,Site 1");
    EXPECT_EQ(console.View.Selected, 3);
}

TEST_F(ListDropTest, ItemOnItselfIsExchangedWithItselfAndFiled) {
    WriteFile(Path, "");
    DropOnList(Drops(), "Site 2", In(2));
    EXPECT_EQ(Names(), "Site 1,Site 2,Site 3");
    EXPECT_EQ(console.View.Selected, 2);
}

TEST_F(ListDropTest, SecondOfTwoEntriesOfOneNameMovesTheFirst) {
    Entry(3).Name = "Site 1";
    Entry(3).Channel = 0x33;
    RefreshClientList(Book(), console.View);
    DropOnList(Drops(), "Site 1", In(2));
    EXPECT_EQ(Names(), "Site 2,Site 1,Site 1");
    EXPECT_EQ(Entry(3).Channel, 0x33);
}

TEST_F(ListDropTest, BelowTheLastItemIsTheLastItem) {
    DropOnList(Drops(), "Site 1", 5000);
    EXPECT_EQ(Names(), "Site 3,Site 2,Site 1");
}

TEST_F(ListDropTest, AboveTheFirstItemIsTheFirstItem) {
    DropOnList(Drops(), "Site 3", -40);
    EXPECT_EQ(Names(), "Site 3,Site 2,Site 1");
    EXPECT_EQ(console.View.Selected, 1);
}

TEST_F(ListDropTest, NothingHappensDuringAnOperation) {
    console.State.OperationsRecord.OperationBusy = True;
    DropOnList(Drops(), "Site 1", In(3));
    EXPECT_EQ(Names(), "Site 1,Site 2,Site 3");
}

TEST_F(ListDropTest, DragThatIsNoTextDoesNothing) {
    DropOnList(Drops(), std::nullopt, In(3));
    EXPECT_EQ(Names(), "Site 1,Site 2,Site 3");
}

TEST_F(ListDropTest, TextOfNoItemDoesNothing) {
    DropOnList(Drops(), "Elsewhere", In(3));
    EXPECT_EQ(Names(), "Site 1,Site 2,Site 3");
}

TEST_F(ListDropTest, ListOfOneItemTakesNothing) {
    Book().Entries.Remove(3);
    Book().Entries.Remove(2);
    RefreshClientList(Book(), console.View);
    WriteFile(Path, "untouched");
    DropOnList(Drops(), "Site 1", In(1));
    EXPECT_EQ(FileContents(Path), "untouched");
}

TEST_F(ListDropTest, ListOfTwoItemsIsEnough) {
    Book().Entries.Remove(3);
    RefreshClientList(Book(), console.View);
    DropOnList(Drops(), "Site 1", In(2));
    EXPECT_EQ(Names(), "Site 2,Site 1");
}

TEST_F(ListDropTest, ListThatShowsAnotherBookTakesNothing) {
    Book().Entries.Reset();
    DropOnList(Drops(), "Site 1", In(3));
    EXPECT_EQ(Book().Entries.UpperBound(), 0);
}

TEST_F(ListDropTest, OpenWindowsFollowTheirEntries) {
    const auto window = console.OpenWindow(1);
    DropOnList(Drops(), "Site 1", In(3));
    EXPECT_EQ(window->Index, 3);
    EXPECT_EQ(Entry(3).WindowIndex, 0);
    EXPECT_EQ(Entry(1).WindowIndex, NoWindow);
    EXPECT_EQ(console.View.Clients[2].Icon, IconWindowOpen);
    EXPECT_EQ(console.View.Clients[0].Icon, IconNoWindow);
}

TEST_F(ListDropTest, SampledClientIsFollowedBothWays) {
    Sampling& sampling = console.State.SamplingRecord;
    sampling.ContinuousMode = ContinuousSecondRequest;
    sampling.ContinuousClient = 1;
    DropOnList(Drops(), "Site 1", In(3));
    EXPECT_EQ(sampling.ContinuousClient, 3);
    DropOnList(Drops(), "Site 3", In(3));
    EXPECT_EQ(sampling.ContinuousClient, 1);
    DropOnList(Drops(), "Site 2", In(3));
    EXPECT_EQ(sampling.ContinuousClient, 1);
}

TEST_F(ListDropTest, NumberOfAnIdleModeIsLeftAlone) {
    console.State.SamplingRecord.ContinuousClient = 1;
    DropOnList(Drops(), "Site 1", In(3));
    EXPECT_EQ(console.State.SamplingRecord.ContinuousClient, 1);
}

TEST_F(ListDropTest, SelectionFollowsThePointer) {
    DragOverList(list, In(2));
    EXPECT_EQ(console.View.Selected, 2);
    DragOverList(list, In(3));
    EXPECT_EQ(console.View.Selected, 3);
}

TEST_F(ListDropTest, DragOverAnEmptyListSelectsNothing) {
    console.View.ClearClients();
    console.View.Selected = 0;
    DragOverList(list, 5);
    EXPECT_EQ(console.View.Selected, 0);
}

}  // namespace
