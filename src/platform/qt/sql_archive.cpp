#include "platform/qt/sql_archive.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <utility>

#include "platform/qt/sql_beside.h"
#include "platform/qt/sql_checkpoints.h"
#include "platform/qt/sql_open_files.h"
#include "platform/qt/text_qt.h"

namespace {

/// Rows and transactions behind which the log is worth to be brought into the file: some megabytes.
constexpr int WrittenPerCheckpoint = 4000;
/// What a transaction writes beside its rows, in rows.
constexpr int WrittenPerTransaction = 20;
/// Patience of work that has a thread of its own.
constexpr int LongPatienceMilliseconds = 10'000;

/// `folder` made if it is missing.
void MakeFolder(const QString& folder) {
    if (!QDir().mkpath(folder)) {
        throw ArchiveFault(ArchiveTrouble::NoFolder, "");
    }
}

}  // namespace

SqlArchive::SqlArchive(SqlArchiveOptions options)
    : SqlStore(SqliteRecordTexts()), options_(std::move(options)), dialect_(options_.File) {}

SqlArchive::~SqlArchive() {
    Close();
}

bool SqlArchive::Exists() {
    return QFileInfo::exists(options_.File);
}

void SqlArchive::Open() {
    if (IsOpen()) {
        return;
    }
    MakeFolder(QFileInfo(options_.File).absolutePath());
    if (!QFileInfo::exists(options_.File)) {
        MakeArchiveFile(options_.File, options_.Schema);
    }
    LookIntoUnusedFile(options_.File, [this] { CheckArchiveFile(options_.File); });
    try {
        Connect();
    } catch (const ArchiveFault&) {
        Close();
        throw;
    }
}

void SqlArchive::Connect() {
    database_ = ConnectSql(options_.File, options_.PatienceMilliseconds, SqlOpening::Existing);
    // A commit is safe from a kill at once, from a power cut with the next checkpoint; none ever
    // leaves the file torn.
    RunSql(database_, "PRAGMA synchronous=NORMAL");
    static_cast<void>(AskSql(database_, "PRAGMA wal_autocheckpoint=0"));
    // In KiB: an upload that is known already walks over as much, again and again.
    RunSql(database_, "PRAGMA cache_size=-32768");
    MigrateArchive(database_, options_.Schema);
    static_cast<void>(AskSql(database_, "PRAGMA journal_mode=WAL"));
    statements_ = std::make_unique<SqlStatements>(database_, dialect_);
    checkpoints_ = std::make_unique<SqlCheckpoints>(options_.File);
}

void SqlArchive::Close() noexcept {
    Rollback();
    checkpoints_.reset();
    statements_.reset();
    if (database_.isValid()) {
        DisconnectSql(database_);
    }
}

std::string SqlArchive::Place() const {
    return FromQt(QDir::toNativeSeparators(options_.File));
}

std::int64_t SqlArchive::Now() {
    return options_.Clock ? options_.Clock() : QDateTime::currentMSecsSinceEpoch();
}

void SqlArchive::Begin() {
    Prepared("BEGIN IMMEDIATE").Run();
    inTransaction_ = true;
}

void SqlArchive::BeginReading() {
    Prepared("BEGIN").Run();
    inTransaction_ = true;
}

void SqlArchive::Commit() {
    Prepared("COMMIT").Run();
    inTransaction_ = false;
    written_ += WrittenPerTransaction;
    if (written_ >= WrittenPerCheckpoint) {
        written_ = 0;
        checkpoints_->Ask();
    }
}

void SqlArchive::Rollback() noexcept {
    if (!inTransaction_) {
        return;
    }
    inTransaction_ = false;
    try {
        Prepared("ROLLBACK").Run();
    } catch (const ArchiveFault&) {
        // Some faults have taken it back already.
        return;
    }
}

std::int64_t SqlArchive::Stamp() {
    // What others have changed counts in one number, what this connection did in the other.
    constexpr std::int64_t others = std::int64_t{1} << 40;
    SqlRows versions(Prepared("PRAGMA data_version"));
    static_cast<void>(versions.Next());
    SqlRows changes(Prepared("SELECT total_changes()"));
    static_cast<void>(changes.Next());
    return versions->Integer(0) * others + changes->Integer(0);
}

void SqlArchive::RunBeside(const std::function<void(const QSqlDatabase&)>& work,
                           const Meanwhile& meanwhile) const {
    RunSqlBeside(
        [this] {
            return ConnectSql(options_.File, LongPatienceMilliseconds, SqlOpening::Existing);
        },
        work, meanwhile);
}

void SqlArchive::BackUp(const std::string& path, const Meanwhile& meanwhile) {
    const QString file = ToQt(path);
    if (QFileInfo::exists(file)) {
        throw ArchiveFault(ArchiveTrouble::Other, "There is a file of that name.");
    }
    try {
        RunBeside(
            [&path](const QSqlDatabase& database) {
                RunSql(database, "VACUUM INTO CAST(? AS TEXT)", path);
            },
            meanwhile);
    } catch (const ArchiveFault&) {
        QFile::remove(file);
        throw;
    }
}

std::vector<std::string> SqlArchive::Check(const Meanwhile& meanwhile) {
    std::vector<std::string> wrong;
    RunBeside(
        [&wrong](const QSqlDatabase& database) {
            SqliteDialect dialect(database);
            SqlStatement integrity(database, "PRAGMA integrity_check(20)", dialect);
            for (SqlRows rows(integrity); rows.Next();) {
                if (rows->Text(0) != "ok") {
                    wrong.push_back(rows->Text(0));
                }
            }
            CheckSqlRows(database, dialect, wrong);
        },
        meanwhile);
    return wrong;
}

std::int64_t SqlArchive::SizeInBytes() {
    return QFileInfo(options_.File).size() +
           QFileInfo(options_.File + QStringLiteral("-wal")).size();
}
