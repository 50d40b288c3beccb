// The page of analog channels: one table tells the columns of all its rows.
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>

#include "setup/frmSetupPages.h"
#include "setup/frmSetupParts.h"
#include "setup/frmSetupRow.h"
#include "setup/setup_flow_page.h"

using namespace setup_parts;

namespace {

enum class Kind { Enable, Unit, Number, Count, Precision, Calibrate };

/// Characters of the largest raw count, and one to see its end by.
constexpr int CountCharacters = 6;

struct Column {
    Kind What;
    const char* Name;
    const char* HeadName;  ///< null: no head
    const char* Head;
    const char* Tip;
    std::string AnalogRow::*Value;
    FieldCheck (*Check)(std::string_view);
};

constexpr std::array<Column, 10> Columns{{
    {Kind::Enable, "chkEnable", nullptr, "Enable",
     "Selects if channel is included in display and history ", nullptr, nullptr},
    {Kind::Unit, "cmbEU", "Label1", "Units",
     "Name of measurement engineering units (9 characters max)", &AnalogRow::cmbEU, CheckUnit},
    {Kind::Number, "txtHighEU", "Label2", "High EU",
     "Floating point value of upper calibration point expressed in engineering units",
     &AnalogRow::txtHighEU, CheckFloat},
    {Kind::Number, "txtLowEU", "Label3", "Low EU",
     "Floating point value of lower calibration point expressed in engineering units",
     &AnalogRow::txtLowEU, CheckFloat},
    {Kind::Count, "txtHighRaw", "Label4", "High Raw",
     "Integer value of upper calibration point ( 0-65535)", &AnalogRow::txtHighRaw, CheckRaw},
    {Kind::Count, "txtLowRaw", "Label5", "Low Raw",
     "Integer value of lower calibration point (0-65535)", &AnalogRow::txtLowRaw, CheckRaw},
    {Kind::Number, "txtTop", "Label10", "Disp High", "Floating point value of top of display meter",
     &AnalogRow::txtTop, CheckFloat},
    {Kind::Number, "txtBottom", "Label11", "Disp Low",
     "Floating point value of bottom of display meter", &AnalogRow::txtBottom, CheckFloat},
    {Kind::Precision, "cmbPrecision", "Label6", "Decimal Places",
     "Number of digits to display after decimal point ", &AnalogRow::cmbPrecision, nullptr},
    {Kind::Calibrate, "cmdCalibrate", nullptr, "Calibrate",
     "Run dialog that assists setting calibration points", nullptr, nullptr},
}};

/// The least that a column needs for that cell: a head may take two lines.
int WidthOf(const QLayoutItem& cell) {
    const auto* head = qobject_cast<const QLabel*>(cell.widget());
    return head != nullptr && head->wordWrap() ? head->minimumSizeHint().width()
                                               : cell.sizeHint().width();
}

/// Gives the columns of the heads and of all rows one width each.
void AlignColumns(const std::vector<QGroupBox*>& rows, QWidget* heads) {
    std::vector<QGridLayout*> grids{static_cast<QGridLayout*>(heads->layout())};
    const QMargins inside = rows.front()->contentsMargins();
    const QMargins around = rows.front()->layout()->contentsMargins();
    heads->layout()->setContentsMargins(around.left() + inside.left(), 0,
                                        around.right() + inside.right(), 0);
    for (const QGroupBox* row : rows) {
        grids.push_back(static_cast<QGridLayout*>(row->layout()));
    }
    for (int column = 0; column < static_cast<int>(Columns.size()); ++column) {
        int width = 0;
        for (const QGridLayout* grid : grids) {
            const QLayoutItem* item = grid->itemAtPosition(0, column);
            width = std::max(width, item != nullptr ? WidthOf(*item) : 0);
        }
        for (QGridLayout* grid : grids) {
            grid->setColumnMinimumWidth(column, width);
            const QLayoutItem* item = grid->itemAtPosition(0, column);
            if (item != nullptr) {
                item->widget()->setMinimumWidth(width);
            }
        }
    }
    for (QGridLayout* grid : grids) {
        grid->setColumnStretch(static_cast<int>(Columns.size()), 1);
    }
}

}  // namespace

