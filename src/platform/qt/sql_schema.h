#ifndef ORVIA_PLATFORM_QT_SQL_SCHEMA_H
#define ORVIA_PLATFORM_QT_SQL_SCHEMA_H

#include <QSqlDatabase>
#include <QString>
#include <span>

// The file of an archive: its tables, which docs/archive.md explains, and what tells it from
// others.

/// Stands in the file's header: "Orva".
inline constexpr int ArchiveApplicationId = 0x4F727661;

/// The statements, each ended by a semicolon and a line, that bring an archive to the next version.
/// The first makes it, in version 1.
using SchemaSteps = std::span<const char* const>;
[[nodiscard]] SchemaSteps ArchiveSchema();

/// Throws unless what stands at `file` is a whole archive, as far as its header tells; changes
/// nothing. No connection has it open (platform/qt/sql_open_files.h).
void CheckArchiveFile(const QString& file);

/// Makes an archive at `file`, where nothing is, as a whole or not at all. If another program makes
/// one meanwhile, that one stays.
void MakeArchiveFile(const QString& file, SchemaSteps steps);

/// Brings the archive behind `database` up to the last version, as a whole or not at all; one that
/// is newer, or foreign, throws and stays as it is.
void MigrateArchive(const QSqlDatabase& database, SchemaSteps steps);

/// A connection of the calling thread to `file`, under a name that no other has. An existing file
/// is opened only, unless it is to be made.
enum class SqlOpening { Existing, New };
[[nodiscard]] QSqlDatabase ConnectSql(const QString& file, int patienceMilliseconds,
                                      SqlOpening opening);
/// Ends a connection, whose statements are gone.
void DisconnectSql(QSqlDatabase& database) noexcept;

#endif  // ORVIA_PLATFORM_QT_SQL_SCHEMA_H
