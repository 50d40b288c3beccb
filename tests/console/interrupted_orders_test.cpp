// Every operation, with the window or the program closed inside each of its waits.
#include <gtest/gtest.h>

#include <tuple>

#include "console/for_all.h"
#include "console/logger_orders.h"
#include "console/signal_monitor.h"
#include "support/virtual_console.h"

namespace {

using namespace testing_support;

/// A monitor that polls until its radio has been in view for some seconds.
class ShortMonitor final : public SignalView, public SignalMonitorDialog {
 public:
    explicit ShortMonitor(VirtualTime& time) : time_(time) {}

    void EnableNext(bool /*enable*/) override {}
    void ShowRadio(const RadioTexts& /*texts*/) override {}
    void ShowLevel(const std::string& /*text*/, int /*barLength*/) override {}
    void HideMonitor() override {}
    void ShowMonitor(const OperationContext& context, std::int16_t clientIndex) override {
        monitor_->ClientIndex = clientIndex;
        // The press can come when the window has gone with the program.
        time_.In(2 * Second, [monitor = monitor_] { monitor->MonitorState = MonitorStopAsked; });
        RunMonitor(context, *monitor_, *this);
    }

 private:
    VirtualTime& time_;
    std::shared_ptr<SignalMonitor> monitor_ = std::make_shared<SignalMonitor>();
};

/// An operation on the one window that is open.
struct Order {
    const char* Name;
    void (*Run)(VirtualConsole& console);
};

void PrintTo(const Order& order, std::ostream* out) {
    *out << order.Name;
}

const Order Orders[] = {
    {"GetSample", [](VirtualConsole& console) { GetSample(console.Operation()); }},
    {"SampleContinuously",
     [](VirtualConsole& console) { SampleContinuously(console.Operation()); }},
    {"FirmwareVersion", [](VirtualConsole& console) { ShowFirmwareVersion(console.Operation()); }},
    {"SyncTime", [](VirtualConsole& console) { SyncTime(console.Operation()); }},
    {"ClearHistory", [](VirtualConsole& console) { ClearHistory(console.Operation()); }},
    {"ResetPulseAccumulators",
     [](VirtualConsole& console) { ResetPulseAccumulators(console.Operation()); }},
    {"SignalLevel",
     [](VirtualConsole& console) {
         ShortMonitor monitor(console.Outside.Time);
         ShowSignalLevel(console.Operation(), monitor);
     }},
    {"GetSampleForAll", [](VirtualConsole& console) { GetSampleForAll(console.ForAll()); }},
    {"ClearHistoryForAll", [](VirtualConsole& console) { ClearHistoryForAll(console.ForAll()); }},
    {"SyncTimeForAll", [](VirtualConsole& console) { SyncTimeForAll(console.ForAll()); }},
    {"RestartSamplingForAll",
     [](VirtualConsole& console) { RestartSamplingForAll(console.ForAll()); }},
    {"AutoUpdate", [](VirtualConsole& console) { ToggleAutoUpdate(console.ForAll()); }},
};

/// Something that the operator does meanwhile.
struct Interruption {
    const char* Name;
    void (*Happen)(VirtualConsole& console, FakeClientWindow& window);
};

void PrintTo(const Interruption& interruption, std::ostream* out) {
    *out << interruption.Name;
}

const Interruption Interruptions[] = {
    {"WindowClosed",
     [](VirtualConsole& /*console*/, FakeClientWindow& window) { window.Unload(); }},
    {"ProgramClosed",
     [](VirtualConsole& console, FakeClientWindow& window) {
         console.State.LinkRecord.ShuttingDown = True;
         window.Unload();
     }},
};

class InterruptedOrderTest : public ::testing::TestWithParam<std::tuple<Order, Interruption>> {
 protected:
    /// A console at the moment before the order.
    struct Bench {
        Bench() { Console.Connect(); }

        VirtualConsole Console;
        std::shared_ptr<FakeClientWindow> Window =
            Console.OpenWindow(Console.AddSite(BasicSite(1)));
    };

    static Microseconds LengthOf(const Order& order) {
        Bench bench;
        const Microseconds start = bench.Console.Outside.Time.Now();
        order.Run(bench.Console);
        return bench.Console.Outside.Time.Now() - start;
    }

    static void ExpectAtRest(const VirtualConsole& console) {
        EXPECT_EQ(console.State.OperationsRecord.OperationBusy, False);
        EXPECT_EQ(console.State.OperationsRecord.ForAllActive, False);
        EXPECT_EQ(console.State.LinkRecord.CommBusy, False);
        EXPECT_EQ(console.State.SamplingRecord.SingleSample, 0);
        EXPECT_EQ(console.View.Shape, Pointer::Normal);
    }
};

TEST_P(InterruptedOrderTest, EndsWithNothingBusy) {
    constexpr Microseconds Step = 70 * Millisecond;
    const Order order = std::get<Order>(GetParam());
    const Interruption interruption = std::get<Interruption>(GetParam());
    const Microseconds length = LengthOf(order);
    ASSERT_GT(length, 10 * Step);
    for (Microseconds moment = Millisecond; moment < length; moment += Step) {
        SCOPED_TRACE(moment);
        Bench bench;
        VirtualConsole& console = bench.Console;
        std::size_t boxesBefore = 0;
        console.Outside.Time.In(moment, [&] {
            EXPECT_NE(console.State.OperationsRecord.OperationBusy, False);
            boxesBefore = console.Outside.Boxes.Shown.size();
            interruption.Happen(console, *bench.Window);
        });
        order.Run(console);
        ExpectAtRest(console);
        console.Outside.Time.Run(5 * Second);
        ExpectAtRest(console);
        EXPECT_EQ(console.State.SamplingRecord.ContinuousMode, SamplingIdle);
        EXPECT_EQ(console.State.Book.Entries[1].WindowIndex, NoWindow);
        if (console.State.LinkRecord.ShuttingDown != False) {
            EXPECT_EQ(console.Outside.Boxes.Shown.size(), boxesBefore);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(InsideEveryWait, InterruptedOrderTest,
                         ::testing::Combine(::testing::ValuesIn(Orders),
                                            ::testing::ValuesIn(Interruptions)),
                         [](const auto& test) {
                             return std::string(std::get<Order>(test.param).Name) +
                                    std::get<Interruption>(test.param).Name;
                         });

}  // namespace
