#include "platform/qt/qt_event_pump.h"

#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <chrono>
#include <ctime>

#include "support/qt/serial_bench.h"

namespace {

TEST(EventPumpTest, RunsWhatIsPendingAndReturns) {
    QtEventPump pump;
    int ran = 0;
    const Posted now([&] { ++ran; });
    const Later later(3'600'000, [&] { ran += 100; });
    pump.RunPendingEvents();
    EXPECT_EQ(ran, 1);
    pump.RunPendingEvents();
    EXPECT_EQ(ran, 1);
}

TEST(EventPumpTest, AWaitEndsWithATick) {
    QtEventPump pump;
    QTimer tick;
    int ticks = 0;
    QObject::connect(&tick, &QTimer::timeout, &tick, [&] { ++ticks; });
    tick.start(10);
    const std::clock_t start = std::clock();
    int turns = 0;
    while (ticks < 10) {
        pump.WaitForMoreEvents();
        ++turns;
    }
    EXPECT_LE(turns, 30) << "the wait does not sleep";
    EXPECT_LT(std::clock() - start, CLOCKS_PER_SEC / 50);
}

TEST(EventPumpTest, AWaitEndsWithAClick) {
    QtEventPump pump;
    QPushButton button;
    bool clicked = false;
    QObject::connect(&button, &QPushButton::clicked, &button, [&] { clicked = true; });
    button.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&button));
    const Posted click([&] { QTest::mouseClick(button.windowHandle(), Qt::LeftButton); });
    for (int i = 0; i < 10 && !clicked; ++i) {
        pump.WaitForMoreEvents();
    }
    EXPECT_TRUE(clicked);
}

TEST(EventPumpTest, AWaitEndsThoughNothingHappens) {
    QtEventPump pump;
    const auto start = std::chrono::steady_clock::now();
    while (std::chrono::steady_clock::now() - start < std::chrono::milliseconds(900)) {
        pump.WaitForMoreEvents();
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3));
}

TEST(EventPumpTest, AWaitInsideAHandlerRunsOtherTimersOnly) {
    QtEventPump pump;
    QTimer first;
    QTimer second;
    int depth = 0;
    int deepest = 0;
    int seconds = 0;
    QObject::connect(&second, &QTimer::timeout, &second, [&] { ++seconds; });
    QObject::connect(&first, &QTimer::timeout, &first, [&] {
        deepest = std::max(deepest, ++depth);
        const int until = seconds + 5;
        while (seconds < until) {
            pump.WaitForMoreEvents();
        }
        --depth;
        first.stop();
    });
    first.start(5);
    second.start(5);
    EXPECT_TRUE(RunEventsUntil([&] { return deepest > 0 && depth == 0; }));
    EXPECT_EQ(deepest, 1);
}

#ifndef _WIN32

using EventPumpSerialTest = SerialBench;

TEST_F(EventPumpSerialTest, AWaitEndsWithAByteAlone) {
    Open();
    QtEventPump pump;
    pump.RunPendingEvents();
    ASSERT_EQ(far.Send({0xFA}), 1U);
    const auto start = std::chrono::steady_clock::now();
    while (port.InBufferCount() == 0 &&
           std::chrono::steady_clock::now() - start < std::chrono::seconds(5)) {
        pump.WaitForMoreEvents();
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(500));
    EXPECT_EQ(port.Input(0), Bytes{0xFA});
}

#endif

}  // namespace
