#ifndef ORVIA_ARCHIVE_ARCHIVE_CONTEXT_H
#define ORVIA_ARCHIVE_ARCHIVE_CONTEXT_H

#include <string>

#include "platform/host.h"

/// What the windows on collected records work with.
struct ArchiveContext {
    const Host& outside;
    std::string& lastFolder;  ///< of the last history file saved, empty at start
};

#endif  // ORVIA_ARCHIVE_ARCHIVE_CONTEXT_H
