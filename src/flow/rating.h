#ifndef ORVIA_FLOW_RATING_H
#define ORVIA_FLOW_RATING_H

#include <optional>

#include "logger/logger_state.h"

/// Number of the point at which the segment around `level` starts. For tables of 3 points or
/// more, and levels from that of the first point to below that of the last.
[[nodiscard]] int FindSegment(const FlowTable& table, double level);

/// Flow in cfs at a level in feet, by straight lines between the points: from the origin to the
/// first point, and on along the last segment without limit. For tables of 2 points or more;
/// nothing if a step leaves the range of a double.
[[nodiscard]] std::optional<double> TableFlow(const FlowTable& table, double level);

/// Flow in cfs at a level in feet by the working definition of a flume, weir or table: a table of
/// points if there is one, else Q = C (H + A)^B. Nothing if a step leaves the range of a double.
[[nodiscard]] std::optional<double> RatingFlow(const LoggerRecord& record, const FlowTable& table,
                                               double level);

#endif  // ORVIA_FLOW_RATING_H
