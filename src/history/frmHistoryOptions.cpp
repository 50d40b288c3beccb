#include "history/frmHistoryOptions.h"

#include <QBoxLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>

#include "history/save_history.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/option_group.h"
#include "platform/qt/text_qt.h"

frmHistoryOptions::frmHistoryOptions(Settings& settings, QWidget* parent)
    : QDialog(parent), settings_(settings) {
    setObjectName(QStringLiteral("frmHistoryOptions"));
    setWindowTitle(QStringLiteral("History File Options"));
    auto* column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetFixedSize);
    BuildChoice();
    BuildButtons();
    const bool single = IsSingleColumn(settings.CSVDateTimeSingleColumn);
    QRadioButton* const chosen = single ? optNoComma_ : optComma_;
    chosen->setChecked(true);
    chosen->setFocus();
}

void frmHistoryOptions::BuildChoice() {
    auto* frame = new QGroupBox(QStringLiteral("Date/Time Format"), this);
    frame->setObjectName(QStringLiteral("Frame1"));
    auto* column = new QVBoxLayout(frame);
    const auto option = [frame, column](const char* name, const char* text) {
        auto* made = new QRadioButton(QLatin1String(text), frame);
        made->setObjectName(QLatin1String(name));
        column->addWidget(made);
        return made;
    };
    optComma_ = option("optComma", "Date and Time are in separate columns in CSV output files.");
    optNoComma_ = option("optNoComma",
                         "Date and Time are combined into a single column in CSV output files.");
    layout()->addWidget(frame);
    TabEntersAtChosen(*frame);
}

void frmHistoryOptions::BuildButtons() {
    auto* row = new QHBoxLayout;
    row->addStretch();
    QPushButton* cmdOK = NamedButton(this, QStringLiteral("cmdOK"), QStringLiteral("Close"));
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, [this] { Store(); });
    row->addWidget(cmdOK);
    QPushButton* cmdCancel =
        NamedButton(this, QStringLiteral("cmdCancel"), QStringLiteral("Cancel"));
    connect(cmdCancel, &QPushButton::clicked, this, [this] { reject(); });
    row->addWidget(cmdCancel);
    static_cast<QBoxLayout*>(layout())->addLayout(row);
}

void frmHistoryOptions::Store() {
    settings_.CSVDateTimeSingleColumn = SingleColumnSetting(optNoComma_->isChecked());
    accept();
}
