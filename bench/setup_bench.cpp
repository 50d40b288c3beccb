// The set-up's own work, each beside a bare loop over the same bytes: what a validator, a transfer
// and a file cost.
#include <benchmark/benchmark.h>

#include <sstream>
#include <string>

#include "logger/settings_image.h"
#include "setup/setup_file.h"
#include "setup/setup_transfer.h"
#include "setup/setup_validators.h"

namespace {

LoggerState SomeState() {
    LoggerState state;
    state.NumAnalogChannels = 8;
    state.NumDigitalChannels = 2;
    SetDefaultSettings(state);
    return state;
}

std::string SomeFile() {
    std::ostringstream file;
    WriteSetupFile(file, SomeState(), {"1.0.0", "11/15/2026", "08:30:00"});
    return file.str();
}

void ValidateFloat(benchmark::State& run) {
    for ([[maybe_unused]] auto _ : run) {
        benchmark::DoNotOptimize(CheckFloat("0.0140000001"));
    }
}
BENCHMARK(ValidateFloat);

void ParseFloatAlone(benchmark::State& run) {
    const std::string text = "0.0140000001";
    for ([[maybe_unused]] auto _ : run) {
        benchmark::DoNotOptimize(std::stod(text));
    }
}
BENCHMARK(ParseFloatAlone);

void TransferBothWays(benchmark::State& run) {
    LoggerState state = SomeState();
    SetupControls controls;
    for ([[maybe_unused]] auto _ : run) {
        benchmark::DoNotOptimize(StateToForm(state, {}, controls));
        benchmark::DoNotOptimize(FormToState(controls, {}, state));
    }
}
BENCHMARK(TransferBothWays);

void CompareImages(benchmark::State& run) {
    const LoggerState state = SomeState();
    Bytes image;
    Bytes before;
    static_cast<void>(config::EncodeSettingsImage(state, before));
    for ([[maybe_unused]] auto _ : run) {
        benchmark::DoNotOptimize(config::EncodeSettingsImage(state, image));
        benchmark::DoNotOptimize(image == before);
    }
}
BENCHMARK(CompareImages);

void ReadFile(benchmark::State& run) {
    const std::string text = SomeFile();
    LoggerState state = SomeState();
    for ([[maybe_unused]] auto _ : run) {
        std::istringstream file(text);
        benchmark::DoNotOptimize(ReadSetupFile(file, state));
    }
    run.SetBytesProcessed(run.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(ReadFile);

void SplitFileAlone(benchmark::State& run) {
    const std::string text = SomeFile();
    for ([[maybe_unused]] auto _ : run) {
        std::istringstream file(text);
        std::string line;
        while (std::getline(file, line)) {
            benchmark::DoNotOptimize(line.find('='));
        }
    }
    run.SetBytesProcessed(run.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(SplitFileAlone);

void WriteFile(benchmark::State& run) {
    const LoggerState state = SomeState();
    for ([[maybe_unused]] auto _ : run) {
        std::ostringstream file;
        WriteSetupFile(file, state, {"1.0.0", "11/15/2026", "08:30:00"});
        benchmark::DoNotOptimize(file.str());
    }
}
BENCHMARK(WriteFile);

}  // namespace
