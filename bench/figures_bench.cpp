// Reports and plots of a series in memory, each beside the least that could do the same.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <vector>

#include "archive/archive_rows.h"
#include "archive/plot_data.h"
#include "archive/report.h"
#include "plain_clock.h"

namespace {

constexpr Moment Begin = 8766 * SecondsPerDay;  // 1 January 2024
constexpr int DaysOfMonth = 31;
constexpr int Pixels = 2000;

LoggerRecord TenChannels(int minutes) {
    LoggerRecord logger;
    logger.LoggerName = "Bench";
    logger.SampleInterval = std::to_string(minutes) + " minutes";
    logger.NumAnalogChannels = 8;
    logger.NumDigitalChannels = 2;
    logger.AnalogEnable.fill(1);
    logger.DigitalEnable.fill(1);
    logger.RawScaleUpper.fill(65535);
    logger.UpperLimit = {1.2, 10, 100, 24, 50, 14, 1000, 5};
    logger.DecPlaces = {3, 2, 1, 2, 1, 2, 0, 3, 0, 2};
    logger.PulseUnit = {1, 0.01};
    logger.EngUnits.fill("Feet");
    logger.FlowMode = 1;
    logger.FlowUnits = 1;
    logger.ManningsN = 0.014;
    logger.ManningsS = 1;
    logger.ManningsSType = 1;
    logger.ManningsD = 1;
    return logger;
}

/// Records of ten channels that wander, one in a thousand missing.
Series Wandering(int records, int minutes) {
    Series series;
    series.Settings.push_back({TenChannels(minutes), FlowTable()});
    series.Records.reserve(static_cast<std::size_t>(records));
    std::uint32_t state = 1;
    std::array<std::uint16_t, AllChannels> raw{};
    for (int i = 0; i < records; ++i) {
        for (std::uint16_t& count : raw) {
            state = state * 1'664'525U + 1'013'904'223U;
            count = static_cast<std::uint16_t>(count + (state >> 24));
        }
        if (i % 1000 != 999) {
            series.Records.push_back(
                {{PackedTimeOf(TimeNumberAt(Begin + i * 60LL * minutes)), raw}, 0});
        }
    }
    return series;
}

/// A million records, a minute apart.
const Series& Million() {
    static const Series series = Wandering(1'001'001, 1);
    return series;
}

void MonthReport(benchmark::State& state) {
    const auto minutes = static_cast<int>(state.range(0));
    const Series series = Wandering(DaysOfMonth * 1440 / minutes, minutes);
    const PlainClock clock;
    const Period month{Begin, Begin + DaysOfMonth * SecondsPerDay};
    for ([[maybe_unused]] auto _ : state) {
        const SeriesValues values(series);
        benchmark::DoNotOptimize(
            MakeReport(values, {month, PeriodStep::Day, std::nullopt, "", ""}, clock));
    }
}
BENCHMARK(MonthReport)->Arg(15)->Arg(1)->Unit(benchmark::kMillisecond);

/// Smallest, largest and mean of the ten channels by day, on columns of doubles that are there.
void BareLoopOverAMonth(benchmark::State& state) {
    const auto minutes = static_cast<int>(state.range(0));
    const Series series = Wandering(DaysOfMonth * 1440 / minutes, minutes);
    const SeriesValues values(series);
    std::vector<std::vector<double>> columns(AllChannels);
    for (std::size_t column = 0; column < columns.size(); ++column) {
        for (std::size_t record = 0; record < values.RecordCount(); ++record) {
            columns[column].push_back(values.At(column, record));
        }
    }
    const std::size_t day = values.RecordCount() / DaysOfMonth;
    for ([[maybe_unused]] auto _ : state) {
        for (const std::vector<double>& column : columns) {
            for (std::size_t begin = 0; begin + day <= column.size(); begin += day) {
                double low = column[begin];
                double high = low;
                double sum = 0;
                for (std::size_t i = begin; i < begin + day; ++i) {
                    low = std::min(low, column[i]);
                    high = std::max(high, column[i]);
                    sum += column[i];
                }
                benchmark::DoNotOptimize(low + high + sum);
            }
        }
    }
}
BENCHMARK(BareLoopOverAMonth)->Arg(15)->Arg(1)->Unit(benchmark::kMillisecond);

/// From records to the points of the first picture, with flow worked out.
void FirstDrawingOfAMillion(benchmark::State& state) {
    const Series& series = Million();
    for ([[maybe_unused]] auto _ : state) {
        const SeriesValues values(series);
        const PlotColumn column(values, static_cast<std::size_t>(state.range(0)));
        benchmark::DoNotOptimize(
            column.PointsIn(values.Times().At(0), values.Times().All().back(), Pixels));
    }
}
BENCHMARK(FirstDrawingOfAMillion)->Arg(0)->Arg(10)->Unit(benchmark::kMillisecond);

/// A view that zooms in and out of the middle, and wanders.
class View {
 public:
    explicit View(const SeriesValues& values)
        : first_(values.Times().At(0)), span_(values.Times().All().back() - first_) {}

