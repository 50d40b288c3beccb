#ifndef ORVIA_TESTS_CONSOLE_FORMS_BENCH_H
#define ORVIA_TESTS_CONSOLE_FORMS_BENCH_H

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QTest>
#include <QWindow>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/qt/text_qt.h"
#include "support/qt/desk_look.h"
#include "support/qt/find_control.h"

namespace forms_bench {

using testing_support::Find;

/// Clicks where the control stands, through its window, as a mouse does.
inline void Click(QWidget& window, const std::string& name) {
    QWidget* control = Find(window, name);
    QWidget* whole = control->window();
    const QPoint place = control->mapTo(whole, control->rect().center());
    QTest::mouseClick(whole->windowHandle(), Qt::LeftButton, {}, place);
    QCoreApplication::processEvents();
}

/// The control that keys go to; a window that has just come up needs a moment to be active.
inline QWidget* KeyTarget() {
    const bool ready = QTest::qWaitFor([] {
        const QWidget* modal = QApplication::activeModalWidget();
        const QWidget* focused = QApplication::focusWidget();
        return focused != nullptr && (modal == nullptr || focused->window() == modal);
    });
    if (!ready) {
        throw std::logic_error("nothing has the focus");
    }
    return QApplication::focusWidget();
}

inline void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(KeyTarget(), key, modifiers);
    QCoreApplication::processEvents();
}

inline void Type(const char* keys) {
    for (const char* key = keys; *key != '\0'; ++key) {
        QTest::keyClick(KeyTarget(), *key);
        QCoreApplication::processEvents();
    }
}

/// Object name of the control that has the focus.
inline std::string Focused() {
    const QWidget* widget = QApplication::focusWidget();
    return widget == nullptr ? "" : FromQt(widget->objectName());
}

inline void Show(QWidget& window) {
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}

/// Names of the controls in the order of the Tab key, from the first on.
inline std::vector<std::string> TabOrder(QWidget& window, const std::string& first) {
    std::vector<std::string> names;
    const QWidget* start = Find(window, first);
    const QWidget* widget = start;
    do {
        const bool stops = (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->isVisible() &&
                           widget->isEnabled() && !widget->isWindow();
        if (stops && !widget->objectName().isEmpty()) {
            names.push_back(FromQt(widget->objectName()));
        }
        widget = widget->nextInFocusChain();
    } while (widget != start);
    return names;
}

/// Every control that takes input can be read aloud, and nothing stands beyond its window.
inline void ExpectReach(QWidget& window) {
    for (const QWidget* child : window.findChildren<QWidget*>()) {
        const bool own = !child->objectName().isEmpty() && !child->objectName().startsWith(u"qt_");
        if (!own || !child->isVisible() || (child->focusPolicy() & Qt::TabFocus) == 0) {
            continue;
        }
        QAccessibleInterface* reader =
            QAccessible::queryAccessibleInterface(const_cast<QWidget*>(child));
        ASSERT_NE(reader, nullptr);
        EXPECT_FALSE(reader->text(QAccessible::Name).isEmpty()) << FromQt(child->objectName());
    }
    for (const QWidget* child : window.findChildren<QWidget*>()) {
        if (child->isVisible() && child->window() == window.window()) {
            const QRect place(child->mapTo(&window, QPoint(0, 0)), child->size());
            EXPECT_TRUE(child->parentWidget() == nullptr || window.rect().contains(place) ||
                        child->parentWidget()->inherits("QAbstractScrollArea") ||
                        child->inherits("QScrollBar"))
                << FromQt(child->objectName());
            EXPECT_TRUE(child->inherits("QAbstractScrollArea") ||
                        child->minimumSizeHint().isNull() ||
                        child->parentWidget()->inherits("QAbstractScrollArea") ||
                        child->width() >= child->minimumSizeHint().width())
                << FromQt(child->objectName()) << " is cut off";
        }
    }
}

/// Keeps a picture of the window, light and dark, where ORVIA_SCREENSHOTS names a folder.
inline void KeepPictures(QWidget& window) {
    if (testing_support::PictureFolder().isEmpty()) {
        return;
    }
    for (const bool dark : {false, true}) {
        const testing_support::DeskColours colours(dark);
        QTest::qWait(30);
        testing_support::KeepPicture(
            window, window.objectName() + QLatin1Char('-') + testing_support::DeskName(dark));
    }
}

}  // namespace forms_bench

#endif  // ORVIA_TESTS_CONSOLE_FORMS_BENCH_H
