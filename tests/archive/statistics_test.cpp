#include "archive/statistics.h"

#include <gtest/gtest.h>

#include <cmath>

#include "archive/integrals.h"
#include "archive/series_maker.h"

namespace testing_support {
namespace {

class StatisticsTest : public testing::Test {
 protected:
    ColumnStatistics Of(const Period& period, std::size_t column = 0) {
        return StatisticsOf(SeriesValues(maker.Made), column, Periods(period)).at(0);
    }
    Attendance Present(const Period& period) {
        return AttendanceOf(SeriesTimes(maker.Made), Periods(period)).at(0);
    }
    const Period Day{SomeDay, SomeDay + SecondsPerDay};
    SeriesMaker maker{2, 0};
};

TEST_F(StatisticsTest, PeriodWithoutRecordsTellsNothing) {
    for (int records = 0; records < 2; ++records) {
        const ColumnStatistics found = Of(Day);
        EXPECT_EQ(found.Count, 0);
        EXPECT_FALSE(found.Minimum);
        EXPECT_FALSE(found.Maximum);
        EXPECT_FALSE(found.Mean);
        maker.Add(SomeDay - 1, {5, 6});
    }
    EXPECT_TRUE(StatisticsOf(SeriesValues(maker.Made), 0, Periods(Period{})).empty());
    EXPECT_TRUE(AttendanceOf(SeriesTimes(maker.Made), Periods(Period{})).empty());
}

TEST_F(StatisticsTest, OneRecordIsAllThatThereIs) {
    maker.Add(SomeDay, {5, 6});
    for (const int style : {0, 1, 2, 128}) {
        maker.Logger().LoggingStyle = static_cast<std::uint8_t>(style);
        const ColumnStatistics found = Of(Day, 1);
        EXPECT_EQ(found.Count, 1);
        EXPECT_EQ(found.Minimum.value().Value, 6);
        EXPECT_EQ(found.Maximum.value().Value, 6);
        EXPECT_EQ(found.Mean, 6) << style;
    }
}

TEST_F(StatisticsTest, ExtremesTellTheFirstOfEqualRecords) {
    for (const int count : {5, 3, 9, 3, 9, 7}) {
        maker.Add(SomeDay, {count, 0});
    }
    const ColumnStatistics found = Of(Day);
    EXPECT_EQ(found.Minimum.value().Record, 1U);
    EXPECT_EQ(found.Minimum.value().Value, 3);
    EXPECT_EQ(found.Maximum.value().Record, 2U);
    EXPECT_EQ(found.Maximum.value().Value, 9);
    EXPECT_EQ(found.Mean, 6);
}

TEST_F(StatisticsTest, MeanAtAFixedIntervalIsThatOfTheRecordsAcrossGaps) {
    maker.Add(SomeDay, {0, 0});
    maker.Add(SomeDay + 900, {10, 0});
    maker.Add(SomeDay + 80'000, {80, 0});
    EXPECT_EQ(Of(Day).Mean, 30);
}

TEST_F(StatisticsTest, MeanWithoutAnIntervalIsWeightedByTime) {
    for (const int style : {1, 128}) {
        maker.Logger().LoggingStyle = static_cast<std::uint8_t>(style);
        maker.Made.Records.clear();
        maker.Add(SomeDay, {0, 0});
        maker.Add(SomeDay + 10, {10, 0});  // 5 for 10 s
        maker.Add(SomeDay + 40, {30, 0});  // 20 for 30 s
        EXPECT_DOUBLE_EQ(Of(Day).Mean.value(), 650.0 / 40) << style;
    }
}

TEST_F(StatisticsTest, WeightedMeanGoesStraightThroughTheBounds) {
    maker.Logger().LoggingStyle = 128;
    maker.Add(SomeDay - SecondsPerDay, {0, 0});
    maker.Add(SomeDay + 2 * SecondsPerDay, {90, 0});
    const ColumnStatistics found = Of(Day);
    EXPECT_EQ(found.Count, 0);
    EXPECT_FALSE(found.Minimum);
    EXPECT_DOUBLE_EQ(found.Mean.value(), 45);
    const Period half{SomeDay, SomeDay + SecondsPerDay / 2};
    EXPECT_DOUBLE_EQ(Of(half).Mean.value(), 37.5);
}

TEST_F(StatisticsTest, RecordsOfOneMomentHaveTheirPlainMean) {
    maker.Logger().LoggingStyle = 1;
    maker.Add(SomeDay, {10, 0});
    maker.Add(SomeDay, {40, 0});
    EXPECT_EQ(Of(Day).Mean, 25);
}

TEST_F(StatisticsTest, RecordBelongsToThePeriodOfItsOwnTime) {
    maker.Add(SomeDay + SecondsPerDay, {1, 0});
    maker.Add(SomeDay + SecondsPerDay - 1, {2, 0});
    maker.Add(SomeDay, {4, 0});
    maker.Add(SomeDay - 1, {8, 0});
    const ColumnStatistics found = Of(Day);
    EXPECT_EQ(found.Count, 2);
    EXPECT_EQ(found.Mean, 3);
}

TEST_F(StatisticsTest, LargestDoublesHaveAFiniteMean) {
    maker.Logger().LowerLimit[0] = 1.7e308;
    maker.Logger().UpperLimit[0] = 1.7e308;
    maker.Logger().LoggingStyle = 0;
    for (int i = 0; i < 50; ++i) {
        maker.Add(SomeDay + i * 900LL, {i, 0});
    }
    EXPECT_DOUBLE_EQ(Of(Day).Mean.value(), 1.7e308);
    maker.Logger().LoggingStyle = 1;
    EXPECT_DOUBLE_EQ(Of(Day).Mean.value(), 1.7e308);
}

// ----- sums

TEST(ExactSum, KeepsWhatAnAdditionRoundsAway) {
    ExactSum sum;
    sum.Add(1e16);
    for (int i = 0; i < 1000; ++i) {
        sum.Add(0.1);
    }
    sum.Add(-1e16);
    EXPECT_NEAR(sum.Divided(1), 100, 1e-9);
}

TEST(ExactSum, HoldsWhatNoDoubleHoldsToTheLargest) {
    ExactSum sum;
    sum.Add(1.7e308, 1e9);
    EXPECT_EQ(sum.Divided(1), std::numeric_limits<double>::max());
    EXPECT_DOUBLE_EQ(sum.Divided(1e9), 1.7e308);
    sum.Add(-1.7e308, 3e9);
    EXPECT_EQ(sum.Divided(1), -std::numeric_limits<double>::max());
}

TEST(Integrals, LineBetweenTheLargestDoublesStaysFinite) {
    SeriesMaker maker(1, 0);
    maker.Logger().LowerLimit[0] = -1.7e308;
    maker.Logger().UpperLimit[0] = -1.7e308;
    LoggerRecord& later = maker.Change();
    later.LowerLimit[0] = 1.7e308;
    later.UpperLimit[0] = 1.7e308;
    maker.Add(SomeDay, {1}, 0);
    maker.Add(SomeDay + 900, {1}, 1);
    const Periods periods({SomeDay + 100, SomeDay + 800});
    const auto integrals = IntegrateColumn(SeriesValues(maker.Made), 0, periods);
    EXPECT_EQ(integrals[0].Covered, 700);
    EXPECT_NEAR(integrals[0].Sum.Divided(1.7e308), 0, 1e-6);
}

// ----- completeness

TEST_F(StatisticsTest, FullDayHasAllThatIsDue) {
    for (Moment at = SomeDay - 900; at <= SomeDay + SecondsPerDay; at += 900) {
        maker.Add(at, {1, 2});
    }
    const Attendance day = Present(Day);
    EXPECT_EQ(day.Records, 96);
    EXPECT_EQ(day.Due, 96);
    EXPECT_EQ(day.Completeness(), 1);
    EXPECT_EQ(day.Gaps, 0);
}

TEST_F(StatisticsTest, WholePeriodIsDueBeforeTheFirstAndBehindTheLastRecord) {
    maker.Add(SomeDay + 6 * SecondsPerHour, {1, 2});
    maker.Add(SomeDay + 6 * SecondsPerHour + 900, {1, 2});
    const Attendance day = Present(Day);
    EXPECT_EQ(day.Records, 2);
    EXPECT_EQ(day.Due, 96);
    EXPECT_EQ(Present({SomeDay - SecondsPerDay, SomeDay}).Due, 96);
    EXPECT_EQ(Present({SomeDay + SecondsPerDay, SomeDay + 3 * SecondsPerDay}).Due, 192);
}

TEST_F(StatisticsTest, IntervalThatDividesNoDayIsDueAsItFalls) {
    maker.Logger().SampleInterval = "7 minutes";
    for (int i = 0; i < 2000; ++i) {
        maker.Add(SomeDay + 11 + i * 420LL, {1, 2});
    }
    const Periods days({SomeDay, SomeDay + 9 * SecondsPerDay}, PeriodStep::Day);
    for (const Attendance& day : AttendanceOf(SeriesTimes(maker.Made), days)) {
        EXPECT_EQ(day.Records, day.Due);
        EXPECT_EQ(day.Completeness(), 1);
    }
}

TEST_F(StatisticsTest, GapCountsWhereItBeginsAndItsRecordsWhereTheyAreDue) {
    maker.Add(SomeDay - 1800, {1, 2});
    maker.Add(SomeDay + 1800, {1, 2});
    const Periods days({SomeDay - SecondsPerDay, SomeDay + 1801}, PeriodStep::Day);
    const auto counts = AttendanceOf(SeriesTimes(maker.Made), days);
    EXPECT_EQ(counts[0].Gaps, 1);
    EXPECT_EQ(counts[1].Gaps, 0);
    EXPECT_EQ(counts[1].Due, 3);  // 0:00, 0:15 and 0:30
    EXPECT_EQ(counts[0].Due, 96);
}

TEST_F(StatisticsTest, RecordsABitLateLeaveNoExtraOneDue) {
    maker.Add(SomeDay, {1, 2});
    maker.Add(SomeDay + 1800 + 449, {1, 2});  // one is missing
    EXPECT_EQ(Present({SomeDay, SomeDay + 1800 + 450}).Due, 3);
    maker.Made.Records.back().Record.Time = Packed(SomeDay + 1800 + 450);
    EXPECT_EQ(Present({SomeDay, SomeDay + 1800 + 451}).Due, 4);
}

TEST_F(StatisticsTest, FastModeIsDueTenTimesASecond) {
    maker.Logger().LoggingStyle = 2;
    for (const Moment second : {0, 1, 2, 5, 6}) {
        for (int i = 0; i < 10; ++i) {
            maker.Add(SomeDay + second, {i, 0});
        }
    }
    const Attendance found = Present({SomeDay - 3, SomeDay + 9});
    EXPECT_EQ(found.Records, 50);
    EXPECT_EQ(found.Due, 120);
    EXPECT_EQ(found.Gaps, 1);
    EXPECT_EQ(Present({SomeDay + 3, SomeDay + 5}).Due, 20);
}

TEST_F(StatisticsTest, NothingIsDueWithoutAnInterval) {
    maker.Logger().LoggingStyle = 1;
    maker.Add(SomeDay, {1, 2});
    maker.Add(SomeDay + 50'000, {1, 2});
    const Attendance found = Present(Day);
    EXPECT_EQ(found.Records, 2);
    EXPECT_EQ(found.Scheduled, 0);
    EXPECT_EQ(found.Due, 0);
    EXPECT_FALSE(found.Completeness());
}

TEST_F(StatisticsTest, ClockSetBackIsCountedAndLeavesTheDayComplete) {
    for (int i = 0; i < 20; ++i) {
        maker.Add(SomeDay + i * 900LL, {1, 2});
    }
    for (int i = 0; i < 20; ++i) {
        maker.Add(SomeDay + 7200 + i * 900LL, {1, 2});
    }
    const Attendance found = Present({SomeDay, SomeDay + 7200 + 20 * 900LL});
    EXPECT_EQ(found.Records, 40);
    EXPECT_EQ(found.Due, 40);
    EXPECT_EQ(found.ClockChanges, 1);
    EXPECT_EQ(found.Gaps, 0);
    EXPECT_EQ(found.Completeness(), 1);
}

}  // namespace
}  // namespace testing_support
