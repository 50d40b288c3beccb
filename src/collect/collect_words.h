#ifndef ORVIA_COLLECT_COLLECT_WORDS_H
#define ORVIA_COLLECT_COLLECT_WORDS_H

#include <cstdint>
#include <string>

#include "collect/collected_logger.h"

// What a collection tells, in words.

/// A clock that stands further off than this is told of, seconds.
inline constexpr std::int64_t ClockTolerance = 60;

/// How the line of a logger begins in the log.
[[nodiscard]] std::string BeginningOfLine(const std::string& name);
/// How it ends: "OK, 10000 records, 96 new", or why not.
[[nodiscard]] std::string ResultText(const CollectedLogger& logger);
/// "its clock is 3 min 20 s behind"; empty for one that is not further off than the tolerance.
[[nodiscard]] std::string ClockText(const CollectedLogger& logger);

/// "1 record", "10000 records".
[[nodiscard]] std::string CountOfRecords(std::int64_t count);
/// "45 s", "3 min 20 s", "2 h 5 min", "12 d 3 h".
[[nodiscard]] std::string DurationText(std::int64_t seconds);
/// A text of several lines in one.
[[nodiscard]] std::string InOneLine(const std::string& text);

#endif  // ORVIA_COLLECT_COLLECT_WORDS_H
