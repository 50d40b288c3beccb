#ifndef ORVIA_ARCHIVE_RECORD_MOMENT_H
#define ORVIA_ARCHIVE_RECORD_MOMENT_H

#include <array>
#include <cstdint>
#include <string>

#include "logger/sample_frame.h"
#include "platform/host.h"

/// Seconds since 1 January 2000, 00:00, on the logger's own clock: no time zone, no summer time.
using Moment = std::int64_t;

inline constexpr Moment SecondsPerMinute = 60;
inline constexpr Moment SecondsPerHour = 3600;
inline constexpr Moment SecondsPerDay = 86'400;
inline constexpr Moment SecondsPerWeek = 7 * SecondsPerDay;

/// The moment of a packed time. A date that is none rolls on as the dates on the screen do: 31
/// February is 2 or 3 March, day 0 the last day of the month before; so do hours above 23 and
/// minutes and seconds above 59.
[[nodiscard]] Moment MomentOf(const std::array<std::uint8_t, cmd::PackedTimeSize>& packed);

/// The moment of a date and time of day; rolls on in the same way. Years from 1 to 9999,
/// milliseconds do not count.
[[nodiscard]] Moment MomentOf(const LocalTime& time);

/// Date and time of day of a moment, years 1 to 9999.
[[nodiscard]] LocalTime TimeOfMoment(Moment moment);

/// No packed time lies outside these: 31 December 1999 to 2 May 2085.
inline constexpr Moment EarliestMoment = -SecondsPerDay;
inline constexpr Moment LatestMoment = 31'169 * SecondsPerDay;

// First moment of the day, the week (from Monday) and the month that hold a moment, and of those
// behind.
[[nodiscard]] Moment DayBegin(Moment moment);
[[nodiscard]] Moment WeekBegin(Moment moment);
[[nodiscard]] Moment MonthBegin(Moment moment);
[[nodiscard]] Moment NextDay(Moment moment);
[[nodiscard]] Moment NextWeek(Moment moment);
[[nodiscard]] Moment NextMonth(Moment moment);

/// The same time of day `months` (may be negative) calendar months later; where that month has no
/// such day, on its last one.
[[nodiscard]] Moment AddMonths(Moment moment, int months);

/// Whether February has 29 days.
[[nodiscard]] bool IsLeapYear(int year);

/// "2024-01-14T13:05:00", ISO 8601 without a zone.
[[nodiscard]] std::string IsoText(Moment moment);

#endif  // ORVIA_ARCHIVE_RECORD_MOMENT_H
