#ifndef ORVIA_SETUP_FRMSETUPPARTS_H
#define ORVIA_SETUP_FRMSETUPPARTS_H

#include <QLabel>
#include <QString>
#include <QWidget>

#include "platform/qt/named_controls.h"

// Small parts that the pages of the set-up are put together from.

namespace setup_parts {

// Places of the pages, in the order of their tabs.
inline constexpr int AnalogFrame = 0;
inline constexpr int DigitalFrame = 1;
inline constexpr int GeneralFrame = 2;
inline constexpr int FlowFrame = 3;

/// Characters of the longest number that the logger's float shows as, such as "-0.0123456".
inline constexpr int NumberCharacters = 10;

/// The name as Qt holds it.
inline QString Named(const char* name) {
    return QString::fromLatin1(name);
}

/// Name of a member of a control array: "txtHighEU(3)".
inline QString Indexed(const char* name, int index) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
}

/// A label that stands for itself.
inline QLabel* Label(QWidget* parent, const char* name, const char* text) {
    auto* label = new QLabel(QString::fromLatin1(text), parent);
    label->setObjectName(Named(name));
    return label;
}

/// A label beside `buddy`, naming it to who cannot see it.
inline QLabel* Label(const char* name, const char* text, QWidget* buddy) {
    return CaptionFor(buddy, Named(name), QString::fromLatin1(text));
}

/// What shows while the pointer rests on the widget.
inline void Tell(QWidget& widget, const char* tooltip) {
    widget.setToolTip(QString::fromLatin1(tooltip));
}

}  // namespace setup_parts

#endif  // ORVIA_SETUP_FRMSETUPPARTS_H
