#include "collect/collect_plan.h"

#include <gtest/gtest.h>

#include "collect/plan_settings.h"
#include "support/virtual_host.h"

namespace {

using testing_support::MemoryStore;

Moment At(const std::string& text) {
    return MomentOfText(text).value();
}

std::string Next(const CollectPlan& plan, const std::string& behind,
                 const std::string& anchor = "2026-11-15 08:30:00") {
    return MomentText(NextDue(plan, At(anchor), At(behind)));
}

TEST(NextDue, HoursCountFromWhenThePlanWasMade) {
    const CollectPlan plan{.Step = PlanStep::Hours, .Hours = 5};
    EXPECT_EQ(Next(plan, "2026-11-15 08:30:00"), "2026-11-15 13:30:00");
    EXPECT_EQ(Next(plan, "2026-11-15 13:29:59"), "2026-11-15 13:30:00");
    EXPECT_EQ(Next(plan, "2026-11-15 13:30:00"), "2026-11-15 18:30:00");
    EXPECT_EQ(Next(plan, "2026-11-20 00:00:00"), "2026-11-20 03:30:00");
    EXPECT_EQ(Next(plan, "2026-11-14 08:00:00"), "2026-11-14 12:30:00");
}

TEST(NextDue, DailyIsTheNextSuchTime) {
    const CollectPlan plan{.Step = PlanStep::Daily, .Minute = 150};
    EXPECT_EQ(Next(plan, "2026-12-31 02:29:59"), "2026-12-31 02:30:00");
    EXPECT_EQ(Next(plan, "2026-12-31 02:30:00"), "2027-01-01 02:30:00");
    EXPECT_EQ(Next(plan, "2026-12-31 23:59:59"), "2027-01-01 02:30:00");
}

TEST(NextDue, WeeklyIsTheNextSuchDayAndTime) {
    // 15 November 2026 is a Sunday.
    CollectPlan plan{.Step = PlanStep::Weekly, .Weekday = 7, .Minute = 600};
    EXPECT_EQ(Next(plan, "2026-11-15 08:30:00"), "2026-11-15 10:00:00");
    EXPECT_EQ(Next(plan, "2026-11-15 10:00:00"), "2026-11-22 10:00:00");
    plan.Weekday = 1;
    EXPECT_EQ(Next(plan, "2026-11-15 08:30:00"), "2026-11-16 10:00:00");
}

TEST(FollowClock, AClockSetFarBackCountsAnewAndALittleDoesNot) {
    PlanMark mark{.Anchor = 0, .Done = 100'000};
    EXPECT_FALSE(FollowClock(mark, 100'000));
    EXPECT_FALSE(FollowClock(mark, 200'000));
    EXPECT_FALSE(FollowClock(mark, 100'000 - SmallSetBack));
    EXPECT_EQ(mark.Done, 100'000);
    EXPECT_TRUE(FollowClock(mark, 100'000 - SmallSetBack - 1));
    EXPECT_EQ(mark.Done, 100'000 - SmallSetBack - 1);
}

TEST(PlanText, TellsEachKind) {
    CollectPlan plan{.Step = PlanStep::Hours, .Hours = 1};
    EXPECT_EQ(PlanText(plan), "every hour");
    plan.Hours = 6;
    EXPECT_EQ(PlanText(plan), "every 6 hours");
    plan.Step = PlanStep::Daily;
    EXPECT_EQ(PlanText(plan), "daily at 02:00");
    plan.Step = PlanStep::Weekly;
    plan.Weekday = 7;
    EXPECT_EQ(PlanText(plan), "on Sunday at 02:00");
}

TEST(PlanSettings, WhatIsAbsentIsAPlanThatIsOff) {
    EXPECT_EQ(ReadPlan(MemoryStore()), CollectPlan());
    EXPECT_FALSE(ReadPlan(MemoryStore()).On);
    EXPECT_FALSE(ReadMark(MemoryStore()));
}

TEST(PlanSettings, APlanComesBackAsItWasKept) {
    MemoryStore store;
    const CollectPlan plan{.On = true,
                           .Step = PlanStep::Weekly,
                           .Hours = 12,
                           .Weekday = 3,
                           .Minute = 23 * 60 + 59,
                           .Choice = {.Scope = CollectScope::Windows, .SyncTime = true}};
    KeepPlan(plan, store);
    EXPECT_EQ(ReadPlan(store), plan);
    KeepMark({.Anchor = At("2026-11-15 08:30:00"), .Done = At("2026-11-16 02:00:07")}, store);
    EXPECT_EQ(store.Values["Collect/Since"], "2026-11-15 08:30:00");
    EXPECT_EQ(ReadMark(store)->Done, At("2026-11-16 02:00:07"));
}

TEST(PlanSettings, WhatIsNoPlanReadsAsTheDefault) {
    MemoryStore store;
    store.Values = {{"Collect/Hours", "0"},    {"Collect/Weekday", "8"}, {"Collect/Time", "24:00"},
                    {"Collect/Every", "Year"}, {"Collect/Since", "now"}, {"Collect/Accounted", ""}};
    EXPECT_EQ(ReadPlan(store), CollectPlan());
    EXPECT_FALSE(ReadMark(store));
    store.Values["Collect/Hours"] = "169";
    store.Values["Collect/Time"] = "-1:30";
    EXPECT_EQ(ReadPlan(store), CollectPlan());
    EXPECT_FALSE(MomentOfText("2026-13-01 00:00:00"));
    EXPECT_FALSE(MomentOfText("2026-11-15 08:30:00 "));
}

}  // namespace
