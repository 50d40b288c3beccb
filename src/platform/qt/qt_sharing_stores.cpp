#include "platform/qt/qt_sharing_stores.h"

#include <QSqlDatabase>

#include "platform/qt/server_archive.h"
#include "platform/qt/sql_archive.h"

namespace {

/// Of the thread that hands over, which nobody waits for: what the console is filing comes first.
constexpr int PatienceMilliseconds = 500;

}  // namespace

SharingStores SharingStoresFor(const QString& file) {
    SharingStores stores;
    stores.Local = [file] {
        return std::make_unique<SqlArchive>(
            SqlArchiveOptions{.File = file, .PatienceMilliseconds = PatienceMilliseconds});
    };
    stores.Server = [](const ServerPlace& place, const std::string& password) {
        return std::make_unique<ServerArchive>(
            ServerArchiveOptions{.Place = place, .Password = password});
    };
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL"))) {
        stores.WhyNot = "The driver for PostgreSQL is missing.";
    }
    return stores;
}
