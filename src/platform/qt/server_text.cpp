#include "platform/qt/server_text.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

/// Characters that stand for bytes: this one and the 255 behind it.
constexpr std::uint32_t FirstMark = 0x10F700;
constexpr std::uint32_t Marks = 256;
constexpr std::size_t MarkSize = 4;

constexpr std::uint32_t FirstSurrogate = 0xD800;
constexpr std::uint32_t LastSurrogate = 0xDFFF;
constexpr std::uint32_t LastCharacter = 0x10FFFF;
constexpr int BitsPerFurther = 6;
constexpr std::uint32_t FurtherMask = 0x3F;

struct Lead {
    std::uint8_t Mask;  ///< bits that tell the length
    std::uint8_t Mark;
    std::size_t Size;
    std::uint32_t Least;  ///< that is not written shorter
};
constexpr Lead Leads[] = {
    {0x80, 0x00, 1, 0x01}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}};

/// A character and its bytes; a size of 0 if none stands there.
struct Character {
    std::uint32_t Number = 0;
    std::size_t Size = 0;
};

bool IsFurther(char byte) {
    return (static_cast<std::uint8_t>(byte) & ~FurtherMask & 0xFFU) == 0x80;
}

Character CharacterOf(const Lead& lead, std::string_view text) {
    std::uint32_t number = static_cast<std::uint8_t>(text[0]) & ~std::uint32_t{lead.Mask} & 0xFFU;
    for (std::size_t i = 1; i < lead.Size; ++i) {
        if (i >= text.size() || !IsFurther(text[i])) {
            return {};
        }
        number = number << BitsPerFurther | (static_cast<std::uint8_t>(text[i]) & FurtherMask);
    }
    const bool surrogate = number >= FirstSurrogate && number <= LastSurrogate;
    return number < lead.Least || number > LastCharacter || surrogate
               ? Character{}
               : Character{.Number = number, .Size = lead.Size};
}

/// The character that `text`, which is not empty, begins with; a zero is none.
Character FirstCharacter(std::string_view text) {
    for (const Lead& lead : Leads) {
        if ((static_cast<std::uint8_t>(text[0]) & lead.Mask) == lead.Mark) {
            return CharacterOf(lead, text);
        }
    }
    return {};
}

bool IsMark(const Character& one) {
    return one.Size == MarkSize && one.Number >= FirstMark && one.Number < FirstMark + Marks;
}

void AppendMark(std::uint8_t byte, std::string& out) {
    const std::uint32_t number = FirstMark + byte;
    out += static_cast<char>(0xF0 | number >> 3 * BitsPerFurther);
    for (int further = 2; further >= 0; --further) {
        out += static_cast<char>(0x80 | (number >> further * BitsPerFurther & FurtherMask));
    }
}

}  // namespace

std::string ServerText(const std::string& text) {
    std::string kept;
    kept.reserve(text.size());
    for (std::string_view rest = text; !rest.empty();) {
        const Character one = FirstCharacter(rest);
        if (one.Size == 0 || IsMark(one)) {
            AppendMark(static_cast<std::uint8_t>(rest[0]), kept);
            rest.remove_prefix(1);
        } else {
            kept += rest.substr(0, one.Size);
            rest.remove_prefix(one.Size);
        }
    }
    return kept;
}

std::string TextOfServer(const std::string& kept) {
    std::string text;
    text.reserve(kept.size());
    for (std::string_view rest = kept; !rest.empty();) {
        const Character one = FirstCharacter(rest);
        const std::size_t size = one.Size == 0 ? 1 : one.Size;
        if (IsMark(one)) {
            text += static_cast<char>(one.Number - FirstMark);
        } else {
            text += rest.substr(0, size);
        }
        rest.remove_prefix(size);
    }
    return text;
}
