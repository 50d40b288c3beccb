#ifndef ORVIA_SETUP_RECENT_FILES_H
#define ORVIA_SETUP_RECENT_FILES_H

#include <string>
#include <string_view>

#include "records/settings.h"

// The recent set-up files and the folder that file dialogs start in.

/// Puts the path at the head of the recent files. One that stands among the first three moves
/// there; any other pushes out the last.
void PushRecentFile(std::string path, Settings& settings);

/// The name that a menu shows for a path: the part behind the last separator, but a file right
/// below a root keeps its whole path.
[[nodiscard]] std::string_view FileNameOfPath(std::string_view path);

/// Takes folder and name of a chosen file, and makes it the most recent one. A path without a
/// folder, or without a name, changes nothing; False then.
bool RememberChosenFile(const std::string& path, Settings& settings, std::string& CurrentFile);

/// The same without touching the recent files.
bool RememberFolder(const std::string& path, Settings& settings, std::string& CurrentFile);

/// What a file dialog starts with: the last folder and the current file, or all set-up files.
[[nodiscard]] std::string InitialSetupName(const Settings& settings, std::string_view CurrentFile,
                                           std::string_view startFolder);

#endif  // ORVIA_SETUP_RECENT_FILES_H
