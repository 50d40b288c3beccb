#ifndef ORVIA_PLATFORM_QT_SERVER_ARCHIVE_H
#define ORVIA_PLATFORM_QT_SERVER_ARCHIVE_H

#include <QSqlDatabase>
#include <QString>
#include <chrono>
#include <functional>
#include <string>

#include "platform/qt/server_dialect.h"
#include "platform/qt/sql_store.h"
#include "platform/server_place.h"

/// How an archive on a server is entered.
struct ServerArchiveOptions {
    ServerPlace Place;
    std::string Password = {};                      ///< if empty, the user's pgpass is looked into
    std::function<std::int64_t()> Clock = nullptr;  ///< the server's if there is none
    int ConnectSeconds = 2;                         ///< 2 at least
    int StatementMilliseconds = 10'000;
    /// How long another console's filing of the same logger is waited for.
    int LockMilliseconds = 500;
};

/// The archive that several consoles share, on a server of PostgreSQL. It has been made there by
/// its administrator: docs/shared-archive.md. All of it on the thread that opened it, but for the
/// check, which has a connection of its own.
class ServerArchive final : public SqlStore {
 public:
    explicit ServerArchive(ServerArchiveOptions options);
    ~ServerArchive() override;

    /// Always: a server's is not made by consoles.
    [[nodiscard]] bool Exists() override { return true; }
    void Open() override;
    [[nodiscard]] bool IsOpen() const override;
    void Close() noexcept override;
    [[nodiscard]] std::string Place() const override;
    [[nodiscard]] std::int64_t Now() override;

    void Begin() override;
    void BeginReading() override;
    void Commit() override;
    void Rollback() noexcept override;
    [[nodiscard]] std::int64_t Stamp() override;

    void AddRecords(std::int64_t logger, std::span<const ArchiveRecord> records) override;

    /// Throws: the server's own tools do that.
    void BackUp(const std::string& path, const Meanwhile& meanwhile) override;
    [[nodiscard]] std::vector<std::string> Check(const Meanwhile& meanwhile) override;
    [[nodiscard]] std::int64_t SizeInBytes() override;

 private:
    [[nodiscard]] bool HoldsLoggers() const override { return writing_; }
    void CheckVersion();
    void SetClock();
    void BeginAs(const char* statement);
    /// Runs what is never prepared.
    void Do(const char* statement);

    const ServerArchiveOptions options_;
    QSqlDatabase database_;
    ServerDialect dialect_;
    bool inTransaction_ = false;
    bool writing_ = false;
    std::int64_t clockAt_ = 0;                              ///< what the server's clock told...
    std::chrono::steady_clock::time_point clockRead_ = {};  ///< ...and when
};

#endif  // ORVIA_PLATFORM_QT_SERVER_ARCHIVE_H
