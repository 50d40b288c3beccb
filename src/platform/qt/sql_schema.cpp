#include "platform/qt/sql_schema.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <QUuid>
#include <array>
#include <filesystem>
#include <system_error>

#include "platform/qt/sql_open_files.h"
#include "platform/qt/sql_statement.h"
#include "platform/qt/text_qt.h"

namespace {

constexpr const char* VersionOne = R"sql(
CREATE TABLE loggers(
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  mac TEXT NOT NULL UNIQUE,
  name TEXT NOT NULL,
  records INTEGER NOT NULL,
  uploads INTEGER NOT NULL,
  revision INTEGER NOT NULL);
CREATE TABLE settings(
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  logger INTEGER NOT NULL,
  image BLOB NOT NULL,
  firmware INTEGER NOT NULL,
  analog_channels INTEGER NOT NULL,
  pulse_channels INTEGER NOT NULL,
  sample_on_demand INTEGER NOT NULL,
  flow_decimals INTEGER NOT NULL,
  velocity_decimals INTEGER NOT NULL,
  equation_offset REAL NOT NULL,
  equation_exponent REAL NOT NULL,
  equation_multiplier REAL NOT NULL,
  device TEXT NOT NULL);
CREATE INDEX settings_of_logger ON settings(logger);
CREATE TABLE points(
  settings INTEGER NOT NULL,
  number INTEGER NOT NULL,
  level REAL NOT NULL,
  flow REAL NOT NULL,
  PRIMARY KEY(settings, number)) WITHOUT ROWID;
CREATE TABLE uploads(
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  logger INTEGER NOT NULL,
  begun INTEGER NOT NULL,
  ended INTEGER,
  outcome TEXT,
  firmware INTEGER NOT NULL,
  name TEXT NOT NULL,
  settings INTEGER NOT NULL,
  said INTEGER NOT NULL,
  received INTEGER NOT NULL);
CREATE UNIQUE INDEX uploads_by_begin ON uploads(logger, begun);
CREATE TABLE records(
  logger INTEGER NOT NULL,
  place INTEGER NOT NULL,
  time INTEGER NOT NULL,
  c1 INTEGER NOT NULL,
  c2 INTEGER NOT NULL,
  c3 INTEGER NOT NULL,
  c4 INTEGER NOT NULL,
  c5 INTEGER NOT NULL,
  c6 INTEGER NOT NULL,
  c7 INTEGER NOT NULL,
  c8 INTEGER NOT NULL,
  c9 INTEGER NOT NULL,
  c10 INTEGER NOT NULL,
  nth INTEGER NOT NULL,
  upload INTEGER NOT NULL,
  PRIMARY KEY(logger, place)) WITHOUT ROWID;
CREATE INDEX records_by_time ON records(logger, time);
)sql";

constexpr const char* VersionTwo = R"sql(
CREATE TABLE rounds(
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  begun INTEGER NOT NULL,
  ended INTEGER,
  loggers INTEGER NOT NULL,
  done INTEGER NOT NULL,
  log TEXT NOT NULL,
  digest TEXT NOT NULL);
CREATE INDEX rounds_by_begin ON rounds(begun);
)sql";

constexpr const char* VersionThree = R"sql(
ALTER TABLE uploads ADD COLUMN origin TEXT NOT NULL DEFAULT '';
CREATE TABLE about(
  identity TEXT NOT NULL);
INSERT INTO about(identity) VALUES(lower(hex(randomblob(16))));
CREATE TABLE handed(
  target TEXT NOT NULL,
  upload INTEGER NOT NULL,
  received INTEGER NOT NULL,
  ended INTEGER,
  PRIMARY KEY(target, upload)) WITHOUT ROWID;
)sql";

constexpr std::array<const char*, 3> Steps = {VersionOne, VersionTwo, VersionThree};

// The header of a file, its numbers with the high byte first.
constexpr qsizetype HeaderSize = 100;
constexpr qsizetype PageSizeOffset = 16;
constexpr qsizetype PageCountOffset = 28;
constexpr qsizetype ApplicationIdOffset = 68;
constexpr int LargestPageMark = 1;  // stands for 65,536, which has no room
constexpr qint64 LargestPageSize = 65'536;
constexpr int BitsPerByte = 8;

const QByteArray& HeaderMark() {
    static const QByteArray mark("SQLite format 3", 16);
    return mark;
}

qint64 HeaderNumber(const QByteArray& header, qsizetype offset, qsizetype size) {
    qint64 number = 0;
    for (qsizetype i = 0; i < size; ++i) {
        number = number << BitsPerByte | static_cast<std::uint8_t>(header[offset + i]);
    }
    return number;
}

bool IsCutOff(const QByteArray& header, const QString& file) {
    const qint64 written = HeaderNumber(header, PageSizeOffset, 2);
    const qint64 page = written == LargestPageMark ? LargestPageSize : written;
    // Pages that are still in the log beside the file need not be in it.
    const bool hasLog = QFileInfo(file + QStringLiteral("-wal")).size() > 0;
    return !hasLog && QFileInfo(file).size() < page * HeaderNumber(header, PageCountOffset, 4);
}

/// The file of a connection; empty for one to a server.
QString FileOf(const QSqlDatabase& database) {
    return QUrl(database.databaseName()).toLocalFile();
}

/// Runs statements one by one; the engine takes only one at a time.
void RunStep(const QSqlDatabase& database, const char* step) {
    for (const QString& statement : QString::fromUtf8(step).split(QStringLiteral(";\n"))) {
        if (!statement.trimmed().isEmpty()) {
            RunSql(database, statement.toUtf8().constData());
        }
    }
}

