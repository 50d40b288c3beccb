#ifndef ORVIA_SIMULATOR_CALENDAR_H
#define ORVIA_SIMULATOR_CALENDAR_H

#include <array>
#include <cstdint>
#include <optional>

namespace simulator {

/// Seconds since the start of the year 2000, the earliest time that a logger can stamp.
using CivilSeconds = std::int64_t;
inline constexpr CivilSeconds SecondsPerDay = 86400;

struct CivilTime {
    int Year = 2000;  ///< 2000 to 2084
    int Month = 1;    ///< 1 to 12
    int Day = 1;      ///< 1 to 31
    int Hour = 0;
    int Minute = 0;
    int Second = 0;
};

/// Seconds from the start of 2000 to that time, which IsCivilTime holds for.
[[nodiscard]] CivilSeconds ToSeconds(const CivilTime& time);
/// The time that many seconds behind the start of 2000; that start for a negative number.
[[nodiscard]] CivilTime FromSeconds(CivilSeconds seconds);

/// Whether every field is in its range and the month has that day.
[[nodiscard]] bool IsCivilTime(const CivilTime& time);

/// 1 Sunday to 7 Saturday.
[[nodiscard]] int Weekday(CivilSeconds seconds);

/// Tens x 16 + units, of a value 0 to 99.
[[nodiscard]] std::uint8_t Bcd(int value);
/// The value of a BCD byte; nothing if a nibble is above 9.
[[nodiscard]] std::optional<int> FromBcdByte(std::uint8_t byte);

/// The four bytes of a time stamp, from the lowest bit: second 6, minute 6, hour 5, day 5, months
/// since January 2000 10.
[[nodiscard]] std::array<std::uint8_t, 4> PackTime(const CivilTime& time);

/// How a logger's clock counts the hours in its reply.
enum class ClockForm { Hours24, Hours12 };

/// Hour 0 to 23 as the clock's byte: BCD, or with bit 6 set, bit 5 for PM, and BCD 1 to 12.
[[nodiscard]] std::uint8_t HourByte(int hour, ClockForm form);

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_CALENDAR_H
