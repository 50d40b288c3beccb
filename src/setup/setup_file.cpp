#include "setup/setup_file.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>

#include "common/fault.h"
#include "common/line_reader.h"
#include "common/number_text.h"
#include "common/text.h"

namespace {

constexpr std::string_view AnalogHead = "[Analog Channel]";
constexpr std::string_view DigitalHead = "[Digital Channel]";
constexpr std::string_view AlarmHead = "[Alarm]";

// ----- writer

class LineWriter {
 public:
    explicit LineWriter(std::ostream& file) : file_(file) {}

    void Head(std::string_view head) { file_ << head << "\r\n"; }
    void Text(std::string_view key, std::string_view value) {
        file_ << key << '=' << value << "\r\n";
    }
    void Whole(std::string_view key, std::int64_t value) { Text(key, IntegerToText(value)); }
    void Real(std::string_view key, double value) { Text(key, DoubleToText(value)); }

 private:
    std::ostream& file_;
};

void WriteHeader(LineWriter& lines, const LoggerRecord& global, const SetupFileOrigin& origin) {
    lines.Text("Program", "Orvia");
    lines.Text("Version", origin.Version);
    lines.Text("Date", origin.Date);
    lines.Text("Time", origin.Time);
    lines.Text("LoggerName", global.LoggerName);
    lines.Text("SampleInterval", global.SampleInterval);
    lines.Whole("NumAnalogChannels", global.NumAnalogChannels);
    lines.Whole("NumDigitalChannels", global.NumDigitalChannels);
    lines.Whole("DataWrapAroundFlag", global.DataWrapAroundFlag);
    lines.Whole("SensorWarmupTime", global.SensorWarmupTime);
    lines.Whole("LoggingStyle", global.LoggingStyle);
    lines.Whole("Deadband", global.Deadband);
    lines.Whole("EnableSOD", global.EnableSOD);
    lines.Whole("FixedBaudRate", global.FixedBaudRate);
}

void WriteAnalog(LineWriter& lines, const LoggerRecord& global, std::size_t i) {
    lines.Head(AnalogHead);
    lines.Whole("Channel", static_cast<int>(i));
    lines.Whole("Enable", global.AnalogEnable[i]);
    lines.Text("EngUnits", global.EngUnits[i]);
    lines.Whole("DecPlaces", global.DecPlaces[i]);
    lines.Whole("RawScaleLower", global.RawScaleLower[i]);
    lines.Whole("RawScaleUpper", global.RawScaleUpper[i]);
    lines.Real("LowerLimit", global.LowerLimit[i]);
    lines.Real("UpperLimit", global.UpperLimit[i]);
    lines.Real("DisplayTop", global.DisplayTop[i]);
    lines.Real("DisplayBottom", global.DisplayBottom[i]);
}

void WriteDigital(LineWriter& lines, const LoggerRecord& global, std::size_t i) {
    lines.Head(DigitalHead);
    lines.Whole("Channel", static_cast<int>(i));
    lines.Whole("Enable", global.DigitalEnable[i]);
    lines.Text("EngUnits", global.EngUnits[AnalogChannels + i]);
    lines.Whole("DecPlaces", global.DecPlaces[AnalogChannels + i]);
    lines.Real("PulseUnit", global.PulseUnit[i]);
}

void WriteAlarm(LineWriter& lines, const LoggerRecord& global, std::size_t i) {
    lines.Head(AlarmHead);
    lines.Whole("Channel", static_cast<int>(i));
    lines.Whole("Enable", global.AlarmEnable[i]);
    lines.Whole("AlarmSec", global.AlarmSec[i]);
    lines.Whole("AlarmMin", global.AlarmMin[i]);
    lines.Whole("AlarmHour", global.AlarmHour[i]);
}

void WriteFlow(LineWriter& lines, const LoggerRecord& global) {
    lines.Whole("FlowMode", global.FlowMode);
    lines.Whole("FlowUnits", global.FlowUnits);
    lines.Real("FlowTop", global.FlowTop);
    lines.Whole("VelUnits", global.VelUnits);
    lines.Real("VelTop", global.VelTop);
    lines.Real("ManningsN", global.ManningsN);
    lines.Real("ManningsS", global.ManningsS);
    lines.Whole("ManningsSType", global.ManningsSType);
    lines.Real("ManningsD", global.ManningsD);
    lines.Whole("ManningsDType", global.ManningsDType);
    lines.Text("FlumeTag", global.FlumeTag);
    lines.Text("WeirTag", global.WeirTag);
    lines.Real("LevelOffset", global.LevelOffset);
    lines.Whole("LevelOffsetType", global.LevelOffsetType);
    lines.Text("TablePath", global.TablePath);
}

// ----- reader

enum class Section { None, Analog, Digital, Alarm };

/// What the reader has come to.
struct Reading {
    LoggerRecord& Global;
    ::Section Section = Section::None;
    std::int16_t Channel = 0;
};

void Parse(std::string_view value, std::string& field) {
    field = value;
}

void Parse(std::string_view value, double& field) {
    std::string text(value);
    field = TextToDouble(text);
}

template <typename Integer>
void Parse(std::string_view value, Integer& field) {
    std::int32_t number = 0;
    if (!TextToLong(value, number) || number < std::numeric_limits<Integer>::min() ||
        number > std::numeric_limits<Integer>::max()) {
        throw Fault("no such number");
    }
    field = static_cast<Integer>(number);
}

/// Element of an array that the channel governs, `offset` further on.
template <typename Array>
auto& AtChannel(Array& array, const Reading& reading, int offset = 0) {
    const int index = reading.Channel + offset;
    if (reading.Channel < 0 || index >= static_cast<int>(array.size())) {
        throw Fault("no such channel");
    }
    return array[static_cast<std::size_t>(index)];
}

template <auto Member>
void StoreValue(Reading& reading, std::string_view value) {
    Parse(value, reading.Global.*Member);
}

template <auto Member>
void StoreAtChannel(Reading& reading, std::string_view value) {
    Parse(value, AtChannel(reading.Global.*Member, reading));
}

/// Of a field that analog and digital channels share, the digital ones behind the analog ones.
template <auto Member>
void StoreOfAnyChannel(Reading& reading, std::string_view value) {
    if (reading.Section == Section::Analog) {
        Parse(value, AtChannel(reading.Global.*Member, reading));
    } else if (reading.Section == Section::Digital) {
        Parse(value, AtChannel(reading.Global.*Member, reading, AnalogChannels));
    }
}

void StoreEnable(Reading& reading, std::string_view value) {
    switch (reading.Section) {
        case Section::Analog:
            return StoreAtChannel<&LoggerRecord::AnalogEnable>(reading, value);
        case Section::Digital:
            return StoreAtChannel<&LoggerRecord::DigitalEnable>(reading, value);
        case Section::Alarm:
            return StoreAtChannel<&LoggerRecord::AlarmEnable>(reading, value);
        case Section::None:
            return;
    }
}

void StoreChannel(Reading& reading, std::string_view value) {
    Parse(value, reading.Channel);
}

struct KnownKey {
    std::string_view Key;
    void (*Store)(Reading& reading, std::string_view value);
};

constexpr std::array<KnownKey, 37> KnownKeys{{
    {"LoggerName", StoreValue<&LoggerRecord::LoggerName>},
    {"SampleInterval", StoreValue<&LoggerRecord::SampleInterval>},
    {"DataWrapAroundFlag", StoreValue<&LoggerRecord::DataWrapAroundFlag>},
    {"SensorWarmupTime", StoreValue<&LoggerRecord::SensorWarmupTime>},
    {"LoggingStyle", StoreValue<&LoggerRecord::LoggingStyle>},
    {"EnableSOD", StoreValue<&LoggerRecord::EnableSOD>},
    {"FixedBaudRate", StoreValue<&LoggerRecord::FixedBaudRate>},
    {"Deadband", StoreValue<&LoggerRecord::Deadband>},
    {"Channel", StoreChannel},
    {"Enable", StoreEnable},
    {"EngUnits", StoreOfAnyChannel<&LoggerRecord::EngUnits>},
    {"DecPlaces", StoreOfAnyChannel<&LoggerRecord::DecPlaces>},
    {"RawScaleUpper", StoreAtChannel<&LoggerRecord::RawScaleUpper>},
    {"RawScaleLower", StoreAtChannel<&LoggerRecord::RawScaleLower>},
    {"LowerLimit", StoreAtChannel<&LoggerRecord::LowerLimit>},
    {"UpperLimit", StoreAtChannel<&LoggerRecord::UpperLimit>},
    {"DisplayTop", StoreAtChannel<&LoggerRecord::DisplayTop>},
    {"DisplayBottom", StoreAtChannel<&LoggerRecord::DisplayBottom>},
    {"PulseUnit", StoreAtChannel<&LoggerRecord::PulseUnit>},
    {"AlarmSec", StoreAtChannel<&LoggerRecord::AlarmSec>},
    {"AlarmMin", StoreAtChannel<&LoggerRecord::AlarmMin>},
    {"AlarmHour", StoreAtChannel<&LoggerRecord::AlarmHour>},
    {"FlowMode", StoreValue<&LoggerRecord::FlowMode>},
    {"FlowUnits", StoreValue<&LoggerRecord::FlowUnits>},
    {"FlowTop", StoreValue<&LoggerRecord::FlowTop>},
    {"VelUnits", StoreValue<&LoggerRecord::VelUnits>},
    {"VelTop", StoreValue<&LoggerRecord::VelTop>},
    {"ManningsN", StoreValue<&LoggerRecord::ManningsN>},
    {"ManningsS", StoreValue<&LoggerRecord::ManningsS>},
    {"ManningsSType", StoreValue<&LoggerRecord::ManningsSType>},
    {"ManningsD", StoreValue<&LoggerRecord::ManningsD>},
    {"ManningsDType", StoreValue<&LoggerRecord::ManningsDType>},
    {"FlumeTag", StoreValue<&LoggerRecord::FlumeTag>},
    {"WeirTag", StoreValue<&LoggerRecord::WeirTag>},
    {"LevelOffset", StoreValue<&LoggerRecord::LevelOffset>},
    {"LevelOffsetType", StoreValue<&LoggerRecord::LevelOffsetType>},
    {"TablePath", StoreValue<&LoggerRecord::TablePath>},
}};

/// The section that a line opens, told by the word behind its bracket; what follows is free.
Section SectionOf(std::string_view line) {
    const std::string_view head = line.substr(1);
    if (head.starts_with("Analog")) {
        return Section::Analog;
    }
    if (head.starts_with("Digital")) {
        return Section::Digital;
    }
    return head.starts_with("Alarm") ? Section::Alarm : Section::None;
}

/// Shortest key that is looked at; a line with less before its "=" is passed over.
constexpr std::size_t ShortestKey = 2;

void TakeLine(std::string_view line, Reading& reading) {
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos || equals < ShortestKey) {
        return;
    }
    const std::string_view key = line.substr(0, equals);
    const auto known = std::find_if(KnownKeys.begin(), KnownKeys.end(),
                                    [key](const KnownKey& entry) { return entry.Key == key; });
    if (known != KnownKeys.end()) {
        known->Store(reading, Trim(line.substr(equals + 1)));
    }
}

}  // namespace

void WriteSetupFile(std::ostream& file, const LoggerRecord& global, const SetupFileOrigin& origin) {
    LineWriter lines(file);
    WriteHeader(lines, global, origin);
    for (std::size_t i = 0; i < AnalogChannels; ++i) {
        WriteAnalog(lines, global, i);
    }
    for (std::size_t i = 0; i < PulseChannels; ++i) {
        WriteDigital(lines, global, i);
    }
    for (std::size_t i = 0; i < global.AlarmEnable.size(); ++i) {
        WriteAlarm(lines, global, i);
    }
    WriteFlow(lines, global);
}

std::optional<SetupFileFault> ReadSetupFile(std::istream& file, LoggerRecord& global,
                                            std::uintmax_t limit) {
    LineReader lines(file, limit);
    Reading reading{global};
    std::string_view line;
    int number = 0;
    while (lines.Next(line)) {
        ++number;
        if (line.starts_with('[')) {
            reading.Section = SectionOf(line);
            continue;
        }
        try {
            TakeLine(line, reading);
        } catch (const Fault&) {
            return SetupFileFault{number, std::string(line.substr(0, line.find('=')))};
        }
    }
    if (!lines.Intact()) {
        return SetupFileFault{number, {}};
    }
    return std::nullopt;
}
