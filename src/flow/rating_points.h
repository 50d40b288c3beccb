#ifndef ORVIA_FLOW_RATING_POINTS_H
#define ORVIA_FLOW_RATING_POINTS_H

#include <functional>
#include <vector>

#include "logger/logger_state.h"

// Choosing the points of a table, so that straight lines between them follow a curve.

/// Heads from `first` to `last` feet, each a fixed ratio above the one before and rounded to read
/// well, and the bends between them. Rising; none unless 0 < first < last.
[[nodiscard]] std::vector<double> SampleHeads(double first, double last,
                                              const std::vector<double>& bends);

/// As few of the points as straight lines need to stay within `tolerance` (a share of the flow) of
/// all of them, `most` at the most: the tolerance grows until they suffice.
[[nodiscard]] FlowTable ChoosePoints(const std::vector<FlowTablePoint>& points, double tolerance,
                                     int most);

#endif  // ORVIA_FLOW_RATING_POINTS_H
