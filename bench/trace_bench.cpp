// What the trace costs. An upload's exchanges go through the link's own procedures once over the
// bare port and once through the recorder, in the same run; "share" is the processor's time beyond
// the bare one, against what the exchange takes on a wire of 115200 baud.

#include <benchmark/benchmark.h>

#include <chrono>
#include <ctime>
#include <fstream>
#include <random>

#include "link/frame_codec.h"
#include "link/frames.h"
#include "trace/exchange_words.h"
#include "trace/link_recorder.h"

namespace {

constexpr std::size_t BlockSize = 241;

Bytes Block() {
    std::mt19937 random(1);
    Bytes payload(BlockSize);
    for (std::uint8_t& byte : payload) {
        byte = static_cast<std::uint8_t>(random());
    }
    return payload;
}

/// A logger that answers at once: an acknowledge and a block of records.
class AnsweringPort final : public SerialPort {
 public:
    AnsweringPort() {
        const Bytes frame = comm::EncodeFrame(Block());
        answer_.insert(answer_.end(), frame.begin(), frame.end());
        taken_ = answer_.size();
    }

    int CommPort() const override { return 1; }
    void SetCommPort(int /*number*/) override {}
    std::string Settings() const override { return {}; }
    void SetSettings(const std::string& /*settings*/) override {}
    bool PortOpen() const override { return true; }
    void SetPortOpen(bool /*open*/) override {}
    void SetDTREnable(bool /*enable*/) override {}
    int InBufferCount() const override { return static_cast<int>(answer_.size() - taken_); }
    void ClearInBuffer() override { taken_ = answer_.size(); }
    Bytes Input(int /*InputLen*/) override {
        return taken_ < answer_.size() ? Bytes{answer_[taken_++]} : Bytes{};
    }
    void Output(std::span<const std::uint8_t> /*bytes*/) override { taken_ = 0; }
    void LookForHangUp() override {}

    std::size_t AnswerSize() const { return answer_.size(); }

 private:
    Bytes answer_{comm::Acknowledge};
    std::size_t taken_ = 0;
};

class NoEvents final : public EventPump {
 public:
    void RunPendingEvents() override {}
    void WaitForMoreEvents() override {}
};

class RealClock final : public SystemClock {
 public:
    LocalTime Now() const override {
        using namespace std::chrono;
        const auto now = system_clock::now();
        const std::time_t seconds = system_clock::to_time_t(now);
        std::tm local{};
        localtime_r(&seconds, &local);
        const auto fraction = duration_cast<milliseconds>(now.time_since_epoch()).count() % 1000;
        return {local.tm_year + 1900,
                local.tm_mon + 1,
                local.tm_mday,
                local.tm_hour,
                local.tm_min,
                local.tm_sec,
                static_cast<int>(fraction)};
    }
    std::string DateText(const LocalTime& /*time*/) const override { return {}; }
    std::string TimeText(const LocalTime& /*time*/) const override { return {}; }
};

void ExchangeBlock(LinkFrames& exchange, benchmark::State& state) {
    const Bytes request{0x0D, 0x01};
    Bytes block(BlockSize);
    std::int16_t retries = 0;
    if (!exchange.SendFrame(request, retries) || !exchange.ReceiveFrame(block)) {
        state.SkipWithError("the exchange failed");
    }
    benchmark::DoNotOptimize(block.data());
}

/// Processor's time of an exchange over the bare port, in nanoseconds.
double bareNanoseconds = 0;

double Nanoseconds() {
    return 1e9 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

void UploadBare(benchmark::State& state) {
    AnsweringPort port;
    NoEvents events;
    Link link(port, events);
    LinkFrames exchange(link);
    const double start = Nanoseconds();
    for ([[maybe_unused]] auto _ : state) {
        ExchangeBlock(exchange, state);
    }
    bareNanoseconds = (Nanoseconds() - start) / static_cast<double>(state.iterations());
}
BENCHMARK(UploadBare)->MinTime(2);

void UploadRecorded(benchmark::State& state) {
    AnsweringPort port;
    NoEvents events;
    RealClock clock;
    LinkRecorder recorder(port, clock);
    Link link(recorder, events);
    link.Listener = &recorder;
    LinkFrames exchange(link);
    const double start = Nanoseconds();
    for ([[maybe_unused]] auto _ : state) {
        ExchangeBlock(exchange, state);
    }
    const double each = (Nanoseconds() - start) / static_cast<double>(state.iterations());
    constexpr double NanosecondsOfAByte = 1e10 / 115200;
    constexpr std::size_t RequestSize = 7;
    const double wire = NanosecondsOfAByte * static_cast<double>(RequestSize + port.AnswerSize());
    state.counters["share_percent"] = 100 * (each - bareNanoseconds) / wire;
}
BENCHMARK(UploadRecorded)->MinTime(2);

/// Pages of memory that are in use.
double Megabytes() {
    std::ifstream statistics("/proc/self/statm");
    double all = 0;
    double used = 0;
    statistics >> all >> used;
    return used * 4096 / 1e6;
}

void KeepAHundredThousand(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        AnsweringPort port;
        NoEvents events;
        RealClock clock;
        const double before = Megabytes();
        LinkRecorder recorder(port, clock);
        Link link(recorder, events);
        link.Listener = &recorder;
        LinkFrames exchange(link);
        for (std::size_t i = 0; i < TraceStore::MostEntries + 1000; ++i) {
            ExchangeBlock(exchange, state);
        }
        state.counters["MB"] = Megabytes() - before;
        state.counters["exchanges"] =
            static_cast<double>(recorder.Kept().End() - recorder.Kept().First());
    }
}
BENCHMARK(KeepAHundredThousand)->Iterations(1);

void WordsOfABlock(benchmark::State& state) {
    AnsweringPort port;
    NoEvents events;
    RealClock clock;
    LinkRecorder recorder(port, clock);
    Link link(recorder, events);
    link.Listener = &recorder;
    LinkFrames exchange(link);
    ExchangeBlock(exchange, state);
    const LoggerNames names;
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(InWords(recorder.Kept().At(1), names));
    }
}
BENCHMARK(WordsOfABlock);

}  // namespace
