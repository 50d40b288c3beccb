#include "common/text.h"

#include "common/number_text.h"

namespace {

constexpr char Blank = ' ';

char UpperOf(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
char LowerOf(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::string_view TrimLeft(std::string_view text) {
    const std::size_t first = text.find_first_not_of(Blank);
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

std::string_view TrimRight(std::string_view text) {
    return text.substr(0, text.find_last_not_of(Blank) + 1);
}

std::string_view Trim(std::string_view text) {
    return TrimLeft(TrimRight(text));
}

std::string ToUpper(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        c = UpperOf(c);
    }
    return result;
}

std::string ToLower(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        c = LowerOf(c);
    }
    return result;
}

std::vector<std::string_view> SplitAtBlanks(std::string_view text) {
    std::vector<std::string_view> pieces;
    std::size_t start = text.find_first_not_of(Blank);
    while (start != std::string_view::npos) {
        const std::size_t end = text.find(Blank, start);
        pieces.push_back(text.substr(start, end - start));
        start = text.find_first_not_of(Blank, end);
    }
    return pieces;
}

std::string TwoDigits(int value) {
    const std::string digits = IntegerToText(value);
    return digits.size() < 2 ? "0" + digits : digits;
}
