#include "platform/qt/port_wake.h"

#ifndef Q_OS_WIN
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#endif

#ifdef Q_OS_WIN

int WakeCount(const QSerialPort& /*port*/) {
    return 1;
}

void SetWakeCount(const QSerialPort& /*port*/, int /*count*/) {}

QByteArray TakeWaiting(const QSerialPort& /*port*/) {
    return {};
}

#else

int WakeCount(const QSerialPort& port) {
    termios line{};
    return ::tcgetattr(port.handle(), &line) == 0 ? line.c_cc[VMIN] : 1;
}

void SetWakeCount(const QSerialPort& port, int count) {
    constexpr int Most = 255;
    termios line{};
    if (::tcgetattr(port.handle(), &line) == 0) {
        line.c_cc[VMIN] = static_cast<cc_t>(std::clamp(count, 0, Most));
        ::tcsetattr(port.handle(), TCSANOW, &line);
    }
}

QByteArray TakeWaiting(const QSerialPort& port) {
    std::array<char, 512> block{};
    const ssize_t count = ::read(port.handle(), block.data(), block.size());
    return count > 0 ? QByteArray(block.data(), count) : QByteArray();
}

#endif
