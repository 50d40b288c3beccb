#include "archive/series_values.h"

#include <gmock/gmock.h>

#include "archive/series_maker.h"
#include "flow/flow_calculation.h"

namespace testing_support {
namespace {

using testing::ElementsAre;

std::vector<std::string> TitlesOf(const SeriesValues& values) {
    std::vector<std::string> titles;
    for (const SeriesColumn& column : values.Columns()) {
        titles.push_back(TitleOf(column));
    }
    return titles;
}

TEST(SeriesValues, SeriesWithoutRecordsHasTheColumnsOfItsLastSettings) {
    SeriesMaker maker(2, 1);
    EXPECT_THAT(TitlesOf(SeriesValues(maker.Made)),
                ElementsAre("Channel 1 (Feet)", "Channel 2 (Deg C)", "Pulse Chan 1 (Gal)"));
    maker.Change().EngUnits[0] = "";
    EXPECT_THAT(TitlesOf(SeriesValues(maker.Made)),
                ElementsAre("Channel 1", "Channel 2 (Deg C)", "Pulse Chan 1 (Gal)"));
    maker.Made.Settings.clear();
    const SeriesValues none(maker.Made);
    EXPECT_TRUE(none.Columns().empty());
    EXPECT_EQ(none.NewestSettings(), nullptr);
}

TEST(SeriesValues, EachRecordIsScaledByItsOwnSettings) {
    SeriesMaker maker(1, 1);
    maker.Logger().PulseUnit[0] = 0.5;
    LoggerRecord& later = maker.Change();
    later.UpperLimit[0] = 200;
    later.LowerLimit[0] = -10;
    later.PulseUnit[0] = 4;
    maker.Add(SomeDay, {50, 7});
    maker.Add(SomeDay + 900, {50, 7}, 1);
    const SeriesValues values(maker.Made);
    ASSERT_EQ(values.Columns().size(), 2U);
    EXPECT_EQ(values.At(0, 0), 50);
    EXPECT_EQ(values.At(0, 1), 95);
    EXPECT_EQ(values.At(1, 0), 3.5);
    EXPECT_EQ(values.At(1, 1), 28);
    EXPECT_EQ(values.CountAt(1, 1), 7);
    EXPECT_EQ(values.PulseUnitAt(1, 1), 4);
}

TEST(SeriesValues, ChangedUnitOfAChannelMakesAColumnOfItsOwn) {
    SeriesMaker maker(2, 1);
    LoggerRecord& later = maker.Change();
    later.EngUnits[0] = "Meters";
    later.EngUnits[8] = "Liters";
    maker.Add(SomeDay, {1, 2, 3});
    maker.Add(SomeDay + 900, {4, 5, 6}, 1);
    maker.Add(SomeDay + 1800, {7, 8, 9}, 0);
    const SeriesValues values(maker.Made);
    EXPECT_THAT(TitlesOf(values),
                ElementsAre("Channel 1 (Feet)", "Channel 1 (Meters)", "Channel 2 (Deg C)",
                            "Pulse Chan 1 (Gal)", "Pulse Chan 1 (Liters)"));
    EXPECT_TRUE(values.Has(0, 0));
    EXPECT_FALSE(values.Has(0, 1));
    EXPECT_TRUE(values.Has(0, 2));
    EXPECT_TRUE(values.Has(1, 1));
    EXPECT_TRUE(values.Has(2, 1));
    EXPECT_EQ(values.At(1, 1), 4);
    EXPECT_EQ(values.At(0, 1), 0);
}

TEST(SeriesValues, DecimalsAreThoseOfTheNewestSettingsWithTheColumn) {
    SeriesMaker maker(2, 0);
    maker.Logger().DecPlaces = {1, 1};
    LoggerRecord& later = maker.Change();
    later.EngUnits[0] = "Meters";
    later.DecPlaces = {3, 4};
    maker.Add(SomeDay, {1, 2});
    maker.Add(SomeDay + 900, {1, 2}, 1);
    const SeriesValues values(maker.Made);
    EXPECT_EQ(values.Columns()[0].Places, 1);
    EXPECT_EQ(values.Columns()[1].Places, 3);
    EXPECT_EQ(values.Columns()[2].Places, 4);
}

TEST(SeriesValues, DisabledChannelHasNoColumnWhileItIs) {
    SeriesMaker maker(2, 2);
    maker.Logger().AnalogEnable[0] = 0;
    maker.Logger().DigitalEnable[0] = 0;
    maker.Change().AnalogEnable[0] = 1;
    maker.Add(SomeDay, {1, 2, 3, 4});
    maker.Add(SomeDay + 900, {1, 2, 3, 4}, 1);
    const SeriesValues values(maker.Made);
    EXPECT_THAT(TitlesOf(values),
                ElementsAre("Channel 1 (Feet)", "Channel 2 (Deg C)", "Pulse Chan 2 (Rain)"));
    EXPECT_FALSE(values.Has(0, 0));
    EXPECT_TRUE(values.Has(0, 1));
    EXPECT_EQ(values.At(2, 0), 4);
}

TEST(SeriesValues, PulsesStandBehindTheAnalogChannelsOfTheRecordsOwnSettings) {
    SeriesMaker maker(2, 1);
    maker.Change().NumAnalogChannels = 1;
    maker.Add(SomeDay, {1, 2, 3});
    maker.Add(SomeDay + 900, {4, 5}, 1);
    const SeriesValues values(maker.Made);
    EXPECT_EQ(values.At(2, 0), 3);
    EXPECT_EQ(values.At(2, 1), 5);
}

TEST(SeriesValues, FlowIsWhatTheViewerShows) {
    SeriesMaker maker(1, 0);
    LoggerRecord& logger = maker.Logger();
    logger.FlowMode = 1;
    logger.FlowUnits = 1;
    logger.VelUnits = 1;
    logger.UpperLimit[0] = 3;
    logger.ManningsN = 0.014;
    logger.ManningsS = 1;
    logger.ManningsSType = 1;
    logger.ManningsD = 2;
    maker.Add(SomeDay, {40});
    maker.Add(SomeDay + 900, {40});
    maker.Add(SomeDay + 1800, {20});
    const SeriesValues values(maker.Made);
    EXPECT_THAT(TitlesOf(values), ElementsAre("Channel 1 (Feet)", "Flow (GPM)", "Vel (MPS)"));
    ASSERT_EQ(values.FlowColumn(), 1U);
    for (std::size_t record = 0; record < 3; ++record) {
        double velocity = 0;
        const double flow = CalculateFlow(logger, {}, values.At(0, record), velocity);
        EXPECT_EQ(values.At(1, record), flow);
        EXPECT_EQ(values.At(2, record), velocity);
        EXPECT_GT(velocity, 0);
    }
}

TEST(SeriesValues, FlowOfATableGoesByTheSettingsOwnPoints) {
    SeriesMaker maker(1, 0);
    maker.Logger().FlowMode = 4;
    maker.Logger().UpperLimit[0] = 1;
    maker.Made.Settings[0].Table.Append({1, 4});
    maker.Made.Settings[0].Table.Append({2, 8});
    maker.Change();
    maker.Made.Settings[1].Table[1].Flow = 6;
    maker.Add(SomeDay, {100});
    maker.Add(SomeDay + 900, {100}, 1);
    const SeriesValues values(maker.Made);
    EXPECT_EQ(values.At(1, 0), 4);
    EXPECT_EQ(values.At(1, 1), 6);
}

TEST(SeriesValues, ChangedUnitsOfFlowAndVelocityAreAllInTheNewest) {
    SeriesMaker maker(1, 0);
    maker.FlowIsLevel(1);
    maker.Change();
    LoggerRecord& later = maker.Change();
    later.FlowUnits = 3;
    maker.Logger(1).FlowMode = 0;
    maker.Add(SomeDay, {10});
    maker.Add(SomeDay + 900, {10}, 2);
    maker.Add(SomeDay + 1800, {10}, 1);  // the newest of all has no flow
    const SeriesValues values(maker.Made);
    EXPECT_THAT(TitlesOf(values), ElementsAre("Channel 1 (Feet)", "Flow (CMS)"));
    EXPECT_EQ(values.FlowUnits(), 3);
    EXPECT_DOUBLE_EQ(values.At(1, 0), 0.02832);
    EXPECT_DOUBLE_EQ(values.At(1, 1), 0.02832);
    EXPECT_FALSE(values.Has(1, 2));
}

TEST(SeriesValues, NewestIsTheLastRecordNotTheLatestTime) {
    SeriesMaker maker(1, 0);
    maker.FlowIsLevel(1);
    maker.Change().FlowUnits = 0;
    maker.Add(SomeDay + 9000, {10}, 0);
    maker.Add(SomeDay, {10}, 1);
    EXPECT_EQ(SeriesValues(maker.Made).FlowUnits(), 0);
    EXPECT_EQ(SeriesValues(maker.Made).NewestSettings(), &maker.Made.Settings[1]);
    std::swap(maker.Made.Records[0], maker.Made.Records[1]);
    EXPECT_EQ(SeriesValues(maker.Made).FlowUnits(), 1);
}

TEST(SeriesValues, UnitThatAllowsNoFlowShowsNone) {
    SeriesMaker maker(1, 0);
    maker.FlowIsLevel(1);
    maker.Logger().EngUnits[0] = "PSI";
    maker.Add(SomeDay, {10});
    const SeriesValues values(maker.Made);
    EXPECT_FALSE(values.FlowColumn());
    EXPECT_EQ(values.Columns().size(), 1U);
}

TEST(SeriesValues, OrderOfTheSettingsChangesNothing) {
    SeriesMaker maker(2, 0);
    maker.FlowIsLevel(1);
    LoggerRecord& later = maker.Change();
    later.FlowUnits = 4;
    later.EngUnits[1] = "Deg F";
    later.UpperLimit[0] = 7;
    for (int i = 0; i < 20; ++i) {
        maker.Add(SomeDay + i * 900LL, {i, 3 * i}, i < 12 ? 0 : 1);
    }
    Series other = maker.Made;
    std::swap(other.Settings[0], other.Settings[1]);
    for (SeriesRecord& record : other.Records) {
        record.Settings = 1 - record.Settings;
    }
    const SeriesValues values(maker.Made);
    const SeriesValues same(other);
    ASSERT_EQ(TitlesOf(values), TitlesOf(same));
    for (std::size_t record = 0; record < 20; ++record) {
        for (std::size_t column = 0; column < values.Columns().size(); ++column) {
            EXPECT_EQ(values.Has(column, record), same.Has(column, record));
            EXPECT_EQ(values.At(column, record), same.At(column, record));
        }
    }
}

TEST(SeriesValues, LimitsBeyondADoubleShowAsNothing) {
    SeriesMaker maker(1, 1);
    maker.FlowIsLevel(1);
    maker.Logger().UpperLimit[0] = 1.7e308;
    maker.Logger().LowerLimit[0] = -1.7e308;
    maker.Logger().PulseUnit[0] = 1.7e308;
    maker.Add(SomeDay, {50, 2});
    const SeriesValues values(maker.Made);
    EXPECT_EQ(values.At(0, 0), 0);
    EXPECT_EQ(values.At(1, 0), 0);
    EXPECT_EQ(values.At(2, 0), 0);
}

TEST(SeriesValues, RecordWithoutSettingsHasNoColumn) {
    SeriesMaker maker(1, 0);
    maker.FlowIsLevel(1);
    maker.Add(SomeDay, {10}, 9);
    maker.Add(SomeDay, {10}, 0);
    const SeriesValues values(maker.Made);
    EXPECT_FALSE(values.Has(0, 0));
    EXPECT_FALSE(values.Has(1, 0));
    EXPECT_EQ(values.At(0, 0), 0);
    EXPECT_EQ(values.At(1, 1), 448.8);
}

}  // namespace
}  // namespace testing_support
