#include "archive/archive_session.h"

#include <algorithm>

#include "archive/archive_rows.h"
#include "archive/archive_words.h"
#include "archive/series_csv.h"
#include "common/mac_text.h"
#include "common/number_text.h"
#include "common/path_text.h"
#include "common/text.h"
#include "history/save_history.h"

namespace {

std::string EmptyText(const std::string& place) {
    return std::string("Nothing has been collected yet.") + std::string(LineBreak) +
           std::string(LineBreak) +
           "\"Get History\" of a logger's window keeps what it uploads here, record by record, "
           "as it comes." +
           std::string(LineBreak) + std::string(LineBreak) + place;
}

std::string EmptySharedText(const std::string& place) {
    return "Nothing has been handed over to the shared archive yet." + std::string(LineBreak) +
           std::string(LineBreak) + place;
}

bool HasRecordIn(const NamedSeries& series, const Period& span) {
    const auto times = series.Values().Times().All();
    return std::any_of(times.begin(), times.end(), [&](Moment at) { return span.Holds(at); });
}

Period Union(const Period& one, const Period& other) {
    if (one.IsEmpty() || other.IsEmpty()) {
        return one.IsEmpty() ? other : one;
    }
    return {std::min(one.Begin, other.Begin), std::max(one.End, other.End)};
}

}  // namespace

ArchiveSession::ArchiveSession(const ArchiveWork& work)
    : work_(work),
      // The host keeps it.
      local_(std::shared_ptr<void>(), work.windows.outside.Archive),
      store_(local_) {
    LookAtShared(MayShare());
}

// ----- which archive

bool ArchiveSession::MayShare() const {
    return work_.sharing != nullptr && work_.sharing->IsOn();
}

void ArchiveSession::LookAtShared(bool shared) {
    couldShare_ = MayShare();
    shared_ = shared && couldShare_;
    store_ = local_;
    Forget();
}

void ArchiveSession::Forget() {
    Tell({});
    gaps_.clear();
    count_.reset();
    rest_ = 0;
}

/// Takes the shared archive if its server answers; who does not is not asked here.
bool ArchiveSession::TakeSharedStore() {
    const SharedArchive& shared = *work_.windows.outside.Shared;
    const auto store = shared.Store();
    if (store != nullptr && store != store_) {
        Forget();
        store_ = store;
    }
    if (store != nullptr && shared.Status().Answers() && rest_ == 0) {
        return true;
    }
    rest_ = std::max(rest_ - 1, 0);
    if (store_ != local_) {
        store_->Close();
    }
    Tell(work_.sharing->NoticeText());
    return false;
}

/// Behind a fault of the server: whoever looks after it is told to look.
void ArchiveSession::Lost(const ArchiveFault& fault) {
    constexpr int looks = 3;
    if (shared_ && fault.Kind() == ArchiveTrouble::Away) {
        rest_ = looks;
        Tell(WordsOf(fault));
        work_.windows.outside.Shared->Look();
    }
}

std::optional<std::string> ArchiveSession::WhyNotDelete() const {
    const bool readOnly =
        shared_ && work_.windows.outside.Shared->Status().State == SharingState::ReadOnly;
    return readOnly ? std::optional(SharedAccessText(ArchiveTrouble::ReadOnly, store_->Place(), ""))
                    : std::nullopt;
}

std::optional<std::string> ArchiveSession::WhyNotBackUp() const {
    if (!shared_) {
        return std::nullopt;
    }
    return "The shared archive is backed up on its server, by whoever looks after that: its own "
           "tools (pg_dump) do it." +
           std::string(LineBreak) + std::string(LineBreak) +
           "\"This Computer\" backs up what was collected here.";
}

// ----- the list

