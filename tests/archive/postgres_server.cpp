#include "archive/postgres_server.h"

#include <pwd.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>
#include <QVariant>
#include <stdexcept>
#include <utility>

namespace testing_support {
namespace {

constexpr int LongestRunMilliseconds = 120'000;

const QString FullDisk = QStringLiteral("full_disk.so");
const QString FullFlag = QStringLiteral("full");

/// Who runs the server, which refuses to be run by root.
constexpr const char* Runner = "postgres";

bool NeedsRunner() {
    return ::geteuid() == 0;
}

/// Where Debian has the newest server's programs.
QString Programs() {
    QDir root(QStringLiteral("/usr/lib/postgresql"));
    const QStringList versions = root.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    if (versions.isEmpty()) {
        throw std::runtime_error("PostgreSQL is missing; tools/install.sh installs it");
    }
    int newest = 0;
    for (const QString& version : versions) {
        newest = std::max(newest, version.toInt());
    }
    return root.filePath(QString::number(newest)) + QStringLiteral("/bin/");
}

// Ends the server and takes its folder away as soon as nobody holds the other end of its input.
constexpr const char* Watch =
    "trap '' INT TERM; read nothing; \"$1/pg_ctl\" -D \"$2/data\" -m immediate stop; rm -rf \"$2\"";

/// No data is worth a wait for the disk here.
QStringList Settings() {
    return {QStringLiteral("listen_addresses=''"),  QStringLiteral("fsync=off"),
            QStringLiteral("full_page_writes=off"), QStringLiteral("autovacuum=off"),
            QStringLiteral("shared_buffers=64MB"),  QStringLiteral("max_connections=40"),
            QStringLiteral("lc_messages=C")};
}

}  // namespace

PostgresServer::PostgresServer() : folder_(QStringLiteral("/tmp/orvia-server-XXXXXX")) {
    if (NeedsRunner()) {
        const passwd* runner = ::getpwnam(Runner);
        if (runner == nullptr || ::chown(QFile::encodeName(folder_.path()).constData(),
                                         runner->pw_uid, runner->pw_gid) != 0) {
            throw std::runtime_error("there is no user to run the server");
        }
    }
    // Consoles of other users than the server's come to its socket.
    QFile::setPermissions(folder_.path(), QFile::Permissions(0x7755));
    // The server's user may not see where it was built.
    QFile::copy(QStringLiteral(ORVIA_FULL_DISK_LIBRARY), folder_.filePath(FullDisk));
    QFile::setPermissions(folder_.filePath(FullDisk), QFile::Permissions(0x7755));
    std::vector<std::string> watch;
    for (const QString& word :
         Command(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), QString::fromUtf8(Watch),
                                             QStringLiteral("watch"), Programs(), Folder()})) {
        watch.push_back(word.toStdString());
    }
    watch_ = std::make_unique<OtherProcess>(watch);
    Prepare();
}

PostgresServer::~PostgresServer() {
    Forget();
    try {
        Stop(Ending::Crash);
    } catch (const std::exception& fault) {
        ADD_FAILURE() << fault.what();
    }
}

PostgresServer& PostgresServer::Shared() {
    static PostgresServer server;
    return server;
}

QStringList PostgresServer::Command(const QString& program, const QStringList& arguments) const {
    QStringList command;
    if (NeedsRunner()) {
        const QString user = QString::fromUtf8(Runner);
        command = QStringList{QStringLiteral("/usr/bin/setpriv"), QStringLiteral("--reuid=") + user,
                              QStringLiteral("--regid=") + user, QStringLiteral("--clear-groups")};
    }
    return command + QStringList{program} + arguments;
}

void PostgresServer::Run(const QString& program, const QStringList& arguments) const {
    QStringList command = Command(Programs() + program, arguments);
    QProcess process;
    process.setWorkingDirectory(Folder());
    // So a full disk can be had: tests/archive/full_disk.cpp.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LD_PRELOAD"), folder_.filePath(FullDisk));
    environment.insert(QStringLiteral("ORVIA_FULL_DISK"), folder_.filePath(FullFlag));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    const QString log = folder_.filePath(QStringLiteral("programs.log"));
    process.setStandardOutputFile(log, QIODevice::Append);
    process.start(command.takeFirst(), command);
    if (!process.waitForFinished(LongestRunMilliseconds) || process.exitCode() != 0) {
        QFile told(log);
        static_cast<void>(told.open(QIODevice::ReadOnly));
        throw std::runtime_error("cannot run " + program.toStdString() + ": " +
                                 told.readAll().right(2000).toStdString());
    }
}

