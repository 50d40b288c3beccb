// Records of an archive on a server.

#include "platform/qt/server_records.h"

#include <array>
#include <charconv>
#include <string>

#include "platform/qt/server_archive.h"
#include "platform/qt/text_qt.h"

namespace {

// All operators on bits bind alike there.
#define ORVIA_RECORD_COLUMNS                                              \
    "SELECT place, time | (nth::bigint << 32), upload, "                  \
    "c1 | (c2::bigint << 16) | (c3::bigint << 32) | (c4::bigint << 48), " \
    "c5 | (c6::bigint << 16) | (c7::bigint << 32) | (c8::bigint << 48), " \
    "c9 | (c10::bigint << 16) FROM records WHERE logger = ? "

constexpr const char* FromPlace = ORVIA_RECORD_COLUMNS "AND place >= ? ORDER BY place LIMIT ?";
constexpr const char* OfUpload =
    ORVIA_RECORD_COLUMNS "AND place >= ? AND upload = ? ORDER BY place LIMIT ?";
constexpr const char* AtTime = ORVIA_RECORD_COLUMNS "AND time = ? ORDER BY place";
constexpr const char* Last = ORVIA_RECORD_COLUMNS "ORDER BY place DESC LIMIT 1";

#undef ORVIA_RECORD_COLUMNS

constexpr const char* Insert =
    "INSERT INTO records(logger, place, time, nth, upload, c1, c2, c3, c4, c5, c6, c7, c8, c9, "
    "c10) "
    "SELECT CAST(? AS integer), * FROM unnest(CAST(? AS bigint[]), CAST(? AS bigint[]), "
    "CAST(? AS integer[]), CAST(? AS integer[]), CAST(? AS integer[]), CAST(? AS integer[]), "
    "CAST(? AS integer[]), CAST(? AS integer[]), CAST(? AS integer[]), CAST(? AS integer[]), "
    "CAST(? AS integer[]), CAST(? AS integer[]), CAST(? AS integer[]), CAST(? AS integer[]))";

/// Records of one statement.
constexpr std::size_t MostAtOnce = 5000;

/// `of` each record, as the server takes an array.
template <typename Of>
QString Array(std::span<const ArchiveRecord> records, Of of) {
    std::string text = "{";
    std::array<char, 24> digits = {};
    for (const ArchiveRecord& record : records) {
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), of(record));
        text.append(digits.data(), end.ptr);
        text += ',';
    }
    text.back() = '}';
    return ToQt(text);
}

}  // namespace

const SqlRecordTexts& ServerRecordTexts() {
    static constexpr SqlRecordTexts texts = {
        .FromPlace = FromPlace, .OfUpload = OfUpload, .AtTime = AtTime, .Last = Last};
    return texts;
}

void ServerArchive::AddRecords(std::int64_t logger, std::span<const ArchiveRecord> records) {
    for (auto rest = records; !rest.empty();) {
        const auto some = rest.first(std::min(rest.size(), MostAtOnce));
        SqlStatement& insert = Prepared(Insert);
        int value = 0;
        insert.Bind(value++, logger);
        insert.Bind(value++, Array(some, [](const ArchiveRecord& one) { return one.Place; }));
        insert.Bind(value++, Array(some, [](const ArchiveRecord& one) { return one.Time; }));
        insert.Bind(value++, Array(some, [](const ArchiveRecord& one) { return one.Nth; }));
        insert.Bind(value++, Array(some, [](const ArchiveRecord& one) { return one.Upload; }));
        for (std::size_t i = 0; i < ArchiveRecord::Channels; ++i) {
            insert.Bind(value++,
                        Array(some, [i](const ArchiveRecord& one) { return one.Counts[i]; }));
        }
        insert.Run();
        rest = rest.subspan(some.size());
    }
}
