#include "archive/series_merge.h"

#include <algorithm>

namespace {

/// Room before the first record of each upload, for uploads that began earlier and come later: more
/// than any number of records.
constexpr std::int64_t Room = std::int64_t{1} << 32;

constexpr int SmallestPage = 64;
constexpr int LargestPage = 4096;
/// Rows of a page that are looked at for the next record.
constexpr std::size_t RowsAhead = 8;
/// Records looked up by their time that are kept.
constexpr std::size_t MostByTime = 65'536;

}  // namespace

std::int32_t AlikeCounter::Next(const HistoryRecord& record) {
    return ++seen_[IdentityOf(record, 0)];
}

void SeriesMerge::File(std::span<const RecordIdentity> records, ArchiveLogger& logger) {
    if (records.empty()) {
        return;
    }
    if (revision_ != logger.Revision) {
        LookAround(logger.Id);
    }
    for (const RecordIdentity& record : records) {
        FileOne(record, logger);
    }
    Flush(logger.Id);
    revision_ = ++logger.Revision;
}

void SeriesMerge::LookAround(std::int64_t logger) {
    DropKnown();
    fresh_.clear();
    times_ = store_.TimesOf(logger);
    const auto later = store_.UploadsBegunBehind(logger, begin_);
    later_ = {later.begin(), later.end()};
    FindOwnEnd(logger);
}

/// The records of earlier uploads and of this one stand before those of later ones: looks for the
/// seam by halves.
void SeriesMerge::FindOwnEnd(std::int64_t logger) {
    end_ = 0;
    next_.reset();
    begun_ = false;
    const auto last = store_.LastRecord(logger);
    if (!last || !IsLater(last->Upload)) {
        end_ = last ? last->Place : 0;
        begun_ = last && last->Upload == upload_;
        return;
    }
    std::int64_t low = FirstBehind(logger, 0)->Place;  // all before it are earlier
    std::int64_t high = last->Place;                   // all from it on are later
    while (low < high) {
        const std::int64_t middle = low + (high - low) / 2;
        const ArchiveRecord row = *FirstBehind(logger, middle - 1);
        if (IsLater(row.Upload)) {
            high = middle;
        } else {
            end_ = row.Place;
            begun_ = row.Upload == upload_;
            low = row.Place + 1;
        }
    }
    LookBehind(logger);
}

std::optional<ArchiveRecord> SeriesMerge::FirstBehind(std::int64_t logger, std::int64_t place) {
    rows_.clear();
    store_.RecordsFrom(logger, place + 1, 1, rows_);
    return rows_.empty() ? std::nullopt : std::optional(rows_.front());
}

void SeriesMerge::LookBehind(std::int64_t logger) {
    const auto row = FirstBehind(logger, end_);
    next_ = row ? std::optional(row->Place) : std::nullopt;
}

void SeriesMerge::FileOne(const RecordIdentity& record, ArchiveLogger& logger) {
    const ArchiveRecord* known = Find(logger.Id, record);
    if (known == nullptr) {
        const std::int64_t place = TakePlace(logger.Id);
        fresh_.push_back({.Place = place,
                          .Time = record.Time,
                          .Counts = record.Counts,
                          .Nth = record.Nth,
                          .Upload = upload_});
        ++logger.Records;
    } else if (IsLater(known->Upload)) {
        Adopt(logger.Id, *known);
    }
}

/// A record that only later uploads held so far: this one has read it first.
void SeriesMerge::Adopt(std::int64_t logger, const ArchiveRecord& row) {
    const RecordIdentity identity = IdentityOf(row);
    Flush(logger);
    if (next_ == row.Place) {
        store_.MoveRecord(logger, row.Place, row.Place, upload_);
        end_ = row.Place;
        begun_ = true;
        LookBehind(logger);
        return;
    }
    const std::int64_t place = TakePlace(logger);
    // Making room may have moved it.
    const std::int64_t from = FindByTime(logger, identity)->Place;
    store_.MoveRecord(logger, from, place, upload_);
}

/// The place behind this upload's last record, which is taken with it.
std::int64_t SeriesMerge::TakePlace(std::int64_t logger) {
    if (next_ && *next_ - end_ < 2) {
        Flush(logger);
        store_.OpenRoom(logger, end_, Room);
        DropKnown();
        *next_ += Room;
    }
    end_ = begun_ ? end_ + 1 : FirstPlace();
    begun_ = true;
    return end_;
}

/// Where an upload begins that has no record yet: far behind the earlier ones, or half way to the
/// later ones.
std::int64_t SeriesMerge::FirstPlace() const {
    return next_ ? end_ + (*next_ - end_) / 2 : (end_ / Room + 1) * Room;
}

void SeriesMerge::Flush(std::int64_t logger) {
    if (!fresh_.empty()) {
        store_.AddRecords(logger, fresh_);
        fresh_.clear();
    }
}

/// The row of the series that this record is; null if it is new. What this upload has filed itself
/// is never asked for.
const ArchiveRecord* SeriesMerge::Find(std::int64_t logger, const RecordIdentity& record) {
    if (!times_ || record.Time < times_->First || record.Time > times_->Last) {
        return nullptr;
    }
    if (const ArchiveRecord* known = FindInPage(record)) {
        return known;
    }
    const ArchiveRecord* known = FindByTime(logger, record);
    if (known != nullptr) {
        // What comes next most likely stands behind it.
        LoadPage(logger, known->Place);
    }
    return known;
}

/// Looks where the last one was found, a few rows ahead.
const ArchiveRecord* SeriesMerge::FindInPage(const RecordIdentity& record) {
    const std::size_t end = std::min(page_.size(), inPage_ + RowsAhead);
    for (std::size_t i = inPage_; i < end; ++i) {
        if (page_[i].Time == record.Time && IdentityOf(page_[i]) == record) {
            inPage_ = i + 1;
            return &page_[i];
        }
    }
    return nullptr;
}

const ArchiveRecord* SeriesMerge::FindByTime(std::int64_t logger, const RecordIdentity& record) {
    if (!wholeTimes_.contains(record.Time)) {
        if (byTime_.size() > MostByTime) {
            byTime_.clear();
            wholeTimes_.clear();
        }
        rows_.clear();
        store_.RecordsAt(logger, record.Time, rows_);
        for (const ArchiveRecord& row : rows_) {
            byTime_.insert_or_assign(IdentityOf(row), row);
        }
        wholeTimes_.insert(record.Time);
    }
    const auto found = byTime_.find(record);
    return found == byTime_.end() ? nullptr : &found->second;
}

/// A page that was read to its end is followed by a larger one.
void SeriesMerge::LoadPage(std::int64_t logger, std::int64_t place) {
    const bool used = !page_.empty() && inPage_ + RowsAhead >= page_.size();
    pageSize_ = used ? std::min(pageSize_ * 2, LargestPage) : SmallestPage;
    page_.clear();
    store_.RecordsFrom(logger, place, pageSize_, page_);
    inPage_ = 1;
}

void SeriesMerge::DropKnown() {
    page_.clear();
    inPage_ = 0;
    byTime_.clear();
    wholeTimes_.clear();
}