void PostgresServer::Prepare() {
    Run(QStringLiteral("initdb"),
        {QStringLiteral("--pgdata=") + Data(), QStringLiteral("--username=administrator"),
         QStringLiteral("--encoding=UTF8"), QStringLiteral("--locale=C"),
         QStringLiteral("--auth=trust"), QStringLiteral("--no-sync")});
    QFile access(Data() + QStringLiteral("/pg_hba.conf"));
    if (!access.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        throw std::runtime_error("cannot set the server up");
    }
    access.write("local all guarded scram-sha-256\nlocal all barred reject\nlocal all all trust\n");
    access.close();
    Start();
    Do(QStringLiteral("postgres"), QStringLiteral("CREATE DATABASE made"));
    MakeTables(QStringLiteral("made"));
    for (const char* user : {"CREATE ROLE console LOGIN IN ROLE orvia_file",
                             "CREATE ROLE reader LOGIN IN ROLE orvia_read",
                             "CREATE ROLE guarded LOGIN PASSWORD 'sesame' IN ROLE orvia_file",
                             "CREATE ROLE barred LOGIN IN ROLE orvia_file"}) {
        Do(QStringLiteral("postgres"), QString::fromUtf8(user));
    }
}

void PostgresServer::Start() {
    QString options = QStringLiteral("-k ") + Folder();
    for (const QString& setting : Settings()) {
        options += QStringLiteral(" -c ") + setting;
    }
    Run(QStringLiteral("pg_ctl"),
        {QStringLiteral("-D"), Data(), QStringLiteral("-o"), options, QStringLiteral("-l"),
         folder_.filePath(QStringLiteral("server.log")), QStringLiteral("-w"),
         QStringLiteral("start")});
    runs_ = true;
}

void PostgresServer::Stop(Ending ending) {
    if (!runs_) {
        return;
    }
    Forget();
    runs_ = false;
    Run(QStringLiteral("pg_ctl"),
        {QStringLiteral("-D"), Data(), QStringLiteral("-m"),
         ending == Ending::Orderly ? QStringLiteral("fast") : QStringLiteral("immediate"),
         QStringLiteral("-w"), QStringLiteral("stop")});
}

void PostgresServer::Forget() {
    for (auto& [database, connection] : administrators_) {
        DisconnectSql(connection);
    }
    administrators_.clear();
}

QString PostgresServer::Do(const QString& database, const QString& statement) {
    QSqlDatabase& connection = administrators_[database];
    if (!connection.isValid()) {
        connection =
            QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), QUuid::createUuid().toString());
        connection.setHostName(Folder());
        connection.setDatabaseName(database);
        connection.setUserName(QStringLiteral("administrator"));
        static_cast<void>(connection.open());
    }
    QSqlQuery query(connection);
    if (!query.exec(statement)) {
        throw std::runtime_error(query.lastError().text().toStdString());
    }
    return query.next() ? query.value(0).toString() : QString();
}

void PostgresServer::MakeTables(const QString& database) {
    Run(QStringLiteral("psql"),
        {QStringLiteral("--quiet"), QStringLiteral("--no-psqlrc"),
         QStringLiteral("--host=") + Folder(), QStringLiteral("--username=administrator"),
         QStringLiteral("--dbname=") + database,
         QStringLiteral("--file=") + QStringLiteral(ORVIA_SQL_FOLDER "/archive.sql")});
}

QString PostgresServer::NewDatabase(const QString& how) {
    const QString name = QStringLiteral("bench_%1").arg(++databases_);
    Do(QStringLiteral("postgres"), QStringLiteral("CREATE DATABASE %1 %2").arg(name, how));
    return name;
}

QString PostgresServer::NewArchive() {
    return NewDatabase(QStringLiteral("TEMPLATE made"));
}

void PostgresServer::FillDisk(bool full) {
    QFile flag(folder_.filePath(FullFlag));
    EXPECT_TRUE(full ? flag.open(QIODevice::WriteOnly) : flag.remove());
}

/// With whoever is still in it.
void PostgresServer::Drop(const QString& database) {
    if (const auto here = administrators_.find(database); here != administrators_.end()) {
        DisconnectSql(here->second);
        administrators_.erase(here);
    }
    if (runs_) {
        Do(QStringLiteral("postgres"),
           QStringLiteral("DROP DATABASE %1 WITH (FORCE)").arg(database));
    }
}

PostgresBench::~PostgresBench() {
    server_.Drop(database_);
}

ServerArchiveOptions PostgresBench::Options() {
    return {.Place = {.Server = server_.Folder().toStdString(),
                      .Database = database_.toStdString(),
                      .User = "console"},
            .Clock = [this] { return Clock; },
            .LockMilliseconds = 10};
}

std::unique_ptr<ArchiveStore> PostgresBench::NewStore() {
    return std::make_unique<ServerArchive>(Options());
}

void PostgresBench::Hold() {
    Release();
    Do(QStringLiteral("BEGIN"));
    held_ = true;
    Do(QStringLiteral("LOCK TABLE orvia.loggers, orvia.rounds IN EXCLUSIVE MODE"));
}

void PostgresBench::Release() {
    if (std::exchange(held_, false)) {
        Do(QStringLiteral("ROLLBACK"));
    }
}

/// Each statement goes to another process and back.
int PostgresBench::CasesOf(int many) const {
    constexpr int dearer = 8;
    return many / dearer;
}

}  // namespace testing_support
