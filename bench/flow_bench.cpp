// Each pair is a figure and its baseline: Manning beside the same arithmetic written out bare, a
// lookup beside std::upper_bound on the same levels. The settings sweep stands by its own time.
// Manning's calculations wait for one another, as four figures a second do; run side by side, a
// processor would measure how many of the bare ones it can overlap.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <vector>

#include "flow/flow_calculation.h"
#include "flow/flow_precision.h"
#include "flow/flow_table.h"
#include "flow/rating.h"

namespace {

constexpr std::size_t Levels = 1024;  // a power of two: the next level costs a mask
constexpr int TablePoints = MostTablePoints;

/// Levels from just above 0 to `top`, in no order that a processor could learn.
std::array<double, Levels> LevelsUpTo(double top) {
    std::mt19937 random(1);
    std::array<double, Levels> levels{};
    for (double& level : levels) {
        level = top * (static_cast<double>(random()) + 1) / 4294967297.0;
    }
    return levels;
}

LoggerState PipeState() {
    LoggerState state;
    state.EngUnits[0] = "Feet";
    state.FlowMode = 1;
    state.ManningsD = 1;
    state.ManningsN = 0.014;
    state.ManningsS = 0.01;
    state.RawScaleUpper[0] = 65535;
    state.UpperLimit[0] = 1;
    return state;
}

FlowTable UnevenTable() {
    std::mt19937 random(2);
    FlowTable table;
    double level = 0;
    for (int i = 0; i < TablePoints; ++i) {
        level += 0.001 + static_cast<double>(random() % 1000) / 100000;
        table.Append({level, level * level});
    }
    return table;
}

/// The steps of Manning's equation without conversions, limits and tests.
double BareManning(double level, double diameter, double n, double slope) {
    const double r = diameter / 2;
    const double x = (level - r) / r;
    const double b =
        3.14159265358979 - (std::atan(-x / std::sqrt(-x * x + 1)) + 2 * std::atan(1.0));
    const double perimeter = b * diameter;
    const double area = (b - std::sin(2 * b) * 0.5) * r * r;
    const double velocity = std::pow(slope, 0.5) * (1.486 / n) * std::pow(area / perimeter, 0.667);
    return velocity * area;
}

/// A run whose figures went astray measures something else.
void RequireFlow(benchmark::State& run, double flow) {
    if (!(flow > 0)) {
        run.SkipWithError("the calculation lost its figure");
    }
}

void ManningBare(benchmark::State& run) {
    const auto levels = LevelsUpTo(0.999);
    // Not known beforehand, as in a logger's settings: nothing may move out of the loop.
    volatile double diameter = 1;
    volatile double n = 0.014;
    volatile double slope = 0.01;
    std::size_t i = 0;
    double flow = 0;
    while (run.KeepRunning()) {
        flow = BareManning(levels[i++ % Levels] + 0 * flow, diameter, n, slope);
    }
    RequireFlow(run, flow);
}
BENCHMARK(ManningBare);

void ManningCalculateFlow(benchmark::State& run) {
    const LoggerState state = PipeState();
    const auto levels = LevelsUpTo(0.999);
    std::size_t i = 0;
    double flow = 0;
    double velocity = 0;
    while (run.KeepRunning()) {
        flow = CalculateFlow(state, state.FlowTable, levels[i++ % Levels] + 0 * flow, velocity);
    }
    RequireFlow(run, flow);
}
BENCHMARK(ManningCalculateFlow);

void LookupUpperBound(benchmark::State& run) {
    const FlowTable table = UnevenTable();
    const std::vector<FlowTablePoint> points(table.begin(), table.end());
    const auto levels = LevelsUpTo(points.back().Level);
    std::size_t i = 0;
    while (run.KeepRunning()) {
        benchmark::DoNotOptimize(std::upper_bound(
            points.begin(), points.end(), levels[i++ % Levels],
            [](double level, const FlowTablePoint& p) { return level < p.Level; }));
    }
}
BENCHMARK(LookupUpperBound);

void LookupFindSegment(benchmark::State& run) {
    const FlowTable table = UnevenTable();
    const auto levels = LevelsUpTo(table[TablePoints].Level);
    std::size_t i = 0;
    while (run.KeepRunning()) {
        benchmark::DoNotOptimize(FindSegment(table, levels[i++ % Levels]));
    }
}
BENCHMARK(LookupFindSegment);

/// Lookup, interpolation and conversions together, as a live sample has them.
void LookupCalculateFlow(benchmark::State& run) {
    LoggerState state = PipeState();
    state.FlowMode = 4;
    state.FlowTable = UnevenTable();
    const auto levels = LevelsUpTo(state.FlowTable[TablePoints].Level);
    std::size_t i = 0;
    double velocity = 0;
    while (run.KeepRunning()) {
        benchmark::DoNotOptimize(
            CalculateFlow(state, state.FlowTable, levels[i++ % Levels], velocity));
    }
}
BENCHMARK(LookupCalculateFlow);

/// The 128 calculations that each read of the settings makes.
void SettingsReadManning(benchmark::State& run) {
    LoggerState state = PipeState();
    LoggerState global;
    while (run.KeepRunning()) {
        CalculateFlowVelPrecision(state, global);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(SettingsReadManning)->Unit(benchmark::kMicrosecond);

/// The same where every single calculation fails.
void SettingsReadFailing(benchmark::State& run) {
    LoggerState state = PipeState();
    LoggerState global;
    state.ManningsS = -1;
    while (run.KeepRunning()) {
        CalculateFlowVelPrecision(state, global);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(SettingsReadFailing)->Unit(benchmark::kMicrosecond);

}  // namespace
