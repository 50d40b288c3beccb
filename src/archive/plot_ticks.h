#ifndef ORVIA_ARCHIVE_PLOT_TICKS_H
#define ORVIA_ARCHIVE_PLOT_TICKS_H

#include <string>
#include <vector>

#include "archive/record_moment.h"
#include "platform/host.h"

/// Marks of an axis of time.
struct TimeTicks {
    std::vector<Moment> At;  ///< ascending
    Moment Step = 0;         ///< seconds; of months and years the shortest that they can be
};

/// Round moments from one to another, no more than `most` (2 or more): seconds, minutes and hours
/// that divide the next larger unit, days, weeks (Mondays), months, years.
[[nodiscard]] TimeTicks TimeTicksOf(Moment from, Moment to, int most);

/// What stands at a tick: the date where the steps are days or more, or a day begins there, else
/// the time of day, with seconds where the steps are below a minute.
[[nodiscard]] std::string TickText(Moment tick, Moment step, const SystemClock& clock);

#endif  // ORVIA_ARCHIVE_PLOT_TICKS_H
