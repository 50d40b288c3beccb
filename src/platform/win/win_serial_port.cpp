#include "platform/win/win_serial_port.h"

#include <QDeadlineTimer>

#include "common/fault.h"

namespace {

/// Milliseconds that closing leaves to bytes which are on their way.
constexpr int LeavePatience = 200;

}  // namespace

WinSerialPort::~WinSerialPort() {
    Close();
}

void WinSerialPort::SetCommPort(int number) {
    if (PortOpen()) {
        throw Fault("the number of an open port cannot change");
    }
    static_cast<void>(ComPortName(number));
    number_ = number;
}

void WinSerialPort::SetSettings(const std::string& settings) {
    if (PortOpen()) {
        throw Fault("the settings of an open port cannot change");
    }
    line_ = ReadLineSettings(settings);
    settings_ = settings;
}

bool WinSerialPort::PortOpen() const {
    return opened_ != nullptr && !opened_->Line.Failed();
}

void WinSerialPort::SetPortOpen(bool open) {
    if (open == PortOpen()) {
        return;
    }
    Close();
    if (open) {
        Open();
    }
}

void WinSerialPort::Open() {
    opened_ = std::make_unique<Opened>(number_, line_);
    for (void* event : opened_->Calls.Events()) {
        auto& signal = opened_->Signals.emplace_back(std::make_unique<QWinEventNotifier>(event));
        QObject::connect(signal.get(), &QWinEventNotifier::activated, signal.get(),
                         [this] { OnSignal(); });
    }
    opened_->Line.Start();
}

void WinSerialPort::Close() {
    if (opened_ == nullptr) {
        return;
    }
    for (const auto& signal : opened_->Signals) {
        signal->setEnabled(false);
    }
    const QDeadlineTimer patience(LeavePatience);
    while (opened_->Line.IsSending() && !patience.hasExpired()) {
        opened_->Calls.AwaitWrite(static_cast<int>(patience.remainingTime()));
        opened_->Line.OnSignal();
    }
    opened_.reset();
}

void WinSerialPort::OnSignal() const {
    opened_->Line.OnSignal();
    if (opened_->Line.Failed()) {
        // Its signals would go on; a tick closes what is left, when no signal is under way.
        for (const auto& signal : opened_->Signals) {
            signal->setEnabled(false);
        }
    }
}

void WinSerialPort::SetDTREnable(bool enable) {
    if (PortOpen()) {
        opened_->Calls.SetDTR(enable);
    }
}

int WinSerialPort::InBufferCount() const {
    // Signals come by other threads, and late where many programs want the processor: whoever asks
    // learns of what has ended before its signal.
    if (PortOpen()) {
        OnSignal();
    }
    return PortOpen() ? static_cast<int>(opened_->Line.Waiting()) : 0;
}

void WinSerialPort::ClearInBuffer() {
    if (PortOpen()) {
        opened_->Line.Purge();
    }
}

Bytes WinSerialPort::Input(int InputLen) {
    return PortOpen() ? opened_->Line.Take(static_cast<std::size_t>(InputLen)) : Bytes();
}

void WinSerialPort::Output(std::span<const std::uint8_t> bytes) {
    if (PortOpen()) {
        opened_->Line.Send(bytes);
    }
}

void WinSerialPort::LookForHangUp() {
    if (PortOpen()) {
        opened_->Line.Look();
    }
    if (opened_ != nullptr && opened_->Line.Failed()) {
        Close();
    }
}
