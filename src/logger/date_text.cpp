#include "logger/date_text.h"
#include "common/number_text.h"

namespace cmd {

std::string ShortDateText(const SystemClock& clock, int year, int month, int day) {
    std::string text = clock.DateText({.Year = year, .Month = month, .Day = day});
    const std::string digits = IntegerToText(year);
    if (digits.size() == 4 && text.ends_with(digits)) {
        text.erase(text.size() - 4, 2);
    }
    return text;
}

}  // namespace cmd
