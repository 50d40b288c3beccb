#ifndef ORVIA_FLOW_FLOW_TABLE_H
#define ORVIA_FLOW_FLOW_TABLE_H

#include <string>
#include <string_view>

#include "logger/logger_state.h"

/// Most points that a table keeps.
inline constexpr int MostTablePoints = 1001;

namespace config {

/// The text with each tab and each comma turned into a blank.
[[nodiscard]] std::string NormalizeSeparators(std::string_view text);

/// Reads a table file (level in feet and flow in cfs, a point a line) into `table`. True if the
/// file was read to its end, whatever it held; False with an empty table otherwise.
[[nodiscard]] bool ReadFlowTable(std::string_view path, std::string_view appPath, FlowTable& table);

}  // namespace config

#endif  // ORVIA_FLOW_FLOW_TABLE_H
