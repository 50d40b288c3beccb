#include "console/frmEditClient.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "console/frmParts.h"
#include "platform/qt/focus_guard.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/text_qt.h"

frmEditClient::frmEditClient(const EntryTexts& shown, MessageBoxes& boxes, QWidget* parent)
    : QDialog(parent), name_(shown.Name) {
    setObjectName(QStringLiteral("frmEditClient"));
    setWindowTitle(QStringLiteral("Edit Logger Radio Settings"));
    txtClientRadioName_ = NameField(this, QStringLiteral("txtClientRadioName"), MostNameCharacters);
    txtClientRadioName_->setText(ToQt(shown.Name));
    const NextCancel buttons = NextAndCancel(*this, QStringLiteral("&Finish"));
    auto* guard = new FocusGuard(this);
    guard->LeavesWithoutValidating(buttons.cmdCancel);
    fields_ = new HexAddressFields(*this, *guard, boxes, *buttons.cmdNext);
    fields_->SetTexts(shown.Address);

    auto* rows = new QGridLayout;
    rows->addWidget(CaptionFor(txtClientRadioName_, QStringLiteral("lblClientRadioName"),
                               QStringLiteral("Client Radio &Name:")),
                    0, 0);
    rows->addWidget(txtClientRadioName_, 0, 1);
    fields_->AddTo(*rows, 1);
    auto* column = new QVBoxLayout(this);
    column->addLayout(rows);
    column->addSpacing(fontMetrics().height());
    column->addLayout(buttons.Row);
    column->setSizeConstraint(QLayout::SetFixedSize);
    setTabOrder(txtClientRadioName_, fields_->First());
    setTabOrder(fields_->Last(), buttons.cmdNext);
    setTabOrder(buttons.cmdNext, buttons.cmdCancel);
    connect(buttons.cmdNext, &QPushButton::clicked, this, [this] {
        Tag = "FINISH";
        hide();
    });
    txtClientRadioName_->setFocus();
}

EntryTexts frmEditClient::Texts() const {
    const QString name = txtClientRadioName_->text();
    return {name == ToQt(name_) ? name_ : FromQt(name), fields_->Texts()};
}
