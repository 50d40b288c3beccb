#ifndef ORVIA_ARCHIVE_PULSE_COUNTS_H
#define ORVIA_ARCHIVE_PULSE_COUNTS_H

#include <cstdint>
#include <optional>
#include <vector>

#include "archive/periods.h"
#include "archive/series_values.h"

/// How a 16-bit counter came from one count to the next.
struct CounterStep {
    enum class Way { Rise, RollOver, Reset };

    Way Kind = Way::Rise;
    std::int32_t Pulses = 0;  ///< 0 to 65,535
};

/// A fall is a roll-over if the step modulo 65,536 is below 32,768; else the counter was reset, and
/// has counted as far as it stands since.
[[nodiscard]] CounterStep StepOfCounter(std::uint16_t before, std::uint16_t after);

/// What a counter counted in a period.
struct PulseTotal {
    double Total = 0;   ///< in the column's unit
    double Pulses = 0;  ///< where a pair was cut at a bound not a whole number
    std::int64_t RollOvers = 0;
    std::int64_t Resets = 0;
};

/// Totals of a pulse channel's column for each of the periods: the steps between records that both
/// have the column, each worth the unit of the later one. Across a gap the counter counts on. A
/// step that lies across a bound is divided in proportion to time; where the clock was set back or
/// stood still, a step belongs to the later record's moment, as do the marks of roll-over and
/// reset. Nothing where no step is known.
[[nodiscard]] std::vector<std::optional<PulseTotal>> PulseTotalsOf(const SeriesValues& values,
                                                                   std::size_t column,
                                                                   const Periods& periods);

#endif  // ORVIA_ARCHIVE_PULSE_COUNTS_H
