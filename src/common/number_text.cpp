#include "common/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "common/fault.h"
#include "common/text.h"

namespace {

constexpr int SignificantDigits = 15;
constexpr int MostPlaces = 6;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::size_t SkipDigits(std::string_view text, std::size_t at) {
    while (at < text.size() && IsDigit(text[at])) {
        ++at;
    }
    return at;
}

/// Length of the exponent that starts at `at`, 0 if none does.
std::size_t ExponentLength(std::string_view text, std::size_t at) {
    if (at >= text.size() || (text[at] != 'e' && text[at] != 'E')) {
        return 0;
    }
    std::size_t digits = at + 1;
    if (digits < text.size() && (text[digits] == '+' || text[digits] == '-')) {
        ++digits;
    }
    const std::size_t end = SkipDigits(text, digits);
    return end == digits ? 0 : end - at;
}

/// Length of the decimal number that the text begins with, sign included; 0 if it begins with
/// none.
std::size_t NumberLength(std::string_view text) {
    const std::size_t start = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
    std::size_t end = SkipDigits(text, start);
    std::size_t digits = end - start;
    if (end < text.size() && text[end] == '.') {
        const std::size_t fraction = SkipDigits(text, end + 1);
        digits += fraction - (end + 1);
        end = fraction;
    }
    return digits == 0 ? 0 : end + ExponentLength(text, end);
}

/// Power of ten of the exponent part, held to what an int takes; 0 if there is none.
long ExponentOf(std::string_view number) {
    const std::size_t mark = number.find_first_of("eE");
    if (mark == std::string_view::npos) {
        return 0;
    }
    const bool negative = number[mark + 1] == '-';
    const std::size_t first = mark + (IsDigit(number[mark + 1]) ? 1 : 2);
    long exponent = 0;
    const auto result =
        std::from_chars(number.data() + first, number.data() + number.size(), exponent);
    if (result.ec != std::errc()) {
        exponent = std::numeric_limits<int>::max();
    }
    return negative ? -exponent : exponent;
}

/// Whether a number that no double holds lies below the smallest one rather than above the
/// largest: from_chars does not tell the two apart.
bool Underflows(std::string_view number) {
    const std::size_t first = number.find_first_of("123456789");
    const std::size_t point = std::min(number.find('.'), number.find_first_of("eE"));
    const auto end = static_cast<long>(std::min(point, number.size()));
    return end - static_cast<long>(first) + ExponentOf(number) < 0;
}

/// The value of a text that NumberLength has measured.
NumberForm Convert(std::string_view number, double& value) {
    if (number.front() == '+') {
        number.remove_prefix(1);
    }
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc()) {
        return NumberForm::Number;
    }
    value = 0;
    return Underflows(number) ? NumberForm::Number : NumberForm::TooLarge;
}

/// A text of zeros and a point needs no sign.
char* DropSignOfZero(char* first, char* last) {
    const bool zero = std::all_of(first + 1, last, [](char c) { return c == '0' || c == '.'; });
    return zero ? std::copy(first + 1, last, first) : last;
}

}  // namespace

std::string DoubleToText(double value) {
    if (!std::isfinite(value) || value == 0) {
        return "0";
    }
    std::array<char, 32> room{};
    const auto result = std::to_chars(room.data(), room.data() + room.size(), value,
                                      std::chars_format::general, SignificantDigits);
    return ToUpper(std::string_view(room.data(), result.ptr));
}

char* FormatFixedTo(char* out, double value, int places) {
    const double shown = std::isfinite(value) ? value : 0.0;
    const auto result = std::to_chars(out, out + FixedTextRoom, shown, std::chars_format::fixed,
                                      std::clamp(places, 0, MostPlaces));
    return *out == '-' ? DropSignOfZero(out, result.ptr) : result.ptr;
}

std::string FormatFixed(double value, int places) {
    std::array<char, FixedTextRoom> room{};
    return std::string(room.data(), FormatFixedTo(room.data(), value, places));
}

double LeadingNumber(std::string_view text) {
    text = TrimLeft(text);
    const std::size_t length = NumberLength(text);
    double value = 0;
    if (length != 0 && Convert(text.substr(0, length), value) == NumberForm::TooLarge) {
        throw Fault("number too large");
    }
    return value;
}

NumberForm ReadNumber(std::string_view text, double& value) {
    value = 0;
    text = Trim(text);
    const std::size_t length = NumberLength(text);
    if (length == 0 || length != text.size()) {
        return NumberForm::None;
    }
    return Convert(text, value);
}

std::optional<double> WholeNumber(std::string_view text) {
    double value = 0;
    if (ReadNumber(text, value) != NumberForm::Number) {
        return std::nullopt;
    }
    return value;
}

double TextToDouble(std::string& text) {
    std::replace(text.begin(), text.end(), ',', '.');
    try {
        return LeadingNumber(text);
    } catch (const Fault&) {
        return 0;
    }
}

bool TextToLong(std::string_view text, std::int32_t& value) {
    value = 0;
    const std::optional<double> number = WholeNumber(text);
    if (!number) {
        return false;
    }
    const double rounded = RoundTiesToEven(*number);
    if (rounded < std::numeric_limits<std::int32_t>::min() ||
        rounded > std::numeric_limits<std::int32_t>::max()) {
        return false;
    }
    value = static_cast<std::int32_t>(rounded);
    return true;
}

double RoundTiesToEven(double value) {
    const double below = std::floor(value);
    const double rest = value - below;
    if (rest > 0.5 || (rest == 0.5 && std::fmod(below, 2.0) != 0)) {
        return below + 1;
    }
    return below;
}
