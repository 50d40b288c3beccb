#ifndef ORVIA_PLATFORM_QT_PORT_WAKE_H
#define ORVIA_PLATFORM_QT_PORT_WAKE_H

#include <QByteArray>
#include <QSerialPort>

// How many bytes must have come before the system wakes who waits for them. A system that cannot
// do that wakes for each.

/// The number that the open port has now.
[[nodiscard]] int WakeCount(const QSerialPort& port);
/// Sets it, up to 255.
void SetWakeCount(const QSerialPort& port, int count);
/// Takes what has come, however little, without waiting.
[[nodiscard]] QByteArray TakeWaiting(const QSerialPort& port);

#endif  // ORVIA_PLATFORM_QT_PORT_WAKE_H
