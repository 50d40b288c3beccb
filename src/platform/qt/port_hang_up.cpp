#include "platform/qt/port_hang_up.h"

#include <poll.h>

bool HasHungUp(const QSerialPort& port) {
    pollfd watched{port.handle(), 0, 0};
    return ::poll(&watched, 1, 0) > 0 && (watched.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}
