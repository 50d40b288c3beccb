#include "archive/periods.h"

namespace {

Moment NextStep(Moment moment, PeriodStep step) {
    switch (step) {
        case PeriodStep::Week:
            return NextWeek(moment);
        case PeriodStep::Month:
            return NextMonth(moment);
        default:
            return NextDay(moment);
    }
}

}  // namespace

Period NamedPeriodOf(const SeriesTimes& times, NamedPeriod name) {
    const auto all = times.All();
    if (all.empty()) {
        return {};
    }
    if (name == NamedPeriod::All) {
        const auto [earliest, latest] = std::minmax_element(all.begin(), all.end());
        return {*earliest, *latest + 1};
    }
    return PeriodUpTo(all.back(), name);
}

Period PeriodUpTo(Moment newest, NamedPeriod name) {
    switch (name) {
        case NamedPeriod::LastDay:
            return {newest - SecondsPerDay + 1, newest + 1};
        case NamedPeriod::LastWeek:
            return {newest - SecondsPerWeek + 1, newest + 1};
        default:
            return {AddMonths(newest, -1) + 1, newest + 1};
    }
}

Period PeriodFromTo(Moment from, Moment to) {
    const Period period{std::max(from, EarliestMoment), std::min(to, LatestMoment)};
    return period.IsEmpty() ? Period{} : period;
}

Periods::Periods(const Period& whole) : bounds_{whole.Begin} {
    if (!whole.IsEmpty()) {
        bounds_.push_back(whole.End);
    }
}

Periods::Periods(const Period& whole, PeriodStep step) : bounds_{whole.Begin} {
    while (bounds_.back() < whole.End) {
        bounds_.push_back(std::min(NextStep(bounds_.back(), step), whole.End));
    }
}
