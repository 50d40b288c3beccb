#include "support/qt/accelerated_host.h"

#include <algorithm>

namespace testing_support {

namespace {

/// The virtual clock goes no further than a tick at a time: on a machine that lets the tests wait,
/// the windows would miss whatever lies between.
constexpr Microseconds LongestStep = 100 * Millisecond;

}  // namespace

AcceleratedHost::AcceleratedHost() {
    drive_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&drive_, &QTimer::timeout, &drive_, [this] {
        const Microseconds passed = elapsed_.nsecsElapsed() / 1000 * Speed;
        elapsed_.start();
        Virtual.Time.Run(std::min(passed, LongestStep));
    });
    elapsed_.start();
    drive_.start(1);
}

Host AcceleratedHost::AsHost(const std::string& appPath) {
    Host host = Virtual.AsHost(appPath);
    return {host.MSComm1, pump_,      host.Boxes,   host.Dialogs,
            host.Store,   host.Clock, host.Help,    host.LocalMachine,
            host.Inquiry, host.Sound, host.AppPath, TickMilliseconds};
}

bool AcceleratedHost::RunUntil(const std::function<bool()>& done, int limit) {
    const Microseconds end = Virtual.Time.Now() + limit * Second;
    while (!done() && Virtual.Time.Now() < end) {
        pump_.WaitForMoreEvents();
    }
    return done();
}

void AcceleratedHost::RunFor(int milliseconds) {
    const Microseconds end = Virtual.Time.Now() + milliseconds * Millisecond;
    static_cast<void>(RunUntil([&] { return Virtual.Time.Now() >= end; }));
}

}  // namespace testing_support
