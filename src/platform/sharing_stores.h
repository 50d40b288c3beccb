#ifndef ORVIA_PLATFORM_SHARING_STORES_H
#define ORVIA_PLATFORM_SHARING_STORES_H

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/archive_store.h"
#include "platform/server_place.h"

/// Makes the stores that sharing works on. Each is used on the thread that opens it, and what makes
/// them may be called on any.
struct SharingStores {
    using OnServer = std::function<std::unique_ptr<ArchiveStore>(const ServerPlace&,
                                                                 const std::string& password)>;

    /// This computer's archive.
    std::function<std::unique_ptr<ArchiveStore>()> Local;
    /// One on a server. Without a password the user's own files are left to have it.
    OnServer Server;
    /// The same for the windows, which wait no longer than a moment for an answer; nothing: as the
    /// other one.
    OnServer ForWindows = nullptr;
    /// Why there can be none on a server; nothing if there can.
    std::optional<std::string> WhyNot = {};
};

#endif  // ORVIA_PLATFORM_SHARING_STORES_H
