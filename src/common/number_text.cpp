#include "common/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
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

/// Power of ten of the exponent part, held to what leaves room to add the length of a text; 0 if
/// there is none.
std::int64_t ExponentOf(std::string_view number) {
    constexpr std::int64_t largest = std::numeric_limits<std::int32_t>::max();
    const std::size_t mark = number.find_first_of("eE");
    if (mark == std::string_view::npos) {
        return 0;
    }
    const bool negative = number[mark + 1] == '-';
    const std::size_t first = mark + (IsDigit(number[mark + 1]) ? 1 : 2);
    std::int64_t exponent = 0;
    const auto result =
        std::from_chars(number.data() + first, number.data() + number.size(), exponent);
    exponent = result.ec == std::errc() ? std::min(exponent, largest) : largest;
    return negative ? -exponent : exponent;
}

/// Whether a number that no double holds lies below the smallest one rather than above the
/// largest: from_chars does not tell the two apart.
bool Underflows(std::string_view number) {
    const std::size_t first = number.find_first_of("123456789");
    const std::size_t point = std::min(number.find('.'), number.find_first_of("eE"));
    const auto end = static_cast<std::int64_t>(std::min(point, number.size()));
    return end - static_cast<std::int64_t>(first) + ExponentOf(number) < 0;
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

constexpr std::array<double, MostPlaces + 1> PowersOfTen = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};

/// The magnitude of `value` in units of the last of `places` decimals, to the nearest; false where
/// a double cannot tell to which side it rounds. Below 2^32 the product is off by 2^-21 at most.
bool CountUnits(double value, int places, std::uint32_t& units) {
    constexpr double Limit = 4'000'000'000.0;
    constexpr double Doubt = 0x1p-20;
    const double product = std::fabs(value) * PowersOfTen[static_cast<std::size_t>(places)];
    if (!(product < Limit)) {
        return false;
    }
    units = static_cast<std::uint32_t>(product);
    const double beyondHalf = product - units - 0.5;
    units += beyondHalf > 0 ? 1 : 0;
    return std::fabs(beyondHalf) > Doubt;
}

constexpr std::array<std::uint32_t, 10> Tens = {
    1, 10, 100, 1000, 10'000, 100'000, 1'000'000, 10'000'000, 100'000'000, 1'000'000'000};

constexpr std::array<char, 200> MakeDigitPairs() {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}
constexpr std::array<char, 200> DigitPairs = MakeDigitPairs();

/// Writes the last `digits` digits of `value`, with leading zeros; returns one past the last.
char* WriteDigits(char* out, std::uint32_t value, int digits) {
    char* const last = out + digits;
    char* at = last;
    for (; digits >= 2; digits -= 2) {
        at -= 2;
        std::memcpy(at, &DigitPairs[std::size_t{2} * (value % 100)], 2);
        value /= 100;
    }
    if (digits == 1) {
        *--at = static_cast<char>('0' + value % 10);
    }
    return last;
}

int DigitCount(std::uint32_t value) {
    int count = 1;
    while (count < 10 && value >= Tens[static_cast<std::size_t>(count)]) {
        ++count;
    }
    return count;
}

/// Writes a count of such units.
char* WriteUnits(char* out, bool negative, std::uint32_t units, int places) {
    const std::uint32_t one = Tens[static_cast<std::size_t>(places)];
    const std::uint32_t whole = units / one;
    *out = '-';
    out += negative ? 1 : 0;
    out = WriteDigits(out, whole, DigitCount(whole));
    if (places > 0) {
        *out++ = '.';
        out = WriteDigits(out, units - whole * one, places);
    }
    return out;
}

}  // namespace

std::string IntegerToText(std::int64_t value) {
    std::array<char, std::numeric_limits<std::int64_t>::digits10 + 2> room{};
    const auto result = std::to_chars(room.data(), room.data() + room.size(), value);
    return std::string(room.data(), result.ptr);
}

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
    const int held = std::clamp(places, 0, MostPlaces);
    std::uint32_t units = 0;
    if (CountUnits(value, held, units)) {
        return WriteUnits(out, value < 0 && units != 0, units, held);
    }
    const double shown = std::isfinite(value) ? value : 0.0;
    const auto result =
        std::to_chars(out, out + FixedTextRoom, shown, std::chars_format::fixed, held);
    return *out == '-' ? DropSignOfZero(out, result.ptr) : result.ptr;
}

std::string FormatFixed(double value, int places) {
    std::array<char, FixedTextRoom> room{};
    return std::string(room.data(), FormatFixedTo(room.data(), value, places));
}

std::string FormatSignificant(double value, int digits) {
    constexpr int LeastExponent = -4;
    if (!std::isfinite(value) || value == 0) {
        return "0";
    }
    const int behind = std::clamp(digits, 1, SignificantDigits) - 1;
    std::array<char, FixedTextRoom> room{};
    char* const last = room.data() + room.size();
    auto end = std::to_chars(room.data(), last, value, std::chars_format::scientific, behind).ptr;
    const std::string_view text(room.data(), end);
    const std::int64_t exponent = ExponentOf(text);
    if (exponent < LeastExponent) {
        return ToUpper(text);
    }
    const auto places = static_cast<int>(std::max<std::int64_t>(behind - exponent, 0));
    end = std::to_chars(room.data(), last, value, std::chars_format::fixed, places).ptr;
    return std::string(room.data(), end);
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
