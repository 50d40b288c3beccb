#include "console/frmLog.h"

#include <QLabel>
#include <QMainWindow>
#include <QMdiArea>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>

#include "console/frmWalkLog.h"
#include "console/log_place.h"
#include "forms_bench.h"
#include "platform/qt/twips.h"

namespace {

using namespace forms_bench;

class frmLogTest : public ::testing::Test {
 protected:
    frmLogTest() {
        main.setCentralWidget(area);
        main.resize(1000, 700);
        panel.resize(200, 600);
        Show(main);
    }

    frmLog& Form() { return *area->findChild<frmLog*>(); }
    [[nodiscard]] QString Text() { return Find<QPlainTextEdit>(Form(), "txtLog")->toPlainText(); }
    [[nodiscard]] QString Caption() { return Find<QPushButton>(Form(), "cmdClose")->text(); }

    QMainWindow main;
    QMdiArea* area = new QMdiArea(&main);
    QWidget panel;
    WalkLogForm log{main, *area, panel};
};

TEST_F(frmLogTest, ClosedLogTakesNothing) {
    log.AppendLog("lost");
    log.EndLog();
    EXPECT_FALSE(log.LogWindowOpen());
    EXPECT_FALSE(log.CancelRequested());
    EXPECT_EQ(area->findChild<frmLog*>(), nullptr);
}

TEST_F(frmLogTest, OpensEmptyWithTheFocusOnCancel) {
    log.OpenLog();
    QCoreApplication::processEvents();
    EXPECT_TRUE(log.LogWindowOpen());
    EXPECT_EQ(Form().windowTitle(), QStringLiteral("Multiple Client Operation Log"));
    EXPECT_EQ(Text(), QString());
    EXPECT_EQ(Caption(), QStringLiteral("Canc&el"));
    EXPECT_EQ(Focused(), "cmdClose");
    EXPECT_TRUE(Find<QPlainTextEdit>(Form(), "txtLog")->isReadOnly());
}

TEST_F(frmLogTest, AFootStandsBesideTheButtonWhileThereIsOne) {
    log.SetFoot("lost");
    log.OpenLog();
    QCoreApplication::processEvents();
    auto* foot = Find<QLabel>(Form(), "lblFoot");
    auto* button = Find<QPushButton>(Form(), "cmdClose");
    const QRect alone = button->geometry();
    EXPECT_FALSE(foot->isVisible());
    log.SetFoot("Site 3: 120 of 10000 records");
    QCoreApplication::processEvents();
    EXPECT_TRUE(foot->isVisible());
    EXPECT_EQ(foot->text(), QStringLiteral("Site 3: 120 of 10000 records"));
    EXPECT_EQ(button->geometry(), alone);
    log.SetFoot("");
    EXPECT_FALSE(foot->isVisible());
    log.SetFoot("more");
    log.OpenLog();
    EXPECT_FALSE(foot->isVisible());
}

TEST_F(frmLogTest, FollowsItsOutput) {
    log.OpenLog();
    for (int line = 0; line < 500; ++line) {
        log.AppendLog("Getting sample for client window Pump & 3...OK\n");
    }
    const auto* text = Find<QPlainTextEdit>(Form(), "txtLog");
    EXPECT_TRUE(text->textCursor().atEnd());
    EXPECT_TRUE(text->viewport()->rect().intersects(text->cursorRect()));
    EXPECT_EQ(text->blockCount(), 501);
}

TEST_F(frmLogTest, PressingCancelTwiceLogsTheRequestOnce) {
    log.OpenLog();
    Click(Form(), "cmdClose");
    EXPECT_TRUE(log.CancelRequested());
    Click(Form(), "cmdClose");
    EXPECT_EQ(Text(), QStringLiteral("\nCancel Request...\n"));
    EXPECT_TRUE(Form().isVisible());
}

TEST_F(frmLogTest, EnterOnTheButtonPressesItAndOneThatIsStillHeldDoesNot) {
    log.OpenLog();
    auto* button = Find(Form(), "cmdClose");
    QTest::simulateEvent(button, true, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
    EXPECT_FALSE(log.CancelRequested()) << "the key that chose the menu item";
    QTest::keyClick(button, Qt::Key_Return);
    EXPECT_TRUE(log.CancelRequested());
}

TEST_F(frmLogTest, CloseHidesTheLogAndTheNextWalkEmptiesIt) {
    log.OpenLog();
    log.AppendLog("Done\n");
    log.EndLog();
    EXPECT_EQ(Caption(), QStringLiteral("Clos&e"));
    Click(Form(), "cmdClose");
    EXPECT_FALSE(Form().isVisible());
    EXPECT_TRUE(log.LogWindowOpen()) << "hidden, but loaded";
    const frmLog* before = &Form();
    log.OpenLog();
    EXPECT_EQ(&Form(), before);
    EXPECT_TRUE(Form().isVisible());
    EXPECT_EQ(Text(), QString());
    EXPECT_EQ(Caption(), QStringLiteral("Canc&el"));
    EXPECT_FALSE(log.CancelRequested());
}

TEST_F(frmLogTest, CancelledWalkStartsItsNextWithoutTheRequest) {
    log.OpenLog();
    Click(Form(), "cmdClose");
    log.EndLog();
    log.OpenLog();
    EXPECT_FALSE(log.CancelRequested());
}

TEST_F(frmLogTest, ClosedByItsFrameItIsGone) {
    log.OpenLog();
    const QPointer<frmLog> form(&Form());
    form->close();
    EXPECT_FALSE(log.LogWindowOpen());
    log.AppendLog("lost");
    log.EndLog();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(form.isNull());
    log.OpenLog();
    EXPECT_TRUE(log.LogWindowOpen());
}

TEST_F(frmLogTest, MinimizedLogComesBackToItsNormalSize) {
    log.OpenLog();
    Form().showMinimized();
    log.OpenLog();
    EXPECT_FALSE(Form().isMinimized());
}

TEST_F(frmLogTest, TextFillsTheWindowWhenThatIsResized) {
    log.OpenLog();
    Form().resize(700, 500);
    QCoreApplication::processEvents();
    EXPECT_GT(Find(Form(), "txtLog")->width(), 650);
    EXPECT_GT(Find(Form(), "txtLog")->height(), 380);
}

TEST_F(frmLogTest, ShowsTenLinesAtLeast) {
    log.OpenLog();
    QCoreApplication::processEvents();
    const auto* text = Find<QPlainTextEdit>(Form(), "txtLog");
    EXPECT_GE(text->viewport()->height() / text->fontMetrics().lineSpacing(), 10);
}

TEST_F(frmLogTest, StandsTowardsTheLowerRight) {
    log.OpenLog();
    const int left = 1000 * TwipsPerPixel - Form().width() * TwipsPerPixel - 200 * TwipsPerPixel;
    EXPECT_EQ(Form().x(), PixelsOfTwips(left - 550));
    EXPECT_EQ(Form().y(),
              PixelsOfTwips(600 * TwipsPerPixel - Form().height() * TwipsPerPixel - 400));
    KeepPictures(Form());
    ExpectReach(Form());
}

}  // namespace
