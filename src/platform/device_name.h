#ifndef ORVIA_PLATFORM_DEVICE_NAME_H
#define ORVIA_PLATFORM_DEVICE_NAME_H

#include <string>

/// Most characters of a device's name that a list of ports has room for beside the port and its
/// path.
inline constexpr std::size_t MostDeviceName = 40;

/// A serial device by its maker and product. The maker stays away where the product's name begins
/// with it, or where both have no room; a device that names neither is a "Serial port".
[[nodiscard]] std::string DeviceName(const std::string& maker, const std::string& product);

#endif  // ORVIA_PLATFORM_DEVICE_NAME_H
