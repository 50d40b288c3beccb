#include "logger/logger_state.h"

namespace {

void SetDefaultChannel(LoggerState& global, int channel) {
    const int last = global.NumAnalogChannels - 1;
    const bool battery = channel == last && channel != 0;
    const auto i = static_cast<std::size_t>(channel);
    const double top = battery ? 24 : 100;
    global.EngUnits[i] = battery ? "Volts" : "%";
    global.RawScaleLower[i] = 0;
    global.RawScaleUpper[i] = battery ? 62384 : 65535;
    global.LowerLimit[i] = 0;
    global.UpperLimit[i] = top;
    global.DisplayBottom[i] = 0;
    global.DisplayTop[i] = top;
    global.DecPlaces[i] = 2;
}

void SetDefaultPulseChannels(LoggerState& global) {
    global.DigitalEnable.fill(1);
    global.PulseUnit.fill(1);
    for (std::size_t i = AnalogChannels; i < AllChannels; ++i) {
        global.EngUnits[i] = "Pulses";
        global.DecPlaces[i] = 0;
    }
}

}  // namespace

void CopyStateToGlobal(LoggerState& global, const LoggerState& state) {
    static_cast<LoggerRecord&>(global) = static_cast<const LoggerRecord&>(state);
}

void CopyStateFromGlobal(const LoggerState& global, LoggerState& state) {
    static_cast<LoggerRecord&>(state) = static_cast<const LoggerRecord&>(global);
}

void SetDefaultSettings(LoggerState& global) {
    global.LoggerName = "Tessel";
    global.SampleInterval = "1 day";
    global.DataWrapAroundFlag = 1;
    global.SensorWarmupTime = 3;
    global.AlarmSec.fill(0);
    global.AlarmMin.fill(0);
    global.AlarmHour.fill(0);
    global.AlarmEnable.fill(0);
    global.AnalogEnable.fill(1);
    for (int channel = 0; channel < AnalogChannels; ++channel) {
        SetDefaultChannel(global, channel);
    }
    SetDefaultPulseChannels(global);
    global.LoggingStyle = 0;
    global.Deadband = 0;
    global.EnableSOD = 0;
    SetDefaultFlowSettings(global);
}

void SetDefaultFlowSettings(LoggerRecord& record) {
    record.FlowMode = 0;
    record.ManningsN = 0.014;
    record.ManningsS = 1;
    record.ManningsSType = 1;
    record.ManningsD = 1;
    record.ManningsDType = 0;
    record.LevelOffset = 0;
    record.LevelOffsetType = 1;
    record.TablePath.clear();
    record.FlumeTag.clear();
    record.WeirTag.clear();
    record.FlowUnits = 0;
    record.FlowTop = 100;
    record.VelUnits = 0;
    record.VelTop = 100;
}
