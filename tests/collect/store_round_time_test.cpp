// What a round costs beside the uploads and tunings that it is made of.
#include <iostream>

#include "archive/store_fixture.h"
#include "collect/schedule_bench.h"
#include "history/upload.h"
#include "logger/commands.h"

namespace testing_support {
namespace {

constexpr int Loggers = 30;
constexpr std::uint32_t Records = 500;
constexpr double MostTimes = 1.03;

/// A progress dialog that is acknowledged at once.
class NoDialog final : public UploadView {
 public:
    std::string Tag() const override { return tag_; }
    void SetTag(const std::string& tag) override { tag_ = tag; }
    void SetBarMaximum(std::int32_t /*maximum*/) override {}
    void SetBarValue(std::int32_t /*value*/) override {}
    void SetRetries(const std::string& /*text*/) override {}
    void SetProgress(const std::string& /*text*/) override {}
    void AllowOkay() override { tag_ = TagOkay; }
    void Hide() override {}

 private:
    std::string tag_ = TagStarting;
};

class RoundTimeTest : public StoreTest {
 protected:
    static void Fill(CollectBench& bench) {
        for (int number = 1; number <= Loggers; ++number) {
            bench.Add(CollectedSite(number, Records));
        }
        bench.OpenAll();
        bench.console.Outside.Network.KeepsRecord = false;
    }

    /// Time that the exchanges take which a round cannot do without: for each logger the tuning,
    /// its status, clock and settings, and the blocks of its history. Nothing is filed.
    [[nodiscard]] static Microseconds Demanded() {
        VirtualConsole console;
        console.Connect();
        for (int number = 1; number <= Loggers; ++number) {
            console.AddSite(CollectedSite(number, Records));
            console.OpenWindow(number);
        }
        const Microseconds begin = console.Outside.Time.Now();
        SharedState& state = console.State;
        for (int number = 1; number <= Loggers; ++number) {
            ClientWindow& window = *state.Windows.At(state.Book.Entries[number].WindowIndex);
            EXPECT_TRUE(comm::SelectClient(console.Radio(), state.Book.Entries[number]));
            EXPECT_TRUE(window.GetStatus());
            EXPECT_TRUE(cmd::ReadLoggerClock(state.Exchange));
            EXPECT_TRUE(window.GetSettings());
            window.ClientSetGlobalState();
            NoDialog dialog;
            RunUpload({.link = state.LinkRecord,
                       .exchange = state.Exchange,
                       .global = state.Logger,
                       .store = state.History,
                       .boxes = state.Boxes},
                      dialog, Records);
            EXPECT_EQ(state.History.HistoryCount(), static_cast<std::int32_t>(Records));
        }
        return console.Outside.Time.Now() - begin;
    }
    void Expect(const char* what, Microseconds took) {
        const double times = static_cast<double>(took) / static_cast<double>(Demanded());
        RecordProperty(what, std::to_string(times));
        std::cout << what << ": " << static_cast<double>(took) / Second << " s, " << times
                  << " times what is demanded\n";
        EXPECT_LE(times, MostTimes);
        EXPECT_GE(times, 0.9) << "the round left something out";
        std::int64_t kept = 0;
        for (const ArchiveLogger& logger : store->Loggers()) {
            kept += logger.Records;
        }
        EXPECT_EQ(kept, static_cast<std::int64_t>(Loggers) * Records);
    }
};

TEST_P(RoundTimeTest, AWalkOverThirtyLoggersCostsLittleBesideItsUploads) {
    CollectBench round(*store);
    Fill(round);
    const Microseconds begin = round.console.Outside.Time.Now();
    round.Run();
    Expect("walk", round.console.Outside.Time.Now() - begin);
}

TEST_P(RoundTimeTest, SoDoesARoundThatRunsByItself) {
    ScheduleBench round(*store);
    Fill(round);
    round.schedule->StartNow();
    Microseconds begin = 0;
    round.OnceTold("Round begins", [&] { begin = round.console.Outside.Time.Now(); });
    ASSERT_TRUE(round.RunOut());
    Expect("round", round.console.Outside.Time.Now() - begin);
}

ORVIA_FOR_ALL_STORES(RoundTimeTest);

}  // namespace
}  // namespace testing_support
