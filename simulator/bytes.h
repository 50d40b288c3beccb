#ifndef ORVIA_SIMULATOR_BYTES_H
#define ORVIA_SIMULATOR_BYTES_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace simulator {

/// Time of the engine, in microseconds from its start. It never runs back.
using Microseconds = std::int64_t;
inline constexpr Microseconds Millisecond = 1000;
inline constexpr Microseconds Second = 1000 * Millisecond;

using Bytes = std::vector<std::uint8_t>;

/// The last three bytes of a radio's address, the part that goes over the wire.
using Mac3 = std::array<std::uint8_t, 3>;

/// Little-endian numbers at `offset`. The bytes must exist.
[[nodiscard]] inline std::uint16_t GetU16(std::span<const std::uint8_t> bytes, std::size_t offset) {
    return static_cast<std::uint16_t>(bytes[offset] | bytes[offset + 1] << 8);
}
inline void PutU16(std::span<std::uint8_t> bytes, std::size_t offset, std::uint32_t value) {
    bytes[offset] = static_cast<std::uint8_t>(value & 0xFF);
    bytes[offset + 1] = static_cast<std::uint8_t>(value >> 8 & 0xFF);
}
inline void PutU24(std::span<std::uint8_t> bytes, std::size_t offset, std::uint32_t value) {
    PutU16(bytes, offset, value);
    bytes[offset + 2] = static_cast<std::uint8_t>(value >> 16 & 0xFF);
}

/// The bytes as pairs of capital hexadecimal digits, a blank between two: "F8 03 0C".
[[nodiscard]] std::string HexText(std::span<const std::uint8_t> bytes);

/// The characters of a text as bytes.
[[nodiscard]] Bytes BytesOf(const std::string& text);

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_BYTES_H