bool ArchiveSession::Refresh() {
    const std::string noticeBefore = notice_;
    if (couldShare_ != MayShare()) {
        LookAtShared(MayShare());
    }
    if (shared_ && !TakeSharedStore()) {
        return notice_ != noticeBefore;
    }
    try {
        if (!store_->Exists()) {
            Tell(EmptyText(store_->Place()));
            return notice_ != noticeBefore;
        }
        store_->Open();
        const std::int64_t stamp = store_->Stamp();
        if (stamp_ == stamp) {
            return false;
        }
        ReadList();
        stamp_ = stamp;
        return true;
    } catch (const ArchiveFault& fault) {
        if (fault.Kind() == ArchiveTrouble::Locked && !lines_.empty()) {
            return false;
        }
        Lost(fault);
        Tell(WordsOf(fault));
        return notice_ != noticeBefore;
    }
}

void ArchiveSession::Tell(const std::string& notice) {
    notice_ = notice;
    lines_.clear();
    stamp_.reset();
}

void ArchiveSession::ReadList() {
    std::vector<LoggerSummary> known;
    known.reserve(lines_.size());
    for (LoggerLine& line : lines_) {
        known.push_back(line.Summary);
    }
    std::vector<LoggerLine> lines;
    for (LoggerSummary& summary : ListLoggers(*store_, known)) {
        const auto gaps = GapsOf(summary.Logger);
        lines.push_back({.Summary = std::move(summary), .Gaps = gaps});
    }
    lines_ = std::move(lines);
    notice_ = !lines_.empty() ? std::string()
              : shared_       ? EmptySharedText(store_->Place())
                              : EmptyText(store_->Place());
}

const LoggerLine* ArchiveSession::LineOf(std::int64_t logger) const {
    const auto line = std::find_if(lines_.begin(), lines_.end(), [logger](const LoggerLine& one) {
        return one.Summary.Logger.Id == logger;
    });
    return line == lines_.end() ? nullptr : &*line;
}

std::vector<UploadLine> ArchiveSession::UploadsOf(std::int64_t logger) {
    std::vector<UploadLine> lines;
    const auto running = work_.filer == nullptr || shared_ ? std::nullopt : work_.filer->Running();
    try {
        for (ArchiveUpload& upload : store_->UploadsOf(logger)) {
            const bool runs = running == upload.Id;
            lines.push_back({.Upload = std::move(upload), .Begin = {}, .End = {}, .Runs = runs});
        }
    } catch (const ArchiveFault& fault) {
        Lost(fault);
        lines.clear();  // the next look tells
    }
    std::reverse(lines.begin(), lines.end());
    return lines;
}

// ----- gaps

std::optional<std::int64_t> ArchiveSession::GapsOf(const ArchiveLogger& logger) const {
    const auto counted = gaps_.find(logger.Id);
    const bool known = counted != gaps_.end() && counted->second.Revision == logger.Revision;
    return known ? std::optional(counted->second.Gaps) : std::nullopt;
}

bool ArchiveSession::LacksGaps(const LoggerLine& line) const {
    return !line.Gaps && (work_.filer == nullptr || !work_.filer->Owes());
}

std::optional<std::size_t> ArchiveSession::CountOn(std::int64_t logger) {
    if (!count_ || count_->Logger() != logger) {
        count_.emplace(logger);
    }
    try {
        store_->Open();
        if (!count_->Portion(*store_)) {
            return std::nullopt;
        }
    } catch (const ArchiveFault& fault) {
        Lost(fault);
        count_.reset();
        return std::nullopt;
    }
    gaps_[logger] = {.Revision = count_->Revision(), .Gaps = count_->Gaps()};
    count_.reset();
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        if (lines_[i].Summary.Logger.Id == logger) {
            // Also where the series has changed since: the next look begins anew.
            lines_[i].Gaps = gaps_[logger].Gaps;
            return i;
        }
    }
    return std::nullopt;
}

// ----- series of a period

std::optional<Period> ArchiveSession::SpanUpTo(const std::vector<std::int64_t>& loggers,
                                               NamedPeriod name) const {
    std::optional<Moment> newest;
    for (const std::int64_t logger : loggers) {
        const auto last = store_->LastRecord(logger);
        if (last) {
            newest = std::max(newest.value_or(EarliestMoment), MomentOf(PackedTimeOf(last->Time)));
        }
    }
    return newest ? std::optional(PeriodUpTo(*newest, name)) : std::nullopt;
}

