#ifndef ORVIA_ARCHIVE_SERIES_MERGE_H
#define ORVIA_ARCHIVE_SERIES_MERGE_H

#include <cstdint>
#include <memory_resource>
#include <optional>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "archive/archive_rows.h"
#include "platform/archive_store.h"

/// Tells apart the records of one upload that are alike: the first of them, the second...
class AlikeCounter {
 public:
    /// Which one of those alike this is, from 1.
    [[nodiscard]] std::int32_t Next(const HistoryRecord& record);

 private:
    // Every record of an upload is put in and none is ever taken out.
    std::pmr::monotonic_buffer_resource room_;
    std::pmr::unordered_map<RecordIdentity, std::int32_t, RecordIdentityHash> seen_{&room_};
};

/// Brings the records of one upload into the series of its logger. The rule, which
/// docs/archive.md explains:
///
/// - the series holds what any upload held: a record is known by time, counts, and which of those
///   alike in its upload it is;
/// - it belongs to the upload of the earliest begin that held it, and stands where that upload does
///   among the uploads by their begin, in the order in which that upload gave it.
///
/// So the series hangs on what the uploads held and when they began, and not on when they were
/// filed, in which portions, or how often.
///
/// Works on rows that others change between two transactions: it looks at the logger's revision.
class SeriesMerge {
 public:
    /// For the upload with that id and begin.
    SeriesMerge(ArchiveStore& store, std::int64_t upload, std::int64_t begin)
        : store_(store), upload_(upload), begin_(begin) {}

    /// Files records of the upload, each the next behind those filed before, inside a transaction;
    /// `logger` is its row, which the caller keeps.
    void File(std::span<const RecordIdentity> records, ArchiveLogger& logger);

    /// To be called if the transaction was not committed.
    void Forget() { revision_ = NoRevision; }

 private:
    static constexpr std::int64_t NoRevision = -1;

    void LookAround(std::int64_t logger);
    void FindOwnEnd(std::int64_t logger);
    void FileOne(const RecordIdentity& record, ArchiveLogger& logger);

    // Known records.
    [[nodiscard]] const ArchiveRecord* Find(std::int64_t logger, const RecordIdentity& record);
    [[nodiscard]] const ArchiveRecord* FindInPage(const RecordIdentity& record);
    [[nodiscard]] const ArchiveRecord* FindByTime(std::int64_t logger,
                                                  const RecordIdentity& record);
    void LoadPage(std::int64_t logger, std::int64_t place);
    void DropKnown();

    // The upload's own stretch of the series.
    [[nodiscard]] bool IsLater(std::int64_t upload) const { return later_.contains(upload); }
    void Adopt(std::int64_t logger, const ArchiveRecord& row);
    [[nodiscard]] std::int64_t TakePlace(std::int64_t logger);
    [[nodiscard]] std::int64_t FirstPlace() const;
    void LookBehind(std::int64_t logger);
    /// The first record behind a place.
    [[nodiscard]] std::optional<ArchiveRecord> FirstBehind(std::int64_t logger, std::int64_t place);
    void Flush(std::int64_t logger);

    ArchiveStore& store_;
    const std::int64_t upload_;
    const std::int64_t begin_;
    std::int64_t revision_ = NoRevision;  ///< at which the rest is true

    std::unordered_set<std::int64_t> later_;  ///< uploads that began later
    std::int64_t end_ = 0;  ///< place of the last record of this and earlier uploads, 0 if none
    std::optional<std::int64_t> next_;  ///< that of the first of later ones
    bool begun_ = false;                ///< the record at `end_` is this upload's own

    std::optional<ArchiveRange<std::uint32_t>> times_;  ///< of the series before this upload
    std::vector<ArchiveRecord> page_;  ///< rows that follow each other in the series
    std::size_t inPage_ = 0;           ///< the one behind that found last
    int pageSize_ = 0;                 ///< rows to read next time
    std::unordered_map<RecordIdentity, ArchiveRecord, RecordIdentityHash> byTime_;
    std::unordered_set<std::uint32_t> wholeTimes_;  ///< times of which `byTime_` holds all
    std::vector<ArchiveRecord> rows_;               ///< room for what is read
    std::vector<ArchiveRecord> fresh_;              ///< not yet handed to the store
};

#endif  // ORVIA_ARCHIVE_SERIES_MERGE_H
