#ifndef ORVIA_PLATFORM_QT_SQL_ARCHIVE_H
#define ORVIA_PLATFORM_QT_SQL_ARCHIVE_H

#include <QSqlDatabase>
#include <QString>
#include <functional>
#include <memory>

#include "platform/archive_store.h"
#include "platform/qt/sql_schema.h"
#include "platform/qt/sql_statement.h"

class SqlCheckpoints;

/// How an archive in a file is made and opened.
struct SqlArchiveOptions {
    QString File;
    SchemaSteps Schema = ArchiveSchema();
    /// How long another program's writing is waited for: no longer than nobody notices.
    int PatienceMilliseconds = 10;
    std::function<std::int64_t()> Clock = nullptr;  ///< the system's if there is none
};

/// The archive in a file of SQLite. All of it on the thread that opened it, but for the care, which
/// has a connection of its own.
class SqlArchive final : public ArchiveStore {
 public:
    explicit SqlArchive(SqlArchiveOptions options);
    ~SqlArchive() override;
    SqlArchive(const SqlArchive&) = delete;
    SqlArchive& operator=(const SqlArchive&) = delete;

    [[nodiscard]] bool Exists() override;
    void Open() override;
    [[nodiscard]] bool IsOpen() const override { return statements_ != nullptr; }
    void Close() noexcept override;
    [[nodiscard]] std::string Place() const override;
    [[nodiscard]] std::int64_t Now() override;

    void Begin() override;
    void BeginReading() override;
    void Commit() override;
    void Rollback() noexcept override;
    [[nodiscard]] std::int64_t Stamp() override;

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
    void AddRecords(std::int64_t logger, std::span<const ArchiveRecord> records) override;
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

    void BackUp(const std::string& path, const Meanwhile& meanwhile) override;
    [[nodiscard]] std::vector<std::string> Check(const Meanwhile& meanwhile) override;
    [[nodiscard]] std::int64_t SizeInBytes() override;

 private:
    void Connect();
    [[nodiscard]] SqlStatement& Prepared(const char* text);
    /// Does work that may take long on a connection and thread of its own.
    void RunBeside(const std::function<void(const QSqlDatabase&)>& work,
                   const Meanwhile& meanwhile) const;

    const SqlArchiveOptions options_;
    QSqlDatabase database_;
    std::unique_ptr<SqlStatements> statements_;  ///< there while it is open
    std::unique_ptr<SqlCheckpoints> checkpoints_;
    bool inTransaction_ = false;
    int written_ = 0;  ///< rows and transactions since the last checkpoint was asked for
};

#endif  // ORVIA_PLATFORM_QT_SQL_ARCHIVE_H
