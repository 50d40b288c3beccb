#include "archive/plot_scene.h"

#include <gtest/gtest.h>

#include "american_clock.h"
#include "archive/plot_readout.h"
#include "series_maker.h"

namespace {

using namespace testing_support;

/// Records at 0, 15, 30 minutes, and after a gap at 2:00; the clock set back to 1:30 for one more.
Series Levels(int first) {
    SeriesMaker maker(2, 1);
    maker.FlowIsLevel(1);
    for (const int minute : {0, 15, 30, 120}) {
        maker.Add(SomeDay + minute * 60, {first + minute, 20, minute});
    }
    maker.Add(SomeDay + 90 * 60, {first, 20, 5});
    return std::move(maker.Made);
}

std::shared_ptr<const NamedSeries> Shared(const char* name, Series series) {
    return std::make_shared<const NamedSeries>(name, std::move(series));
}

class PlotSceneTest : public ::testing::Test {
 protected:
    std::shared_ptr<const NamedSeries> hill_ = Shared("Hill", Levels(100));
    std::shared_ptr<const NamedSeries> mill_ = Shared("Mill", Levels(500));
    AmericanClock clock_;
    PlotScene scene_;
    PlotPart part_{SomeDay, SomeDay + 7200, {}};
};

TEST_F(PlotSceneTest, LinesOfOneUnitShareAnAxis) {
    scene_.SetLines({{hill_, 0}, {hill_, 3}, {mill_, 0}, {hill_, 2}});
    ASSERT_EQ(scene_.Axes().size(), 3U);
    EXPECT_EQ(scene_.Axes()[0].Unit, "Feet");
    EXPECT_EQ(scene_.Axes()[0].Title, "Feet");
    EXPECT_EQ(scene_.Axes()[0].Lines, (std::vector<std::size_t>{0, 2}));
    EXPECT_EQ(scene_.Axes()[1].Unit, "GPM");
    EXPECT_EQ(scene_.Axes()[1].Title, "Flow (GPM)");
    EXPECT_EQ(scene_.AxisOf(3), 2U);
    const ValueRange feet = scene_.RangeOf(0, SomeDay, SomeDay + 7200);
    EXPECT_LT(feet.Lowest, 10);
    EXPECT_GT(feet.Highest, 62);
}

TEST_F(PlotSceneTest, TitlesNameTheSeriesWhereThereAreSeveral) {
    scene_.SetLines({{hill_, 0}, {hill_, 3}});
    EXPECT_EQ(scene_.TitleOf(1), "Flow (GPM)");
    scene_.SetLines({{hill_, 0}, {mill_, 3}});
    EXPECT_EQ(scene_.TitleOf(1), "Mill: Flow (GPM)");
    EXPECT_EQ(PlotTitle({hill_}), "Plot of Hill");
    EXPECT_EQ(PlotTitle({hill_, mill_}), "Plot of Hill and Mill");
    EXPECT_EQ(PlotTitle({hill_, mill_, hill_}), "Plot of 3 Loggers");
}

TEST_F(PlotSceneTest, ColumnsOfLinesThatStayAreKept) {
    scene_.SetLines({{hill_, 0}, {hill_, 1}});
    const PlotColumn* before = &scene_.ColumnOf(1);
    scene_.SetLines({{mill_, 0}, {hill_, 1}});
    EXPECT_EQ(&scene_.ColumnOf(1), before);
    EXPECT_GT(scene_.Memory(), 0U);
}

TEST_F(PlotSceneTest, ALineHasTheLookOfItsPlaceUnlessItIsTold) {
    scene_.SetLines({{hill_, 0}, {hill_, 1}, {hill_, 2, 7}});
    EXPECT_EQ(scene_.LookOf(1), 1U);
    EXPECT_EQ(scene_.LookOf(2), 7U);
}

TEST_F(PlotSceneTest, FindsTheWholeOfSeveralSeries) {
    const Period whole = WholeOf({hill_, mill_, Shared("Empty", {})});
    EXPECT_EQ(whole, (Period{SomeDay, SomeDay + 7201}));
    EXPECT_TRUE(WholeOf({Shared("Empty", {})}).IsEmpty());
    EXPECT_TRUE(WholeOf({}).IsEmpty());
}

TEST_F(PlotSceneTest, BeginsWithChannelOneAndFlow) {
    EXPECT_EQ(FirstChoice(hill_->Values()), (std::vector<std::size_t>{0, 3}));
    EXPECT_TRUE(FirstChoice(Shared("Empty", {})->Values()).empty());
}

TEST_F(PlotSceneTest, GoesFromRecordToRecordAcrossGapsAndClockChanges) {
    scene_.SetLines({{hill_, 0}});
    EXPECT_EQ(scene_.RecordFrom(SomeDay, 0, true), SomeDay + 900);
    EXPECT_EQ(scene_.RecordFrom(SomeDay, 1000, true), SomeDay + 1800);
    EXPECT_EQ(scene_.RecordFrom(SomeDay + 1800, 0, true), SomeDay + 5400);
    EXPECT_EQ(scene_.RecordFrom(SomeDay + 5400, 0, true), SomeDay + 7200);
    EXPECT_EQ(scene_.RecordFrom(SomeDay + 5400, 99'999, true), SomeDay + 7200);
    EXPECT_EQ(scene_.RecordFrom(SomeDay + 7200, 0, true), std::nullopt);
    EXPECT_EQ(scene_.RecordFrom(SomeDay + 7200, 0, false), SomeDay + 5400);
    EXPECT_EQ(scene_.RecordFrom(SomeDay + 7200, 99'999, false), SomeDay);
    EXPECT_EQ(scene_.EndRecord(true), SomeDay + 7200);
    EXPECT_EQ(scene_.EndRecord(false), SomeDay);
    scene_.SetLines({});
    EXPECT_EQ(scene_.EndRecord(true), std::nullopt);
    EXPECT_EQ(scene_.RecordFrom(SomeDay, 0, true), std::nullopt);
}

TEST_F(PlotSceneTest, ReadsEachLineInItsOwnUnit) {
    scene_.SetLines({{hill_, 0}, {hill_, 2}});
    const PlotReadout read = ReadoutAt(scene_, SomeDay + 900, part_, clock_);
    EXPECT_EQ(read.Time, "1/14/24 00:15:00");
    EXPECT_EQ(read.Rows[0].Value, "12 Feet");
    EXPECT_EQ(read.Rows[1].Value, "15 Gal");
    EXPECT_EQ(read.Rows[1].Time, "");
    EXPECT_EQ(read.Words, "1/14/24 00:15:00: Channel 1 (Feet) 12 Feet, Pulse Chan 1 (Gal) 15 Gal");
}

TEST_F(PlotSceneTest, TellsTheTimeOfARecordThatIsNotTheCursors) {
    scene_.SetLines({{hill_, 0}});
    const PlotReadout read = ReadoutAt(scene_, SomeDay + 1000, part_, clock_);
    EXPECT_EQ(read.Rows[0].Time, "1/14/24 00:15:00");
    EXPECT_TRUE(read.Words.ends_with("12 Feet at 1/14/24 00:15:00"));
}

TEST_F(PlotSceneTest, ReadsNothingInAGap) {
    scene_.SetLines({{hill_, 0}});
    EXPECT_EQ(ReadoutAt(scene_, SomeDay + 3600, part_, clock_).Rows[0].Value, "no record");
    EXPECT_EQ(NearestRecord(scene_, SomeDay + 3600, part_), SomeDay + 3600);
    EXPECT_EQ(NearestRecord(scene_, SomeDay + 1000, part_), SomeDay + 900);
}

TEST_F(PlotSceneTest, ExplainsMarks) {
    scene_.SetLines({{hill_, 0}});
    ASSERT_EQ(scene_.Marks().size(), 1U);
    EXPECT_EQ(MarksNear(scene_, SomeDay + 5400 + 72, part_, clock_),
              "Clock Set Back 1/14/24 01:30:00: The logger's clock was set back to this time.");
    EXPECT_EQ(MarksNear(scene_, SomeDay + 5400 + 73, part_, clock_), "");
    EXPECT_EQ(MarksInWords(scene_.MarksIn(SomeDay, SomeDay + 7200)),
              "C: The logger's clock was set back to this time.");
    scene_.SetLines({{hill_, 0}, {mill_, 0}});
    EXPECT_TRUE(MarksNear(scene_, SomeDay + 5400, part_, clock_).starts_with("Hill: Clock"));
    EXPECT_EQ(MarksInWords(scene_.Marks()), "C: The logger's clock was set back to this time.");
}

}  // namespace
