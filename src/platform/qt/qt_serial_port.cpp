#include "platform/qt/qt_serial_port.h"

#include <algorithm>
#include <utility>

#include "common/fault.h"
#include "common/number_text.h"
#include "platform/qt/port_devices.h"
#include "platform/qt/port_hang_up.h"
#include "platform/qt/text_qt.h"

namespace {

// A purge between the system's "bytes are there" and the read that follows makes that read come
// back empty, which is reported as an error of a healthy port. A few such in a row are nothing.
constexpr int MaxErrorsInARow = 16;

bool MayEndThePort(QSerialPort::SerialPortError error) {
    switch (error) {
        case QSerialPort::DeviceNotFoundError:
        case QSerialPort::PermissionError:
        case QSerialPort::WriteError:
        case QSerialPort::ReadError:
        case QSerialPort::ResourceError:
            return true;
        default:
            return false;
    }
}

}  // namespace

QtSerialPort::QtSerialPort(QString portsFolder) : portsFolder_(std::move(portsFolder)) {
    QObject::connect(&port_, &QSerialPort::readyRead, &port_, [this] { TakeReceived(); });
    QObject::connect(&port_, &QSerialPort::bytesWritten, &port_, [this] { errorsInARow_ = 0; });
    QObject::connect(&port_, &QSerialPort::errorOccurred, &port_,
                     [this](QSerialPort::SerialPortError error) { OnError(error); });
    QObject::connect(&settle_, &QTimer::timeout, &port_, [this] { SettleError(); });
    settle_.setSingleShot(true);
    QObject::connect(&rest_, &QTimer::timeout, &port_, [this] { EndRest(); });
    rest_.setSingleShot(true);
    rest_.setTimerType(Qt::PreciseTimer);
}

QtSerialPort::~QtSerialPort() {
    Close();
    port_.disconnect();
}

void QtSerialPort::SetCommPort(int number) {
    if (PortOpen()) {
        throw Fault("the number of an open port cannot change");
    }
    if (number < FirstPort || number > LastPort) {
        throw Fault("there is no port COM" + IntegerToText(number));
    }
    number_ = number;
}

void QtSerialPort::SetSettings(const std::string& settings) {
    if (PortOpen()) {
        throw Fault("the settings of an open port cannot change");
    }
    line_ = ReadLineSettings(settings);
    settings_ = settings;
}

bool QtSerialPort::PortOpen() const {
    return port_.isOpen() && !failed_;
}

void QtSerialPort::SetPortOpen(bool open) {
    if (open == PortOpen()) {
        return;
    }
    Close();
    if (open) {
        Open();
    }
}

void QtSerialPort::Open() {
    const QString device = DeviceOfPort(number_, portsFolder_);
    port_.setPortName(device);
    port_.setBaudRate(line_.BaudRate);
    port_.setParity(line_.Parity);
    port_.setDataBits(line_.DataBits);
    port_.setStopBits(line_.StopBits);
    if (!port_.open(QIODevice::ReadWrite)) {
        throw Fault("COM" + IntegerToText(number_) + " (" + FromQt(device) +
                    ") cannot be opened: " + FromQt(port_.errorString()));
    }
    errorsInARow_ = 0;
    pace_.Forget();
}

void QtSerialPort::Close() {
    if (port_.isOpen()) {
        if (PortOpen() && port_.bytesToWrite() > 0) {
            failed_ = true;
            port_.flush();
        }
        port_.close();
    }
    received_.clear();
    failed_ = false;
    settle_.stop();
    rest_.stop();
    port_.setReadBufferSize(0);
}

void QtSerialPort::SetDTREnable(bool enable) {
    if (PortOpen()) {
        port_.setDataTerminalReady(enable);
    }
}

// While it rests, the port's own buffer is full with a single byte, and nobody listens for others.
void QtSerialPort::Expect(int count) {
    const std::chrono::milliseconds rest = pace_.RestFor(count);
    if (count <= 1 && rest_.isActive()) {
        EndRest();
    } else if (PortOpen() && rest.count() > 0 && !rest_.isActive()) {
        port_.setReadBufferSize(1);
        rest_.start(rest);
    }
}

/// Takes in what has come meanwhile, and listens again.
void QtSerialPort::EndRest() {
    rest_.stop();
    if (!PortOpen()) {
        return;
    }
    const std::size_t before = received_.size();
    LinePace pace = pace_;
    port_.setReadBufferSize(0);
    TakeReceived();
    static_cast<void>(port_.waitForReadyRead(0));
    pace.CameUnseen(std::chrono::steady_clock::now(), static_cast<int>(received_.size() - before));
    pace_ = pace;
}

int QtSerialPort::InBufferCount() const {
    return static_cast<int>(received_.size());
}

void QtSerialPort::ClearInBuffer() {
    received_.clear();
    if (PortOpen()) {
        port_.clear(QSerialPort::Input);
    }
}

Bytes QtSerialPort::Input(int InputLen) {
    const auto waiting = static_cast<std::ptrdiff_t>(received_.size());
    const auto end =
        received_.begin() + (InputLen == 0 ? waiting : std::min<std::ptrdiff_t>(InputLen, waiting));
    Bytes taken(received_.begin(), end);
    received_.erase(received_.begin(), end);
    return taken;
}

void QtSerialPort::Output(std::span<const std::uint8_t> bytes) {
    if (PortOpen()) {
        port_.write(QByteArray(reinterpret_cast<const char*>(bytes.data()),
                               static_cast<qsizetype>(bytes.size())));
    }
}

void QtSerialPort::LookForHangUp() {
    if (rest_.isActive()) {
        EndRest();
    }
    if (PortOpen() && HasHungUp(port_)) {
        Close();
    }
}

void QtSerialPort::TakeReceived() {
    if (rest_.isActive() && port_.bytesAvailable() <= 1) {
        return;
    }
    const QByteArray arrived = port_.readAll();
    if (failed_ || arrived.isEmpty()) {
        return;
    }
    pace_.Came(std::chrono::steady_clock::now(), static_cast<int>(arrived.size()));
    Keep(arrived);
}

void QtSerialPort::Keep(const QByteArray& arrived) {
    errorsInARow_ = 0;
    const std::size_t room = MaxWaiting - received_.size();
    const auto count = std::min(room, static_cast<std::size_t>(arrived.size()));
    received_.insert(received_.end(), arrived.begin(),
                     arrived.begin() + static_cast<std::ptrdiff_t>(count));
}

void QtSerialPort::OnError(QSerialPort::SerialPortError error) {
    if (!PortOpen() || !MayEndThePort(error)) {
        return;
    }
    ++errorsInARow_;
    if (errorsInARow_ > MaxErrorsInARow || HasHungUp(port_)) {
        failed_ = true;
        received_.clear();
    }
    settle_.start();
}

// Closing inside the port's own signal would pull its innards from under it.
void QtSerialPort::SettleError() {
    if (failed_) {
        Close();
    } else if (PortOpen()) {
        // After some errors QSerialPort no longer listens; setting its buffer makes it listen.
        port_.setReadBufferSize(0);
    }
}
