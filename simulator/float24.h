#ifndef ORVIA_SIMULATOR_FLOAT24_H
#define ORVIA_SIMULATOR_FLOAT24_H

#include <cstdint>

namespace simulator {

/// The logger's three-byte decimal number: bits 0-19 a mantissa up to 999999, bits 20-22 a decimal
/// scale, bit 23 the sign; value = mantissa / 10^scale. The encoder keeps as many decimals as fit
/// and saturates at 999999.
[[nodiscard]] std::uint32_t EncodeFloat24(double value);
[[nodiscard]] double DecodeFloat24(std::uint32_t bits);

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_FLOAT24_H
