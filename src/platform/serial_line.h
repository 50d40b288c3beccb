#ifndef ORVIA_PLATFORM_SERIAL_LINE_H
#define ORVIA_PLATFORM_SERIAL_LINE_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>

#include "common/bytes.h"

/// How a call of the system stands that was begun.
enum class CallState { Done, Pending, Failed };

/// An open port of a system whose calls are begun and end later. Of each kind one is under way at
/// most. What ends raises a signal, also where it ends at once. Nothing here waits.
class LineCalls {
 public:
    virtual ~LineCalls() = default;

    /// Begins to wait for a byte; False if that fails.
    [[nodiscard]] virtual bool BeginWait() = 0;
    [[nodiscard]] virtual CallState EndWait() = 0;

    /// Begins to read what has come, which may be nothing.
    [[nodiscard]] virtual bool BeginRead() = 0;
    /// Adds what was read to `into`.
    [[nodiscard]] virtual CallState EndRead(Bytes& into) = 0;

    /// Begins to send. The bytes stand until the call ends.
    [[nodiscard]] virtual bool BeginWrite(std::span<const std::uint8_t> bytes) = 0;
    /// `count` tells how many of the bytes went.
    [[nodiscard]] virtual CallState EndWrite(std::size_t& count) = 0;

    /// Throws away what the system has received.
    virtual void Purge() = 0;
    /// Whether the device is still there.
    [[nodiscard]] virtual bool IsThere() = 0;
};

/// Reads and writes an open port by such calls. A wait for bytes is always under way; what has come
/// is read behind its beginning, so that no byte falls between reading and waiting.
class SerialLine {
 public:
    /// Bytes that wait unread at most; what comes beyond is lost, as on a full hardware buffer.
    static constexpr std::size_t MaxWaiting = 1U << 20U;
    /// Waits that end without a byte, one behind the other, before the device is asked after: a
    /// purge makes one or two, a device that is gone may make any number.
    static constexpr int MostEmptyWaits = 16;

    explicit SerialLine(LineCalls& calls) : calls_(calls) {}

    /// Begins to listen.
    void Start();
    /// Takes in what has ended, upon a signal.
    void OnSignal();
    /// Called on every tick: takes in what no signal told of, and looks for the device.
    void Look();

    /// Whether the device is gone; nothing is begun any more.
    [[nodiscard]] bool Failed() const { return failed_; }
    /// Whether bytes are still to go.
    [[nodiscard]] bool IsSending() const { return !failed_ && !sending_.empty(); }

    [[nodiscard]] std::size_t Waiting() const { return received_.size(); }
    /// Takes up to `most` received bytes out; all that wait if it is 0.
    [[nodiscard]] Bytes Take(std::size_t most);
    void Purge();
    void Send(std::span<const std::uint8_t> bytes);

 private:
    void FinishWait();
    void FinishRead();
    void FinishWrite();
    void Listen();
    void ReadAll();
    void Keep(const Bytes& bytes);
    void BeginSending();

    LineCalls& calls_;
    std::deque<std::uint8_t> received_;
    Bytes sending_;  // what the write under way was given
    Bytes queued_;   // what goes behind it
    bool waits_ = false;
    bool reads_ = false;
    bool failed_ = false;
    int emptyWaits_ = 0;  // since a byte last came
};

#endif  // ORVIA_PLATFORM_SERIAL_LINE_H
