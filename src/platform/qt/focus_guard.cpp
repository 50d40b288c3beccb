#include "platform/qt/focus_guard.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPushButton>
#include <QShortcut>
#include <QTabBar>
#include <QWindow>
#include <algorithm>
#include <utility>

namespace {

bool IsPartOf(const QWidget* part, const QWidget* whole) {
    return part == whole || (part != nullptr && whole->isAncestorOf(part));
}

// What acts on the event without having to take the focus.
bool Acts(const QWidget* widget, QEvent::Type type) {
    if (qobject_cast<const QTabBar*>(widget) != nullptr) {
        return true;
    }
    return type != QEvent::Wheel && (qobject_cast<const QAbstractButton*>(widget) != nullptr ||
                                     qobject_cast<const QMenuBar*>(widget) != nullptr);
}

bool TakesFocus(const QWidget* widget, QEvent::Type type) {
    const int policy = type == QEvent::Wheel ? Qt::WheelFocus : Qt::ClickFocus;
    return (widget->focusPolicy() & policy) == policy;
}

const QWidget* FocusTarget(const QWidget* widget) {
    while (widget->focusProxy() != nullptr) {
        widget = widget->focusProxy();
    }
    return widget;
}

const QPushButton* DefaultButton(const QWidget* window) {
    if (qobject_cast<const QDialog*>(window) == nullptr) {
        return nullptr;
    }
    const auto buttons = window->findChildren<QPushButton*>();
    const auto found = std::find_if(buttons.begin(), buttons.end(), [](const QPushButton* button) {
        return button->isDefault() && button->isEnabled() && button->isVisible();
    });
    return found == buttons.end() ? nullptr : *found;
}

const QPushButton* ButtonOfEnter(const QWidget* window) {
    const auto* focused = qobject_cast<const QPushButton*>(window->focusWidget());
    return focused != nullptr ? focused : DefaultButton(window);
}

/// How a key moves the focus.
enum class Step { None, Forwards, Backwards };

Step StepOf(const QKeyEvent& event, const QWidget* focused) {
    const Qt::KeyboardModifiers held = event.modifiers();
    // The arrows move from button to button, as Tab does.
    const bool arrows = qobject_cast<const QPushButton*>(focused) != nullptr;
    switch (event.key()) {
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            if ((held & (Qt::ControlModifier | Qt::AltModifier)) != 0) {
                return Step::None;
            }
            return event.key() == Qt::Key_Backtab || (held & Qt::ShiftModifier) != 0
                       ? Step::Backwards
                       : Step::Forwards;
        case Qt::Key_Left:
        case Qt::Key_Up:
            return arrows ? Step::Backwards : Step::None;
        case Qt::Key_Right:
        case Qt::Key_Down:
            return arrows ? Step::Forwards : Step::None;
        default:
            return Step::None;
    }
}

// A widget that hands the focus on is no stop where that would lead back into what it belongs to.
bool IsTabStop(const QWidget* widget, const QWidget* window, Step step) {
    const QWidget* target = FocusTarget(widget);
    const bool leadsBack =
        target != widget &&
        (step == Step::Forwards ? target->isAncestorOf(widget) : widget->isAncestorOf(target));
    return (target->focusPolicy() & Qt::TabFocus) != 0 && !leadsBack &&
           widget->isVisibleTo(window) && widget->isEnabled();
}

/// Where a step leads from the widget of `window` that has the focus; null if it leads nowhere.
const QWidget* NextStop(const QWidget* window, Step step) {
    const QWidget* start = window->focusWidget() != nullptr ? window->focusWidget() : window;
    const auto next = [step](const QWidget* widget) {
        return step == Step::Forwards ? widget->nextInFocusChain() : widget->previousInFocusChain();
    };
    for (const QWidget* widget = next(start); widget != start; widget = next(widget)) {
        if (FocusTarget(widget) != start && IsTabStop(widget, window, step)) {
            return widget;
        }
    }
    return nullptr;
}

}  // namespace

