#include "platform/qt/server_archive.h"

#include <QDateTime>
#include <QSqlQuery>
#include <utility>

#include "platform/qt/server_connection.h"
#include "platform/qt/server_records.h"
#include "platform/qt/sql_beside.h"
#include "platform/qt/sql_schema.h"

namespace {

/// Statements that are there to find faults look at everything.
constexpr int NoTimeLimit = 0;

constexpr const char* Version = "SELECT version FROM about";
constexpr const char* Clock = "SELECT CAST(extract(epoch FROM clock_timestamp()) * 1000 AS bigint)";
// Changes with whatever is committed by anyone.
constexpr const char* Snapshot = "SELECT hashtextextended(CAST(pg_current_snapshot() AS text), 0)";
constexpr const char* Encoding =
    "SELECT count(*) FROM pg_database WHERE datname = "
    "current_database() AND pg_encoding_to_char(encoding) = 'UTF8'";
constexpr const char* Size =
    "SELECT sum(pg_total_relation_size(oid)) FROM pg_class "
    "WHERE relnamespace = CAST('orvia' AS regnamespace) AND relkind = 'r'";

}  // namespace

ServerArchive::ServerArchive(ServerArchiveOptions options)
    : SqlStore(ServerRecordTexts()), options_(std::move(options)) {}

ServerArchive::~ServerArchive() {
    Close();
}

bool ServerArchive::IsOpen() const {
    return statements_ != nullptr && !dialect_.IsLost();
}

void ServerArchive::Open() {
    if (IsOpen()) {
        return;
    }
    Close();
    try {
        database_ = ConnectServer(options_);
        dialect_.Connected();
        statements_ = std::make_unique<SqlStatements>(database_, dialect_);
        CheckVersion();
        SetClock();
    } catch (const ArchiveFault&) {
        Close();
        throw;
    }
}

void ServerArchive::CheckVersion() {
    SqlRows rows(Prepared(Version));
    const std::int64_t version = rows.Next() ? rows->Integer(0) : 0;
    if (version > ServerVersion) {
        throw ArchiveFault(ArchiveTrouble::Newer, "");
    }
    if (version < ServerVersion) {
        throw ArchiveFault(ArchiveTrouble::Foreign, "The tables there are of no known version.");
    }
    SqlRows encoding(Prepared(Encoding));
    if (!encoding.Next() || encoding->Integer(0) != 1) {
        throw ArchiveFault(ArchiveTrouble::Foreign, "The database is not of the encoding UTF8.");
    }
}

void ServerArchive::Close() noexcept {
    Rollback();
    // The connection goes first, and with it, on the server, all that was prepared. Statements that
    // go first would each be taken back there, and complain if it is away.
    if (database_.isValid()) {
        DisconnectSql(database_);
    }
    statements_.reset();
}

std::string ServerArchive::Place() const {
    const ServerPlace& place = options_.Place;
    std::string text = place.Database + " on " + place.Server;
    if (place.Port != ServerPlace::UsualPort) {
        text += ", port " + std::to_string(place.Port);
    }
    return text;
}

void ServerArchive::SetClock() {
    SqlRows rows(Prepared(Clock));
    static_cast<void>(rows.Next());
    clockAt_ = rows->Integer(0);
    clockRead_ = std::chrono::steady_clock::now();
}

/// Goes on from what the server's clock told, so that it never waits, nor fails.
std::int64_t ServerArchive::Now() {
    if (options_.Clock) {
        return options_.Clock();
    }
    if (clockAt_ == 0) {
        return QDateTime::currentMSecsSinceEpoch();
    }
    const auto since = std::chrono::steady_clock::now() - clockRead_;
    return clockAt_ + std::chrono::duration_cast<std::chrono::milliseconds>(since).count();
}

void ServerArchive::Do(const char* statement) {
    if (!statements_) {
        throw ArchiveFault(ArchiveTrouble::Other, "The archive is not open.");
    }
    QSqlQuery query(database_);
    if (!query.exec(QString::fromUtf8(statement))) {
        throw dialect_.FaultOf(query.lastError());
    }
}

void ServerArchive::BeginAs(const char* statement) {
    Do(statement);
    dialect_.Begin();
    inTransaction_ = true;
}

/// Each statement sees what was committed before it, so that a logger that was waited for is read
/// as the other console left it.
void ServerArchive::Begin() {
    BeginAs("BEGIN ISOLATION LEVEL READ COMMITTED");
    writing_ = true;
}

void ServerArchive::BeginReading() {
    BeginAs("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY");
}

void ServerArchive::Commit() {
    // The server would answer a commit behind a fault without one, and keep nothing.
    if (dialect_.HasFailed()) {
        Rollback();
        throw ArchiveFault(ArchiveTrouble::Other, "It was taken back.");
    }
    // Whatever it answers, the transaction is over.
    inTransaction_ = writing_ = false;
    Do("COMMIT");
}

void ServerArchive::Rollback() noexcept {
    const bool was = std::exchange(inTransaction_, false);
    writing_ = false;
    if (!was || dialect_.IsLost()) {
        return;
    }
    try {
        Do("ROLLBACK");
    } catch (const ArchiveFault&) {
        // With the connection the server has taken it back already.
        return;
    }
}

std::int64_t ServerArchive::Stamp() {
    SqlRows rows(Prepared(Snapshot));
    static_cast<void>(rows.Next());
    return rows->Integer(0);
}

void ServerArchive::BackUp(const std::string&, const Meanwhile&) {
    throw ArchiveFault(
        ArchiveTrouble::Other,
        "An archive on a server is backed up with the server's own tools (pg_dump).");
}

std::vector<std::string> ServerArchive::Check(const Meanwhile& meanwhile) {
    std::vector<std::string> wrong;
    ServerArchiveOptions options = options_;
    options.StatementMilliseconds = NoTimeLimit;
    RunSqlBeside([&options] { return ConnectServer(options); },
                 [&wrong](const QSqlDatabase& database) {
                     ServerDialect dialect;
                     CheckSqlRows(database, dialect, wrong);
                 },
                 meanwhile);
    return wrong;
}

std::int64_t ServerArchive::SizeInBytes() {
    SqlRows rows(Prepared(Size));
    return rows.Next() ? rows->Integer(0) : 0;
}
