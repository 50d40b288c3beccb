#include "archive/record_moment.h"

#include <gtest/gtest.h>

#include "archive/series_maker.h"

namespace testing_support {
namespace {

TEST(RecordMoment, CountsSecondsSinceTheYear2000) {
    EXPECT_EQ(MomentOf(Packed(2000, 1, 1)), 0);
    EXPECT_EQ(MomentOf(Packed(2000, 1, 2, 3, 4, 5)), 86'400 + 3 * 3600 + 4 * 60 + 5);
    EXPECT_EQ(MomentOf(Packed(2000, 3, 1)), 60 * 86'400);
    EXPECT_EQ(MomentOf(Packed(2001, 1, 1)), 366 * 86'400);
    EXPECT_EQ(MomentOf(Packed(2024, 1, 14)), 8779LL * 86'400);
}

TEST(RecordMoment, DateThatIsNoneRollsOn) {
    EXPECT_EQ(MomentOf(Packed(2023, 2, 31)), At(2023, 3, 3));
    EXPECT_EQ(MomentOf(Packed(2024, 2, 31)), At(2024, 3, 2));
    EXPECT_EQ(MomentOf(Packed(2024, 3, 0)), At(2024, 2, 29));
    EXPECT_EQ(MomentOf(Packed(2000, 1, 0)), At(1999, 12, 31));
    EXPECT_EQ(MomentOf(Packed(2023, 12, 31, 24, 60, 61)), At(2024, 1, 1, 1, 1, 1));
}

TEST(RecordMoment, TheClocksDatesRollOnInTheSameWay) {
    EXPECT_EQ(At(2023, 13, 1), At(2024, 1, 1));
    EXPECT_EQ(At(2024, 0, 1), At(2023, 12, 1));
    EXPECT_EQ(At(2024, -11, 1), At(2023, 1, 1));
    EXPECT_EQ(At(2024, -12, 1), At(2022, 12, 1));
    EXPECT_EQ(At(2023, 2, 29), At(2023, 3, 1));
}

TEST(RecordMoment, EveryPackedTimeLiesBetweenTheEarliestAndTheLatest) {
    EXPECT_EQ(MomentOf(std::array<std::uint8_t, 4>{}), EarliestMoment);
    const Moment last = MomentOf(std::array<std::uint8_t, 4>{0xFF, 0xFF, 0xFF, 0xFF});
    EXPECT_LT(last, LatestMoment);
    EXPECT_GE(last, LatestMoment - SecondsPerDay);
}

TEST(RecordMoment, EveryDayComesBackAsItWas) {
    Moment moment = EarliestMoment + 12 * SecondsPerHour + 34 * SecondsPerMinute + 56;
    int day = 31;
    for (; moment < LatestMoment; moment += SecondsPerDay) {
        const LocalTime time = TimeOfMoment(moment);
        ASSERT_EQ(MomentOf(time), moment);
        ASSERT_EQ(time.Hour, 12);
        ASSERT_EQ(time.Minute, 34);
        ASSERT_EQ(time.Second, 56);
        ASSERT_EQ(time.Day, day);
        day = MonthBegin(moment + SecondsPerDay) == DayBegin(moment + SecondsPerDay) ? 1 : day + 1;
    }
}

TEST(RecordMoment, DaysWeeksAndMonthsBeginWhereTheCalendarHasThem) {
    const Moment sunday = At(2024, 1, 14, 13, 5, 9);
    EXPECT_EQ(DayBegin(sunday), At(2024, 1, 14));
    EXPECT_EQ(NextDay(sunday), At(2024, 1, 15));
    EXPECT_EQ(WeekBegin(sunday), At(2024, 1, 8));
    EXPECT_EQ(NextWeek(sunday), At(2024, 1, 15));
    EXPECT_EQ(WeekBegin(At(2024, 1, 15)), At(2024, 1, 15));
    EXPECT_EQ(MonthBegin(sunday), At(2024, 1, 1));
    EXPECT_EQ(NextMonth(sunday), At(2024, 2, 1));
    EXPECT_EQ(NextMonth(At(2023, 12, 31, 23, 59, 59)), At(2024, 1, 1));
    EXPECT_EQ(NextMonth(At(2024, 2, 29)), At(2024, 3, 1));
}

TEST(RecordMoment, TheDayBeforeTheEpochIsADayToo) {
    const Moment before = At(1999, 12, 31, 23, 0);
    EXPECT_EQ(before, -3600);
    EXPECT_EQ(DayBegin(before), EarliestMoment);
    EXPECT_EQ(WeekBegin(before), At(1999, 12, 27));
    EXPECT_EQ(MonthBegin(before), At(1999, 12, 1));
    EXPECT_EQ(NextMonth(before), 0);
}

TEST(RecordMoment, MonthsAreAddedWithinTheLengthOfTheMonth) {
    EXPECT_EQ(AddMonths(At(2024, 3, 31, 7, 8, 9), -1), At(2024, 2, 29, 7, 8, 9));
    EXPECT_EQ(AddMonths(At(2024, 3, 15), -3), At(2023, 12, 15));
    EXPECT_EQ(AddMonths(At(2023, 12, 31), 2), At(2024, 2, 29));
}

TEST(RecordMoment, LeapYearsFollowTheFourHundredYearRule) {
    EXPECT_TRUE(IsLeapYear(2000));
    EXPECT_TRUE(IsLeapYear(2024));
    EXPECT_FALSE(IsLeapYear(2023));
    EXPECT_FALSE(IsLeapYear(2100));
}

TEST(RecordMoment, IsoTextHasAllDigits) {
    EXPECT_EQ(IsoText(At(2024, 1, 5, 3, 4, 9)), "2024-01-05T03:04:09");
    EXPECT_EQ(IsoText(EarliestMoment), "1999-12-31T00:00:00");
}

}  // namespace
}  // namespace testing_support
