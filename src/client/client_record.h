#ifndef ORVIA_CLIENT_CLIENT_RECORD_H
#define ORVIA_CLIENT_CLIENT_RECORD_H

#include <array>
#include <cstdint>
#include <string>

#include "common/flag.h"
#include "logger/logger_state.h"

// Values of DisplayMode.
inline constexpr std::int16_t DisplaySmall = 0;
inline constexpr std::int16_t DisplayMedium = 1;
inline constexpr std::int16_t DisplayWide = 2;
inline constexpr std::int16_t DisplayMeter = 3;
inline constexpr std::int16_t DisplayFlow = 4;

/// Whether the mode shows bar columns.
[[nodiscard]] constexpr bool ShowsBars(std::int16_t displayMode) {
    return displayMode == DisplayMeter || displayMode == DisplayFlow;
}

inline constexpr int BarColumns = 8;
/// Columns that the flow mode uses: three channels, flow, velocity.
inline constexpr int FlowModeColumns = 5;
inline constexpr int FlowColumn = 3;
inline constexpr int VelocityColumn = 4;

/// The state of one bar column.
struct MeterEntry {
    Flag Active = False;     ///< the column shows a channel
    Flag WasActive = False;  ///< `Active` at the last drawing
    double Min = 0;          ///< value at the foot of the bar
    double Max = 0;          ///< value at its head
    double Value = 0;
    std::string Units;            ///< kept empty; the label takes its text from the settings
    std::int32_t LastBarTop = 0;  ///< top of the bar at the last drawing, twips
};

using MeterEntries = std::array<MeterEntry, BarColumns>;

/// The fields of one client window. Lengths are in twips. `IsActive` is none of them: the main
/// window knows its active child, and a copy here would be wrong between a click and its events.
struct ClientRecord {
    std::int16_t DisplayMode = DisplayMedium;
    std::int16_t ClientIndex = 0;  ///< number of its radio in the book
    Flag SettingsValid = False;    ///< the last GetSettings read the logger's settings
    std::int32_t BarTop = 0;       ///< from the top of the column's frame
    std::int32_t BarHeight = 0;
    std::int32_t BarLeft = 0;  ///< of the first bar, from the left of the window
    std::int32_t BarWidth = 0;
    ::LoggerState LoggerState;
    MeterEntries Meters;
};

#endif  // ORVIA_CLIENT_CLIENT_RECORD_H
