// The viewer's work on a full store: 200,000 records of 10 channels, with flow and velocity. Each
// figure stands beside the least that could do the same.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "flow/flow_calculation.h"
#include "history/csv.h"
#include "history/fill_list.h"
#include "plain_clock.h"

namespace {

class NoBar final : public ProgressBar {
 public:
    void SetValue(std::int32_t value) override { benchmark::DoNotOptimize(value); }
};

LoggerRecord ManningLogger() {
    LoggerRecord logger;
    logger.LoggerName = "Bench";
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
    logger.ManningsN = 0.014;
    logger.ManningsS = 1;
    logger.ManningsSType = 1;
    logger.ManningsD = 1;
    return logger;
}

/// All that the figures are taken from.
struct Full {
    explicit Full(int records) {
        std::mt19937 random(20261115);
        for (int i = 0; i < records; ++i) {
            HistoryRecord record;
            record.Time = {static_cast<std::uint8_t>((i & 3) << 6),
                           static_cast<std::uint8_t>(i >> 2 & 0x7F),
                           static_cast<std::uint8_t>((1 + i / 1440 % 28) << 1),
                           static_cast<std::uint8_t>(72 + i / 40320)};
            for (std::uint16_t& count : record.Raw) {
                count = static_cast<std::uint16_t>(random());
            }
            store.Append(record);
        }
    }

    [[nodiscard]] HistorySource Source() const {
        return {.store = store,
                .logger = logger,
                .clock = clock,
                .flow = [this](double level, double& velocity) {
                    return CalculateFlow(logger, flowTable, level, velocity);
                }};
    }

    void Fill(HistoryTable& table) { FillTable(Source(), columns, false, bar, table); }

    HistoryStore store;
    LoggerRecord logger = ManningLogger();
    FlowTable flowTable;
    PlainClock clock;
    NoBar bar;
    HistoryColumns columns = ColumnsOf(logger, false);
};

/// The values of all cells, in the order of the rows, and the decimals of each column.
struct Values {
    explicit Values(Full& full) {
        for (const HistoryColumn& column : full.columns.Columns) {
            places.push_back(column.Places);
        }
        HistoryTable table;
        full.Fill(table);
        for (int row = 0; row < table.RowCount(); ++row) {
            for (int column = 1; column < table.ColumnCount(); ++column) {
                values.push_back(
                    std::strtod(std::string(table.Text(row, column)).c_str(), nullptr));
            }
        }
    }
    std::vector<int> places;
    std::vector<double> values;
};

constexpr int Records = HistoryStore::MostRecords;

void FillList(benchmark::State& state) {
    Full full(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        HistoryTable table;
        full.Fill(table);
        benchmark::DoNotOptimize(table.RowCount());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(FillList)->Arg(2000)->Arg(20'000)->Arg(Records)->Unit(benchmark::kMillisecond);

void FillListPacked(benchmark::State& state) {
    Full full(Records);
    HistoryTable table;
    for ([[maybe_unused]] auto _ : state) {
        FillTable(full.Source(), full.columns, true, full.bar, table);
        benchmark::DoNotOptimize(table.RowCount());
    }
}
BENCHMARK(FillListPacked)->Unit(benchmark::kMillisecond);

/// The cells alone through the C library: neither times nor flow are computed.
void SameCellsBySnprintf(benchmark::State& state) {
    Full full(Records);
    const Values cells(full);
    std::array<char, 330> text{};
    for ([[maybe_unused]] auto _ : state) {
        for (std::size_t i = 0; i < cells.values.size(); ++i) {
            benchmark::DoNotOptimize(std::snprintf(text.data(), text.size(), "%.*f",
                                                   cells.places[i % cells.places.size()],
                                                   cells.values[i]));
        }
    }
}
BENCHMARK(SameCellsBySnprintf)->Unit(benchmark::kMillisecond);

/// The cells alone through a bare loop.
void SameCellsByToChars(benchmark::State& state) {
    Full full(Records);
    const Values cells(full);
    std::array<char, 330> text{};
    for ([[maybe_unused]] auto _ : state) {
        for (std::size_t i = 0; i < cells.values.size(); ++i) {
            benchmark::DoNotOptimize(std::to_chars(text.data(), text.data() + text.size(),
                                                   cells.values[i], std::chars_format::fixed,
                                                   cells.places[i % cells.places.size()]));
        }
    }
}
BENCHMARK(SameCellsByToChars)->Unit(benchmark::kMillisecond);

std::string BenchFile() {
    return (std::filesystem::temp_directory_path() / "orvia_history_bench.csv").string();
}

void SaveCsv(benchmark::State& state) {
    Full full(Records);
    HistoryTable table;
    full.Fill(table);
    const std::string title = CsvTitleLine(full.logger, true, full.clock);
    for ([[maybe_unused]] auto _ : state) {
        if (!WriteCsv(BenchFile(), {title, table, false}, full.bar)) {
            state.SkipWithError("the file was not written");
        }
    }
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(std::filesystem::file_size(BenchFile())));
    std::filesystem::remove(BenchFile());
}
BENCHMARK(SaveCsv)->Unit(benchmark::kMillisecond);

/// The same bytes, copied once and written at one stroke.
void SameBytesCopiedThenWritten(benchmark::State& state) {
    Full full(Records);
    HistoryTable table;
    full.Fill(table);
    if (!WriteCsv(BenchFile(), {CsvTitleLine(full.logger, true, full.clock), table, false},
                  full.bar)) {
        state.SkipWithError("the file was not written");
    }
    std::string bytes(std::filesystem::file_size(BenchFile()), '\0');
    std::FILE* const saved = std::fopen(BenchFile().c_str(), "rb");
    benchmark::DoNotOptimize(std::fread(bytes.data(), 1, bytes.size(), saved));
    std::fclose(saved);
    for ([[maybe_unused]] auto _ : state) {
        std::string copy(bytes.size(), '\0');
        std::copy(bytes.begin(), bytes.end(), copy.begin());
        std::FILE* const file = std::fopen(BenchFile().c_str(), "wb");
        benchmark::DoNotOptimize(std::fwrite(copy.data(), 1, copy.size(), file));
        std::fclose(file);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
    std::filesystem::remove(BenchFile());
}
BENCHMARK(SameBytesCopiedThenWritten)->Unit(benchmark::kMillisecond);

/// Memory that the table of all rows holds.
void TableMemory(benchmark::State& state) {
    Full full(Records);
    HistoryTable table;
    for ([[maybe_unused]] auto _ : state) {
        full.Fill(table);
    }
    state.counters["MB"] = static_cast<double>(table.Memory()) / 1e6;
}
BENCHMARK(TableMemory)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
