#include "archive/gaps.h"

#include <gtest/gtest.h>

#include "archive/series_maker.h"

namespace testing_support {
namespace {

RecordSpacing SpacingOfStyle(int style, const std::string& interval = "15 minutes") {
    LoggerRecord logger;
    logger.LoggingStyle = static_cast<std::uint8_t>(style);
    logger.SampleInterval = interval;
    return SpacingOf(logger);
}

TEST(RecordSpacing, ReadsTheIntervalOfEachUnit) {
    EXPECT_EQ(SpacingOfStyle(0, "1 second").Interval, 1);
    EXPECT_EQ(SpacingOfStyle(0, "30 seconds").Interval, 30);
    EXPECT_EQ(SpacingOfStyle(0, "15 minutes").Interval, 900);
    EXPECT_EQ(SpacingOfStyle(0, "1 hour").Interval, 3600);
    EXPECT_EQ(SpacingOfStyle(0, "2 days").Interval, 172'800);
    EXPECT_EQ(SpacingOfStyle(0, "65535 days").Interval, 65'535LL * 86'400);
}

TEST(RecordSpacing, IntervalOfNothingTellsNoSchedule) {
    for (const char* const text : {"", "0 minutes", "days", "-1 day", "65536 days", "1E999 days"}) {
        EXPECT_FALSE(SpacingOfStyle(0, text).IsScheduled()) << text;
        EXPECT_EQ(SpacingOfStyle(0, text).KindOf(1'000'000), PairKind::Joined) << text;
    }
}

TEST(RecordSpacing, LogarithmicTimingAndLoggingOnChangeTellNoSchedule) {
    EXPECT_FALSE(SpacingOfStyle(1).IsScheduled());
    for (const int timing : {0, 1, 2, 3}) {
        EXPECT_FALSE(SpacingOfStyle(128 + timing).IsScheduled());
    }
    EXPECT_EQ(SpacingOfStyle(1).KindOf(100'000'000), PairKind::Joined);
}

TEST(RecordSpacing, OtherTimingIsAnOrdinaryIntervalAndOtherBitsSayNothing) {
    EXPECT_EQ(SpacingOfStyle(3).Interval, 900);
    EXPECT_EQ(SpacingOfStyle(0x7C).Interval, 900);
    EXPECT_EQ(SpacingOfStyle(0x7E).Kind, RecordSpacing::Style::Fast);
}

TEST(RecordSpacing, MoreThanOneAndAHalfIntervalsIsAGap) {
    const RecordSpacing spacing = SpacingOfStyle(0);
    EXPECT_EQ(spacing.KindOf(0), PairKind::Joined);
    EXPECT_EQ(spacing.KindOf(1350), PairKind::Joined);
    EXPECT_EQ(spacing.KindOf(1351), PairKind::Gap);
    EXPECT_EQ(spacing.KindOf(-1), PairKind::SetBack);
    EXPECT_EQ(SpacingOfStyle(0, "7 seconds").KindOf(10), PairKind::Joined);
    EXPECT_EQ(SpacingOfStyle(0, "7 seconds").KindOf(11), PairKind::Gap);
}

TEST(RecordSpacing, TwoSecondsAreAGapInFastMode) {
    const RecordSpacing spacing = SpacingOfStyle(2);
    EXPECT_EQ(spacing.KindOf(0), PairKind::Joined);
    EXPECT_EQ(spacing.KindOf(1), PairKind::Joined);
    EXPECT_EQ(spacing.KindOf(2), PairKind::Gap);
    EXPECT_EQ(spacing.KindOf(-1), PairKind::SetBack);
}

TEST(Gaps, SeriesOfNoneAndOfOneRecordHasNone) {
    SeriesMaker maker;
    EXPECT_TRUE(FindBreaks(SeriesTimes(maker.Made)).Gaps.empty());
    maker.Add(SomeDay, {1, 2});
    const SeriesBreaks breaks = FindBreaks(SeriesTimes(maker.Made));
    EXPECT_TRUE(breaks.Gaps.empty());
    EXPECT_TRUE(breaks.ClockChanges.empty());
}

TEST(Gaps, LieBetweenRecordsThatAreTooFarApart) {
    SeriesMaker maker;
    for (const Moment at : {0, 900, 2700, 3600, 86'400}) {
        maker.Add(SomeDay + at, {1, 2});
    }
    const SeriesBreaks breaks = FindBreaks(SeriesTimes(maker.Made));
    ASSERT_EQ(breaks.Gaps.size(), 2U);
    EXPECT_EQ(breaks.Gaps[0].Record, 2U);
    EXPECT_EQ(breaks.Gaps[0].From, SomeDay + 900);
    EXPECT_EQ(breaks.Gaps[0].To, SomeDay + 2700);
    EXPECT_EQ(breaks.Gaps[1].Record, 4U);
    EXPECT_TRUE(breaks.ClockChanges.empty());
}

TEST(Gaps, GoByTheIntervalOfTheLaterRecord) {
    SeriesMaker maker;
    maker.Change().SampleInterval = "1 hour";
    maker.Add(SomeDay, {1, 2});
    maker.Add(SomeDay + 3600, {1, 2}, 1);
    maker.Add(SomeDay + 7200, {1, 2}, 0);
    const SeriesBreaks breaks = FindBreaks(SeriesTimes(maker.Made));
    ASSERT_EQ(breaks.Gaps.size(), 1U);
    EXPECT_EQ(breaks.Gaps[0].Record, 2U);
}

TEST(Gaps, ClockSetBackIsAMarkAndNoGap) {
    SeriesMaker maker;
    maker.Add(SomeDay + 7200, {1, 2});
    maker.Add(SomeDay, {1, 2});
    const SeriesBreaks breaks = FindBreaks(SeriesTimes(maker.Made));
    EXPECT_TRUE(breaks.Gaps.empty());
    ASSERT_EQ(breaks.ClockChanges.size(), 1U);
    EXPECT_EQ(breaks.ClockChanges[0].From, SomeDay + 7200);
    EXPECT_EQ(breaks.ClockChanges[0].To, SomeDay);
}

TEST(Gaps, LoggingOnChangeKnowsClockChangesAlone) {
    SeriesMaker maker;
    maker.Logger().LoggingStyle = 128;
    maker.Add(SomeDay, {1, 2});
    maker.Add(SomeDay + 30 * SecondsPerDay, {1, 2});
    maker.Add(SomeDay, {1, 2});
    const SeriesBreaks breaks = FindBreaks(SeriesTimes(maker.Made));
    EXPECT_TRUE(breaks.Gaps.empty());
    EXPECT_EQ(breaks.ClockChanges.size(), 1U);
}

TEST(Gaps, RecordWithoutSettingsHasNone) {
    SeriesMaker maker;
    maker.Add(SomeDay, {1, 2});
    maker.Add(SomeDay + SecondsPerDay, {1, 2}, 7);
    EXPECT_TRUE(FindBreaks(SeriesTimes(maker.Made)).Gaps.empty());
}

}  // namespace
}  // namespace testing_support
