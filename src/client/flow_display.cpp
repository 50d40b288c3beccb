#include "client/flow_display.h"

#include <string>
#include <string_view>

#include "common/number_text.h"
#include "common/text.h"
#include "flow/flow_mode.h"
#include "flow/unit_names.h"

namespace {

constexpr int FlowModeAnalogChannels = 3;

void ShowPair(PanelControl& heading, PanelControl& value, bool visible) {
    heading.Visible = value.Visible = visible;
}

void HideAll(ClientPanel& panel) {
    ShowPair(panel.lblFlowMode2, panel.lblFlowMode, false);
    ShowPair(panel.lblFWT, panel.lblFWT2, false);
    ShowPair(panel.lblOffset, panel.lblOffset2, false);
    ShowPair(panel.lblPipeDiameter, panel.lblPipeDiameter2, false);
    ShowPair(panel.lblSlope, panel.lblSlope2, false);
    ShowPair(panel.lblRoughness, panel.lblRoughness2, false);
}

std::string LengthText(double value, int unit) {
    return " " + DoubleToText(value) + " " + config::LengthUnitName(unit, value != 1.0);
}

void ShowPipe(const LoggerRecord& record, ClientPanel& panel) {
    panel.lblPipeDiameter2.Text = LengthText(record.ManningsD, record.ManningsDType);
    panel.lblSlope2.Text =
        " " + DoubleToText(record.ManningsS) + (record.ManningsSType == 1 ? " %" : "");
    panel.lblRoughness2.Text = " " + DoubleToText(record.ManningsN);
    ShowPair(panel.lblPipeDiameter, panel.lblPipeDiameter2, true);
    ShowPair(panel.lblSlope, panel.lblSlope2, true);
    ShowPair(panel.lblRoughness, panel.lblRoughness2, true);
}

void ShowDevice(std::string_view heading, const LoggerRecord& record, ClientPanel& panel) {
    panel.lblFWT.Text = heading;
    panel.lblFWT2.Text = " " + record.FlowDeviceName;
    ShowPair(panel.lblFWT, panel.lblFWT2, true);
}

void ShowMode(std::string_view name, const LoggerRecord& record, ClientPanel& panel) {
    panel.lblFlowMode.Text = name;
    ShowPair(panel.lblFlowMode2, panel.lblFlowMode, true);
    if (record.FlowMode != NoFlowMode) {
        panel.lblOffset2.Text = LengthText(record.LevelOffset, record.LevelOffsetType);
        ShowPair(panel.lblOffset, panel.lblOffset2, true);
    }
}

BoxContent Refusal(std::string text) {
    text.append(LineBreak).append(LineBreak);
    text += "The display mode will be changed to the basic Bar Graph Display Mode.";
    return {std::move(text), "Flow Mode Error", BoxIcon::Exclamation, BoxButtons::Ok};
}

}  // namespace

void ShowFlowParameters(const ClientRecord& window, ClientPanel& panel) {
    HideAll(panel);
    if (window.SettingsValid == False || window.DisplayMode != DisplayFlow) {
        return;
    }
    const LoggerRecord& record = window.LoggerState;
    switch (record.FlowMode) {
        case NoFlowMode:
            ShowMode(" No Flow Calculation", record, panel);
            break;
        case ManningMode:
            ShowMode(" Manning's Equation", record, panel);
            ShowPipe(record, panel);
            break;
        case FlumeMode:
            ShowMode(" Flume", record, panel);
            ShowDevice("Flume Name:", record, panel);
            break;
        case WeirMode:
            ShowMode(" Weir", record, panel);
            ShowDevice("Weir Name:", record, panel);
            break;
        default:
            ShowMode(" Table Method", record, panel);
            ShowDevice("Table Name:", record, panel);
    }
}

std::optional<BoxContent> FlowModeRefusal(const LoggerRecord& record) {
    if (record.NumAnalogChannels != FlowModeAnalogChannels) {
        std::string text = "This logger device is not suitable for Flow Display Mode.";
        text.append(LineBreak);
        text += "The logger must have 3 analog channels for Flow Display Mode";
        text.append(LineBreak);
        text += "and it has " + IntegerToText(record.NumAnalogChannels) + " channels.";
        return Refusal(std::move(text));
    }
    if (config::IsFlowUnit(record.EngUnits[0])) {
        return std::nullopt;
    }
    std::string text = "For the flow calculations to be displayed, the units for the first analog";
    text.append(LineBreak);
    text += "channel must be Feet, Inches, Meters, or Cm.";
    return Refusal(std::move(text));
}
