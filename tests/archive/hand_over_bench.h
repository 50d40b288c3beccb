#ifndef ORVIA_TESTS_ARCHIVE_HAND_OVER_BENCH_H
#define ORVIA_TESTS_ARCHIVE_HAND_OVER_BENCH_H

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "archive/filed_rows.h"
#include "archive/hand_over.h"
#include "archive/store_fixture.h"

namespace testing_support {

using Mac = std::array<std::uint8_t, 6>;

[[nodiscard]] inline Mac MacOf(int logger) {
    return {0, 0x13, 0xA2, 0x40, 0x5F, static_cast<std::uint8_t>(logger)};
}

/// An upload as a console files it.
struct PlannedUpload {
    Mac Radio = MacOf(1);
    std::int64_t Begin = 0;
    std::vector<HistoryRecord> Records = {};
    std::string Name = "Site";
    std::uint8_t Image = 0;  ///< tells its settings from others
    bool Killed = false;
};

/// An upload that runs.
class RunningUpload {
 public:
    RunningUpload(ArchiveStore& store, PlannedUpload plan) : store_(store), plan_(std::move(plan)) {
        ArchiveTransaction transaction(store_, ArchiveTransaction::Kind::Writing);
        ArchiveLogger logger = LoggerRowOf(store_, plan_.Radio, plan_.Name);
        logger.Name = plan_.Name;
        row_ = {.Logger = logger.Id,
                .Begin = plan_.Begin,
                .Firmware = 7,
                .Name = plan_.Name,
                .Settings = SettingsIdOf(store_, logger.Id, Settings()),
                .Said = static_cast<std::int64_t>(plan_.Records.size())};
        store_.AddUpload(row_);
        ++logger.Uploads;
        store_.UpdateLogger(logger);
        transaction.Commit();
        merge_.emplace(store_, row_.Id, row_.Begin);
    }

    /// Files so many records more; false if those were the last.
    bool File(std::size_t most) {
        const std::size_t count = std::min(most, plan_.Records.size() - next_);
        ArchiveTransaction transaction(store_, ArchiveTransaction::Kind::Writing);
        std::vector<RecordIdentity> records;
        for (std::size_t i = 0; i < count; ++i) {
            const HistoryRecord& record = plan_.Records[next_ + i];
            records.push_back(IdentityOf(record, alike_.Next(record)));
        }
        ArchiveLogger logger = *store_.LoggerOf(row_.Logger);
        merge_->File(records, logger);
        store_.UpdateLogger(logger);
        next_ += count;
        row_.Received += static_cast<std::int64_t>(count);
        store_.UpdateUpload(row_);
        transaction.Commit();
        return next_ < plan_.Records.size();
    }
    void End() {
        if (plan_.Killed) {
            return;
        }
        row_.End = row_.Begin + 1000;
        row_.Outcome = ArchiveOutcome::Complete;
        store_.UpdateUpload(row_);
    }

 private:
    [[nodiscard]] ArchiveSettings Settings() const {
        ArchiveSettings settings;
        settings.Image = Bytes(3, plan_.Image);
        settings.DeviceName = "device";
        settings.Points = {{1, 2}, {3, 4.0 * plan_.Image}};
        return settings;
    }

    ArchiveStore& store_;
    const PlannedUpload plan_;
    ArchiveUpload row_;
    std::optional<SeriesMerge> merge_;
    AlikeCounter alike_;
    std::size_t next_ = 0;
};

inline void FileUpload(ArchiveStore& store, const PlannedUpload& plan) {
    RunningUpload upload(store, plan);
    while (upload.File(100)) {
    }
    upload.End();
}

/// Hands over all that there is.
inline void HandOverAll(ArchiveStore& local, ArchiveStore& shared,
                        int portion = HandOver::UsualPortion) {
    HandOver hand(local, shared, portion);
    while (hand.Portion()) {
    }
}

/// What an archive holds of a logger, whatever its rows are numbered.
struct WholeLogger {
    using Record = std::tuple<std::uint32_t, std::array<std::uint16_t, 10>, std::int32_t,
                              std::int64_t>;  ///< the last: the begin of its upload
    using Upload =
        std::tuple<std::int64_t, std::optional<std::int64_t>, std::optional<ArchiveOutcome>,
                   std::int32_t, std::string, std::int64_t, std::int64_t, Bytes>;

    std::string Name;
    std::int64_t Count = 0;
    std::int64_t CountOfUploads = 0;
    std::size_t CountOfSettings = 0;
    std::vector<Upload> Uploads;
    std::vector<Record> Records;
    bool operator==(const WholeLogger&) const = default;
};

[[nodiscard]] inline WholeLogger Whole(ArchiveStore& store, const ArchiveLogger& logger) {
    WholeLogger whole{.Name = logger.Name,
                      .Count = logger.Records,
                      .CountOfUploads = logger.Uploads,
                      .CountOfSettings = store.SettingsOf(logger.Id).size(),
                      .Uploads = {},
                      .Records = {}};
    std::map<std::int64_t, Bytes> images;
    for (const ArchiveSettings& settings : store.SettingsOf(logger.Id)) {
        images[settings.Id] = settings.Image;
    }
    std::map<std::int64_t, std::int64_t> begins;
    for (const ArchiveUpload& upload : store.UploadsOf(logger.Id)) {
        begins[upload.Id] = upload.Begin;
        whole.Uploads.emplace_back(upload.Begin, upload.End, upload.Outcome, upload.Firmware,
                                   upload.Name, upload.Said, upload.Received,
                                   images[upload.Settings]);
    }
    std::vector<ArchiveRecord> rows;
    store.RecordsFrom(logger.Id, 1, 1'000'000, rows);
    for (const ArchiveRecord& row : rows) {
        whole.Records.emplace_back(row.Time, row.Counts, row.Nth, begins[row.Upload]);
    }
    return whole;
}

[[nodiscard]] inline std::map<Mac, WholeLogger> Whole(ArchiveStore& store) {
    std::map<Mac, WholeLogger> all;
    for (const ArchiveLogger& logger : store.Loggers()) {
        all[logger.Mac] = Whole(store, logger);
    }
    return all;
}

}  // namespace testing_support

#endif  // ORVIA_TESTS_ARCHIVE_HAND_OVER_BENCH_H
