#include "setup/frmSetupFields.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QString>
#include <utility>

#include "platform/qt/text_qt.h"
#include "setup/setup_lists.h"

namespace {

void AddItems(QComboBox& list, std::span<const std::string_view> items) {
    for (const std::string_view item : items) {
        list.addItem(ToQt(item));
    }
}

QComboBox* NewList(QWidget* parent, const QString& name) {
    auto* list = new QComboBox(parent);
    list->setObjectName(name);
    list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    return list;
}

}  // namespace

void FillUnitsCombo(QComboBox& combo, bool analog) {
    combo.clear();
    if (analog) {
        AddItems(combo, setup_lists::AnalogUnits);
    } else {
        AddItems(combo, setup_lists::PulseUnits);
    }
}

QLineEdit* frmSetupFields::Text(QWidget* parent, const QString& name, Place<std::string> place,
                                Validator check, int characters) {
    auto* field = new QLineEdit(parent);
    field->setObjectName(name);
    const QFontMetrics metrics = field->fontMetrics();
    const int digits = metrics.horizontalAdvance(QString(characters, QLatin1Char('0')));
    field->setFixedWidth(digits + metrics.height());
    texts_.push_back({field, std::move(place), std::move(check)});
    return field;
}

QComboBox* frmSetupFields::Editable(QWidget* parent, const QString& name,
                                    std::span<const std::string_view> items,
                                    Place<std::string> place, Validator check) {
    QComboBox* list = NewList(parent, name);
    list->setEditable(true);
    list->setInsertPolicy(QComboBox::NoInsert);
    // A completed text would replace the one that was typed.
    list->setCompleter(nullptr);
    AddItems(*list, items);
    texts_.push_back({list, std::move(place), std::move(check)});
    return list;
}

QComboBox* frmSetupFields::Numbers(QWidget* parent, const QString& name, int last,
                                   Place<std::string> place) {
    QComboBox* list = Editable(parent, name, {}, std::move(place), [last](std::string_view text) {
        return CheckListNumber(text, last);
    });
    for (int number = 0; number <= last; ++number) {
        list->addItem(QString::number(number));
    }
    return list;
}

QComboBox* frmSetupFields::List(QWidget* parent, const QString& name,
                                std::span<const std::string_view> items, Place<int> place) {
    QComboBox* list = NewList(parent, name);
    AddItems(*list, items);
    lists_.push_back({list, std::move(place)});
    return list;
}

QCheckBox* frmSetupFields::Check(QWidget* parent, const QString& name, const char* caption,
                                 Place<bool> place) {
    auto* box = new QCheckBox(QString::fromLatin1(caption), parent);
    box->setObjectName(name);
    checks_.push_back({box, std::move(place)});
    return box;
}

QRadioButton* frmSetupFields::Option(QWidget* parent, const QString& name, const char* caption,
                                     Place<int> place, int value) {
    auto* option = new QRadioButton(QString::fromLatin1(caption), parent);
    option->setObjectName(name);
    options_.push_back({option, std::move(place), value});
    return option;
}

SetupControls frmSetupFields::Values() const {
    SetupControls values;
    for (const Field& field : texts_) {
        field.Value(values) = TextOf(field.Widget);
    }
    for (const ListField& field : lists_) {
        field.Value(values) = field.Widget->currentIndex();
    }
    for (const CheckField& field : checks_) {
        field.Value(values) = field.Widget->isChecked();
    }
    for (const OptionField& field : options_) {
        if (field.Widget->isChecked()) {
            field.Value(values) = field.Code;
        }
    }
    return values;
}

void frmSetupFields::Show(SetupControls values) {
    for (const Field& field : texts_) {
        SetText(field.Widget, field.Value(values));
    }
    for (const ListField& field : lists_) {
        field.Widget->setCurrentIndex(field.Value(values));
    }
    for (const CheckField& field : checks_) {
        field.Widget->setChecked(field.Value(values));
    }
    for (const OptionField& field : options_) {
        if (field.Value(values) == field.Code) {
            field.Widget->setChecked(true);
        }
    }
}

std::string frmSetupFields::TextOf(const QWidget* widget) {
    const auto* list = qobject_cast<const QComboBox*>(widget);
    return FromQt(list != nullptr ? list->currentText()
                                  : static_cast<const QLineEdit*>(widget)->text());
}

void frmSetupFields::SetText(QWidget* widget, const std::string& text) {
    const QString shown = ToQt(text);
    auto* list = qobject_cast<QComboBox*>(widget);
    if (list == nullptr) {
        auto* field = static_cast<QLineEdit*>(widget);
        if (field->text() != shown) {
            field->setText(shown);
        }
        return;
    }
    const int item = list->findText(shown, Qt::MatchExactly | Qt::MatchCaseSensitive);
    list->setCurrentIndex(item);
    if (list->currentText() != shown) {
        list->setEditText(shown);
    }
}
