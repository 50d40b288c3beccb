#include "client/columns.h"

#include <gtest/gtest.h>

#include "client_fixture.h"

namespace client_test {
namespace {

class MeterColumns : public ClientTest {
 protected:
    MeterColumns() {
        window.Record.DisplayMode = DisplayMeter;
        LoggerState state = FreshLogger(2, 0);
        state.DisplayTop[0] = 80;
        state.DisplayBottom[0] = -20;
        state.DecPlaces[0] = 1;
        Know(state);
    }
};

TEST_F(MeterColumns, AreNumberedFromOneToEight) {
    for (std::size_t i = 0; i < BarColumns; ++i) {
        EXPECT_EQ(Shown().fraMeter[i].Text, std::to_string(i + 1));
    }
}

TEST_F(MeterColumns, AChannelTakesItsDisplayScale) {
    EXPECT_EQ(Shown().lblMax[0].Text, "80.0");
    EXPECT_EQ(Shown().lblMin[0].Text, "-20.0");
    EXPECT_EQ(Shown().lblUnits[0].Text, "%");
    EXPECT_EQ(Meter(0).Max, 80);
    EXPECT_EQ(Meter(0).Min, -20);
    EXPECT_NE(Meter(0).Active, False);
    EXPECT_EQ(Meter(0).Units, "");
}

TEST_F(MeterColumns, EachChannelTakesItsOwnScalePlacesAndUnit) {
    LoggerState state = FreshLogger(AnalogChannels, 0);
    for (std::size_t i = 0; i < AnalogChannels; ++i) {
        const int n = static_cast<int>(i);
        state.DisplayTop[i] = 10 * n + 5;
        state.DisplayBottom[i] = -n - 1;
        state.DecPlaces[i] = static_cast<std::uint8_t>(i % 4);
        state.EngUnits[i] = "U" + std::to_string(n + 1);
    }
    Know(state);
    const char* const tops[] = {"5", "15.0", "25.00", "35.000", "45", "55.0", "65.00", "75.000"};
    const char* const bottoms[] = {"-1", "-2.0", "-3.00", "-4.000",
                                   "-5", "-6.0", "-7.00", "-8.000"};
    for (std::size_t i = 0; i < BarColumns; ++i) {
        const int n = static_cast<int>(i);
        EXPECT_EQ(Shown().lblMax[i].Text, tops[i]);
        EXPECT_EQ(Shown().lblMin[i].Text, bottoms[i]);
        EXPECT_EQ(Shown().lblUnits[i].Text, "U" + std::to_string(n + 1));
        EXPECT_EQ(Meter(n).Max, 10 * n + 5);
        EXPECT_EQ(Meter(n).Min, -n - 1);
        EXPECT_NE(Meter(n).Active, False);
    }
}

TEST_F(MeterColumns, AColumnBeyondTheLoggersChannelsIsBlank) {
    EXPECT_NE(Meter(1).Active, False) << "the last one that it has";
    EXPECT_EQ(Meter(2).Active, False);
    EXPECT_EQ(Shown().lblMax[2].Text, "");
    EXPECT_EQ(Shown().lblMin[2].Text, "");
    EXPECT_EQ(Shown().lblUnits[2].Text, "");
}

TEST_F(MeterColumns, ADisabledChannelIsBlankedWithItsReading) {
    Sample({30000});
    ASSERT_NE(Shown().lblValue[0].Text, "");
    State().AnalogEnable[0] = 0;
    window.Resize();
    EXPECT_EQ(Shown().lblValue[0].Text, "");
    EXPECT_EQ(Shown().lblHistory[0].Text, "");
    EXPECT_EQ(Shown().lblMax[0].Text, "");
    EXPECT_EQ(Shown().lblMin[0].Text, "");
    EXPECT_EQ(Shown().lblUnits[0].Text, "");
    EXPECT_EQ(Meter(0).Value, 0);
    EXPECT_EQ(Meter(0).Max, 0);
    EXPECT_EQ(Meter(0).Min, 0);
    EXPECT_EQ(Meter(0).Active, False);
    EXPECT_NE(Meter(1).Active, False) << "the other one stays";
    EXPECT_NE(Shown().lblMax[1].Text, "");
}

TEST_F(MeterColumns, WithoutSettingsEveryColumnIsBlank) {
    window.Record.SettingsValid = False;
    window.Resize();
    for (int i = 0; i < BarColumns; ++i) {
        EXPECT_EQ(Meter(i).Active, False) << i;
    }
}

class FlowColumns : public ClientTest {
 protected:
    FlowColumns() { window.Record.DisplayMode = DisplayFlow; }
};

TEST_F(FlowColumns, AreThreeChannelsFlowAndVelocity) {
    Know(PipeLogger());
    const char* const captions[] = {"1", "2", "3", "Flow", "Velocity", "6", "7", "8"};
    for (std::size_t i = 0; i < BarColumns; ++i) {
        // The captions of what the mode does not show are those of the mode before.
        EXPECT_EQ(Shown().fraMeter[i].Text,
                  i < FlowModeColumns ? captions[i] : DesignPanel().fraMeter[i].Text);
    }
}

TEST_F(FlowColumns, AChannelTakesItsOwnScaleAndBeyondVelocityAllAreBlank) {
    LoggerState state = PipeLogger();
    state.AnalogEnable.fill(1);
    state.DisplayTop[1] = 33;
    state.DisplayBottom[1] = 11;
    state.DecPlaces[1] = 3;
    state.EngUnits[1] = "Deg C";
    Know(state);
    EXPECT_EQ(Shown().lblMax[1].Text, "33.000");
    EXPECT_EQ(Shown().lblMin[1].Text, "11.000");
    EXPECT_EQ(Shown().lblUnits[1].Text, "Deg C");
    EXPECT_EQ(Meter(1).Max, 33);
    EXPECT_EQ(Meter(1).Min, 11);
    for (int i = FlowModeColumns; i < BarColumns; ++i) {
        EXPECT_EQ(Meter(i).Active, False) << i;
        EXPECT_EQ(Shown().lblMax[static_cast<std::size_t>(i)].Text, "") << i;
    }
}

TEST_F(FlowColumns, ScaleFlowAndVelocityFromZeroWithTwoPlaces) {
    Know(PipeLogger());
    EXPECT_EQ(Shown().lblMax[3].Text, "4.00");
    EXPECT_EQ(Shown().lblMin[3].Text, "0.00");
    EXPECT_EQ(Shown().lblUnits[3].Text, "CFS");
    EXPECT_EQ(Meter(3).Max, 4);
    EXPECT_EQ(Meter(3).Min, 0);
    EXPECT_NE(Meter(3).Active, False);
    EXPECT_EQ(Shown().lblMax[4].Text, "6.00");
    EXPECT_EQ(Shown().lblMin[4].Text, "0.00");
    EXPECT_EQ(Shown().lblUnits[4].Text, "FPS");
    EXPECT_EQ(Meter(4).Max, 6);
    EXPECT_EQ(Meter(4).Min, 0);
    EXPECT_NE(Meter(4).Active, False);
}

TEST_F(FlowColumns, NameTheUnitsThatTheLoggerSays) {
    LoggerState state = PipeLogger();
    state.FlowUnits = 1;
    state.VelUnits = 1;
    Know(state);
    EXPECT_EQ(Shown().lblUnits[3].Text, "GPM");
    EXPECT_EQ(Shown().lblUnits[4].Text, "MPS");
}

TEST_F(FlowColumns, FlowHasItsColumnEvenWithoutAFlowMode) {
    LoggerState state = PipeLogger();
    state.FlowMode = 0;
    Know(state);
    EXPECT_NE(Meter(3).Active, False);
    EXPECT_EQ(Meter(4).Active, False);
}

TEST_F(FlowColumns, AnyVelocityCodeButZeroReadsAsMetres) {
    LoggerState state = PipeLogger();
    state.VelUnits = 2;
    Know(state);
    EXPECT_EQ(Shown().lblUnits[4].Text, "MPS");
}

TEST_F(FlowColumns, FlumeModeWithADisabledLevelBlanksTheFlowColumn) {
    LoggerState state = PipeLogger();
    state.FlowMode = 2;
    state.AnalogEnable[0] = 0;
    Know(state);
    EXPECT_EQ(Meter(3).Active, False);
    EXPECT_EQ(Shown().lblMax[3].Text, "");
    state.FlowMode = 1;
    Know(state);
    EXPECT_EQ(Meter(3).Active, False);
    EXPECT_EQ(Meter(4).Active, False) << "nor is there a velocity without a level";
}

TEST_F(FlowColumns, FlumeModeBlanksTheVelocityColumnButKeepsItsCaption) {
    LoggerState state = PipeLogger();
    state.FlowMode = 2;
    Know(state);
    EXPECT_EQ(Meter(4).Active, False);
    EXPECT_EQ(Shown().lblMax[4].Text, "");
    EXPECT_EQ(Shown().fraMeter[4].Text, "Velocity");
}

TEST_F(FlowColumns, ADisabledSecondChannelIsBlank) {
    LoggerState state = PipeLogger();
    state.AnalogEnable[1] = 0;
    Know(state);
    EXPECT_EQ(Meter(1).Active, False);
    EXPECT_NE(Meter(2).Active, False);
}

TEST_F(FlowColumns, AreBlankBeforeAnySettingsWereRead) {
    window.ChooseDisplay(DisplayFlow);
    EXPECT_EQ(window.Record.DisplayMode, DisplayFlow);
    EXPECT_TRUE(console.Boxes().empty());
    for (int i = 0; i < FlowModeColumns; ++i) {
        EXPECT_EQ(Meter(i).Active, False) << i;
    }
    EXPECT_EQ(Shown().fraMeter[3].Text, "Flow");
}

TEST_F(FlowColumns, ChoosingTheFlowModeShowsFlowAtOnce) {
    LoggerState state = PipeLogger();
    state.RawScaleUpper[0] = 2000;
    state.FlowDecPlaces = 2;
    window.Record.DisplayMode = DisplayMeter;
    Know(state);
    Sample({1000});
    EXPECT_EQ(Shown().lblValue[3].Text, "");
    window.ChooseDisplay(DisplayFlow);
    EXPECT_EQ(Shown().lblValue[3].Text, "3.31");
}

}  // namespace
}  // namespace client_test
