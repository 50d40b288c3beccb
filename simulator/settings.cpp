#include "simulator/settings.h"

#include "simulator/calendar.h"
#include "simulator/float24.h"

namespace simulator {

namespace {

// Addresses in the logger's memory. The first block starts at 8, the second at 256, the third at
// 512.
constexpr std::size_t NameAddress = 8;
constexpr std::size_t AnalogCountAddress = 8 + 35;
constexpr std::size_t PulseCountAddress = 8 + 36;
constexpr std::size_t AnalogEnableAddress = 8 + 37;
constexpr std::size_t PulseEnableAddress = 8 + 38;
constexpr std::size_t WrapAndBaudAddress = 8 + 39;
constexpr std::size_t WarmupAddress = 8 + 40;
constexpr std::size_t EnableSodAddress = 8 + 44;
constexpr std::size_t LoggingStyleAddress = 8 + 45;
constexpr std::size_t DeadbandAddress = 8 + 46;
constexpr std::size_t UnitsAddress = 8 + 48;
constexpr std::size_t DecimalsAddress = 8 + 146;
constexpr std::size_t RawLowerAddress = 8 + 156;
constexpr std::size_t RawUpperAddress = 8 + 172;
constexpr std::size_t PulseUnitAddress = 8 + 188;
constexpr std::size_t LowerLimitAddress = 8 + 194;
constexpr std::size_t UpperLimitAddress = 8 + 218;
constexpr std::size_t DisplayBottomAddress = 256;
constexpr std::size_t DisplayTopAddress = 256 + 24;
constexpr std::size_t FlowAddress = 512;
constexpr std::size_t FlowSize = 168;

constexpr std::size_t NameSize = 32;
constexpr std::size_t UnitsSize = 9;
constexpr std::size_t TagSize = 8;
constexpr std::size_t PathSize = 128;
constexpr std::size_t Float24Size = 3;
constexpr std::size_t AnalogSlots = 8;
constexpr std::size_t PulseSlots = 2;
constexpr std::size_t AlarmStride = 4;
constexpr std::uint8_t AlarmMark = 0x80;

static_assert(UnitsAddress + 10 * UnitsSize == AlarmTimeAddress);
static_assert(UpperLimitAddress + AnalogSlots * Float24Size == 250);
static_assert(DisplayTopAddress + AnalogSlots * Float24Size == 304);

void PutText(std::span<std::uint8_t> memory, std::size_t address, std::size_t size,
             const std::string& text) {
    for (std::size_t i = 0; i < size; ++i) {
        memory[address + i] = i < text.size() ? static_cast<std::uint8_t>(text[i]) : ' ';
    }
}

void PutNumber(std::span<std::uint8_t> memory, std::size_t address, double value) {
    PutU24(memory, address, EncodeFloat24(value));
}

template <typename Code>
std::uint8_t ByteOf(Code code) {
    return static_cast<std::uint8_t>(code);
}

void WriteAnalog(const AnalogSettings& channel, std::size_t slot, std::span<std::uint8_t> memory) {
    PutText(memory, UnitsAddress + slot * UnitsSize, UnitsSize, channel.Units);
    memory[DecimalsAddress + slot] = ByteOf(channel.Decimals);
    PutU16(memory, RawLowerAddress + slot * 2, channel.RawLower);
    PutU16(memory, RawUpperAddress + slot * 2, channel.RawUpper);
    PutNumber(memory, LowerLimitAddress + slot * Float24Size, channel.LowerLimit);
    PutNumber(memory, UpperLimitAddress + slot * Float24Size, channel.UpperLimit);
    PutNumber(memory, DisplayBottomAddress + slot * Float24Size, channel.DisplayBottom);
    PutNumber(memory, DisplayTopAddress + slot * Float24Size, channel.DisplayTop);
}

void WritePulse(const PulseSettings& channel, std::size_t slot, std::span<std::uint8_t> memory) {
    PutText(memory, UnitsAddress + (AnalogSlots + slot) * UnitsSize, UnitsSize, channel.Units);
    memory[DecimalsAddress + AnalogSlots + slot] = ByteOf(channel.Decimals);
    PutNumber(memory, PulseUnitAddress + slot * Float24Size, channel.UnitsPerPulse);
}

/// Slots that have no channel hold the values of a channel as it leaves the factory, disabled.
template <typename Channel>
Channel SlotOf(const std::vector<Channel>& channels, std::size_t slot) {
    if (slot < channels.size()) {
        return channels[slot];
    }
    Channel unused;
    unused.Enabled = false;
    return unused;
}

void WriteChannels(const LoggerSettings& settings, std::span<std::uint8_t> memory) {
    unsigned analogEnable = 0;
    for (std::size_t slot = 0; slot < AnalogSlots; ++slot) {
        const AnalogSettings channel = SlotOf(settings.Analog, slot);
        WriteAnalog(channel, slot, memory);
        analogEnable |= (channel.Enabled ? 1U : 0U) << slot;
    }
    unsigned pulseEnable = 0;
    for (std::size_t slot = 0; slot < PulseSlots; ++slot) {
        const PulseSettings channel = SlotOf(settings.Pulse, slot);
        WritePulse(channel, slot, memory);
        pulseEnable |= (channel.Enabled ? 1U : 0U) << slot;
    }
    memory[AnalogCountAddress] = ByteOf(settings.Analog.size());
    memory[PulseCountAddress] = ByteOf(settings.Pulse.size());
    memory[AnalogEnableAddress] = ByteOf(analogEnable);
    memory[PulseEnableAddress] = ByteOf(pulseEnable);
}

void WriteAlarms(const LoggerSettings& settings, std::span<std::uint8_t> memory) {
    for (std::size_t i = 0; i < settings.Alarms.size(); ++i) {
        const AlarmSettings& alarm = settings.Alarms[i];
        memory[AlarmEnableAddress + i] = alarm.Enabled ? 1 : 0;
        const std::size_t address = AlarmTimeAddress + i * AlarmStride;
        memory[address] = Bcd(alarm.Second);
        memory[address + 1] = Bcd(alarm.Minute);
        memory[address + 2] = Bcd(alarm.Hour);
        memory[address + 3] = AlarmMark;
    }
}

void WriteFlow(const FlowSettings& flow, std::span<std::uint8_t> block) {
    block[0] = ByteOf(flow.Mode);
    PutNumber(block, 1, flow.ManningsN);
    PutNumber(block, 4, flow.ManningsS);
    block[7] = flow.ManningsSPercent ? 1 : 0;
    PutNumber(block, 8, flow.ManningsD);
    block[11] = ByteOf(flow.ManningsDType);
    PutText(block, 12, TagSize, flow.FlumeTag);
    PutText(block, 20, TagSize, flow.WeirTag);
    PutNumber(block, 28, flow.LevelOffset);
    block[31] = ByteOf(flow.LevelOffsetType);
    block[32] = ByteOf(flow.FlowUnits);
    PutNumber(block, 33, flow.FlowTop);
    block[36] = ByteOf(flow.VelUnits);
    PutNumber(block, 37, flow.VelTop);
    PutText(block, 40, PathSize, flow.TablePath);
}

}  // namespace

void WriteSettings(const LoggerSettings& settings, std::span<std::uint8_t> memory) {
    PutText(memory, NameAddress, NameSize, settings.Name);
    PutU16(memory, IntervalCountAddress, settings.IntervalCount);
    memory[IntervalUnitAddress] = ByteOf(settings.Interval);
    memory[WrapAndBaudAddress] = ByteOf(settings.FixedBaudRate * 2 + (settings.WrapAround ? 1 : 0));
    PutU16(memory, WarmupAddress, settings.WarmupMilliseconds);
    memory[EnableSodAddress] = ByteOf(settings.EnableSod);
    memory[LoggingStyleAddress] = ByteOf(settings.LoggingStyle);
    PutU16(memory, DeadbandAddress, settings.Deadband);
    WriteChannels(settings, memory);
    WriteAlarms(settings, memory);
    if (!settings.FlowNeverWritten) {
        WriteFlow(settings.Flow, memory.subspan(FlowAddress, FlowSize));
    }
}

}  // namespace simulator
