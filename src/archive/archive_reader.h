#ifndef ORVIA_ARCHIVE_ARCHIVE_READER_H
#define ORVIA_ARCHIVE_ARCHIVE_READER_H

#include <cstdint>
#include <optional>
#include <vector>

#include "archive/periods.h"
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

/// What the figures of a period hang on, in the order of the series, without a hole: the records of
/// the period, those between them whose clock stood elsewhere, and at least the one before and the
/// one behind. Each has the settings that the upload which read it first had. A period that no
/// record lies in gives those around it. The archive is open.
[[nodiscard]] Series ReadSeries(ArchiveStore& store, std::int64_t logger, const Period& period);
/// All records.
[[nodiscard]] Series ReadSeries(ArchiveStore& store, std::int64_t logger);

/// Deletes a logger with all that it has, a piece at a time; `meanwhile` is called between two.
/// The list shows what is left of it if that is cut short.
void DeleteLogger(ArchiveStore& store, std::int64_t logger,
                  const ArchiveStore::Meanwhile& meanwhile);

#endif  // ORVIA_ARCHIVE_ARCHIVE_READER_H
