#ifndef ORVIA_PLATFORM_QT_QT_MESSAGE_BOXES_H
#define ORVIA_PLATFORM_QT_QT_MESSAGE_BOXES_H

#include "platform/host.h"

/// Message boxes over the active window. Titles and texts show as they stand: no mark-up, no
/// marked letters, no program name.
class QtMessageBoxes final : public MessageBoxes {
 public:
    BoxAnswer Show(const BoxContent& box) override;
};

#endif  // ORVIA_PLATFORM_QT_QT_MESSAGE_BOXES_H
