// The page of the flow calculation.
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "platform/qt/option_group.h"
#include "platform/qt/text_qt.h"
#include "setup/frmSetupPages.h"
#include "setup/frmSetupParts.h"
#include "setup/setup_lists.h"

using namespace setup_parts;

namespace {

void NameDevices(QComboBox& list, const FlowDeviceList& devices) {
    for (const FlowDeviceEntry& device : devices) {
        list.addItem(ToQt(device.Name));
    }
}

}  // namespace

void frmSetupPages::BuildFlowPage() {
    QWidget* page = Frames_[FlowFrame];
    auto* rows = new QVBoxLayout(page);
    auto* grid = new QGridLayout;
    BuildFlowMethods(*grid);
    BuildFlowDisplay(*grid);
    grid->setColumnStretch(1, 1);
    rows->addLayout(grid);
    rows->addWidget(BuildMannings(page));
    rows->addStretch();
}

void frmSetupPages::BuildFlowMethods(QGridLayout& grid) {
    static constexpr std::array<std::string_view, 1> NoDevice{setup_lists::NoDevice};
    QWidget* page = Frames_[FlowFrame];
    const auto option = [&](const char* name, const char* caption, int code) {
        flowOptions_.push_back(fields_.Option(
            page, Named(name), caption, [](SetupControls& c) -> int& { return c.FlowOption; },
            code));
        grid.addWidget(flowOptions_.back(), code, 0);
    };
    option("optNoFlow", "No Flow Calculation", FlowNone);
    option("optMannings", "Manning's Equation", FlowMannings);
    option("optFlume", "Flume:", FlowFlume);
    QComboBox* flume = fields_.List(page, Named("cmbFlume"), NoDevice,
                                    [](SetupControls& c) -> int& { return c.cmbFlume; });
    flume->setAccessibleName(QStringLiteral("Flume"));
    NameDevices(*flume, records_.catalogues.FlumeList);
    grid.addWidget(flume, FlowFlume, 1, 1, 2);
    option("optWeir", "Weir:", FlowWeir);
    QComboBox* weir = fields_.List(page, Named("cmbWeir"), NoDevice,
                                   [](SetupControls& c) -> int& { return c.cmbWeir; });
    weir->setAccessibleName(QStringLiteral("Weir"));
    NameDevices(*weir, records_.catalogues.WeirList);
    grid.addWidget(weir, FlowWeir, 1, 1, 2);
    option("optTable", "Table File:", FlowByTable);
    QLineEdit* table = fields_.Text(
        page, Named("txtTableFile"),
        [](SetupControls& c) -> std::string& { return c.txtTableFile; }, nullptr, 40);
    table->setMinimumWidth(table->width());
    table->setMaximumWidth(QWIDGETSIZE_MAX);
    table->setMaxLength(static_cast<int>(LongestTablePath));
    table->setAccessibleName(QStringLiteral("Table file"));
    grid.addWidget(table, FlowByTable, 1);
    cmdBrowse_ = NamedButton(page, Named("cmdBrowse"), QStringLiteral("..."));
    cmdBrowse_->setAccessibleName(QStringLiteral("Browse for a table file"));
    grid.addWidget(cmdBrowse_, FlowByTable, 2);
    TabEntersAtChosen(*page);
    ofFlume_ = {flume};
    ofWeir_ = {weir};
    ofTable_ = {table, cmdBrowse_};
}

