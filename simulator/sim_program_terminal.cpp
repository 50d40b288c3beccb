#include "simulator/sim_program_terminal.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#ifdef __linux__
#include <sys/inotify.h>
#endif

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

namespace simulator {

namespace {

std::string Failure(const std::string& what) {
    return what + ": " + std::strerror(errno);
}

/// Bytes pass unchanged and nothing is echoed.
bool MakeRaw(int fd) {
    termios settings{};
    if (tcgetattr(fd, &settings) != 0) {
        return false;
    }
    cfmakeraw(&settings);
    return tcsetattr(fd, TCSANOW, &settings) == 0;
}

}  // namespace

std::string Terminal::Open() {
    master_ = FileHandle(posix_openpt(O_RDWR | O_NOCTTY));
    if (!master_ || grantpt(master_.Get()) != 0 || unlockpt(master_.Get()) != 0) {
        return Failure("no pseudo-terminal");
    }
    const char* name = ptsname(master_.Get());
    if (name == nullptr) {
        return Failure("the pseudo-terminal has no name");
    }
    name_ = name;
    slave_ = FileHandle(open(name, O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (!slave_ || !MakeRaw(slave_.Get())) {
        return Failure(name_);
    }
    fcntl(master_.Get(), F_SETFL, O_NONBLOCK);
    fcntl(master_.Get(), F_SETFD, FD_CLOEXEC);
    Watch();
    return {};
}

#ifdef __linux__
void Terminal::Watch() {
    FileHandle watch(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (watch && inotify_add_watch(watch.Get(), name_.c_str(), IN_OPEN | IN_CLOSE) >= 0) {
        watch_ = std::move(watch);
    }
}

void Terminal::NoteOpenOrClose() {
    alignas(inotify_event) std::array<char, 4096> buffer{};
    const ssize_t size = read(watch_.Get(), buffer.data(), buffer.size());
    for (ssize_t at = 0; at + static_cast<ssize_t>(sizeof(inotify_event)) <= size;) {
        inotify_event event{};
        std::memcpy(&event, buffer.data() + at, sizeof event);
        if ((event.mask & IN_CLOSE) != 0) {
            ConsoleLeft();
        } else if ((event.mask & IN_OPEN) != 0) {
            listening_ = true;
        }
        at += static_cast<ssize_t>(sizeof event + event.len);
    }
}
#else
void Terminal::Watch() {}
void Terminal::NoteOpenOrClose() {}
#endif

void Terminal::ConsoleLeft() {
    listening_ = false;
    tcflush(slave_.Get(), TCIFLUSH);
    ioctl(slave_.Get(), TIOCNXCL);
    MakeRaw(slave_.Get());
}

Bytes Terminal::Receive() {
    Bytes bytes;
    std::array<std::uint8_t, 4096> buffer{};
    ssize_t size = read(master_.Get(), buffer.data(), buffer.size());
    while (size > 0) {
        bytes.insert(bytes.end(), buffer.begin(), buffer.begin() + size);
        size = read(master_.Get(), buffer.data(), buffer.size());
    }
    // Events of open and close may come joined or late; who sends is there.
    listening_ = listening_ || !bytes.empty();
    return bytes;
}

void Terminal::Send(std::span<const std::uint8_t> bytes) {
    while (listening_ && !bytes.empty()) {
        const ssize_t size = write(master_.Get(), bytes.data(), bytes.size());
        if (size <= 0) {
            return;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(size));
    }
}

}  // namespace simulator
