#include "archive/pulse_counts.h"

#include "archive/exact_sum.h"

namespace {

constexpr std::int32_t CounterSize = 65'536;
constexpr std::int32_t HalfCounter = CounterSize / 2;

struct PulseSums {
    ExactSum Total;
    ExactSum Pulses;
    std::int64_t RollOvers = 0;
    std::int64_t Resets = 0;
    bool Known = false;

    void Add(double pulses, double unit) {
        Total.Add(unit, pulses);
        Pulses.Add(pulses);
        Known = true;
    }
};

/// Divides the steps of a counter among periods.
class StepDivision {
 public:
    StepDivision(const Periods& periods, std::vector<PulseSums>& sums)
        : periods_(periods), sums_(sums) {}

    void Take(Moment from, Moment to, const CounterStep& step, double unit) {
        if (periods_.Hold(to)) {
            PulseSums& at = sums_[periods_.NumberOf(to)];
            at.RollOvers += step.Kind == CounterStep::Way::RollOver ? 1 : 0;
            at.Resets += step.Kind == CounterStep::Way::Reset ? 1 : 0;
            if (to <= from) {
                at.Add(step.Pulses, unit);
            }
        }
        const auto seconds = static_cast<double>(to - from);
        periods_.Cut(from, to, [&](std::size_t number, Moment begin, Moment end) {
            sums_[number].Add(step.Pulses * (static_cast<double>(end - begin) / seconds), unit);
        });
    }

 private:
    const Periods& periods_;
    std::vector<PulseSums>& sums_;
};

}  // namespace

CounterStep StepOfCounter(std::uint16_t before, std::uint16_t after) {
    if (after >= before) {
        return {CounterStep::Way::Rise, after - before};
    }
    const std::int32_t around = after - before + CounterSize;
    return around < HalfCounter ? CounterStep{CounterStep::Way::RollOver, around}
                                : CounterStep{CounterStep::Way::Reset, after};
}

std::vector<std::optional<PulseTotal>> PulseTotalsOf(const SeriesValues& values, std::size_t column,
                                                     const Periods& periods) {
    std::vector<PulseSums> sums(periods.Count());
    StepDivision division(periods, sums);
    const SeriesTimes& times = values.Times();
    for (std::size_t record = 1; record < values.RecordCount(); ++record) {
        if (values.Has(column, record - 1) && values.Has(column, record)) {
            division.Take(
                times.At(record - 1), times.At(record),
                StepOfCounter(values.CountAt(column, record - 1), values.CountAt(column, record)),
                values.PulseUnitAt(column, record));
        }
    }
    std::vector<std::optional<PulseTotal>> totals(periods.Count());
    for (std::size_t number = 0; number < totals.size(); ++number) {
        const PulseSums& sum = sums[number];
        if (sum.Known) {
            totals[number] =
                PulseTotal{sum.Total.Divided(1), sum.Pulses.Divided(1), sum.RollOvers, sum.Resets};
        }
    }
    return totals;
}