QByteArray VersionPragma(std::size_t version) {
    return QByteArray("PRAGMA user_version=") +
           QByteArray::number(static_cast<qulonglong>(version));
}

std::size_t VersionOf(const QSqlDatabase& database, SchemaSteps steps) {
    if (AskSql(database, "PRAGMA application_id") != ArchiveApplicationId) {
        throw ArchiveFault(ArchiveTrouble::Foreign, "");
    }
    const auto version = static_cast<std::size_t>(AskSql(database, "PRAGMA user_version"));
    if (version > steps.size()) {
        throw ArchiveFault(ArchiveTrouble::Newer, "");
    }
    return version;
}

/// Brings the archive from `version` to the last one, inside a transaction.
void RunSteps(const QSqlDatabase& database, SchemaSteps steps, std::size_t version) {
    for (; version < steps.size(); ++version) {
        RunStep(database, steps[version]);
    }
    RunSql(database, VersionPragma(steps.size()).constData());
}

void FillNewFile(const QSqlDatabase& database, SchemaSteps steps) {
    const QByteArray id =
        QByteArray("PRAGMA application_id=") + QByteArray::number(ArchiveApplicationId);
    RunSql(database, "PRAGMA synchronous=FULL");
    RunSql(database, "BEGIN IMMEDIATE");
    RunSql(database, id.constData());
    RunSteps(database, steps, 0);
    RunSql(database, "COMMIT");
    static_cast<void>(AskSql(database, "PRAGMA journal_mode=WAL"));
}

/// Gives a file its name for good, unless there is one of that name by now.
void Name(const QString& fresh, const QString& file) {
    std::error_code failed;
    std::filesystem::create_hard_link(fresh.toStdU16String(), file.toStdU16String(), failed);
    // Not every file system has hard links.
    if (failed && !QFileInfo::exists(file) && !QFile::rename(fresh, file)) {
        QFile::remove(fresh);
        throw ArchiveFault(ArchiveTrouble::NoFolder, failed.message());
    }
    QFile::remove(fresh);
}

}  // namespace

SchemaSteps ArchiveSchema() {
    return Steps;
}

void CheckArchiveFile(const QString& file) {
    QFile in(file);
    if (!QFileInfo(file).isFile()) {
        throw ArchiveFault(ArchiveTrouble::Foreign, "");
    }
    if (!in.open(QIODevice::ReadOnly)) {
        throw ArchiveFault(ArchiveTrouble::ReadOnly, FromQt(in.errorString()));
    }
    const QByteArray header = in.read(HeaderSize);
    if (!header.startsWith(HeaderMark().left(header.size()))) {
        throw ArchiveFault(ArchiveTrouble::Foreign, "");
    }
    if (header.size() < HeaderSize) {
        throw ArchiveFault(ArchiveTrouble::Damaged, "");
    }
    if (HeaderNumber(header, ApplicationIdOffset, 4) != ArchiveApplicationId) {
        throw ArchiveFault(ArchiveTrouble::Foreign, "");
    }
    if (IsCutOff(header, file)) {
        throw ArchiveFault(ArchiveTrouble::Damaged, "");
    }
}

void MakeArchiveFile(const QString& file, SchemaSteps steps) {
    // Under another name until it is whole, so that a kill leaves no half of it.
    const QString fresh =
        file + QStringLiteral(".new-") + QUuid::createUuid().toString(QUuid::Id128);
    QSqlDatabase database;
    try {
        database = ConnectSql(fresh, 0, SqlOpening::New);
        FillNewFile(database, steps);
    } catch (const ArchiveFault&) {
        DisconnectSql(database);
        QFile::remove(fresh);
        QFile::remove(fresh + QStringLiteral("-journal"));
        throw;
    }
    DisconnectSql(database);
    Name(fresh, file);
}

void MigrateArchive(const QSqlDatabase& database, SchemaSteps steps) {
    if (VersionOf(database, steps) == steps.size()) {
        return;
    }
    RunSql(database, "BEGIN IMMEDIATE");
    try {
        // Another console may have done it meanwhile.
        RunSteps(database, steps, VersionOf(database, steps));
        RunSql(database, "COMMIT");
    } catch (const ArchiveFault&) {
        QSqlQuery(database).exec(QStringLiteral("ROLLBACK"));
        throw;
    }
}

QSqlDatabase ConnectSql(const QString& file, int patienceMilliseconds, SqlOpening opening) {
    const QString name = QUuid::createUuid().toString();
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
    database.setDatabaseName(
        QString::fromUtf8(QUrl::fromLocalFile(file).toEncoded()) +
        (opening == SqlOpening::Existing ? QStringLiteral("?mode=rw") : QString()));
    AddOpenFile(FileOf(database));
    database.setConnectOptions(
        QStringLiteral("QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=%1").arg(patienceMilliseconds));
    if (!database.open()) {
        const ArchiveFault fault =
            database.isValid()
                ? SqliteDialect(file).FaultOf(database.lastError())
                : ArchiveFault(ArchiveTrouble::Other, "The driver for SQLite is missing.");
        DisconnectSql(database);
        throw fault;
    }
    return database;
}

void DisconnectSql(QSqlDatabase& database) noexcept {
    const QString name = database.connectionName();
    const QString file = FileOf(database);
    database.close();
    database = QSqlDatabase();
    QSqlDatabase::removeDatabase(name);
    if (!file.isEmpty()) {
        RemoveOpenFile(file);
    }
}
