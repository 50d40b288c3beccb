#include "setup/setup_transfer.h"

#include <algorithm>
#include <string_view>

#include "common/characters.h"
#include "common/fault.h"
#include "common/number_text.h"
#include "common/text.h"
#include "setup/setup_lists.h"
#include "setup/setup_validators.h"

namespace {

constexpr std::uint8_t StyleMask = 3;
constexpr std::uint8_t ExceptionBit = 0x80;
constexpr int Noon = 12;
constexpr int Afternoon = 1;  // of cmbAlarm

std::uint8_t ByteOf(bool checked) {
    return checked ? 1 : 0;
}

/// Shows a code in a list of `items`, if it is one of them.
bool Select(int code, std::size_t items, int& list) {
    if (code < 0 || code >= static_cast<int>(items)) {
        return false;
    }
    list = code;
    return true;
}

// ----- state to form

AlarmControls AlarmOf(const LoggerRecord& global, std::size_t i) {
    const int hour = global.AlarmHour[i];
    const int shown = hour == 0 ? Noon : hour > Noon ? hour - Noon : hour;
    return {global.AlarmEnable[i] != 0,
            IntegerToText(shown) + ":" + TwoDigits(global.AlarmMin[i]) + ":" +
                TwoDigits(global.AlarmSec[i]),
            hour >= Noon ? Afternoon : 0};
}

int TimingOf(std::uint8_t style) {
    const int low = style & StyleMask;
    return low == TimingPeriodic || low == TimingFast ? low : TimingLogarithmic;
}

int IntervalUnitOf(std::string_view interval) {
    constexpr std::array<std::string_view, 3> Words{"sec", "min", "hour"};
    const auto found = std::find_if(Words.begin(), Words.end(), [interval](std::string_view word) {
        return interval.find(word) != std::string_view::npos;
    });
    return static_cast<int>(found - Words.begin());
}

bool ShowInterval(const std::string& interval, SetupControls& controls) {
    controls.cmbSampleInterval = IntervalUnitOf(interval);
    try {
        controls.txtSampleInterval = DoubleToText(LeadingNumber(interval));
        return true;
    } catch (const Fault&) {
        return false;
    }
}

bool ShowGeneral(const LoggerRecord& global, SetupControls& controls) {
    controls.txtName = CutText(global.LoggerName, LongestName);
    const bool warmupFits = global.SensorWarmupTime <= LastWarmup;
    if (warmupFits) {
        controls.cmbWarmup = IntegerToText(global.SensorWarmupTime);
    }
    for (std::size_t i = 0; i < controls.Alarms.size(); ++i) {
        controls.Alarms[i] = AlarmOf(global, i);
    }
    controls.chkException = (global.LoggingStyle & ExceptionBit) != 0;
    controls.Timing = TimingOf(global.LoggingStyle);
    const bool intervalFits = ShowInterval(global.SampleInterval, controls);
    controls.txtException = IntegerToText(global.Deadband);
    controls.chkWrap = global.DataWrapAroundFlag != 0;
    const bool baudFits =
        Select(global.FixedBaudRate, setup_lists::BaudRates.size(), controls.cmbBaud);
    controls.chkSOD = global.EnableSOD != 0;
    return warmupFits && intervalFits && baudFits;
}

std::string PrecisionText(std::uint8_t places) {
    return IntegerToText(std::min<int>(places, LastPrecision));
}

AnalogRow RowOf(const LoggerRecord& global, std::size_t i) {
    AnalogRow row;
    row.chkEnable = global.AnalogEnable[i] != 0;
    row.cmbEU = global.EngUnits[i];
    row.txtHighEU = DoubleToText(global.UpperLimit[i]);
    row.txtLowEU = DoubleToText(global.LowerLimit[i]);
    row.txtTop = DoubleToText(global.DisplayTop[i]);
    row.txtBottom = DoubleToText(global.DisplayBottom[i]);
    row.txtHighRaw = IntegerToText(global.RawScaleUpper[i]);
    row.txtLowRaw = IntegerToText(global.RawScaleLower[i]);
    row.cmbPrecision = PrecisionText(global.DecPlaces[i]);
    return row;
}

PulsePanel PanelOf(const LoggerRecord& global, std::size_t i) {
    return {global.DigitalEnable[i] != 0, global.EngUnits[AnalogChannels + i],
            DoubleToText(global.PulseUnit[i]), PrecisionText(global.DecPlaces[AnalogChannels + i])};
}

/// Position of a tag in its list: of two entries with one tag the last.
int DeviceOf(const std::string& tag, const FlowDeviceList& list) {
    int found = 0;
    for (int number = 1; number <= list.UpperBound(); ++number) {
        found = list[number].Tag == tag ? number : found;
    }
    return found;
}

void ShowFlow(const LoggerRecord& global, const Catalogues& catalogues, SetupControls& controls) {
    controls.FlowOption = global.FlowMode <= FlowByTable ? global.FlowMode : FlowNone;
    controls.cmbFlume = DeviceOf(global.FlumeTag, catalogues.FlumeList);
    controls.cmbWeir = DeviceOf(global.WeirTag, catalogues.WeirList);
    controls.txtTableFile = CutText(global.TablePath, LongestTablePath);
    Select(global.FlowUnits, setup_lists::FlowUnits.size(), controls.cmbFlowUnits);
    controls.txtFlowTop = DoubleToText(global.FlowTop);
    controls.txtOffset = DoubleToText(global.LevelOffset);
    controls.txtDiameter = DoubleToText(global.ManningsD);
    controls.txtSlope = DoubleToText(global.ManningsS);
    controls.txtVelTop = DoubleToText(global.VelTop);
    Select(global.LevelOffsetType, setup_lists::LengthUnits.size(), controls.cmbOffsetUnits);
    Select(global.ManningsDType, setup_lists::LengthUnits.size(), controls.cmbDiameterUnits);
    Select(global.ManningsSType, setup_lists::SlopeUnits.size(), controls.cmbSlopeUnits);
    Select(global.VelUnits, setup_lists::VelocityUnits.size(), controls.cmbVelUnits);
    controls.cmbRoughness = DoubleToText(global.ManningsN);
}

// ----- form to state

void TakeList(int selected, std::uint8_t& field) {
    if (selected != NoSelection) {
        field = static_cast<std::uint8_t>(selected);
    }
}

void TakeListNumber(const std::string& text, int last, std::uint8_t& field) {
    TakeList(ListNumber(text, last).value_or(NoSelection), field);
}

void TakeAlarm(const AlarmControls& alarm, std::size_t i, LoggerRecord& global) {
    global.AlarmEnable[i] = ByteOf(alarm.chkAlarm);
    const std::optional<TimeParts> time = ReadTime(alarm.txtAlarm);
    if (!time) {
        throw Fault("no time of an alarm");
    }
    int hour = time->Hour;
    if (alarm.cmbAlarm == Afternoon) {
        hour += hour < Noon ? Noon : 0;
    } else if (hour == Noon) {
        hour = 0;
    }
    global.AlarmHour[i] = static_cast<std::int16_t>(hour);
    global.AlarmMin[i] = time->Minute;
    global.AlarmSec[i] = time->Second;
}

std::string IntervalOf(const SetupControls& controls, const std::string& before) {
    if (controls.cmbSampleInterval == NoSelection) {
        return before;
    }
    const double count = LeadingNumber(controls.txtSampleInterval);
    std::string interval = DoubleToText(count) + " " +
                           std::string(setup_lists::IntervalUnits.at(
                               static_cast<std::size_t>(controls.cmbSampleInterval)));
    if (count == 1) {
        interval.pop_back();
    }
    return interval;
}

void TakeGeneral(const SetupControls& controls, LoggerRecord& global) {
    global.LoggerName = controls.txtName;
    TakeListNumber(controls.cmbWarmup, LastWarmup, global.SensorWarmupTime);
    for (std::size_t i = 0; i < controls.Alarms.size(); ++i) {
        TakeAlarm(controls.Alarms[i], i, global);
    }
    global.LoggingStyle =
        static_cast<std::uint8_t>(controls.Timing + (controls.chkException ? ExceptionBit : 0));
    global.SampleInterval = IntervalOf(controls, global.SampleInterval);
    global.Deadband = RoundToLong(LeadingNumber(controls.txtException));
    global.DataWrapAroundFlag = ByteOf(controls.chkWrap);
    TakeList(controls.cmbBaud, global.FixedBaudRate);
    global.EnableSOD = ByteOf(controls.chkSOD);
}

void TakeRow(const AnalogRow& row, std::size_t i, LoggerRecord& global) {
    global.AnalogEnable[i] = ByteOf(row.chkEnable);
    global.EngUnits[i] = row.cmbEU;
    global.UpperLimit[i] = LeadingNumber(row.txtHighEU);
    global.LowerLimit[i] = LeadingNumber(row.txtLowEU);
    global.DisplayTop[i] = LeadingNumber(row.txtTop);
    global.DisplayBottom[i] = LeadingNumber(row.txtBottom);
    global.RawScaleUpper[i] = RoundToLong(LeadingNumber(row.txtHighRaw));
    global.RawScaleLower[i] = RoundToLong(LeadingNumber(row.txtLowRaw));
    TakeListNumber(row.cmbPrecision, LastPrecision, global.DecPlaces[i]);
}

void TakePanel(const PulsePanel& panel, std::size_t i, LoggerRecord& global) {
    global.DigitalEnable[i] = ByteOf(panel.chkPulseEnable);
    global.EngUnits[AnalogChannels + i] = panel.cmbPulseEU;
    global.PulseUnit[i] = LeadingNumber(panel.txtPulseUnit);
    TakeListNumber(panel.cmbPulsePrecision, LastPrecision, global.DecPlaces[AnalogChannels + i]);
}

void TakeChannels(const SetupControls& controls, LoggerRecord& global) {
    const auto analog = std::min<std::size_t>(global.NumAnalogChannels, AnalogChannels);
    for (std::size_t i = 0; i < analog; ++i) {
        TakeRow(controls.Analog[i], i, global);
    }
    const auto pulse = std::min<std::size_t>(global.NumDigitalChannels, PulseChannels);
    for (std::size_t i = 0; i < pulse; ++i) {
        TakePanel(controls.Pulse[i], i, global);
    }
}

void TakeTag(int selected, const FlowDeviceList& list, std::string& tag) {
    if (selected != NoSelection) {
        tag = selected == 0 ? "" : list[selected].Tag;
    }
}

/// Flow fields take a comma as the decimal mark, which those of channels do not.
double FlowNumber(std::string text) {
    return TextToDouble(text);
}

void TakeFlow(const SetupControls& controls, const Catalogues& catalogues, LoggerRecord& global) {
    global.FlowMode = static_cast<std::uint8_t>(std::max(controls.FlowOption, FlowNone));
    TakeTag(controls.cmbFlume, catalogues.FlumeList, global.FlumeTag);
    TakeTag(controls.cmbWeir, catalogues.WeirList, global.WeirTag);
    global.TablePath = controls.txtTableFile;
    TakeList(controls.cmbFlowUnits, global.FlowUnits);
    global.FlowTop = FlowNumber(controls.txtFlowTop);
    global.LevelOffset = FlowNumber(controls.txtOffset);
    TakeList(controls.cmbOffsetUnits, global.LevelOffsetType);
    global.ManningsD = FlowNumber(controls.txtDiameter);
    TakeList(controls.cmbDiameterUnits, global.ManningsDType);
    global.ManningsS = FlowNumber(controls.txtSlope);
    TakeList(controls.cmbSlopeUnits, global.ManningsSType);
    global.ManningsN = FlowNumber(controls.cmbRoughness);
    TakeList(controls.cmbVelUnits, global.VelUnits);
    global.VelTop = FlowNumber(controls.txtVelTop);
}

}  // namespace

bool StateToForm(const LoggerRecord& global, const Catalogues& catalogues,
                 SetupControls& controls) {
    const bool shown = ShowGeneral(global, controls);
    const auto analog = std::min<std::size_t>(global.NumAnalogChannels, AnalogChannels);
    for (std::size_t i = 0; i < analog; ++i) {
        controls.Analog[i] = RowOf(global, i);
    }
    // A panel that is disabled shows what the logger holds all the same.
    for (std::size_t i = 0; i < PulseChannels; ++i) {
        controls.Pulse[i] = PanelOf(global, i);
    }
    ShowFlow(global, catalogues, controls);
    return shown;
}

bool FormToState(const SetupControls& controls, const Catalogues& catalogues,
                 LoggerRecord& global) {
    try {
        TakeGeneral(controls, global);
        TakeChannels(controls, global);
        TakeFlow(controls, catalogues, global);
        return true;
    } catch (const Fault&) {
        return false;
    }
}