void frmSetupPages::BuildFlowDisplay(QGridLayout& grid) {
    QWidget* page = Frames_[FlowFrame];
    QComboBox* units = fields_.List(page, Named("cmbFlowUnits"), setup_lists::FlowUnits,
                                    [](SetupControls& c) -> int& { return c.cmbFlowUnits; });
    QLineEdit* top = fields_.Text(
        page, Named("txtFlowTop"), [](SetupControls& c) -> std::string& { return c.txtFlowTop; },
        CheckFloat, NumberCharacters);
    QLineEdit* offset = fields_.Text(
        page, Named("txtOffset"), [](SetupControls& c) -> std::string& { return c.txtOffset; },
        CheckFloat, NumberCharacters);
    QComboBox* offsetUnits =
        fields_.List(page, Named("cmbOffsetUnits"), setup_lists::LengthUnits,
                     [](SetupControls& c) -> int& { return c.cmbOffsetUnits; });
    offsetUnits->setAccessibleName(QStringLiteral("Unit of the level offset"));
    auto* offsetRow = new QHBoxLayout;
    offsetRow->addWidget(offset);
    offsetRow->addWidget(offsetUnits);
    offsetRow->addStretch();
    const int row = FlowByTable + 1;
    grid.addWidget(Label("Label12", "Flow Display Units:", units), row, 0);
    grid.addWidget(units, row, 1, Qt::AlignLeft);
    grid.addWidget(Label("Label13", "Flow Display Top Value:", top), row + 1, 0);
    grid.addWidget(top, row + 1, 1, Qt::AlignLeft);
    grid.addWidget(Label("Label14", "Level Offset:", offset), row + 2, 0);
    grid.addLayout(offsetRow, row + 2, 1);
    ofFlow_ = {units, top, offset, offsetUnits};
}

QGroupBox* frmSetupPages::BuildMannings(QWidget* page) {
    auto* group = new QGroupBox(QStringLiteral("Manning's Equation Parameters"), page);
    group->setObjectName(Named("frmMannings"));
    auto* grid = new QGridLayout(group);
    const auto number = [this, group](const char* name, std::string SetupControls::*value) {
        return fields_.Text(
            group, Named(name), [value](SetupControls& c) -> std::string& { return c.*value; },
            CheckFloat, NumberCharacters);
    };
    QComboBox* roughness = fields_.Editable(
        group, Named("cmbRoughness"), setup_lists::Roughness,
        [](SetupControls& c) -> std::string& { return c.cmbRoughness; }, CheckRoughness);
    QLineEdit* slope = number("txtSlope", &SetupControls::txtSlope);
    QComboBox* slopeUnits = fields_.List(group, Named("cmbSlopeUnits"), setup_lists::SlopeUnits,
                                         [](SetupControls& c) -> int& { return c.cmbSlopeUnits; });
    slopeUnits->setAccessibleName(QStringLiteral("Unit of the slope"));
    QLineEdit* diameter = number("txtDiameter", &SetupControls::txtDiameter);
    QComboBox* diameterUnits =
        fields_.List(group, Named("cmbDiameterUnits"), setup_lists::LengthUnits,
                     [](SetupControls& c) -> int& { return c.cmbDiameterUnits; });
    diameterUnits->setAccessibleName(QStringLiteral("Unit of the pipe diameter"));
    QComboBox* velocity = fields_.List(group, Named("cmbVelUnits"), setup_lists::VelocityUnits,
                                       [](SetupControls& c) -> int& { return c.cmbVelUnits; });
    QLineEdit* velocityTop = number("txtVelTop", &SetupControls::txtVelTop);
    const std::array<QLabel*, 5> labels{Label("lblM3", "Roughness Number:", roughness),
                                        Label("lblM2", "Slope:", slope),
                                        Label("lblM1", "Pipe Diameter:", diameter),
                                        Label("lblM4", "Velocity Display Units:", velocity),
                                        Label("lblM5", "Velocity Display Top:", velocityTop)};
    for (std::size_t row = 0; row < labels.size(); ++row) {
        grid->addWidget(labels[row], static_cast<int>(row), 0);
    }
    grid->addWidget(roughness, 0, 1, 1, 3);
    grid->addWidget(slope, 1, 1);
    grid->addWidget(slopeUnits, 1, 2);
    grid->addWidget(diameter, 2, 1);
    grid->addWidget(diameterUnits, 2, 2);
    grid->addWidget(velocity, 3, 1, 1, 2);
    grid->addWidget(velocityTop, 4, 1);
    grid->setColumnStretch(3, 1);
    ofMannings_ = {group,    roughness,     slope,    slopeUnits,
                   diameter, diameterUnits, velocity, velocityTop};
    ofMannings_.insert(ofMannings_.end(), labels.begin(), labels.end());
    return group;
}
