#ifndef ORVIA_PLATFORM_QT_QT_FILE_DIALOGS_H
#define ORVIA_PLATFORM_QT_QT_FILE_DIALOGS_H

#include "platform/host.h"

/// The common file dialogs, over the active window.
class QtFileDialogs final : public FileDialogs {
 public:
    std::optional<std::string> PickExisting(const FileQuery& query) override;
    std::optional<std::string> PickForSaving(const FileQuery& query, bool promptOverwrite) override;
};

#endif  // ORVIA_PLATFORM_QT_QT_FILE_DIALOGS_H
