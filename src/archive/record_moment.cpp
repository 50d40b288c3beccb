#include "archive/record_moment.h"

#include <algorithm>
#include <chrono>

#include "common/number_text.h"
#include "common/text.h"

namespace {

using std::chrono::day;
using std::chrono::days;
using std::chrono::month;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

constexpr int MonthsPerYear = 12;
constexpr int FirstYear = 2000;
constexpr sys_days Epoch{year{FirstYear} / 1 / 1};
constexpr int PackedMonths = 1024;  // ten bits

/// Days from the epoch to the first of a month that is counted from January 2000.
constexpr std::int64_t DaysToMonth(int months) {
    const int years = (months >= 0 ? months : months - (MonthsPerYear - 1)) / MonthsPerYear;
    const auto first = year{FirstYear + years} /
                       month{static_cast<unsigned>(months - years * MonthsPerYear + 1)} / day{1};
    return (sys_days{first} - Epoch).count();
}

constexpr auto DaysToPackedMonth = [] {
    std::array<std::int32_t, PackedMonths> table{};
    for (int i = 0; i < PackedMonths; ++i) {
        table[static_cast<std::size_t>(i)] = static_cast<std::int32_t>(DaysToMonth(i));
    }
    return table;
}();

/// Whole spans below a moment, also below the epoch.
constexpr std::int64_t FloorDivide(std::int64_t moment, std::int64_t span) {
    return moment / span - (moment % span < 0 ? 1 : 0);
}

year_month_day DateOf(Moment moment) {
    return sys_days{Epoch + days{FloorDivide(moment, SecondsPerDay)}};
}

int MonthsOf(const year_month_day& date) {
    return (static_cast<int>(date.year()) - FirstYear) * MonthsPerYear +
           static_cast<int>(static_cast<unsigned>(date.month())) - 1;
}

Moment InDay(std::int64_t hour, std::int64_t minute, std::int64_t second) {
    return hour * SecondsPerHour + minute * SecondsPerMinute + second;
}

// The epoch was a Saturday: the Monday before it lies five days back.
constexpr Moment SomeMonday = -5 * SecondsPerDay;

}  // namespace

Moment MomentOf(const std::array<std::uint8_t, cmd::PackedTimeSize>& packed) {
    const auto months = static_cast<std::size_t>(packed[2] >> 6 | packed[3] << 2);
    const cmd::PackedTime time = cmd::DecodePackedTime(packed);
    return (DaysToPackedMonth[months] + time.Day - 1) * SecondsPerDay +
           InDay(time.Hour, time.Minute, time.Second);
}

Moment MomentOf(const LocalTime& time) {
    const std::int64_t first =
        DaysToMonth((time.Year - FirstYear) * MonthsPerYear + time.Month - 1);
    return (first + time.Day - 1) * SecondsPerDay + InDay(time.Hour, time.Minute, time.Second);
}

LocalTime TimeOfMoment(Moment moment) {
    const year_month_day date = DateOf(moment);
    const auto second = static_cast<int>(moment - DayBegin(moment));
    LocalTime time;
    time.Year = static_cast<int>(date.year());
    time.Month = static_cast<int>(static_cast<unsigned>(date.month()));
    time.Day = static_cast<int>(static_cast<unsigned>(date.day()));
    time.Hour = second / static_cast<int>(SecondsPerHour);
    time.Minute = second / 60 % 60;
    time.Second = second % 60;
    return time;
}

Moment DayBegin(Moment moment) {
    return FloorDivide(moment, SecondsPerDay) * SecondsPerDay;
}

Moment WeekBegin(Moment moment) {
    return SomeMonday + FloorDivide(moment - SomeMonday, SecondsPerWeek) * SecondsPerWeek;
}

Moment MonthBegin(Moment moment) {
    return DaysToMonth(MonthsOf(DateOf(moment))) * SecondsPerDay;
}

Moment NextDay(Moment moment) {
    return DayBegin(moment) + SecondsPerDay;
}

Moment NextWeek(Moment moment) {
    return WeekBegin(moment) + SecondsPerWeek;
}

Moment NextMonth(Moment moment) {
    return DaysToMonth(MonthsOf(DateOf(moment)) + 1) * SecondsPerDay;
}

Moment AddMonths(Moment moment, int months) {
    const year_month_day date = DateOf(moment);
    const int target = MonthsOf(date) + months;
    const std::int64_t first = DaysToMonth(target);
    const std::int64_t last = DaysToMonth(target + 1) - 1;
    const auto dayOfMonth = static_cast<std::int64_t>(static_cast<unsigned>(date.day()));
    return std::min(first + dayOfMonth - 1, last) * SecondsPerDay + moment - DayBegin(moment);
}

bool IsLeapYear(int number) {
    return year{number}.is_leap();
}

std::string IsoText(Moment moment) {
    const LocalTime time = TimeOfMoment(moment);
    std::string text = IntegerToText(time.Year);
    text.insert(0, 4 - std::min<std::size_t>(text.size(), 4), '0');
    return text + "-" + TwoDigits(time.Month) + "-" + TwoDigits(time.Day) + "T" +
           TwoDigits(time.Hour) + ":" + TwoDigits(time.Minute) + ":" + TwoDigits(time.Second);
}