void frmSetupPages::BuildAnalogPage() {
    QWidget* page = Frames_[AnalogFrame];
    auto* rows = new QVBoxLayout(page);
    BuildHeads(page);
    std::vector<QGroupBox*> channels;
    for (int channel = 0; channel < AnalogChannels; ++channel) {
        channels.push_back(
            BuildChannel(page, channel, channel < records_.global.NumAnalogChannels));
        rows->addWidget(channels.back());
    }
    rows->addStretch();
    AlignColumns(channels, page->findChild<QWidget*>(Named("heads")));
}

void frmSetupPages::BuildHeads(QWidget* page) {
    auto* heads = new QWidget(page);
    heads->setObjectName(Named("heads"));
    auto* grid = new QGridLayout(heads);
    for (std::size_t i = 0; i < Columns.size(); ++i) {
        const int place = static_cast<int>(i);
        if (Columns[i].HeadName == nullptr) {
            // A column without a head is none to the grid, unless something stands there.
            grid->addWidget(new QWidget(heads), 0, place);
            continue;
        }
        QLabel* head = Label(heads, Columns[i].HeadName, Columns[i].Head);
        head->setAlignment(Qt::AlignLeft | Qt::AlignBottom);
        // A column of single digits is narrower than its head.
        head->setWordWrap(Columns[i].What == Kind::Precision);
        grid->addWidget(head, 0, place);
    }
    page->layout()->addWidget(heads);
}

QGroupBox* frmSetupPages::BuildChannel(QWidget* page, int channel, bool exists) {
    auto* panel = new frmSetupRow(QString::number(channel + 1), page);
    panel->setObjectName(Indexed("fraSetup", channel));
    auto* grid = new QGridLayout(panel);
    const QMargins around = grid->contentsMargins();
    grid->setContentsMargins(around.left(), around.top() / 3, around.right(), around.bottom() / 3);
    for (std::size_t i = 0; exists && i < Columns.size(); ++i) {
        grid->addWidget(NewCell(panel, channel, static_cast<int>(i)), 0, static_cast<int>(i));
    }
    if (!exists) {
        grid->setRowMinimumHeight(0, panel->fontMetrics().height());
    }
    panel->setEnabled(exists);
    return panel;
}

QWidget* frmSetupPages::NewCell(QGroupBox* panel, int channel, int number) {
    const Column& column = Columns.at(static_cast<std::size_t>(number));
    const auto row = static_cast<std::size_t>(channel);
    const QString name = Indexed(column.Name, channel);
    const Place<std::string> place = [row, value = column.Value](SetupControls& c) -> std::string& {
        return c.Analog[row].*value;
    };
    QWidget* cell = nullptr;
    switch (column.What) {
        case Kind::Enable:
            cell = fields_.Check(panel, name, column.Head, [row](SetupControls& c) -> bool& {
                return c.Analog[row].chkEnable;
            });
            break;
        case Kind::Unit: {
            QComboBox* unit =
                fields_.Editable(panel, name, {}, place, channel == 0 ? UnitCheck() : column.Check);
            FillUnitsCombo(*unit, true);
            unit->setMinimumContentsLength(static_cast<int>(LongestUnit));
            cell = unit;
            break;
        }
        case Kind::Number:
            cell = fields_.Text(panel, name, place, column.Check, NumberCharacters);
            break;
        case Kind::Count:
            cell = fields_.Text(panel, name, place, column.Check, CountCharacters);
            break;
        case Kind::Precision:
            cell = fields_.Numbers(panel, name, LastPrecision, place);
            break;
        case Kind::Calibrate:
            cmdCalibrate_.push_back(NamedButton(panel, name, QString::fromLatin1(column.Head)));
            cell = cmdCalibrate_.back();
            break;
    }
    Tell(*cell, column.Tip);
    cell->setAccessibleName(
        QStringLiteral("Channel %1 %2").arg(channel + 1).arg(QLatin1String(column.Head)));
    return cell;
}

frmSetupFields::Validator frmSetupPages::UnitCheck() const {
    return [this](std::string_view text) {
        return CheckFirstUnit(text, records_.global.NumAnalogChannels, fields_.Values().FlowOption);
    };
}
