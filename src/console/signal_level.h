#ifndef ORVIA_CONSOLE_SIGNAL_LEVEL_H
#define ORVIA_CONSOLE_SIGNAL_LEVEL_H

#include <cstdint>
#include <optional>
#include <string>

/// Strength of a received signal in dBm, from what the server radio reports of it: 0 strong, 255
/// weak. Straight lines between measured points of the radio, rounded to the nearest integer, ties
/// to even.
[[nodiscard]] int RssiToDBm(std::uint8_t value);

/// Ends of the bar that shows a level.
inline constexpr int WeakestDBm = -96;
inline constexpr int BarMaximum = 56;

/// Length of the bar for a level, 0 to BarMaximum; 0 without a reading.
[[nodiscard]] int BarLength(std::optional<int> dBm);

/// The level in words, "-62 DBm"; "---" without a reading.
[[nodiscard]] std::string LevelText(std::optional<int> dBm);

#endif  // ORVIA_CONSOLE_SIGNAL_LEVEL_H
