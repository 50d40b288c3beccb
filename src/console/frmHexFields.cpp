#include "console/frmHexFields.h"

#include <QFocusEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <algorithm>

#include "platform/qt/focus_guard.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/text_qt.h"

namespace {

constexpr std::size_t ChannelCharacters = 2;
constexpr std::size_t MacCharacters = 8;

/// The focus leaves a field or comes back without the operator going elsewhere in the window.
bool IsOfWindow(Qt::FocusReason reason) {
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
}

/// A key that commands and types nothing. Control with Alt is the key of some keyboards that types
/// a third character.
bool IsCommand(Qt::KeyboardModifiers held) {
    held &= Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    return held != Qt::NoModifier && held != (Qt::ControlModifier | Qt::AltModifier);
}

std::size_t CharactersOf(const QString& text) {
    return static_cast<std::size_t>(text.toUcs4().size());
}

/// Whether a typed character would be one more than the field takes.
bool IsFull(int field, const QLineEdit& edit) {
    const std::size_t kept = CharactersOf(edit.text()) - CharactersOf(edit.selectedText());
    return kept >= (field == ChannelField ? ChannelCharacters : MacCharacters);
}

}  // namespace

HexAddressFields::HexAddressFields(QWidget& window, FocusGuard& guard, MessageBoxes& boxes,
                                   QWidget& next)
    : QObject(&window), boxes_(boxes), next_(next) {
    for (int field = ChannelField; field < HexFields; ++field) {
        const bool isChannel = field == ChannelField;
        const int number = field - FirstMacField;
        QLineEdit* made = MakeField(window, isChannel ? QStringLiteral("txtChannel")
                                                      : QStringLiteral("txtMAC(%1)").arg(number));
        if (!isChannel) {
            made->setMaxLength(static_cast<int>(MacCharacters));
        }
        made->setAccessibleName(isChannel
                                    ? QStringLiteral("Radio Channel, hexadecimal 00 to 37")
                                    : QStringLiteral("Radio MAC, number %1 of 6").arg(number + 1));
        fields_[static_cast<std::size_t>(field)] = made;
        made->installEventFilter(this);
        connect(made, &QLineEdit::textChanged, this, [this, field] { TextChanged(field); });
        guard.AddField(made, [this, field] { return Validate(field); });
    }
}

QLineEdit* HexAddressFields::MakeField(QWidget& window, const QString& name) const {
    constexpr int ShownCharacters = 4;
    auto* field = new QLineEdit(QStringLiteral("FF"), &window);
    field->setObjectName(name);
    // What an input method composes would pass by the keys.
    field->setAttribute(Qt::WA_InputMethodEnabled, false);
    field->setAlignment(Qt::AlignCenter);
    field->setFixedWidth(field->fontMetrics().horizontalAdvance(QLatin1Char('D')) *
                             ShownCharacters +
                         field->fontMetrics().height());
    return field;
}

void HexAddressFields::AddTo(QGridLayout& layout, int row) {
    layout.addWidget(CaptionFor(First(), QStringLiteral("lblChannel"),
                                QStringLiteral("Radio C&hannel (Hex 00-37):")),
                     row, 0);
    layout.addWidget(First(), row, 1, Qt::AlignLeft);
    layout.addWidget(CaptionFor(fields_[FirstMacField], QStringLiteral("lblMAC"),
                                QStringLiteral("Radio &MAC (6 Hex Numbers):")),
                     row + 1, 0);
    auto* numbers = new QHBoxLayout;
    for (int field = FirstMacField; field < HexFields; ++field) {
        if (field != FirstMacField) {
            numbers->addWidget(new QLabel(QStringLiteral("-"), First()->parentWidget()));
        }
        numbers->addWidget(fields_[static_cast<std::size_t>(field)]);
    }
    numbers->addStretch();
    layout.addLayout(numbers, row + 1, 1);
}

void HexAddressFields::SetTexts(const AddressTexts& texts) {
    fields_[ChannelField]->setText(ToQt(texts.Channel));
    for (std::size_t i = 0; i < texts.Mac.size(); ++i) {
        fields_[FirstMacField + i]->setText(ToQt(texts.Mac[i]));
    }
}

