#include "archive/periods.h"

#include <gtest/gtest.h>

#include <tuple>

#include "archive/series_maker.h"

namespace testing_support {
namespace {

std::vector<Moment> BoundsOf(const Periods& periods) {
    std::vector<Moment> bounds = {periods.Whole().Begin};
    for (std::size_t i = 0; i < periods.Count(); ++i) {
        EXPECT_EQ(periods.At(i).Begin, bounds.back());
        bounds.push_back(periods.At(i).End);
    }
    return bounds;
}

Period Named(const Series& series, NamedPeriod name) {
    return NamedPeriodOf(SeriesTimes(series), name);
}

TEST(Periods, SeriesWithoutRecordsHasNone) {
    const SeriesMaker maker;
    for (const auto name :
         {NamedPeriod::All, NamedPeriod::LastDay, NamedPeriod::LastWeek, NamedPeriod::LastMonth}) {
        EXPECT_TRUE(Named(maker.Made, name).IsEmpty());
    }
    EXPECT_EQ(Periods(Period{}).Count(), 0U);
    EXPECT_EQ(Periods(Period{}, PeriodStep::Day).Count(), 0U);
    EXPECT_FALSE(Periods(Period{}).Hold(0));
}

TEST(Periods, AllReachesFromTheEarliestRecordToTheLatest) {
    SeriesMaker maker;
    maker.Add(SomeDay + 500, {});
    maker.Add(SomeDay + 900, {});
    maker.Add(SomeDay + 100, {});
    EXPECT_EQ(Named(maker.Made, NamedPeriod::All), (Period{SomeDay + 100, SomeDay + 901}));
}

TEST(Periods, TheLastDayWeekAndMonthEndWithTheNewestRecordOfTheLogger) {
    SeriesMaker maker;
    maker.Add(At(2031, 1, 1), {});  // the clock ran ahead once
    const Moment newest = At(2024, 3, 31, 8, 0, 0);
    maker.Add(newest, {});
    EXPECT_EQ(Named(maker.Made, NamedPeriod::LastDay),
              (Period{At(2024, 3, 30, 8, 0, 1), newest + 1}));
    EXPECT_EQ(Named(maker.Made, NamedPeriod::LastWeek),
              (Period{At(2024, 3, 24, 8, 0, 1), newest + 1}));
    EXPECT_EQ(Named(maker.Made, NamedPeriod::LastMonth),
              (Period{At(2024, 2, 29, 8, 0, 1), newest + 1}));
}

TEST(Periods, FromAndToAreCutToWhatARecordCanTell) {
    EXPECT_EQ(PeriodFromTo(SomeDay, SomeDay + 5), (Period{SomeDay, SomeDay + 5}));
    EXPECT_TRUE(PeriodFromTo(SomeDay, SomeDay).IsEmpty());
    EXPECT_TRUE(PeriodFromTo(SomeDay + 1, SomeDay).IsEmpty());
    EXPECT_EQ(PeriodFromTo(At(1, 1, 1), At(9999, 12, 31)), (Period{EarliestMoment, LatestMoment}));
}

TEST(Periods, DaysAreCutToTheSpanAtBothEnds) {
    const Periods days({At(2024, 2, 28, 6), At(2024, 3, 1, 1)}, PeriodStep::Day);
    EXPECT_EQ(BoundsOf(days), (std::vector{At(2024, 2, 28, 6), At(2024, 2, 29), At(2024, 3, 1),
                                           At(2024, 3, 1, 1)}));
}

TEST(Periods, WeeksBeginOnMondays) {
    const Periods weeks({At(2024, 1, 7), At(2024, 1, 15)}, PeriodStep::Week);
    EXPECT_EQ(BoundsOf(weeks), (std::vector{At(2024, 1, 7), At(2024, 1, 8), At(2024, 1, 15)}));
}

TEST(Periods, MonthsHaveTheirOwnLengths) {
    const Periods months({At(2023, 12, 31), At(2024, 3, 1)}, PeriodStep::Month);
    EXPECT_EQ(BoundsOf(months),
              (std::vector{At(2023, 12, 31), At(2024, 1, 1), At(2024, 2, 1), At(2024, 3, 1)}));
}

TEST(Periods, BoundBelongsToTheLaterOne) {
    const Periods days({SomeDay, SomeDay + 2 * SecondsPerDay}, PeriodStep::Day);
    EXPECT_EQ(days.NumberOf(SomeDay), 0U);
    EXPECT_EQ(days.NumberOf(SomeDay + SecondsPerDay - 1), 0U);
    EXPECT_EQ(days.NumberOf(SomeDay + SecondsPerDay), 1U);
    EXPECT_FALSE(days.Hold(SomeDay - 1));
    EXPECT_FALSE(days.Hold(SomeDay + 2 * SecondsPerDay));
}

TEST(Periods, StretchIsCutAtEachBound) {
    const Periods days({SomeDay, SomeDay + 3 * SecondsPerDay}, PeriodStep::Day);
    using Piece = std::tuple<std::size_t, Moment, Moment>;
    const auto cut = [&](Moment from, Moment to) {
        std::vector<Piece> pieces;
        days.Cut(from, to, [&](std::size_t number, Moment begin, Moment end) {
            pieces.emplace_back(number, begin - SomeDay, end - SomeDay);
        });
        return pieces;
    };
    EXPECT_EQ(cut(SomeDay - 9, SomeDay + SecondsPerDay + 5),
              (std::vector<Piece>{{0, 0, 86'400}, {1, 86'400, 86'405}}));
    EXPECT_EQ(cut(SomeDay + 172'805, SomeDay + 400'000),
              (std::vector<Piece>{{2, 172'805, 259'200}}));
    EXPECT_TRUE(cut(SomeDay + 5, SomeDay + 5).empty());
    EXPECT_TRUE(cut(SomeDay - 5, SomeDay).empty());
    EXPECT_TRUE(cut(SomeDay + 259'200, SomeDay + 259'300).empty());
}

TEST(Periods, AllThatAClockCanTellIsDividedInFiniteTime) {
    const Period all = PeriodFromTo(At(1, 1, 1), At(9999, 1, 1));
    EXPECT_EQ(Periods(all, PeriodStep::Day).Count(), 31'170U);
    EXPECT_EQ(Periods(all, PeriodStep::Month).Count(), 1 + 85U * 12 + 5);
}

}  // namespace
}  // namespace testing_support
