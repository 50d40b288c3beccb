#include "link/port.h"

#include <algorithm>

#include "common/bytes.h"
#include "common/fault.h"
#include "common/number_text.h"

namespace comm {

namespace {

/// A line at 9600 baud brings as many in 50 ms: what is wrong in them is not seen much later than
/// if each were looked at as it comes.
constexpr int MostTogether = 48;

bool GoesOn(const Link& link, std::int16_t wanted) {
    if (link.WaitTicks <= 0) {
        return false;
    }
    return wanted == 0 || (link.MSComm1.InBufferCount() < wanted && link.ShuttingDown == False);
}

/// Behind a wait every byte is told of as it comes.
class Expectation {
 public:
    explicit Expectation(SerialPort& port) : port_(port) {}
    ~Expectation() { port_.Expect(1); }
    Expectation(const Expectation&) = delete;
    Expectation& operator=(const Expectation&) = delete;

    void Set(int count) { port_.Expect(std::clamp(count, 1, MostTogether)); }

 private:
    SerialPort& port_;
};

void EmptyInput(Link& link) {
    link.MSComm1.ClearInBuffer();
    link.StrayInput = False;
}

}  // namespace

void WaitForBytes(Link& link, std::int16_t ticks, std::int16_t wanted, std::int16_t together) {
    link.IdleTicks = IdleLimitTicks;
    link.WaitTicks = ticks;
    link.Events.RunPendingEvents();
    Expectation expectation(link.MSComm1);
    while (GoesOn(link, wanted)) {
        expectation.Set(std::max<int>(wanted - link.MSComm1.InBufferCount(), together));
        link.Events.WaitForMoreEvents();
    }
}

std::int16_t ReadByteWait(Link& link, std::int16_t ticks, std::int16_t together) {
    if (link.MSComm1.InBufferCount() == 0) {
        WaitForBytes(link, ticks, 1, together);
    }
    const Bytes byte = link.MSComm1.Input(1);
    return byte.empty() ? std::int16_t{-1} : std::int16_t{byte.front()};
}

void SendText(Link& link, std::string_view text) {
    link.MSComm1.Output(Bytes(text.begin(), text.end()));
}

int PortNumber(std::string_view portName) {
    constexpr std::size_t NumberAt = 3;
    std::int32_t number = 0;
    if (portName.size() <= NumberAt || !TextToLong(portName.substr(NumberAt), number)) {
        throw Fault("no port number");
    }
    return number;
}

std::string PortSettings(std::string_view baudRate) {
    return std::string(baudRate) + ",N,8,1";
}

bool OpenPort(Link& link, MainView& view, int port, const std::string& settings) {
    view.SetComPort("COM" + IntegerToText(port));
    link.PortRefusal.clear();
    SerialPort& device = link.MSComm1;
    try {
        if (device.PortOpen()) {
            if (device.Settings() == settings && device.CommPort() == port) {
                link.PortHeld = True;
                EmptyInput(link);
                return true;
            }
            ClosePort(link);
        }
        device.SetCommPort(port);
        device.SetSettings(settings);
        device.SetPortOpen(true);
        device.SetDTREnable(true);
        EmptyInput(link);
        link.PortHeld = ToFlag(device.PortOpen());
        return device.PortOpen();
    } catch (const Fault& fault) {
        link.PortRefusal = fault.what();
        return false;
    }
}

void ClosePort(Link& link) {
    // A device that is gone cannot be closed any better.
    TrapFault([&link] {
        if (link.MSComm1.PortOpen()) {
            link.PortHeld = False;
            link.MSComm1.SetDTREnable(false);
            link.MSComm1.SetPortOpen(false);
        }
    });
}

bool DeviceLost(const Link& link) {
    return link.PortHeld != False && !link.MSComm1.PortOpen();
}

bool NoticeLostDevice(Link& link) {
    const bool open = link.LinkState == LinkNormal || link.LinkState == LinkCommand;
    if (!open || link.CommBusy != False || link.MSComm1.PortOpen()) {
        return false;
    }
    link.LinkState = LinkDisconnected;
    return true;
}

}  // namespace comm
