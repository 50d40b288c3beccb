#include "client/bars.h"

#include <algorithm>
#include <cmath>

#include "client/layout.h"
#include "common/fault.h"
#include "common/number_text.h"

namespace {

// A scale whose ends lie closer together than this shows nothing.
constexpr double SmallestScale = 0.00001;

// Adds the fills of one column, if its bar changed.
void AddColumn(ClientRecord& record, int column, std::int32_t top, std::vector<BarFill>& fills) {
    MeterEntry& meter = record.Meters[static_cast<std::size_t>(column)];
    const std::int32_t height = record.BarHeight;
    const std::int32_t y =
        top + height - static_cast<std::int32_t>(RoundTiesToEven(height * BarFraction(meter)));
    if (y == meter.LastBarTop && meter.Active == meter.WasActive) {
        return;
    }
    meter.LastBarTop = y;
    meter.WasActive = meter.Active;
    const bool flowMode = record.DisplayMode == DisplayFlow;
    if (flowMode && column >= FlowModeColumns) {
        return;
    }
    const std::int32_t x = record.BarLeft + column * ColumnPitch;
    if (y > top) {
        fills.push_back({column, BarColour::Ground, {x, top, record.BarWidth, y - 1 - top}});
    }
    if (meter.Active != False) {
        const BarColour colour =
            flowMode && column >= FlowColumn ? BarColour::Flow : BarColour::Channel;
        fills.push_back({column, colour, {x, y, record.BarWidth, top + height - y}});
    }
}

}  // namespace

double BarFraction(const MeterEntry& meter) {
    if (meter.Active == False || std::abs(meter.Max - meter.Min) < SmallestScale) {
        return 0;
    }
    const double fraction = (meter.Value - meter.Min) / (meter.Max - meter.Min);
    if (!std::isfinite(fraction)) {
        throw Fault("bar out of range");
    }
    return std::clamp(fraction, 0.0, 1.0);
}

std::vector<BarFill> ChangedBars(ClientRecord& record, std::int32_t frameTop) {
    std::vector<BarFill> fills;
    if (!ShowsBars(record.DisplayMode) || record.SettingsValid == False) {
        return fills;
    }
    try {
        for (int column = 0; column < BarColumns; ++column) {
            AddColumn(record, column, frameTop + record.BarTop, fills);
        }
    } catch (const Fault&) {
        return fills;
    }
    return fills;
}

void ForgetDrawnBars(ClientRecord& record) {
    for (MeterEntry& meter : record.Meters) {
        meter.LastBarTop = 0;
    }
}
