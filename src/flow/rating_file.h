#ifndef ORVIA_FLOW_RATING_FILE_H
#define ORVIA_FLOW_RATING_FILE_H

#include <istream>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

#include "flow/flow_table.h"
#include "flow/rating_device.h"
#include "flow/rating_made.h"

// A made rating as a table file: headings that tell device, dimensions, sources, range and
// uncertainty, then the points. Every heading begins with a word, so no reader of table files takes
// one for a point. docs/flow-devices.md shows one.

/// Writes the file, lines with CR LF.
void WriteRatingTable(std::ostream& file, const RatingDevice& device, const Rating& rating);

/// The same as text.
[[nodiscard]] std::string RatingTableText(const RatingDevice& device, const Rating& rating);

/// What a table file tells of its device.
struct RatingTableRead {
    RatingDevice Device;
    bool FromHeadings = false;  ///< made here; otherwise the file's points became own points
};

/// Reads the device of a table file back for change; a table made elsewhere becomes a device of own
/// points. Nothing if it holds neither. `limit` bytes are read at most.
[[nodiscard]] std::optional<RatingTableRead> ReadRatingTable(
    std::istream& file, std::uintmax_t limit = LargestTableFile);

/// The same from a path; nothing too if it cannot be read.
[[nodiscard]] std::optional<RatingTableRead> OpenRatingTable(std::string_view path);

#endif  // ORVIA_FLOW_RATING_FILE_H