    void Step() {
        ++step_;
        const double zoom = std::pow(2.0, -8.0 * (1 + std::sin(step_ * 0.1)) / 2);
        const auto width = static_cast<Moment>(static_cast<double>(span_) * zoom);
        From = first_ + (span_ - width) * (step_ % 50) / 50;
        To = From + width;
    }
    Moment From = 0;
    Moment To = 0;

 private:
    Moment first_;
    Moment span_;
    int step_ = 0;
};

void PanAndZoom(benchmark::State& state) {
    const SeriesValues values(Million());
    std::vector<std::unique_ptr<PlotColumn>> columns;
    for (std::size_t column = 0; column < static_cast<std::size_t>(state.range(0)); ++column) {
        columns.push_back(std::make_unique<PlotColumn>(values, column));
    }
    View view(values);
    for ([[maybe_unused]] auto _ : state) {
        view.Step();
        for (const auto& column : columns) {
            benchmark::DoNotOptimize(column->PointsIn(view.From, view.To, Pixels));
        }
    }
    double bytes = 0;
    for (const auto& column : columns) {
        bytes += static_cast<double>(column->Memory());
    }
    state.counters["columns_MB"] = bytes / 1e6;
}
BENCHMARK(PanAndZoom)->Arg(1)->Arg(12)->Unit(benchmark::kMicrosecond);

/// The same views by a look at every record, on doubles that are there.
void PanAndZoomByABareLoop(benchmark::State& state) {
    const SeriesValues values(Million());
    std::vector<double> column;
    for (std::size_t record = 0; record < values.RecordCount(); ++record) {
        column.push_back(values.At(0, record));
    }
    View view(values);
    std::vector<std::pair<double, double>> pixels(Pixels);
    for ([[maybe_unused]] auto _ : state) {
        view.Step();
        std::fill(pixels.begin(), pixels.end(), std::pair(1e9, -1e9));
        for (std::size_t record = 0; record < column.size(); ++record) {
            const Moment time = values.Times().At(record);
            if (view.From <= time && time <= view.To) {
                auto& pixel = pixels[static_cast<std::size_t>((time - view.From) * Pixels /
                                                              (view.To - view.From + 1))];
                pixel.first = std::min(pixel.first, column[record]);
                pixel.second = std::max(pixel.second, column[record]);
            }
        }
        benchmark::DoNotOptimize(pixels.data());
    }
}
BENCHMARK(PanAndZoomByABareLoop)->Unit(benchmark::kMicrosecond);

void ReadingUnderTheCursor(benchmark::State& state) {
    const SeriesValues values(Million());
    const PlotColumn column(values, 0);
    const Moment first = values.Times().At(0);
    Moment offset = 0;
    for ([[maybe_unused]] auto _ : state) {
        offset = (offset + 7'654'321) % 60'000'000;
        benchmark::DoNotOptimize(column.ReadingAt(first + offset, 60));
    }
}
BENCHMARK(ReadingUnderTheCursor);

}  // namespace
