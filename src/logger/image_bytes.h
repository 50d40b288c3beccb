#ifndef ORVIA_LOGGER_IMAGE_BYTES_H
#define ORVIA_LOGGER_IMAGE_BYTES_H

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "common/bytes.h"

namespace config {

// Fields of the settings image, by byte offset. Numbers are little endian. A value that is wider
// than its field is a Fault, never wrapped; so is an offset outside the image.

void PutByte(int value, Bytes& image, int offset);
void PutU16(std::int32_t value, Bytes& image, int offset);
void PutFloat24(double value, Bytes& image, int offset);
/// One byte a character: its Latin-1 byte, or a blank if it has none. Cut to `size` characters,
/// padded with blanks.
void PutString(std::string_view text, Bytes& image, int offset, int size);

[[nodiscard]] std::uint8_t GetByte(std::span<const std::uint8_t> image, int offset);
[[nodiscard]] std::int32_t GetU16(std::span<const std::uint8_t> image, int offset);
[[nodiscard]] double GetFloat24(std::span<const std::uint8_t> image, int offset);
/// Bytes that are no plain characters, 32 to 127, read as blanks; blanks at the end are dropped.
[[nodiscard]] std::string GetString(std::span<const std::uint8_t> image, int offset, int size);

}  // namespace config

#endif  // ORVIA_LOGGER_IMAGE_BYTES_H
