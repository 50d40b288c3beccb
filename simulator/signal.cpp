#include "simulator/signal.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

#include "simulator/random.h"

namespace simulator {

namespace {

constexpr double Hour = 3600.0;
constexpr double Day = 24 * Hour;
constexpr double TwoPi = 2 * std::numbers::pi;

/// Part of the period that has passed, 0 to just below 1.
double Phase(SiteSeconds time, double period) {
    const double turns = time / period;
    return turns - std::floor(turns);
}

class Constant : public Signal {
 public:
    explicit Constant(double value) : value_(value) {}
    [[nodiscard]] double ValueAt(SiteSeconds) const override { return value_; }

 private:
    double value_;
};

class Sine : public Signal {
 public:
    Sine(double mean, double swing, double period) : mean_(mean), swing_(swing), period_(period) {}
    [[nodiscard]] double ValueAt(SiteSeconds time) const override {
        return mean_ + swing_ * std::sin(TwoPi * Phase(time, period_));
    }

 private:
    double mean_;
    double swing_;
    double period_;
};

class Tank : public Signal {
 public:
    Tank(double low, double high, double period) : low_(low), high_(high), period_(period) {}
    [[nodiscard]] double ValueAt(SiteSeconds time) const override {
        constexpr double draining = 0.9;
        const double phase = Phase(time, period_);
        const double full =
            phase < draining ? 1 - phase / draining : (phase - draining) / (1 - draining);
        return low_ + (high_ - low_) * full;
    }

 private:
    double low_;
    double high_;
    double period_;
};

/// The storm of a day, if it has one.
struct Storm {
    SiteSeconds Start = 0;
    double Duration = 1;  ///< seconds
    double Strength = 0;  ///< 1 on average, 0 for a dry day
};

/// A third of all days has a storm, which starts on that day and lasts 1 to 5 hours.
Storm StormOf(std::uint64_t seed, std::int64_t day) {
    constexpr double wetDays = 1.0 / 3;
    const auto index = static_cast<std::uint64_t>(day) * 4;
    Storm storm;
    storm.Start = static_cast<double>(day) * Day + MixedFraction(seed, index + 1) * Day;
    storm.Duration = Hour * (1 + 4 * MixedFraction(seed, index + 2));
    if (MixedFraction(seed, index) < wetDays) {
        storm.Strength = 0.2 + 1.6 * MixedFraction(seed, index + 3);
    }
    return storm;
}

class Level : public Signal {
 public:
    Level(const LevelShape& shape, std::uint64_t seed) : shape_(shape), seed_(seed) {}

    [[nodiscard]] double ValueAt(SiteSeconds time) const override {
        constexpr double highest = 9 * Hour;
        double level = shape_.Base + shape_.Day * std::cos(TwoPi * Phase(time - highest, Day));
        const double recession = shape_.RecessionHours * Hour;
        // Behind ten recessions a storm has no more than 1/20000 of its rise left.
        const auto reach = static_cast<std::int64_t>(std::ceil(10 * recession / Day)) + 1;
        const auto today = static_cast<std::int64_t>(std::floor(time / Day));
        for (std::int64_t day = today - reach; day <= today; ++day) {
            level += shape_.Storm * Rise(StormOf(seed_, day), time, recession);
        }
        return level;
    }

 private:
    [[nodiscard]] static double Rise(const Storm& storm, SiteSeconds time, double recession) {
        constexpr double largest = 1.8;
        const double passed = time - storm.Start;
        if (passed <= 0) {
            return 0;
        }
        const double wet = std::min(passed, storm.Duration);
        const double rise = storm.Strength / largest * (1 - std::exp(-4 * wet / storm.Duration));
        return rise * std::exp(-(passed - wet) / recession);
    }

    LevelShape shape_;
    std::uint64_t seed_;
};

class Rain : public Signal {
 public:
    Rain(double depth, std::uint64_t seed) : depth_(depth), seed_(seed) {}

    [[nodiscard]] double ValueAt(SiteSeconds time) const override {
        const auto today = static_cast<std::int64_t>(std::floor(std::max(time, 0.0) / Day));
        // A storm lasts less than a day, so all but the last two have fallen whole.
        const std::int64_t whole = std::max<std::int64_t>(today - 1, 0);
        double fallen = FallenBefore(whole);
        for (std::int64_t day = whole; day <= today; ++day) {
            const Storm storm = StormOf(seed_, day);
            fallen += storm.Strength * std::clamp((time - storm.Start) / storm.Duration, 0.0, 1.0);
        }
        return depth_ * fallen;
    }

 private:
    /// Strength of all storms of the days before `day`, kept from one call to the next.
    [[nodiscard]] double FallenBefore(std::int64_t day) const {
        const auto wanted = static_cast<std::size_t>(day);
        while (before_.size() <= wanted) {
            const auto last = static_cast<std::int64_t>(before_.size()) - 1;
            before_.push_back(before_.back() + StormOf(seed_, last).Strength);
        }
        return before_[wanted];
    }

    double depth_;
    std::uint64_t seed_;
    mutable std::vector<double> before_ = {0.0};
};

class Battery : public Signal {
 public:
    Battery(double low, double high) : low_(low), high_(high) {}
    [[nodiscard]] double ValueAt(SiteSeconds time) const override {
        constexpr double dawn = 6.0 / 24;
        constexpr double dusk = 18.0 / 24;
        const double phase = Phase(time, Day);
        if (phase >= dawn && phase < dusk) {
            return low_ + (high_ - low_) * std::sin((phase - dawn) * std::numbers::pi);
        }
        const double dark = (phase >= dusk ? phase - dusk : phase + 1 - dusk) * 2;
        return high_ - (high_ - low_) * dark;
    }

 private:
    double low_;
    double high_;
};

class Noisy : public Signal {
 public:
    Noisy(SignalPtr signal, double amplitude, std::uint64_t seed)
        : signal_(std::move(signal)), amplitude_(amplitude), seed_(seed) {}
    [[nodiscard]] double ValueAt(SiteSeconds time) const override {
        const auto second = static_cast<std::int64_t>(std::floor(time));
        const double scatter = MixedFraction(seed_, static_cast<std::uint64_t>(second)) * 2 - 1;
        return signal_->ValueAt(time) + amplitude_ * scatter;
    }

 private:
    SignalPtr signal_;
    double amplitude_;
    std::uint64_t seed_;
};

}  // namespace

SignalPtr ConstantSignal(double value) {
    return std::make_shared<Constant>(value);
}

SignalPtr SineSignal(double mean, double swing, double period) {
    return std::make_shared<Sine>(mean, swing, period);
}

SignalPtr TankSignal(double low, double high, double period) {
    return std::make_shared<Tank>(low, high, period);
}

SignalPtr LevelSignal(const LevelShape& shape, std::uint64_t weatherSeed) {
    return std::make_shared<Level>(shape, weatherSeed);
}

SignalPtr RainSignal(double depth, std::uint64_t weatherSeed) {
    return std::make_shared<Rain>(depth, weatherSeed);
}

SignalPtr BatterySignal(double low, double high) {
    return std::make_shared<Battery>(low, high);
}

SignalPtr NoisySignal(SignalPtr signal, double amplitude, std::uint64_t seed) {
    return std::make_shared<Noisy>(std::move(signal), amplitude, seed);
}

}  // namespace simulator
