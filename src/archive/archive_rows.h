#ifndef ORVIA_ARCHIVE_ARCHIVE_ROWS_H
#define ORVIA_ARCHIVE_ARCHIVE_ROWS_H

#include <cstddef>
#include <cstdint>

#include "archive/record_moment.h"
#include "archive/series.h"
#include "history/history_store.h"
#include "platform/archive_store.h"

// Between the rows of an archive and what the rest of the console works with.

/// A packed time as one number, which orders as the times do.
[[nodiscard]] std::uint32_t TimeNumber(const std::array<std::uint8_t, cmd::PackedTimeSize>& packed);
[[nodiscard]] std::array<std::uint8_t, cmd::PackedTimeSize> PackedTimeOf(std::uint32_t number);
/// The number of a moment written as a date that there is; the least or the greatest of all where
/// no packed time tells it.
[[nodiscard]] std::uint32_t TimeNumberAt(Moment moment);

/// A record as the logger gave it.
[[nodiscard]] HistoryRecord HistoryRecordOf(const ArchiveRecord& row);

/// What makes two records the same one: time, counts, and which of those alike it is.
struct RecordIdentity {
    std::uint32_t Time = 0;
    std::int32_t Nth = 1;
    std::array<std::uint16_t, ArchiveRecord::Channels> Counts = {};
    bool operator==(const RecordIdentity&) const = default;
};

[[nodiscard]] RecordIdentity IdentityOf(const HistoryRecord& record, std::int32_t nth);
[[nodiscard]] RecordIdentity IdentityOf(const ArchiveRecord& row);

/// Spreads identities over the buckets of a table.
struct RecordIdentityHash {
    [[nodiscard]] std::size_t operator()(const RecordIdentity& identity) const;
};

/// What records of a logger are read with, to be kept. The image is the one that was read, unless
/// the settings have been changed since; then it is made from them.
[[nodiscard]] ArchiveSettings SettingsRow(const LoggerRecord& logger, const FlowTable& table);

/// The same, back from the archive. Whatever the row holds, the result keeps within the ranges of
/// settings; a row without a whole image gives those of a logger fresh from the box.
[[nodiscard]] SeriesSettings SettingsOfRow(const ArchiveSettings& row);

#endif  // ORVIA_ARCHIVE_ARCHIVE_ROWS_H
