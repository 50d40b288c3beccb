// Whatever goes through the port, in whatever order, and whatever is found in it: the recorder
// hands all of it on, keeps as much as it has room for, and every entry has words. The input is a
// list of steps, each a byte that says what happens and how long it is, and its bytes.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <span>
#include <string>

#include "trace/link_recorder.h"
#include "trace/trace_filter.h"

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

class FuzzedPort final : public SerialPort {
 public:
    int CommPort() const override { return 1; }
    void SetCommPort(int /*number*/) override {}
    std::string Settings() const override { return "9600,N,8,1"; }
    void SetSettings(const std::string& /*settings*/) override {}
    bool PortOpen() const override { return open_; }
    void SetPortOpen(bool open) override { open_ = open; }
    void SetDTREnable(bool /*enable*/) override {}
    int InBufferCount() const override { return static_cast<int>(waiting_.size()); }
    void ClearInBuffer() override { waiting_.clear(); }
    Bytes Input(int InputLen) override {
        Bytes taken;
        while (!waiting_.empty() && (InputLen == 0 || taken.empty())) {
            taken.push_back(waiting_.front());
            waiting_.pop_front();
        }
        return taken;
    }
    void Output(std::span<const std::uint8_t> /*bytes*/) override {}
    void LookForHangUp() override { open_ = false; }

    void Receive(std::span<const std::uint8_t> bytes) {
        waiting_.insert(waiting_.end(), bytes.begin(), bytes.end());
    }

 private:
    bool open_ = false;
    std::deque<std::uint8_t> waiting_;
};

class FuzzedClock final : public SystemClock {
 public:
    LocalTime Now() const override { return {2026, 2, 3, 4, 5, 6, 7}; }
    std::string DateText(const LocalTime& /*time*/) const override { return {}; }
    std::string TimeText(const LocalTime& /*time*/) const override { return {}; }
};

enum class Step { Send, Take, TakeAll, Clear, Find, Open, Close, Lose };

void Do(Step step, std::span<const std::uint8_t> bytes, FuzzedPort& port, LinkRecorder& recorder) {
    switch (step) {
        case Step::Send:
            recorder.OnTry({1 + static_cast<int>(bytes.size() % 3), 3, 1, {1, 2, 3}});
            return recorder.Output(bytes);
        case Step::Take:
            port.Receive(bytes);
            while (recorder.InBufferCount() > 0) {
                Require(recorder.Input(1).size() == 1);
            }
            return;
        case Step::TakeAll:
            port.Receive(bytes);
            Require(recorder.Input(0).size() == bytes.size());
            return;
        case Step::Clear:
            port.Receive(bytes);
            recorder.ClearInBuffer();
            return Require(port.InBufferCount() == 0);
        case Step::Find:
            for (const std::uint8_t byte : bytes) {
                constexpr int Findings = static_cast<int>(LinkFinding::BrokenOff) + 1;
                recorder.OnFinding(static_cast<LinkFinding>(byte % Findings), byte);
            }
            return;
        case Step::Open:
            return recorder.SetPortOpen(true);
        case Step::Close:
            return recorder.SetPortOpen(false);
        case Step::Lose:
            return recorder.LookForHangUp();
    }
}

void LookAtAll(const TraceStore& kept) {
    const LoggerNames names{{{1, {1, 2, 3}}, "Hill Tanks"}};
    for (std::uint64_t number = kept.First(); number < kept.End(); ++number) {
        const TraceEntry entry = kept.At(number);
        const ExchangeWords words = InWords(entry, names);
        Require(IsFaulty(entry) == !words.Fault.empty());
        Require(!words.Who.empty() && !LineOf(words).empty());
        Require(Passes(entry, {.Kind = KindOf(entry)}));
        static_cast<void>(HexOf(entry));
    }
    TraceRows rows(kept);
    rows.Append(rows.Fresh());
    Require(rows.Count() == kept.End() - kept.First());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedPort port;
    const FuzzedClock clock;
    LinkRecorder recorder(port, clock, TraceStore(16, 2 * TraceStore::MostOfOne));
    std::span<const std::uint8_t> rest(data, size);
    while (!rest.empty()) {
        // Three bits say what, the other five how long, in steps of nine: up to 279 bytes.
        const auto step = static_cast<Step>(rest[0] & 7);
        const std::size_t wanted = static_cast<std::size_t>(rest[0] >> 3) * 9;
        const std::size_t length = std::min(wanted, rest.size() - 1);
        Do(step, rest.subspan(1, length), port, recorder);
        rest = rest.subspan(1 + length);
    }
    LookAtAll(recorder.Kept());
    return 0;
}
