#include "platform/qt/help_key.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>
#include <utility>

#include "platform/qt/text_qt.h"

namespace {

/// F1 by itself, pressed anew.
bool AsksForHelp(const QKeyEvent& event) {
    const Qt::KeyboardModifiers held = event.modifiers() & ~Qt::KeypadModifier;
    return event.key() == Qt::Key_F1 && held == Qt::NoModifier && !event.isAutoRepeat();
}

std::vector<std::string> NamesAround(const QWidget* widget) {
    std::vector<std::string> names;
    for (; widget != nullptr; widget = widget->parentWidget()) {
        if (!widget->objectName().isEmpty()) {
            names.push_back(FromQt(widget->objectName()));
        }
    }
    return names;
}

}  // namespace

HelpKey::HelpKey(Pressed pressed) : pressed_(std::move(pressed)) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool HelpKey::eventFilter(QObject* watched, QEvent* event) {
    // The window system's window sees the key first, and hands it to the widget with the focus.
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType() ||
        !AsksForHelp(static_cast<const QKeyEvent&>(*event))) {
        return false;
    }
    pressed_(NamesAround(static_cast<const QWidget*>(watched)));
    return true;
}
