#include <QAbstractButton>
#include <QMessageBox>
#include <QWheelEvent>

#include "platform/focus_guard_fixture.h"
#include "support/qt/modal_answer.h"
#include "support/qt/run_events.h"

namespace testing_support {
namespace {

TEST_F(FocusGuardTest, AcceptedFieldIsLeftByMouse) {
    accepts = true;
    Click(second);
    EXPECT_TRUE(second->hasFocus());
    EXPECT_EQ(validations, 1);
}

TEST_F(FocusGuardTest, RefusedFieldIsNotLeftByMouse) {
    Click(second);
    EXPECT_TRUE(first->hasFocus());
    EXPECT_EQ(validations, 1);
}

TEST_F(FocusGuardTest, RefusedFieldIsNotLeftByPressesSentToTheWidgetItself) {
    QTest::mouseClick(second, Qt::LeftButton);
    EXPECT_TRUE(first->hasFocus());
    QTest::mouseClick(ok, Qt::LeftButton);
    EXPECT_EQ(okPresses, 0);
    EXPECT_EQ(validations, 2);
}

TEST_F(FocusGuardTest, RefusedFieldIsNotLeftByTheRightOrMiddleButton) {
    QTest::mouseClick(second, Qt::RightButton);
    QTest::mouseClick(second, Qt::MiddleButton);
    EXPECT_TRUE(first->hasFocus());
}

TEST_F(FocusGuardTest, RefusedFieldIsNotLeftByADoubleClick) {
    QTest::mouseDClick(second, Qt::LeftButton);
    EXPECT_TRUE(first->hasFocus());
}

TEST_F(FocusGuardTest, TabAndBacktabValidate) {
    Key(Qt::Key_Tab);
    EXPECT_TRUE(first->hasFocus());
    combo->setFocus();
    Key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(combo->hasFocus());
    EXPECT_EQ(validations, 2);
    accepts = true;
    Key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(second->hasFocus());
    first->setFocus();
    Key(Qt::Key_Tab);
    EXPECT_TRUE(second->hasFocus());
    EXPECT_EQ(validations, 4);
}

TEST_F(FocusGuardTest, TabWithNowhereToGoDoesNotValidate) {
    for (QWidget* widget :
         std::initializer_list<QWidget*>{second, combo, spare, tabs, ok, cancel}) {
        widget->setEnabled(false);
    }
    Key(Qt::Key_Tab);
    Key(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_TRUE(first->hasFocus());
    EXPECT_EQ(validations, 0);
}

TEST_F(FocusGuardTest, TabLeadsPastWhatTakesNoFocus) {
    second->setFocusPolicy(Qt::ClickFocus);
    combo->setEnabled(false);
    spare->hide();
    tabs->setFocusPolicy(Qt::NoFocus);
    ok->setEnabled(false);
    Key(Qt::Key_Tab);
    EXPECT_TRUE(cancel->hasFocus());
    EXPECT_EQ(validations, 0);
}

TEST_F(FocusGuardTest, MnemonicOfAButtonValidates) {
    Key(Qt::Key_O, Qt::AltModifier);
    EXPECT_EQ(okPresses, 0);
    EXPECT_EQ(validations, 1);
    accepts = true;
    Key(Qt::Key_O, Qt::AltModifier);
    EXPECT_TRUE(RunEventsUntil([this] { return okPresses == 1; }));
    EXPECT_EQ(validations, 2);
}

TEST_F(FocusGuardTest, MnemonicOfALabelValidates) {
    Key(Qt::Key_C, Qt::AltModifier);
    EXPECT_TRUE(first->hasFocus());
    EXPECT_EQ(validations, 1);
    accepts = true;
    Key(Qt::Key_C, Qt::AltModifier);
    EXPECT_TRUE(second->hasFocus());
}

TEST_F(FocusGuardTest, MnemonicOfTheFieldItselfDoesNotValidate) {
    Key(Qt::Key_R, Qt::AltModifier);
    EXPECT_TRUE(first->hasFocus());
    EXPECT_EQ(validations, 0);
}

TEST_F(FocusGuardTest, EnterValidatesBeforeTheDefaultButton) {
    Key(Qt::Key_Return);
    EXPECT_EQ(okPresses, 0);
    EXPECT_EQ(validations, 1);
    accepts = true;
    Key(Qt::Key_Enter);
    EXPECT_EQ(okPresses, 1);
    EXPECT_EQ(validations, 2);
}

TEST_F(FocusGuardTest, EnterWithoutAUsableDefaultButtonDoesNotValidate) {
    ok->setEnabled(false);
    cancel->setAutoDefault(false);
    Key(Qt::Key_Return);
    EXPECT_EQ(validations, 0);
}

TEST_F(FocusGuardTest, TabStripTurnsOnlyAfterValidation) {
    ClickAt(tabs, tabs->tabRect(1).center());
    EXPECT_EQ(tabs->currentIndex(), 0);
    Key(Qt::Key_W, Qt::AltModifier);
    EXPECT_EQ(tabs->currentIndex(), 0);
    EXPECT_EQ(validations, 2);
    accepts = true;
    ClickAt(tabs, tabs->tabRect(1).center());
    EXPECT_EQ(tabs->currentIndex(), 1);
}

TEST_F(FocusGuardTest, MenuOpensOnlyAfterValidation) {
    const QPoint place = menuBar->actionGeometry(fileMenu->menuAction()).center();
    ClickAt(menuBar, place);
    EXPECT_FALSE(fileMenu->isVisible());
    Key(Qt::Key_F, Qt::AltModifier);
    EXPECT_FALSE(fileMenu->isVisible());
    EXPECT_EQ(validations, 2);
    accepts = true;
    ClickAt(menuBar, place);
    EXPECT_TRUE(fileMenu->isVisible());
    fileMenu->close();
}

TEST_F(FocusGuardTest, AltAloneComesBackFromTheMenuBar) {
    Key(Qt::Key_Alt);
    EXPECT_TRUE(RunEventsUntil([this] { return validations == 1; }));
    EXPECT_TRUE(first->hasFocus());
}

TEST_F(FocusGuardTest, AltAloneStaysOnTheMenuBarAfterAcceptance) {
    accepts = true;
    Key(Qt::Key_Alt);
    EXPECT_TRUE(RunEventsUntil([this] { return validations == 1; }));
    EXPECT_TRUE(menuBar->hasFocus());
}

TEST_F(FocusGuardTest, ShortcutOfAMenuItemValidates) {
    Key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(saves, 0);
    EXPECT_EQ(validations, 1);
    accepts = true;
    Key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(saves, 1);
}

TEST_F(FocusGuardTest, WheelOnAnotherFieldValidates) {
    spare->addItems({QStringLiteral("a"), QStringLiteral("b")});
    const QPoint place = spare->rect().center();
    QWheelEvent wheel(place, spare->mapToGlobal(place), {}, QPoint(0, -120), Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(spare, &wheel);
    EXPECT_EQ(spare->currentIndex(), 0);
    EXPECT_TRUE(first->hasFocus());
    EXPECT_EQ(validations, 1);
}

TEST_F(FocusGuardTest, PressesThatMoveNoFocusDoNotValidate) {
    Click(label);
    Click(off);
    Click(first);
    Key(Qt::Key_X);
    EXPECT_EQ(validations, 0);
    EXPECT_TRUE(first->hasFocus());
}

TEST_F(FocusGuardTest, AButtonInsideTheFieldIsPartOfIt) {
    first->setText(QStringLiteral("abc"));
    first->setClearButtonEnabled(true);
    auto* clear = first->findChild<QAbstractButton*>();
    ASSERT_NE(clear, nullptr);
    Click(clear);
    EXPECT_TRUE(first->text().isEmpty());
    EXPECT_EQ(validations, 0);
}

TEST_F(FocusGuardTest, FocusSetByTheProgramDoesNotValidate) {
    second->setFocus();
    EXPECT_TRUE(second->hasFocus());
    EXPECT_EQ(validations, 0);
}

TEST_F(FocusGuardTest, FieldsWithoutAValidatorAreLeftFreely) {
    second->setFocus();
    Click(ok);
    EXPECT_EQ(okPresses, 1);
    EXPECT_EQ(validations, 0);
}

TEST_F(FocusGuardTest, AnotherWindowDoesNotValidate) {
    QLineEdit other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    QTest::mouseClick(&other, Qt::LeftButton);
    QTest::keyClick(&other, Qt::Key_Tab);
    EXPECT_EQ(validations, 0);
    EXPECT_EQ(dialog->focusWidget(), first);
}

TEST_F(FocusGuardTest, PopupOfAComboFieldIsPartOfIt) {
    combo->setFocus();
    combo->showPopup();
    QWidget* popup = QApplication::activePopupWidget();
    ASSERT_NE(popup, nullptr);
    QTest::keyClick(popup->focusWidget(), Qt::Key_Down);
    QTest::keyClick(popup->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(combo->currentText(), QStringLiteral("two"));
    QTest::mouseClick(combo->lineEdit(), Qt::LeftButton);
    EXPECT_EQ(validations, 0);
    Click(second);
    EXPECT_EQ(validations, 1);
    EXPECT_EQ(dialog->focusWidget(), combo);
}

TEST_F(FocusGuardTest, NothingValidatesAgainWhileAMessageStands) {
    auto* message = new QMessageBox(dialog.get());
    guard->AddField(second, [this, message] {
        ++validations;
        message->exec();
        return false;
    });
    second->setFocus();
    ModalAnswer<QMessageBox> answer([this](QMessageBox& box) {
        QTest::mouseClick(ok, Qt::LeftButton);
        QTest::keyClick(second, Qt::Key_Tab);
        box.accept();
    });
    Click(first);
    EXPECT_TRUE(answer.Given());
    EXPECT_EQ(validations, 1);
    EXPECT_EQ(okPresses, 0);
    EXPECT_EQ(dialog->focusWidget(), second);
}

TEST_F(FocusGuardTest, EachAttemptValidatesOnce) {
    for (int i = 1; i <= 3; ++i) {
        Click(second);
        EXPECT_EQ(validations, i);
    }
    accepts = true;
    Click(second);
    EXPECT_EQ(validations, 4);
}

TEST_F(FocusGuardTest, AWindowThatGoesUnderItsValidatorIsSafe) {
    guard->AddField(second, [this] {
        dialog.reset();
        return true;
    });
    second->setFocus();
    QTest::mousePress(ok, Qt::LeftButton);
    EXPECT_EQ(dialog, nullptr);
    EXPECT_EQ(okPresses, 0);
}

TEST_F(FocusGuardTest, AFieldThatIsGoneIsForgotten) {
    delete first;
    second->setFocus();
    Click(ok);
    EXPECT_EQ(okPresses, 1);
    EXPECT_EQ(validations, 0);
}

}  // namespace
}  // namespace testing_support
