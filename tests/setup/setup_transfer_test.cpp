#include "setup/setup_transfer.h"

#include <gtest/gtest.h>

#include "logger/settings_image.h"

namespace {

Catalogues SomeDevices() {
    Catalogues catalogues;
    for (const char* tag : {"P1", "P2", "P1", "P3"}) {
        FlowDeviceEntry entry;
        entry.Tag = tag;
        catalogues.FlumeList.Append(entry);
    }
    FlowDeviceEntry weir;
    weir.Tag = "V90";
    catalogues.WeirList.Append(weir);
    return catalogues;
}

class Transfer : public ::testing::Test {
 protected:
    Transfer() {
        state_.NumAnalogChannels = 3;
        state_.NumDigitalChannels = 2;
        SetDefaultSettings(state_);
    }

    bool Show() { return StateToForm(state_, catalogues_, controls_); }
    bool Take() { return FormToState(controls_, catalogues_, state_); }
    /// There and back again.
    void RoundTrip() {
        ASSERT_TRUE(Show());
        ASSERT_TRUE(Take());
    }
    Bytes Image() const {
        Bytes image;
        EXPECT_TRUE(config::EncodeSettingsImage(state_, image));
        return image;
    }

    Catalogues catalogues_ = SomeDevices();
    LoggerState state_;
    SetupControls controls_;
};

TEST_F(Transfer, DefaultsComeBackAsTheSameImage) {
    const Bytes before = Image();
    RoundTrip();
    EXPECT_EQ(Image(), before);
}

TEST_F(Transfer, FloatsOfTheLoggerComeBackAsTheSameImage) {
    LoggerState decoded;
    decoded.NumAnalogChannels = 3;
    state_.ManningsN = 0.014;
    state_.UpperLimit[1] = 12.345678;
    state_.PulseUnit[0] = 0.00001;
    const Bytes before = Image();
    ASSERT_TRUE(config::DecodeSettingsImage(before, decoded));
    decoded.NumDigitalChannels = 2;
    decoded.AnalogEnable = state_.AnalogEnable;
    decoded.DigitalEnable = state_.DigitalEnable;
    state_ = decoded;
    RoundTrip();
    EXPECT_EQ(Image(), before);
    EXPECT_EQ(controls_.cmbRoughness, "0.014");
}

struct Alarm {
    const char* Name;
    std::int16_t Hour;
    std::string Text;
    int Half;
};

class AlarmTimes : public Transfer, public ::testing::WithParamInterface<Alarm> {};

TEST_P(AlarmTimes, ShowInTwelveHoursAndComeBack) {
    state_.AlarmHour[1] = GetParam().Hour;
    state_.AlarmMin[1] = 5;
    state_.AlarmSec[1] = 9;
    ASSERT_TRUE(Show());
    EXPECT_EQ(controls_.Alarms[1].txtAlarm, GetParam().Text + ":05:09");
    EXPECT_EQ(controls_.Alarms[1].cmbAlarm, GetParam().Half);
    state_.AlarmHour[1] = -1;
    ASSERT_TRUE(Take());
    EXPECT_EQ(state_.AlarmHour[1], GetParam().Hour);
    EXPECT_EQ(state_.AlarmMin[1], 5);
    EXPECT_EQ(state_.AlarmSec[1], 9);
}

INSTANTIATE_TEST_SUITE_P(Hours, AlarmTimes,
                         ::testing::Values(Alarm{"Midnight", 0, "12", 0},
                                           Alarm{"Morning", 1, "1", 0},
                                           Alarm{"LateMorning", 11, "11", 0},
                                           Alarm{"Noon", 12, "12", 1}, Alarm{"One", 13, "1", 1},
                                           Alarm{"Evening", 23, "11", 1}),
                         [](const auto& alarm) { return alarm.param.Name; });

TEST_F(Transfer, TwelveInTheMorningIsHour0) {
    Show();
    controls_.Alarms[0] = {true, "12:00:00", 0};
    controls_.Alarms[1] = {true, "12:00:00", 1};
    ASSERT_TRUE(Take());
    EXPECT_EQ(state_.AlarmHour[0], 0);
    EXPECT_EQ(state_.AlarmHour[1], 12);
    EXPECT_EQ(state_.AlarmEnable[0], 1);
    controls_.Alarms[1].txtAlarm = "1:00:00";
    ASSERT_TRUE(Take());
    EXPECT_EQ(state_.AlarmHour[1], 13);
}

TEST_F(Transfer, ATimeWithoutColonsHasNoMinutes) {
    Show();
    state_.AlarmMin[0] = 44;
    controls_.Alarms[0].txtAlarm = "7";
    ASSERT_TRUE(Take());
    EXPECT_EQ(state_.AlarmHour[0], 7);
    EXPECT_EQ(state_.AlarmMin[0], 0);
}

struct Interval {
    const char* Name;
    std::string Count;
    int Unit;
    std::string Text;
};

class Intervals : public Transfer, public ::testing::WithParamInterface<Interval> {};

TEST_P(Intervals, AreNumberAndUnit) {
    Show();
    controls_.txtSampleInterval = GetParam().Count;
    controls_.cmbSampleInterval = GetParam().Unit;
    ASSERT_TRUE(Take());
    EXPECT_EQ(state_.SampleInterval, GetParam().Text);
}

INSTANTIATE_TEST_SUITE_P(Units, Intervals,
                         ::testing::Values(Interval{"OneDay", "1", 3, "1 day"},
                                           Interval{"TwoDays", "2", 3, "2 days"},
                                           Interval{"OneHour", "1", 2, "1 hour"},
                                           Interval{"OneMinute", "1", 1, "1 minute"},
                                           Interval{"Seconds", "30", 0, "30 seconds"},
                                           Interval{"OneSecondWritten", "1.0", 0, "1 second"}),
                         [](const auto& interval) { return interval.param.Name; });

struct OldInterval {
    const char* Name;
    std::string Text;
    std::string Count;
    int Unit;
};

class OldIntervals : public Transfer, public ::testing::WithParamInterface<OldInterval> {};

TEST_P(OldIntervals, AreLookedThroughForTheirUnit) {
    state_.SampleInterval = GetParam().Text;
    ASSERT_TRUE(Show());
    EXPECT_EQ(controls_.txtSampleInterval, GetParam().Count);
    EXPECT_EQ(controls_.cmbSampleInterval, GetParam().Unit);
}

INSTANTIATE_TEST_SUITE_P(Texts, OldIntervals,
                         ::testing::Values(OldInterval{"Sec", "30 sec", "30", 0},
                                           OldInterval{"CapitalMin", "15 Min", "15", 3},
                                           OldInterval{"Minutes", "5 minutes", "5", 1},
                                           OldInterval{"Hour", "1 hour", "1", 2},
                                           OldInterval{"SecondsBeforeMinutes", "5 minsec", "5", 0},
                                           OldInterval{"Nothing", "", "0", 3}),
                         [](const auto& interval) { return interval.param.Name; });

TEST_F(Transfer, Style3ShowsLogarithmicAndReturnsAs1) {
    state_.LoggingStyle = 3;
    RoundTrip();
    EXPECT_EQ(controls_.Timing, TimingLogarithmic);
    EXPECT_FALSE(controls_.chkException);
    EXPECT_EQ(state_.LoggingStyle, 1);
}

TEST_F(Transfer, Style130ShowsFastModeWithExceptionAndReturnsAs130) {
    state_.LoggingStyle = 130;
    RoundTrip();
    EXPECT_EQ(controls_.Timing, TimingFast);
    EXPECT_TRUE(controls_.chkException);
    EXPECT_EQ(state_.LoggingStyle, 130);
}

TEST_F(Transfer, OtherBitsOfTheStyleAreNotKept) {
    state_.LoggingStyle = 0x74;
    RoundTrip();
    EXPECT_EQ(controls_.Timing, TimingPeriodic);
    EXPECT_EQ(state_.LoggingStyle, 0);
}

TEST_F(Transfer, ATagThatNoCatalogueKnowsBecomesEmpty) {
    state_.FlumeTag = "GONE";
    const Bytes before = Image();
    RoundTrip();
    EXPECT_EQ(controls_.cmbFlume, 0);
    EXPECT_EQ(state_.FlumeTag, "");
    EXPECT_NE(Image(), before);
}

TEST_F(Transfer, OptFlumeWithNoneSelectedHasAnEmptyFlumeTag) {
    state_.FlumeTag = "P2";
    ASSERT_TRUE(Show());
    controls_.FlowOption = FlowFlume;
    controls_.cmbFlume = 0;
    ASSERT_TRUE(Take());
    EXPECT_EQ(state_.FlowMode, 2);
    EXPECT_EQ(state_.FlumeTag, "");
}

TEST_F(Transfer, OfTwoEntriesWithOneTagTheLastIsSelected) {
    state_.FlumeTag = "P1";
    state_.WeirTag = "V90";
    RoundTrip();
    EXPECT_EQ(controls_.cmbFlume, 3);
    EXPECT_EQ(controls_.cmbWeir, 1);
    EXPECT_EQ(state_.FlumeTag, "P1");
    EXPECT_EQ(state_.WeirTag, "V90");
}

TEST_F(Transfer, DecPlacesOf9ShowAs6AndReturnAs6) {
    state_.DecPlaces[0] = 9;
    state_.DecPlaces[8] = 9;
    RoundTrip();
    EXPECT_EQ(controls_.Analog[0].cmbPrecision, "6");
    EXPECT_EQ(controls_.Pulse[0].cmbPulsePrecision, "6");
    EXPECT_EQ(state_.DecPlaces[0], 6);
    EXPECT_EQ(state_.DecPlaces[8], 6);
}

TEST_F(Transfer, CheckBoxesOfOtherValuesReturnAs1) {
    state_.DataWrapAroundFlag = 2;
    state_.EnableSOD = 7;
    state_.AnalogEnable[0] = 5;
    RoundTrip();
    EXPECT_EQ(state_.DataWrapAroundFlag, 1);
    EXPECT_EQ(state_.EnableSOD, 1);
    EXPECT_EQ(state_.AnalogEnable[0], 1);
}

TEST_F(Transfer, ChannelsThatTheLoggerLacksKeepWhatTheyHad) {
    state_.NumAnalogChannels = 2;
    state_.NumDigitalChannels = 1;
    Show();
    controls_.Analog[2].txtHighEU = "77";
    controls_.Pulse[1].txtPulseUnit = "77";
    ASSERT_TRUE(Take());
    EXPECT_EQ(state_.UpperLimit[2], 24);
    EXPECT_EQ(state_.PulseUnit[1], 1);
}

TEST_F(Transfer, APanelThatIsDisabledStillShowsTheState) {
    state_.NumDigitalChannels = 0;
    state_.PulseUnit[1] = 2.5;
    ASSERT_TRUE(Show());
    EXPECT_EQ(controls_.Pulse[1].txtPulseUnit, "2.5");
}

TEST_F(Transfer, ACommaEndsTheNumberOfAChannelButIsAMarkInFlow) {
    Show();
    controls_.Analog[0].txtHighEU = "1,5";
    controls_.txtFlowTop = "1,5";
    ASSERT_TRUE(Take());
    EXPECT_EQ(state_.UpperLimit[0], 1);
    EXPECT_EQ(state_.FlowTop, 1.5);
}

TEST_F(Transfer, AListItemOfRoughnessCountsByItsNumber) {
    Show();
    controls_.cmbRoughness = "0.014 - Uncoated cast iron";
    ASSERT_TRUE(Take());
    EXPECT_EQ(state_.ManningsN, 0.014);
}

TEST_F(Transfer, GarbageInAFlowFieldReadsAs0) {
    Show();
    controls_.txtSlope = "abc";
    controls_.txtVelTop = "1E999";
    ASSERT_TRUE(Take());
    EXPECT_EQ(state_.ManningsS, 0);
    EXPECT_EQ(state_.VelTop, 0);
}

TEST_F(Transfer, FlowModesAboveTheLastShowNoFlow) {
    state_.FlowMode = 5;
    ASSERT_TRUE(Show());
    EXPECT_EQ(controls_.FlowOption, FlowNone);
    for (std::uint8_t mode = 0; mode <= 4; ++mode) {
        state_.FlowMode = mode;
        RoundTrip();
        EXPECT_EQ(state_.FlowMode, mode);
    }
}

TEST(SetupControlsTest, BeginWithNothingChosen) {
    const SetupControls controls;
    EXPECT_FALSE(controls.chkException || controls.chkSOD || controls.chkWrap);
    EXPECT_EQ(controls.cmbBaud, NoSelection);
    EXPECT_EQ(controls.FlowOption, NoSelection);
    for (const AlarmControls& alarm : controls.Alarms) {
        EXPECT_FALSE(alarm.chkAlarm);
        EXPECT_EQ(alarm.cmbAlarm, 0);
    }
}

TEST_F(Transfer, EveryListOfFlowIsTaken) {
    for (const int item : {0, 1}) {
        Show();
        controls_.cmbFlowUnits = controls_.cmbOffsetUnits = controls_.cmbDiameterUnits = item;
        controls_.cmbSlopeUnits = controls_.cmbVelUnits = item;
        ASSERT_TRUE(Take());
        EXPECT_EQ(state_.FlowUnits, item);
        EXPECT_EQ(state_.LevelOffsetType, item);
        EXPECT_EQ(state_.ManningsDType, item);
        EXPECT_EQ(state_.ManningsSType, item);
        EXPECT_EQ(state_.VelUnits, item);
    }
}

TEST_F(Transfer, EveryListOfFlowIsShown) {
    for (const int item : {1, 0}) {
        state_.FlowUnits = state_.LevelOffsetType = state_.ManningsDType = state_.ManningsSType =
            state_.VelUnits = static_cast<std::uint8_t>(item);
        ASSERT_TRUE(Show());
        EXPECT_EQ(controls_.cmbFlowUnits, item);
        EXPECT_EQ(controls_.cmbOffsetUnits, item);
        EXPECT_EQ(controls_.cmbDiameterUnits, item);
        EXPECT_EQ(controls_.cmbSlopeUnits, item);
        EXPECT_EQ(controls_.cmbVelUnits, item);
    }
}

TEST_F(Transfer, UnitsThatAListLacksKeepTheSelection) {
    controls_.cmbFlowUnits = 3;
    controls_.cmbVelUnits = 1;
    state_.FlowUnits = 5;
    state_.VelUnits = 2;
    state_.ManningsSType = 9;
    ASSERT_TRUE(Show()) << "the flow page refuses in silence";
    EXPECT_EQ(controls_.cmbFlowUnits, 3);
    EXPECT_EQ(controls_.cmbVelUnits, 1);
    EXPECT_EQ(controls_.cmbSlopeUnits, 0);
}

TEST_F(Transfer, AWarmupThatNoItemShowsIsSkippedAlone) {
    controls_.cmbWarmup = "7";
    state_.SensorWarmupTime = 61;
    state_.LoggerName = "Next";
    EXPECT_FALSE(Show());
    EXPECT_EQ(controls_.cmbWarmup, "7");
    EXPECT_EQ(controls_.txtName, "Next");
    EXPECT_EQ(controls_.Analog[0].cmbEU, "%");
}

TEST_F(Transfer, ABaudRateThatNoItemShowsStaysInTheState) {
    state_.FixedBaudRate = 7;
    EXPECT_FALSE(Show());
    ASSERT_TRUE(Take());
    EXPECT_EQ(state_.FixedBaudRate, 7);
    state_.FixedBaudRate = 6;
    RoundTrip();
    EXPECT_EQ(controls_.cmbBaud, 6);
    EXPECT_EQ(state_.FixedBaudRate, 6);
}

TEST_F(Transfer, AnIntervalBeyondAllNumbersIsSkippedAlone) {
    controls_.txtSampleInterval = "9";
    state_.SampleInterval = "1E999 hours";
    EXPECT_FALSE(Show());
    EXPECT_EQ(controls_.txtSampleInterval, "9");
    EXPECT_EQ(controls_.cmbSampleInterval, 2);
}

TEST_F(Transfer, ATypedWarmupCountsAsTheItemThatItNames) {
    Show();
    controls_.cmbWarmup = " 12 ";
    ASSERT_TRUE(Take());
    EXPECT_EQ(state_.SensorWarmupTime, 12);
    controls_.cmbWarmup = "99";
    controls_.Analog[0].cmbPrecision = "x";
    ASSERT_TRUE(Take());
    EXPECT_EQ(state_.SensorWarmupTime, 12) << "no selection leaves the field";
    EXPECT_EQ(state_.DecPlaces[0], 2);
}

TEST_F(Transfer, ListsWithoutASelectionLeaveTheirFields) {
    state_.FlumeTag = "P2";
    state_.FlowUnits = 4;
    Show();
    controls_.cmbFlume = NoSelection;
    controls_.cmbFlowUnits = NoSelection;
    controls_.cmbSampleInterval = NoSelection;
    controls_.FlowOption = NoSelection;
    ASSERT_TRUE(Take());
    EXPECT_EQ(state_.FlumeTag, "P2");
    EXPECT_EQ(state_.FlowUnits, 4);
    EXPECT_EQ(state_.SampleInterval, "1 day");
    EXPECT_EQ(state_.FlowMode, 0);
}

TEST_F(Transfer, AValueThatNothingHoldsStopsWithTheRestUntouched) {
    Show();
    controls_.txtName = "Taken";
    controls_.txtException = "3000000000";
    controls_.chkWrap = false;
    controls_.txtFlowTop = "5";
    EXPECT_FALSE(Take());
    EXPECT_EQ(state_.LoggerName, "Taken");
    EXPECT_EQ(state_.DataWrapAroundFlag, 1);
    EXPECT_EQ(state_.FlowTop, 100);
}

TEST_F(Transfer, AnAlarmHourBeyond16BitsStopsToo) {
    Show();
    controls_.Alarms[0].txtAlarm = "70000:00";
    controls_.txtException = "5";
    EXPECT_FALSE(Take());
    EXPECT_EQ(state_.Deadband, 0);
}

TEST_F(Transfer, LongTextsOfTheStateAreCutToTheirFields) {
    state_.LoggerName = std::string(40, 'n');
    state_.TablePath = std::string(140, 'p');
    ASSERT_TRUE(Show());
    EXPECT_EQ(controls_.txtName.size(), 32U);
    EXPECT_EQ(controls_.txtTableFile.size(), 128U);
}

TEST_F(Transfer, FieldsAreCountedInCharacters) {
    state_.LoggerName.clear();
    state_.TablePath.clear();
    for (int i = 0; i < 130; ++i) {
        state_.LoggerName += "\xC3\xA4";
        state_.TablePath += "\xC3\xB6";
    }
    ASSERT_TRUE(Show());
    EXPECT_EQ(controls_.txtName.size(), 2 * 32U);
    EXPECT_EQ(controls_.txtTableFile.size(), 2 * 128U);
}

}  // namespace
