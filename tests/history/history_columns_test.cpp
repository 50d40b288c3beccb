#include "history/history_columns.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

LoggerRecord TwoChannelLogger() {
    LoggerRecord logger;
    logger.NumAnalogChannels = 2;
    logger.NumDigitalChannels = 1;
    logger.AnalogEnable.fill(1);
    logger.DigitalEnable.fill(1);
    logger.EngUnits = {"Feet", "Deg C", "?", "?", "?", "?", "?", "?", "Gal", "?"};
    logger.DecPlaces = {3, 1, 0, 0, 0, 0, 0, 0, 2, 0};
    return logger;
}

std::vector<std::string> Headings(const HistoryColumns& columns) {
    std::vector<std::string> headings;
    for (const HistoryColumn& column : columns.Columns) {
        headings.push_back(column.Heading);
    }
    return headings;
}

TEST(ColumnsOf, AreTheLoggersChannelsAnalogFirst) {
    const HistoryColumns columns = ColumnsOf(TwoChannelLogger(), false);
    EXPECT_THAT(Headings(columns), ElementsAre("Feet", "Deg C", "Gal"));
    EXPECT_EQ(columns.Columns[2].Places, 2);
    EXPECT_FALSE(columns.ShowFlow);
    EXPECT_FALSE(columns.ShowVel);
}

TEST(ColumnsOf, ChannelThatIsDisabledHasNone) {
    LoggerRecord logger = TwoChannelLogger();
    logger.AnalogEnable[0] = 0;
    logger.DigitalEnable[0] = 0;
    EXPECT_THAT(Headings(ColumnsOf(logger, false)), ElementsAre("Deg C"));
}

TEST(ColumnsOf, ManningHasFlowThenVelocityWithTheDecimalsOfTheLevel) {
    LoggerRecord logger = TwoChannelLogger();
    logger.FlowMode = 1;
    logger.FlowUnits = 1;
    logger.FlowDecPlaces = 0;
    const HistoryColumns columns = ColumnsOf(logger, false);
    EXPECT_THAT(Headings(columns), ElementsAre("Feet", "Deg C", "Gal", "Flow (GPM)", "Vel (FPS)"));
    EXPECT_EQ(columns.Columns[3].Places, 3);
    EXPECT_EQ(columns.Columns[4].Places, 3);
    EXPECT_TRUE(columns.ShowFlow);
    EXPECT_TRUE(columns.ShowVel);
    logger.VelUnits = 1;
    EXPECT_EQ(Headings(ColumnsOf(logger, false)).back(), "Vel (MPS)");
}

TEST(ColumnsOf, OtherFlowModesHaveNoVelocity) {
    LoggerRecord logger = TwoChannelLogger();
    for (const std::uint8_t mode : {2, 3, 4}) {
        logger.FlowMode = mode;
        const HistoryColumns columns = ColumnsOf(logger, false);
        EXPECT_EQ(Headings(columns).back(), "Flow (CFS)");
        EXPECT_TRUE(columns.ShowFlow);
        EXPECT_FALSE(columns.ShowVel);
    }
}

TEST(ColumnsOf, BadUnitsDropFlowAndVelocity) {
    LoggerRecord logger = TwoChannelLogger();
    logger.FlowMode = 1;
    const HistoryColumns columns = ColumnsOf(logger, true);
    EXPECT_THAT(Headings(columns), ElementsAre("Feet", "Deg C", "Gal"));
    EXPECT_FALSE(columns.ShowFlow);
    EXPECT_FALSE(columns.ShowVel);
}

TEST(ColumnsOf, FlowNeedsTheFirstChannel) {
    LoggerRecord logger = TwoChannelLogger();
    logger.FlowMode = 2;
    EXPECT_TRUE(HasFlow(logger));
    logger.AnalogEnable[0] = 0;
    EXPECT_FALSE(HasFlow(logger));
    EXPECT_FALSE(ColumnsOf(logger, false).ShowFlow);
}

TEST(BadUnitsWarning, NamesTheUnitAsItStands) {
    const BoxContent box = BadUnitsWarning(" Ft");
    EXPECT_EQ(box.Title, "Bad Units");
    EXPECT_EQ(box.Text,
              "Warning: For the flow monitor calculations to be done correctly the channel 1\n"
              "unit's name must be one of Feet, Inches, Meters or cm (centimeters).\n\n"
              "The current unit's name ( Ft) is not supported.");
    EXPECT_EQ(box.Icon, BoxIcon::Information);
    EXPECT_EQ(box.Buttons, BoxButtons::Ok);
}

LoggerRecord Scaled(std::int32_t rawLower, std::int32_t rawUpper, double lower, double upper) {
    LoggerRecord logger;
    logger.RawScaleLower[3] = rawLower;
    logger.RawScaleUpper[3] = rawUpper;
    logger.LowerLimit[3] = lower;
    logger.UpperLimit[3] = upper;
    return logger;
}

double Value(const LoggerRecord& logger, std::uint16_t raw) {
    return ChannelScale(logger, 3).ValueOf(raw);
}

TEST(ChannelScale, RunsFromLimitToLimitAndBeyond) {
    const LoggerRecord logger = Scaled(100, 200, 0, 10);
    EXPECT_EQ(Value(logger, 150), 5);
    EXPECT_EQ(Value(logger, 0), -10);
    EXPECT_EQ(Value(logger, 300), 20);
}

TEST(ChannelScale, EqualOrInvertedRawLimitsGiveTheLowerLimit) {
    EXPECT_EQ(Value(Scaled(500, 500, 2, 10), 700), 2);
    EXPECT_EQ(Value(Scaled(600, 500, 2, 10), 700), 2);
}

TEST(ChannelScale, SpanBelowTenThousandthsGivesTheUpperLimit) {
    EXPECT_EQ(Value(Scaled(0, 65535, 7, 7), 700), 7);
    EXPECT_EQ(Value(Scaled(0, 65535, 7, 7.00009), 0), 7.00009);
    EXPECT_EQ(Value(Scaled(0, 65535, 10, -10), 700), -10);
    EXPECT_EQ(Value(Scaled(0, 65535, 7, 7.001), 0), 7);
}

}  // namespace
