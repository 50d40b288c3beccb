#include "console/frmAddClient1.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "common/text.h"
#include "console/entry_texts.h"
#include "console/frmParts.h"
#include "platform/qt/focus_guard.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/text_qt.h"

namespace {

/// Lower case in any language. A name that is no UTF-8 keeps its bytes: shown, two such names could
/// be the same text.
std::string LowerCaseOf(const std::string& text) {
    const QString shown = ToQt(text);
    return FromQt(shown) == text ? FromQt(shown.toLower()) : ToLower(text);
}

}  // namespace

frmAddClient1::frmAddClient1(const AddressBook& book, MessageBoxes& boxes, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frmAddClient1"));
    setWindowTitle(QStringLiteral("Add New Client Radio"));
    txtClientRadioName_ = NameField(this, QStringLiteral("txtClientRadioName"), MostNameCharacters);
    const NextCancel buttons = NextAndCancel(*this, QStringLiteral("&Next"));

    auto* column = new QVBoxLayout(this);
    column->addWidget(CaptionFor(txtClientRadioName_, QStringLiteral("lblClientRadioName"),
                                 QStringLiteral("&Enter a Name to Identify this Client Radio:")));
    column->addWidget(txtClientRadioName_);
    column->addSpacing(fontMetrics().height());
    column->addLayout(buttons.Row);
    column->setSizeConstraint(QLayout::SetFixedSize);

    auto* guard = new FocusGuard(this);
    guard->AddField(txtClientRadioName_, [this, &book, &boxes] {
        return ValidateNewName(book, Name(), LowerCaseOf, boxes);
    });
    guard->LeavesWithoutValidating(buttons.cmdCancel);
    connect(buttons.cmdNext, &QPushButton::clicked, this, [this] {
        Tag = "NEXT";
        hide();
    });
    txtClientRadioName_->setFocus();
}

std::string frmAddClient1::Name() const {
    return FromQt(txtClientRadioName_->text());
}
