#ifndef ORVIA_SIMULATOR_SIGNAL_H
#define ORVIA_SIMULATOR_SIGNAL_H

#include <cstdint>
#include <memory>

namespace simulator {

/// Time of a signal: seconds since the start of the year 2000, with fractions.
using SiteSeconds = double;

/// What a sensor stands in, in engineering units, as a function of time. A signal keeps no state
/// that shows: the same time gives the same value, in whatever order it is asked.
class Signal {
 public:
    Signal() = default;
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;
    virtual ~Signal() = default;

    [[nodiscard]] virtual double ValueAt(SiteSeconds time) const = 0;
};

using SignalPtr = std::shared_ptr<const Signal>;

/// Always `value`.
[[nodiscard]] SignalPtr ConstantSignal(double value);

/// `mean` + `swing` x sin(2 pi time / period), the period in seconds.
[[nodiscard]] SignalPtr SineSignal(double mean, double swing, double period);

/// A tank that drains at a steady rate from `high` to `low` and is pumped full again in a tenth of
/// the period (seconds).
[[nodiscard]] SignalPtr TankSignal(double low, double high, double period);

/// Water in a channel: `base`, a daily wave of `day` (highest at 9 in the morning), and for each
/// storm of `weatherSeed` a rise of up to `storm` that comes fast and falls away exponentially,
/// to 1/e in `recessionHours`.
struct LevelShape {
    double Base = 1;
    double Day = 0.1;
    double Storm = 1;
    double RecessionHours = 8;
};
[[nodiscard]] SignalPtr LevelSignal(const LevelShape& shape, std::uint64_t weatherSeed);

/// Rain fallen since the start of the year 2000; an average storm of `weatherSeed` brings `depth`.
/// It never falls, and stands still between storms.
[[nodiscard]] SignalPtr RainSignal(double depth, std::uint64_t weatherSeed);

/// A battery under a solar panel: sinks from dusk to dawn towards `low`, rises by day to `high`.
[[nodiscard]] SignalPtr BatterySignal(double low, double high);

/// `signal` with an even scatter of +-`amplitude`, new in every second.
[[nodiscard]] SignalPtr NoisySignal(SignalPtr signal, double amplitude, std::uint64_t seed);

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_SIGNAL_H
