#ifndef ORVIA_ARCHIVE_UPLOAD_FILER_H
#define ORVIA_ARCHIVE_UPLOAD_FILER_H

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "archive/series_merge.h"
#include "history/upload_listener.h"
#include "platform/archive_store.h"
#include "platform/host.h"

/// Files each upload in the archive while it runs. What came is held until the next portion is due,
/// a few ticks later; a portion is committed as a whole. An archive that cannot take it never
/// stands in the way: what came stays held, what another program blocks is tried again, and of what
/// cannot be mended the operator is told once, when the upload's dialog has gone.
class UploadFiler final : public UploadListener {
 public:
    UploadFiler(ArchiveStore& store, MessageBoxes& boxes) : store_(store), boxes_(boxes) {}

    void Began(const UploadStart& start) override;
    void Took(std::span<const HistoryRecord> records) override;
    void Ended(UploadOutcome outcome) override;
    void Settle() override;
    /// As Settle, for who tells of it in a box's place: what keeps the upload, or a part of it, out
    /// of the archive, in words; nothing if all of it is there.
    [[nodiscard]] std::optional<std::string> SettleInWords();
    /// Records of the last upload that the series had not held.
    [[nodiscard]] std::int64_t NewRecords() const { return newRecords_; }

    /// Called whenever something has been filed.
    std::function<void()> Filed;

    /// A tick of the console: files what came when it is time to.
    void Tick();

    /// Whether something of the last upload is not yet in the archive.
    [[nodiscard]] bool Owes() const { return filing_ != nullptr; }
    /// The row of the upload that runs; nothing if none does, or it has none yet.
    [[nodiscard]] std::optional<std::int64_t> Running() const {
        const bool runs = filing_ && !filing_->Outcome && filing_->Row.Id != 0;
        return runs ? std::optional(filing_->Row.Id) : std::nullopt;
    }

 private:
    /// The upload in hand.
    struct Filing {
        UploadStart Start;
        std::int64_t Begin = 0;
        AlikeCounter Alike;
        std::vector<RecordIdentity> Pending;
        std::int64_t Received = 0;
        std::optional<UploadOutcome> Outcome;
        ArchiveUpload Row;                   ///< its Id is 0 until it is in the archive
        std::unique_ptr<SeriesMerge> Merge;  ///< from then on
        int Ticks = 0;                       ///< since the last portion
        bool Blocked = false;                ///< to no avail before the end
    };

    struct Trouble {
        ArchiveTrouble Kind = ArchiveTrouble::Other;
        std::string Words;
    };

    void FileRest();
    void Portion();
    [[nodiscard]] bool TryPortion();
    void WritePortion();
    void TakeBack();
    void AddRow(const Filing& filing, ArchiveLogger& logger, ArchiveUpload& row);

    ArchiveStore& store_;
    MessageBoxes& boxes_;
    std::unique_ptr<Filing> filing_;  ///< nothing once all of it is in the archive
    std::int64_t newRecords_ = 0;
    std::optional<Trouble> trouble_;  ///< of the last portion
    std::optional<ArchiveTrouble> told_;
};

#endif  // ORVIA_ARCHIVE_UPLOAD_FILER_H
