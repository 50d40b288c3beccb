// Records of an archive in a file. They are many: four counts go to and fro in one number, which
// costs the driver a quarter.

#include <array>
#include <string>

#include "platform/qt/sql_archive.h"

namespace {

constexpr int BitsPerCount = 16;
constexpr int BitsPerTime = 32;
constexpr std::size_t CountsPerNumber = 4;
constexpr std::size_t Numbers = 3;

/// Counts `first` and on, the first in the lowest bits.
std::int64_t Packed(const ArchiveRecord& record, std::size_t first) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < CountsPerNumber && first + i < record.Counts.size(); ++i) {
        number |= std::uint64_t{record.Counts[first + i]} << i * BitsPerCount;
    }
    return static_cast<std::int64_t>(number);
}

void Unpack(std::int64_t packed, std::size_t first, ArchiveRecord& record) {
    auto number = static_cast<std::uint64_t>(packed);
    for (std::size_t i = 0; i < CountsPerNumber && first + i < record.Counts.size(); ++i) {
        record.Counts[first + i] = static_cast<std::uint16_t>(number);
        number >>= BitsPerCount;
    }
}

ArchiveRecord RecordRow(const SqlRows& row) {
    ArchiveRecord record;
    record.Place = row->Integer(0);
    const std::int64_t timeAndNth = row->Integer(1);
    record.Time = static_cast<std::uint32_t>(timeAndNth);
    record.Nth = static_cast<std::int32_t>(timeAndNth >> BitsPerTime);
    record.Upload = row->Integer(2);
    for (std::size_t i = 0; i < Numbers; ++i) {
        Unpack(row->Integer(3 + static_cast<int>(i)), i * CountsPerNumber, record);
    }
    return record;
}

void Collect(SqlRows& rows, std::vector<ArchiveRecord>& out) {
    while (rows.Next()) {
        out.push_back(RecordRow(rows));
    }
}

#define ORVIA_RECORD_COLUMNS                      \
    "SELECT place, time | (nth << 32), upload, "  \
    "c1 | (c2 << 16) | (c3 << 32) | (c4 << 48), " \
    "c5 | (c6 << 16) | (c7 << 32) | (c8 << 48), " \
    "c9 | (c10 << 16) FROM records WHERE logger = ? "

constexpr const char* FromPlace = ORVIA_RECORD_COLUMNS "AND place >= ? ORDER BY place LIMIT ?";
constexpr const char* AtTime = ORVIA_RECORD_COLUMNS "AND time = ? ORDER BY place";
constexpr const char* OfUpload =
    ORVIA_RECORD_COLUMNS "AND place >= ? AND upload = ? ORDER BY place LIMIT ?";
constexpr const char* LastPlace = ORVIA_RECORD_COLUMNS "ORDER BY place DESC LIMIT 1";

#undef ORVIA_RECORD_COLUMNS

/// Records that one statement inserts: the driver's part of each is then small.
constexpr std::size_t Group = 16;

constexpr const char* InsertRows =
    "INSERT INTO records SELECT ?, place, time, "
    "a & 65535, (a >> 16) & 65535, (a >> 32) & 65535, (a >> 48) & 65535, "
    "b & 65535, (b >> 16) & 65535, (b >> 32) & 65535, (b >> 48) & 65535, "
    "c & 65535, (c >> 16) & 65535, nth, upload FROM (";
constexpr const char* OneRow =
    "SELECT ? AS place, ? AS time, ? AS a, ? AS b, ? AS c, ? AS nth, ? AS upload";
constexpr const char* FurtherRow = " UNION ALL SELECT ?, ?, ?, ?, ?, ?, ?";

/// The statement that inserts so many records.
std::string InsertText(std::size_t records) {
    std::string text = InsertRows;
    text += OneRow;
    for (std::size_t i = 1; i < records; ++i) {
        text += FurtherRow;
    }
    return text + ")";
}

const char* InsertOf(std::size_t records) {
    static const std::string one = InsertText(1);
    static const std::string group = InsertText(Group);
    return records == Group ? group.c_str() : one.c_str();
}

constexpr const char* ChangePlace =
    "UPDATE records SET place = ?, upload = ? WHERE logger = ? AND place = ?";
// No two records may share a place at any time: they all go to the other side of zero and back.
constexpr const char* TakeAway =
    "UPDATE records SET place = -place - ? WHERE logger = ? AND place > ?";
