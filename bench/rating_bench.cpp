// Making a table out of a device's dimensions, as each key typed in its window does: a kind of each
// group, and the longest rows that are kept. The file's text and its reading stand beside them.

#include <benchmark/benchmark.h>

#include <cmath>
#include <sstream>
#include <string>

#include "flow/rating_file.h"
#include "flow/rating_made.h"

namespace {

RatingDevice DeviceOf(std::string_view kind) {
    return DefaultRatingDevice(*FindRatingKind(kind), 0);
}

/// A thousand points of a power law with some scatter, or a valley of as many corners.
RatingDevice Longest(std::string_view kind) {
    RatingDevice device = DeviceOf(kind);
    for (std::size_t i = 1; i <= MostRatingRows; ++i) {
        const double x = static_cast<double>(i) / 100;
        const bool points = kind == "points";
        device.Rows.push_back(
            {x, points ? 4 * std::pow(x, 1.6) * (1 + 0.02 * std::sin(40 * x)) : std::fabs(x - 5),
             0});
    }
    return device;
}

void Make(benchmark::State& run, const RatingDevice& device) {
    int points = 0;
    for ([[maybe_unused]] auto _ : run) {
        const Rating rating = ComputeRating(device);
        points = rating.Points.UpperBound();
        benchmark::DoNotOptimize(points);
    }
    if (points < 2) {
        run.SkipWithError("no rating was made");
    }
    run.counters["points"] = points;
}

void MakeNotch(benchmark::State& run) {
    Make(run, DeviceOf("v-notch"));
}
BENCHMARK(MakeNotch)->Unit(benchmark::kMillisecond);

void MakeRectangularThroat(benchmark::State& run) {
    Make(run, DeviceOf("throat-rectangular"));
}
BENCHMARK(MakeRectangularThroat)->Unit(benchmark::kMillisecond);

void MakePalmerBowlus(benchmark::State& run) {
    Make(run, DeviceOf("palmer-bowlus"));
}
BENCHMARK(MakePalmerBowlus)->Unit(benchmark::kMillisecond);

void MakeEgg(benchmark::State& run) {
    Make(run, DeviceOf("channel-egg"));
}
BENCHMARK(MakeEgg)->Unit(benchmark::kMillisecond);

void MakeSectionOfAThousandPoints(benchmark::State& run) {
    Make(run, Longest("channel-section"));
}
BENCHMARK(MakeSectionOfAThousandPoints)->Unit(benchmark::kMillisecond);

void MakePowerLawOfAThousandPoints(benchmark::State& run) {
    RatingDevice device = Longest("points");
    device.Values[0] = 2;
    Make(run, device);
}
BENCHMARK(MakePowerLawOfAThousandPoints)->Unit(benchmark::kMillisecond);

void WriteFile(benchmark::State& run) {
    const RatingDevice device = DeviceOf("throat-rectangular");
    const Rating rating = ComputeRating(device);
    for ([[maybe_unused]] auto _ : run) {
        benchmark::DoNotOptimize(RatingTableText(device, rating));
    }
}
BENCHMARK(WriteFile)->Unit(benchmark::kMillisecond);

void ReadFile(benchmark::State& run) {
    const RatingDevice device = Longest("points");
    const std::string text = RatingTableText(device, ComputeRating(device));
    for ([[maybe_unused]] auto _ : run) {
        std::istringstream file(text);
        benchmark::DoNotOptimize(ReadRatingTable(file));
    }
}
BENCHMARK(ReadFile)->Unit(benchmark::kMillisecond);

}  // namespace
