#ifndef ORVIA_TESTS_ARCHIVE_POSTGRES_SERVER_H
#define ORVIA_TESTS_ARCHIVE_POSTGRES_SERVER_H

#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <map>
#include <memory>

#include "archive/other_process.h"
#include "archive/store_fixture.h"
#include "platform/qt/server_archive.h"

namespace testing_support {

/// A real server of PostgreSQL in a temporary folder of its own, on a local socket only. It goes
/// with the test, even with one that is killed.
///
/// Users: `console` files, `reader` only reads, `guarded` files and needs the password "sesame".
class PostgresServer {
 public:
    PostgresServer();
    ~PostgresServer();
    PostgresServer(const PostgresServer&) = delete;
    PostgresServer& operator=(const PostgresServer&) = delete;

    /// The one that the tests of this program share.
    static PostgresServer& Shared();

    void Start();
    /// `Crash` lets it write nothing any more.
    enum class Ending { Orderly, Crash };
    void Stop(Ending ending);

    /// As if there were no room for its tables any more.
    void FillDisk(bool full);

    /// A new database with the tables of an archive.
    [[nodiscard]] QString NewArchive();
    /// A new database, made in the way that these words of SQL tell.
    [[nodiscard]] QString NewDatabase(const QString& how);
    void Drop(const QString& database);
    /// Runs a statement as the administrator; the first column of its first row, if there is one.
    QString Do(const QString& database, const QString& statement);
    /// Runs the shipped SQL in a database.
    void MakeTables(const QString& database);

    [[nodiscard]] QString Folder() const { return folder_.path(); }

 private:
    void Prepare();
    /// Runs a program of the server's, as a user that it runs as.
    void Run(const QString& program, const QStringList& arguments) const;
    [[nodiscard]] QStringList Command(const QString& program, const QStringList& arguments) const;
    [[nodiscard]] QString Data() const { return folder_.filePath(QStringLiteral("data")); }
    void Forget();

    QTemporaryDir folder_;
    std::unique_ptr<OtherProcess> watch_;  ///< ends the server when this program has ended
    std::map<QString, QSqlDatabase> administrators_;
    bool runs_ = false;
    int databases_ = 0;
};

/// An archive in a database of its own on such a server.
class PostgresBench final : public ArchiveBench {
 public:
    explicit PostgresBench(PostgresServer& server = PostgresServer::Shared())
        : server_(server), database_(server.NewArchive()) {}
    ~PostgresBench() override;
    PostgresBench(const PostgresBench&) = delete;
    PostgresBench& operator=(const PostgresBench&) = delete;

    std::unique_ptr<ArchiveStore> NewStore() override;
    /// What NewStore opens.
    [[nodiscard]] ServerArchiveOptions Options();
    void Hold() override;
    void Release() override;
    [[nodiscard]] int CasesOf(int many) const override;
    /// A statement of the administrator's.
    QString Do(const QString& statement) { return server_.Do(database_, statement); }
    [[nodiscard]] QString Database() const { return database_; }
    [[nodiscard]] PostgresServer& Server() { return server_; }

 private:
    PostgresServer& server_;
    const QString database_;
    bool held_ = false;
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_ARCHIVE_POSTGRES_SERVER_H
