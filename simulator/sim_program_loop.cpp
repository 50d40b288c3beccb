#include "simulator/sim_program_loop.h"

#include <poll.h>
#include <signal.h>
#include <time.h>

#include <algorithm>
#include <array>
#include <iostream>

#include "simulator/control.h"

namespace simulator {

namespace {

volatile sig_atomic_t g_ended = 0;

void EndLoop(int) {
    g_ended = 1;
}

/// Time since the first call.
Microseconds Now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    const Microseconds now = time.tv_sec * Second + time.tv_nsec / 1000;
    static const Microseconds start = now;
    return now - start;
}

/// Sleeps until a handle is readable, a signal comes or the network's next event is due.
void Sleep(const Network& network, std::span<pollfd> handles) {
    // Bytes of one answer leave in groups of a few, not each with a wake-up of its own.
    constexpr Microseconds shortest = 500;
    timespec patience{};
    const auto next = network.NextEvent();
    if (next) {
        const Microseconds wait = std::max(*next - Now(), shortest);
        patience.tv_sec = static_cast<time_t>(wait / Second);
        patience.tv_nsec = static_cast<long>(wait % Second * 1000);
    }
    sigset_t none;
    sigemptyset(&none);
    for (pollfd& handle : handles) {
        handle.revents = 0;
    }
    ppoll(handles.data(), handles.size(), next ? &patience : nullptr, &none);
}

/// Carries out all lines that have come; false if one of them ends the program.
bool TakeControl(Network& network, ControlInput& control) {
    control.Receive();
    for (auto line = control.NextLine(); line; line = control.NextLine()) {
        const ControlResult result = Control(network, *line, Now());
        std::cout << result.Text << std::endl;
        if (result.Ends) {
            return false;
        }
    }
    return true;
}

}  // namespace

void CatchEndingSignals() {
    // Blocked but for the sleep, so that none comes between the look at the flag and the sleep.
    sigset_t ending;
    sigemptyset(&ending);
    struct sigaction action {};
    action.sa_handler = EndLoop;
    for (const int signal : {SIGINT, SIGTERM}) {
        sigaddset(&ending, signal);
        sigaction(signal, &action, nullptr);
    }
    sigprocmask(SIG_BLOCK, &ending, nullptr);
    signal(SIGPIPE, SIG_IGN);
}

void Serve(Network& network, Terminal& terminal, ControlInput& control) {
    constexpr short awaited = POLLIN | POLLHUP | POLLERR;
    Now();
    while (g_ended == 0) {
        std::array<pollfd, 3> handles = {{{terminal.Fd(), POLLIN, 0},
                                          {terminal.WatchFd(), POLLIN, 0},
                                          {control.Fd(), POLLIN, 0}}};
        Sleep(network, handles);
        if ((handles[0].revents & awaited) != 0) {
            network.Write(Now(), terminal.Receive());
        }
        if ((handles[1].revents & awaited) != 0) {
            terminal.NoteOpenOrClose();
        }
        terminal.Send(network.Read(Now()));
        if ((handles[2].revents & awaited) != 0 && !TakeControl(network, control)) {
            return;
        }
    }
}

}  // namespace simulator
