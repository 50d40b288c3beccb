// Tries the port as the console has it, in the toolkit's loop, on COM1, behind which somebody sends
// back what comes. Exit status 1 if a reply is not seen soon.

#include <QCoreApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

#include "common/fault.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/win/win_serial_port.h"

namespace {

constexpr int Exchanges = 51;
constexpr int Patience = 2000;  // milliseconds
constexpr double Soon = 5;

/// Milliseconds until the bytes have come back; `Patience` if they do not.
double Exchange(SerialPort& port, EventPump& events, const Bytes& request) {
    QElapsedTimer elapsed;
    elapsed.start();
    port.ClearInBuffer();
    port.Output(request);
    while (port.InBufferCount() < static_cast<int>(request.size())) {
        if (elapsed.hasExpired(Patience)) {
            return Patience;
        }
        events.WaitForMoreEvents();
    }
    const double took = static_cast<double>(elapsed.nsecsElapsed()) / 1e6;
    return port.Input(0) == request ? took : Patience;
}

int Try() {
    WinSerialPort port;
    QtEventPump events;
    port.SetCommPort(1);
    port.SetSettings("38400,N,8,1");
    port.SetPortOpen(true);
    port.SetDTREnable(true);
    std::vector<double> times;
    for (int i = 0; i < Exchanges; ++i) {
        times.push_back(Exchange(port, events, Bytes(20, static_cast<std::uint8_t>(128 + i))));
    }
    std::sort(times.begin(), times.end());
    std::printf("in the toolkit's loop replies after %.2f ms, the slowest of %d after %.2f ms\n",
                times[times.size() / 2], Exchanges, times.back());
    return times[times.size() / 2] < Soon && times.back() < Patience ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    try {
        return Try();
    } catch (const Fault& fault) {
        std::printf("%s\n", fault.what());
        return 1;
    }
}
