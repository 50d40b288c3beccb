#ifndef ORVIA_PLATFORM_WIN_WIN_LINE_H
#define ORVIA_PLATFORM_WIN_WIN_LINE_H

#include <array>
#include <memory>

#include "platform/line_settings.h"
#include "platform/serial_line.h"

/// An open port of Windows. Its calls are overlapped, and each kind of them has an event that is
/// its signal.
class WinLine final : public LineCalls {
 public:
    /// The kinds of calls, which count their events.
    static constexpr std::size_t EventCount = 3;

    /// Opens port `number`; what will not open is a Fault.
    WinLine(int number, const LineSettings& settings);
    /// Gives bytes under way a moment to leave, then ends what is under way.
    ~WinLine() override;
    WinLine(const WinLine&) = delete;
    WinLine& operator=(const WinLine&) = delete;

    /// Handles of the events.
    [[nodiscard]] std::array<void*, EventCount> Events() const;

    void SetDTR(bool raised);
    /// Waits, `milliseconds` at most, until a write under way has ended.
    void AwaitWrite(int milliseconds);

    [[nodiscard]] bool BeginWait() override;
    [[nodiscard]] CallState EndWait() override;
    [[nodiscard]] bool BeginRead() override;
    [[nodiscard]] CallState EndRead(Bytes& into) override;
    [[nodiscard]] bool BeginWrite(std::span<const std::uint8_t> bytes) override;
    [[nodiscard]] CallState EndWrite(std::size_t& count) override;
    void Purge() override;
    [[nodiscard]] bool IsThere() override;

 private:
    struct Calls;

    std::unique_ptr<Calls> calls_;
};

#endif  // ORVIA_PLATFORM_WIN_WIN_LINE_H
