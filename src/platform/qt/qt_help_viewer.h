#ifndef ORVIA_PLATFORM_QT_QT_HELP_VIEWER_H
#define ORVIA_PLATFORM_QT_QT_HELP_VIEWER_H

#include "platform/host.h"

/// Hands a help file to the program that the desktop has for it.
class QtHelpViewer final : public HelpViewer {
 public:
    void Open(const std::string& path) override;
};

#endif  // ORVIA_PLATFORM_QT_QT_HELP_VIEWER_H
