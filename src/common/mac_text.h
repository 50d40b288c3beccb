#ifndef ORVIA_COMMON_MAC_TEXT_H
#define ORVIA_COMMON_MAC_TEXT_H

#include <array>
#include <cstdint>
#include <string>

/// The address of a radio as it is written on it: "00:13:A2:40:5F:01".
[[nodiscard]] std::string MacText(const std::array<std::uint8_t, 6>& mac);

#endif  // ORVIA_COMMON_MAC_TEXT_H
