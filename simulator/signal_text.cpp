#include "simulator/signal_text.h"

#include <algorithm>
#include <array>
#include <span>
#include <vector>

#include "simulator/text.h"

namespace simulator {

namespace {

constexpr double SecondsPerHour = 3600;
constexpr std::size_t MostParameters = 4;

/// A number of a kind of signal, with its usual value and its range.
struct Parameter {
    std::string_view Name;
    double Usual = 0;
    double Low = -999999;
    double High = 999999;
};

constexpr Parameter Noise = {"noise", 0, 0, 999999};
constexpr double ShortestPeriod = 0.001;
constexpr double LongestPeriod = 100000;

using Values = std::array<double, MostParameters>;

struct Kind {
    std::string_view Name;
    std::array<Parameter, MostParameters> Parameters;  ///< unused ones have no name
    SignalPtr (*Make)(const Values& values, std::uint64_t weatherSeed);
};

const std::array<Kind, 6> Kinds = {{
    {"constant",
     {{{"value", 0}}},
     [](const Values& v, std::uint64_t) { return ConstantSignal(v[0]); }},
    {"sine",
     {{{"mean", 50}, {"swing", 10}, {"hours", 24, ShortestPeriod, LongestPeriod}}},
     [](const Values& v, std::uint64_t) { return SineSignal(v[0], v[1], v[2] * SecondsPerHour); }},
    {"tank",
     {{{"low", 2}, {"high", 18}, {"hours", 24, ShortestPeriod, LongestPeriod}}},
     [](const Values& v, std::uint64_t) { return TankSignal(v[0], v[1], v[2] * SecondsPerHour); }},
    {"level",
     {{{"base", 1}, {"day", 0.1}, {"storm", 1}, {"recession", 8, 0.1, 240}}},
     [](const Values& v, std::uint64_t weather) {
         return LevelSignal({v[0], v[1], v[2], v[3]}, weather);
     }},
    {"rain",
     {{{"depth", 10, 0, 999999}}},
     [](const Values& v, std::uint64_t weather) { return RainSignal(v[0], weather); }},
    {"battery",
     {{{"low", 11.9}, {"high", 13.6}}},
     [](const Values& v, std::uint64_t) { return BatterySignal(v[0], v[1]); }},
}};

/// Puts "name=number" where it belongs; false if it belongs nowhere or is out of range.
bool TakeParameter(std::string_view word, std::span<const Parameter> parameters, Values& values,
                   double& noise) {
    const auto parts = SplitAt(word, '=');
    const auto number = parts ? NumberOf(parts->Second) : std::nullopt;
    if (!number) {
        return false;
    }
    const auto fits = [&](const Parameter& parameter) {
        return parameter.Name == parts->First && *number >= parameter.Low &&
               *number <= parameter.High;
    };
    if (fits(Noise)) {
        noise = *number;
        return true;
    }
    const auto found = std::find_if(parameters.begin(), parameters.end(), fits);
    if (found == parameters.end() || parts->First.empty()) {
        return false;
    }
    values[static_cast<std::size_t>(found - parameters.begin())] = *number;
    return true;
}

}  // namespace

SignalReading ParseSignal(std::string_view text, std::uint64_t weatherSeed,
                          std::uint64_t noiseSeed) {
    const std::vector<std::string_view> words = Words(text);
    const auto kind = std::find_if(Kinds.begin(), Kinds.end(), [&](const Kind& candidate) {
        return !words.empty() && candidate.Name == words.front();
    });
    if (kind == Kinds.end()) {
        return {nullptr, "no such kind of signal"};
    }
    Values values{};
    std::transform(kind->Parameters.begin(), kind->Parameters.end(), values.begin(),
                   [](const Parameter& parameter) { return parameter.Usual; });
    double noise = 0;
    for (const std::string_view word : std::span(words).subspan(1)) {
        if (!TakeParameter(word, kind->Parameters, values, noise)) {
            return {nullptr, "\"" + std::string(word) + "\" is no number of this signal"};
        }
    }
    SignalPtr signal = kind->Make(values, weatherSeed);
    return {noise > 0 ? NoisySignal(std::move(signal), noise, noiseSeed) : signal, {}};
}

}  // namespace simulator
