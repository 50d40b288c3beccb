#ifndef ORVIA_TESTS_SUPPORT_QT_ACCELERATED_HOST_H
#define ORVIA_TESTS_SUPPORT_QT_ACCELERATED_HOST_H

#include <QElapsedTimer>
#include <QTimer>
#include <functional>
#include <string>

#include "platform/qt/qt_event_pump.h"
#include "support/virtual_host.h"

namespace testing_support {

/// A host for real windows: Qt's own events, ticks twenty times as fast, and the simulated network
/// on a clock that runs as fast as they do, or slower where they are held up. Boxes, dialogs and
/// settings are the virtual host's.
class AcceleratedHost {
 public:
    static constexpr int Speed = 20;
    static constexpr int TickMilliseconds = 100 / Speed;

    AcceleratedHost();

    [[nodiscard]] Host AsHost(const std::string& appPath);

    /// Lets real events run until `done`; False if that takes longer than `limit` virtual seconds.
    [[nodiscard]] bool RunUntil(const std::function<bool()>& done, int limit = 60);
    /// Lets so many virtual milliseconds pass.
    void RunFor(int milliseconds);

    VirtualHost Virtual;

 private:
    QtEventPump pump_;
    QElapsedTimer elapsed_;
    QTimer drive_;
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_SUPPORT_QT_ACCELERATED_HOST_H
