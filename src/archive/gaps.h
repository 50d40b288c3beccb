#ifndef ORVIA_ARCHIVE_GAPS_H
#define ORVIA_ARCHIVE_GAPS_H

#include <cstddef>
#include <vector>

#include "archive/series_times.h"

/// Two records between which others are missing, or between which the clock was set back.
struct RecordBreak {
    std::size_t Record = 0;  ///< the later one, from 1
    Moment From = 0;         ///< time of the one before
    Moment To = 0;           ///< time of the later one
};

/// Where a series is no unbroken line, in the logger's order.
struct SeriesBreaks {
    std::vector<RecordBreak> Gaps;
    std::vector<RecordBreak> ClockChanges;  ///< clock set back; marks, no gaps
};

/// Finds both. A clock set forward cannot be told from missing records, and counts as a gap.
[[nodiscard]] SeriesBreaks FindBreaks(const SeriesTimes& times);

#endif  // ORVIA_ARCHIVE_GAPS_H
