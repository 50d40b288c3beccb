#ifndef ORVIA_PLATFORM_QT_QT_EVENT_PUMP_H
#define ORVIA_PLATFORM_QT_QT_EVENT_PUMP_H

#include "platform/host.h"

/// Runs the events of the application's thread.
class QtEventPump final : public EventPump {
 public:
    void RunPendingEvents() override;
    /// Returns after a second at the latest, so that a wait sees that the program is ending even
    /// if nothing ticks any more.
    void WaitForMoreEvents() override;
};

#endif  // ORVIA_PLATFORM_QT_QT_EVENT_PUMP_H
