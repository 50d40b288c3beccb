#include "archive/plot_data.h"

#include <gmock/gmock.h>

#include <random>
#include <set>

#include "archive/american_clock.h"
#include "archive/plot_marks.h"
#include "archive/plot_ticks.h"
#include "archive/series_maker.h"

namespace testing_support {
namespace {

using testing::ElementsAre;

class PlotDataTest : public testing::Test {
 protected:
    /// Points as text: seconds behind SomeDay, value, "|" for a break.
    std::vector<std::string> Drawn(Moment from, Moment to, int pixels = 100,
                                   std::size_t column = 0) {
        const SeriesValues values(maker.Made);
        std::vector<std::string> texts;
        for (const PlotPoint& point :
             PlotColumn(values, column).PointsIn(SomeDay + from, SomeDay + to, pixels)) {
            texts.push_back(point.IsBreak() ? "|"
                                            : std::to_string(point.Time - SomeDay) + ":" +
                                                  std::to_string(static_cast<int>(point.Value)));
        }
        return texts;
    }
    std::optional<PlotReading> Reading(Moment time, Moment reach = 0, std::size_t column = 0) {
        const SeriesValues values(maker.Made);
        return PlotColumn(values, column).ReadingAt(SomeDay + time, reach);
    }
    SeriesMaker maker{1, 0};
};

TEST_F(PlotDataTest, SeriesWithoutRecordsDrawsNothing) {
    EXPECT_TRUE(Drawn(0, 1000).empty());
    EXPECT_FALSE(Reading(0, 1'000'000));
}

TEST_F(PlotDataTest, OneRecordIsAPointWhereItIsLookedFor) {
    maker.Add(SomeDay + 50, {7});
    EXPECT_THAT(Drawn(0, 100), ElementsAre("50:7"));
    EXPECT_THAT(Drawn(50, 50), ElementsAre("50:7"));
    EXPECT_TRUE(Drawn(51, 100).empty());
    EXPECT_TRUE(Drawn(0, 49).empty());
    EXPECT_TRUE(Drawn(100, 0).empty());
}

TEST_F(PlotDataTest, RecordsNextToBothEndsAreThere) {
    for (const int i : {0, 1, 2, 3, 4}) {
        maker.Add(SomeDay + i * 900LL, {i});
    }
    EXPECT_THAT(Drawn(1000, 2000), ElementsAre("900:1", "1800:2", "2700:3"));
    EXPECT_THAT(Drawn(1000, 1100), ElementsAre("900:1", "1800:2"));
    EXPECT_THAT(Drawn(-100, 950), ElementsAre("0:0", "900:1", "1800:2"));
    EXPECT_THAT(Drawn(3500, 9000), ElementsAre("2700:3", "3600:4"));
}

TEST_F(PlotDataTest, GapsAndClocksSetBackBreakTheLine) {
    for (const Moment at : {0, 900, 3600, 4500, 1800, 2700}) {
        maker.Add(SomeDay + at, {static_cast<int>(at / 900)});
    }
    EXPECT_THAT(Drawn(0, 9000),
                ElementsAre("0:0", "900:1", "|", "3600:4", "4500:5", "|", "1800:2", "2700:3"));
    EXPECT_THAT(Drawn(1000, 3000), ElementsAre("900:1", "|", "3600:4", "|", "1800:2", "2700:3"));
}

TEST_F(PlotDataTest, ColumnThatIsMissingBreaksTheLine) {
    maker.Change().EngUnits[0] = "Meters";
    for (const int i : {0, 1, 2, 3}) {
        maker.Add(SomeDay + i * 900LL, {i}, i == 1 || i == 2 ? 1 : 0);
    }
    EXPECT_THAT(Drawn(0, 9000), ElementsAre("0:0", "|", "2700:3"));
    EXPECT_THAT(Drawn(0, 9000, 100, 1), ElementsAre("900:1", "1800:2"));
}

TEST_F(PlotDataTest, EachPixelHasItsFirstSmallestLargestAndLastRecord) {
    for (const int value : {5, 6, 9, 4, 1, 7, 3, 3, 3, 3, 3, 3, 2, 2, 2, 2, 2, 8}) {
        maker.Add(SomeDay + static_cast<Moment>(maker.Made.Records.size()) * 100, {value});
    }
    // 1800 seconds on three pixels are six records each.
    EXPECT_THAT(Drawn(0, 1799, 3), ElementsAre("0:5", "200:9", "400:1", "500:7", "600:3", "1100:3",
                                               "1200:2", "1700:8"));
}

TEST_F(PlotDataTest, ReductionCoversThePixelsThatAllRecordsCover) {
    std::mt19937 random(5);
    maker.Logger().LoggingStyle = 1;
    Moment at = SomeDay;
    for (int i = 0; i < 20'000; ++i) {
        at += static_cast<Moment>(random() % 7);
        maker.Add(at, {static_cast<int>(random() % 65'536)});
    }
    const SeriesValues values(maker.Made);
    const PlotColumn column(values, 0);
    constexpr int Pixels = 37;
    for (int view = 0; view < 20; ++view) {
        const Moment from = SomeDay + static_cast<Moment>(random() % 20'000);
        const Moment to = from + 20'000 + static_cast<Moment>(random() % 30'000);
        using Extent = std::array<double, 2>;
        std::array<Extent, Pixels> all{};
        std::array<Extent, Pixels> drawn{};
        all.fill({1e9, -1e9});
        drawn = all;
        const auto take = [&](Moment time, double value, std::array<Extent, Pixels>& into) {
            if (from <= time && time <= to) {
                Extent& pixel =
                    into[static_cast<std::size_t>((time - from) * Pixels / (to - from + 1))];
                pixel = {std::min(pixel[0], value), std::max(pixel[1], value)};
            }
        };
        for (std::size_t i = 0; i < values.RecordCount(); ++i) {
            take(values.Times().At(i), values.At(0, i), all);
        }
        const std::vector<PlotPoint> points = column.PointsIn(from, to, Pixels);
        EXPECT_LE(points.size(), 4U * Pixels + 2);
        for (const PlotPoint& point : points) {
            take(point.Time, point.Value, drawn);
        }
        ASSERT_EQ(drawn, all);
        const ValueRange range = column.RangeIn(from, to).value();
        double lowest = 1e9;
        double highest = -1e9;
        for (const Extent& pixel : all) {
            lowest = std::min(lowest, pixel[0]);
            highest = std::max(highest, pixel[1]);
        }
        EXPECT_EQ(range.Lowest, lowest);
        EXPECT_EQ(range.Highest, highest);
    }
}

TEST_F(PlotDataTest, GapsWiderThanAPixelBreakTheReducedLineToo) {
    for (int i = 0; i < 1000; ++i) {
        maker.Add(SomeDay + i * 900LL + (i >= 500 ? 450'000LL : 0), {i % 10});
    }
    const SeriesValues values(maker.Made);
    const auto points = PlotColumn(values, 0).PointsIn(SomeDay, SomeDay + 1'350'000, 10);
    std::vector<Moment> breaks;
    for (const PlotPoint& point : points) {
        if (point.IsBreak()) {
            breaks.push_back(point.Time - SomeDay);
        }
    }
    EXPECT_THAT(breaks, ElementsAre(499 * 900));
    EXPECT_LE(points.size(), 44U);
}

TEST_F(PlotDataTest, RangeOfNothingIsNone) {
    maker.Add(SomeDay, {5});
    const SeriesValues values(maker.Made);
    const PlotColumn column(values, 0);
    EXPECT_FALSE(column.RangeIn(SomeDay + 1, SomeDay + 9));
    EXPECT_FALSE(column.RangeIn(SomeDay + 1, SomeDay - 1));
    EXPECT_EQ(column.RangeIn(SomeDay, SomeDay).value().Highest, 5);
}

TEST_F(PlotDataTest, CursorReadsTheNearestRecord) {
    for (const int i : {0, 1, 2}) {
        maker.Add(SomeDay + i * 900LL, {i});
    }
    EXPECT_EQ(Reading(0).value().Record, 0U);
    EXPECT_EQ(Reading(450).value().Record, 0U);
    EXPECT_EQ(Reading(451).value().Record, 1U);
    EXPECT_EQ(Reading(1800).value().Value, 2);
    EXPECT_EQ(Reading(1800).value().Time, SomeDay + 1800);
}

TEST_F(PlotDataTest, CursorReadsNothingInAGapOrOutsideButForItsReach) {
    maker.Add(SomeDay, {1});
    maker.Add(SomeDay + 9000, {2});
    EXPECT_EQ(Reading(9000).value().Value, 2);
    EXPECT_FALSE(Reading(4000));
    EXPECT_FALSE(Reading(8999));
    EXPECT_EQ(Reading(8999, 1).value().Value, 2);
    EXPECT_EQ(Reading(5, 5).value().Value, 1);
    EXPECT_FALSE(Reading(6, 5));
    EXPECT_FALSE(Reading(-1));
    EXPECT_FALSE(Reading(9001));
    EXPECT_EQ(Reading(9001, 1).value().Value, 2);
}

TEST_F(PlotDataTest, CursorReadsTheFirstOfRecordsWithOneTime) {
    for (const int value : {1, 2, 3}) {
        maker.Add(SomeDay, {value});
    }
    maker.Add(SomeDay + 1, {4});
    EXPECT_EQ(Reading(0).value().Value, 1);
    EXPECT_EQ(Reading(5, 10).value().Value, 4);
}

TEST_F(PlotDataTest, WhereTheClockWasSetBackTheCursorReadsTheLaterRecords) {
    maker.Add(SomeDay, {1});
    maker.Add(SomeDay + 900, {2});
    maker.Add(SomeDay, {3});
    maker.Add(SomeDay + 890, {4});
    EXPECT_EQ(Reading(0).value().Value, 3);
    EXPECT_EQ(Reading(900).value().Value, 2);
    EXPECT_EQ(Reading(891).value().Value, 2);
}

TEST_F(PlotDataTest, HoldsLittleMoreThanHalfAByteARecord) {
    for (int i = 0; i < 100'000; ++i) {
        maker.Add(SomeDay + i * 900LL % 900'000'000, {i % 1000});
    }
    const SeriesValues values(maker.Made);
    EXPECT_LT(PlotColumn(values, 0).Memory(), 60'000U);
}

// ----- marks

class PlotMarksTest : public testing::Test {
 protected:
    PlotMarksTest() {
        maker.Logger().AlarmHour = {6, 18};
        maker.Logger().AlarmMin = {30, 0};
        maker.Logger().AlarmEnable = {1, 1};
    }
    std::vector<std::string> Marks() {
        std::vector<std::string> texts;
        for (const PlotMark& mark : MarksOf(maker.Made, SeriesTimes(maker.Made))) {
            texts.push_back(TextOf(mark.Kind) + " " + IsoText(mark.Time));
        }
        return texts;
    }
    SeriesMaker maker{1, 0};
};

TEST_F(PlotMarksTest, AlarmsAreMarkedWhereRecordsBeginAndEndWithThem) {
    for (int i = 0; i < 46; ++i) {
        maker.Add(SomeDay + 23'400 + i * 900LL, {1});  // 6:30 to 17:45
    }
    maker.Add(SomeDay + SecondsPerDay + 23'400 + 5, {1});
    EXPECT_THAT(Marks(), ElementsAre("Alarm 1 2024-01-14T06:30:00", "Alarm 2 2024-01-14T18:00:00",
                                     "Alarm 1 2024-01-15T06:30:00"));
    maker.Logger().AlarmEnable = {0, 1};
    EXPECT_THAT(Marks(), ElementsAre("Alarm 2 2024-01-14T18:00:00"));
    maker.Logger().AlarmEnable = {0, 0};
    EXPECT_TRUE(Marks().empty());
}

TEST_F(PlotMarksTest, GapsAtOtherTimesAndTheLastRecordMarkNoAlarm) {
    maker.Add(SomeDay + 23'400 + 901, {1});
    maker.Add(SomeDay + 64'800 - 901, {1});
    maker.Add(SomeDay + 64'800 + 60'000, {1});
    maker.Add(SomeDay + 64'800 + SecondsPerDay, {1});
    EXPECT_TRUE(Marks().empty());
}

TEST_F(PlotMarksTest, AlarmMustLieInTheGap) {
    maker.Logger().LoggingStyle = 2;
    for (const Moment at : {23'398, 23'399, 23'400, 23'401, 23'410}) {
        maker.Add(SomeDay + at, {1});
    }
    for (const Moment at : {64'790, 64'797, 64'798, 64'799, 64'800, 64'801}) {
        maker.Add(SomeDay + at, {1});
    }
    EXPECT_TRUE(Marks().empty());
    maker.Made.Records.erase(maker.Made.Records.end() - 5, maker.Made.Records.end() - 1);
    EXPECT_THAT(Marks(), ElementsAre("Alarm 2 2024-01-14T18:00:00"));
}

TEST_F(PlotMarksTest, ClockSetBackIsMarkedWhereItWasSetTo) {
    maker.Add(SomeDay + 900, {1});
    maker.Add(SomeDay, {1});
    EXPECT_THAT(Marks(), ElementsAre("Clock Set Back 2024-01-14T00:00:00"));
    maker.Made.Records.clear();
    EXPECT_TRUE(Marks().empty());
}

// ----- ticks

std::vector<std::string> Ticks(Moment from, Moment to, int most) {
    const AmericanClock clock;
    std::vector<std::string> texts;
    const TimeTicks ticks = TimeTicksOf(from, to, most);
    for (const Moment tick : ticks.At) {
        texts.push_back(TickText(tick, ticks.Step, clock));
    }
    return texts;
}

TEST(PlotTicks, StandAtRoundTimes) {
    EXPECT_THAT(Ticks(SomeDay + 1, SomeDay + 14, 4), ElementsAre("00:00:05", "00:00:10"));
    EXPECT_THAT(Ticks(SomeDay - 1000, SomeDay + 4000, 6),
                ElementsAre("23:45", "1/14/24", "00:15", "00:30", "00:45", "01:00"));
    EXPECT_THAT(Ticks(SomeDay, SomeDay + SecondsPerDay, 5),
                ElementsAre("1/14/24", "06:00", "12:00", "18:00", "1/15/24"));
    EXPECT_THAT(Ticks(At(2024, 1, 1), At(2024, 1, 31), 6),
                ElementsAre("1/1/24", "1/8/24", "1/15/24", "1/22/24", "1/29/24"));
    EXPECT_THAT(Ticks(At(2024, 1, 2), At(2024, 12, 31), 6),
                ElementsAre("4/1/24", "7/1/24", "10/1/24"));
    EXPECT_THAT(Ticks(At(2021, 6, 1), At(2024, 6, 1), 4),
                ElementsAre("1/1/22", "1/1/23", "1/1/24"));
}

TEST(PlotTicks, AreNeverMoreThanAskedForAndEnd) {
    for (Moment span = 0; span < 4'000'000'000; span = span * 3 / 2 + 1) {
        for (const int most : {-1, 2, 5, 12}) {
            const TimeTicks ticks = TimeTicksOf(SomeDay - span, SomeDay + span / 3, most);
            EXPECT_LE(ticks.At.size(), static_cast<std::size_t>(std::max(most, 2))) << span;
            EXPECT_TRUE(std::is_sorted(ticks.At.begin(), ticks.At.end()));
            EXPECT_GT(ticks.Step, 0);
        }
    }
    EXPECT_TRUE(TimeTicksOf(SomeDay, SomeDay - 1, 5).At.empty());
}

}  // namespace
}  // namespace testing_support
