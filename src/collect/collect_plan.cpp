#include "collect/collect_plan.h"

#include <algorithm>
#include <array>

#include "common/number_text.h"
#include "common/text.h"

namespace {

constexpr std::array<const char*, 7> Weekdays = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                                 "Friday", "Saturday", "Sunday"};
constexpr int MinutesPerHour = 60;

/// The first moment behind `behind` that lies a whole number of steps from `from`, to either side.
Moment OnGrid(Moment from, Moment step, Moment behind) {
    Moment steps = (behind - from) / step;
    if (from + steps * step > behind) {
        --steps;
    }
    const Moment next = from + steps * step;
    return next > behind ? next : next + step;
}

}  // namespace

Moment NextDue(const CollectPlan& plan, Moment anchor, Moment behind) {
    const Moment ofDay = plan.Minute * SecondsPerMinute;
    switch (plan.Step) {
        case PlanStep::Hours:
            return OnGrid(anchor, std::max(plan.Hours, 1) * SecondsPerHour, behind);
        case PlanStep::Weekly:
            return OnGrid(WeekBegin(behind) + (plan.Weekday - 1) * SecondsPerDay + ofDay,
                          SecondsPerWeek, behind);
        default:
            return OnGrid(DayBegin(behind) + ofDay, SecondsPerDay, behind);
    }
}

bool FollowClock(PlanMark& mark, Moment now) {
    if (mark.Done <= now + SmallSetBack) {
        return false;
    }
    mark.Done = now;
    return true;
}

std::string TimeOfDayText(int minute) {
    return TwoDigits(minute / MinutesPerHour) + ":" + TwoDigits(minute % MinutesPerHour);
}

std::string PlanText(const CollectPlan& plan) {
    switch (plan.Step) {
        case PlanStep::Hours:
            return plan.Hours == 1 ? "every hour" : "every " + IntegerToText(plan.Hours) + " hours";
        case PlanStep::Weekly:
            return std::string("on ") +
                   Weekdays.at(static_cast<std::size_t>(std::clamp(plan.Weekday, 1, 7) - 1)) +
                   " at " + TimeOfDayText(plan.Minute);
        default:
            return "daily at " + TimeOfDayText(plan.Minute);
    }
}
