#include "logger/image_bytes.h"

#include <algorithm>

#include "common/characters.h"
#include "common/fault.h"
#include "common/text.h"
#include "logger/float24.h"

namespace config {

namespace {

constexpr int Float24Size = 3;

void CheckField(std::size_t imageSize, int offset, int size) {
    if (offset < 0 || size < 0 || offset + size > static_cast<int>(imageSize)) {
        throw Fault("field outside the image");
    }
}

/// Writes the low `size` bytes of `value`, low byte first.
void PutLow(std::int32_t value, Bytes& image, int offset, int size) {
    CheckField(image.size(), offset, size);
    std::uint8_t* const field = image.data() + offset;
    for (int i = 0; i < size; ++i) {
        field[i] = static_cast<std::uint8_t>(value >> (8 * i) & 0xFF);
    }
}

std::int32_t GetLow(std::span<const std::uint8_t> image, int offset, int size) {
    CheckField(image.size(), offset, size);
    std::int32_t value = 0;
    for (int i = 0; i < size; ++i) {
        value |= image.data()[offset + i] << (8 * i);
    }
    return value;
}

void PutChecked(std::int32_t value, std::int32_t largest, Bytes& image, int offset, int size) {
    if (value < 0 || value > largest) {
        throw Fault("value does not fit its field");
    }
    PutLow(value, image, offset, size);
}

bool IsPlain(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 32 && byte < 128;
}

}  // namespace

void PutByte(int value, Bytes& image, int offset) {
    PutChecked(value, 0xFF, image, offset, 1);
}

void PutU16(std::int32_t value, Bytes& image, int offset) {
    PutChecked(value, 0xFFFF, image, offset, 2);
}

void PutFloat24(double value, Bytes& image, int offset) {
    PutLow(EncodeFloat24(value), image, offset, Float24Size);
}

void PutString(std::string_view text, Bytes& image, int offset, int size) {
    CheckField(image.size(), offset, size);
    std::string bytes = ToLatin1(text);
    bytes.resize(static_cast<std::size_t>(size), ' ');
    std::transform(bytes.begin(), bytes.end(), image.begin() + offset,
                   [](char c) { return static_cast<std::uint8_t>(c); });
}

std::uint8_t GetByte(std::span<const std::uint8_t> image, int offset) {
    return static_cast<std::uint8_t>(GetLow(image, offset, 1));
}

std::int32_t GetU16(std::span<const std::uint8_t> image, int offset) {
    return GetLow(image, offset, 2);
}

double GetFloat24(std::span<const std::uint8_t> image, int offset) {
    return DecodeFloat24(GetLow(image, offset, Float24Size));
}

std::string GetString(std::span<const std::uint8_t> image, int offset, int size) {
    CheckField(image.size(), offset, size);
    const auto field =
        image.subspan(static_cast<std::size_t>(offset), static_cast<std::size_t>(size));
    std::string text(field.begin(), field.end());
    std::replace_if(
        text.begin(), text.end(), [](char c) { return !IsPlain(c); }, ' ');
    return std::string(TrimRight(text));
}

}  // namespace config
