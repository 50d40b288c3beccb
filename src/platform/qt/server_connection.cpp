#include "platform/qt/server_connection.h"

#include <QSqlError>
#include <QUuid>
#include <algorithm>

#include "platform/qt/sql_schema.h"
#include "platform/qt/text_qt.h"

namespace {

const QString& Driver() {
    static const QString name = QStringLiteral("QPSQL");
    return name;
}

ArchiveFault DriverFault() {
    return {ArchiveTrouble::Other, "The driver for PostgreSQL (QPSQL) is missing."};
}

QString TlsMode(ServerTls tls) {
    switch (tls) {
        case ServerTls::Demanded:
            return QStringLiteral("require");
        case ServerTls::Checked:
            return QStringLiteral("verify-full");
        default:
            return QStringLiteral("prefer");
    }
}

/// How the server treats this console. What it holds of a logger must come free if the console or
/// the way to it dies in a transaction. Statements are small and alike, which compiling them, or
/// sharing them out among processes, would only slow down.
QString SessionSettings(const ServerArchiveOptions& options) {
    return QStringLiteral(
               "-c search_path=orvia,pg_temp -c statement_timeout=%1 -c lock_timeout=%2"
               " -c idle_in_transaction_session_timeout=60000 -c tcp_keepalives_idle=30"
               " -c tcp_keepalives_interval=5 -c tcp_keepalives_count=3"
               " -c jit=off -c max_parallel_workers_per_gather=0")
        .arg(options.StatementMilliseconds)
        .arg(options.LockMilliseconds);
}

/// How long the way to the server may be dead before it counts as lost.
QString WaySettings(const ServerArchiveOptions& options) {
    constexpr int leastSeconds = 2;
    const int seconds = std::max(options.ConnectSeconds, leastSeconds);
    return QStringLiteral(
               "connect_timeout=%1;tcp_user_timeout=%2;keepalives_idle=%1;keepalives_interval=1;"
               "keepalives_count=%1;sslmode=%3;gssencmode=disable;application_name=Orvia")
        .arg(seconds)
        .arg(seconds * 1000)
        .arg(TlsMode(options.Place.Tls));
}

}  // namespace

QSqlDatabase ConnectServer(const ServerArchiveOptions& options) {
    if (!QSqlDatabase::isDriverAvailable(Driver())) {
        throw DriverFault();
    }
    QSqlDatabase database = QSqlDatabase::addDatabase(Driver(), QUuid::createUuid().toString());
    database.setHostName(ToQt(options.Place.Server));
    database.setPort(options.Place.Port);
    database.setDatabaseName(ToQt(options.Place.Database));
    database.setUserName(ToQt(options.Place.User));
    database.setPassword(ToQt(options.Password));
    database.setConnectOptions(WaySettings(options) +
                               QStringLiteral(";options='%1'").arg(SessionSettings(options)));
    if (!database.open()) {
        const std::string words = FromQt(database.lastError().databaseText().trimmed());
        const bool isValid = database.isValid();
        DisconnectSql(database);
        throw isValid ? ArchiveFault(TroubleOfConnecting(words), words) : DriverFault();
    }
    return database;
}
