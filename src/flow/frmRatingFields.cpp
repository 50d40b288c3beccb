#include "flow/frmRatingFields.h"

#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <utility>

#include "platform/qt/named_controls.h"
#include "platform/qt/text_qt.h"

namespace {

QString Indexed(const char* name, std::size_t at) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(at);
}

}  // namespace

RatingFields::RatingFields(QWidget* parent, Typed typed)
    : QWidget(parent), typed_(std::move(typed)), grid_(new QGridLayout(this)) {
    setObjectName(QStringLiteral("fraFields"));
    grid_->setColumnStretch(1, 1);
    grid_->setVerticalSpacing(fontMetrics().height() / 4);
    const int margin = fontMetrics().height() / 4;
    grid_->setContentsMargins(margin, margin, margin, margin);
}

void RatingFields::Build(const RatingEntry& entry) {
    fields_.clear();
    qDeleteAll(findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly));
    for (std::size_t i = 0; i < entry.Kind().Fields.size(); ++i) {
        const RatingField& told = entry.Kind().Fields[i];
        Field field = MakeField(told, i);
        const int row = static_cast<int>(i);
        QLabel* caption = CaptionFor(field.Input, Indexed("lblDimension", i),
                                     EscapedAmpersands(told.Caption) + QLatin1Char(':'));
        grid_->addWidget(caption, row, 0);
        if (told.Units == RatingUnits::Choice) {
            grid_->addWidget(field.Input, row, 1, 1, 2);
        } else {
            grid_->addWidget(field.Input, row, 1);
            field.Unit = new QLabel(this);
            field.Unit->setObjectName(Indexed("lblUnit", i));
            grid_->addWidget(field.Unit, row, 2);
        }
        fields_.push_back(field);
    }
    for (int row = 0; row < grid_->rowCount(); ++row) {
        grid_->setRowStretch(row, 0);
    }
    grid_->setRowStretch(static_cast<int>(fields_.size()), 1);
    // A layout shows its widgets later; until then it would take no room for them.
    for (QWidget* made : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        made->show();
    }
    Show(entry);
}

RatingFields::Field RatingFields::MakeField(const RatingField& told, std::size_t at) {
    Field field;
    field.Input = told.Units == RatingUnits::Choice ? MakeList(told, at) : MakeText(told, at);
    if (auto* line = qobject_cast<QLineEdit*>(field.Input)) {
        field.Sign = line->addAction(style()->standardIcon(QStyle::SP_MessageBoxWarning),
                                     QLineEdit::TrailingPosition);
        field.Sign->setObjectName(Indexed("actSign", at));
        field.Sign->setVisible(false);
    }
    return field;
}

QWidget* RatingFields::MakeText(const RatingField& told, std::size_t at) {
    constexpr int Characters = 9;
    auto* line = new QLineEdit(this);
    line->setObjectName(Indexed("txtDimension", at));
    line->setMinimumWidth(line->fontMetrics().averageCharWidth() * Characters);
    if (told.Optional) {
        line->setPlaceholderText(QStringLiteral("by the method"));
    }
    connect(line, &QLineEdit::textChanged, this, [this, at](const QString& text) {
        if (!showing_) {
            typed_(at, FromQt(text));
        }
    });
    return line;
}

QWidget* RatingFields::MakeList(const RatingField& told, std::size_t at) {
    constexpr int Characters = 12;
    auto* list = new QComboBox(this);
    list->setObjectName(Indexed("cmbDimension", at));
    for (const std::string_view choice : told.Choices) {
        list->addItem(ToQt(choice));
    }
    // A long choice must not widen the column: all of it shows in the list and in the hint.
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    list->setMinimumContentsLength(Characters);
    list->view()->setMinimumWidth(list->view()->sizeHintForColumn(0) +
                                  2 * list->fontMetrics().height());
    connect(list, &QComboBox::currentTextChanged, this, [this, at](const QString& text) {
        if (!showing_) {
            typed_(at, FromQt(text));
            Describe(fields_[at]);
        }
    });
    return list;
}

void RatingFields::Show(const RatingEntry& entry) {
    showing_ = true;
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        Field& field = fields_[i];
        const QString text = ToQt(entry.FieldText(i));
        if (auto* line = qobject_cast<QLineEdit*>(field.Input)) {
            line->setText(text);
            line->setCursorPosition(0);
        } else if (auto* list = qobject_cast<QComboBox*>(field.Input)) {
            list->setCurrentIndex(list->findText(text));
        }
        if (field.Unit != nullptr) {
            field.Unit->setText(ToQt(RatingUnitText(entry.Device(), entry.Kind().Fields[i].Units)));
        }
        field.Help = ToQt(entry.FieldHelp(i));
        Describe(field);
    }
    showing_ = false;
}

void RatingFields::Mark(std::size_t field, const std::string& why) {
    Field& marked = fields_[field];
    const QString shown = ToQt(why);
    if (marked.Why != shown) {
        marked.Why = shown;
        Describe(marked);
    }
}

void RatingFields::Describe(const Field& field) {
    QStringList lines;
    auto* list = qobject_cast<QComboBox*>(field.Input);
    for (const QString& line :
         {field.Why, list != nullptr ? list->currentText() : QString(), field.Help}) {
        if (!line.isEmpty()) {
            lines.push_back(line);
        }
    }
    field.Input->setToolTip(
        Qt::convertFromPlainText(lines.join(QLatin1Char('\n')), Qt::WhiteSpaceNormal));
    field.Input->setAccessibleDescription(
        (field.Why.isEmpty() ? QString() : field.Why + QLatin1Char(' ')) +
        (field.Unit != nullptr && !field.Unit->text().isEmpty()
             ? QStringLiteral("In %1. ").arg(field.Unit->text())
             : QString()) +
        field.Help);
    if (field.Sign != nullptr) {
        field.Sign->setVisible(!field.Why.isEmpty());
        field.Sign->setToolTip(field.Why);
    }
}

std::vector<QWidget*> RatingFields::Inputs() const {
    std::vector<QWidget*> inputs;
    for (const Field& field : fields_) {
        inputs.push_back(field.Input);
    }
    return inputs;
}
