#include <cstdio>

#include "book_bench.h"
#include "console/for_all.h"
#include "console/signal_monitor.h"

namespace {

using namespace testing_support;

/// Time that the wire itself takes: bytes at the line's rate, and the delays of radio, air, logger.
class WireClock {
 public:
    explicit WireClock(simulator::Network& network) : network_(network) {
        network_.ClearRecord();
        Watch();
    }

    [[nodiscard]] Microseconds Taken() const {
        const auto bytes = static_cast<Microseconds>(network_.Written().size()) + received_;
        return bytes * 10 * Second / network_.LineBaud + delays_;
    }
    [[nodiscard]] int Leaves() const { return leaves_; }

 private:
    void Watch() {
        network_.SetTrace([this](const simulator::Exchange& exchange) {
            received_ += static_cast<Microseconds>(exchange.Sent.size());
            delays_ += exchange.OfRadio ? network_.RadioDelay
                                        : network_.LoggerDelay + 2 * network_.AirDelay;
            const Bytes leave{0xCC, 'A', 'T', 'O', 0x0D};
            leaves_ += exchange.OfRadio && exchange.Request == leave ? 1 : 0;
        });
    }

    simulator::Network& network_;
    Microseconds received_ = 0;
    Microseconds delays_ = 0;
    int leaves_ = 0;
};

constexpr Microseconds Tick = 100 * Millisecond;

/// What pauses demand. One of N ticks ends with the Nth tick, so it lasts between N - 1 and N.
struct Pauses {
    Microseconds Least = 0;
    Microseconds Most = 0;

    Pauses& Add(int times, int ticks) {
        Least += times * (ticks - 1) * Tick;
        Most += times * ticks * Tick;
        return *this;
    }
};

constexpr int LeavePause = 5;   // ticks before the radio leaves command mode
constexpr int PurgePause = 2;   // ticks in which the answer to that runs out
constexpr int SampleWait = 12;  // ticks until a sample that was asked for is read

Pauses OfLeaves(int leaves) {
    return Pauses().Add(leaves, LeavePause).Add(leaves, PurgePause);
}

class PacingTest : public BookBench {
 protected:
    PacingTest() { console.Connect(); }

    static double Seconds(Microseconds time) { return static_cast<double>(time) / Second; }
};

TEST_F(PacingTest, WalkOverThirtyWindowsTakesNoLongerThanTheWireDemands) {
    constexpr int Windows = 30;
    for (int number = 4; number <= Windows; ++number) {
        console.AddSite(BasicSite(number));
    }
    for (int number = 1; number <= Windows; ++number) {
        console.OpenWindow(number);
    }
    const WireClock wire(console.Outside.Network);
    const Microseconds start = console.Outside.Time.Now();
    GetSampleForAll(console.ForAll());
    const Microseconds took = console.Outside.Time.Now() - start;
    const Pauses pauses = OfLeaves(wire.Leaves()).Add(Windows, SampleWait);
    std::printf("walk over %d windows: %.2f s; the line takes %.2f s, pauses %.2f s to %.2f s\n",
                Windows, Seconds(took), Seconds(wire.Taken()), Seconds(pauses.Least),
                Seconds(pauses.Most));
    EXPECT_EQ(wire.Leaves(), Windows);
    EXPECT_GE(Seconds(took), Seconds(pauses.Least + wire.Taken()));
    EXPECT_LE(Seconds(took), Seconds(pauses.Most + wire.Taken()));
}

/// A monitor that ends after so many readings.
class CountingMonitor final : public SignalView, public SignalMonitorDialog {
 public:
    explicit CountingMonitor(int readings) : left_(readings) {}
    void EnableNext(bool /*enable*/) override {}
    void ShowRadio(const RadioTexts& /*texts*/) override {}
    void ShowLevel(const std::string& text, int /*barLength*/) override {
        EXPECT_EQ(text, "-62 DBm");
        if (--left_ == 0) {
            ExitMonitor(monitor_, *this);
        }
    }
    void HideMonitor() override {}
    void ShowMonitor(const OperationContext& context, std::int16_t clientIndex) override {
        monitor_.ClientIndex = clientIndex;
        RunMonitor(context, monitor_, *this);
    }

 private:
    int left_;
    SignalMonitor monitor_;
};

TEST_F(PacingTest, MonitorPollsAsFastAsTheExchangeAllows) {
    constexpr int Readings = 100;
    console.OpenWindow(1);
    CountingMonitor monitor(Readings);
    const WireClock wire(console.Outside.Network);
    const Microseconds start = console.Outside.Time.Now();
    ShowSignalLevel(console.Operation(), monitor);
    const Microseconds took = console.Outside.Time.Now() - start;
    const Pauses pauses = OfLeaves(wire.Leaves());
    std::printf("signal monitor: %.3f polls a second; the exchange allows %.3f to %.3f\n",
                Readings / Seconds(took), Readings / Seconds(pauses.Most + wire.Taken()),
                Readings / Seconds(pauses.Least + wire.Taken()));
    EXPECT_GE(Seconds(took), Seconds(pauses.Least + wire.Taken()));
    EXPECT_LE(Seconds(took), Seconds(pauses.Most + wire.Taken()));
}

}  // namespace
