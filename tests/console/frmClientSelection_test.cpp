// What counts as the selected client: the row that is highlighted, whatever row the list calls
// current.
#include <QListWidget>
#include <QPointer>

#include "console/frmEditClient.h"
#include "console/frmSelectClient.h"
#include "main_console_bench.h"

namespace {

using namespace forms_bench;
using namespace testing_support;

class frmClientSelectionTest : public frmMainConsoleTest {
 protected:
    /// Gives the list the focus, as Tab or a click elsewhere in the window does: its first row is
    /// the current one then, with nothing highlighted.
    void ComeToTheList() {
        List().setFocus();
        ASSERT_EQ(List().currentRow(), 0);
        ASSERT_TRUE(List().selectedItems().isEmpty());
    }
    QPoint BelowTheItems() {
        const QPoint place(5, List().viewport()->height() - 2);
        EXPECT_EQ(List().itemAt(place), nullptr);
        return place;
    }
    void ClickBelowTheItems() {
        QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, BelowTheItems());
        QCoreApplication::processEvents();
    }
    int Opened() { return state_.Windows.NumClientWindows; }
};

TEST_F(frmClientSelectionTest, ClickBelowTheItemsOpensNothingWhileNoneIsHighlighted) {
    ComeToTheList();
    ClickBelowTheItems();
    EXPECT_EQ(Opened(), 0);
}

TEST_F(frmClientSelectionTest, ClickBelowTheItemsOpensTheHighlightedClient) {
    List().setCurrentRow(1);
    ClickBelowTheItems();
    ASSERT_EQ(Opened(), 1);
    EXPECT_EQ(Window(0)->Caption(), "Site 2");
    EXPECT_EQ(window_->SelectedClient(), 2) << "it stays highlighted";
}

TEST_F(frmClientSelectionTest, ReleaseBesideTheItemPressedOnOpensThat) {
    QTest::mousePress(List().viewport(), Qt::LeftButton, {}, PlaceOf(3));
    QTest::mouseRelease(List().viewport(), Qt::LeftButton, {}, BelowTheItems());
    ASSERT_EQ(Opened(), 1);
    EXPECT_EQ(Window(0)->Caption(), "Site 3");
}

TEST_F(frmClientSelectionTest, ClientWhoseHighlightIsTakenOffIsNotOpened) {
    ClickItem(2, Qt::RightButton);
    forms_bench::Find<QMenu>(*window_, "mnuClientS")->close();
    ASSERT_EQ(List().selectedItems().size(), 1);
    QTest::mouseClick(List().viewport(), Qt::LeftButton, Qt::ControlModifier, PlaceOf(2));
    ASSERT_TRUE(List().selectedItems().isEmpty());
    ASSERT_EQ(List().currentRow(), 1);
    EXPECT_EQ(Opened(), 0);
}

TEST_F(frmClientSelectionTest, EnterOpensNothingWhileNoneIsHighlighted) {
    ComeToTheList();
    QTest::keyClick(&List(), Qt::Key_Return);
    EXPECT_EQ(Opened(), 0);
}

TEST_F(frmClientSelectionTest, KeysAloneReachEveryClient) {
    ComeToTheList();
    QTest::keyClick(&List(), Qt::Key_Space);
    QTest::keyClick(&List(), Qt::Key_Return);
    ASSERT_EQ(Opened(), 1);
    EXPECT_EQ(Window(0)->Caption(), "Site 1");
    List().setFocus();
    QTest::keyClick(&List(), Qt::Key_Down);
    QTest::keyClick(&List(), Qt::Key_Return);
    ASSERT_EQ(Opened(), 2);
    EXPECT_EQ(Window(1)->Caption(), "Site 2");
}

TEST_F(frmClientSelectionTest, RowsOfTheMenuDoNothingWhileNoneIsHighlighted) {
    AwaitRow("mnuDeleteClient");
    ComeToTheList();
    const ModalAnswer<frmEditClient> edit([](frmEditClient& form) { form.reject(); });
    for (const char* row : {"mnuViewClient", "mnuDeleteClient", "mnuEditClient"}) {
        Choose(row);
    }
    EXPECT_EQ(Opened(), 0);
    EXPECT_FALSE(edit.Given());
    EXPECT_TRUE(boxes_.Shown.empty()) << "nobody is asked about a row that is not highlighted";
    EXPECT_EQ(Names(), "Site 1,Site 2,Site 3");
}

TEST_F(frmClientSelectionTest, BookJustLoadedHasNoneHighlighted) {
    List().setCurrentRow(2);
    EXPECT_EQ(window_->SelectedClient(), 3);
    List().setFocus();
    RefreshClientList(state_.Book, *window_);
    EXPECT_EQ(window_->SelectedClient(), 0);
}

TEST_F(frmClientSelectionTest, NeighbourOfADeletedEntryIsHighlighted) {
    AwaitRow("mnuDeleteClient");
    List().setCurrentRow(1);
    Choose("mnuDeleteClient");
    ASSERT_EQ(Names(), "Site 1,Site 3");
    EXPECT_EQ(window_->SelectedClient(), 2) << "the one behind it";
    Choose("mnuDeleteClient");
    ASSERT_EQ(Names(), "Site 1");
    EXPECT_EQ(window_->SelectedClient(), 1) << "the one before the last";
    Choose("mnuDeleteClient");
    EXPECT_EQ(window_->SelectedClient(), 0);
}

TEST_F(frmClientSelectionTest, EnterInThePickerTakesTheHighlightedRow) {
    frmSelectClient form({"North", "Weir", "Pump 3"}, nullptr);
    Show(form);
    auto* list = forms_bench::Find<QListWidget>(form, "lstClients");
    list->setCurrentRow(2);
    list->setCurrentRow(0, QItemSelectionModel::NoUpdate);
    ASSERT_EQ(list->selectedItems().size(), 1);
    Press(Qt::Key_Return);
    EXPECT_EQ(form.Tag, "Okay");
    EXPECT_EQ(form.Chosen(), 3);
}

}  // namespace
