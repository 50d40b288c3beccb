// Blocks of history, as any logger might send them. The first byte tells how many channels the
// logger has; each block after it is one byte that tells what becomes of the exchange, then what
// the input still has of its 241 bytes.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "history/upload.h"

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

class NoPort final : public SerialPort {
 public:
    int CommPort() const override { return 1; }
    void SetCommPort(int) override {}
    std::string Settings() const override { return {}; }
    void SetSettings(const std::string&) override {}
    bool PortOpen() const override { return true; }
    void SetPortOpen(bool) override {}
    void SetDTREnable(bool) override {}
    int InBufferCount() const override { return 0; }
    void ClearInBuffer() override {}
    Bytes Input(int) override { return {}; }
    void Output(std::span<const std::uint8_t>) override {}
    void LookForHangUp() override {}
};

/// Every wait is over at once.
class NoEvents final : public EventPump {
 public:
    void RunPendingEvents() override { link->WaitTicks = 0; }
    void WaitForMoreEvents() override { link->WaitTicks = 0; }
    Link* link = nullptr;
};

class NoBoxes final : public MessageBoxes {
 public:
    BoxAnswer Show(const BoxContent&) override { return BoxAnswer::Ok; }
};

/// A logger that answers with the input, and falls silent behind its end.
class InputExchange final : public FrameExchange {
 public:
    explicit InputExchange(std::span<const std::uint8_t> input) : input_(input) {}

    bool SendFrame(std::span<const std::uint8_t>, std::int16_t&) override {
        fate_ = Take();
        return (fate_ & 3) != 0;
    }
    bool ReceiveFrame(Bytes& payload) override {
        std::generate(payload.begin(), payload.end(), [this] { return Take(); });
        return (fate_ & 3) > 1;
    }
    std::int16_t ReadReplyByte() override { return -1; }

 private:
    std::uint8_t Take() {
        if (input_.empty()) {
            return 0;
        }
        const std::uint8_t byte = input_.front();
        input_ = input_.subspan(1);
        return byte;
    }

    std::span<const std::uint8_t> input_;
    std::uint8_t fate_ = 0;
};

class NoView final : public UploadView {
 public:
    std::string Tag() const override { return tag_; }
    void SetTag(const std::string& tag) override { tag_ = tag; }
    void SetBarMaximum(std::int32_t) override {}
    void SetBarValue(std::int32_t) override {}
    void SetRetries(const std::string&) override {}
    void SetProgress(const std::string&) override {}
    void AllowOkay() override { tag_ = TagOkay; }
    void Hide() override {}

 private:
    std::string tag_ = TagStarting;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static HistoryStore store;
    std::span<const std::uint8_t> input(data, size);
    if (input.empty()) {
        return 0;
    }
    LoggerRecord logger;
    logger.NumAnalogChannels = static_cast<std::uint8_t>(1 + input[0] % 8);
    logger.NumDigitalChannels = static_cast<std::uint8_t>(input[0] / 8 % 3);
    NoPort port;
    NoEvents events;
    NoBoxes boxes;
    NoView view;
    Link link(port, events);
    events.link = &link;
    InputExchange exchange(input.subspan(1));
    RunUpload({link, exchange, logger, store, boxes}, view, 100);
    Require(view.Tag() == TagOkay || view.Tag() == TagRunning);
    Require(store.HistoryCount() <= static_cast<std::int32_t>(size / 6 + 240));
    return 0;
}