Period ArchiveSession::SpanOf(const std::vector<std::int64_t>& loggers,
                              const PeriodChoice& choice) const {
    if (!choice.Name) {
        return PeriodFromTo(choice.From, NextDay(choice.To));
    }
    return SpanUpTo(loggers, *choice.Name).value_or(Period{});
}

ChosenSeries ArchiveSession::Read(const std::vector<std::int64_t>& loggers,
                                  const PeriodChoice& choice) {
    store_->Open();
    const bool all = choice.Name == NamedPeriod::All;
    ChosenSeries chosen;
    if (!all) {
        chosen.Span = SpanOf(loggers, choice);
        if (chosen.Span.IsEmpty()) {
            return chosen;
        }
    }
    for (const std::int64_t id : loggers) {
        const LoggerLine* line = LineOf(id);
        auto series = std::make_shared<const NamedSeries>(
            line == nullptr ? std::string() : LoggerLabel(line->Summary.Logger.Name),
            all ? ReadSeries(*store_, id) : ReadSeries(*store_, id, chosen.Span));
        const Period own = NamedPeriodOf(series->Values().Times(), NamedPeriod::All);
        if (all ? !own.IsEmpty() : HasRecordIn(*series, chosen.Span)) {
            chosen.Span = all ? Union(chosen.Span, own) : chosen.Span;
            chosen.Series.push_back(std::move(series));
        }
    }
    return chosen;
}

std::string ArchiveSession::SaveCsv(const ChosenSeries& chosen, bool machine, ProgressBar& bar) {
    const NamedSeries& series = *chosen.Series.front();
    const Host& outside = work_.windows.outside;
    const auto path = AskForCsvFile(series.Name(), outside, work_.windows.lastFolder);
    if (!path) {
        return {};
    }
    const bool saved = machine
                           ? SaveMachineCsv(*path, series.Values(), chosen.Span)
                           : SaveSeriesCsv(*path, series.Values(), chosen.Span,
                                           IsSingleColumn(work_.settings.CSVDateTimeSingleColumn),
                                           outside.Clock, bar);
    if (!saved) {
        outside.Boxes.Show(
            {.Text = "The file could not be written:" + std::string(LineBreak) + *path,
             .Title = ArchiveTitle,
             .Icon = BoxIcon::Exclamation});
        return {};
    }
    return "Saved: " + *path;
}

// ----- care

BoxContent ArchiveSession::DeletionQuestion(const ArchiveLogger& logger) const {
    const bool one = logger.Uploads == 1;
    std::string text = "Delete ";
    text.append(LoggerLabel(logger.Name)).append(" (").append(MacText(logger.Mac));
    text.append(shared_ ? ") from the archive that all share, with its "
                        : ") from the archive, with its ")
        .append(IntegerToText(logger.Records));
    text.append(logger.Records == 1 ? " record" : " records").append(" of ");
    text.append(IntegerToText(logger.Uploads)).append(one ? " upload?" : " uploads?");
    text.append(LineBreak).append(LineBreak);
    text.append("What the logger itself has overwritten since cannot be had again.");
    return {.Text = text,
            .Title = ArchiveTitle,
            .Icon = BoxIcon::Exclamation,
            .Buttons = BoxButtons::YesNo};
}

std::optional<std::string> ArchiveSession::AskForBackUp() {
    const Host& outside = work_.windows.outside;
    const LocalTime now = outside.Clock.Now();
    std::string& folder = work_.windows.lastFolder;
    const std::string name = "archive " + IntegerToText(now.Year) + "-" + TwoDigits(now.Month) +
                             "-" + TwoDigits(now.Day) + ".sqlite";
    return outside.Dialogs.PickForSaving(
        {.Title = "Back Up",
         .DefaultExtension = ".sqlite",
         .Filter = "Archives (*.sqlite)|*.sqlite",
         .InitialName = JoinPath(folder.empty() ? outside.StartFolder() : folder, name)},
        true);
}

std::string ArchiveSession::WordsOf(const ArchiveFault& fault) const {
    const auto words = shared_ ? SharedAccessText : AccessText;
    return words(fault.Kind(), store_->Place(), fault.what());
}
