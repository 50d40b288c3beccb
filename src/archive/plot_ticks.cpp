#include "archive/plot_ticks.h"

#include <algorithm>
#include <array>

#include "common/text.h"
#include "logger/date_text.h"

namespace {

// Steps of a fixed length, all of them divisors of a day.
constexpr std::array<Moment, 19> ShortSteps = {1,
                                               2,
                                               5,
                                               10,
                                               15,
                                               30,
                                               60,
                                               120,
                                               300,
                                               600,
                                               900,
                                               1800,
                                               3600,
                                               7200,
                                               10'800,
                                               21'600,
                                               43'200,
                                               SecondsPerDay,
                                               2 * SecondsPerDay};
constexpr std::array<int, 4> MonthSteps = {1, 2, 3, 6};
constexpr std::array<int, 6> YearSteps = {1, 2, 5, 10, 20, 50};
constexpr int MonthsPerYear = 12;
constexpr Moment ShortestMonth = 28 * SecondsPerDay;
constexpr Moment ShortestYear = MonthsPerYear * ShortestMonth;

Moment RoundUp(Moment moment, Moment step, Moment origin) {
    const Moment distance = moment - origin;
    const Moment below = distance / step * step;
    return origin + below + (distance > below ? step : 0);
}

std::vector<Moment> EvenTicks(Moment from, Moment to, Moment step, Moment origin) {
    std::vector<Moment> ticks;
    for (Moment tick = RoundUp(from, step, origin); tick <= to; tick += step) {
        ticks.push_back(tick);
    }
    return ticks;
}

/// First of every so many months, counted from January of year 0.
std::vector<Moment> MonthTicks(Moment from, Moment to, int months) {
    std::vector<Moment> ticks;
    const LocalTime first = TimeOfMoment(MonthBegin(from));
    const int number = first.Year * MonthsPerYear + first.Month - 1;
    const int ahead = (months - number % months) % months;
    for (Moment tick = AddMonths(MonthBegin(from), ahead); tick <= to;
         tick = AddMonths(tick, months)) {
        if (tick >= from) {
            ticks.push_back(tick);
        }
    }
    return ticks;
}

}  // namespace

TimeTicks TimeTicksOf(Moment from, Moment to, int most) {
    from = std::max(from, EarliestMoment);
    to = std::min(to, LatestMoment);
    const Moment span = to - from;
    const auto fits = [&](Moment step) { return span / step + 1 <= std::max(most, 2); };
    const Moment origin = WeekBegin(EarliestMoment - SecondsPerWeek);
    if (span < 0) {
        return {};
    }
    for (const Moment step : ShortSteps) {
        if (fits(step)) {
            return {EvenTicks(from, to, step, origin), step};
        }
    }
    if (fits(SecondsPerWeek)) {
        return {EvenTicks(from, to, SecondsPerWeek, origin), SecondsPerWeek};
    }
    for (const int months : MonthSteps) {
        if (fits(months * ShortestMonth)) {
            return {MonthTicks(from, to, months), months * ShortestMonth};
        }
    }
    int years = YearSteps.back();
    for (const int step : YearSteps) {
        if (fits(step * ShortestYear)) {
            years = step;
            break;
        }
    }
    return {MonthTicks(from, to, years * MonthsPerYear), years * ShortestYear};
}

std::string TickText(Moment tick, Moment step, const SystemClock& clock) {
    const LocalTime time = TimeOfMoment(tick);
    if (step >= SecondsPerDay || tick == DayBegin(tick)) {
        return cmd::ShortDateText(clock, time.Year, time.Month, time.Day);
    }
    const std::string text = TwoDigits(time.Hour) + ":" + TwoDigits(time.Minute);
    return step < SecondsPerMinute ? text + ":" + TwoDigits(time.Second) : text;
}
