#include "console/signal_trail.h"

#include <algorithm>

#include "common/number_text.h"
#include "console/signal_level.h"

void SignalTrail::Add(const Reading& reading) {
    if (!readings_.empty() && reading.Time < readings_.back().Time) {
        readings_.clear();
    }
    readings_.push_back(reading);
    while (reading.Time - readings_.front().Time > Length) {
        readings_.pop_front();
    }
}

std::optional<SignalTrail::Reading> SignalTrail::Best() const {
    std::optional<Reading> best;
    for (const Reading& reading : readings_) {
        if (reading.DBm && (!best || *reading.DBm >= *best->DBm)) {
            best = reading;
        }
    }
    return best;
}

bool SignalTrail::NewestIsBest() const {
    const auto best = Best();
    return best && *best == readings_.back();
}

std::string SignalTrail::BestText() const {
    const auto best = Best();
    if (!best) {
        return "Best: " + LevelText(std::nullopt);
    }
    constexpr std::int64_t MillisecondsOfASecond = 1000;
    const std::int64_t age = (readings_.back().Time - best->Time) / MillisecondsOfASecond;
    return "Best: " + LevelText(best->DBm) + ", " +
           (age == 0 ? std::string("now") : IntegerToText(age) + " s ago");
}

TrailPlace PlaceOf(const SignalTrail::Reading& reading, std::int64_t newest) {
    const auto age = static_cast<double>(newest - reading.Time);
    const double height = static_cast<double>(BarLength(reading.DBm)) / BarMaximum;
    return {std::clamp(1 - age / static_cast<double>(SignalTrail::Length), 0.0, 1.0), 1 - height};
}
