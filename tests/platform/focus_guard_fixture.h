#ifndef ORVIA_TESTS_PLATFORM_FOCUS_GUARD_FIXTURE_H
#define ORVIA_TESTS_PLATFORM_FOCUS_GUARD_FIXTURE_H

#include <gtest/gtest.h>

#include <QAction>
#include <QBoxLayout>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <memory>

#include "platform/qt/focus_guard.h"
#include "platform/qt/named_controls.h"

namespace testing_support {

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

}  // namespace testing_support

#endif  // ORVIA_TESTS_PLATFORM_FOCUS_GUARD_FIXTURE_H
