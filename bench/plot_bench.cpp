// The plot's window on long series, from records to pixels, beside the least that could be drawn.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <cmath>

#include "archive/archive_rows.h"
#include "archive/frmPlotChart.h"
#include "archive/plot_path.h"
#include "plain_clock.h"

namespace {

constexpr Moment Begin = 8766 * SecondsPerDay;  // 1 January 2024
constexpr int Width = 1200;
constexpr int Height = 700;

/// Records of eight channels and flow that wander, one in a thousand missing.
Series Wandering(int records, int minutes) {
    LoggerRecord logger;
    logger.SampleInterval = std::to_string(minutes) + " minutes";
    logger.NumAnalogChannels = 8;
    logger.AnalogEnable.fill(1);
    logger.RawScaleUpper.fill(65535);
    logger.UpperLimit = {1.2, 10, 100, 24, 50, 14, 1000, 5};
    logger.EngUnits.fill("Feet");
    logger.FlowMode = 1;
    logger.FlowUnits = 1;
    logger.ManningsN = 0.014;
    logger.ManningsS = 1;
    logger.ManningsSType = 1;
    logger.ManningsD = 1;
    Series series;
    series.Settings.push_back({logger, FlowTable()});
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

std::vector<PlotLine> LinesOf(const std::shared_ptr<const NamedSeries>& series, int count) {
    std::vector<PlotLine> lines;
    lines.reserve(static_cast<std::size_t>(count));
    for (int line = 0; line < count; ++line) {
        lines.push_back({series, static_cast<std::size_t>(line)});
    }
    return lines;
}

/// Draws what a window shows.
void Draw(PlotChart& chart, QImage& screen) {
    chart.DrawNow();
    chart.render(&screen);
}

/// From records in memory to the first picture: flow worked out, lines made, drawn.
void FirstDrawing(benchmark::State& state) {
    const auto records = static_cast<int>(state.range(0));
    const PlainClock clock;
    const Series records_ = Wandering(records, records > 100'000 ? 1 : 15);
    QImage screen(Width, Height, QImage::Format_RGB32);
    double memory = 0;
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        Series copy = records_;
        state.ResumeTiming();
        const auto series = std::make_shared<const NamedSeries>("Bench", std::move(copy));
        PlotChart chart(clock, nullptr);
        chart.resize(Width, Height);
        std::vector<PlotLine> lines = LinesOf(series, 1);
        lines.push_back({series, *series->Values().FlowColumn()});
        chart.SetLines(std::move(lines));
        const Period whole = WholeOf({series});
        chart.SetSpan(whole.Begin, whole.End - 1);
        Draw(chart, screen);
        memory = static_cast<double>(chart.Scene().Memory());
    }
    const double raw = static_cast<double>(records) * sizeof(SeriesRecord);
    // Times, flow and velocity of the series, and what the two lines hold.
    state.counters["to_raw"] = (raw + records * 24.0 + memory) / raw;
}
BENCHMARK(FirstDrawing)->Arg(35'040)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

/// A pan or a zoom of a million records, drawn.
void PanAndZoom(benchmark::State& state) {
    const PlainClock clock;
    const auto series = std::make_shared<const NamedSeries>("Bench", Wandering(1'000'000, 1));
    QImage screen(Width, Height, QImage::Format_RGB32);
    PlotChart chart(clock, nullptr);
    chart.resize(Width, Height);
    chart.SetLines(LinesOf(series, static_cast<int>(state.range(0))));
    const Period whole = WholeOf({series});
    chart.SetSpan(whole.Begin, whole.End - 1);
    Draw(chart, screen);
    int step = 0;
    for ([[maybe_unused]] auto _ : state) {
        step = (step + 1) % 24;
        step < 12 ? chart.ZoomIn() : chart.ZoomOut();
        Draw(chart, screen);
    }
}
BENCHMARK(PanAndZoom)->Arg(1)->Arg(8)->Unit(benchmark::kMillisecond);

/// The same pixels by one line of the painter to each: what a screen costs without axes and texts.
void BareLines(benchmark::State& state) {
    QImage screen(Width, Height, QImage::Format_RGB32);
    for ([[maybe_unused]] auto _ : state) {
        screen.fill(Qt::white);
        QPainter painter(&screen);
        for (int line = 0; line < state.range(0); ++line) {
            for (int x = 0; x < Width; ++x) {
                painter.drawLine(x, 0, x, Height / 2);
            }
        }
    }
}
BENCHMARK(BareLines)->Arg(1)->Arg(8)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
