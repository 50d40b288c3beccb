#include "platform/qt/named_controls.h"

#include <QLabel>
#include <QPushButton>

QLabel* CaptionFor(QWidget* buddy, const QString& name, const QString& text) {
    auto* label = new QLabel(text, buddy->parentWidget());
    label->setObjectName(name);
    label->setBuddy(buddy);
    return label;
}

QLabel* ValueLabel(QWidget* parent, const QString& name, const QString& meaning) {
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setAccessibleDescription(meaning);
    return label;
}

QPushButton* NamedButton(QWidget* parent, const QString& name, const QString& text) {
    auto* button = new QPushButton(text, parent);
    button->setObjectName(name);
    return button;
}
