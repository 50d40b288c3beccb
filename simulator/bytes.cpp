#include "simulator/bytes.h"

namespace simulator {

std::string HexText(std::span<const std::uint8_t> bytes) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(bytes.size() * 3);
    for (const std::uint8_t byte : bytes) {
        if (!text.empty()) {
            text += ' ';
        }
        text += digits[byte >> 4];
        text += digits[byte & 0x0F];
    }
    return text;
}

Bytes BytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

}  // namespace simulator
