#include "support/qt/form_look.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <algorithm>
#include <cmath>
#include <map>

#include "platform/qt/text_qt.h"

namespace testing_support {

namespace {

using Faults = std::vector<std::string>;

std::string NameOf(const QWidget& widget) {
    const std::string name = FromQt(widget.objectName());
    return name.empty() ? widget.metaObject()->className() : name;
}

double Luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double Contrast(const QColor& one, const QColor& other) {
    const double first = Luminance(one);
    const double second = Luminance(other);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QString TextOf(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        return label->text();
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
        return button->text();
    }
    if (const auto* field = qobject_cast<const QLineEdit*>(&widget)) {
        return field->text();
    }
    return {};
}

/// A label that may be narrower than its text tells the whole by its tip.
bool FitsItself(const QWidget& widget) {
    const auto* label = qobject_cast<const QLabel*>(&widget);
    return label != nullptr && (label->wordWrap() || label->minimumSizeHint().width() == 0 ||
                                !label->toolTip().isEmpty());
}

void LookForCutText(const QWidget& widget, Faults& faults) {
    const bool told = qobject_cast<const QLabel*>(&widget) != nullptr ||
                      qobject_cast<const QAbstractButton*>(&widget) != nullptr;
    if (!told || TextOf(widget).isEmpty() || FitsItself(widget)) {
        return;
    }
    const QFontMetrics metrics(widget.font());
    const QSize text = metrics.size(Qt::TextShowMnemonic, TextOf(widget));
    if (widget.width() < text.width() || widget.height() < metrics.ascent()) {
        faults.push_back("cut: " + NameOf(widget) + " \"" + FromQt(TextOf(widget)) + "\"");
    }
}

void LookForContrast(const QWidget& widget, Faults& faults) {
    if (!widget.isEnabled() || TextOf(widget).isEmpty()) {
        return;
    }
    const QPalette& palette = widget.palette();
    const double contrast =
        Contrast(palette.color(widget.foregroundRole()), palette.color(widget.backgroundRole()));
    if (contrast < 4.5) {
        faults.push_back("contrast: " + NameOf(widget) + " " + std::to_string(contrast));
    }
}

bool TakesInput(const QWidget& widget) {
    return (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.isEnabled();
}

void LookForName(const QWidget& widget, Faults& faults) {
    if (!TakesInput(widget) || widget.inherits("QScrollArea") || widget.inherits("QMdiArea") ||
        widget.inherits("QMdiSubWindow") || widget.parent()->inherits("QAbstractSpinBox")) {
        return;
    }
    QAccessibleInterface* read =
        QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&widget));
    if (read == nullptr || read->text(QAccessible::Name).trimmed().isEmpty()) {
        faults.push_back("no name: " + NameOf(widget));
    }
}

void LookForOverlaps(const QWidget& around, Faults& faults) {
    if (around.inherits("QMdiSubWindow") || around.inherits("QAbstractScrollArea") ||
        around.inherits("QComboBox") || around.inherits("QLineEdit") ||
        around.inherits("QStackedWidget")) {
        return;
    }
    std::vector<const QWidget*> shown;
    for (const QWidget* child :
         around.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (child->isVisible() && !child->isWindow() && !child->size().isEmpty() &&
            !child->inherits("QSizeGrip") && !child->inherits("QFocusFrame") &&
            // Child windows lie over one another as the operator puts them.
            !child->inherits("QMdiSubWindow")) {
            shown.push_back(child);
        }
    }
    for (std::size_t i = 0; i < shown.size(); ++i) {
        for (std::size_t j = i + 1; j < shown.size(); ++j) {
            const QRect shared = shown[i]->geometry() & shown[j]->geometry();
            if (shared.width() > 1 && shared.height() > 1) {
                faults.push_back("overlap: " + NameOf(*shown[i]) + " and " + NameOf(*shown[j]));
            }
        }
    }
}

bool GoesBack(const QWidget& last, const QWidget& next) {
    const QRect from = last.geometry();
    const QRect to = next.geometry();
    return last.parentWidget() == next.parentWidget() &&
           (to.bottom() < from.top() ||
            (to.top() < from.bottom() && from.top() < to.bottom() && to.right() < from.left()));
}

/// From one control to the next of the same parent Tab goes down, or to the right in a row. The
/// controls are a ring: from its end it goes back once, wherever in the ring the form stands.
void LookForTabOrder(const QWidget& form, Faults& faults) {
    std::vector<const QWidget*> ring;
    for (const QWidget* widget = form.nextInFocusChain(); widget != nullptr && widget != &form;
         widget = widget->nextInFocusChain()) {
        if (widget->isVisible() && TakesInput(*widget) && form.isAncestorOf(widget)) {
            ring.push_back(widget);
        }
    }
    Faults back;
    for (std::size_t i = 1; i < ring.size(); ++i) {
        if (GoesBack(*ring[i - 1], *ring[i])) {
            back.push_back("tab goes back: " + NameOf(*ring[i - 1]) + " to " + NameOf(*ring[i]));
        }
    }
    if (back.size() != 1 || GoesBack(*ring.back(), *ring.front())) {
        faults.insert(faults.end(), back.begin(), back.end());
    }
}

void LookForKeys(const QWidget& form, Faults& faults) {
    std::map<QKeySequence, std::string> holders;
    const auto take = [&](const QString& text, const std::string& name) {
        const QKeySequence key = QKeySequence::mnemonic(text);
        if (key.isEmpty()) {
            return;
        }
        const auto [place, fresh] = holders.emplace(key, name);
        if (!fresh) {
            faults.push_back("key " + FromQt(key.toString()) + ": " + place->second + " and " +
                             name);
        }
    };
    for (const QWidget* widget : form.findChildren<QWidget*>()) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        if (!widget->isVisible() || widget->window() != &form ||
            (label != nullptr && label->buddy() == nullptr)) {
            continue;
        }
        if (const auto* bar = qobject_cast<const QMenuBar*>(widget)) {
            for (const QAction* action : bar->actions()) {
                take(action->text(), "menu " + FromQt(action->text()));
            }
        } else if (qobject_cast<const QLineEdit*>(widget) == nullptr) {
            take(TextOf(*widget), NameOf(*widget));
        }
    }
}

}  // namespace

std::vector<std::string> FaultsOf(const QWidget& form) {
    Faults faults;
    LookForOverlaps(form, faults);
    for (const QWidget* widget : form.findChildren<QWidget*>()) {
        if (widget->isVisible() && widget->window() == &form) {
            LookForCutText(*widget, faults);
            LookForContrast(*widget, faults);
            LookForName(*widget, faults);
            LookForOverlaps(*widget, faults);
        }
    }
    LookForTabOrder(form, faults);
    LookForKeys(form, faults);
    return faults;
}

}  // namespace testing_support
