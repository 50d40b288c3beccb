#include "platform/qt/port_hang_up.h"

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <poll.h>
#endif

#ifdef Q_OS_WIN

bool HasHungUp(const QSerialPort& port) {
    DWORD errors = 0;
    return ::ClearCommError(port.handle(), &errors, nullptr) == 0;
}

#else

bool HasHungUp(const QSerialPort& port) {
    pollfd watched{port.handle(), 0, 0};
    return ::poll(&watched, 1, 0) > 0 && (watched.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

#endif
