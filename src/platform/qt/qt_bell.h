#ifndef ORVIA_PLATFORM_QT_QT_BELL_H
#define ORVIA_PLATFORM_QT_QT_BELL_H

#include <QApplication>

#include "platform/host.h"

/// The desktop's own sound.
class QtBell final : public Bell {
 public:
    void Ring() override { QApplication::beep(); }
};

#endif  // ORVIA_PLATFORM_QT_QT_BELL_H
