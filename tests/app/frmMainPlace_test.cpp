// Size, place and views from one start to the next.
#include <QGuiApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScreen>
#include <QScrollBar>

#include "app/frmMain_fixture.h"

namespace testing_support {
namespace {

class MainWindowPlace : public MainWindowTest {
 protected:
    std::string& Kept() { return host_.Virtual.Store.Values["Windows/Main"]; }
    void Cancel() {
        Start([](frmConnect& dialog) { dialog.reject(); });
    }
};

TEST_F(MainWindowPlace, TheVeryFirstStartHasTheToldSize) {
    Cancel();
    EXPECT_EQ(window_->size(), QSize(893, 633));
    EXPECT_EQ(host_.Virtual.Store.Values.count("Windows/Main"), 0U) << "not before the end";
}

TEST_F(MainWindowPlace, TheNextStartHasTheSizeAndPlaceOfTheLastEnd) {
    Kept() = "30 40 640 480 normal";
    Cancel();
    EXPECT_EQ(window_->geometry(), QRect(30, 40, 640, 480));
    window_->setGeometry(50, 60, 700, 500);
    EXPECT_TRUE(window_->close());
    EXPECT_EQ(Kept(), "50 60 700 500 normal");
}

TEST_F(MainWindowPlace, AMaximizedWindowComesBackMaximizedAndKnowsItsNormalSize) {
    Kept() = "30 40 640 480 maximized";
    Cancel();
    EXPECT_TRUE(window_->isMaximized());
    EXPECT_TRUE(window_->close());
    EXPECT_EQ(Kept(), "30 40 640 480 maximized");
}

TEST_F(MainWindowPlace, AScreenThatIsGoneIsNoticed) {
    Kept() = "9000 9000 640 480 normal";
    Cancel();
    EXPECT_TRUE(
        QGuiApplication::primaryScreen()->availableGeometry().contains(window_->geometry()));
}

TEST_F(MainWindowPlace, WhatIsNoPlaceLeavesTheToldSize) {
    Kept() = "wide";
    Cancel();
    EXPECT_EQ(window_->size(), QSize(893, 633));
}

TEST_F(MainWindowPlace, AViewThatDoesNotFitHasAScrollBarInSight) {
    StartConnected();
    ClickClient(1);
    QTest::mouseClick(WindowOf(1)->findChild<QPushButton*>(QStringLiteral("cmdWide")),
                      Qt::LeftButton);
    QCoreApplication::processEvents();
    const auto& area = Find<QMdiArea>("MDIArea");
    ASSERT_GT(WindowOf(1)->width(), area.viewport()->width());
    const QScrollBar* bar = area.horizontalScrollBar();
    EXPECT_TRUE(bar->isVisible());
    EXPECT_GT(bar->maximum(), 0);
    const QPoint corner = bar->mapTo(window_.get(), bar->rect().bottomRight());
    EXPECT_TRUE(window_->rect().contains(corner));
}

TEST_F(MainWindowPlace, AWindowThatIsOpenedAgainHasTheViewItLastHad) {
    StartConnected();
    ClickClient(1);
    QTest::mouseClick(WindowOf(1)->findChild<QPushButton*>(QStringLiteral("cmdSmall")),
                      Qt::LeftButton);
    const QSize small = WindowOf(1)->size();
    WindowOf(1)->close();
    ClickClient(2);
    EXPECT_NE(WindowOf(2)->size(), small) << "it has one of its own";
    ClickClient(1);
    EXPECT_EQ(WindowOf(1)->size(), small);
}

}  // namespace
}  // namespace testing_support
