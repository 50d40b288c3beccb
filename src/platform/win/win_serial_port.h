#ifndef ORVIA_PLATFORM_WIN_WIN_SERIAL_PORT_H
#define ORVIA_PLATFORM_WIN_WIN_SERIAL_PORT_H

#include <QWinEventNotifier>
#include <memory>
#include <vector>

#include "platform/com_port.h"
#include "platform/host.h"
#include "platform/win/win_line.h"

/// The serial port on Windows. Bytes come and go while events run.
class WinSerialPort final : public SerialPort {
 public:
    WinSerialPort() = default;
    ~WinSerialPort() override;
    WinSerialPort(const WinSerialPort&) = delete;
    WinSerialPort& operator=(const WinSerialPort&) = delete;

    [[nodiscard]] int CommPort() const override { return number_; }
    void SetCommPort(int number) override;
    [[nodiscard]] std::string Settings() const override { return settings_; }
    void SetSettings(const std::string& settings) override;
    [[nodiscard]] bool PortOpen() const override;
    void SetPortOpen(bool open) override;
    void SetDTREnable(bool enable) override;
    [[nodiscard]] int InBufferCount() const override;
    void ClearInBuffer() override;
    [[nodiscard]] Bytes Input(int InputLen) override;
    void Output(std::span<const std::uint8_t> bytes) override;
    void LookForHangUp() override;

 private:
    /// What there is of an open port.
    struct Opened {
        Opened(int number, const LineSettings& settings) : Calls(number, settings), Line(Calls) {}

        WinLine Calls;
        SerialLine Line;
        std::vector<std::unique_ptr<QWinEventNotifier>> Signals;
    };

    void Open();
    void Close();
    void OnSignal() const;

    int number_ = 1;
    std::string settings_ = "9600,N,8,1";
    LineSettings line_;
    std::unique_ptr<Opened> opened_;
};

#endif  // ORVIA_PLATFORM_WIN_WIN_SERIAL_PORT_H
