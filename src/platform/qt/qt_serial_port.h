#ifndef ORVIA_PLATFORM_QT_QT_SERIAL_PORT_H
#define ORVIA_PLATFORM_QT_QT_SERIAL_PORT_H

#include <QSerialPort>
#include <QString>
#include <QTimer>
#include <deque>

#include "platform/host.h"
#include "platform/line_pace.h"
#include "platform/qt/line_settings.h"

/// The serial port over the system's own. Bytes come and go while events run.
class QtSerialPort final : public SerialPort {
 public:
    /// Bytes that wait unread at most; what comes beyond is lost, as on a full hardware buffer.
    static constexpr std::size_t MaxWaiting = 1U << 20U;

    /// `portsFolder` may hold symbolic links "COM1" to "COM16" to devices.
    explicit QtSerialPort(QString portsFolder);
    ~QtSerialPort() override;
    QtSerialPort(const QtSerialPort&) = delete;
    QtSerialPort& operator=(const QtSerialPort&) = delete;

    [[nodiscard]] const QString& PortsFolder() const { return portsFolder_; }

    [[nodiscard]] int CommPort() const override { return number_; }
    void SetCommPort(int number) override;
    [[nodiscard]] std::string Settings() const override { return settings_; }
    void SetSettings(const std::string& settings) override;
    [[nodiscard]] bool PortOpen() const override;
    void SetPortOpen(bool open) override;
    void SetDTREnable(bool enable) override;
    void Expect(int count) override;
    [[nodiscard]] int InBufferCount() const override;
    void ClearInBuffer() override;
    [[nodiscard]] Bytes Input(int InputLen) override;
    void Output(std::span<const std::uint8_t> bytes) override;
    void LookForHangUp() override;

 private:
    void Open();
    void Close();
    void TakeReceived();
    void Keep(const QByteArray& arrived);
    void EndRest();
    void OnError(QSerialPort::SerialPortError error);
    void SettleError();

    QString portsFolder_;
    int number_ = 1;
    std::string settings_ = "9600,N,8,1";
    LineSettings line_;
    std::deque<std::uint8_t> received_;
    LinePace pace_;
    int errorsInARow_ = 0;  // since a byte last went through
    bool failed_ = false;   // closed for the program, the device not yet let go
    QTimer settle_;         // runs once, when the port's own signal has returned
    QTimer rest_;           // runs while expected bytes cannot be in yet
    QSerialPort port_;      // last, so that it goes first
};

#endif  // ORVIA_PLATFORM_QT_QT_SERIAL_PORT_H
