#include "client/readings.h"

#include <gtest/gtest.h>

#include <limits>

#include "client_fixture.h"
#include "common/fault.h"

namespace client_test {
namespace {

class Readings : public ClientTest {
 protected:
    Readings() { Know(ThreeDecimals()); }

    static LoggerState ThreeDecimals() {
        LoggerState state = FreshLogger(3, 2);
        state.DecPlaces.fill(3);
        state.RawScaleLower[0] = 100;
        state.RawScaleUpper[0] = 200;
        state.LowerLimit[0] = 0;
        state.UpperLimit[0] = 10;
        state.EngUnits[0] = "Feet";
        return state;
    }
};

TEST_F(Readings, RawBelowTheRawScaleGivesAValueBelowTheLimits) {
    Sample({0});
    EXPECT_EQ(Shown().lblValue[0].Text, "-10.000");
    EXPECT_EQ(Shown().lblData2[0].Text, "-10.000 Feet");
    EXPECT_EQ(Meter(0).Value, -10);
}

TEST_F(Readings, RawAboveTheRawScaleIsNotLimited) {
    Sample({300});
    EXPECT_EQ(Shown().lblValue[0].Text, "20.000");
}

TEST_F(Readings, TheLimitOfASpanIsATenThousandth) {
    State().LowerLimit[0] = 0;
    State().UpperLimit[0] = 0.0001;
    EXPECT_EQ(ScaleLiveReading(State(), 0, 150), 0.00005);
    State().UpperLimit[0] = -0.0001;
    EXPECT_EQ(ScaleLiveReading(State(), 0, 150), -0.00005);
}

TEST_F(Readings, EqualRawLimitsGiveTheLowerLimit) {
    State().RawScaleUpper[0] = 100;
    State().LowerLimit[0] = 3;
    EXPECT_EQ(ScaleLiveReading(State(), 0, 5000), 3);
}

TEST_F(Readings, EqualRawLimitsWithASpanBelowTheLeastGiveTheUpperLimit) {
    State().RawScaleUpper[0] = 100;
    State().LowerLimit[0] = 3;
    State().UpperLimit[0] = 3.00009;
    EXPECT_EQ(ScaleLiveReading(State(), 0, 5000), 3.00009);
}

TEST_F(Readings, InvertedRawLimitsScaleDownwards) {
    State().RawScaleLower[0] = 200;
    State().RawScaleUpper[0] = 100;
    EXPECT_EQ(ScaleLiveReading(State(), 0, 175), 2.5);
}

TEST_F(Readings, NegativeSpanBelowTheLeastGivesTheUpperLimit) {
    State().LowerLimit[0] = 1.00005;
    State().UpperLimit[0] = 1;
    EXPECT_EQ(ScaleLiveReading(State(), 0, 100), 1);
}

TEST_F(Readings, NegativeSpanScalesDownwards) {
    State().LowerLimit[0] = 10;
    State().UpperLimit[0] = 0;
    EXPECT_EQ(ScaleLiveReading(State(), 0, 150), 5);
}

TEST_F(Readings, AChannelThatNoLoggerHasIsAFault) {
    EXPECT_THROW(static_cast<void>(ScaleLiveReading(State(), AnalogChannels, 0)), Fault);
    EXPECT_THROW(static_cast<void>(ScaleLiveReading(State(), -1, 0)), Fault);
}

TEST_F(Readings, BeforeAnySampleTheBarSitsAtTheLowerLimitAndOnlyTheUnitsShow) {
    State().LowerLimit[0] = 2.5;
    RefreshReadings(window.Record, surface.Shown);
    EXPECT_EQ(Meter(0).Value, 2.5);
    EXPECT_EQ(Shown().lblValue[0].Text, "");
    EXPECT_EQ(Shown().lblHistory[0].Text, "\n\n");
    EXPECT_EQ(Shown().lblData2[0].Text, " Feet");
}

TEST_F(Readings, HistoryShowsTheThreeOlderReadingsNewestOnTop) {
    Sample({110});
    Sample({120});
    Sample({130});
    Sample({140});
    EXPECT_EQ(Shown().lblValue[0].Text, "4.000");
    EXPECT_EQ(Shown().lblHistory[0].Text, "3.000\n2.000\n1.000");
}

TEST_F(Readings, AFifthSampleDropsTheOldest) {
    for (const std::int32_t raw : {110, 120, 130, 140, 150}) {
        Sample({raw});
    }
    EXPECT_EQ(State().NumDataPoints, 4);
    EXPECT_EQ(Shown().lblHistory[0].Text, "4.000\n3.000\n2.000");
}

TEST_F(Readings, NoSampleAfterThreeGoodOnesKeepsTheHistoryAndDropsTheBar) {
    Sample({110});
    Sample({120});
    Sample({130});
    SampleNothing();
    EXPECT_EQ(Shown().lblValue[0].Text, "No sample");
    EXPECT_EQ(Shown().lblData2[0].Text, "No sample");
    EXPECT_EQ(Shown().lblHistory[0].Text, "3.000\n2.000\n1.000");
    EXPECT_EQ(Meter(0).Value, State().LowerLimit[0]);
    EXPECT_EQ(Shown().lblLoggerTime.Text, "");
}

TEST_F(Readings, AMissingReadingTakesAPlaceInTheHistory) {
    Sample({110});
    SampleNothing();
    Sample({130});
    EXPECT_EQ(Shown().lblHistory[0].Text, "No sample\n1.000\n");
}

TEST_F(Readings, SevenDecimalPlacesFormatWithSix) {
    State().DecPlaces[0] = 7;
    Sample({150});
    EXPECT_EQ(Shown().lblValue[0].Text, "5.000000");
}

TEST_F(Readings, ADisabledChannelLeavesItsLabelsAlone) {
    Sample({150, 0});
    const std::string before = Shown().lblData2[1].Text;
    State().AnalogEnable[1] = 0;
    Sample({150, 30000});
    EXPECT_EQ(Shown().lblData2[1].Text, before);
}

TEST_F(Readings, TheTimeOfTheNewestSampleBecomesTheLoggerTime) {
    Sample({150});
    EXPECT_EQ(State().LoggerTime, "09/30/23 12:05:09");
    EXPECT_EQ(Shown().lblLoggerTime.Text, "09/30/23 12:05:09");
    EXPECT_EQ(Shown().lblLoggerTime2.Text, "09/30/23 12:05:09");
}

TEST_F(Readings, WithoutSettingsOnlyTheTimeIsShown) {
    window.Record.SettingsValid = False;
    Sample({150});
    EXPECT_EQ(Shown().lblLoggerTime.Text, "09/30/23 12:05:09");
    EXPECT_EQ(Shown().lblValue[0].Text, "");
    EXPECT_EQ(State().NumDataPoints, 1);
}

TEST_F(Readings, APulseCountOf65535KeepsAllItsBits) {
    State().PulseUnit[0] = 0.01;
    State().DecPlaces[8] = 2;
    console.State.Newest.Raw[8] = 65535;
    window.SetDP();
    EXPECT_EQ(Shown().lblData2[8].Text, "655.35 Pulses");
    EXPECT_EQ(Shown().lblPulse2[0].Text, "655.35 Pulses");
}

TEST_F(Readings, BeforeTheFirstSampleAPulseCountIsZero) {
    State().DecPlaces[8] = 0;
    RefreshReadings(window.Record, surface.Shown);
    EXPECT_EQ(Shown().lblPulse2[0].Text, "0 Pulses");
}

TEST_F(Readings, ADisabledSecondPulseChannelIsEmptyWhileTheFirstShows) {
    State().DigitalEnable[1] = 0;
    State().DecPlaces[8] = 0;
    console.State.Newest.Raw[8] = 7;
    console.State.Newest.Raw[9] = 9;
    window.SetDP();
    EXPECT_EQ(Shown().lblData2[8].Text, "7 Pulses");
    EXPECT_EQ(Shown().lblData2[9].Text, "");
    EXPECT_EQ(Shown().lblPulse2[1].Text, "");
}

TEST_F(Readings, ALoggerWithoutPulseChannelsEmptiesAllFourLabels) {
    Sample({150});
    ASSERT_NE(Shown().lblPulse2[1].Text, "");
    State().NumDigitalChannels = 0;
    Sample({150});
    EXPECT_EQ(Shown().lblData2[8].Text + Shown().lblData2[9].Text + Shown().lblPulse2[0].Text +
                  Shown().lblPulse2[1].Text,
              "");
}

TEST_F(Readings, OnePulseChannelEmptiesTheSecondPair) {
    Sample({150});
    State().NumDigitalChannels = 1;
    Sample({150});
    EXPECT_NE(Shown().lblPulse2[0].Text, "");
    EXPECT_EQ(Shown().lblData2[9].Text + Shown().lblPulse2[1].Text, "");
}

TEST_F(Readings, APulseChannelWithoutAReadingSaysSo) {
    SampleNothing();
    EXPECT_EQ(Shown().lblPulse2[0].Text, "No sample");
}

TEST_F(Readings, AFaultLeavesTheLabelsAsFarAsTheyGot) {
    Sample({150});
    const std::string pulses = Shown().lblPulse2[0].Text;
    State().NumAnalogChannels = 9;
    console.State.Newest.Raw[8] = 1234;
    Sample({160});
    EXPECT_EQ(Shown().lblValue[0].Text, "6.000");
    EXPECT_EQ(Shown().lblPulse2[0].Text, pulses);
}

TEST_F(Readings, AValueThatIsNoFigureEndsTheRefresh) {
    State().UpperLimit[0] = std::numeric_limits<double>::max();
    State().LowerLimit[0] = -std::numeric_limits<double>::max();
    Sample({150});
    EXPECT_EQ(Shown().lblValue[0].Text, "");
    EXPECT_EQ(Shown().lblPulse2[0].Text, "");
}

/// A logger of which no two channels have anything alike.
class OwnReadings : public ClientTest {
 protected:
    OwnReadings() {
        LoggerState state = FreshLogger(AnalogChannels, PulseChannels);
        for (std::size_t i = 0; i < AnalogChannels; ++i) {
            const int n = static_cast<int>(i);
            state.EngUnits[i] = "U" + std::to_string(n + 1);
            state.DecPlaces[i] = static_cast<std::uint8_t>(i % 4);
            state.RawScaleLower[i] = 100 * n;
            state.RawScaleUpper[i] = 100 * n + 1000;
            state.LowerLimit[i] = 10 * n;
            state.UpperLimit[i] = 10 * n + 1 + n;
        }
        state.EngUnits[8] = "Rain";
        state.EngUnits[9] = "Gal";
        state.DecPlaces[8] = 1;
        state.DecPlaces[9] = 3;
        state.PulseUnit = {0.5, 0.25};
        Know(state);
    }
};

TEST_F(OwnReadings, EachAnalogChannelHasItsOwnCountScalePlacesAndUnit) {
    Sample({500, 100, 700, 1300, 900, 750, 600, 1700});
    // A half, nothing, a half, all, a half, a quarter, nothing, all of the channel's own span.
    const char* const values[] = {"0", "10.0", "21.50", "34.000", "42", "51.5", "60.00", "78.000"};
    const double bars[] = {0.5, 10, 21.5, 34, 42.5, 51.5, 60, 78};
    for (std::size_t i = 0; i < AnalogChannels; ++i) {
        EXPECT_EQ(Shown().lblValue[i].Text, values[i]) << i;
        EXPECT_EQ(Shown().lblData2[i].Text, values[i] + (" U" + std::to_string(i + 1))) << i;
        EXPECT_EQ(Meter(static_cast<int>(i)).Value, bars[i]) << i;
    }
}

TEST_F(OwnReadings, EachChannelsHistoryIsItsOwn) {
    Sample({0, 600});
    Sample({1000, 1100});
    Sample({0, 100});
    EXPECT_EQ(Shown().lblHistory[0].Text, "1\n0\n");
    EXPECT_EQ(Shown().lblHistory[1].Text, "12.0\n11.0\n");
}

TEST_F(OwnReadings, EachPulseChannelHasItsOwnCountUnitAndPlaces) {
    Sample({0, 0, 0, 0, 0, 0, 0, 0, 7, 9});
    EXPECT_EQ(Shown().lblData2[8].Text, "3.5 Rain");
    EXPECT_EQ(Shown().lblPulse2[0].Text, "3.5 Rain");
    EXPECT_EQ(Shown().lblData2[9].Text, "2.250 Gal");
    EXPECT_EQ(Shown().lblPulse2[1].Text, "2.250 Gal");
}

TEST_F(OwnReadings, EachChannelIsDisabledAndMissesItsReadingByItself) {
    State().AnalogEnable[1] = 0;
    State().DigitalEnable[0] = 0;
    console.State.Newest.Raw.fill(300);
    console.State.Newest.Raw[2] = NoReading;
    console.State.Newest.Raw[9] = NoReading;
    window.SetDP();
    EXPECT_NE(Shown().lblValue[0].Text, "");
    EXPECT_EQ(Shown().lblValue[1].Text, "");
    EXPECT_EQ(Shown().lblValue[2].Text, "No sample");
    EXPECT_EQ(Meter(2).Value, 20) << "the lower limit of its own";
    EXPECT_EQ(Shown().lblValue[3].Text, "30.000");
    EXPECT_EQ(Shown().lblPulse2[0].Text, "");
    EXPECT_EQ(Shown().lblPulse2[1].Text, "No sample");
}

class FlowReadings : public ClientTest {
 protected:
    FlowReadings() {
        LoggerState state = PipeLogger();
        state.RawScaleUpper[0] = 2000;  // a count is a thousandth of a foot
        state.FlowDecPlaces = 5;
        state.VelDecPlaces = 5;
        window.Record.DisplayMode = DisplayFlow;
        Know(state);
    }
};

TEST_F(FlowReadings, FlowStandsInColumnFourAndVelocityInColumnFive) {
    Sample({1000});
    EXPECT_EQ(Shown().lblValue[3].Text, "3.30679");
    EXPECT_EQ(Shown().lblValue[4].Text, "4.21034");
    EXPECT_NEAR(Meter(FlowColumn).Value, 3.30679, 5e-6);
    EXPECT_NEAR(Meter(VelocityColumn).Value, 4.21034, 5e-6);
}

TEST_F(FlowReadings, TheHistoryOfFlowStandsBesideThatOfTheLevel) {
    Sample({250});
    Sample({500});
    Sample({1000});
    EXPECT_EQ(Shown().lblHistory[0].Text, "0.500\n0.250\n");
    EXPECT_EQ(Shown().lblHistory[3].Text, "1.65340\n0.45289\n");
    EXPECT_EQ(Shown().lblHistory[4].Text, "4.21034\n2.94953\n");
}

TEST_F(FlowReadings, NoSampleShowsAnEmptyLineForFlowAndVelocity) {
    Sample({500});
    SampleNothing();
    Sample({1000});
    EXPECT_EQ(Shown().lblHistory[0].Text, "No sample\n0.500\n");
    EXPECT_EQ(Shown().lblHistory[3].Text, "\n1.65340\n");
    EXPECT_EQ(Shown().lblHistory[4].Text, "\n4.21034\n");
}

TEST_F(FlowReadings, ANewestReadingThatIsMissingEmptiesBothColumns) {
    Sample({1000});
    SampleNothing();
    EXPECT_EQ(Shown().lblValue[3].Text, "");
    EXPECT_EQ(Shown().lblValue[4].Text, "");
    EXPECT_EQ(Meter(FlowColumn).Value, 0);
    EXPECT_EQ(Meter(VelocityColumn).Value, 0);
}

TEST_F(FlowReadings, BeforeAnySampleFlowIsThatOfTheLowerLimitForTheNewestPointAlone) {
    State().LowerLimit[0] = 1;
    window.Resize();
    EXPECT_EQ(Shown().lblValue[3].Text, "3.30679");
    EXPECT_EQ(Shown().lblHistory[3].Text, "\n\n");
    EXPECT_EQ(Shown().lblValue[0].Text, "");
}

TEST_F(FlowReadings, ALevelOfMinusOneCountsAsMissing) {
    State().LowerLimit[0] = -1;
    State().UpperLimit[0] = 1;
    Sample({0});
    EXPECT_EQ(Shown().lblValue[0].Text, "-1.000");
    EXPECT_EQ(Shown().lblValue[3].Text, "");
}

TEST_F(FlowReadings, WithTheFlowColumnInactiveVelocityStaysZero) {
    Meter(FlowColumn).Active = False;
    window.ResetDisplay();
    Sample({1000});
    EXPECT_EQ(Shown().lblValue[4].Text, "0.00000");
    EXPECT_EQ(Shown().lblValue[3].Text, "");
}

TEST_F(FlowReadings, OutsideTheFlowModeColumnFourIsAChannel) {
    window.ChooseDisplay(DisplayMeter);
    Sample({1000});
    EXPECT_EQ(Shown().lblValue[3].Text, "");
}

}  // namespace
}  // namespace client_test
