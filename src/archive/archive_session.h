#ifndef ORVIA_ARCHIVE_ARCHIVE_SESSION_H
#define ORVIA_ARCHIVE_ARCHIVE_SESSION_H

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "archive/archive_context.h"
#include "archive/archive_list.h"
#include "archive/archive_sharing.h"
#include "archive/gap_count.h"
#include "archive/named_series.h"
#include "archive/periods.h"
#include "archive/upload_filer.h"
#include "history/fill_list.h"
#include "records/settings.h"

/// What the archive's window works with. The host has an archive.
struct ArchiveWork {
    ArchiveContext windows;
    const Settings& settings;
    const UploadFiler* filer = nullptr;       ///< files the uploads
    const ArchiveSharing* sharing = nullptr;  ///< hands them over to a shared archive
};

/// The period that is asked for.
struct PeriodChoice {
    std::optional<NamedPeriod> Name;  ///< nothing: from one day to another
    Moment From = 0;                  ///< begin of the first day
    Moment To = 0;                    ///< begin of the last day, which is inside
};

/// Series that were asked for, and their period.
struct ChosenSeries {
    std::vector<std::shared_ptr<const NamedSeries>> Series;  ///< those that have records in it
    Period Span;
};

/// The archive as its window looks at it: the loggers, what is asked of them, and why there is
/// nothing to show. Makes no archive where there is none; what another program holds at the moment
/// is read a little later.
class ArchiveSession {
 public:
    explicit ArchiveSession(const ArchiveWork& work);

    /// Whether there is a shared archive to look at beside this computer's.
    [[nodiscard]] bool MayShare() const;
    /// Looks at the shared archive, or at this computer's, from now on.
    void LookAtShared(bool shared);
    [[nodiscard]] bool IsShared() const { return shared_; }
    /// Why a logger cannot be deleted, for the operator; nothing if it can.
    [[nodiscard]] std::optional<std::string> WhyNotDelete() const;
    /// The same of a back-up.
    [[nodiscard]] std::optional<std::string> WhyNotBackUp() const;

    /// Looks whether something changed, and reads what did. True if Loggers or Notice are others.
    [[nodiscard]] bool Refresh();
    /// By name.
    [[nodiscard]] const std::vector<LoggerLine>& Loggers() const { return lines_; }
    /// Why there are no loggers to show, for the operator; empty when there are.
    [[nodiscard]] const std::string& Notice() const { return notice_; }
    [[nodiscard]] bool HasArchive() const { return notice_.empty(); }
    /// The newest first; their times are still to be put in.
    [[nodiscard]] std::vector<UploadLine> UploadsOf(std::int64_t logger);

    /// Whether the gaps of a logger are still to be counted. Not while it is uploaded, when its
    /// series changes all the time.
    [[nodiscard]] bool LacksGaps(const LoggerLine& line) const;
    /// Counts a portion of a logger's gaps; the number of its line when they are known now.
    [[nodiscard]] std::optional<std::size_t> CountOn(std::int64_t logger);

    /// The records of some loggers in a period, which for the last day, week or month ends with
    /// the newest record of them all. Throws ArchiveFault.
    [[nodiscard]] ChosenSeries Read(const std::vector<std::int64_t>& loggers,
                                    const PeriodChoice& choice);
    /// Asks where to, and saves the records; for other programs on demand. What was done, in a
    /// line; empty when it was cancelled.
    [[nodiscard]] std::string SaveCsv(const ChosenSeries& chosen, bool machine, ProgressBar& bar);

    /// Takes note of a fault that somebody else met: a server that is lost has nothing to show, and
    /// is left alone for some looks.
    void Lost(const ArchiveFault& fault);

    /// What is asked before a logger is deleted.
    [[nodiscard]] BoxContent DeletionQuestion(const ArchiveLogger& logger) const;
    /// Where a back-up goes; nothing when cancelled.
    [[nodiscard]] std::optional<std::string> AskForBackUp();
    /// A fault in words.
    [[nodiscard]] std::string WordsOf(const ArchiveFault& fault) const;

    [[nodiscard]] const std::shared_ptr<ArchiveStore>& Store() const { return store_; }
    [[nodiscard]] const ArchiveWork& Work() const { return work_; }

 private:
    struct CountedGaps {
        std::int64_t Revision = 0;
        std::int64_t Gaps = 0;
    };

    void Forget();
    [[nodiscard]] bool TakeSharedStore();
    void ReadList();
    void Tell(const std::string& notice);
    [[nodiscard]] std::optional<std::int64_t> GapsOf(const ArchiveLogger& logger) const;
    [[nodiscard]] const LoggerLine* LineOf(std::int64_t logger) const;
    [[nodiscard]] std::optional<Period> SpanUpTo(const std::vector<std::int64_t>& loggers,
                                                 NamedPeriod name) const;
    [[nodiscard]] Period SpanOf(const std::vector<std::int64_t>& loggers,
                                const PeriodChoice& choice) const;

    const ArchiveWork work_;
    const std::shared_ptr<ArchiveStore> local_;
    std::shared_ptr<ArchiveStore> store_;  ///< the one that is looked at
    bool shared_ = false;                  ///< it is on a server
    bool couldShare_ = false;              ///< at the last look
    int rest_ = 0;                         ///< looks that a lost server is left alone for
    std::optional<std::int64_t> stamp_;    ///< of what was read
    std::vector<LoggerLine> lines_;
    std::string notice_;
    std::map<std::int64_t, CountedGaps> gaps_;
    std::optional<GapCount> count_;  ///< under way
};

#endif  // ORVIA_ARCHIVE_ARCHIVE_SESSION_H
