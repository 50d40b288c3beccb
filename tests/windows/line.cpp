// Tries the port as the console uses it, on COM1, behind which somebody sends back what comes until
// he gets a "!", and then hangs up. Exit status 1 if anything is not as it should be.

#include <windows.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <memory>
#include <vector>

#include "common/fault.h"
#include "platform/com_port.h"
#include "platform/serial_line.h"
#include "platform/win/win_line.h"
#include "platform/win/win_port_inquiry.h"

namespace {

constexpr int Used = 1;
constexpr int Missing = 9;
constexpr DWORD Tick = 100;

int wrong = 0;

void Check(bool holds, const char* what) {
    std::printf("%s %s\n", holds ? "good " : "WRONG", what);
    wrong += holds ? 0 : 1;
}

struct Port {
    explicit Port(const char* settings) : Calls(Used, ReadLineSettings(settings)), Line(Calls) {
        Line.Start();
    }

    /// Runs until `done` or so many milliseconds are over; ticks as the console does.
    template <typename Done>
    bool RunUntil(const Done& done, int milliseconds) {
        const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
        const std::array<void*, WinLine::EventCount> events = Calls.Events();
        while (!done() && GetTickCount64() < end) {
            if (WaitForMultipleObjects(WinLine::EventCount, events.data(), FALSE, Tick) ==
                WAIT_TIMEOUT) {
                Line.Look();
            } else {
                ++Signals;
                Line.OnSignal();
            }
        }
        return done();
    }

    WinLine Calls;
    SerialLine Line;
    int Signals = 0;
};

void OpenAndRefuse() {
    for (const char* settings : {"9600,N,8,1", "19200,N,8,1", "28800,N,8,1", "38400,N,8,1",
                                 "57600,N,8,1", "115200,N,8,1"}) {
        try {
            const Port port(settings);
            Check(!port.Line.Failed(), settings);
        } catch (const Fault& fault) {
            Check(false, fault.what());
        }
    }
    WinPortInquiry inquiry;
    try {
        const WinLine none(Missing, {});
        Check(false, "a port that is missing opens");
    } catch (const Fault& fault) {
        Check(!inquiry.ConditionOf(Missing).Exists, fault.what());
    }
}

double Exchange(Port& port, const Bytes& request) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point begin = Clock::now();
    port.Line.Send(request);
    if (!port.RunUntil([&] { return port.Line.Waiting() >= request.size(); }, 2000)) {
        return 2000;
    }
    const std::chrono::duration<double, std::milli> took = Clock::now() - begin;
    Check(port.Line.Take(0) == request, "a reply is what was sent");
    return took.count();
}

void Reply() {
    constexpr int Exchanges = 101;
    Port port("38400,N,8,1");
    std::vector<double> times;
    for (int i = 0; i < Exchanges; ++i) {
        Bytes request(20);
        for (std::size_t at = 0; at < request.size(); ++at) {
            request[at] = static_cast<std::uint8_t>(128 + i + static_cast<int>(at) * 3 % 64);
        }
        request.erase(std::remove(request.begin(), request.end(), std::uint8_t{'!'}),
                      request.end());
        times.push_back(Exchange(port, request));
    }
    std::sort(times.begin(), times.end());
    std::printf("      replies after %.2f ms, the slowest of %d after %.2f ms\n",
                times[times.size() / 2], Exchanges, times.back());
    Check(times[times.size() / 2] < 5, "a reply is seen within 5 ms");
}

void HangUp() {
    Port port("38400,N,8,1");
    static_cast<void>(port.RunUntil([] { return false; }, 300));
    port.Signals = 0;
    port.Line.Send(Bytes{'!'});
    const ULONGLONG begin = GetTickCount64();
    const bool seen = port.RunUntil([&] { return port.Line.Failed(); }, 3000);
    std::printf("      seen after %d ms, %d signals\n", static_cast<int>(GetTickCount64() - begin),
                port.Signals);
    Check(seen && GetTickCount64() - begin < 1000, "a device that goes is seen within a second");
    Check(port.Signals < 100, "it makes no storm");
}

}  // namespace

int main() {
    OpenAndRefuse();
    Reply();
    HangUp();
    return wrong == 0 ? 0 : 1;
}
