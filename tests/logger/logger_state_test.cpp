#include "logger/logger_state.h"

#include <gtest/gtest.h>

#include "filled_state.h"

namespace {

void ExpectSameSettings(const LoggerRecord& a, const LoggerRecord& b) {
    EXPECT_EQ(a.LoggerName, b.LoggerName);
    EXPECT_EQ(a.SampleInterval, b.SampleInterval);
    EXPECT_EQ(a.AnalogEnable, b.AnalogEnable);
    EXPECT_EQ(a.DigitalEnable, b.DigitalEnable);
    EXPECT_EQ(a.DataWrapAroundFlag, b.DataWrapAroundFlag);
    EXPECT_EQ(a.SensorWarmupTime, b.SensorWarmupTime);
    EXPECT_EQ(a.EngUnits, b.EngUnits);
    EXPECT_EQ(a.AlarmSec, b.AlarmSec);
    EXPECT_EQ(a.AlarmMin, b.AlarmMin);
    EXPECT_EQ(a.AlarmHour, b.AlarmHour);
    EXPECT_EQ(a.AlarmEnable, b.AlarmEnable);
    EXPECT_EQ(a.LoggingStyle, b.LoggingStyle);
    EXPECT_EQ(a.Deadband, b.Deadband);
    EXPECT_EQ(a.EnableSOD, b.EnableSOD);
    EXPECT_EQ(a.DecPlaces, b.DecPlaces);
    EXPECT_EQ(a.RawScaleLower, b.RawScaleLower);
    EXPECT_EQ(a.RawScaleUpper, b.RawScaleUpper);
    EXPECT_EQ(a.PulseUnit, b.PulseUnit);
    EXPECT_EQ(a.LowerLimit, b.LowerLimit);
    EXPECT_EQ(a.UpperLimit, b.UpperLimit);
    EXPECT_EQ(a.DisplayTop, b.DisplayTop);
    EXPECT_EQ(a.DisplayBottom, b.DisplayBottom);
}

void ExpectSameFlow(const LoggerRecord& a, const LoggerRecord& b) {
    EXPECT_EQ(a.FlowMode, b.FlowMode);
    EXPECT_EQ(a.FlowUnits, b.FlowUnits);
    EXPECT_EQ(a.FlowTop, b.FlowTop);
    EXPECT_EQ(a.VelUnits, b.VelUnits);
    EXPECT_EQ(a.VelTop, b.VelTop);
    EXPECT_EQ(a.ManningsN, b.ManningsN);
    EXPECT_EQ(a.ManningsS, b.ManningsS);
    EXPECT_EQ(a.ManningsSType, b.ManningsSType);
    EXPECT_EQ(a.ManningsD, b.ManningsD);
    EXPECT_EQ(a.ManningsDType, b.ManningsDType);
    EXPECT_EQ(a.FlumeTag, b.FlumeTag);
    EXPECT_EQ(a.WeirTag, b.WeirTag);
    EXPECT_EQ(a.LevelOffset, b.LevelOffset);
    EXPECT_EQ(a.LevelOffsetType, b.LevelOffsetType);
    EXPECT_EQ(a.TablePath, b.TablePath);
}

/// What the logger or the console sets by itself, and the defaults do not.
void ExpectSameRest(const LoggerRecord& a, const LoggerRecord& b) {
    EXPECT_EQ(a.FirmwareVersion, b.FirmwareVersion);
    EXPECT_EQ(a.SODAvailable, b.SODAvailable);
    EXPECT_EQ(a.NumAnalogChannels, b.NumAnalogChannels);
    EXPECT_EQ(a.NumDigitalChannels, b.NumDigitalChannels);
    EXPECT_EQ(a.LoggerTime, b.LoggerTime);
    EXPECT_EQ(a.FixedBaudRate, b.FixedBaudRate);
    EXPECT_EQ(a.NumSamples, b.NumSamples);
    EXPECT_EQ(a.StatusWord, b.StatusWord);
    EXPECT_EQ(a.LoggingState, b.LoggingState);
    EXPECT_EQ(a.FlowDecPlaces, b.FlowDecPlaces);
    EXPECT_EQ(a.VelDecPlaces, b.VelDecPlaces);
    EXPECT_EQ(a.FlowEqOffset, b.FlowEqOffset);
    EXPECT_EQ(a.FlowEqExponent, b.FlowEqExponent);
    EXPECT_EQ(a.FlowEqMultiplier, b.FlowEqMultiplier);
    EXPECT_EQ(a.FlowDeviceName, b.FlowDeviceName);
}

void ExpectSameRecord(const LoggerRecord& a, const LoggerRecord& b) {
    ExpectSameSettings(a, b);
    ExpectSameFlow(a, b);
    ExpectSameRest(a, b);
}

/// Samples and flow table, which belong to one record alone.
void ExpectSameSamplesAndTable(const LoggerState& a, const LoggerState& b) {
    EXPECT_EQ(a.NumDataPoints, b.NumDataPoints);
    for (std::size_t i = 0; i < a.DataPoints.size(); ++i) {
        EXPECT_EQ(a.DataPoints[i].Time, b.DataPoints[i].Time);
        EXPECT_EQ(a.DataPoints[i].Raw, b.DataPoints[i].Raw);
    }
    ASSERT_EQ(a.FlowTable.UpperBound(), b.FlowTable.UpperBound());
    for (int i = 1; i <= a.FlowTable.UpperBound(); ++i) {
        EXPECT_EQ(a.FlowTable[i].Level, b.FlowTable[i].Level);
        EXPECT_EQ(a.FlowTable[i].Flow, b.FlowTable[i].Flow);
    }
}

TEST(LoggerStateTest, ALoggerThatWasNotReadHasNoFlow) {
    const LoggerState state;
    for (const double figure :
         {state.FlowTop, state.VelTop, state.ManningsN, state.ManningsS, state.ManningsD,
          state.LevelOffset, state.FlowEqOffset, state.FlowEqExponent, state.FlowEqMultiplier}) {
        EXPECT_EQ(figure, 0);
    }
    EXPECT_EQ(state.FlowMode, 0);
    EXPECT_EQ(state.NumDataPoints, 0);
}

TEST(LoggerStateSwap, CopiesAllButSamplesAndTableBothWays) {
    const LoggerState filled = FilledWhole();
    LoggerState window = filled;
    LoggerState other;
    other.NumDataPoints = 1;
    other.DataPoints[0].Raw.fill(7);
    other.FlowTable.Append({5, 6});
    other.FlowTable.Append({7, 8});
    LoggerState global = other;
    CopyStateToGlobal(global, window);
    ExpectSameRecord(global, filled);
    ExpectSameSamplesAndTable(global, other);
    ExpectSameRecord(window, filled);
    ExpectSameSamplesAndTable(window, filled);
    CopyStateFromGlobal(other, window);
    ExpectSameRecord(window, LoggerRecord());
    ExpectSameSamplesAndTable(window, filled);
}

TEST(DefaultSettings, AreThoseOfALoggerFreshFromTheBox) {
    LoggerState state = FilledWhole();
    state.NumAnalogChannels = 2;
    const LoggerState before = state;
    SetDefaultSettings(state);
    LoggerRecord fresh;
    fresh.LoggerName = "Tessel";
    fresh.SampleInterval = "1 day";
    fresh.DataWrapAroundFlag = 1;
    fresh.SensorWarmupTime = 3;
    fresh.AnalogEnable = {1, 1, 1, 1, 1, 1, 1, 1};
    fresh.DigitalEnable = {1, 1};
    fresh.EngUnits = {"%", "Volts", "%", "%", "%", "%", "%", "%", "Pulses", "Pulses"};
    fresh.DecPlaces = {2, 2, 2, 2, 2, 2, 2, 2, 0, 0};
    fresh.RawScaleUpper = {65535, 62384, 65535, 65535, 65535, 65535, 65535, 65535};
    fresh.UpperLimit = {100, 24, 100, 100, 100, 100, 100, 100};
    fresh.DisplayTop = fresh.UpperLimit;
    fresh.PulseUnit = {1, 1};
    fresh.ManningsN = 0.014;
    fresh.ManningsS = 1;
    fresh.ManningsSType = 1;
    fresh.ManningsD = 1;
    fresh.LevelOffsetType = 1;
    fresh.FlowTop = 100;
    fresh.VelTop = 100;
    ExpectSameSettings(state, fresh);
    ExpectSameFlow(state, fresh);
    ExpectSameRest(state, before);
    ExpectSameSamplesAndTable(state, before);
}

TEST(DefaultSettings, ALoggerWithOneChannelHasNoVolts) {
    LoggerState state;
    state.NumAnalogChannels = 1;
    SetDefaultSettings(state);
    EXPECT_EQ(state.EngUnits[0], "%");
    EXPECT_EQ(state.RawScaleUpper[0], 65535);
    EXPECT_EQ(state.UpperLimit[0], 100);
}

}  // namespace