constexpr const char* PutBack = "UPDATE records SET place = -place WHERE logger = ? AND place < 0";

}  // namespace

void SqlArchive::RecordsFrom(std::int64_t logger, std::int64_t place, int most,
                             std::vector<ArchiveRecord>& out) {
    SqlRows rows(Prepared(FromPlace), logger, place, most);
    Collect(rows, out);
}

void SqlArchive::RecordsOfUpload(const ArchiveUpload& upload, std::int64_t place, int most,
                                 std::vector<ArchiveRecord>& out) {
    SqlRows rows(Prepared(OfUpload), upload.Logger, place, upload.Id, most);
    Collect(rows, out);
}

void SqlArchive::RecordsAt(std::int64_t logger, std::uint32_t time,
                           std::vector<ArchiveRecord>& out) {
    SqlRows rows(Prepared(AtTime), logger, time);
    Collect(rows, out);
}

std::optional<ArchiveRecord> SqlArchive::LastRecord(std::int64_t logger) {
    SqlRows rows(Prepared(LastPlace), logger);
    return rows.Next() ? std::optional(RecordRow(rows)) : std::nullopt;
}

std::optional<std::int64_t> SqlArchive::PlaceBefore(std::int64_t logger, std::int64_t place) {
    SqlRows rows(Prepared("SELECT max(place) FROM records WHERE logger = ? AND place < ?"), logger,
                 place);
    return rows.Next() && !rows->IsNull(0) ? std::optional(rows->Integer(0)) : std::nullopt;
}

std::optional<ArchiveRange<std::uint32_t>> SqlArchive::TimesOf(std::int64_t logger) {
    // Each of the two is the end of an index; asked for both at once, the engine reads all of it.
    SqlRows least(Prepared("SELECT min(time) FROM records WHERE logger = ?"), logger);
    if (!least.Next() || least->IsNull(0)) {
        return std::nullopt;
    }
    SqlRows greatest(Prepared("SELECT max(time) FROM records WHERE logger = ?"), logger);
    static_cast<void>(greatest.Next());
    return ArchiveRange<std::uint32_t>{static_cast<std::uint32_t>(least->Integer(0)),
                                       static_cast<std::uint32_t>(greatest->Integer(0))};
}

std::optional<ArchiveRange<std::int64_t>> SqlArchive::PlacesWithin(
    std::int64_t logger, const ArchiveRange<std::uint32_t>& times) {
    SqlRows rows(Prepared("SELECT min(place), max(place) FROM records "
                          "WHERE logger = ? AND time BETWEEN ? AND ?"),
                 logger, times.First, times.Last);
    if (!rows.Next() || rows->IsNull(0)) {
        return std::nullopt;
    }
    return ArchiveRange<std::int64_t>{rows->Integer(0), rows->Integer(1)};
}

void SqlArchive::AddRecords(std::int64_t logger, std::span<const ArchiveRecord> records) {
    for (auto rest = records; !rest.empty();) {
        const std::size_t count = rest.size() >= Group ? Group : 1;
        SqlStatement& insert = Prepared(InsertOf(count));
        int value = 0;
        insert.Bind(value++, logger);
        for (const ArchiveRecord& record : rest.first(count)) {
            insert.Bind(value++, record.Place);
            insert.Bind(value++, record.Time);
            for (std::size_t i = 0; i < Numbers; ++i) {
                insert.Bind(value++, Packed(record, i * CountsPerNumber));
            }
            insert.Bind(value++, record.Nth);
            insert.Bind(value++, record.Upload);
        }
        insert.Run();
        rest = rest.subspan(count);
    }
    written_ += static_cast<int>(records.size());
}

void SqlArchive::MoveRecord(std::int64_t logger, std::int64_t place, std::int64_t to,
                            std::int64_t upload) {
    Prepared(ChangePlace).Run(to, upload, logger, place);
}

void SqlArchive::OpenRoom(std::int64_t logger, std::int64_t place, std::int64_t by) {
    Prepared(TakeAway).Run(by, logger, place);
    Prepared(PutBack).Run(logger);
}

int SqlArchive::DeleteRecords(std::int64_t logger, int most) {
    SqlStatement& remove = Prepared(
        "DELETE FROM records WHERE logger = ? AND place IN "
        "(SELECT place FROM records WHERE logger = ? ORDER BY place LIMIT ?)");
    remove.Run(logger, logger, most);
    return remove.Changed();
}
