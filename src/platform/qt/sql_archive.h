#ifndef ORVIA_PLATFORM_QT_SQL_ARCHIVE_H
#define ORVIA_PLATFORM_QT_SQL_ARCHIVE_H

#include <QSqlDatabase>
#include <QString>
#include <functional>
#include <memory>

#include "platform/qt/sql_schema.h"
#include "platform/qt/sql_store.h"

class SqlCheckpoints;

/// How an archive in a file is made and opened.
struct SqlArchiveOptions {
    QString File;
    SchemaSteps Schema = ArchiveSchema();
    /// How long another program's writing is waited for: no longer than nobody notices.
    int PatienceMilliseconds = 10;
    std::function<std::int64_t()> Clock = nullptr;  ///< the system's if there is none
};

/// How SQLite is asked for records.
[[nodiscard]] const SqlRecordTexts& SqliteRecordTexts();

/// The archive in a file of SQLite. All of it on the thread that opened it, but for the care, which
/// has a connection of its own.
class SqlArchive final : public SqlStore {
 public:
    explicit SqlArchive(SqlArchiveOptions options);
    ~SqlArchive() override;

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

    void AddRecords(std::int64_t logger, std::span<const ArchiveRecord> records) override;

    void BackUp(const std::string& path, const Meanwhile& meanwhile) override;
    [[nodiscard]] std::vector<std::string> Check(const Meanwhile& meanwhile) override;
    [[nodiscard]] std::int64_t SizeInBytes() override;

 private:
    void Connect();
    /// Does work that may take long on a connection and thread of its own.
    void RunBeside(const std::function<void(const QSqlDatabase&)>& work,
                   const Meanwhile& meanwhile) const;

    const SqlArchiveOptions options_;
    QSqlDatabase database_;
    SqliteDialect dialect_;
    std::unique_ptr<SqlCheckpoints> checkpoints_;
    bool inTransaction_ = false;
    int written_ = 0;  ///< rows and transactions since the last checkpoint was asked for
};

#endif  // ORVIA_PLATFORM_QT_SQL_ARCHIVE_H
