// Whatever a radio or a logger sends in answer to whatever is asked: every exchange ends, with the
// link free and its result one that it can have. The input is cut into answers, one a write.

#include <cstdint>
#include <cstdlib>
#include <deque>
#include <span>
#include <string>

#include "link/frames.h"
#include "link/port.h"
#include "link/server_radio.h"
#include "logger/commands.h"
#include "logger/settings_transfer.h"

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// A port on which each write brings the next piece of the input.
class FuzzedPort final : public SerialPort {
 public:
    explicit FuzzedPort(std::span<const std::uint8_t> input) : input_(input) {}

    int CommPort() const override { return 1; }
    void SetCommPort(int /*number*/) override {}
    std::string Settings() const override { return {}; }
    void SetSettings(const std::string& /*settings*/) override {}
    bool PortOpen() const override { return open_; }
    void SetPortOpen(bool open) override { open_ = open; }
    void SetDTREnable(bool /*enable*/) override {}
    int InBufferCount() const override { return static_cast<int>(waiting_.size()); }
    void ClearInBuffer() override { waiting_.clear(); }
    void LookForHangUp() override {}

    Bytes Input(int InputLen) override {
        Bytes taken;
        while (!waiting_.empty() && (InputLen == 0 || taken.empty())) {
            taken.push_back(waiting_.front());
            waiting_.pop_front();
        }
        return taken;
    }

    void Output(std::span<const std::uint8_t> /*bytes*/) override {
        if (!open_ || input_.empty()) {
            return;
        }
        const std::size_t length = std::min<std::size_t>(input_[0], input_.size() - 1);
        const auto answer = input_.subspan(1, length);
        waiting_.insert(waiting_.end(), answer.begin(), answer.end());
        input_ = input_.subspan(1 + length);
    }

 private:
    std::span<const std::uint8_t> input_;
    std::deque<std::uint8_t> waiting_;
    bool open_ = true;
};

/// Events are ticks, nothing else.
class TickingPump final : public EventPump {
 public:
    void RunPendingEvents() override {}
    void WaitForMoreEvents() override {
        if (Ticked != nullptr && Ticked->WaitTicks > 0) {
            --Ticked->WaitTicks;
        }
    }

    Link* Ticked = nullptr;
};

class SilentBoxes final : public MessageBoxes {
 public:
    BoxAnswer Show(const BoxContent& box) override { return AnswerOfClosedBox(box.Buttons); }
};

class PlainClock final : public SystemClock {
 public:
    LocalTime Now() const override { return {}; }
    std::string DateText(const LocalTime& time) const override { return std::to_string(time.Year); }
    std::string TimeText(const LocalTime& /*time*/) const override { return {}; }
};

void AskRadio(Link& link, SilentBoxes& boxes) {
    std::uint8_t signal = 0;
    try {
        static_cast<void>(comm::SetServerChannel(link, boxes, 0x10));
        static_cast<void>(comm::SetServerMAC(link, boxes, {1, 2, 3}));
    } catch (const Fault&) {
        // An answer too short to look at, which the selection of a client traps.
    }
    static_cast<void>(comm::ReadRadioSignal(link, boxes, signal));
    static_cast<void>(comm::ReadServerSystemID(link));
}

void AskLogger(Link& link) {
    LinkFrames exchange(link);
    const PlainClock clock;
    LoggerState state;
    if (config::GetLoggerSettings(exchange, clock, state)) {
        Require(state.NumAnalogChannels >= 1 && state.NumAnalogChannels <= 8);
        Require(state.SensorWarmupTime <= 60);
    }
    state.NumAnalogChannels = 3;
    DataPoint point;
    static_cast<void>(cmd::ReadSample(exchange, state, clock, point));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedPort port(std::span(data, size));
    TickingPump pump;
    Link link(port, pump);
    pump.Ticked = &link;
    SilentBoxes boxes;
    link.LinkState = LinkConnecting;
    AskRadio(link, boxes);
    Require(link.CommBusy == False);
    AskLogger(link);
    Require(link.CommBusy == False);
    return 0;
}
