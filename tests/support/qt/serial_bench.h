#ifndef ORVIA_TESTS_SUPPORT_QT_SERIAL_BENCH_H
#define ORVIA_TESTS_SUPPORT_QT_SERIAL_BENCH_H

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdint>

#include "platform/qt/qt_serial_port.h"
#include "support/qt/pseudo_terminal.h"
#include "support/qt/run_events.h"

/// `count` bytes that go through all values, so that a lost or changed one shows.
inline Bytes PatternOf(std::size_t count) {
    Bytes bytes(count);
    for (std::size_t i = 0; i < count; ++i) {
        bytes[i] = static_cast<std::uint8_t>(i * 7 + i / 256);
    }
    return bytes;
}

/// A port COM1 that is wired to the far end.
class SerialBench : public ::testing::Test {
 protected:
    SerialBench() : port(folder.path()) { Wire(1, far.Device()); }

    /// Makes COM`number` stand for the device.
    void Wire(int number, const QString& device) const {
        const QString link = QDir(folder.path()).filePath(QStringLiteral("COM%1").arg(number));
        ASSERT_TRUE(QFile::link(device, link));
    }

    void Open() {
        port.SetCommPort(1);
        port.SetSettings("38400,N,8,1");
        port.SetPortOpen(true);
    }

    /// Sends from the far end and waits until all of it waits in the port.
    void Arrive(const Bytes& bytes) {
        ASSERT_EQ(far.Send(bytes), bytes.size());
        const int wanted = port.InBufferCount() + static_cast<int>(bytes.size());
        ASSERT_TRUE(RunEventsUntil([&] { return port.InBufferCount() >= wanted; }));
    }

    [[nodiscard]] bool ClosesItself() {
        return RunEventsUntil([this] { return !port.PortOpen(); });
    }

    QTemporaryDir folder;
    PseudoTerminal far;
    QtSerialPort port;
};

#endif  // ORVIA_TESTS_SUPPORT_QT_SERIAL_BENCH_H
