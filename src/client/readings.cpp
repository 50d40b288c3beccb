#include "client/readings.h"

#include <array>
#include <cmath>

#include "common/fault.h"
#include "common/number_text.h"
#include "common/text.h"
#include "flow/flow_calculation.h"
#include "flow/flow_precision.h"

namespace {

constexpr int Points = 4;

// A level that stands for none. A reading of just -1 counts as missing too: an accepted limit.
constexpr double NoLevel = -1.0;

using Texts = std::array<std::string, Points>;
using Figures = std::array<double, Points>;

double Finite(double value) {
    if (!std::isfinite(value)) {
        throw Fault("figure out of range");
    }
    return value;
}

std::size_t Channel(int channel) {
    if (channel < 0 || channel >= AnalogChannels) {
        throw Fault("no such channel");
    }
    return static_cast<std::size_t>(channel);
}

void ShowTime(ClientRecord& record, ClientPanel& panel) {
    LoggerState& state = record.LoggerState;
    state.LoggerTime = state.DataPoints[0].Time;
    panel.lblLoggerTime.Text = panel.lblLoggerTime2.Text = state.LoggerTime;
}

void ShowColumn(const Texts& text, std::size_t column, ClientPanel& panel) {
    panel.lblValue[column].Text = text[0];
    std::string& history = panel.lblHistory[column].Text;
    history = text[1];
    history.append(LineBreak).append(text[2]).append(LineBreak).append(text[3]);
}

// One of the last four samples of one channel: its text, its level, and for the newest the value
// of the column.
void TakePoint(ClientRecord& record, std::size_t c, std::size_t p, Texts& text, Figures& level) {
    const LoggerState& state = record.LoggerState;
    if (static_cast<int>(p) >= state.NumDataPoints) {
        text[p].clear();
        if (p == 0) {
            record.Meters[c].Value = state.LowerLimit[c];
            if (c == 0) {
                level[0] = state.LowerLimit[0];
            }
        }
        return;
    }
    const std::int32_t read = state.DataPoints[p].Raw[c];
    const std::int32_t raw = read == NoReading ? state.RawScaleLower[c] : read;
    const double value = ScaleLiveReading(state, static_cast<int>(c), raw);
    if (read == NoReading) {
        text[p] = NoSampleText;
    } else {
        text[p] = FormatFixed(value, state.DecPlaces[c]);
        if (c == 0) {
            level[p] = value;
        }
    }
    if (p == 0) {
        record.Meters[c].Value = value;
    }
}

void ShowAnalogChannels(ClientRecord& record, ClientPanel& panel, Figures& level) {
    const LoggerState& state = record.LoggerState;
    for (int channel = 0; channel < state.NumAnalogChannels; ++channel) {
        const std::size_t c = Channel(channel);
        if (state.AnalogEnable[c] == 0) {
            continue;
        }
        Texts text;
        for (std::size_t p = 0; p < Points; ++p) {
            TakePoint(record, c, p, text, level);
        }
        ShowColumn(text, c, panel);
        panel.lblData2[c].Text =
            text[0] == NoSampleText ? text[0] : text[0] + " " + state.EngUnits[c];
    }
}

void ShowFlow(ClientRecord& record, const Figures& level, Figures& velocity, ClientPanel& panel) {
    const LoggerState& state = record.LoggerState;
    Texts text;
    for (std::size_t p = 0; p < Points; ++p) {
        double flow = 0;
        if (level[p] != NoLevel) {
            flow = CalculateFlow(state, state.FlowTable, level[p], velocity[p]);
            text[p] = FormatFixed(flow, state.FlowDecPlaces);
        }
        if (p == 0) {
            record.Meters[FlowColumn].Value = flow;
        }
    }
    ShowColumn(text, FlowColumn, panel);
}

void ShowVelocity(ClientRecord& record, const Figures& level, const Figures& velocity,
                  ClientPanel& panel) {
    Texts text;
    for (std::size_t p = 0; p < Points; ++p) {
        if (level[p] != NoLevel) {
            text[p] = FormatFixed(velocity[p], record.LoggerState.VelDecPlaces);
        }
    }
    record.Meters[VelocityColumn].Value = level[0] != NoLevel ? velocity[0] : 0;
    ShowColumn(text, VelocityColumn, panel);
}

void ShowFlowColumns(ClientRecord& record, const Figures& level, ClientPanel& panel) {
    Figures velocity = {};
    if (record.Meters[FlowColumn].Active != False) {
        ShowFlow(record, level, velocity, panel);
    }
    if (record.Meters[VelocityColumn].Active != False) {
        ShowVelocity(record, level, velocity, panel);
    }
}

void ShowPulse(int channel, const std::string& text, ClientPanel& panel) {
    const auto j = static_cast<std::size_t>(channel);
    panel.lblData2[AnalogChannels + j].Text = panel.lblPulse2[j].Text = text;
}

void ShowPulseChannels(const LoggerState& state, ClientPanel& panel) {
    for (int channel = 0; channel < PulseChannels; ++channel) {
        const std::int32_t raw =
            state.DataPoints[0].Raw[AnalogChannels + static_cast<std::size_t>(channel)];
        // A count above two shows both.
        ShowPulse(channel, channel < state.NumDigitalChannels ? PulseText(state, channel, raw) : "",
                  panel);
    }
}

}  // namespace

double ScaleLiveReading(const LoggerRecord& record, int channel, std::int32_t raw) {
    const std::size_t c = Channel(channel);
    const double lo = record.RawScaleLower[c];
    const double hi = record.RawScaleUpper[c];
    const double fraction = lo == hi ? 0 : (raw - lo) / (hi - lo);
    const double span = record.UpperLimit[c] - record.LowerLimit[c];
    if (std::abs(span) < SmallestSpan) {
        return record.UpperLimit[c];
    }
    return Finite(span * fraction + record.LowerLimit[c]);
}

std::string PulseText(const LoggerRecord& record, int channel, std::int32_t raw) {
    const auto j = static_cast<std::size_t>(channel);
    if (record.DigitalEnable[j] == 0) {
        return {};
    }
    if (raw == NoReading) {
        return NoSampleText;
    }
    const double value = Finite(raw * record.PulseUnit[j]);
    return FormatFixed(value, record.DecPlaces[AnalogChannels + j]) + " " +
           record.EngUnits[AnalogChannels + j];
}

void FileDataPoint(const DataPoint& point, LoggerState& state) {
    for (std::size_t p = Points - 1; p > 0; --p) {
        state.DataPoints[p] = state.DataPoints[p - 1];
    }
    state.DataPoints[0] = point;
    if (state.NumDataPoints < Points) {
        ++state.NumDataPoints;
    }
}

void RefreshReadings(ClientRecord& record, ClientPanel& panel) {
    try {
        ShowTime(record, panel);
        if (record.SettingsValid == False) {
            return;
        }
        Figures level;
        level.fill(NoLevel);
        ShowAnalogChannels(record, panel, level);
        if (record.DisplayMode == DisplayFlow) {
            ShowFlowColumns(record, level, panel);
        }
        ShowPulseChannels(record.LoggerState, panel);
    } catch (const Fault&) {
        return;
    }
}
