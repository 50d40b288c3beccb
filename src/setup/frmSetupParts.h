#ifndef ORVIA_SETUP_FRMSETUPPARTS_H
#define ORVIA_SETUP_FRMSETUPPARTS_H

#include <QLabel>
#include <QString>
#include <QWidget>

// Small parts that the pages of the set-up are put together from.

namespace setup_parts {

inline QString Named(const char* name) {
    return QString::fromLatin1(name);
}

/// Name of a member of a control array: "txtHighEU(3)".
inline QString Indexed(const char* name, int index) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
}

/// A label, naming `buddy` to who cannot see it.
inline QLabel* Label(QWidget* parent, const char* name, const char* text,
                     QWidget* buddy = nullptr) {
    auto* label = new QLabel(QString::fromLatin1(text), parent);
    label->setObjectName(Named(name));
    label->setBuddy(buddy);
    return label;
}

inline void Tell(QWidget& widget, const char* tooltip) {
    widget.setToolTip(QString::fromLatin1(tooltip));
}

}  // namespace setup_parts

#endif  // ORVIA_SETUP_FRMSETUPPARTS_H
