#ifndef ORVIA_PLATFORM_QT_PORT_HANG_UP_H
#define ORVIA_PLATFORM_QT_PORT_HANG_UP_H

#include <QSerialPort>

/// Whether the device behind the open port is gone (unplugged, or the other end of a
/// pseudo-terminal closed). Asks the system without reading anything and without waiting.
[[nodiscard]] bool HasHungUp(const QSerialPort& port);

#endif  // ORVIA_PLATFORM_QT_PORT_HANG_UP_H
