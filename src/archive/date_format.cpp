#include "archive/date_format.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

/// Each of its numbers tells what it stands for, with a leading zero and without.
constexpr LocalTime Telling{2033, 4, 5, 0, 0, 0, 0};

struct Field {
    std::string_view Number;
    std::string_view Format;
};

constexpr std::array<Field, 6> Fields{
    {{"2033", "yyyy"}, {"33", "yy"}, {"04", "MM"}, {"4", "M"}, {"05", "dd"}, {"5", "d"}}};

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view FormatOf(std::string_view number) {
    const auto* field = std::find_if(Fields.begin(), Fields.end(),
                                     [number](const Field& each) { return each.Number == number; });
    return field == Fields.end() ? std::string_view() : field->Format;
}

bool IsMark(char c) {
    return std::string_view(" ,-./").find(c) != std::string_view::npos;
}

/// Empty if something in the text is neither number nor mark.
std::string FormatFrom(std::string_view text) {
    std::string format;
    while (!text.empty()) {
        const auto digits = std::find_if_not(text.begin(), text.end(), IsDigit) - text.begin();
        const auto length = std::max<std::size_t>(static_cast<std::size_t>(digits), 1);
        const std::string_view piece = text.substr(0, length);
        const std::string_view field = IsMark(piece.front()) ? piece : FormatOf(piece);
        if (field.empty()) {
            return {};
        }
        format += field;
        text.remove_prefix(length);
    }
    return format;
}

bool HasAll(std::string_view letters, const std::string& format) {
    return std::all_of(letters.begin(), letters.end(),
                       [&format](char letter) { return format.find(letter) != std::string::npos; });
}

}  // namespace

std::string DateFormatOf(const SystemClock& clock) {
    const std::string format = FormatFrom(clock.DateText(Telling));
    return HasAll("yMd", format) ? format : "yyyy-MM-dd";
}
