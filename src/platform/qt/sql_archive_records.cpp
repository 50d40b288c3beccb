// Records of an archive in a file.

#include <string>

#include "platform/qt/sql_archive.h"

namespace {

/// Counts `first` and on, the first in the lowest bits.
std::int64_t Packed(const ArchiveRecord& record, std::size_t first) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < SqlCountsPerNumber && first + i < record.Counts.size(); ++i) {
        number |= std::uint64_t{record.Counts[first + i]} << i * SqlBitsPerCount;
    }
    return static_cast<std::int64_t>(number);
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

}  // namespace

const SqlRecordTexts& SqliteRecordTexts() {
    static constexpr SqlRecordTexts texts = {
        .FromPlace = FromPlace, .OfUpload = OfUpload, .AtTime = AtTime, .Last = LastPlace};
    return texts;
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
            for (std::size_t i = 0; i < SqlCountNumbers; ++i) {
                insert.Bind(value++, Packed(record, i * SqlCountsPerNumber));
            }
            insert.Bind(value++, record.Nth);
            insert.Bind(value++, record.Upload);
        }
        insert.Run();
        rest = rest.subspan(count);
    }
    written_ += static_cast<int>(records.size());
}
