#include "simulator/logger.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace simulator {

namespace {

constexpr std::size_t MemorySize = 0x10000;
constexpr std::uint8_t NeverWritten = 0xFF;

constexpr std::uint16_t LoggingBit = 0x0080;
constexpr std::uint16_t WaitingBit = 0x0800;
constexpr std::uint16_t UntilAlarmBit = 0x1000;
constexpr std::uint16_t StoppedBit = 0x2000;

constexpr std::size_t LargestBlock = 240;

}  // namespace

Logger::Logger(LoggerSetup setup, CivilSeconds start)
    : setup_(std::move(setup)),
      start_(start),
      memory_(MemorySize, NeverWritten),
      clock_(start + setup_.ClockOffset),
      logging_(setup_.Logging) {
    WriteSettings(setup_.Settings, memory_);
    BeginFirstRun();
}

SiteSeconds Logger::TrueTime(Microseconds now) const {
    return static_cast<SiteSeconds>(start_) +
           static_cast<SiteSeconds>(now) / static_cast<SiteSeconds>(Second);
}

CivilSeconds Logger::ClockAt(Microseconds now) const {
    return clock_ + (now - clockSet_) / Second;
}

double Logger::AnalogAt(std::size_t channel, SiteSeconds time) const {
    const AnalogSettings& settings = setup_.Settings.Analog[channel];
    if (channel < setup_.AnalogSignals.size() && setup_.AnalogSignals[channel]) {
        return setup_.AnalogSignals[channel]->ValueAt(time);
    }
    return (settings.LowerLimit + settings.UpperLimit) / 2;
}

/// The sensor's own scale: what the logger is programmed with later does not change it.
std::uint16_t Logger::RawAt(std::size_t channel, SiteSeconds time) const {
    const AnalogSettings& scale = setup_.Settings.Analog[channel];
    const double span = scale.UpperLimit - scale.LowerLimit;
    const double fraction = span == 0 ? 0 : (AnalogAt(channel, time) - scale.LowerLimit) / span;
    const double raw = scale.RawLower + fraction * (scale.RawUpper - scale.RawLower);
    // A value too large for its scale, over two raw counts that are alike, is no number.
    return std::isnan(raw) ? scale.RawLower
                           : static_cast<std::uint16_t>(std::clamp(std::round(raw), 0.0, 65535.0));
}

/// What has run through since the counter last went back to 0.
double Logger::PulseAmountAt(std::size_t channel, SiteSeconds time) const {
    const bool wired = channel < setup_.PulseSignals.size() && setup_.PulseSignals[channel];
    if (!wired) {
        return 0;
    }
    SiteSeconds reset = pulseResets_.front();
    for (const SiteSeconds moment : pulseResets_) {
        reset = moment <= time ? moment : reset;
    }
    const Signal& signal = *setup_.PulseSignals[channel];
    return std::max(signal.ValueAt(time) - signal.ValueAt(reset), 0.0);
}

std::uint16_t Logger::PulsesAt(std::size_t channel, SiteSeconds time) const {
    const double unit = setup_.Settings.Pulse[channel].UnitsPerPulse;
    // A sum of small steps may stand a hair below the whole pulse that it makes.
    constexpr double hair = 1e-6;
    const double pulses = unit > 0 ? std::floor(PulseAmountAt(channel, time) / unit + hair) : 0;
    // The counter has 16 bits and goes over from 65535 to 0.
    return std::isfinite(pulses) ? static_cast<std::uint16_t>(std::fmod(pulses, 65536)) : 0;
}

double Logger::TrueValue(std::size_t analogChannel, Microseconds now) const {
    return AnalogAt(analogChannel, TrueTime(now));
}

double Logger::TruePulseAmount(std::size_t pulseChannel, Microseconds now) const {
    return PulseAmountAt(pulseChannel, TrueTime(now));
}

std::uint16_t Logger::RawCount(std::size_t analogChannel, Microseconds now) const {
    return RawAt(analogChannel, TrueTime(now));
}

std::uint16_t Logger::PulseCount(std::size_t pulseChannel, Microseconds now) const {
    return PulsesAt(pulseChannel, TrueTime(now));
}

Flow Logger::TrueFlowNow(Microseconds now) const {
    return TrueFlow(setup_.Settings.Flow, setup_.Rating, TrueValue(0, now),
                    setup_.Settings.Analog.front().Units);
}

void Logger::SetAnalogSignal(std::size_t analogChannel, SignalPtr signal) {
    if (setup_.AnalogSignals.size() <= analogChannel) {
        setup_.AnalogSignals.resize(analogChannel + 1);
    }
    setup_.AnalogSignals[analogChannel] = std::move(signal);
}

std::uint8_t Logger::SignalAt(Microseconds now) const {
    constexpr double minute = 60.0 * static_cast<double>(Second);
    const double turn = 2 * std::numbers::pi * static_cast<double>(now) / minute;
    const double strength = setup_.Signal + setup_.SignalSwing * std::sin(turn);
    return static_cast<std::uint8_t>(std::clamp(std::round(strength), 0.0, 255.0));
}

std::uint32_t Logger::RecordsAt(Microseconds now) const {
    return history_.Count(ClockAt(now));
}

Microseconds Logger::RecordMoment(std::uint32_t index) const {
    // A million records, each tens of thousands of days behind the other, reach back further than
    // the engine counts; whoever adds to the moment still has room.
    constexpr SiteSeconds farthest = 9e12;
    const SiteSeconds since = std::clamp(
        history_.TimesOf(index).Taken - static_cast<SiteSeconds>(start_), -farthest, farthest);
    return static_cast<Microseconds>(std::llround(since * static_cast<SiteSeconds>(Second)));
}

