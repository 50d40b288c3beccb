#ifndef ORVIA_PLATFORM_QT_PORT_DEVICES_H
#define ORVIA_PLATFORM_QT_PORT_DEVICES_H

#include <QString>

#include "platform/com_port.h"

/// The device that a port number (1 to 16) stands for: the target of the symbolic link "COM3" in
/// `portsFolder` if there is one, else one of /dev/ttyS0-3 (COM1-4), /dev/ttyUSB0-7 (COM5-12),
/// /dev/ttyACM0-3 (COM13-16). An existing device is given by its canonical path: ports are locked
/// by name, so each device must have only one. A number out of range is a Fault.
[[nodiscard]] QString DeviceOfPort(int number, const QString& portsFolder);

#endif  // ORVIA_PLATFORM_QT_PORT_DEVICES_H
