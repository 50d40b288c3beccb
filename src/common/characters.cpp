#include "common/characters.h"

#include <array>

namespace {

/// What a byte stands for that belongs to no character.
constexpr char32_t NoCharacter = 0xFFFFFFFF;
constexpr char32_t LastLatin1 = 0xFF;

struct Character {
    char32_t Code = NoCharacter;
    std::size_t Length = 1;  ///< in bytes
};

/// How a character of so many bytes begins: the bits of its first byte that count, and the least
/// code that needs that many.
struct Form {
    unsigned char CodeBits;
    char32_t LeastCode;
};
constexpr std::array<Form, 4> Forms{{{0x7F, 0}, {0x1F, 0x80}, {0x0F, 0x800}, {0x07, 0x10000}}};

/// Bytes of the character that begins so; 0 if none does.
std::size_t LengthBy(unsigned char first) {
    return first < 0x80                    ? 1
           : first >= 0xC0 && first < 0xE0 ? 2
           : first >= 0xE0 && first < 0xF0 ? 3
           : first >= 0xF0 && first < 0xF8 ? 4
                                           : 0;
}

bool IsCode(char32_t code, const Form& form) {
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return code >= form.LeastCode && code <= 0x10FFFF && !surrogate;
}

/// The character that the text, which is not empty, begins with.
Character FirstCharacter(std::string_view text) {
    const auto first = static_cast<unsigned char>(text.front());
    const std::size_t length = LengthBy(first);
    if (length == 0 || length > text.size()) {
        return {};
    }
    const Form& form = Forms[length - 1];
    auto code = static_cast<char32_t>(first & form.CodeBits);
    for (const char c : text.substr(1, length - 1)) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0U) != 0x80U) {
            return {};
        }
        code = code << 6 | (byte & 0x3FU);
    }
    return IsCode(code, form) ? Character{code, length} : Character{};
}

}  // namespace

std::size_t CountCharacters(std::string_view text) {
    std::size_t count = 0;
    for (; !text.empty(); ++count) {
        text.remove_prefix(FirstCharacter(text).Length);
    }
    return count;
}

std::string CutText(std::string_view text, std::size_t most) {
    std::size_t end = 0;
    for (std::size_t count = 0; count < most && end < text.size(); ++count) {
        end += FirstCharacter(text.substr(end)).Length;
    }
    return std::string(text.substr(0, end));
}

std::string ToLatin1(std::string_view text) {
    std::string bytes;
    while (!text.empty()) {
        const Character first = FirstCharacter(text);
        bytes += first.Code <= LastLatin1 ? static_cast<char>(first.Code) : ' ';
        text.remove_prefix(first.Length);
    }
    return bytes;
}
