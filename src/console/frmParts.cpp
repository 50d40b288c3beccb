#include "console/frmParts.h"

#include <QBoxLayout>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>

#include "platform/qt/named_controls.h"

QLineEdit* NameField(QWidget* parent, const QString& name, int characters) {
    auto* field = new QLineEdit(parent);
    field->setObjectName(name);
    field->setMaxLength(characters);
    field->setMinimumWidth(field->fontMetrics().averageCharWidth() * (characters + 2));
    return field;
}

NextCancel NextAndCancel(QDialog& dialog, const QString& nextText) {
    NextCancel buttons;
    buttons.cmdNext = NamedButton(&dialog, QStringLiteral("cmdNext"), nextText);
    buttons.cmdNext->setDefault(true);
    buttons.cmdCancel = NamedButton(&dialog, QStringLiteral("cmdCancel"), QStringLiteral("Cancel"));
    buttons.Row = new QHBoxLayout;
    buttons.Row->addStretch();
    buttons.Row->addWidget(buttons.cmdNext);
    buttons.Row->addWidget(buttons.cmdCancel);
    QObject::connect(buttons.cmdCancel, &QPushButton::clicked, &dialog, &QDialog::reject);
    return buttons;
}
