#ifndef ORVIA_ARCHIVE_HAND_OVER_H
#define ORVIA_ARCHIVE_HAND_OVER_H

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "archive/series_merge.h"
#include "platform/archive_store.h"

/// Hands the uploads of this computer's archive over to one that is shared, a portion at a time.
///
/// Of an upload go the records that it was the first to read here; by the rule of the series
/// (docs/archive.md) the shared series is then the same as if it had been filed there itself. Each
/// portion is one transaction there, and behind the last one it is noted here that the upload has
/// been handed over. Whatever comes between, the upload is begun anew: it is found there by its
/// origin, and its records are known. So each record is there once.
///
/// An upload that grows is handed over as it does.
class HandOver {
 public:
    static constexpr int UsualPortion = 2000;  ///< records

    /// Both archives are open as long as this is used.
    HandOver(ArchiveStore& local, ArchiveStore& shared, int portion = UsualPortion);

    /// Hands over a portion. False if nothing is left, or only what was refused before, which is
    /// tried anew from then on. Throws ArchiveFault; unless the server is away, the next portion is
    /// one of another upload.
    [[nodiscard]] bool Portion();

    /// Uploads that are not, or not all, there.
    [[nodiscard]] std::int64_t Waiting() { return local_.CountOwed(target_); }
    /// Has all handed over once more.
    void Again();
    /// Names the shared archive.
    [[nodiscard]] const std::string& Target() const { return target_; }

 private:
    /// The upload in hand.
    struct InHand {
        ArchiveUpload Local;
        ArchiveLogger Logger;  ///< its row here
        ArchiveSettings Settings;
        ArchiveUpload Shared;                ///< its Id is 0 until it is there
        std::unique_ptr<SeriesMerge> Merge;  ///< from then on
        std::int64_t Next = 1;               ///< the place to read on from
        std::int64_t Sent = 0;               ///< records so far
    };

    [[nodiscard]] bool TakeNext();
    [[nodiscard]] std::optional<ArchiveUpload> NextOwed();
    void ReadUpload(const ArchiveUpload& row);
    void SendPortion();
    [[nodiscard]] bool ReadRecords(std::vector<RecordIdentity>& records);
    void Write(const std::vector<RecordIdentity>& records, bool last);
    void FindRow(ArchiveLogger& logger, ArchiveUpload& row);
    [[nodiscard]] std::int64_t FreeBegin(std::int64_t logger, std::int64_t begin);
    [[nodiscard]] std::string OriginOf(const InHand& upload) const;
    void Note();

    ArchiveStore& local_;
    ArchiveStore& shared_;
    const int portion_;
    const std::string identity_;
    const std::string target_;
    std::deque<ArchiveUpload> owed_;  ///< the next ones
    std::set<std::int64_t> refused_;  ///< those that went wrong since the last round
    std::unique_ptr<InHand> upload_;
    std::vector<ArchiveRecord> rows_;  ///< room for what is read
};

#endif  // ORVIA_ARCHIVE_HAND_OVER_H
