#include "archive/hand_over.h"

#include <algorithm>

#include "archive/archive_transaction.h"
#include "archive/filed_rows.h"
#include "common/mac_text.h"
#include "common/number_text.h"

namespace {

/// Uploads that are asked for at a time.
constexpr int MostOwed = 64;

}  // namespace

HandOver::HandOver(ArchiveStore& local, ArchiveStore& shared, int portion)
    : local_(local),
      shared_(shared),
      portion_(portion),
      identity_(local.Identity()),
      target_(shared.Identity()) {}

bool HandOver::Portion() {
    std::int64_t id = 0;
    try {
        if (!upload_ && !TakeNext()) {
            return false;
        }
        id = upload_->Local.Id;
        SendPortion();
        return true;
    } catch (const ArchiveFault& fault) {
        upload_.reset();
        if (fault.Kind() == ArchiveTrouble::Away) {
            owed_.clear();
        } else if (id != 0) {
            refused_.insert(id);
        }
        throw;
    }
}

void HandOver::Again() {
    upload_.reset();
    owed_.clear();
    refused_.clear();
    local_.ForgetHandedOver(target_);
}

// ----- what is next

bool HandOver::TakeNext() {
    while (const auto row = NextOwed()) {
        ReadUpload(*row);
        if (upload_) {
            return true;
        }
    }
    refused_.clear();
    return false;
}

std::optional<ArchiveUpload> HandOver::NextOwed() {
    if (owed_.empty()) {
        const int most = MostOwed + static_cast<int>(refused_.size());
        for (ArchiveUpload& row : local_.UploadsOwed(target_, most)) {
            if (!refused_.contains(row.Id)) {
                owed_.push_back(std::move(row));
            }
        }
    }
    if (owed_.empty()) {
        return std::nullopt;
    }
    ArchiveUpload row = std::move(owed_.front());
    owed_.pop_front();
    return row;
}

/// Takes an upload in hand, unless it has been deleted meanwhile.
void HandOver::ReadUpload(const ArchiveUpload& row) {
    ArchiveTransaction reading(local_, ArchiveTransaction::Kind::Reading);
    const auto logger = local_.LoggerOf(row.Logger);
    if (logger) {
        const auto all = local_.SettingsOf(row.Logger);
        const auto settings =
            std::find_if(all.begin(), all.end(),
                         [&row](const ArchiveSettings& one) { return one.Id == row.Settings; });
        upload_ = std::make_unique<InHand>();
        upload_->Local = row;
        upload_->Logger = *logger;
        upload_->Settings = settings == all.end() ? ArchiveSettings() : *settings;
    }
    reading.Commit();
}

// ----- one portion

void HandOver::SendPortion() {
    std::vector<RecordIdentity> records;
    const bool last = ReadRecords(records);
    Write(records, last);
    if (last) {
        Note();
        upload_.reset();
    }
}

/// The next records of the upload; true if they are its last.
bool HandOver::ReadRecords(std::vector<RecordIdentity>& records) {
    rows_.clear();
    ArchiveTransaction reading(local_, ArchiveTransaction::Kind::Reading);
    if (!local_.LoggerOf(upload_->Local.Logger)) {
        throw ArchiveFault(ArchiveTrouble::Gone, "");
    }
    local_.RecordsOfUpload(upload_->Local, upload_->Next, portion_, rows_);
    reading.Commit();
    records.reserve(rows_.size());
    for (const ArchiveRecord& row : rows_) {
        records.push_back(IdentityOf(row));
        upload_->Next = row.Place + 1;
    }
    return static_cast<int>(rows_.size()) < portion_;
}

void HandOver::Write(const std::vector<RecordIdentity>& records, bool last) {
    InHand& upload = *upload_;
    ArchiveTransaction transaction(shared_, ArchiveTransaction::Kind::Writing);
    ArchiveLogger logger = LoggerRowOf(shared_, upload.Logger.Mac, upload.Local.Name);
    ArchiveUpload row = upload.Shared;
    if (row.Id == 0) {
        FindRow(logger, row);
        upload.Merge = std::make_unique<SeriesMerge>(shared_, row.Id, row.Begin);
    }
    upload.Merge->File(records, logger);
    upload.Sent += static_cast<std::int64_t>(records.size());
    row.Received = std::max(row.Received, last ? upload.Local.Received : upload.Sent);
    if (last && upload.Local.End) {
        row.End = upload.Local.End;
        row.Outcome = upload.Local.Outcome;
    }
    if (shared_.LastBegin(logger.Id) == row.Begin) {
        logger.Name = upload.Local.Name;
    }
    shared_.UpdateLogger(logger);
    shared_.UpdateUpload(row);
    transaction.Commit();
    upload.Shared = row;
}

/// The upload's row there, made if there is none.
void HandOver::FindRow(ArchiveLogger& logger, ArchiveUpload& row) {
    const InHand& upload = *upload_;
    const std::string origin = OriginOf(upload);
    if (const auto known = shared_.UploadFrom(logger.Id, origin)) {
        row = *known;
        return;
    }
    row = {.Logger = logger.Id,
           .Begin = FreeBegin(logger.Id, upload.Local.Begin),
           .Firmware = upload.Local.Firmware,
           .Name = upload.Local.Name,
           .Settings = SettingsIdOf(shared_, logger.Id, upload.Settings),
           .Said = upload.Local.Said,
           .Origin = origin};
    shared_.AddUpload(row);
    ++logger.Uploads;
}

/// A begin that no other upload of the logger has: this one, or the next behind it.
std::int64_t HandOver::FreeBegin(std::int64_t logger, std::int64_t begin) {
    std::size_t from = shared_.UploadsBegunBehind(logger, begin - 1).size();
    for (;; ++begin) {
        const std::size_t behind = shared_.UploadsBegunBehind(logger, begin).size();
        if (behind == from) {
            return begin;
        }
        from = behind;
    }
}

/// Names the upload among all archives. One that came here from elsewhere keeps its name.
std::string HandOver::OriginOf(const InHand& upload) const {
    return !upload.Local.Origin.empty() ? upload.Local.Origin
                                        : identity_ + "/" + MacText(upload.Logger.Mac) + "/" +
                                              IntegerToText(upload.Local.Begin);
}

/// Notes what has been handed over: the upload as it was when it was taken in hand. What it has
/// got since is owed.
void HandOver::Note() {
    ArchiveTransaction transaction(local_, ArchiveTransaction::Kind::Writing);
    if (local_.LoggerOf(upload_->Local.Logger)) {
        local_.NoteHandedOver(target_, upload_->Local);
    }
    transaction.Commit();
}
