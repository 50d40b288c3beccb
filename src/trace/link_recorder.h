#ifndef ORVIA_TRACE_LINK_RECORDER_H
#define ORVIA_TRACE_LINK_RECORDER_H

#include <functional>
#include <set>
#include <string>
#include <utility>

#include "platform/host.h"
#include "records/link_listener.h"
#include "trace/trace_store.h"

/// Stands between the link and its port and keeps what passes: every call goes through as it is, at
/// once and with the same result. The one thing that it adds is a look at bytes that are thrown
/// away.
class LinkRecorder final : public SerialPort, public LinkListener {
 public:
    LinkRecorder(SerialPort& port, const SystemClock& clock, TraceStore store = TraceStore())
        : port_(port), clock_(clock), store_(std::move(store)) {}
    LinkRecorder(const LinkRecorder&) = delete;
    LinkRecorder& operator=(const LinkRecorder&) = delete;

    [[nodiscard]] const TraceStore& Kept() const { return store_; }
    /// The loggers that were asked something since the start.
    [[nodiscard]] const std::set<TraceAddress>& Loggers() const { return loggers_; }

    /// Has `changed` called at the next change, once, from inside it; an empty one takes that back.
    void TellNextChange(std::function<void()> changed) { changed_ = std::move(changed); }

    // SerialPort
    [[nodiscard]] int CommPort() const override { return port_.CommPort(); }
    void SetCommPort(int number) override { port_.SetCommPort(number); }
    [[nodiscard]] std::string Settings() const override { return port_.Settings(); }
    void SetSettings(const std::string& settings) override { port_.SetSettings(settings); }
    [[nodiscard]] bool PortOpen() const override { return port_.PortOpen(); }
    void SetPortOpen(bool open) override;
    void SetDTREnable(bool enable) override { port_.SetDTREnable(enable); }
    void Expect(int count) override { port_.Expect(count); }
    [[nodiscard]] int InBufferCount() const override { return port_.InBufferCount(); }
    void ClearInBuffer() override;
    [[nodiscard]] Bytes Input(int InputLen) override;
    void Output(std::span<const std::uint8_t> bytes) override;
    void LookForHangUp() override;

    // LinkListener
    void OnTry(const LinkTry& attempt) override;
    void OnFinding(LinkFinding finding, std::int16_t ticks) override;

 private:
    [[nodiscard]] std::int64_t Now() const;
    void TellChange();
    void NotePort(TraceEvent event, const std::string& reason = {});
    void NoteLoss();
    void Receive(const Bytes& bytes, bool thrown);

    SerialPort& port_;
    const SystemClock& clock_;
    TraceStore store_;
    std::set<TraceAddress> loggers_;
    std::function<void()> changed_;
    LinkTry next_;             ///< of the request that goes out next
    bool announced_ = false;   ///< next_ was told
    bool open_ = false;        ///< the port was, when last looked at
    bool exchanging_ = false;  ///< the newest entry takes what comes in
};

/// Whether a finding means that something went wrong.
[[nodiscard]] bool IsFault(LinkFinding finding);

#endif  // ORVIA_TRACE_LINK_RECORDER_H
