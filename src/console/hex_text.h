#ifndef ORVIA_CONSOLE_HEX_TEXT_H
#define ORVIA_CONSOLE_HEX_TEXT_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "records/address_book.h"

/// The digit of the low four bits, in upper case.
[[nodiscard]] char NibbleToHex(int value);

/// Two digits, high nibble first.
[[nodiscard]] std::string ByteToHex(int value);

/// Twelve digits, first byte first.
[[nodiscard]] std::string MacToHex(const MacAddress& mac);

/// Reads hexadecimal digits of either case, blanks around them allowed. False if the text is
/// empty, longer than `maxLength`, or holds another character; `value` then has what the digits
/// before it built.
[[nodiscard]] bool ParseHex(std::string_view text, std::size_t maxLength, int& value);

/// The byte that two digits give. What is no number gives what the digits before built, or 0.
[[nodiscard]] std::uint8_t HexByte(std::string_view text);

#endif  // ORVIA_CONSOLE_HEX_TEXT_H
