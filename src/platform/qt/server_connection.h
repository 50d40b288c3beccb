#ifndef ORVIA_PLATFORM_QT_SERVER_CONNECTION_H
#define ORVIA_PLATFORM_QT_SERVER_CONNECTION_H

#include <QSqlDatabase>

#include "platform/qt/server_archive.h"

/// The newest version of a shared archive's tables that is known.
inline constexpr std::int64_t ServerVersion = 3;

/// A connection of the calling thread to the server, under a name that no other has.
[[nodiscard]] QSqlDatabase ConnectServer(const ServerArchiveOptions& options);

#endif  // ORVIA_PLATFORM_QT_SERVER_CONNECTION_H
