#include "archive/archive_reader.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

#include "archive/archive_rows.h"
#include "archive/archive_transaction.h"
#include "archive/upload_settings.h"

namespace {

constexpr std::int64_t FirstOfPlaces = 1;
/// Records deleted at a time: a moment's work.
constexpr int DeletedAtOnce = 2000;

std::optional<ArchiveRecord> FirstRecord(ArchiveStore& store, std::int64_t logger) {
    std::vector<ArchiveRecord> rows;
    store.RecordsFrom(logger, FirstOfPlaces, 1, rows);
    return rows.empty() ? std::nullopt : std::optional(rows.front());
}

/// So far a packed time that is no date can lie from the same moment written as one.
constexpr Moment RollOfDates = 5 * SecondsPerDay;
constexpr std::uint32_t LatestTime = std::numeric_limits<std::uint32_t>::max();
/// Records read at a time.
constexpr int ReadAtOnce = 4096;

using Places = ArchiveRange<std::int64_t>;

Places Span(const std::optional<Places>& one, const std::optional<Places>& other) {
    if (!one || !other) {
        return one ? *one : *other;
    }
    return {.First = std::min(one->First, other->First), .Last = std::max(one->Last, other->Last)};
}

/// The range of packed times that holds all records of a period, and reaches to a record in any
/// case.
ArchiveRange<std::uint32_t> TimesAround(const Period& period,
                                        const ArchiveRange<std::uint32_t>& known) {
    const Moment first = std::min(period.Begin, MomentOf(PackedTimeOf(known.Last)));
    const Moment last = std::max(period.End, MomentOf(PackedTimeOf(known.First)));
    return {.First = TimeNumberAt(first - RollOfDates), .Last = TimeNumberAt(last + RollOfDates)};
}

/// Places of the records that a period's figures hang on; nothing for an empty series. Before them
/// all records are earlier than the period, behind them all are later: so no pair that reaches
/// into the period, or over it, is missing.
std::optional<Places> PlacesFor(ArchiveStore& store, std::int64_t logger, const Period& period) {
    const auto known = store.TimesOf(logger);
    if (!known) {
        return std::nullopt;
    }
    const auto [lowest, highest] = TimesAround(period, *known);
    const auto inside = store.PlacesWithin(logger, {.First = lowest, .Last = highest});
    const auto earlier =
        lowest == 0 ? std::nullopt : store.PlacesWithin(logger, {.First = 0, .Last = lowest - 1});
    const auto later = highest == LatestTime
                           ? std::nullopt
                           : store.PlacesWithin(logger, {.First = highest + 1, .Last = LatestTime});
    std::int64_t first = Span(inside, later ? later : inside).First;
    std::int64_t last = Span(inside, earlier ? earlier : inside).Last;
    return Places{.First = store.PlaceBefore(logger, first).value_or(first), .Last = last};
}

/// Reads records from a place on, until `ends` says so of one, which is still read.
template <typename Ends>
Series ReadRecords(ArchiveStore& store, std::int64_t logger, std::int64_t place, Ends ends) {
    Series series;
    UploadSettings settings(store, logger);
    std::vector<ArchiveRecord> rows;
    do {
        rows.clear();
        store.RecordsFrom(logger, place, ReadAtOnce, rows);
        for (const ArchiveRecord& row : rows) {
            series.Records.push_back({.Record = HistoryRecordOf(row),
                                      .Settings = settings.NumberOf(row.Upload, series.Settings)});
            if (ends(row)) {
                return series;
            }
            place = row.Place + 1;
        }
    } while (!rows.empty());
    return series;
}

}  // namespace

std::vector<LoggerSummary> ListLoggers(ArchiveStore& store,
                                       const std::vector<LoggerSummary>& known) {
    const ArchiveTransaction reading(store, ArchiveTransaction::Kind::Reading);
    std::unordered_map<std::int64_t, const LoggerSummary*> byId;
    for (const LoggerSummary& one : known) {
        byId.emplace(one.Logger.Id, &one);
    }
    std::vector<LoggerSummary> list;
    std::int64_t records = 0;
    for (ArchiveLogger& logger : store.Loggers()) {
        records += logger.Records;
        const auto before = byId.find(logger.Id);
        list.push_back({.Logger = std::move(logger), .First = {}, .Last = {}});
        LoggerSummary& one = list.back();
        if (before != byId.end() && before->second->Logger.Revision == one.Logger.Revision) {
            one.First = before->second->First;
            one.Last = before->second->Last;
        } else {
            one.First = FirstRecord(store, one.Logger.Id);
            one.Last = store.LastRecord(one.Logger.Id);
        }
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

Series ReadSeries(ArchiveStore& store, std::int64_t logger, const Period& period) {
    const ArchiveTransaction reading(store, ArchiveTransaction::Kind::Reading);
    const auto places = PlacesFor(store, logger, period);
    if (!places) {
        return {};
    }
    // The first behind the last one is read too.
    return ReadRecords(store, logger, places->First,
                       [&](const ArchiveRecord& row) { return row.Place > places->Last; });
}

Series ReadSeries(ArchiveStore& store, std::int64_t logger) {
    const ArchiveTransaction reading(store, ArchiveTransaction::Kind::Reading);
    return ReadRecords(store, logger, FirstOfPlaces, [](const ArchiveRecord&) { return false; });
}

Deletion DeletePiece(ArchiveStore& store, const ArchiveLogger& asked) {
    ArchiveTransaction transaction(store, ArchiveTransaction::Kind::Writing);
    auto row = store.LoggerOf(asked.Id);
    if (!row) {
        return {.Now = Deletion::State::Done};
    }
    if (row->Uploads != asked.Uploads) {
        return {.Now = Deletion::State::Refused, .Left = row->Records};
    }
    const int deleted = store.DeleteRecords(asked.Id, DeletedAtOnce);
    const bool more = deleted == DeletedAtOnce;
    if (more) {
        row->Records -= deleted;
        ++row->Revision;
        store.UpdateLogger(*row);
    } else {
        store.DeleteLogger(asked.Id);
    }
    transaction.Commit();
    return more ? Deletion{.Now = Deletion::State::GoesOn, .Left = row->Records}
                : Deletion{.Now = Deletion::State::Done};
}
