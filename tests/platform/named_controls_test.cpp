#include "platform/qt/named_controls.h"

#include <gtest/gtest.h>

#include <QBoxLayout>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace {

/// A window with a field and two buttons, the first of them its default one where it is a dialog.
template <typename Window>
struct Buttons {
    Buttons() {
        auto* column = new QVBoxLayout(&window);
        for (QWidget* widget : std::initializer_list<QWidget*>{field, ok, other}) {
            column->addWidget(widget);
        }
        ok->setDefault(true);
        QObject::connect(ok, &QPushButton::clicked, ok, [this] { ++okPresses; });
        QObject::connect(other, &QPushButton::clicked, ok, [this] { ++otherPresses; });
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    void EnterOn(QWidget* widget, Qt::Key key = Qt::Key_Return) {
        widget->setFocus();
        QTest::keyClick(window.windowHandle(), key);
    }

    Window window;
    QLineEdit* field = new QLineEdit(&window);
    QPushButton* ok = NamedButton(&window, QStringLiteral("ok"), QStringLiteral("OK"));
    QPushButton* other = NamedButton(&window, QStringLiteral("other"), QStringLiteral("Other"));
    int okPresses = 0;
    int otherPresses = 0;
};

TEST(NamedButton, CarriesItsNameAndText) {
    QWidget window;
    const QPushButton* button =
        NamedButton(&window, QStringLiteral("cmdOK"), QStringLiteral("&OK"));
    EXPECT_EQ(button->objectName(), QStringLiteral("cmdOK"));
    EXPECT_EQ(button->text(), QStringLiteral("&OK"));
    EXPECT_EQ(button->parent(), &window);
}

TEST(NamedButton, EnterPressesTheOneWithTheFocusAndElsewhereTheDefault) {
    Buttons<QDialog> dialog;
    dialog.other->setAutoDefault(false);
    dialog.EnterOn(dialog.other);
    dialog.EnterOn(dialog.other, Qt::Key_Enter);
    EXPECT_EQ(dialog.otherPresses, 2);
    EXPECT_EQ(dialog.okPresses, 0);
    dialog.EnterOn(dialog.field);
    EXPECT_EQ(dialog.otherPresses, 2);
    EXPECT_EQ(dialog.okPresses, 1);
}

TEST(NamedButton, EnterPressesItInAWindowThatIsNoDialog) {
    Buttons<QWidget> window;
    window.EnterOn(window.other);
    EXPECT_EQ(window.otherPresses, 1);
    EXPECT_EQ(window.okPresses, 0);
    window.EnterOn(window.field);
    EXPECT_EQ(window.otherPresses, 1);
}

TEST(NamedButton, AnEnterThatIsHeldDownPressesNothingAgain) {
    Buttons<QDialog> dialog;
    dialog.other->setFocus();
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
    QApplication::sendEvent(dialog.other, &held);
    EXPECT_EQ(dialog.otherPresses, 0);
    EXPECT_EQ(dialog.okPresses, 0);
}

TEST(NamedButton, OtherKeysAreAsEver) {
    Buttons<QDialog> dialog;
    dialog.other->setFocus();
    QTest::keyClick(dialog.window.windowHandle(), Qt::Key_Space);
    EXPECT_EQ(dialog.otherPresses, 1);
    QTest::keyClick(dialog.window.windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(dialog.window.isVisible());
    EXPECT_EQ(dialog.otherPresses, 1);
}

TEST(NamedButton, ADisabledOneIsPressedByNothing) {
    Buttons<QDialog> dialog;
    dialog.other->setFocus();
    dialog.other->setEnabled(false);
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(dialog.other, &enter);
    EXPECT_EQ(dialog.otherPresses, 0);
}

}  // namespace
