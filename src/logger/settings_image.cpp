#include "logger/settings_image.h"

#include <algorithm>
#include <string_view>

#include "common/fault.h"
#include "common/number_text.h"
#include "common/text.h"
#include "logger/bcd.h"
#include "logger/image_bytes.h"
#include "logger/image_map.h"

namespace config {

namespace {

static_assert(image::TablePath + image::TablePathSize == SettingsImageSize);

constexpr int LongestWarmup = 60000;  // milliseconds
constexpr int MillisecondsPerSecond = 1000;
constexpr std::uint8_t LastFlowMode = 4;
constexpr std::uint8_t LastUnit = 4;
constexpr int TwoBits = 3;

/// Words of the interval's unit, by its code; any further code is the last.
constexpr std::array<std::string_view, 4> IntervalWords{"second", "minute", "hour", "day"};

template <std::size_t N>
std::uint8_t EnableMask(const std::array<std::uint8_t, N>& enable) {
    int mask = 0;
    for (std::size_t i = 0; i < N; ++i) {
        mask |= enable[i] != 0 ? 1 << i : 0;
    }
    return static_cast<std::uint8_t>(mask);
}

template <std::size_t N>
void DecodeEnable(std::uint8_t mask, int channels, std::array<std::uint8_t, N>& enable) {
    for (std::size_t i = 0; i < N; ++i) {
        enable[i] = static_cast<int>(i) < channels && (mask >> i & 1) != 0 ? 1 : 0;
    }
}

template <std::size_t N>
void PutFloats(const std::array<double, N>& values, Bytes& image, int offset) {
    for (std::size_t i = 0; i < N; ++i) {
        PutFloat24(values[i], image, offset + static_cast<int>(i) * image::FloatStride);
    }
}

template <std::size_t N>
void GetFloats(const Bytes& image, int offset, std::array<double, N>& values) {
    for (std::size_t i = 0; i < N; ++i) {
        values[i] = GetFloat24(image, offset + static_cast<int>(i) * image::FloatStride);
    }
}

void PutRaw(const std::array<std::int32_t, AnalogChannels>& values, Bytes& image, int offset) {
    for (std::size_t i = 0; i < AnalogChannels; ++i) {
        PutU16(values[i], image, offset + static_cast<int>(i) * image::RawStride);
    }
}

void GetRaw(const Bytes& image, int offset, std::array<std::int32_t, AnalogChannels>& values) {
    for (std::size_t i = 0; i < AnalogChannels; ++i) {
        values[i] = GetU16(image, offset + static_cast<int>(i) * image::RawStride);
    }
}

int IntervalUnitOf(std::string_view interval) {
    const auto holds = [interval](std::string_view word) {
        return interval.find(word) != std::string_view::npos;
    };
    return holds("min") ? 1 : holds("hour") ? 2 : holds("day") ? 3 : 0;
}

std::string IntervalText(int count, int unit) {
    const auto word = static_cast<std::size_t>(std::min(unit, 3));
    return IntegerToText(count) + " " + std::string(IntervalWords[word]) + (count > 1 ? "s" : "");
}

void EncodeGeneral(const LoggerRecord& global, Bytes& image) {
    PutString(global.LoggerName, image, image::LoggerName, image::LoggerNameSize);
    const double count = RoundTiesToEven(LeadingNumber(global.SampleInterval));
    PutU16(static_cast<std::int32_t>(std::clamp(count, -1.0, 65536.0)), image,
           image::IntervalCount);
    PutByte(IntervalUnitOf(global.SampleInterval), image, image::IntervalUnit);
    PutByte(global.NumAnalogChannels, image, image::NumAnalogChannels);
    PutByte(global.NumDigitalChannels, image, image::NumDigitalChannels);
    PutByte(EnableMask(global.AnalogEnable), image, image::AnalogEnable);
    PutByte(EnableMask(global.DigitalEnable), image, image::DigitalEnable);
    PutByte(global.FixedBaudRate * 2 + global.DataWrapAroundFlag, image, image::WrapAndBaud);
    PutU16(global.SensorWarmupTime * MillisecondsPerSecond, image, image::SensorWarmupTime);
    PutByte(global.EnableSOD, image, image::EnableSOD);
    PutByte(global.LoggingStyle, image, image::LoggingStyle);
    PutU16(global.Deadband, image, image::Deadband);
}

void DecodeGeneral(const Bytes& image, LoggerRecord& record) {
    record.LoggerName = GetString(image, image::LoggerName, image::LoggerNameSize);
    record.SampleInterval =
        IntervalText(GetU16(image, image::IntervalCount), GetByte(image, image::IntervalUnit));
    DecodeEnable(GetByte(image, image::AnalogEnable), record.NumAnalogChannels,
                 record.AnalogEnable);
    DecodeEnable(GetByte(image, image::DigitalEnable), record.NumDigitalChannels,
                 record.DigitalEnable);
    const std::uint8_t wrapAndBaud = GetByte(image, image::WrapAndBaud);
    record.DataWrapAroundFlag = wrapAndBaud & 1;
    record.FixedBaudRate = wrapAndBaud >> 1;
    const int warmup = std::min(GetU16(image, image::SensorWarmupTime), LongestWarmup);
    record.SensorWarmupTime = static_cast<std::uint8_t>(warmup / MillisecondsPerSecond);
    record.EnableSOD = record.SODAvailable == False ? 0 : GetByte(image, image::EnableSOD);
    record.LoggingStyle = GetByte(image, image::LoggingStyle);
    record.Deadband = GetU16(image, image::Deadband);
}

void EncodeAlarms(const LoggerRecord& global, Bytes& image) {
    for (int i = 0; i < 2; ++i) {
        const auto alarm = static_cast<std::size_t>(i);
        const int time = image::Alarm + i * image::AlarmStride;
        PutByte(global.AlarmEnable[alarm], image, image::AlarmEnable + i);
        PutByte(cmd::ToBcd(global.AlarmSec[alarm]), image, time);
        PutByte(cmd::ToBcd(global.AlarmMin[alarm]), image, time + 1);
        PutByte(cmd::ToBcd(global.AlarmHour[alarm]), image, time + 2);
        PutByte(image::AlarmConstant, image, time + 3);
    }
}

void DecodeAlarms(const Bytes& image, LoggerRecord& record) {
    const auto bcd = [&image](int offset) {
        return static_cast<std::int16_t>(cmd::FromBcd(GetByte(image, offset)));
    };
    for (int i = 0; i < 2; ++i) {
        const auto alarm = static_cast<std::size_t>(i);
        const int time = image::Alarm + i * image::AlarmStride;
        record.AlarmEnable[alarm] = GetByte(image, image::AlarmEnable + i) != 0 ? 1 : 0;
        record.AlarmSec[alarm] = bcd(time);
        record.AlarmMin[alarm] = bcd(time + 1);
        record.AlarmHour[alarm] = bcd(time + 2);
    }
}

void EncodeChannels(const LoggerRecord& global, Bytes& image) {
    for (int i = 0; i < AllChannels; ++i) {
        const auto channel = static_cast<std::size_t>(i);
        PutString(global.EngUnits[channel], image, image::EngUnits + i * image::EngUnitsSize,
                  image::EngUnitsSize);
        PutByte(global.DecPlaces[channel], image, image::DecPlaces + i);
    }
    PutRaw(global.RawScaleLower, image, image::RawScaleLower);
    PutRaw(global.RawScaleUpper, image, image::RawScaleUpper);
    PutFloats(global.PulseUnit, image, image::PulseUnit);
    PutFloats(global.LowerLimit, image, image::LowerLimit);
    PutFloats(global.UpperLimit, image, image::UpperLimit);
    PutFloats(global.DisplayBottom, image, image::DisplayBottom);
    PutFloats(global.DisplayTop, image, image::DisplayTop);
}

void DecodeChannels(const Bytes& image, LoggerRecord& record) {
    for (int i = 0; i < AllChannels; ++i) {
        const auto channel = static_cast<std::size_t>(i);
        record.EngUnits[channel] =
            GetString(image, image::EngUnits + i * image::EngUnitsSize, image::EngUnitsSize);
        record.DecPlaces[channel] = GetByte(image, image::DecPlaces + i);
    }
    GetRaw(image, image::RawScaleLower, record.RawScaleLower);
    GetRaw(image, image::RawScaleUpper, record.RawScaleUpper);
    GetFloats(image, image::PulseUnit, record.PulseUnit);
    GetFloats(image, image::LowerLimit, record.LowerLimit);
    GetFloats(image, image::UpperLimit, record.UpperLimit);
    GetFloats(image, image::DisplayBottom, record.DisplayBottom);
    GetFloats(image, image::DisplayTop, record.DisplayTop);
}

void EncodeFlow(const LoggerRecord& global, Bytes& image) {
    PutByte(global.FlowMode, image, image::FlowMode);
    PutFloat24(global.ManningsN, image, image::ManningsN);
    PutFloat24(global.ManningsS, image, image::ManningsS);
    PutByte(global.ManningsSType, image, image::ManningsSType);
    PutFloat24(global.ManningsD, image, image::ManningsD);
    PutByte(global.ManningsDType, image, image::ManningsDType);
    PutString(global.FlumeTag, image, image::FlumeTag, image::TagSize);
    PutString(global.WeirTag, image, image::WeirTag, image::TagSize);
    PutFloat24(global.LevelOffset, image, image::LevelOffset);
    PutByte(global.LevelOffsetType, image, image::LevelOffsetType);
    PutByte(global.FlowUnits, image, image::FlowUnits);
    PutFloat24(global.FlowTop, image, image::FlowTop);
    PutByte(global.VelUnits, image, image::VelUnits);
    PutFloat24(global.VelTop, image, image::VelTop);
    PutString(global.TablePath, image, image::TablePath, image::TablePathSize);
}

void DecodeFlow(const Bytes& image, LoggerRecord& record) {
    const auto code = [&image](int offset, std::uint8_t last) -> std::uint8_t {
        const std::uint8_t value = GetByte(image, offset);
        return value > last ? 0 : value;
    };
    const auto masked = [&image](int offset, int mask) {
        return static_cast<std::uint8_t>(GetByte(image, offset) & mask);
    };
    record.FlowMode = code(image::FlowMode, LastFlowMode);
    record.ManningsN = GetFloat24(image, image::ManningsN);
    record.ManningsS = GetFloat24(image, image::ManningsS);
    record.ManningsSType = masked(image::ManningsSType, 1);
    record.ManningsD = GetFloat24(image, image::ManningsD);
    record.ManningsDType = masked(image::ManningsDType, TwoBits);
    record.FlumeTag = TrimLeft(GetString(image, image::FlumeTag, image::TagSize));
    record.WeirTag = TrimLeft(GetString(image, image::WeirTag, image::TagSize));
    record.LevelOffset = GetFloat24(image, image::LevelOffset);
    record.LevelOffsetType = masked(image::LevelOffsetType, TwoBits);
    record.FlowUnits = code(image::FlowUnits, LastUnit);
    record.FlowTop = GetFloat24(image, image::FlowTop);
    record.VelUnits = code(image::VelUnits, LastUnit);
    record.VelTop = GetFloat24(image, image::VelTop);
    record.TablePath = GetString(image, image::TablePath, image::TablePathSize);
}

}  // namespace

bool EncodeSettingsImage(const LoggerRecord& global, Bytes& image) {
    image.assign(SettingsImageSize, 0);
    try {
        EncodeGeneral(global, image);
        EncodeAlarms(global, image);
        EncodeChannels(global, image);
        EncodeFlow(global, image);
        return true;
    } catch (const Fault&) {
        image.clear();
        return false;
    }
}

bool DecodeSettingsImage(const Bytes& image, LoggerState& state) {
    if (image.size() != SettingsImageSize) {
        return false;
    }
    DecodeGeneral(image, state);
    DecodeAlarms(image, state);
    DecodeChannels(image, state);
    if (GetByte(image, image::FlowMode) == image::FlowNeverWritten) {
        SetDefaultFlowSettings(state);
        state.FlowTable.Reset();
    } else {
        DecodeFlow(image, state);
    }
    return true;
}

}  // namespace config
