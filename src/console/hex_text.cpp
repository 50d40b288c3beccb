#include "console/hex_text.h"

#include "common/text.h"

namespace {

/// Value of an upper-case digit, -1 if it is none.
int DigitValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

}  // namespace

char NibbleToHex(int value) {
    constexpr std::string_view Digits = "0123456789ABCDEF";
    return Digits[static_cast<std::size_t>(value & 0x0F)];
}

std::string ByteToHex(int value) {
    return {NibbleToHex(value >> 4), NibbleToHex(value)};
}

std::string MacToHex(const MacAddress& mac) {
    std::string digits;
    for (const std::uint8_t byte : mac) {
        digits += ByteToHex(byte);
    }
    return digits;
}

bool ParseHex(std::string_view text, std::size_t maxLength, int& value) {
    value = 0;
    const std::string digits = ToUpper(Trim(text));
    if (digits.empty() || digits.size() > maxLength) {
        return false;
    }
    for (const char c : digits) {
        const int digit = DigitValue(c);
        if (digit < 0) {
            return false;
        }
        value = value * 16 + digit;
    }
    return true;
}

std::uint8_t HexByte(std::string_view text) {
    constexpr std::size_t Digits = 2;
    int value = 0;
    static_cast<void>(ParseHex(text, Digits, value));
    return static_cast<std::uint8_t>(value);
}
