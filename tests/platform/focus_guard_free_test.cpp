// Ways out of a field that ask nobody, and what is asked of the field that was left by one.
#include <utility>

#include "platform/focus_guard_fixture.h"
#include "support/qt/run_events.h"

namespace testing_support {
namespace {

TEST_F(FocusGuardTest, CancelLeavesWithoutValidating) {
    Click(cancel);
    EXPECT_EQ(cancelPresses, 1);
    first->setFocus();
    Key(Qt::Key_A, Qt::AltModifier);
    EXPECT_TRUE(RunEventsUntil([this] { return cancelPresses == 2; }));
    EXPECT_EQ(validations, 0);
}

TEST_F(FocusGuardTest, EnterOnADefaultThatLeavesFreelyDoesNotValidate) {
    cancel->setDefault(true);
    Key(Qt::Key_Return);
    EXPECT_EQ(cancelPresses, 1);
    EXPECT_EQ(validations, 0);
}

TEST_F(FocusGuardTest, TabOntoCancelDoesNotValidate) {
    QWidget::setTabOrder(first, cancel);
    Key(Qt::Key_Tab);
    EXPECT_TRUE(cancel->hasFocus());
    EXPECT_EQ(validations, 0);
}

TEST_F(FocusGuardTest, BacktabOntoCancelDoesNotValidate) {
    QWidget::setTabOrder(cancel, first);
    Key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(cancel->hasFocus());
    EXPECT_EQ(validations, 0);
}

TEST_F(FocusGuardTest, ARefusedValueIsNotCarriedPastCancelByAnyKey) {
    const std::pair<Qt::Key, Qt::KeyboardModifiers> keys[] = {
        {Qt::Key_Backtab, Qt::ShiftModifier}, {Qt::Key_Left, {}}, {Qt::Key_Up, {}}};
    QWidget::setTabOrder(second, cancel);
    QWidget::setTabOrder(cancel, first);
    for (const auto& [key, modifiers] : keys) {
        validations = 0;
        Key(Qt::Key_Backtab, Qt::ShiftModifier);
        ASSERT_TRUE(cancel->hasFocus());
        Key(key, modifiers);
        EXPECT_TRUE(first->hasFocus()) << key;
        EXPECT_EQ(validations, 1) << key;
    }
    QWidget::setTabOrder(cancel, second);
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Right, Qt::Key_Down}) {
        validations = 0;
        Click(cancel);
        ASSERT_TRUE(cancel->hasFocus());
        Key(key);
        EXPECT_TRUE(first->hasFocus()) << key;
        EXPECT_EQ(validations, 1) << key;
    }
}

TEST_F(FocusGuardTest, TabBackFromCancelIntoTheFieldDoesNotValidate) {
    QWidget::setTabOrder(cancel, first);
    Key(Qt::Key_Backtab, Qt::ShiftModifier);
    Key(Qt::Key_Tab);
    EXPECT_TRUE(first->hasFocus());
    Key(Qt::Key_Backtab, Qt::ShiftModifier);
    Key(Qt::Key_Right);
    EXPECT_TRUE(first->hasFocus());
    EXPECT_EQ(validations, 0);
    Key(Qt::Key_Tab);
    EXPECT_EQ(validations, 1) << "it is the field in use again";
}

TEST_F(FocusGuardTest, ArrowsInsideAFieldDoNotValidate) {
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down}) {
        Key(key);
    }
    EXPECT_EQ(validations, 0);
}

TEST_F(FocusGuardTest, EnterOnCancelDoesNotValidateForTheDefaultButton) {
    cancel->setAutoDefault(false);
    QWidget::setTabOrder(first, cancel);
    Key(Qt::Key_Tab);
    ASSERT_TRUE(cancel->hasFocus());
    Key(Qt::Key_Return);
    EXPECT_EQ(cancelPresses, 1);
    EXPECT_EQ(okPresses, 0);
    EXPECT_EQ(validations, 0);
}

TEST_F(FocusGuardTest, ARefusedValueIsNotCarriedPastTheFieldThroughCancel) {
    Click(cancel);
    ASSERT_TRUE(cancel->hasFocus());
    Click(second);
    EXPECT_TRUE(first->hasFocus());
    EXPECT_EQ(validations, 1);
}

TEST_F(FocusGuardTest, AnAcceptedValueIsCarriedPastTheFieldThroughCancel) {
    accepts = true;
    Click(cancel);
    Click(second);
    EXPECT_TRUE(second->hasFocus());
    EXPECT_EQ(validations, 1);
}

TEST_F(FocusGuardTest, AskedItRunsTheValidatorOfTheFieldInUse) {
    accepts = true;
    EXPECT_TRUE(guard->Accepts());
    EXPECT_EQ(validations, 1);
    accepts = false;
    EXPECT_FALSE(guard->Accepts());
    EXPECT_EQ(validations, 2);
    EXPECT_TRUE(first->hasFocus());
}

TEST_F(FocusGuardTest, AskedItRunsTheValidatorOfTheFieldThatWasLeftFreely) {
    accepts = false;
    Click(cancel);
    ASSERT_TRUE(cancel->hasFocus());
    EXPECT_FALSE(guard->Accepts());
    EXPECT_EQ(validations, 1);
    EXPECT_TRUE(first->hasFocus()) << "the focus goes back";
    accepts = true;
    Click(cancel);
    EXPECT_TRUE(guard->Accepts());
    EXPECT_TRUE(cancel->hasFocus());
    EXPECT_EQ(validations, 2);
    EXPECT_TRUE(guard->Accepts()) << "nothing is owed any more";
    EXPECT_EQ(validations, 2);
}

TEST_F(FocusGuardTest, AskedOutsideAFieldItAccepts) {
    accepts = false;
    spare->setFocus();
    EXPECT_TRUE(guard->Accepts());
    EXPECT_EQ(validations, 0);
}

TEST_F(FocusGuardTest, EscapeAndTheCloseBoxDoNotValidate) {
    Key(Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
    first->setFocus();
    dialog->close();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(validations, 0);
}

}  // namespace
}  // namespace testing_support
