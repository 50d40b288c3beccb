#ifndef ORVIA_PLATFORM_QT_SQL_STORE_H
#define ORVIA_PLATFORM_QT_SQL_STORE_H

#include <memory>

#include "platform/archive_store.h"
#include "platform/qt/sql_statement.h"

/// Statements on records: where they are many, each engine is asked in its own way. Those that read
/// records give place; time, and `nth` above 32 bits; upload; four counts in a number, the first in
/// the lowest bits, three times.
struct SqlRecordTexts {
    const char* FromPlace = nullptr;  ///< of logger, place, most
    const char* OfUpload = nullptr;   ///< of logger, place, upload, most
    const char* AtTime = nullptr;     ///< of logger, time
    const char* Last = nullptr;       ///< of logger
    // Each of the two is the end of an index; asked for both at once, an engine may read all.
    const char* LeastTime = "SELECT min(time) FROM records WHERE logger = ?";
    const char* GreatestTime = "SELECT max(time) FROM records WHERE logger = ?";
    /// Of logger, place.
    const char* PlaceBefore = "SELECT max(place) FROM records WHERE logger = ? AND place < ?";
    /// Of logger, first time, last time.
    const char* PlacesWithin =
        "SELECT min(place), max(place) FROM records WHERE logger = ? AND time BETWEEN ? AND ?";
};

// How counts lie in the numbers that records are read by.
inline constexpr int SqlBitsPerCount = 16;
inline constexpr std::size_t SqlCountsPerNumber = 4;
inline constexpr std::size_t SqlCountNumbers = 3;

/// What an archive of tables does alike on every engine: its rows.
class SqlStore : public ArchiveStore {
 public:
    SqlStore(const SqlStore&) = delete;
    SqlStore& operator=(const SqlStore&) = delete;

    [[nodiscard]] std::vector<ArchiveLogger> Loggers() override;
    [[nodiscard]] std::optional<ArchiveLogger> FindLogger(
        const std::array<std::uint8_t, 6>& mac) override;
    [[nodiscard]] std::optional<ArchiveLogger> LoggerOf(std::int64_t id) override;
    void AddLogger(ArchiveLogger& logger) override;
    void UpdateLogger(const ArchiveLogger& logger) override;
    void DeleteLogger(std::int64_t logger) override;

    [[nodiscard]] std::vector<ArchiveSettings> SettingsOf(std::int64_t logger) override;
    void AddSettings(std::int64_t logger, ArchiveSettings& settings) override;

    [[nodiscard]] std::vector<ArchiveUpload> UploadsOf(std::int64_t logger) override;
    [[nodiscard]] std::optional<std::int64_t> LastBegin(std::int64_t logger) override;
    [[nodiscard]] std::vector<std::int64_t> UploadsBegunBehind(std::int64_t logger,
                                                               std::int64_t begin) override;
    void AddUpload(ArchiveUpload& upload) override;
    void UpdateUpload(const ArchiveUpload& upload) override;
    [[nodiscard]] std::optional<ArchiveUpload> UploadFrom(std::int64_t logger,
                                                          const std::string& origin) override;

    void RecordsFrom(std::int64_t logger, std::int64_t place, int most,
                     std::vector<ArchiveRecord>& out) override;
    void RecordsAt(std::int64_t logger, std::uint32_t time,
                   std::vector<ArchiveRecord>& out) override;
    [[nodiscard]] std::optional<ArchiveRecord> LastRecord(std::int64_t logger) override;
    [[nodiscard]] std::optional<std::int64_t> PlaceBefore(std::int64_t logger,
                                                          std::int64_t place) override;
    [[nodiscard]] std::optional<ArchiveRange<std::uint32_t>> TimesOf(std::int64_t logger) override;
    [[nodiscard]] std::optional<ArchiveRange<std::int64_t>> PlacesWithin(
        std::int64_t logger, const ArchiveRange<std::uint32_t>& times) override;
    void MoveRecord(std::int64_t logger, std::int64_t place, std::int64_t to,
                    std::int64_t upload) override;
    void OpenRoom(std::int64_t logger, std::int64_t place, std::int64_t by) override;
    int DeleteRecords(std::int64_t logger, int most) override;

    [[nodiscard]] std::string Identity() override;
    [[nodiscard]] std::vector<ArchiveUpload> UploadsOwed(const std::string& target,
                                                         int most) override;
    [[nodiscard]] std::int64_t CountOwed(const std::string& target) override;
    void NoteHandedOver(const std::string& target, const ArchiveUpload& upload) override;
    void ForgetHandedOver(const std::string& target) override;
    void RecordsOfUpload(const ArchiveUpload& upload, std::int64_t place, int most,
                         std::vector<ArchiveRecord>& out) override;

    [[nodiscard]] std::vector<ArchiveRound> Rounds(int most) override;
    void KeepRound(ArchiveRound& round) override;
    void DropRounds(std::int64_t before) override;

 protected:
    explicit SqlStore(const SqlRecordTexts& texts) : records_(texts) {}

    [[nodiscard]] SqlStatement& Prepared(const char* text);
    /// Whether a logger that is looked for is kept from others until the transaction ends.
    [[nodiscard]] virtual bool HoldsLoggers() const { return false; }

    std::unique_ptr<SqlStatements> statements_;  ///< there while it is open

 private:
    const SqlRecordTexts& records_;
};

#endif  // ORVIA_PLATFORM_QT_SQL_STORE_H
