#ifndef ORVIA_ARCHIVE_PLOT_MARKS_H
#define ORVIA_ARCHIVE_PLOT_MARKS_H

#include <string>
#include <vector>

#include "archive/series_times.h"

/// What a plot marks on the axis of time.
struct PlotMark {
    enum class Sort { ClockSetBack, Alarm1, Alarm2 };

    Sort Kind = Sort::ClockSetBack;
    Moment Time = 0;
};

/// "Clock Set Back", "Alarm 1", "Alarm 2".
[[nodiscard]] std::string TextOf(PlotMark::Sort kind);

/// "C", "A1", "A2": what stands at a mark where there is little room.
[[nodiscard]] std::string ShortTextOf(PlotMark::Sort kind);

/// What a mark means: "The logger's clock was set back to this time."
[[nodiscard]] std::string MeaningOf(PlotMark::Sort kind);

/// The marks of a series, in the logger's order. A clock set back is marked at the moment to which
/// it was set. Records tell of no alarm; it is marked where they show that it did what it is for:
/// alarm 1, which starts sampling, where the first record, or the first behind a gap, follows it
/// within an interval; alarm 2, which stops it, where it follows the last record before a gap
/// within an interval. Where the settings tell no interval, a minute serves.
[[nodiscard]] std::vector<PlotMark> MarksOf(const Series& series, const SeriesTimes& times);

#endif  // ORVIA_ARCHIVE_PLOT_MARKS_H
