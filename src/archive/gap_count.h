#ifndef ORVIA_ARCHIVE_GAP_COUNT_H
#define ORVIA_ARCHIVE_GAP_COUNT_H

#include <cstdint>
#include <optional>
#include <vector>

#include "archive/series_times.h"
#include "archive/upload_settings.h"
#include "platform/archive_store.h"

/// Counts the gaps of a logger's series, a portion at a time: so counting a long one keeps nobody
/// waiting. If the series changes meanwhile it begins anew.
class GapCount {
 public:
    explicit GapCount(std::int64_t logger) : logger_(logger) {}

    /// Reads on; True once all is counted, or the logger is gone. The archive is open.
    [[nodiscard]] bool Portion(ArchiveStore& store);

    [[nodiscard]] std::int64_t Logger() const { return logger_; }
    /// Gaps so far.
    [[nodiscard]] std::int64_t Gaps() const { return gaps_; }
    /// Of the series that is counted.
    [[nodiscard]] std::int64_t Revision() const { return revision_.value_or(0); }

 private:
    void Begin(ArchiveStore& store, std::int64_t revision);
    void Take(const ArchiveRecord& row);

    const std::int64_t logger_;
    std::optional<std::int64_t> revision_;
    std::optional<UploadSettings> uploads_;
    std::vector<SeriesSettings> settings_;
    std::vector<RecordSpacing> spacings_;  ///< by settings
    std::vector<ArchiveRecord> rows_;
    std::int64_t place_ = 0;  ///< from which it is read on
    std::optional<Moment> before_;
    std::int64_t gaps_ = 0;
};

#endif  // ORVIA_ARCHIVE_GAP_COUNT_H
