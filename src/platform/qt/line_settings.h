#ifndef ORVIA_PLATFORM_QT_LINE_SETTINGS_H
#define ORVIA_PLATFORM_QT_LINE_SETTINGS_H

#include <QSerialPort>
#include <string>

/// How bytes go over a serial line.
struct LineSettings {
    qint32 BaudRate = 9600;  ///< above 0; what the device cannot do fails when it opens
    QSerialPort::Parity Parity = QSerialPort::NoParity;
    QSerialPort::DataBits DataBits = QSerialPort::Data8;
    QSerialPort::StopBits StopBits = QSerialPort::OneStop;
};

/// Reads "38400,N,8,1": baud rate, parity (N, E, O, M or S), data bits (5 to 8), stop bits (1, 1.5
/// or 2). Anything else is a Fault.
[[nodiscard]] LineSettings ReadLineSettings(const std::string& text);

#endif  // ORVIA_PLATFORM_QT_LINE_SETTINGS_H
