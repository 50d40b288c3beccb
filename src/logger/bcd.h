#ifndef ORVIA_LOGGER_BCD_H
#define ORVIA_LOGGER_BCD_H

#include <cstdint>
#include <string>

namespace cmd {

/// Tens in the high nibble, units in the low one. Below 0 or above 159 is a Fault.
[[nodiscard]] std::uint8_t ToBcd(int value);

/// High nibble x 10 + low nibble; nibbles above 9 are taken as they stand.
[[nodiscard]] int FromBcd(std::uint8_t byte);

/// Both nibbles as characters. One above 9 gives the character that far behind "0", so hour 1A
/// reads "1:", as the loggers' own displays have it.
[[nodiscard]] std::string BcdToText(std::uint8_t byte);

}  // namespace cmd

#endif  // ORVIA_LOGGER_BCD_H