std::optional<Microseconds> Logger::SampleMoment(Microseconds now) const {
    return sampleTaken_ && *sampleTaken_ <= now ? sampleTaken_ : std::nullopt;
}

std::uint16_t Logger::StatusWordAt(Microseconds now) const {
    if (setup_.StatusWord) {
        return *setup_.StatusWord;
    }
    if (!logging_) {
        return 0;
    }
    const CivilSeconds clock = ClockAt(now);
    if (clock < logFrom_) {
        return LoggingBit | WaitingBit;
    }
    if (!logUntil_) {
        return LoggingBit;
    }
    return LoggingBit | (clock < *logUntil_ ? UntilAlarmBit : StoppedBit);
}

Bytes Logger::Record(std::uint32_t index) const {
    const RecordTimes times = history_.TimesOf(index);
    const auto packed = PackTime(FromSeconds(times.Stamp));
    Bytes record(packed.size() + 2 * (AnalogChannels() + PulseChannels()));
    std::copy(packed.begin(), packed.end(), record.begin());
    std::size_t at = packed.size();
    for (std::size_t channel = 0; channel < AnalogChannels(); ++channel, at += 2) {
        PutU16(record, at, RawAt(channel, times.Taken));
    }
    for (std::size_t channel = 0; channel < PulseChannels(); ++channel, at += 2) {
        PutU16(record, at, PulsesAt(channel, times.Taken));
    }
    return record;
}

/// As many records as fit, behind their count; what is left of the block is FF.
Bytes Logger::NextBlock(Microseconds now) {
    const std::size_t size = 4 + 2 * (AnalogChannels() + PulseChannels());
    const std::uint32_t stored = RecordsAt(now);
    const auto fit = static_cast<std::uint32_t>(LargestBlock / size);
    const std::uint32_t count = std::min(fit, stored - std::min(nextRecord_, stored));
    Bytes block = {static_cast<std::uint8_t>(count)};
    for (std::uint32_t i = 0; i < count; ++i) {
        const Bytes record = Record(nextRecord_ + i);
        block.insert(block.end(), record.begin(), record.end());
    }
    nextRecord_ += count;
    block.resize(1 + LargestBlock, NeverWritten);
    return block;
}

/// Packed time, eight analog slots, two pulse slots. The last analog channel stands in slot 7,
/// slots without a channel hold FFFF.
Bytes Logger::SampleFrame(Microseconds taken) const {
    constexpr std::size_t analogSlots = 8;
    constexpr std::size_t pulseSlots = 2;
    const auto packed = PackTime(FromSeconds(ClockAt(taken)));
    Bytes frame(packed.size() + 2 * (analogSlots + pulseSlots), NeverWritten);
    std::copy(packed.begin(), packed.end(), frame.begin());
    const auto slot = [&](std::size_t i) { return packed.size() + 2 * i; };
    for (std::size_t channel = 0; channel < AnalogChannels(); ++channel) {
        const bool last = channel + 1 == AnalogChannels();
        if (!last || channel == 0) {
            PutU16(frame, slot(channel), RawCount(channel, taken));
        }
        if (last) {
            PutU16(frame, slot(analogSlots - 1), RawCount(channel, taken));
        }
    }
    for (std::size_t channel = 0; channel < PulseChannels(); ++channel) {
        PutU16(frame, slot(analogSlots + channel), PulseCount(channel, taken));
    }
    return frame;
}

CivilSeconds Logger::IntervalSeconds() const {
    constexpr std::array<CivilSeconds, 4> units = {1, 60, 3600, SecondsPerDay};
    const std::uint8_t unit = memory_[IntervalUnitAddress];
    const CivilSeconds count = std::max<CivilSeconds>(GetU16(memory_, IntervalCountAddress), 1);
    return count * units[std::min<std::size_t>(unit, units.size() - 1)];
}

/// The clock's next moment of that alarm, behind `after`; nothing if the alarm is off.
std::optional<CivilSeconds> Logger::NextAlarm(std::size_t alarm, CivilSeconds after) const {
    if (memory_[AlarmEnableAddress + alarm] == 0) {
        return std::nullopt;
    }
    const std::size_t address = AlarmTimeAddress + 4 * alarm;
    const CivilSeconds seconds = FromBcdByte(memory_[address]).value_or(0) +
                                 FromBcdByte(memory_[address + 1]).value_or(0) * 60 +
                                 FromBcdByte(memory_[address + 2]).value_or(0) * 3600;
    const CivilSeconds moment = after / SecondsPerDay * SecondsPerDay + seconds;
    return moment > after ? moment : moment + SecondsPerDay;
}

void Logger::BeginFirstRun() {
    const CivilSeconds interval = IntervalSeconds();
    const CivilSeconds last = clock_ - clock_ % interval;
    const auto earlier = static_cast<CivilSeconds>(setup_.HistoryRecords) - 1;
    History::Run run;
    run.Interval = interval;
    run.First = last - earlier * interval;
    run.Shift = static_cast<SiteSeconds>(clock_ - start_);
    pulseResets_ = {static_cast<SiteSeconds>(std::min(run.First, clock_)) - run.Shift};
    history_.Begin(clock_, run);
    if (!logging_) {
        history_.End(clock_);
    }
}

void Logger::BeginRun(Microseconds now, CivilSeconds earliest, std::optional<CivilSeconds> until) {
    const CivilSeconds clock = ClockAt(now);
    logFrom_ = earliest;
    logUntil_ = until;
    History::Run run;
    run.Interval = IntervalSeconds();
    run.First = (std::max(clock, earliest) / run.Interval + 1) * run.Interval;
    run.Shift = static_cast<SiteSeconds>(clock) - std::floor(TrueTime(now));
    run.Until = until;
    history_.Begin(clock, run);
}

}  // namespace simulator
