#include "platform/qt/option_group.h"

#include <gtest/gtest.h>

#include <QBoxLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>
#include <array>
#include <utility>

namespace {

/// A field, three options, and a field behind them.
class OptionGroup : public ::testing::Test {
 protected:
    OptionGroup() {
        auto* column = new QVBoxLayout(&window);
        auto* inside = new QVBoxLayout(frame);
        column->addWidget(before);
        column->addWidget(frame);
        column->addWidget(behind);
        for (auto& option : options) {
            option = new QRadioButton(QStringLiteral("Option"), frame);
            inside->addWidget(option);
        }
        TabEntersAtChosen(*frame);
        for (QWidget* last = before; QWidget * next : {options[0], options[1], options[2]}) {
            QWidget::setTabOrder(std::exchange(last, next), next);
        }
        QWidget::setTabOrder(options[2], behind);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        before->setFocus();
    }

    void Press(Qt::Key key) { QTest::keyClick(window.windowHandle(), key); }

    QWidget window;
    QLineEdit* before = new QLineEdit(&window);
    QGroupBox* frame = new QGroupBox(&window);
    QLineEdit* behind = new QLineEdit(&window);
    std::array<QRadioButton*, 3> options = {};
};

TEST_F(OptionGroup, TabEntersAtTheOptionThatTheProgramChose) {
    options[2]->setChecked(true);
    Press(Qt::Key_Tab);
    EXPECT_TRUE(options[2]->hasFocus());
    Press(Qt::Key_Tab);
    EXPECT_TRUE(behind->hasFocus());
    Press(Qt::Key_Backtab);
    EXPECT_TRUE(options[2]->hasFocus());
}

TEST_F(OptionGroup, TabFollowsAChoiceMadeLater) {
    options[2]->setChecked(true);
    Press(Qt::Key_Tab);
    Press(Qt::Key_Up);
    EXPECT_TRUE(options[1]->isChecked());
    before->setFocus();
    options[0]->setChecked(true);
    Press(Qt::Key_Tab);
    EXPECT_TRUE(options[0]->hasFocus());
}

TEST_F(OptionGroup, TabEntersAtTheFirstWhereNoneIsChosen) {
    Press(Qt::Key_Tab);
    EXPECT_TRUE(options[0]->hasFocus());
    EXPECT_FALSE(options[1]->isChecked());
}

}  // namespace
