#include "simulator/text.h"

#include <array>
#include <charconv>
#include <cmath>

namespace simulator {

namespace {

constexpr std::string_view Blanks = " \t";

template <typename Number, typename... Options>
std::optional<Number> Whole(std::string_view text, Options... options) {
    Number number{};
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, options...);
    if (error != std::errc{} || stop != end) {
        return std::nullopt;
    }
    return number;
}

bool IsHexDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

}  // namespace

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(Blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

std::vector<std::string_view> Words(std::string_view text) {
    std::vector<std::string_view> words;
    std::size_t begin = text.find_first_not_of(Blanks);
    while (begin != std::string_view::npos) {
        const std::size_t end = std::min(text.find_first_of(Blanks, begin), text.size());
        words.push_back(text.substr(begin, end - begin));
        begin = text.find_first_not_of(Blanks, end);
    }
    return words;
}

std::optional<TextPair> SplitAt(std::string_view text, char mark) {
    const std::size_t at = text.find(mark);
    if (at == std::string_view::npos) {
        return std::nullopt;
    }
    return TextPair{Trimmed(text.substr(0, at)), Trimmed(text.substr(at + 1))};
}

std::optional<double> NumberOf(std::string_view text) {
    const auto number = Whole<double>(text, std::chars_format::general);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<std::int64_t> IntegerOf(std::string_view text, std::int64_t low, std::int64_t high) {
    const auto number = Whole<std::int64_t>(text, 10);
    return number && *number >= low && *number <= high ? number : std::nullopt;
}

std::optional<Bytes> HexBytesOf(std::string_view text) {
    if (text.size() % 2 != 0) {
        return std::nullopt;
    }
    Bytes bytes;
    for (std::size_t i = 0; i < text.size(); i += 2) {
        if (!IsHexDigit(text[i]) || !IsHexDigit(text[i + 1])) {
            return std::nullopt;
        }
        bytes.push_back(Whole<std::uint8_t>(text.substr(i, 2), 16).value_or(0));
    }
    return bytes;
}

std::string FixedText(double value, int decimals) {
    std::array<char, 400> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                            std::chars_format::fixed, decimals);
    return error == std::errc{} ? std::string(buffer.data(), end) : std::string();
}

}  // namespace simulator
