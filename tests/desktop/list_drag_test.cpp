#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <vector>

#include "console/frmClientList.h"

// Dragging with a pointer, which needs a window system that has one.

namespace {

/// A moment of the pointer: where it is, and whether the button comes up there.
struct PointerStep {
    QPoint Place;
    bool Releases = false;
};

class ListDragTest : public ::testing::Test {
 protected:
    ListDragTest() {
        window.resize(240, 320);
        list.resize(240, 320);
        for (const char* name : {"Site 1", "Site 2", "Site 3", "Site 4"}) {
            list.addItem(QLatin1String(name));
        }
        window.show();
        window.activateWindow();
        QTest::qWait(100);
    }

    QPoint PlaceOf(int item) {
        const QPoint place = list.visualItemRect(list.item(item - 1)).center();
        return list.viewport()->mapTo(&window, place);
    }

    /// Presses on an item, moves on from step to step, each a moment later, and waits till all is
    /// over. The drag has an event loop of its own, so the steps come by timer.
    void DragFrom(int item, const std::vector<PointerStep>& steps) {
        QWindow* whole = window.windowHandle();
        const QPoint start = PlaceOf(item);
        int delay = 0;
        QTimer::singleShot(delay, &window,
                           [=] { QTest::mousePress(whole, Qt::LeftButton, {}, start); });
        for (const PointerStep& step : steps) {
            delay += 40;
            QTimer::singleShot(delay, &window, [=] {
                QTest::mouseMove(whole, step.Place);
                if (step.Releases) {
                    QTest::mouseRelease(whole, Qt::LeftButton, {}, step.Place);
                }
            });
        }
        QTest::qWait(delay + 300);
    }

    struct Drop {
        std::string Text;
        int Item;
    };

    int ItemAt(int y) { return list.row(list.itemAt(5, y)) + 1; }

    int clicks = 0;
    std::vector<Drop> drops;
    std::vector<int> selected;
    QWidget window;
    ClientListWidget list{&window,
                          {[this] { ++clicks; }, [] {},
                           [this](const std::optional<std::string>& text, int y) {
                               drops.push_back({text.value_or("(none)"), ItemAt(y)});
                           }}};
};

TEST_F(ListDragTest, ItemIsDroppedWhereTheButtonComesUpAndThatIsNoClick) {
    QObject::connect(&list, &QListWidget::currentRowChanged, &list,
                     [this](int row) { selected.push_back(row + 1); });
    const QPoint start = PlaceOf(1);
    DragFrom(1, {{start + QPoint(4, 4)},
                 {start + QPoint(14, 10)},
                 {PlaceOf(2)},
                 {PlaceOf(3)},
                 {PlaceOf(3) + QPoint(2, 1)},
                 {PlaceOf(3), true}});
    ASSERT_EQ(drops.size(), 1U);
    EXPECT_EQ(drops[0].Text, "Site 1");
    EXPECT_EQ(drops[0].Item, 3);
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(selected.back(), 3) << "the selection follows the pointer";
}

TEST_F(ListDragTest, ClickWithoutADragIsAClick) {
    DragFrom(2, {{PlaceOf(2), true}});
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(drops.empty());
}

TEST_F(ListDragTest, ClickAfterADragIsAClickAgain) {
    const QPoint start = PlaceOf(1);
    DragFrom(1, {{start + QPoint(14, 10)}, {PlaceOf(2)}, {PlaceOf(2), true}});
    DragFrom(2, {{PlaceOf(2), true}});
    EXPECT_EQ(clicks, 1);
}

}  // namespace
