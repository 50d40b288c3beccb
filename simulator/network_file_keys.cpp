#include "simulator/network_file_keys.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "simulator/random.h"
#include "simulator/signal_text.h"
#include "simulator/text.h"

namespace simulator {

namespace {

/// What a value is put into: everything that the keys read so far have made.
struct Target {
    NetworkDescription& Network;

    [[nodiscard]] LoggerSetup& Logger() const { return Network.Loggers.back(); }
    [[nodiscard]] LoggerSettings& Settings() const { return Logger().Settings; }
    [[nodiscard]] AnalogSettings& Analog() const { return Settings().Analog.back(); }
    [[nodiscard]] PulseSettings& Pulse() const { return Settings().Pulse.back(); }
    [[nodiscard]] FlowSettings& Flow() const { return Settings().Flow; }
};

/// Takes the value; false if it is not of the key's form.
using Setter = bool (*)(const Target& target, std::string_view value);

struct Key {
    std::string_view Name;
    std::string_view Form;  ///< the form of its value, for the message
    Setter Set;
};

// ----- values

constexpr double LargestNumber = 999999;

template <typename Integer>
bool TakeInteger(std::string_view text, std::int64_t low, std::int64_t high, Integer& out) {
    const auto number = IntegerOf(text, low, high);
    if (number) {
        out = static_cast<Integer>(*number);
    }
    return number.has_value();
}

bool TakeNumber(std::string_view text, double& out) {
    const auto number = NumberOf(text);
    if (!number || std::fabs(*number) > LargestNumber) {
        return false;
    }
    out = *number;
    return true;
}

bool TakeTwoNumbers(std::string_view text, double& first, double& second) {
    const auto words = Words(text);
    return words.size() == 2 && TakeNumber(words[0], first) && TakeNumber(words[1], second);
}

bool TakeFlag(std::string_view text, bool& out) {
    out = text == "yes";
    return out || text == "no";
}

template <std::size_t Count>
bool TakeName(std::string_view text, const std::array<std::string_view, Count>& names, auto& out) {
    const auto found = std::find(names.begin(), names.end(), text);
    if (found == names.end()) {
        return false;
    }
    out = static_cast<std::remove_reference_t<decltype(out)>>(found - names.begin());
    return true;
}

bool TakeText(std::string_view text, std::size_t longest, std::string& out) {
    const bool printable =
        std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
    out = text;
    return printable && !text.empty() && text.size() <= longest;
}

constexpr std::array<std::string_view, 4> LengthNames = {"feet", "inches", "meters", "cm"};

/// "12 inches".
bool TakeLength(std::string_view text, double& out, LengthUnit& unit) {
    const auto words = Words(text);
    return words.size() == 2 && TakeNumber(words[0], out) && TakeName(words[1], LengthNames, unit);
}

/// "15 minutes"; both forms of the word will do.
bool TakeInterval(std::string_view text, LoggerSettings& settings) {
    constexpr std::array<std::string_view, 4> names = {"second", "minute", "hour", "day"};
    const auto words = Words(text);
    if (words.size() != 2 || words[1].empty()) {
        return false;
    }
    const bool plural = words[1].back() == 's';
    return TakeInteger(words[0], 1, 65535, settings.IntervalCount) &&
           TakeName(words[1].substr(0, words[1].size() - (plural ? 1 : 0)), names,
                    settings.Interval);
}

/// "8:30:00".
bool TakeClockTime(std::string_view text, int& hour, int& minute, int& second) {
    const auto first = SplitAt(text, ':');
    const auto rest = first ? SplitAt(first->Second, ':') : std::nullopt;
    return rest && TakeInteger(first->First, 0, 23, hour) &&
           TakeInteger(rest->First, 0, 59, minute) && TakeInteger(rest->Second, 0, 59, second);
}

bool TakeAlarm(std::string_view text, AlarmSettings& alarm) {
    alarm.Enabled = true;
    return TakeClockTime(text, alarm.Hour, alarm.Minute, alarm.Second);
}

/// "2024-03-05 08:00:00", or "now".
bool TakeStart(std::string_view text, std::optional<CivilSeconds>& out) {
    out.reset();
    if (text == "now") {
        return true;
    }
    const auto halves = SplitAt(text, ' ');
    const auto year = halves ? SplitAt(halves->First, '-') : std::nullopt;
    const auto month = year ? SplitAt(year->Second, '-') : std::nullopt;
    CivilTime time;
    if (!month || !TakeInteger(year->First, 2000, 2084, time.Year) ||
        !TakeInteger(month->First, 1, 12, time.Month) ||
        !TakeInteger(month->Second, 1, 31, time.Day) ||
        !TakeClockTime(halves->Second, time.Hour, time.Minute, time.Second) || !IsCivilTime(time)) {
        return false;
    }
    out = ToSeconds(time);
    return true;
}

bool TakeChannel(std::string_view text, std::uint8_t& out) {
    const auto bytes = HexBytesOf(text);
    const bool good = bytes && bytes->size() == 1;
    out = good ? bytes->front() : out;
    return good;
}

bool TakeMac(std::string_view text, std::array<std::uint8_t, 6>& out) {
    const auto bytes = HexBytesOf(text);
    if (!bytes || bytes->size() != out.size()) {
        return false;
    }
    std::copy(bytes->begin(), bytes->end(), out.begin());
    return true;
}

/// "0.1:0.05 0.5:1.2", levels in feet ascending, flows in cubic feet per second.
bool TakePoints(std::string_view text, std::vector<RatingPoint>& points) {
    points.clear();
    for (const std::string_view word : Words(text)) {
        const auto parts = SplitAt(word, ':');
        RatingPoint point;
        if (!parts || !TakeNumber(parts->First, point.Level) ||
            !TakeNumber(parts->Second, point.Flow) ||
            (!points.empty() && point.Level <= points.back().Level)) {
            return false;
        }
        points.push_back(point);
    }
    return points.size() >= 2;
}

bool TakeRating(std::string_view text, SiteRating& rating) {
    const auto words = Words(text);
    return words.size() == 3 && TakeNumber(words[0], rating.Offset) &&
           TakeNumber(words[1], rating.Exponent) && TakeNumber(words[2], rating.Multiplier);
}

/// "1 percent", or "0.01" for rise over run.
bool TakeSlope(std::string_view text, FlowSettings& flow) {
    const auto words = Words(text);
    flow.ManningsSPercent = words.size() == 2 && words[1] == "percent";
    return !words.empty() && words.size() == (flow.ManningsSPercent ? 2U : 1U) &&
           TakeNumber(words[0], flow.ManningsS);
}

bool TakeMethod(std::string_view text, LoggerSettings& settings) {
    constexpr std::array<std::string_view, 6> names = {"none", "manning", "flume",
                                                       "weir", "table",   "never-written"};
    std::size_t method = 0;
    if (!TakeName(text, names, method)) {
        return false;
    }
    settings.FlowNeverWritten = method == names.size() - 1;
    settings.Flow.Mode = settings.FlowNeverWritten ? FlowMode::None : static_cast<FlowMode>(method);
    return true;
}

bool TakeTag(std::string_view text, FlowSettings& flow) {
    return TakeText(text, 8, flow.Mode == FlowMode::Weir ? flow.WeirTag : flow.FlumeTag);
}

bool TakeSignal(std::string_view text, const Target& target, std::vector<SignalPtr>& signals,
                std::size_t channel, std::size_t slot) {
    const std::uint64_t seed = target.Network.Seed;
    const SignalReading reading =
        ParseSignal(text, seed, Mixed(seed, target.Network.Loggers.size() * 16 + slot));
    signals.resize(channel + 1);
    signals[channel] = reading.Signal;
    return reading.Signal != nullptr;
}

// ----- keys

constexpr std::array NetworkKeys = {
    Key{"start", "year-month-day hour:minute:second, or now",
        [](const Target& t, std::string_view v) { return TakeStart(v, t.Network.Start); }},
    Key{"baud", "0 to 921600",
        [](const Target& t, std::string_view v) {
            return TakeInteger(v, 0, 921600, t.Network.Baud);
        }},
    Key{"system-id", "0 to 255",
        [](const Target& t, std::string_view v) {
            return TakeInteger(v, 0, 255, t.Network.SystemId);
        }},
    Key{"seed", "a whole number from 0",
        [](const Target& t, std::string_view v) {
            return TakeInteger(v, 0, INT64_MAX, t.Network.Seed);
        }},
};

constexpr std::array LoggerKeys = {
    Key{"name", "1 to 32 characters",
        [](const Target& t, std::string_view v) { return TakeText(v, 32, t.Settings().Name); }},
    Key{"channel", "two hexadecimal digits",
        [](const Target& t, std::string_view v) { return TakeChannel(v, t.Logger().Channel); }},
    Key{"mac", "twelve hexadecimal digits",
        [](const Target& t, std::string_view v) { return TakeMac(v, t.Logger().Mac); }},
    Key{"interval", "a count and second, minute, hour or day",
        [](const Target& t, std::string_view v) { return TakeInterval(v, t.Settings()); }},
    Key{"records", "0 to 1000000",
        [](const Target& t, std::string_view v) {
            return TakeInteger(v, 0, 1000000, t.Logger().HistoryRecords);
        }},
    Key{"reported-records", "0 to 16777215",
        [](const Target& t, std::string_view v) {
            return TakeInteger(v, 0, 0xFFFFFF, t.Logger().ReportedSamples.emplace());
        }},
    Key{"firmware", "0 to 255",
        [](const Target& t, std::string_view v) {
            return TakeInteger(v, 0, 255, t.Logger().FirmwareVersion);
        }},
    Key{"sod", "yes or no",
        [](const Target& t, std::string_view v) { return TakeFlag(v, t.Logger().SodAvailable); }},
    Key{"clock", "24 or 12",
        [](const Target& t, std::string_view v) {
            constexpr std::array<std::string_view, 2> forms = {"24", "12"};
            return TakeName(v, forms, t.Logger().Clock);
        }},
    Key{"clock-ahead", "seconds, -86400 to 86400",
        [](const Target& t, std::string_view v) {
            return TakeInteger(v, -86400, 86400, t.Logger().ClockOffset);
        }},
    Key{"logging", "yes or no",
        [](const Target& t, std::string_view v) { return TakeFlag(v, t.Logger().Logging); }},
    Key{"warm-up", "milliseconds, 0 to 65535",
        [](const Target& t, std::string_view v) {
            return TakeInteger(v, 0, 65535, t.Settings().WarmupMilliseconds);
        }},
    Key{"sample-delay", "milliseconds, 0 to 60000",
        [](const Target& t, std::string_view v) {
            Microseconds milliseconds = 0;
            const bool good = TakeInteger(v, 0, 60000, milliseconds);
            t.Logger().SampleDelay = good ? milliseconds * Millisecond : t.Logger().SampleDelay;
            return good;
        }},
    Key{"signal", "0 to 255",
        [](const Target& t, std::string_view v) {
            return TakeInteger(v, 0, 255, t.Logger().Signal);
        }},
    Key{"signal-swing", "0 to 255",
        [](const Target& t, std::string_view v) {
            return TakeInteger(v, 0, 255, t.Logger().SignalSwing);
        }},
    Key{"wrap-around", "yes or no",
        [](const Target& t, std::string_view v) { return TakeFlag(v, t.Settings().WrapAround); }},
    Key{"fixed-baud", "0 to 127",
        [](const Target& t, std::string_view v) {
            return TakeInteger(v, 0, 127, t.Settings().FixedBaudRate);
        }},
    Key{"style", "0 to 255",
        [](const Target& t, std::string_view v) {
            return TakeInteger(v, 0, 255, t.Settings().LoggingStyle);
        }},
    Key{"deadband", "0 to 65535",
        [](const Target& t, std::string_view v) {
            return TakeInteger(v, 0, 65535, t.Settings().Deadband);
        }},
    Key{"alarm-1", "hour:minute:second",
        [](const Target& t, std::string_view v) { return TakeAlarm(v, t.Settings().Alarms[0]); }},
    Key{"alarm-2", "hour:minute:second",
        [](const Target& t, std::string_view v) { return TakeAlarm(v, t.Settings().Alarms[1]); }},
};

constexpr std::array AnalogKeys = {
    Key{"units", "1 to 9 characters",
        [](const Target& t, std::string_view v) { return TakeText(v, 9, t.Analog().Units); }},
    Key{"enabled", "yes or no",
        [](const Target& t, std::string_view v) { return TakeFlag(v, t.Analog().Enabled); }},
    Key{"decimals", "0 to 6",
        [](const Target& t, std::string_view v) {
            return TakeInteger(v, 0, 6, t.Analog().Decimals);
        }},
    Key{"raw", "two counts, 0 to 65535",
        [](const Target& t, std::string_view v) {
            const auto words = Words(v);
            return words.size() == 2 && TakeInteger(words[0], 0, 65535, t.Analog().RawLower) &&
                   TakeInteger(words[1], 0, 65535, t.Analog().RawUpper);
        }},
    Key{"limits", "two numbers",
        [](const Target& t, std::string_view v) {
            return TakeTwoNumbers(v, t.Analog().LowerLimit, t.Analog().UpperLimit);
        }},
    Key{"display", "two numbers",
        [](const Target& t, std::string_view v) {
            return TakeTwoNumbers(v, t.Analog().DisplayBottom, t.Analog().DisplayTop);
        }},
    Key{"signal", "a kind of signal and its numbers",
        [](const Target& t, std::string_view v) {
            const std::size_t channel = t.Settings().Analog.size() - 1;
            return TakeSignal(v, t, t.Logger().AnalogSignals, channel, channel);
        }},
};

constexpr std::array PulseKeys = {
    Key{"units", "1 to 9 characters",
        [](const Target& t, std::string_view v) { return TakeText(v, 9, t.Pulse().Units); }},
    Key{"enabled", "yes or no",
        [](const Target& t, std::string_view v) { return TakeFlag(v, t.Pulse().Enabled); }},
    Key{"decimals", "0 to 6",
        [](const Target& t, std::string_view v) {
            return TakeInteger(v, 0, 6, t.Pulse().Decimals);
        }},
    Key{"per-pulse", "a number",
        [](const Target& t, std::string_view v) { return TakeNumber(v, t.Pulse().UnitsPerPulse); }},
    Key{"signal", "a kind of signal and its numbers",
        [](const Target& t, std::string_view v) {
            const std::size_t channel = t.Settings().Pulse.size() - 1;
            return TakeSignal(v, t, t.Logger().PulseSignals, channel, 8 + channel);
        }},
};

constexpr std::array FlowKeys = {
    Key{"method", "none, manning, flume, weir, table or never-written",
        [](const Target& t, std::string_view v) { return TakeMethod(v, t.Settings()); }},
    Key{"roughness", "a number",
        [](const Target& t, std::string_view v) { return TakeNumber(v, t.Flow().ManningsN); }},
    Key{"slope", "a number, with or without percent",
        [](const Target& t, std::string_view v) { return TakeSlope(v, t.Flow()); }},
    Key{"diameter", "a number and feet, inches, meters or cm",
        [](const Target& t, std::string_view v) {
            return TakeLength(v, t.Flow().ManningsD, t.Flow().ManningsDType);
        }},
    Key{"tag", "1 to 8 characters, behind the method",
        [](const Target& t, std::string_view v) { return TakeTag(v, t.Flow()); }},
    Key{"table", "1 to 128 characters",
        [](const Target& t, std::string_view v) { return TakeText(v, 128, t.Flow().TablePath); }},
    Key{"offset", "a number and feet, inches, meters or cm",
        [](const Target& t, std::string_view v) {
            return TakeLength(v, t.Flow().LevelOffset, t.Flow().LevelOffsetType);
        }},
    Key{"unit", "CFS, GPM, MGD, CMS or LPS",
        [](const Target& t, std::string_view v) {
            constexpr std::array<std::string_view, 5> names = {"CFS", "GPM", "MGD", "CMS", "LPS"};
            return TakeName(v, names, t.Flow().FlowUnits);
        }},
    Key{"top", "a number",
        [](const Target& t, std::string_view v) { return TakeNumber(v, t.Flow().FlowTop); }},
    Key{"velocity-unit", "FPS or MPS",
        [](const Target& t, std::string_view v) {
            constexpr std::array<std::string_view, 2> names = {"FPS", "MPS"};
            return TakeName(v, names, t.Flow().VelUnits);
        }},
    Key{"velocity-top", "a number",
        [](const Target& t, std::string_view v) { return TakeNumber(v, t.Flow().VelTop); }},
    Key{"rating", "offset, exponent and multiplier",
        [](const Target& t, std::string_view v) { return TakeRating(v, t.Logger().Rating); }},
    Key{"points", "two or more of level:flow, levels ascending",
        [](const Target& t, std::string_view v) {
            return TakePoints(v, t.Logger().Rating.Points);
        }},
};

std::span<const Key> KeysOf(FileSection section) {
    switch (section) {
        case FileSection::Network:
            return NetworkKeys;
        case FileSection::Logger:
            return LoggerKeys;
        case FileSection::Analog:
            return AnalogKeys;
        case FileSection::Pulse:
            return PulseKeys;
        case FileSection::Flow:
            return FlowKeys;
        case FileSection::None:
            break;
    }
    return {};
}

}  // namespace

FileSection SectionNamed(std::string_view name) {
    constexpr std::array<std::string_view, 5> names = {"network", "logger", "analog", "pulse",
                                                       "flow"};
    const auto found = std::find(names.begin(), names.end(), name);
    return found == names.end() ? FileSection::None
                                : static_cast<FileSection>(found - names.begin() + 1);
}

std::string ApplyKey(NetworkDescription& network, FileSection section, std::string_view key,
                     std::string_view value) {
    const std::span<const Key> keys = KeysOf(section);
    const auto found = std::find_if(keys.begin(), keys.end(),
                                    [key](const Key& entry) { return entry.Name == key; });
    if (found == keys.end()) {
        return "no key \"" + std::string(key) + "\" in this section";
    }
    if (!found->Set(Target{network}, value)) {
        return std::string(key) + " must be " + std::string(found->Form);
    }
    return {};
}

}  // namespace simulator
