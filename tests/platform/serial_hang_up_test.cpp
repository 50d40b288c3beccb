#include <QTimer>
#include <ctime>
#include <memory>

#include "platform/qt/port_hang_up.h"
#include "platform/qt/qt_event_pump.h"
#include "support/qt/serial_bench.h"

#ifndef _WIN32

namespace {

using SerialHangUpTest = SerialBench;

void RunEventsFor(int milliseconds) {
    bool over = false;
    const Later later(milliseconds, [&] { over = true; });
    EXPECT_TRUE(RunEventsUntil([&] { return over; }));
}

TEST_F(SerialHangUpTest, AnIdlePortClosesItself) {
    Open();
    far.HangUp();
    EXPECT_TRUE(ClosesItself());
    EXPECT_EQ(port.InBufferCount(), 0);
}

TEST_F(SerialHangUpTest, APortInAWaitClosesItself) {
    Open();
    QtEventPump pump;
    const Posted hangUp([this] { far.HangUp(); });
    for (int i = 0; i < 10 && port.PortOpen(); ++i) {
        pump.WaitForMoreEvents();
    }
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(SerialHangUpTest, APortWithOutputUnderWayClosesItself) {
    Open();
    port.Output(PatternOf(100'000));
    QCoreApplication::processEvents();
    far.HangUp();
    EXPECT_TRUE(ClosesItself());
}

TEST_F(SerialHangUpTest, OutputAfterTheHangUpIsNoFault) {
    Open();
    far.HangUp();
    port.Output(Bytes{1, 2, 3});
    port.ClearInBuffer();
    port.SetDTREnable(false);
    EXPECT_TRUE(ClosesItself());
}

TEST_F(SerialHangUpTest, BytesOfAVanishedDeviceAreDropped) {
    Open();
    Arrive({1, 2, 3});
    far.HangUp();
    EXPECT_TRUE(ClosesItself());
    EXPECT_EQ(port.InBufferCount(), 0);
    EXPECT_TRUE(port.Input(0).empty());
}

TEST_F(SerialHangUpTest, LookingFindsItWithoutAnyEvent) {
    Open();
    far.HangUp();
    EXPECT_TRUE(port.PortOpen());
    port.LookForHangUp();
    EXPECT_FALSE(port.PortOpen());
    EXPECT_EQ(port.InBufferCount(), 0);
    port.LookForHangUp();
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(SerialHangUpTest, LookingLeavesAHealthyPortAlone) {
    port.LookForHangUp();
    Open();
    Arrive({1});
    port.LookForHangUp();
    EXPECT_TRUE(port.PortOpen());
    EXPECT_EQ(port.InBufferCount(), 1);
}

TEST_F(SerialHangUpTest, ClosingAVanishedPortByHandIsQuiet) {
    Open();
    far.HangUp();
    port.SetPortOpen(false);
    EXPECT_FALSE(port.PortOpen());
    QCoreApplication::processEvents();
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(SerialHangUpTest, AVanishedPortOpensAgainOnAnotherDevice) {
    Open();
    far.HangUp();
    ASSERT_TRUE(ClosesItself());
    const PseudoTerminal other;
    Wire(2, other.Device());
    port.SetCommPort(2);
    port.SetPortOpen(true);
    RunEventsFor(20);
    EXPECT_TRUE(port.PortOpen());
}

// The late closing of the first session must not end the second.
TEST_F(SerialHangUpTest, ReopeningBeforeTheLateClosingKeepsTheNewSession) {
    Open();
    far.HangUp();
    ASSERT_TRUE(ClosesItself());
    const PseudoTerminal other;
    Wire(2, other.Device());
    port.SetCommPort(2);
    port.SetPortOpen(true);
    QCoreApplication::sendPostedEvents();
    EXPECT_TRUE(port.PortOpen());
}

TEST_F(SerialHangUpTest, APortThatGoesAwayWhileItsErrorIsPendingIsSafe) {
    auto brief = std::make_unique<QtSerialPort>(folder.path());
    brief->SetPortOpen(true);
    far.HangUp();
    const Posted end([&] { brief.reset(); });
    EXPECT_TRUE(RunEventsUntil([&] { return brief == nullptr; }));
    QCoreApplication::processEvents();
}

TEST_F(SerialHangUpTest, AVanishedDeviceCostsNoProcessorTime) {
    Open();
    far.HangUp();
    const std::clock_t start = std::clock();
    RunEventsFor(300);
    EXPECT_LT(std::clock() - start, CLOCKS_PER_SEC / 50);
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(SerialHangUpTest, AnIdleOpenPortCostsNoProcessorTime) {
    Open();
    const std::clock_t start = std::clock();
    RunEventsFor(300);
    EXPECT_LT(std::clock() - start, CLOCKS_PER_SEC / 50);
    EXPECT_TRUE(port.PortOpen());
}

}  // namespace

#endif
