#include "setup/setup_flow_page.h"

#include "common/characters.h"
#include "common/number_text.h"
#include "common/path_text.h"
#include "flow/flow_table.h"
#include "flow/unit_names.h"

namespace {

bool LacksFlowUnit(std::string_view unit, std::uint8_t NumAnalogChannels, int FlowOption) {
    return NumAnalogChannels == FlowAnalogChannels && FlowOption != FlowNone &&
           !config::IsFlowUnit(unit);
}

BoxContent UnsupportedUnit(const std::string& unit) {
    return {.Text =
                "Warning: For the flow monitor calculations to be done correctly the channel 1"
                "\nunit's name must be one of Feet, Inches, Meters or cm (centimeters)."
                "\n\nThe current unit's name (" +
                unit +
                ") is not supported."
                "\n\nUse the Analog Channels Panel to set the units for channel 1 to one of "
                "the legal values.",
            .Title = "Bad Units",
            .Icon = BoxIcon::Information};
}

BoxContent UnitWithoutFlow() {
    return {.Text =
                "Warning: for the flow calculation to be done properly, the first analog "
                "channel\nunit's name must be one of Feet, Inches, Meters or cm (centimeters)."
                "\n\nYou should select one of the acceptable units, or select the option "
                "\"No Flow Calculation\"\non the Flow Calculation setup tab.",
            .Title = "Bad Unit",
            .Icon = BoxIcon::Information};
}

BoxContent TableReport(int entries) {
    if (entries == 0) {
        return {.Text = "Error: selected file does not appear to be a valid flow table file.",
                .Title = "Bad Flow Table File",
                .Icon = BoxIcon::Stop};
    }
    if (entries >= MostTablePoints) {
        return {.Text =
                    "Error: selected file has more than 1000 entries,\nthe table will be "
                    "truncated to 1001 entries.",
                .Title = "Bad Flow Table File",
                .Icon = BoxIcon::Stop};
    }
    return {.Text = "The selected table file has " + IntegerToText(entries) + " entries.",
            .Title = "Flow Table File",
            .Icon = BoxIcon::Information};
}

}  // namespace

FlowStates FlowStatesOf(int FlowOption) {
    return {FlowOption == FlowFlume, FlowOption == FlowWeir, FlowOption == FlowByTable,
            FlowOption != FlowNone, FlowOption == FlowMannings};
}

void UpdateFlowOptions(const SetupContext& context) {
    const SetupControls controls = context.view.Controls();
    context.view.EnableFlow(FlowStatesOf(controls.FlowOption));
    const std::string& unit = controls.Analog.front().cmbEU;
    if (LacksFlowUnit(unit, context.global.NumAnalogChannels, controls.FlowOption)) {
        context.outside.Boxes.Show(UnsupportedUnit(unit));
    }
}

FieldCheck CheckFirstUnit(std::string_view text, std::uint8_t NumAnalogChannels, int FlowOption) {
    FieldCheck check = CheckUnit(text);
    if (LacksFlowUnit(text, NumAnalogChannels, FlowOption)) {
        check.Box = UnitWithoutFlow();
    }
    return check;
}

void BrowseTable(const SetupContext& context) {
    const Host& outside = context.outside;
    const auto chosen =
        outside.Dialogs.PickExisting({.Title = "Select Flow Table File",
                                      .DefaultExtension = ".txt",
                                      .Filter = "Flow Table File (*.tbl)|*.tbl",
                                      .InitialName = JoinPath(outside.StartFolder(), "*.tbl")});
    if (!chosen) {
        return;
    }
    const std::string path = TablePathOf(*chosen, outside.AppPath);
    if (CountCharacters(path) > LongestTablePath) {
        outside.Boxes.Show(
            {.Text = "Error: the file path is longer than 128 characters which is the limit.",
             .Title = "File Path Too Long",
             .Icon = BoxIcon::Stop});
        return;
    }
    context.view.SetTableFile(path);
    FlowTable table;
    const bool read = config::ReadFlowTable(path, outside.AppPath, table);
    outside.Boxes.Show(TableReport(read ? table.UpperBound() : 0));
}

std::string TablePathOf(std::string_view chosen, std::string_view appPath) {
    const bool below = chosen.size() > appPath.size() + 1 && chosen.starts_with(appPath) &&
                       LastSeparator(chosen.substr(0, appPath.size() + 1)) == appPath.size() + 1;
    return std::string(below ? chosen.substr(appPath.size() + 1) : chosen);
}
