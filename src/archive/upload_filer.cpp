#include "archive/upload_filer.h"

#include <algorithm>
#include <exception>

#include "archive/archive_rows.h"
#include "archive/archive_transaction.h"
#include "archive/archive_words.h"
#include "archive/filed_rows.h"

namespace {

/// Ticks between two portions: less than half a second, so that a kill costs less than one.
constexpr int TicksPerPortion = 4;
/// A portion of so many records does not wait for its time.
constexpr std::size_t LargestPortion = 4096;

ArchiveOutcome OutcomeOf(UploadOutcome outcome) {
    switch (outcome) {
        case UploadOutcome::Complete:
            return ArchiveOutcome::Complete;
        case UploadOutcome::Stopped:
            return ArchiveOutcome::Stopped;
        default:
            return ArchiveOutcome::Failed;
    }
}

/// Whether it is worth while to open the archive anew behind such trouble.
bool IsLost(ArchiveTrouble kind) {
    return kind != ArchiveTrouble::Locked && kind != ArchiveTrouble::Full &&
           kind != ArchiveTrouble::Gone;
}

}  // namespace

void UploadFiler::Began(const UploadStart& start) {
    filing_ = std::make_unique<Filing>();
    trouble_.reset();
    newRecords_ = 0;
    filing_->Start = start;
    filing_->Begin = store_.Now();
    Portion();
}

void UploadFiler::Took(std::span<const HistoryRecord> records) {
    if (!filing_ || filing_->Outcome) {
        return;
    }
    for (const HistoryRecord& record : records) {
        filing_->Pending.push_back(IdentityOf(record, filing_->Alike.Next(record)));
    }
    filing_->Received += static_cast<std::int64_t>(records.size());
    if (filing_->Pending.size() >= LargestPortion) {
        Portion();
    }
}

void UploadFiler::Ended(UploadOutcome outcome) {
    if (filing_ && !filing_->Outcome) {
        filing_->Outcome = outcome;
        filing_->Row.End = store_.Now();
        filing_->Blocked = false;
        Portion();
    }
}

void UploadFiler::Tick() {
    if (!filing_) {
        return;
    }
    ++filing_->Ticks;
    const bool due = !filing_->Pending.empty() || filing_->Outcome || filing_->Row.Id == 0;
    if (due && filing_->Ticks >= TicksPerPortion) {
        Portion();
    }
}

void UploadFiler::FileRest() {
    if (filing_) {
        filing_->Blocked = false;
        Portion();
    }
    filing_.reset();
}

std::optional<std::string> UploadFiler::SettleInWords() {
    FileRest();
    return trouble_ ? std::optional(TroubleText(trouble_->Kind, store_.Place(), trouble_->Words))
                    : std::nullopt;
}

void UploadFiler::Settle() {
    FileRest();
    if (trouble_ && told_ != trouble_->Kind) {
        told_ = trouble_->Kind;
        boxes_.Show({.Text = TroubleText(trouble_->Kind, store_.Place(), trouble_->Words),
                     .Title = ArchiveTitle,
                     .Icon = BoxIcon::Exclamation});
    }
}

/// Files what is pending; all of it is in the archive then, or trouble is noted.
void UploadFiler::Portion() {
    filing_->Ticks = 0;
    if (filing_->Blocked) {
        return;
    }
    if (!TryPortion()) {
        TakeBack();
        return;
    }
    trouble_.reset();
    told_.reset();
    if (filing_->Outcome) {
        filing_.reset();
    }
}

bool UploadFiler::TryPortion() {
    try {
        store_.Open();
        WritePortion();
        return true;
    } catch (const ArchiveFault& fault) {
        trouble_ = {.Kind = fault.Kind(), .Words = fault.what()};
    } catch (const std::exception& fault) {
        trouble_ = {.Kind = ArchiveTrouble::Other, .Words = fault.what()};
    }
    return false;
}

/// Behind a portion that was not committed.
void UploadFiler::TakeBack() {
    if (filing_->Row.Id == 0) {
        filing_->Merge.reset();
    }
    if (filing_->Merge) {
        filing_->Merge->Forget();
    }
    filing_->Blocked = trouble_->Kind != ArchiveTrouble::Locked;
    if (IsLost(trouble_->Kind)) {
        store_.Close();
    }
}

void UploadFiler::WritePortion() {
    ArchiveTransaction transaction(store_, ArchiveTransaction::Kind::Writing);
    Filing& filing = *filing_;
    ArchiveLogger logger = LoggerRowOf(store_, filing.Start.Mac, filing.Start.Name);
    logger.Name = filing.Start.Name;
    ArchiveUpload row = filing.Row;
    if (row.Id == 0) {
        AddRow(filing, logger, row);
        filing.Merge = std::make_unique<SeriesMerge>(store_, row.Id, row.Begin);
    }
    const std::int64_t known = logger.Records;
    filing.Merge->File(filing.Pending, logger);
    const std::int64_t added = logger.Records - known;
    store_.UpdateLogger(logger);
    row.Received = filing.Received;
    if (filing.Outcome) {
        row.Outcome = OutcomeOf(*filing.Outcome);
    }
    store_.UpdateUpload(row);
    transaction.Commit();
    newRecords_ += added;
    filing.Row = row;
    filing.Pending.clear();
    if (Filed) {
        Filed();
    }
}

void UploadFiler::AddRow(const Filing& filing, ArchiveLogger& logger, ArchiveUpload& row) {
    const auto last = store_.LastBegin(logger.Id);
    row.Logger = logger.Id;
    // What runs now is behind all that is filed, wherever clocks have been set meanwhile.
    row.Begin = last ? std::max(filing.Begin, *last + 1) : filing.Begin;
    row.Firmware = filing.Start.Logger.FirmwareVersion;
    row.Name = filing.Start.Name;
    row.Settings =
        SettingsIdOf(store_, logger.Id, SettingsRow(filing.Start.Logger, filing.Start.Table));
    row.Said = filing.Start.Records;
    store_.AddUpload(row);
    ++logger.Uploads;
}
