#ifndef ORVIA_TESTS_LOGGER_FILLED_STATE_H
#define ORVIA_TESTS_LOGGER_FILLED_STATE_H

#include <string>

#include "logger/logger_state.h"

/// A record with a value of its own in every field that the settings image holds.
inline LoggerState Filled() {
    LoggerState state;
    state.NumAnalogChannels = 3;
    state.NumDigitalChannels = 2;
    state.SODAvailable = True;
    SetDefaultSettings(state);
    state.LoggerName = "Pump 3";
    state.SampleInterval = "5 minutes";
    state.FixedBaudRate = 3;
    state.SensorWarmupTime = 12;
    state.DigitalEnable = {0, 1};
    state.AlarmSec = {5, 6};
    state.AlarmMin = {15, 16};
    state.AlarmHour = {23, 0};
    state.AlarmEnable = {1, 0};
    state.LoggingStyle = 130;
    state.Deadband = 300;
    state.EnableSOD = 1;
    state.AnalogEnable = {1, 0, 1, 0, 0, 0, 0, 0};
    state.PulseUnit = {1, 0.5};
    for (std::size_t i = 0; i < AllChannels; ++i) {
        state.EngUnits[i] = "Unit " + std::to_string(i);
        state.DecPlaces[i] = static_cast<std::uint8_t>(9 - i);
    }
    for (int i = 0; i < AnalogChannels; ++i) {
        const auto channel = static_cast<std::size_t>(i);
        state.RawScaleLower[channel] = 513 + i;
        state.RawScaleUpper[channel] = 62384 + i;
        state.LowerLimit[channel] = -2.5 - i;
        state.UpperLimit[channel] = 24 + i;
        state.DisplayBottom[channel] = -3 - i;
        state.DisplayTop[channel] = 100 + i;
    }
    state.FlowMode = 2;
    state.ManningsS = 2;
    state.ManningsD = 18;
    state.ManningsDType = 2;
    state.FlumeTag = "P6";
    state.WeirTag = "V90";
    state.LevelOffset = -1.5;
    state.LevelOffsetType = 3;
    state.FlowUnits = 4;
    state.FlowTop = 50;
    state.VelUnits = 1;
    state.VelTop = 5;
    state.TablePath = "demo.tbl";
    return state;
}

/// The same, with what the image does not hold.
inline LoggerState FilledWhole() {
    LoggerState state = Filled();
    state.FirmwareVersion = 21;
    state.LoggerTime = "11/15/26 08:30:00";
    state.NumSamples = 70000;
    state.StatusWord = 0x0880;
    state.LoggingState = "Waiting for Alarm 1";
    state.FlowDecPlaces = 3;
    state.VelDecPlaces = 1;
    state.FlowEqOffset = 0.1;
    state.FlowEqExponent = 1.5;
    state.FlowEqMultiplier = 2.5;
    state.FlowDeviceName = "Flume";
    state.NumDataPoints = 2;
    state.DataPoints[0].Time = "11/15/26 08:29:00";
    state.DataPoints[0].Raw.fill(9);
    state.FlowTable.Append({1, 2});
    return state;
}

#endif  // ORVIA_TESTS_LOGGER_FILLED_STATE_H
