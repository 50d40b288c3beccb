#include "client/columns.h"

#include <string>

#include "common/number_text.h"
#include "flow/flow_mode.h"
#include "flow/unit_names.h"

namespace {

void BlankColumn(std::size_t i, ClientRecord& record, ClientPanel& panel) {
    MeterEntry& meter = record.Meters[i];
    meter.Min = meter.Max = meter.Value = 0;
    meter.Active = False;
    for (PanelControl* label : {&panel.lblHistory[i], &panel.lblValue[i], &panel.lblMax[i],
                                &panel.lblMin[i], &panel.lblUnits[i]}) {
        label->Text.clear();
    }
}

void ScaleColumn(std::size_t i, double top, double bottom, int places, const std::string& units,
                 ClientRecord& record, ClientPanel& panel) {
    panel.lblMax[i].Text = FormatFixed(top, places);
    panel.lblMin[i].Text = FormatFixed(bottom, places);
    panel.lblUnits[i].Text = units;
    record.Meters[i].Max = top;
    record.Meters[i].Min = bottom;
    record.Meters[i].Active = True;
}

void SetUpChannel(std::size_t i, ClientRecord& record, ClientPanel& panel) {
    const LoggerState& state = record.LoggerState;
    ScaleColumn(i, state.DisplayTop[i], state.DisplayBottom[i], state.DecPlaces[i],
                state.EngUnits[i], record, panel);
}

void SetUpMeterMode(ClientRecord& record, ClientPanel& panel) {
    const LoggerState& state = record.LoggerState;
    for (std::size_t i = 0; i < BarColumns; ++i) {
        panel.fraMeter[i].Text = IntegerToText(static_cast<int>(i + 1));
        if (state.AnalogEnable[i] != 0 && record.SettingsValid != False &&
            i < state.NumAnalogChannels) {
            SetUpChannel(i, record, panel);
        } else {
            BlankColumn(i, record, panel);
        }
    }
}

void SetUpFlowModeColumn(std::size_t i, ClientRecord& record, ClientPanel& panel) {
    constexpr int places = 2;
    const LoggerState& state = record.LoggerState;
    const bool level = state.AnalogEnable[0] != 0;
    if (record.SettingsValid != False) {
        if (state.AnalogEnable[i] != 0 && i < FlowColumn) {
            return SetUpChannel(i, record, panel);
        }
        if (i == FlowColumn && level) {
            return ScaleColumn(i, state.FlowTop, 0, places, config::FlowUnitName(state.FlowUnits),
                               record, panel);
        }
        if (i == VelocityColumn && level && state.FlowMode == ManningMode) {
            // Any code but 0 reads as metres here, while the calculation converts at 1 alone.
            return ScaleColumn(i, state.VelTop, 0, places, state.VelUnits != 0 ? "MPS" : "FPS",
                               record, panel);
        }
    }
    BlankColumn(i, record, panel);
}

void SetUpFlowMode(ClientRecord& record, ClientPanel& panel) {
    constexpr const char* captions[FlowModeColumns] = {"1", "2", "3", "Flow", "Velocity"};
    for (std::size_t i = 0; i < BarColumns; ++i) {
        if (i < FlowModeColumns) {
            panel.fraMeter[i].Text = captions[i];
        }
        SetUpFlowModeColumn(i, record, panel);
    }
}

}  // namespace

void SetUpColumns(ClientRecord& record, ClientPanel& panel) {
    if (record.DisplayMode == DisplayFlow) {
        SetUpFlowMode(record, panel);
    } else {
        SetUpMeterMode(record, panel);
    }
}

void GreyMissingChannels(const ClientRecord& record, ClientPanel& panel) {
    const bool known = record.SettingsValid != False;
    const bool flowMode = record.DisplayMode == DisplayFlow;
    for (std::size_t i = 0; i < AnalogChannels; ++i) {
        const bool exists = !known || i < record.LoggerState.NumAnalogChannels;
        panel.lblData[i].Enabled = panel.lblData2[i].Enabled = exists;
        // Flow and velocity take the places of channels 4 and 5.
        panel.fraMeter[i].Enabled = exists || (flowMode && i >= FlowColumn);
    }
    for (std::size_t j = 0; j < PulseChannels; ++j) {
        const bool exists = !known || j < record.LoggerState.NumDigitalChannels;
        panel.lblData[AnalogChannels + j].Enabled = panel.lblData2[AnalogChannels + j].Enabled =
            exists;
        panel.lblPulse3[j].Enabled = panel.lblPulse2[j].Enabled = exists;
    }
}
