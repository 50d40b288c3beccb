#ifndef ORVIA_FLOW_FLOW_TABLE_H
#define ORVIA_FLOW_FLOW_TABLE_H

#include <cstdint>
#include <istream>
#include <string>
#include <string_view>

#include "logger/logger_state.h"

/// Most points that a table keeps.
inline constexpr int MostTablePoints = 1001;

/// Largest table file that is read, in bytes; a larger one counts as unreadable. The points fill
/// some tens of kilobytes, so this bounds the time that a wrongly picked file can take.
inline constexpr std::uintmax_t LargestTableFile = std::uintmax_t{64} * 1024 * 1024;

namespace config {

/// The text with each tab and each comma turned into a blank.
[[nodiscard]] std::string NormalizeSeparators(std::string_view text);

/// The full name of a table file. Whole paths stand as they are: two backslashes or a drive first,
/// and a slash where that is this system's separator. All others stand against `appPath`, with or
/// without a leading backslash or ".\\".
[[nodiscard]] std::string ResolveTablePath(std::string_view path, std::string_view appPath);

/// Reads a table file (level in feet and flow in cfs, a point a line) into `table`. True if the
/// file was read to its end, whatever it held; False with an empty table otherwise: no regular
/// file, larger than LargestTableFile, unreadable, or with a number that no double holds. Lines
/// that are no point are passed over, lines above LongestLine among them.
[[nodiscard]] bool ReadFlowTable(std::string_view path, std::string_view appPath, FlowTable& table);

/// The same for an open text, of which `limit` bytes are read at most.
[[nodiscard]] bool ReadFlowTable(std::istream& input, std::uintmax_t limit, FlowTable& table);

}  // namespace config

#endif  // ORVIA_FLOW_FLOW_TABLE_H