FocusGuard::FocusGuard(QWidget* window) : QObject(window), window_(window) {
    // Events reach a window's controls, not the window: only the application sees them all.
    qApp->installEventFilter(this);
    menuBarCheck_.setSingleShot(true);
    QObject::connect(&menuBarCheck_, &QTimer::timeout, this, [this] { ValidateBehindMenuBar(); });
}

void FocusGuard::AddField(QWidget* field, std::function<bool()> validate) {
    fields_.push_back(std::make_shared<Field>(Field{field, std::move(validate)}));
}

void FocusGuard::LeavesWithoutValidating(QWidget* button) {
    free_.emplace_back(button);
}

bool FocusGuard::Accepts() {
    const FieldRef field = FieldInUse();
    return !field || (!validating_ && !Refuses(*field));
}

bool FocusGuard::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::KeyPress: {
            QWidget* target = TargetOf(watched, *event);
            return target != nullptr && Swallows(target, *event);
        }
        case QEvent::Shortcut:
            return Swallows(watched, *event);
        case QEvent::MouseButtonRelease:
        case QEvent::KeyRelease:
            passed_.reset();
            return false;
        case QEvent::FocusOut:
            NoteFocusOut(watched, static_cast<QFocusEvent*>(event)->reason());
            return false;
        default:
            return false;
    }
}

// A press reaches the window, then moves the focus, and only then reaches the control: it is held
// back at the window. Keys, and presses that are sent to a control, are met at the control.
QWidget* FocusGuard::TargetOf(QObject* watched, const QEvent& event) const {
    if (watched->isWidgetType()) {
        return static_cast<QWidget*>(watched);
    }
    QWidget* whole = window_->window();
    if (watched != whole->windowHandle() || !event.isSinglePointEvent() ||
        QApplication::activePopupWidget() != nullptr) {
        return nullptr;
    }
    const QPoint place = static_cast<const QSinglePointEvent&>(event).position().toPoint();
    QWidget* child = whole->childAt(place);
    return child != nullptr ? child : whole;
}

FocusGuard::Input FocusGuard::InputOf(const QEvent& event) {
    if (!event.isInputEvent()) {
        return {};
    }
    Input input{event.type(), static_cast<const QInputEvent&>(event).timestamp(), {}, 0};
    if (event.type() == QEvent::KeyPress) {
        input.Key = static_cast<const QKeyEvent&>(event).key();
    } else if (event.isSinglePointEvent()) {
        input.Position = static_cast<const QSinglePointEvent&>(event).globalPosition();
    }
    return input;
}

// Actions and shortcuts are no widgets; those of the window hang below it all the same.
bool FocusGuard::IsInside(const QObject* object) const {
    if (object->isWidgetType()) {
        return IsPartOf(static_cast<const QWidget*>(object), window_);
    }
    while (object != nullptr && object != window_) {
        object = object->parent();
    }
    return object != nullptr;
}

bool FocusGuard::IsFree(const QWidget* widget) const {
    return std::any_of(free_.begin(), free_.end(), [widget](const QPointer<QWidget>& button) {
        return !button.isNull() && IsPartOf(widget, button);
    });
}

FocusGuard::FieldRef FocusGuard::FieldAt(const QWidget* widget) const {
    const auto found =
        std::find_if(fields_.begin(), fields_.end(), [widget](const FieldRef& field) {
            return !field->Widget.isNull() && IsPartOf(widget, field->Widget);
        });
    return found == fields_.end() ? nullptr : *found;
}

FocusGuard::FieldRef FocusGuard::FieldInUse() const {
    if (validating_ || !leftByPointer_.isNull()) {
        return FieldAt(leftByPointer_);
    }
    const QWidget* focused = window_->window()->focusWidget();
    if (!leftFreely_.isNull() && IsFree(focused)) {
        return FieldAt(leftFreely_);
    }
    return FieldAt(focused);
}

FocusGuard::Way FocusGuard::WayOf(QObject* target, const QEvent& event,
                                  const QWidget* field) const {
    switch (event.type()) {
        case QEvent::KeyPress:
            return WayByKey(static_cast<const QKeyEvent&>(event), field);
        case QEvent::Shortcut:
            return WayByShortcut(target, field);
        default:
            return WayByPointer(static_cast<QWidget*>(target), event.type(), field);
    }
}

