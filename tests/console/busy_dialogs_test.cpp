// Whoever waits for the operator below an operation holds the link: timers and other buttons run
// on.
#include "book_bench.h"
#include "console/logger_orders.h"
#include "console/signal_monitor.h"

namespace {

using namespace testing_support;

/// Something that asks or tells the operator, and what has to be before.
struct Asking {
    const char* Name;
    void (*Run)(VirtualConsole& console);
    void (*Prepare)(VirtualConsole& console) = [](VirtualConsole&) {};
};

void SilenceAll(VirtualConsole& console) {
    for (const auto& logger : console.Outside.Network.Loggers()) {
        logger->Silence();
    }
}

void CloseAll(VirtualConsole& console) {
    for (const auto& window : std::vector(console.State.Windows.Slots)) {
        if (window) {
            window->Unload();
        }
    }
}

class BusyDialogs : public BookBench, public ::testing::WithParamInterface<Asking> {
 protected:
    BusyDialogs() {
        console.Connect();
        console.OpenWindow(1);
    }

    [[nodiscard]] Flag Busy() const { return console.State.OperationsRecord.OperationBusy; }

    /// Whether the link is held while the first box or file dialog stands.
    bool HeldWhileAsked() {
        int asked = 0;
        bool held = true;
        const auto look = [&] {
            ++asked;
            held = held && Busy() != False;
        };
        console.Outside.Boxes.WhileShown = look;
        console.Outside.Dialogs.WhileShown = look;
        GetParam().Run(console);
        console.Outside.Boxes.WhileShown = nullptr;
        console.Outside.Dialogs.WhileShown = nullptr;
        EXPECT_GE(asked, 1);
        return held;
    }
};

TEST_P(BusyDialogs, HoldTheLinkAsLongAsTheyStand) {
    GetParam().Prepare(console);
    EXPECT_TRUE(HeldWhileAsked());
    EXPECT_EQ(Busy(), False) << "and no longer";
}

INSTANTIATE_TEST_SUITE_P(
    All, BusyDialogs,
    ::testing::Values(
        Asking{"FileOfABookToLoad",
               [](VirtualConsole& console) { LoadOtherBook(console.BookWork()); }},
        Asking{"FileOfABlankBook",
               [](VirtualConsole& console) { CreateBlankBook(console.BookWork()); }},
        Asking{"FirmwareVersion",
               [](VirtualConsole& console) { ShowFirmwareVersion(console.Operation()); }},
        Asking{"QuestionOfSyncTime",
               [](VirtualConsole& console) { SyncTime(console.Operation()); }},
        Asking{"QuestionOfClearHistory",
               [](VirtualConsole& console) { ClearHistory(console.Operation()); }},
        Asking{"QuestionOfClearHistoryForAll",
               [](VirtualConsole& console) { ClearHistoryForAll(console.ForAll()); }},
        Asking{"QuestionOfSyncTimeForAll",
               [](VirtualConsole& console) { SyncTimeForAll(console.ForAll()); }},
        Asking{"QuestionOfRestartForAll",
               [](VirtualConsole& console) { RestartSamplingForAll(console.ForAll()); }},
        Asking{"NoClientsForAll",
               [](VirtualConsole& console) { GetSampleForAll(console.ForAll()); }, CloseAll},
        Asking{"NobodyAnswersAutoUpdate",
               [](VirtualConsole& console) { ToggleAutoUpdate(console.ForAll()); }, SilenceAll}),
    [](const auto& asking) { return asking.param.Name; });

/// A monitor that ends at once.
class MonitorGlance final : public SignalMonitorDialog {
 public:
    explicit MonitorGlance(const Operations& operations) : operations_(operations) {}
    void ShowMonitor(const OperationContext& /*context*/, std::int16_t /*clientIndex*/) override {
        Held = operations_.OperationBusy;
    }

    Flag Held = False;

 private:
    const Operations& operations_;
};

TEST_F(BusyDialogs, TheSignalMonitorHoldsIt) {
    MonitorGlance monitor(console.State.OperationsRecord);
    ShowSignalLevel(console.Operation(), monitor);
    EXPECT_NE(monitor.Held, False);
    EXPECT_EQ(Busy(), False);
}

TEST_F(BusyDialogs, TheQuestionAboutOpenWindowsHoldsItToo) {
    Flag held = False;
    console.Outside.Dialogs.Picks = {Path + "x"};
    console.Outside.Boxes.WhileShown = [&] { held = Busy(); };
    LoadOtherBook(console.BookWork());
    ASSERT_EQ(Shown().size(), 1U);
    EXPECT_EQ(Shown()[0].Title, "Address Book Changed");
    EXPECT_NE(held, False);
    EXPECT_EQ(Busy(), False);
}

}  // namespace
