#include "console/frmAddClient2.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QPushButton>

#include "console/frmParts.h"
#include "platform/qt/focus_guard.h"

frmAddClient2::frmAddClient2(const AddressTexts& offered, MessageBoxes& boxes, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frmAddClient2"));
    setWindowTitle(QStringLiteral("Add New Client Radio"));
    const NextCancel buttons = NextAndCancel(*this, QStringLiteral("&Finish"));
    auto* guard = new FocusGuard(this);
    guard->LeavesWithoutValidating(buttons.cmdCancel);
    fields_ = new HexAddressFields(*this, *guard, boxes, *buttons.cmdNext);
    fields_->SetTexts(offered);

    auto* rows = new QGridLayout;
    fields_->AddTo(*rows, 0);
    auto* column = new QVBoxLayout(this);
    column->addLayout(rows);
    column->addSpacing(fontMetrics().height());
    column->addLayout(buttons.Row);
    column->setSizeConstraint(QLayout::SetFixedSize);
    setTabOrder(fields_->Last(), buttons.cmdNext);
    setTabOrder(buttons.cmdNext, buttons.cmdCancel);
    connect(buttons.cmdNext, &QPushButton::clicked, this, [this] {
        Tag = "FINISH";
        hide();
    });
    fields_->First()->setFocus();
}