FocusGuard::Way FocusGuard::WayByPointer(QWidget* pressed, QEvent::Type type,
                                         const QWidget* field) const {
    if (IsPartOf(pressed, field)) {
        return Way::Stays;
    }
    for (const QWidget* widget = pressed; IsPartOf(widget, window_);
         widget = widget->parentWidget()) {
        const bool takesFocus = TakesFocus(widget, type);
        if (!widget->isEnabled() || !(takesFocus || Acts(widget, type))) {
            continue;
        }
        if (IsFree(widget)) {
            return Way::LeavesFreely;
        }
        return takesFocus && IsPartOf(FocusTarget(widget), field) ? Way::Stays : Way::Leaves;
    }
    return Way::Stays;
}

FocusGuard::Way FocusGuard::WayByKey(const QKeyEvent& event, const QWidget* field) const {
    const QWidget* whole = window_->window();
    if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) {
        return WayTo(ButtonOfEnter(whole), field);
    }
    const Step step = StepOf(event, whole->focusWidget());
    return step == Step::None ? Way::Stays : WayTo(NextStop(whole, step), field);
}

FocusGuard::Way FocusGuard::WayByShortcut(const QObject* target, const QWidget* field) const {
    if (!target->isWidgetType()) {
        return Way::Leaves;
    }
    const auto* label = qobject_cast<const QLabel*>(target);
    return WayTo(label != nullptr ? label->buddy() : static_cast<const QWidget*>(target), field);
}

FocusGuard::Way FocusGuard::WayTo(const QWidget* place, const QWidget* field) const {
    if (place == nullptr || IsPartOf(FocusTarget(place), field)) {
        return Way::Stays;
    }
    return IsFree(place) ? Way::LeavesFreely : Way::Leaves;
}

bool FocusGuard::Swallows(QObject* target, const QEvent& event) {
    const FieldRef field = FieldInUse();
    if (!validating_) {
        leftByPointer_.clear();
    }
    if (!IsInside(target) || (event.type() != QEvent::Shortcut && passed_ == InputOf(event))) {
        return false;
    }
    const Way way = field ? WayOf(target, event, field->Widget) : Way::Stays;
    if (way == Way::Leaves) {
        // A validator may show a box, and whatever happens under it may end window and target.
        const QPointer<QObject> still(target);
        if (validating_ || Refuses(*field) || still.isNull()) {
            return true;
        }
    } else if (way == Way::LeavesFreely) {
        leftFreely_ = field->Widget;
    }
    passed_ = InputOf(event);
    return false;
}

bool FocusGuard::Refuses(const Field& field) {
    const QPointer<FocusGuard> self(this);
    validating_ = true;
    leftByPointer_ = field.Widget;
    const bool accepted = field.Validate();
    if (self.isNull()) {
        return true;
    }
    validating_ = false;
    leftByPointer_.clear();
    leftFreely_.clear();
    if (!accepted && !field.Widget.isNull()) {
        field.Widget->setFocus();
    }
    return !accepted;
}

void FocusGuard::NoteFocusOut(const QObject* left, Qt::FocusReason reason) {
    const FieldRef field =
        left->isWidgetType() ? FieldAt(static_cast<const QWidget*>(left)) : nullptr;
    if (!field || validating_) {
        return;
    }
    if (reason == Qt::MouseFocusReason) {
        leftByPointer_ = field->Widget;
    } else if (reason == Qt::MenuBarFocusReason) {
        leftForMenuBar_ = field->Widget;
        menuBarCheck_.start();
    }
}

// Alt alone gives the menu bar the focus without any event that could be held back before.
void FocusGuard::ValidateBehindMenuBar() {
    const FieldRef field = FieldAt(leftForMenuBar_);
    if (field && !validating_ && !field->Widget->hasFocus()) {
        Refuses(*field);
    }
}
