#ifndef ORVIA_PLATFORM_QT_SQL_OPEN_FILES_H
#define ORVIA_PLATFORM_QT_SQL_OPEN_FILES_H

#include <QString>
#include <functional>

// The files that connections of this program have open, on all threads. Systems count locks by
// program and file: whoever opens such a file in another way, and closes it, takes the locks of all
// connections away with that. Another program then takes the archive for one that nobody has open,
// and removes the log that the connections still write to.

/// A connection to the file is about to be made.
void AddOpenFile(const QString& file);
/// One has ended.
void RemoveOpenFile(const QString& file);

/// Calls `look`, which may open and close the file, unless a connection has it open; none is made
/// meanwhile.
void LookIntoUnusedFile(const QString& file, const std::function<void()>& look);

#endif  // ORVIA_PLATFORM_QT_SQL_OPEN_FILES_H
