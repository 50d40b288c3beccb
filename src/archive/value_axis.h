#ifndef ORVIA_ARCHIVE_VALUE_AXIS_H
#define ORVIA_ARCHIVE_VALUE_AXIS_H

#include <optional>
#include <string>
#include <vector>

#include "archive/plot_data.h"

/// What an axis shows of figures: them and a little room at both ends; where they are all alike,
/// or there are none, a range of some extent around them.
[[nodiscard]] ValueRange RangeWithRoom(const std::optional<ValueRange>& figures);

/// Marks of an axis of values.
struct ValueTicks {
    std::vector<double> At;          ///< ascending
    std::vector<std::string> Texts;  ///< one for each, all with the same decimals
};

/// Round figures in a range of some extent, no more than `most` (2 or more): steps of 1, 2 and 5.
[[nodiscard]] ValueTicks ValueTicksOf(const ValueRange& range, int most);

#endif  // ORVIA_ARCHIVE_VALUE_AXIS_H
