#include "archive/archive_reader.h"

#include <algorithm>
#include <limits>
#include <map>

#include "archive/archive_rows.h"
#include "archive/archive_transaction.h"

namespace {

constexpr std::int64_t FirstOfPlaces = 1;
/// Records deleted at a time: a moment's work.
constexpr int DeletedAtOnce = 2000;

std::optional<ArchiveRecord> FirstRecord(ArchiveStore& store, std::int64_t logger) {
    std::vector<ArchiveRecord> rows;
    store.RecordsFrom(logger, FirstOfPlaces, 1, rows);
    return rows.empty() ? std::nullopt : std::optional(rows.front());
}

/// Numbers the settings of a series as records with them come.
class SettingsOfUploads {
 public:
    SettingsOfUploads(ArchiveStore& store, std::int64_t logger) : rows_(store.SettingsOf(logger)) {
        for (const ArchiveUpload& upload : store.UploadsOf(logger)) {
            uploads_[upload.Id] = upload.Settings;
        }
    }

    /// The number of an upload's settings in `settings`, which they are put into the first time.
    [[nodiscard]] std::uint32_t NumberOf(std::int64_t upload,
                                         std::vector<SeriesSettings>& settings) {
        if (upload != lastUpload_) {
            const std::int64_t id = uploads_[upload];
            const auto [number, isNew] =
                numbers_.try_emplace(id, static_cast<std::uint32_t>(settings.size()));
            if (isNew) {
                settings.push_back(SettingsOfRow(RowOf(id)));
            }
            lastUpload_ = upload;
            lastNumber_ = number->second;
        }
        return lastNumber_;
    }

 private:
    [[nodiscard]] ArchiveSettings RowOf(std::int64_t id) const {
        const auto row = std::find_if(rows_.begin(), rows_.end(),
                                      [id](const ArchiveSettings& one) { return one.Id == id; });
        return row == rows_.end() ? ArchiveSettings{} : *row;
    }

    std::vector<ArchiveSettings> rows_;
    std::map<std::int64_t, std::int64_t> uploads_;
    std::map<std::int64_t, std::uint32_t> numbers_;
    std::int64_t lastUpload_ = 0;  // no upload has it
    std::uint32_t lastNumber_ = 0;
};

}  // namespace

std::vector<LoggerSummary> ListLoggers(ArchiveStore& store) {
    const ArchiveTransaction reading(store, ArchiveTransaction::Kind::Reading);
    std::vector<LoggerSummary> list;
    std::int64_t records = 0;
    for (ArchiveLogger& logger : store.Loggers()) {
        records += logger.Records;
        list.push_back({.Logger = std::move(logger), .First = {}, .Last = {}});
        const std::int64_t id = list.back().Logger.Id;
        list.back().First = FirstRecord(store, id);
        list.back().Last = store.LastRecord(id);
    }
    const std::int64_t size = store.SizeInBytes();
    for (LoggerSummary& one : list) {
        one.SizeInBytes = records > 0
                              ? static_cast<std::int64_t>(static_cast<double>(size) *
                                                          static_cast<double>(one.Logger.Records) /
                                                          static_cast<double>(records))
                              : 0;
    }
    return list;
}

Series ReadSeries(ArchiveStore& store, std::int64_t logger, const PackedTimes& period) {
    const ArchiveTransaction reading(store, ArchiveTransaction::Kind::Reading);
    Series series;
    const auto places = store.PlacesWithin(logger, period);
    if (!places) {
        return series;
    }
    std::vector<ArchiveRecord> rows;
    store.RecordsWithin(logger, *places, period, rows);
    SettingsOfUploads settings(store, logger);
    series.Records.reserve(rows.size());
    for (const ArchiveRecord& row : rows) {
        series.Records.push_back({.Record = HistoryRecordOf(row),
                                  .Settings = settings.NumberOf(row.Upload, series.Settings)});
    }
    return series;
}

Series ReadSeries(ArchiveStore& store, std::int64_t logger) {
    return ReadSeries(store, logger,
                      {.First = 0, .Last = std::numeric_limits<std::uint32_t>::max()});
}

void DeleteLogger(ArchiveStore& store, std::int64_t logger,
                  const ArchiveStore::Meanwhile& meanwhile) {
    for (bool more = true; more; meanwhile()) {
        ArchiveTransaction transaction(store, ArchiveTransaction::Kind::Writing);
        auto row = store.LoggerOf(logger);
        if (!row) {
            return;
        }
        const int deleted = store.DeleteRecords(logger, DeletedAtOnce);
        more = deleted == DeletedAtOnce;
        if (more) {
            row->Records -= deleted;
            ++row->Revision;
            store.UpdateLogger(*row);
        } else {
            store.DeleteLogger(logger);
        }
        transaction.Commit();
    }
}
