#include "platform/qt/help_key.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QBoxLayout>
#include <QDialog>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTest>

namespace {

using Names = std::vector<std::string>;

/// A window with a field in a frame, which has no name.
class HelpKeyTest : public ::testing::Test {
 protected:
    void SetUp() override {
        window_.setObjectName(QStringLiteral("window"));
        auto* frame = new QGroupBox(&window_);
        (new QVBoxLayout(&window_))->addWidget(frame);
        field_ = new QLineEdit(frame);
        field_->setObjectName(QStringLiteral("field"));
        (new QVBoxLayout(frame))->addWidget(field_);
        ShowActive(window_);
        field_->setFocus();
    }

    static void ShowActive(QWidget& window) {
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    /// Presses a key as the window system does.
    static void Press(const QWidget& window, Qt::Key key, Qt::KeyboardModifiers held = {}) {
        QTest::keyClick(window.windowHandle(), key, held);
    }

    QWidget window_;
    QLineEdit* field_ = nullptr;
    std::vector<Names> told_;
    HelpKey key_{[this](const Names& names) { told_.push_back(names); }};
};

TEST_F(HelpKeyTest, TellsOnceWhereTheFocusIs) {
    Press(window_, Qt::Key_F1);
    EXPECT_EQ(told_, (std::vector<Names>{{"field", "window"}}));
}

TEST_F(HelpKeyTest, AWindowWithoutFocusTellsItself) {
    field_->clearFocus();
    Press(window_, Qt::Key_F1);
    EXPECT_EQ(told_, (std::vector<Names>{{"window"}}));
}

TEST_F(HelpKeyTest, AModalDialogTellsItselfAndTheWindowBehindIt) {
    QDialog dialog(&window_);
    dialog.setObjectName(QStringLiteral("dialog"));
    dialog.setModal(true);
    ShowActive(dialog);
    Press(dialog, Qt::Key_F1);
    EXPECT_EQ(told_, (std::vector<Names>{{"dialog", "window"}}));
}

TEST_F(HelpKeyTest, OtherKeysGoOnToTheField) {
    Press(window_, Qt::Key_F2);
    Press(window_, Qt::Key_F1, Qt::ControlModifier);
    Press(window_, Qt::Key_F1, Qt::ShiftModifier);
    QTest::keyClick(window_.windowHandle(), 'x');
    EXPECT_TRUE(told_.empty());
    EXPECT_EQ(field_->text(), QStringLiteral("x"));
}

TEST_F(HelpKeyTest, AKeyThatIsHeldTellsOnce) {
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_F1, {}, QString(), true);
    QApplication::sendEvent(field_, &repeated);
    EXPECT_TRUE(told_.empty());
}

TEST_F(HelpKeyTest, ListensNoLongerThanItLives) {
    {
        const HelpKey other([this](const Names&) { told_.push_back({"other"}); });
    }
    Press(window_, Qt::Key_F1);
    EXPECT_EQ(told_.size(), 1U);
    EXPECT_EQ(told_.front().front(), "field");
}

}  // namespace
