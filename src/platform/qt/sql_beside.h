#ifndef ORVIA_PLATFORM_QT_SQL_BESIDE_H
#define ORVIA_PLATFORM_QT_SQL_BESIDE_H

#include <QSqlDatabase>
#include <functional>
#include <string>
#include <vector>

#include "platform/qt/sql_dialect.h"

// Work on an archive that may take long.

/// Does `work` on a connection and a thread of its own, and calls `meanwhile` some times a second
/// until it is done.
void RunSqlBeside(const std::function<QSqlDatabase()>& connect,
                  const std::function<void(const QSqlDatabase&)>& work,
                  const ArchiveStore::Meanwhile& meanwhile);

/// Adds what does not hold together in the rows of an archive, a line each.
void CheckSqlRows(const QSqlDatabase& database, SqlDialect& dialect,
                  std::vector<std::string>& wrong);

#endif  // ORVIA_PLATFORM_QT_SQL_BESIDE_H
