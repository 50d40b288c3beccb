// Records of an archive. They are many: four counts go to and fro in one number, which costs the
// driver a quarter.

#include <string>

#include "platform/qt/sql_store.h"

namespace {

constexpr int BitsPerTime = 32;

void Unpack(std::int64_t packed, std::size_t first, ArchiveRecord& record) {
    auto number = static_cast<std::uint64_t>(packed);
    for (std::size_t i = 0; i < SqlCountsPerNumber && first + i < record.Counts.size(); ++i) {
        record.Counts[first + i] = static_cast<std::uint16_t>(number);
        number >>= SqlBitsPerCount;
    }
}

ArchiveRecord RecordRow(const SqlRows& row) {
    ArchiveRecord record;
    record.Place = row->Integer(0);
    const std::int64_t timeAndNth = row->Integer(1);
    record.Time = static_cast<std::uint32_t>(timeAndNth);
    record.Nth = static_cast<std::int32_t>(timeAndNth >> BitsPerTime);
    record.Upload = row->Integer(2);
    for (std::size_t i = 0; i < SqlCountNumbers; ++i) {
        Unpack(row->Integer(3 + static_cast<int>(i)), i * SqlCountsPerNumber, record);
    }
    return record;
}

void Collect(SqlRows& rows, std::vector<ArchiveRecord>& out) {
    while (rows.Next()) {
        out.push_back(RecordRow(rows));
    }
}

constexpr const char* ChangePlace =
    "UPDATE records SET place = ?, upload = ? WHERE logger = ? AND place = ?";
// No two records may share a place at any time: they all go to the other side of zero and back.
constexpr const char* TakeAway =
    "UPDATE records SET place = -place - ? WHERE logger = ? AND place > ?";
constexpr const char* PutBack = "UPDATE records SET place = -place WHERE logger = ? AND place < 0";

}  // namespace

void SqlStore::RecordsFrom(std::int64_t logger, std::int64_t place, int most,
                           std::vector<ArchiveRecord>& out) {
    SqlRows rows(Prepared(records_.FromPlace), logger, place, most);
    Collect(rows, out);
}

void SqlStore::RecordsOfUpload(const ArchiveUpload& upload, std::int64_t place, int most,
                               std::vector<ArchiveRecord>& out) {
    SqlRows rows(Prepared(records_.OfUpload), upload.Logger, place, upload.Id, most);
    Collect(rows, out);
}

void SqlStore::RecordsAt(std::int64_t logger, std::uint32_t time, std::vector<ArchiveRecord>& out) {
    SqlRows rows(Prepared(records_.AtTime), logger, time);
    Collect(rows, out);
}

std::optional<ArchiveRecord> SqlStore::LastRecord(std::int64_t logger) {
    SqlRows rows(Prepared(records_.Last), logger);
    return rows.Next() ? std::optional(RecordRow(rows)) : std::nullopt;
}

std::optional<std::int64_t> SqlStore::PlaceBefore(std::int64_t logger, std::int64_t place) {
    SqlRows rows(Prepared(records_.PlaceBefore), logger, place);
    return rows.Next() && !rows->IsNull(0) ? std::optional(rows->Integer(0)) : std::nullopt;
}

std::optional<ArchiveRange<std::uint32_t>> SqlStore::TimesOf(std::int64_t logger) {
    // Each of the two is the end of an index; asked for both at once, the engine reads all of it.
    SqlRows least(Prepared(records_.LeastTime), logger);
    if (!least.Next() || least->IsNull(0)) {
        return std::nullopt;
    }
    SqlRows greatest(Prepared(records_.GreatestTime), logger);
    static_cast<void>(greatest.Next());
    return ArchiveRange<std::uint32_t>{static_cast<std::uint32_t>(least->Integer(0)),
                                       static_cast<std::uint32_t>(greatest->Integer(0))};
}

std::optional<ArchiveRange<std::int64_t>> SqlStore::PlacesWithin(
    std::int64_t logger, const ArchiveRange<std::uint32_t>& times) {
    SqlRows rows(Prepared(records_.PlacesWithin), logger, times.First, times.Last);
    if (!rows.Next() || rows->IsNull(0)) {
        return std::nullopt;
    }
    return ArchiveRange<std::int64_t>{rows->Integer(0), rows->Integer(1)};
}

void SqlStore::MoveRecord(std::int64_t logger, std::int64_t place, std::int64_t to,
                          std::int64_t upload) {
    Prepared(ChangePlace).Run(to, upload, logger, place);
}

void SqlStore::OpenRoom(std::int64_t logger, std::int64_t place, std::int64_t by) {
    Prepared(TakeAway).Run(by, logger, place);
    Prepared(PutBack).Run(logger);
}

int SqlStore::DeleteRecords(std::int64_t logger, int most) {
    SqlStatement& remove = Prepared(
        "DELETE FROM records WHERE logger = ? AND place IN "
        "(SELECT place FROM records WHERE logger = ? ORDER BY place LIMIT ?)");
    remove.Run(logger, logger, most);
    return remove.Changed();
}
