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

/// All loggers, by name. Of those whose series has not changed since `known` was read, first and
/// last record come from there. The archive is open.
[[nodiscard]] std::vector<LoggerSummary> ListLoggers(ArchiveStore& store,
                                                     const std::vector<LoggerSummary>& known = {});

/// What the figures of a period hang on, in the order of the series, without a hole: the records of
/// the period, those between them whose clock stood elsewhere, and at least the one before and the
/// one behind. Each has the settings that the upload which read it first had. A period that no
/// record lies in gives those around it. The archive is open.
[[nodiscard]] Series ReadSeries(ArchiveStore& store, std::int64_t logger, const Period& period);
/// All records.
[[nodiscard]] Series ReadSeries(ArchiveStore& store, std::int64_t logger);

/// How far the deletion of a logger is.
struct Deletion {
    enum class State {
        GoesOn,
        Done,
        Refused  ///< it has been uploaded since it was to be deleted
    };
    State Now = State::GoesOn;
    std::int64_t Left = 0;  ///< records
};

/// Deletes a piece of a logger, which is as it was when the operator was asked, with all that it
/// has. The list shows what is left of it between two pieces. The archive is open.
[[nodiscard]] Deletion DeletePiece(ArchiveStore& store, const ArchiveLogger& asked);

#endif  // ORVIA_ARCHIVE_ARCHIVE_READER_H
