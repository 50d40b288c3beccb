#include "platform/qt/focus_guard.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QBoxLayout>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QWheelEvent>
#include <memory>
#include <utility>

#include "platform/qt/named_controls.h"
#include "support/qt/modal_answer.h"
#include "support/qt/run_events.h"

namespace {

/// A dialog with two guarded fields and all that can take the focus from them.
class FocusGuardTest : public ::testing::Test {
 protected:
    void SetUp() override {
        auto* layout = new QVBoxLayout(dialog.get());
        layout->setMenuBar(menuBar);
        fileMenu = menuBar->addMenu(QStringLiteral("&File"));
        save = fileMenu->addAction(QStringLiteral("&Save"));
        save->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
        label->setBuddy(second);
        firstLabel->setBuddy(first);
        ok->setDefault(true);
        combo->setEditable(true);
        combo->addItems({QStringLiteral("one"), QStringLiteral("two")});
        tabs->addTab(QStringLiteral("One"));
        tabs->addTab(QStringLiteral("T&wo"));
        for (QWidget* widget : std::initializer_list<QWidget*>{
                 firstLabel, first, label, second, combo, spare, tabs, ok, cancel, off}) {
            layout->addWidget(widget);
        }
        off->setEnabled(false);
        guard->AddField(first, [this] { return Validate(); });
        guard->AddField(combo, [this] { return Validate(); });
        guard->LeavesWithoutValidating(cancel);
        QObject::connect(ok, &QPushButton::clicked, ok, [this] { ++okPresses; });
        QObject::connect(cancel, &QPushButton::clicked, ok, [this] { ++cancelPresses; });
        QObject::connect(save, &QAction::triggered, ok, [this] { ++saves; });
        dialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
        first->setFocus();
        ASSERT_TRUE(first->hasFocus());
    }

    bool Validate() {
        ++validations;
        return accepts;
    }

    /// Clicks as the system does: through the window, on what lies there.
    void Click(QWidget* widget) const { ClickAt(widget, widget->rect().center()); }
    void ClickAt(QWidget* widget, QPoint place) const {
        QTest::mouseClick(dialog->windowHandle(), Qt::LeftButton, {},
                          widget->mapTo(dialog.get(), place));
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::keyClick(dialog->windowHandle(), key, modifiers);
    }

    std::unique_ptr<QDialog> dialog = std::make_unique<QDialog>();
    QMenuBar* menuBar = new QMenuBar(dialog.get());
    QMenu* fileMenu = nullptr;
    QAction* save = nullptr;
    QLabel* firstLabel = new QLabel(QStringLiteral("Fi&rst"), dialog.get());
    QLineEdit* first = new QLineEdit(dialog.get());
    QLabel* label = new QLabel(QStringLiteral("Se&cond"), dialog.get());
    QLineEdit* second = new QLineEdit(dialog.get());
    QComboBox* combo = new QComboBox(dialog.get());
    QComboBox* spare = new QComboBox(dialog.get());
    QTabBar* tabs = new QTabBar(dialog.get());
    QPushButton* ok = new QPushButton(QStringLiteral("&OK"), dialog.get());
    QPushButton* cancel =
        NamedButton(dialog.get(), QStringLiteral("cancel"), QStringLiteral("C&ancel"));
    QPushButton* off = new QPushButton(QStringLiteral("Off"), dialog.get());
    FocusGuard* guard = new FocusGuard(dialog.get());
    bool accepts = false;
    int validations = 0;
    int okPresses = 0;
    int cancelPresses = 0;
    int saves = 0;
};

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
