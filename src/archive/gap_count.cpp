#include "archive/gap_count.h"

#include "archive/archive_rows.h"
#include "archive/archive_transaction.h"

namespace {

/// Records of a portion: some milliseconds of work.
constexpr int RecordsAtOnce = 4096;

}  // namespace

bool GapCount::Portion(ArchiveStore& store) {
    const ArchiveTransaction reading(store, ArchiveTransaction::Kind::Reading);
    const auto logger = store.LoggerOf(logger_);
    if (!logger) {
        return true;
    }
    if (revision_ != logger->Revision) {
        Begin(store, logger->Revision);
    }
    rows_.clear();
    store.RecordsFrom(logger_, place_, RecordsAtOnce, rows_);
    for (const ArchiveRecord& row : rows_) {
        Take(row);
    }
    return rows_.size() < RecordsAtOnce;
}

void GapCount::Begin(ArchiveStore& store, std::int64_t revision) {
    revision_ = revision;
    uploads_.emplace(store, logger_);
    settings_.clear();
    spacings_.clear();
    place_ = 1;
    before_.reset();
    gaps_ = 0;
}

void GapCount::Take(const ArchiveRecord& row) {
    const std::size_t settings = uploads_->NumberOf(row.Upload, settings_);
    while (spacings_.size() < settings_.size()) {
        spacings_.push_back(SpacingOf(settings_[spacings_.size()].Logger));
    }
    const Moment at = MomentOf(PackedTimeOf(row.Time));
    if (before_ && spacings_[settings].KindOf(at - *before_) == PairKind::Gap) {
        ++gaps_;
    }
    before_ = at;
    place_ = row.Place + 1;
}
