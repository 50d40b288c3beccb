#include "platform/qt/qt_sharing_stores.h"

#include <QSqlDatabase>

#include "platform/qt/server_archive.h"
#include "platform/qt/sql_archive.h"

namespace {

/// Of the thread that hands over, which nobody waits for: what the console is filing comes first.
constexpr int PatienceMilliseconds = 500;
/// Of the windows: a click is answered by then, if only by what is wrong.
constexpr int WindowMilliseconds = 2000;
/// What another console holds just now, a window reads, or deletes, a little later.
constexpr int WindowLockMilliseconds = 50;

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
    stores.ForWindows = [](const ServerPlace& place, const std::string& password) {
        return std::make_unique<ServerArchive>(
            ServerArchiveOptions{.Place = place,
                                 .Password = password,
                                 .StatementMilliseconds = WindowMilliseconds,
                                 .LockMilliseconds = WindowLockMilliseconds});
    };
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL"))) {
        stores.WhyNot = "The driver for PostgreSQL is missing.";
    }
    return stores;
}
