#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <cstdio>

#include "client/bars.h"
#include "client/client_panel.h"
#include "client/columns.h"
#include "client/layout.h"
#include "client/readings.h"

// What ten open client windows cost the one thread of the console: ten ticks a second each, and
// a sample a second.

namespace {

constexpr std::size_t OpenWindows = 10;

struct Window {
    ClientRecord Record;
    ClientPanel Panel = DesignPanel();
};

void ReadLogger(Window& window) {
    LoggerState& state = window.Record.LoggerState;
    state.NumAnalogChannels = AnalogChannels;
    state.NumDigitalChannels = PulseChannels;
    SetDefaultSettings(state);
    window.Record.SettingsValid = True;
    window.Record.DisplayMode = DisplayMeter;
    PlaceFixedControls(window.Panel);
    FixBarGeometry(window.Panel, window.Record);
    ArrangeControls(DisplayMeter, window.Panel);
    SetUpColumns(window.Record, window.Panel);
    DataPoint point;
    point.Raw.fill(30000);
    for (int i = 0; i < 4; ++i) {
        FileDataPoint(point, state);
    }
    RefreshReadings(window.Record, window.Panel);
    static_cast<void>(ChangedBars(window.Record, window.Panel.fraMeter[0].Place.Top));
}

void TickOfTenStandingWindows(benchmark::State& bench) {
    std::array<Window, OpenWindows> windows;
    for (Window& window : windows) {
        ReadLogger(window);
    }
    while (bench.KeepRunning()) {
        for (Window& window : windows) {
            benchmark::DoNotOptimize(
                ChangedBars(window.Record, window.Panel.fraMeter[0].Place.Top));
        }
    }
}
BENCHMARK(TickOfTenStandingWindows);

// The least that the same tick could do: a division and a comparison a bar.
void TickOfTenStandingWindowsBareLoop(benchmark::State& bench) {
    std::array<double, OpenWindows * std::size_t{BarColumns}> values{};
    std::array<int, OpenWindows * std::size_t{BarColumns}> tops{};
    values.fill(45.8);
    while (bench.KeepRunning()) {
        int changed = 0;
        for (std::size_t i = 0; i < values.size(); ++i) {
            benchmark::DoNotOptimize(values[i]);
            changed += static_cast<int>(values[i] / 100.0) != tops[i] ? 1 : 0;
        }
        benchmark::DoNotOptimize(changed);
    }
}
BENCHMARK(TickOfTenStandingWindowsBareLoop);

void RefreshOfEightChannels(benchmark::State& bench) {
    Window window;
    ReadLogger(window);
    while (bench.KeepRunning()) {
        RefreshReadings(window.Record, window.Panel);
        benchmark::DoNotOptimize(window.Panel);
    }
}
BENCHMARK(RefreshOfEightChannels);

// The same number of figures, four samples of eight channels and two pulse counts, printed.
void RefreshOfEightChannelsByPrintf(benchmark::State& bench) {
    constexpr int figures = 4 * AnalogChannels + PulseChannels;
    std::array<char, 64> text{};
    while (bench.KeepRunning()) {
        for (int i = 0; i < figures; ++i) {
            std::snprintf(text.data(), text.size(), "%.2f", 45.776 + i);
            benchmark::DoNotOptimize(text);
        }
    }
}
BENCHMARK(RefreshOfEightChannelsByPrintf);

}  // namespace
