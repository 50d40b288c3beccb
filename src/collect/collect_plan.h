#ifndef ORVIA_COLLECT_COLLECT_PLAN_H
#define ORVIA_COLLECT_COLLECT_PLAN_H

#include <string>

#include "archive/record_moment.h"
#include "collect/collect_choice.h"

/// How often rounds come.
enum class PlanStep { Hours, Daily, Weekly };

/// When rounds come by themselves, and what they collect.
struct CollectPlan {
    static constexpr int MostHours = 168;

    bool On = false;
    PlanStep Step = PlanStep::Daily;
    int Hours = 6;     ///< 1 to MostHours, of PlanStep::Hours
    int Weekday = 1;   ///< 1 Monday to 7 Sunday, of PlanStep::Weekly
    int Minute = 120;  ///< of the day, 0 to 1439, of the other two
    CollectChoice Choice = {.Scope = CollectScope::WholeBook};
    bool operator==(const CollectPlan&) const = default;
};

/// Up to when rounds are accounted for, and from when hours are counted; both by the computer's
/// local clock.
struct PlanMark {
    Moment Anchor = 0;
    Moment Done = 0;
};

/// The first moment behind `behind` at which a round is due. Hours are counted from `anchor`.
[[nodiscard]] Moment NextDue(const CollectPlan& plan, Moment anchor, Moment behind);

/// A clock that was set back by less than this repeats no round: summer time ends.
inline constexpr Moment SmallSetBack = 2 * SecondsPerHour;

/// Keeps the mark in step with a clock that was set back further: from now on rounds count anew, or
/// they would stay away until the clock has caught up. True if it changed.
[[nodiscard]] bool FollowClock(PlanMark& mark, Moment now);

/// The plan in words: "every 6 hours", "daily at 02:00", "on Monday at 02:00".
[[nodiscard]] std::string PlanText(const CollectPlan& plan);
/// "02:00" of a minute of the day.
[[nodiscard]] std::string TimeOfDayText(int minute);

#endif  // ORVIA_COLLECT_COLLECT_PLAN_H
