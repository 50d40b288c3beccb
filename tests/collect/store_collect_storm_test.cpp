// Rounds and walks of collection under an operator who does anything at any moment, on a network
// that fails at any moment.
#include <cstdlib>
#include <iostream>
#include <random>

#include "archive/store_fixture.h"
#include "collect/schedule_bench.h"
#include "console/logger_orders.h"

namespace testing_support {
namespace {

constexpr int Sites = 4;
constexpr int StormSeconds = 120;

class CollectStorm {
 public:
    CollectStorm(ArchiveBench& archive, ArchiveStore& store, std::uint32_t seed)
        : random_(seed), archive_(archive), bench_(store) {
        for (int number = 1; number <= Sites; ++number) {
            bench_.Add(CollectedSite(number, static_cast<std::uint32_t>(Draw(400)),
                                     Chance(30) ? 8 : 2, 1));
        }
        bench_.console.Outside.Network.KeepsRecord = false;
        if (Chance(50)) {
            bench_.schedule->SetPlan({.On = true, .Step = PlanStep::Hours, .Hours = 1});
        }
    }

    void Run(int actions) {
        for (int i = 0; i < actions; ++i) {
            bench_.console.Outside.Time.In(Draw(StormSeconds * 1000) * Millisecond,
                                           [this] { Act(); });
        }
        bench_.console.Outside.Time.Run(StormSeconds * Second);
        Settle();
    }

    /// What is still busy; empty if nothing is.
    [[nodiscard]] std::string FaultOfRest() {
        const SharedState& state = bench_.console.State;
        std::string fault;
        const auto expect = [&fault](bool holds, const char* what) { fault += holds ? "" : what; };
        expect(state.OperationsRecord.OperationBusy == False, "OperationBusy ");
        expect(state.OperationsRecord.ForAllActive == False, "ForAllActive ");
        expect(state.LinkRecord.CommBusy == False, "CommBusy ");
        expect(state.SamplingRecord.ContinuousMode == SamplingIdle, "ContinuousMode ");
        expect(state.Collecting.Text().empty(), "Collecting ");
        expect(Ended() || !bench_.schedule->RoundRuns(), "round ");
        expect(Ended() || bench_.console.View.Shape == Pointer::Normal, "pointer ");
        return fault;
    }
    /// After a storm that the program outlived, a last collection brings all there is.
    [[nodiscard]] std::string FaultOfArchive(ArchiveStore& store) {
        if (Ended()) {
            return {};
        }
        CollectFromAll(bench_.console.Collection(), {.Scope = CollectScope::WholeBook}, {},
                       bench_.console.Log, bench_.console.State.Collecting);
        std::string fault;
        for (int number = 1; number <= Sites; ++number) {
            const auto& setup = bench_.Logger(number).Setup();
            const auto logger = store.FindLogger(setup.Mac);
            const std::int64_t kept = logger ? logger->Records : 0;
            if (kept != setup.HistoryRecords && InBook(setup.Mac)) {
                fault += setup.Settings.Name + ": " + std::to_string(kept) + " of " +
                         std::to_string(setup.HistoryRecords) + "; ";
            }
        }
        for (const std::string& wrong : store.Check([] {})) {
            fault += wrong + "; ";
        }
        return fault.empty() ? fault : fault + bench_.Log();
    }
    [[nodiscard]] int RoundsEnded() const { return bench_.RoundsRun(); }

 private:
    [[nodiscard]] bool Ended() const {
        return bench_.console.State.LinkRecord.ShuttingDown != False;
    }
    [[nodiscard]] int Draw(int below) {
        return static_cast<int>(random_() % static_cast<std::uint32_t>(below));
    }
    [[nodiscard]] bool Chance(int percent) { return Draw(100) < percent; }
    [[nodiscard]] bool InBook(const std::array<std::uint8_t, 6>& mac) const {
        const auto& entries = bench_.console.State.Book.Entries;
        return std::any_of(entries.begin(), entries.end(),
                           [&mac](const ClientRadio& entry) { return entry.Mac == mac; });
    }

