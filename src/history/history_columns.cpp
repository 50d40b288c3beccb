#include "history/history_columns.h"

#include <algorithm>

#include "flow/flow_mode.h"
#include "flow/unit_names.h"

namespace {

/// A span of limits below this is none.
constexpr double SmallestSpan = 0.0001;

void AddChannels(const LoggerRecord& logger, HistoryColumns& columns) {
    const auto add = [&](ColumnKind kind, std::size_t channel, std::size_t slot) {
        columns.Columns.push_back({.Kind = kind,
                                   .Channel = static_cast<int>(channel),
                                   .Heading = logger.EngUnits[slot],
                                   .Places = logger.DecPlaces[slot]});
    };
    const std::size_t analog = std::min<std::size_t>(logger.NumAnalogChannels, AnalogChannels);
    for (std::size_t i = 0; i < analog; ++i) {
        if (logger.AnalogEnable[i] != 0) {
            add(ColumnKind::Analog, i, i);
        }
    }
    const std::size_t pulse = std::min<std::size_t>(logger.NumDigitalChannels, PulseChannels);
    for (std::size_t i = 0; i < pulse; ++i) {
        if (logger.DigitalEnable[i] != 0) {
            add(ColumnKind::Pulse, i, AnalogChannels + i);
        }
    }
}

// The decimals of the level serve flow and velocity here; their own are for the live window.
void AddFlow(const LoggerRecord& logger, HistoryColumns& columns) {
    columns.ShowFlow = true;
    columns.Columns.push_back({.Kind = ColumnKind::Flow,
                               .Heading = "Flow (" + config::FlowUnitName(logger.FlowUnits) + ")",
                               .Places = logger.DecPlaces[0]});
    if (logger.FlowMode == ManningMode) {
        columns.ShowVel = true;
        columns.Columns.push_back({.Kind = ColumnKind::Velocity,
                                   .Heading = logger.VelUnits == 0 ? "Vel (FPS)" : "Vel (MPS)",
                                   .Places = logger.DecPlaces[0]});
    }
}

}  // namespace

bool HasFlow(const LoggerRecord& logger) {
    return logger.FlowMode != NoFlowMode && logger.AnalogEnable[0] != 0;
}

BoxContent BadUnitsWarning(std::string_view units) {
    return {.Text =
                "Warning: For the flow monitor calculations to be done correctly the channel "
                "1\nunit's name must be one of Feet, Inches, Meters or cm (centimeters).\n\n"
                "The current unit's name (" +
                std::string(units) + ") is not supported.",
            .Title = "Bad Units",
            .Icon = BoxIcon::Information};
}

HistoryColumns ColumnsOf(const LoggerRecord& logger, bool badUnits) {
    HistoryColumns columns;
    AddChannels(logger, columns);
    if (HasFlow(logger) && !badUnits) {
        AddFlow(logger, columns);
    }
    return columns;
}

ChannelScale::ChannelScale(const LoggerRecord& logger, std::size_t channel)
    : rawLower_(logger.RawScaleLower[channel]),
      rawSpan_(static_cast<double>(logger.RawScaleUpper[channel]) - rawLower_),
      lower_(logger.LowerLimit[channel]),
      upper_(logger.UpperLimit[channel]),
      span_(upper_ - lower_),
      ascends_(rawSpan_ > 0),
      flat_(span_ < SmallestSpan) {}
