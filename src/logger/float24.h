#ifndef ORVIA_LOGGER_FLOAT24_H
#define ORVIA_LOGGER_FLOAT24_H

#include <cstdint>

namespace config {

// The logger's decimal float, 24 bits: mantissa m, 0 to 999999, in bits 0 to 19; decimal scale e,
// 0 to 7, in bits 20 to 22; sign in bit 23. The value is m / 10^e. docs/settings-image.md has a
// worked example.

/// Nearest value that the logger can hold; magnitudes from 999999 up saturate there. NaN is a
/// Fault.
[[nodiscard]] std::int32_t EncodeFloat24(double value);

/// Divides by 10 one step at a time: that rounding belongs to the format, so 0.014 comes back as
/// 0.013999999999999999.
[[nodiscard]] double DecodeFloat24(std::int32_t bits);

}  // namespace config

#endif  // ORVIA_LOGGER_FLOAT24_H
