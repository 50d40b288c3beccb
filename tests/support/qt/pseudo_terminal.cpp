#include "support/qt/pseudo_terminal.h"

#ifndef _WIN32

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <stdexcept>

PseudoTerminal::PseudoTerminal() : handle_(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
    if (handle_ < 0 || ::grantpt(handle_) != 0 || ::unlockpt(handle_) != 0) {
        throw std::runtime_error("no pseudo-terminal");
    }
    device_ = QString::fromLocal8Bit(::ptsname(handle_));
}

PseudoTerminal::~PseudoTerminal() {
    HangUp();
}

std::size_t PseudoTerminal::Send(const Bytes& bytes) {
    const ssize_t sent = ::write(handle_, bytes.data(), bytes.size());
    return sent < 0 ? 0 : static_cast<std::size_t>(sent);
}

Bytes PseudoTerminal::Receive() {
    Bytes all;
    std::array<std::uint8_t, 4096> block{};
    ssize_t count = 0;
    while ((count = ::read(handle_, block.data(), block.size())) > 0) {
        all.insert(all.end(), block.begin(), block.begin() + count);
    }
    return all;
}

void PseudoTerminal::HangUp() {
    if (handle_ >= 0) {
        ::close(handle_);
    }
    handle_ = -1;
}

#endif