AddressTexts HexAddressFields::Texts() const {
    AddressTexts texts;
    texts.Channel = FromQt(fields_[ChannelField]->text());
    for (std::size_t i = 0; i < texts.Mac.size(); ++i) {
        texts.Mac[i] = FromQt(fields_[FirstMacField + i]->text());
    }
    return texts;
}

QWidget* HexAddressFields::First() const {
    return fields_.front();
}

QWidget* HexAddressFields::Last() const {
    return fields_.back();
}

bool HexAddressFields::eventFilter(QObject* watched, QEvent* event) {
    const int field = NumberOf(watched);
    if (field == HexFields) {
        return false;
    }
    QLineEdit& edit = *fields_[static_cast<std::size_t>(field)];
    switch (event->type()) {
        case QEvent::KeyPress:
            return SwallowsKey(field, static_cast<const QKeyEvent&>(*event));
        case QEvent::FocusIn:
            TakeFocus(field, static_cast<const QFocusEvent*>(event)->reason());
            return false;
        case QEvent::FocusOut:
            if (!IsOfWindow(static_cast<const QFocusEvent*>(event)->reason())) {
                focus_.Lost();
            }
            return false;
        case QEvent::MouseButtonRelease:
            EndClick(edit);
            return false;
        default:
            return false;
    }
}

int HexAddressFields::NumberOf(const QObject* widget) const {
    return static_cast<int>(std::find(fields_.begin(), fields_.end(), widget) - fields_.begin());
}

bool HexAddressFields::SwallowsKey(int field, const QKeyEvent& event) {
    QLineEdit& edit = *fields_[static_cast<std::size_t>(field)];
    const auto typed = event.text().toUcs4();
    // Keys that move and delete come without a character that could be shown.
    if (typed.size() != 1 || !QChar::isPrint(typed.front())) {
        return false;
    }
    if (IsCommand(event.modifiers())) {
        // The field knows commands with Control; the letter of any other it would insert.
        return !event.modifiers().testFlag(Qt::ControlModifier);
    }
    switch (TakesHexKey(typed.front())) {
        case HexKey::Pass:
            return IsFull(field, edit);
        case HexKey::Replace:
            if (!IsFull(field, edit)) {
                edit.insert(event.text().toUpper());
            }
            return true;
        case HexKey::Refuse:
            boxes_.Show(HexKeyRefusal());
            return true;
        case HexKey::Swallow:
            break;
    }
    return true;
}

void HexAddressFields::TakeFocus(int field, Qt::FocusReason reason) {
    if (!focus_.Gained(field)) {
        return;
    }
    fields_[static_cast<std::size_t>(field)]->selectAll();
    // The press that brings the focus still sets the caret.
    selectsOnRelease_ = reason == Qt::MouseFocusReason;
}

void HexAddressFields::EndClick(QLineEdit& field) {
    if (selectsOnRelease_ && !field.hasSelectedText()) {
        QMetaObject::invokeMethod(&field, &QLineEdit::selectAll, Qt::QueuedConnection);
    }
    selectsOnRelease_ = false;
}

bool HexAddressFields::Validate(int field) {
    QLineEdit& edit = *fields_[static_cast<std::size_t>(field)];
    const std::optional<std::string> text = ValidateHexField(field, FromQt(edit.text()), boxes_);
    if (text) {
        // The program's own change of the text is no typing.
        replacing_ = true;
        edit.setText(ToQt(*text));
        replacing_ = false;
    }
    return text.has_value();
}

void HexAddressFields::TextChanged(int field) {
    const auto at = static_cast<std::size_t>(field);
    if (replacing_ || !fields_[at]->isVisible() ||
        !focus_.IsComplete(field, CharactersOf(fields_[at]->text())) || !Validate(field)) {
        return;
    }
    focus_.Disarm();
    QWidget* following = field + 1 < HexFields ? fields_[at + 1] : &next_;
    following->setFocus(Qt::TabFocusReason);
}
