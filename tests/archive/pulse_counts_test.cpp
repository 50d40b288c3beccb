#include "archive/pulse_counts.h"

#include <gtest/gtest.h>

#include "archive/series_maker.h"

namespace testing_support {
namespace {

using Way = CounterStep::Way;

void ExpectStep(int before, int after, Way way, int pulses) {
    const CounterStep step =
        StepOfCounter(static_cast<std::uint16_t>(before), static_cast<std::uint16_t>(after));
    EXPECT_EQ(step.Kind, way) << before << " to " << after;
    EXPECT_EQ(step.Pulses, pulses) << before << " to " << after;
}

TEST(CounterStep, RiseIsWhatWasCounted) {
    ExpectStep(0, 0, Way::Rise, 0);
    ExpectStep(7, 7, Way::Rise, 0);
    ExpectStep(7, 12, Way::Rise, 5);
    ExpectStep(0, 65'535, Way::Rise, 65'535);
}

TEST(CounterStep, FallBelowHalfTheCounterIsARollOver) {
    ExpectStep(65'535, 0, Way::RollOver, 1);
    ExpectStep(65'000, 100, Way::RollOver, 636);
    ExpectStep(32'769, 0, Way::RollOver, 32'767);
}

TEST(CounterStep, LargerFallIsAResetAndItsNewCountIsAdded) {
    ExpectStep(32'768, 0, Way::Reset, 0);
    ExpectStep(100, 30, Way::Reset, 30);
    ExpectStep(40'000, 20'000, Way::Reset, 20'000);
    ExpectStep(65'535, 65'534, Way::Reset, 65'534);
}

class PulseTotals : public testing::Test {
 protected:
    std::optional<PulseTotal> Of(const Period& period, std::size_t column = 1) {
        return PulseTotalsOf(SeriesValues(maker.Made), column, Periods(period)).at(0);
    }
    SeriesMaker maker{1, 1};
    const Period Day{SomeDay, SomeDay + SecondsPerDay};
};

TEST_F(PulseTotals, NothingIsKnownOfOneRecord) {
    EXPECT_FALSE(Of(Day));
    maker.Add(SomeDay + 900, {0, 5});
    EXPECT_FALSE(Of(Day));
}

TEST_F(PulseTotals, SumOfStepsInTheChannelsUnit) {
    maker.Logger().PulseUnit[0] = 0.25;
    for (const int count : {65'530, 65'534, 6, 2, 2, 12}) {
        maker.Add(SomeDay + static_cast<Moment>(maker.Made.Records.size()) * 900, {0, count});
    }
    const PulseTotal total = Of(Day).value();
    EXPECT_EQ(total.Pulses, 4 + 8 + 2 + 0 + 10);
    EXPECT_EQ(total.Total, 6);
    EXPECT_EQ(total.RollOvers, 1);
    EXPECT_EQ(total.Resets, 1);
}

TEST_F(PulseTotals, CounterCountsOnAcrossAGap) {
    maker.Add(SomeDay + 900, {0, 5});
    maker.Add(SomeDay + 80'000, {0, 105});
    EXPECT_EQ(Of(Day).value().Pulses, 100);
}

TEST_F(PulseTotals, StepAcrossABoundIsDividedByTime) {
    maker.Add(SomeDay - 300, {0, 0});
    maker.Add(SomeDay + 600, {0, 90});
    EXPECT_DOUBLE_EQ(Of({SomeDay - SecondsPerDay, SomeDay}).value().Pulses, 30);
    EXPECT_DOUBLE_EQ(Of(Day).value().Pulses, 60);
}

TEST_F(PulseTotals, StepOfAClockSetBackBelongsToTheLaterRecord) {
    maker.Add(SomeDay + SecondsPerDay + 300, {0, 10});
    maker.Add(SomeDay + 300, {0, 17});
    maker.Add(SomeDay + 300, {0, 20});
    EXPECT_EQ(Of(Day).value().Pulses, 10);
    EXPECT_FALSE(Of({SomeDay + SecondsPerDay, SomeDay + 2 * SecondsPerDay}));
}

TEST_F(PulseTotals, StepIsWorthTheUnitOfTheLaterRecordAndBelongsToItsColumn) {
    LoggerRecord& later = maker.Change();
    later.PulseUnit[0] = 2;
    LoggerRecord& last = maker.Change();
    last.EngUnits[8] = "Liters";
    maker.Add(SomeDay, {0, 0}, 0);
    maker.Add(SomeDay + 900, {0, 10}, 0);
    maker.Add(SomeDay + 1800, {0, 20}, 1);
    maker.Add(SomeDay + 2700, {0, 40}, 2);
    maker.Add(SomeDay + 3600, {0, 45}, 2);
    EXPECT_EQ(Of(Day, 1).value().Total, 10 + 20);
    EXPECT_EQ(Of(Day, 2).value().Total, 10);
}

}  // namespace
}  // namespace testing_support
