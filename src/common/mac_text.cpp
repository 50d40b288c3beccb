#include "common/mac_text.h"

#include <string_view>

std::string MacText(const std::array<std::uint8_t, 6>& mac) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (const std::uint8_t byte : mac) {
        text += text.empty() ? "" : ":";
        text += digits[byte >> 4];
        text += digits[byte & 0xF];
    }
    return text;
}