    void Act() {
        if (Ended()) {
            return;
        }
        switch (Draw(16)) {
            case 0:
            case 1:
                bench_.console.OpenWindow(1 + Draw(Sites));
                break;
            case 2:
                CloseWindow();
                break;
            case 3:
            case 4:
                Click([this] { Walk(); });
                break;
            case 5:
                Click([this] { GetSample(bench_.console.Operation()); });
                break;
            case 6:
                Click([this] { SampleContinuously(bench_.console.Operation()); });
                break;
            case 7:
                Chance(50) ? bench_.schedule->StartNow() : bench_.schedule->Stop();
                break;
            case 8:
                bench_.schedule->StartNow();
                break;
            case 9:
                Chance(70) ? void(bench_.console.Log.Cancel = true)
                           : void(bench_.console.Log.Open = false);
                break;
            case 10:
                Click([this] { Turn(); });
                break;
            case 11:
                bench_.SetClock(Draw(400'000) - 200'000);
                break;
            case 12:
                Lock();
                break;
            case 13:
                Dialog();
                break;
            case 14:
                Chance(10) ? End() : bench_.schedule->SetPlan({.On = Chance(50)});
                break;
            default:
                Disturb();
        }
    }
    /// As the main window does it.
    void Click(const std::function<void()>& action) {
        if (!bench_.schedule->Defer(action)) {
            action();
        }
    }
    void Walk() {
        CollectFromAll(bench_.console.Collection(),
                       {.Scope = Chance(50) ? CollectScope::WholeBook : CollectScope::Windows,
                        .SyncTime = Chance(20)},
                       {}, bench_.console.Log, bench_.console.State.Collecting);
    }
    void CloseWindow() {
        const auto window = bench_.console.State.Windows.At(Draw(Sites));
        if (window) {
            window->Unload();
        }
    }
    void Turn() {
        if (comm::ToggleConnection(bench_.console.Toggling()) == comm::Toggle::Connect) {
            comm::ConnectDialog dialog;
            comm::Connect(bench_.console.Radio(), dialog, [](Pointer) {});
            bench_.console.State.OperationsRecord.OperationBusy = False;
        }
    }
    /// Another console holds the archive for a while.
    void Lock() {
        archive_.Hold();
        bench_.console.Outside.Time.In(Draw(3000) * Millisecond, [this] { archive_.Release(); });
    }
    void Dialog() {
        bench_.Dialog = true;
        bench_.console.Outside.Time.In(Draw(5000) * Millisecond, [this] { bench_.Dialog = false; });
    }
    void End() {
        if (bench_.console.State.LinkRecord.CommBusy == False) {
            bench_.console.State.LinkRecord.ShuttingDown = True;
        }
    }
    void Disturb() {
        simulator::Network& network = bench_.console.Outside.Network;
        switch (Draw(7)) {
            case 0:
                network.Faults().Probability(0.2, random_());
                break;
            case 1:
                network.RadioFaults().Probability(0.2, random_());
                break;
            case 2:
                Calm();
                break;
            case 3:
                bench_.Logger(1 + Draw(Sites)).Silence();
                break;
            case 4:
                bench_.console.Outside.Port.PullOut();
                break;
            case 5:
                network.Radio().Silence();
                break;
            default:
                bench_.console.Outside.Port.Receive({0xFA, 0xF8, 0x03, 0xCC});
        }
    }
    void Calm() {
        simulator::Network& network = bench_.console.Outside.Network;
        network.Faults().Clear();
        network.RadioFaults().Clear();
        network.Radio().Wake();
        for (int number = 1; number <= Sites; ++number) {
            bench_.Logger(number).Wake();
        }
    }
    void Settle() {
        Calm();
        archive_.Release();
        bench_.Dialog = false;
        bench_.schedule->SetPlan({.On = false});
        bench_.console.Outside.Time.Run(60 * Second);
        if (bench_.console.State.SamplingRecord.ContinuousMode != SamplingIdle) {
            bench_.console.State.SamplingRecord.StopContinuous = True;
        }
        bench_.console.Outside.Time.Run(120 * Second);
        if (!Ended() && bench_.console.State.LinkRecord.Connected == False) {
            bench_.console.Connect();
        }
    }

    std::mt19937 random_;
    ArchiveBench& archive_;
    ScheduleBench bench_;
};

class CollectStormTest : public StoreTest {};

/// ORVIA_COLLECT_STORMS plays more of them, ORVIA_COLLECT_FIRST names the first.
TEST_P(CollectStormTest, NothingIsLeftBusyAndNoRecordIsLostOrDoubled) {
    const char* more = std::getenv("ORVIA_COLLECT_STORMS");
    const int storms = more != nullptr ? std::atoi(more) : bench->CasesOf(40);
    const char* begin = std::getenv("ORVIA_COLLECT_FIRST");
    const int first = begin != nullptr ? std::atoi(begin) : 1;
    int rounds = 0;
    for (int seed = first; seed < first + storms; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        bench = GetParam().Make();
        store = bench->NewStore();
        CollectStorm storm(*bench, *store, static_cast<std::uint32_t>(seed));
        storm.Run(60);
        ASSERT_EQ(storm.FaultOfRest(), "");
        ASSERT_EQ(storm.FaultOfArchive(*store), "");
        rounds += storm.RoundsEnded();
    }
    std::cout << "collect storm: " << storms << " storms, " << rounds << " rounds\n";
    EXPECT_GT(rounds, storms / 2) << "the storms let hardly any round run";
}

ORVIA_FOR_ALL_STORES(CollectStormTest);

}  // namespace
}  // namespace testing_support
