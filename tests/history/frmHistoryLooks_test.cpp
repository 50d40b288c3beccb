// What the eye needs of the viewer's list.
#include "history/frmHistory.h"

#include <QHeaderView>
#include <QImage>
#include <QScrollBar>

#include "history/frm_history_fixture.h"

namespace testing_support {
namespace {

class HistoryLooks : public HistoryFormTest {
 protected:
    HistoryLooks() {
        static_cast<LoggerRecord&>(console.State.Logger) = PlainLogger(2, 1);
        for (int i = 0; i < 200; ++i) {
            AddRecord(console.State.History, January(1, i / 60, i % 60),
                      {static_cast<std::uint16_t>(i), 2, 3});
        }
        form = std::make_unique<frmHistory>(console.Make.History(), AnyWindow(), nullptr);
        form->Load();
        form->show();
        QCoreApplication::processEvents();
        list = Find<HistoryList>(*form, "lvwHistory");
    }

    [[nodiscard]] int RowHeight() const {
        return list->visualRect(list->model()->index(0, 0)).height();
    }

    std::unique_ptr<frmHistory> form;
    HistoryList* list = nullptr;
};

TEST_F(HistoryLooks, NoRowLooksChosenBeforeAnybodyChoseOne) {
    EXPECT_FALSE(list->selectionModel()->hasSelection());
    EXPECT_EQ(list->currentIndex().row(), 0) << "where the keys begin";
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_TRUE(list->selectionModel()->isRowSelected(1));
}

TEST_F(HistoryLooks, RowsHaveAirAndFillTheWidth) {
    EXPECT_GE(RowHeight(), list->fontMetrics().height() * 3 / 2);
    EXPECT_EQ(list->header()->length(), list->viewport()->width());
    form->resize(form->width() + 300, form->height());
    QCoreApplication::processEvents();
    EXPECT_EQ(list->header()->length(), list->viewport()->width());
    EXPECT_EQ(list->horizontalScrollBar()->maximum(), 0);
}

// Pixels of the list below its last row that is whole.
QImage Remainder(const HistoryList& list, int rowHeight) {
    const int whole = list.viewport()->height() / rowHeight * rowHeight;
    const QImage picture = list.viewport()->grab().toImage();
    return picture.copy(0, whole, picture.width(), picture.height() - whole);
}

TEST_F(HistoryLooks, TheLastRowOnTheScreenIsWhole) {
    const int height = RowHeight();
    form->resize(form->width(), form->height() + height / 2 - list->viewport()->height() % height);
    QCoreApplication::processEvents();
    ASSERT_GT(list->viewport()->height() % height, 4);
    for (const int row : {0, 1, 100}) {
        list->verticalScrollBar()->setValue(row);
        const QImage rest = Remainder(*list, height);
        const QRgb ground = list->palette().color(QPalette::Base).rgb();
        for (int y = 0; y < rest.height(); ++y) {
            for (int x = 0; x < rest.width(); ++x) {
                ASSERT_EQ(rest.pixel(x, y), ground) << "half a row, scrolled to " << row;
            }
        }
    }
}

}  // namespace
}  // namespace testing_support
