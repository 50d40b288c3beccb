#ifndef ORVIA_ARCHIVE_STATISTICS_H
#define ORVIA_ARCHIVE_STATISTICS_H

#include <cstdint>
#include <optional>
#include <vector>

#include "archive/periods.h"
#include "archive/series_values.h"

/// A record that holds the smallest or largest figure of a period.
struct Extreme {
    double Value = 0;
    std::size_t Record = 0;
};

/// What a column did in a period. Nothing stands where there is nothing to tell it from.
struct ColumnStatistics {
    std::int64_t Count = 0;          ///< records that have the column
    std::optional<Extreme> Minimum;  ///< of equal ones the first in the logger's order
    std::optional<Extreme> Maximum;
    /// Of the records; by trapezoids over time (docs/reports.md) as soon as settings take part that
    /// tell no interval. In the column's unit.
    std::optional<double> Mean;
};

/// The statistics of a column in each of the periods.
[[nodiscard]] std::vector<ColumnStatistics> StatisticsOf(const SeriesValues& values,
                                                         std::size_t column,
                                                         const Periods& periods);

/// How complete a period is.
struct Attendance {
    std::int64_t Records = 0;       ///< in it
    std::int64_t Scheduled = 0;     ///< of them, those of settings that tell an interval
    std::int64_t Due = 0;           ///< that should be there by those settings
    std::int64_t Gaps = 0;          ///< that begin in it
    std::int64_t ClockChanges = 0;  ///< clock set back to a moment in it

    /// Scheduled to due, 0 to 1; nothing where none is due.
    [[nodiscard]] std::optional<double> Completeness() const;
};

/// Counts the records of each period and those due. Each record is due; in a gap one more at each
/// interval back from the record behind it, as far as half an interval from the one before; and so
/// on before the earliest record and behind the latest. In fast mode ten in each second between.
[[nodiscard]] std::vector<Attendance> AttendanceOf(const SeriesTimes& times,
                                                   const Periods& periods);

#endif  // ORVIA_ARCHIVE_STATISTICS_H
