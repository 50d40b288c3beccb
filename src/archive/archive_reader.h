#ifndef ORVIA_ARCHIVE_ARCHIVE_READER_H
#define ORVIA_ARCHIVE_ARCHIVE_READER_H

#include <cstdint>
#include <optional>
#include <vector>

#include "archive/series.h"
#include "platform/archive_store.h"

/// What a list of loggers shows of one.
struct LoggerSummary {
    ArchiveLogger Logger;
    std::optional<ArchiveRecord> First;  ///< of its series; none while that is empty
    std::optional<ArchiveRecord> Last;
    std::int64_t SizeInBytes = 0;  ///< its share of the archive's size
};

/// All loggers, by name. The archive is open.
[[nodiscard]] std::vector<LoggerSummary> ListLoggers(ArchiveStore& store);

/// Record times from `First` to `Last`, both included, as packed times in numbers.
using PackedTimes = ArchiveRange<std::uint32_t>;

/// The records of a logger whose time lies in the period, in the order of the series. Each has the
/// settings that the upload which read it first had. The archive is open.
[[nodiscard]] Series ReadSeries(ArchiveStore& store, std::int64_t logger,
                                const PackedTimes& period);
/// All of them.
[[nodiscard]] Series ReadSeries(ArchiveStore& store, std::int64_t logger);

/// Deletes a logger with all that it has, a piece at a time; `meanwhile` is called between two.
/// The list shows what is left of it if that is cut short.
void DeleteLogger(ArchiveStore& store, std::int64_t logger,
                  const ArchiveStore::Meanwhile& meanwhile);

#endif  // ORVIA_ARCHIVE_ARCHIVE_READER_H
