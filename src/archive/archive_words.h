#ifndef ORVIA_ARCHIVE_ARCHIVE_WORDS_H
#define ORVIA_ARCHIVE_ARCHIVE_WORDS_H

#include <string>

#include "platform/archive_store.h"
#include "platform/host.h"

/// Title of every box about the archive.
inline constexpr const char* ArchiveTitle = "Archive";

/// What went wrong, and what helps, as an operator reads it.
[[nodiscard]] std::string TroubleText(ArchiveTrouble kind, const std::string& place,
                                      const std::string& words);

/// The same where it is looked at, backed up, checked or tidied.
[[nodiscard]] std::string AccessText(ArchiveTrouble kind, const std::string& place,
                                     const std::string& words);

/// The same of an archive that is shared on a server.
[[nodiscard]] std::string SharedAccessText(ArchiveTrouble kind, const std::string& place,
                                           const std::string& words);

/// What is wrong with an archive on a server, a sentence without its begin.
[[nodiscard]] std::string WhatIsWrongThere(ArchiveTrouble kind);

#endif  // ORVIA_ARCHIVE_ARCHIVE_WORDS_H
