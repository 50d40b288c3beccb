#include "console/for_all.h"

#include "book_bench.h"

namespace {

using namespace testing_support;
using Row = void (*)(const ForAllContext&);

class ForAllTest : public BookBench {
 protected:
    ForAllTest() { console.Connect(); }

    simulator::Logger& Logger(int number) {
        return *console.Outside.Network.Loggers().at(static_cast<std::size_t>(number - 1));
    }
    void OpenAll() {
        for (int number = 1; number <= Book().Entries.UpperBound(); ++number) {
            windows.push_back(console.OpenWindow(number));
        }
    }
    Operations& Flags() { return console.State.OperationsRecord; }
    Sampling& Modes() { return console.State.SamplingRecord; }
    void ExpectAtRest() {
        EXPECT_EQ(Flags().OperationBusy, False);
        EXPECT_EQ(Flags().ForAllActive, False);
        EXPECT_EQ(console.State.LinkRecord.CommBusy, False);
        EXPECT_EQ(console.View.Shape, Pointer::Normal);
    }

    std::vector<std::shared_ptr<FakeClientWindow>> windows;
};

TEST_F(ForAllTest, EachWindowMakesOneLineOfTheLog) {
    OpenAll();
    GetSampleForAll(console.ForAll());
    EXPECT_EQ(console.Log.Text,
              "Getting sample for client window Site 1...OK\n"
              "Getting sample for client window Site 2...OK\n"
              "Getting sample for client window Site 3...OK\n"
              "Done\n");
    EXPECT_TRUE(console.Log.ButtonCloses);
    for (const auto& window : windows) {
        EXPECT_EQ(window->Points.size(), 1U);
    }
    EXPECT_TRUE(Shown().empty());
    ExpectAtRest();
}

TEST_F(ForAllTest, SecondOfThreeThatDoesNotAnswerFailsAndTheWalkGoesOn) {
    OpenAll();
    Logger(2).Silence();
    GetSampleForAll(console.ForAll());
    EXPECT_EQ(console.Log.Text,
              "Getting sample for client window Site 1...OK\n"
              "Getting sample for client window Site 2...FAIL\n"
              "Getting sample for client window Site 3...OK\n"
              "Done\n");
}

TEST_F(ForAllTest, RadioThatCannotBeSelectedFailsWithoutTheBeginningOfItsLine) {
    OpenAll();
    console.Outside.Network.Radio().Silence();
    GetSampleForAll(console.ForAll());
    EXPECT_EQ(console.Log.Text, "FAIL\nFAIL\nFAIL\nDone\n");
    ExpectAtRest();
}

TEST_F(ForAllTest, SettingsWithoutASampleCountAsOk) {
    console.OpenWindow(1);
    simulator::LineFault lost = simulator::Plain(simulator::FaultKind::LoseRequest);
    console.Outside.Network.Faults().OnRequest(0x09, lost, 9).OnRequest(0x0A, lost, 9);
    GetSampleForAll(console.ForAll());
    EXPECT_EQ(console.Log.Text, "Getting sample for client window Site 1...OK\nDone\n");
}

struct Question {
    Row Run;
    BoxIcon Icon;
    const char* Text;
    const char* Beginning;
};

class ForAllQuestionTest : public ForAllTest, public ::testing::WithParamInterface<Question> {};

TEST_P(ForAllQuestionTest, AsksOnceAndThenRunsWithoutAsking) {
    OpenAll();
    GetParam().Run(console.ForAll());
    ExpectBox("Synchronize Time", GetParam().Text, GetParam().Icon, BoxButtons::YesNo);
    std::string expected;
    for (const auto& window : windows) {
        expected += std::string(GetParam().Beginning) + window->Title + "...OK\n";
    }
    EXPECT_EQ(console.Log.Text, expected + "Done\n");
    ExpectAtRest();
}

TEST_P(ForAllQuestionTest, AnythingButYesStopsIt) {
    OpenAll();
    Answer(BoxAnswer::No);
    GetParam().Run(console.ForAll());
    EXPECT_EQ(console.Log.Opened, 0);
    EXPECT_TRUE(console.Outside.Network.RequestsTo(Logger(1)).empty());
    ExpectAtRest();
}

TEST_P(ForAllQuestionTest, UnreadableSettingsAreNotToldUnderAWalk) {
    console.OpenWindow(1);
    Logger(1).Silence();
    GetParam().Run(console.ForAll());
    EXPECT_EQ(Shown().size(), 1U);
    EXPECT_EQ(console.Log.Text, std::string(GetParam().Beginning) + "Site 1...FAIL\nDone\n");
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ForAllQuestionTest,
    ::testing::Values(
        Question{SyncTimeForAll, BoxIcon::Information,
                 "Do you want to set the logger time to equal the system time\nfor all active "
                 "client windows?",
                 "Syncing time for client window "},
        Question{ClearHistoryForAll, BoxIcon::Exclamation,
                 "WARNING: Are you sure that you want to clear the history data\nfor all active "
                 "client windows (this includes minimized windows)?",
                 "Clearing history for client window "},
        Question{RestartSamplingForAll, BoxIcon::Exclamation,
                 "Do you want to restart sampling including alarm timers for all\nactive client "
                 "windows (this includes minimized windows)?",
                 "Restarting sampling for client window "}));

/// What the log says of the one window of a walk.
class ForAllOutcomeTest : public ForAllTest {
 protected:
    /// Runs the row on the window of entry 1, whose settings are known, and gives the word that
    /// the log ends its line with.
    std::string OutcomeOf(Row run) {
        window = console.OpenWindow(1);
        window->Valid = True;
        run(console.ForAll());
        const std::string& text = console.Log.Text;
        const std::size_t from = text.find("...") + 3;
        return text.substr(from, text.find('\n') - from);
    }

    std::shared_ptr<FakeClientWindow> window;
};

TEST_F(ForAllOutcomeTest, RestartedSamplingIsFollowedByTheSettings) {
    EXPECT_EQ(OutcomeOf(RestartSamplingForAll), "OK");
    EXPECT_EQ(window->SettingsReads, 1);
    EXPECT_EQ(window->Valid, True);
}

TEST_F(ForAllOutcomeTest, RestartedSamplingIsOkThoughTheSettingsThenFail) {
    constexpr std::uint8_t VersionCommand = 0x0F;
    Refuse(VersionCommand);
    EXPECT_EQ(OutcomeOf(RestartSamplingForAll), "OK");
    EXPECT_EQ(window->SettingsReads, 1);
    EXPECT_EQ(window->Valid, False);
}

TEST_F(ForAllOutcomeTest, RefusedRestartFailsAndReadsNoSettings) {
    constexpr std::uint8_t RestartCommand = 0x0B;
    Refuse(RestartCommand);
    EXPECT_EQ(OutcomeOf(RestartSamplingForAll), "FAIL");
    EXPECT_EQ(window->SettingsReads, 0);
}

TEST_F(ForAllOutcomeTest, RefusedClockFailsThoughStatusAndClockCanBeRead) {
    constexpr std::uint8_t SetTimeCommand = 0x01;
    Refuse(SetTimeCommand);
    EXPECT_EQ(OutcomeOf(SyncTimeForAll), "FAIL");
    EXPECT_EQ(window->StatusReads, 1);
    EXPECT_NE(window->State.LoggerTime, "");
    EXPECT_NE(window->State.LoggerTime, "00/00/00 00:00:00");
}

TEST_F(ForAllOutcomeTest, ClearedHistoryFailsWithoutItsStatus) {
    constexpr std::uint8_t StatusCommand = 0x0C;
    Refuse(StatusCommand);
    EXPECT_EQ(OutcomeOf(ClearHistoryForAll), "FAIL");
    EXPECT_EQ(window->StatusReads, 1);
    EXPECT_EQ(Logger(1).RecordsAt(console.Outside.Time.Now()), 0U);
}

TEST_F(ForAllOutcomeTest, RefusedClearFailsWithoutAskingForTheStatus) {
    constexpr std::uint8_t ClearCommand = 0x04;
    Refuse(ClearCommand);
    EXPECT_EQ(OutcomeOf(ClearHistoryForAll), "FAIL");
    EXPECT_EQ(window->StatusReads, 0);
}

TEST_F(ForAllOutcomeTest, SampleThatMissesItsTimeLimitIsOkAndFilesNothing) {
    console.Outside.Time.In(1500 * Millisecond, [this] {
        EXPECT_EQ(Modes().SingleSample, 2) << "between the two requests";
        Modes().SampleTicks = 20;
    });
    EXPECT_EQ(OutcomeOf(GetSampleForAll), "OK");
    EXPECT_TRUE(window->Points.empty());
    EXPECT_EQ(Modes().SingleSample, 0);
    EXPECT_EQ(Modes().SingleSampleTicks, 0);
    ExpectAtRest();
}

class ForAllRowTest : public ForAllTest, public ::testing::WithParamInterface<Row> {};

TEST_P(ForAllRowTest, WithoutWindowsTellsSo) {
    GetParam()(console.ForAll());
    ExpectBox("No Clients", "There are no client windows active!", BoxIcon::Information);
    EXPECT_EQ(console.Log.Opened, 0);
    ExpectAtRest();
}

TEST_P(ForAllRowTest, WithoutAConnectionDoesNothing) {
    OpenAll();
    console.State.LinkRecord.Connected = False;
    GetParam()(console.ForAll());
    EXPECT_TRUE(Shown().empty());
    EXPECT_EQ(console.Log.Opened, 0);
    EXPECT_EQ(Modes().ContinuousMode, SamplingIdle);
}

TEST_P(ForAllRowTest, DuringAnOperationDoesNothing) {
    OpenAll();
    Flags().OperationBusy = True;
    GetParam()(console.ForAll());
    EXPECT_TRUE(Shown().empty());
    EXPECT_EQ(Flags().OperationBusy, True);
    EXPECT_EQ(Modes().ContinuousMode, SamplingIdle);
}

TEST_P(ForAllRowTest, DuringSampleContinuouslyDoesNothing) {
    OpenAll();
    Modes().ContinuousMode = ContinuousSecondRequest;
    GetParam()(console.ForAll());
    EXPECT_TRUE(Shown().empty());
    EXPECT_EQ(Modes().ContinuousMode, ContinuousSecondRequest);
    EXPECT_EQ(Modes().StopContinuous, False);
}

INSTANTIATE_TEST_SUITE_P(Rows, ForAllRowTest,
                         ::testing::Values(GetSampleForAll, ClearHistoryForAll, SyncTimeForAll,
                                           RestartSamplingForAll, ToggleAutoUpdate));

TEST_F(ForAllTest, CancelIsNoticedAtTheNextWindow) {
    OpenAll();
    console.Outside.Time.In(Second, [this] {
        console.Log.Cancel = true;
        console.Log.AppendLog("\nCancel Request...\n");
    });
    GetSampleForAll(console.ForAll());
    EXPECT_EQ(console.Log.Text,
              "Getting sample for client window Site 1...\nCancel Request...\nOK\n"
              "\nOperation Cancelled\n");
    EXPECT_TRUE(console.Log.ButtonCloses);
    EXPECT_EQ(windows[1]->Points.size(), 0U);
    ExpectAtRest();
}

TEST_F(ForAllTest, LogClosedByItsFrameLetsTheWalkEndSilently) {
    OpenAll();
    console.Outside.Time.In(Second, [this] {
        console.Log.Open = false;
        console.Log.Cancel = true;
    });
    GetSampleForAll(console.ForAll());
    EXPECT_EQ(console.Log.Text, "Getting sample for client window Site 1...");
    EXPECT_FALSE(console.Log.ButtonCloses);
    for (const auto& window : windows) {
        EXPECT_EQ(window->Points.size(), 1U);
    }
    ExpectAtRest();
}

TEST_F(ForAllTest, NextWalkStartsWithAnEmptyLog) {
    console.OpenWindow(1);
    GetSampleForAll(console.ForAll());
    GetSampleForAll(console.ForAll());
    EXPECT_EQ(console.Log.Text, "Getting sample for client window Site 1...OK\nDone\n");
    EXPECT_EQ(console.Log.Opened, 2);
}

TEST_F(ForAllTest, MinimizedWindowsAreWalkedAndEmptySlotsPassedOver) {
    OpenAll();
    windows[0]->Minimized = true;
    windows[1]->Unload();
    GetSampleForAll(console.ForAll());
    EXPECT_EQ(console.Log.Text,
              "Getting sample for client window Site 1...OK\n"
              "Getting sample for client window Site 3...OK\nDone\n");
}

TEST_F(ForAllTest, WindowClosedBeforeItsTurnIsPassedOver) {
    OpenAll();
    console.Outside.Time.In(Second, [this] { windows[1]->Unload(); });
    GetSampleForAll(console.ForAll());
    EXPECT_EQ(console.Log.Text.find("Site 2"), std::string::npos);
    ExpectAtRest();
}

TEST_F(ForAllTest, WindowClosedDuringItsOwnTurnEndsItsLine) {
    OpenAll();
    console.Outside.Time.In(1500 * Millisecond, [this] { windows[0]->Unload(); });
    GetSampleForAll(console.ForAll());
    EXPECT_EQ(console.Log.Text.find("Site 1...OK\nGetting sample for client window Site 2...OK"),
              console.Log.Text.find("Site 1"));
    EXPECT_EQ(Entry(1).WindowIndex, NoWindow);
    ExpectAtRest();
}

TEST_F(ForAllTest, SecondButtonDuringAWalkDoesNothing) {
    OpenAll();
    console.Outside.Time.In(Second, [this] {
        EXPECT_EQ(Flags().ForAllActive, True);
        GetSample(console.Operation());
        GetSampleForAll(console.ForAll());
        ToggleAutoUpdate(console.ForAll());
    });
    GetSampleForAll(console.ForAll());
    EXPECT_EQ(windows[0]->Points.size(), 1U);
    EXPECT_EQ(console.Log.Opened, 1);
    EXPECT_EQ(Modes().ContinuousMode, SamplingIdle);
    ExpectAtRest();
}

TEST_F(ForAllTest, ShutdownEndsTheWalkWithoutMoreBoxes) {
    OpenAll();
    console.Outside.Time.In(Second, [this] { console.State.LinkRecord.ShuttingDown = True; });
    GetSampleForAll(console.ForAll());
    EXPECT_EQ(windows[2]->SettingsReads, 0);
    EXPECT_TRUE(Shown().empty());
    ExpectAtRest();
}

TEST_F(ForAllTest, AutoUpdateStartsWhenALoggerAnswers) {
    OpenAll();
    Logger(1).Silence();
    ToggleAutoUpdate(console.ForAll());
    EXPECT_EQ(Modes().ContinuousMode, AutoUpdateStart);
    EXPECT_EQ(console.Log.Opened, 0);
    EXPECT_TRUE(Shown().empty());
    ExpectAtRest();
}

TEST_F(ForAllTest, AutoUpdateWithNobodyAnsweringTellsItOnceAndDoesNotStart) {
    OpenAll();
    for (int number = 1; number <= 3; ++number) {
        Logger(number).Silence();
    }
    ToggleAutoUpdate(console.ForAll());
    ExpectBox("Communication Error", "Error: unable to communicate with any open client logger!",
              BoxIcon::Exclamation);
    EXPECT_EQ(Modes().ContinuousMode, SamplingIdle);
    ExpectAtRest();
}

TEST_F(ForAllTest, AutoUpdateRowStopsTheModeAndStartsNothing) {
    OpenAll();
    for (const std::int16_t mode : {AutoUpdateStart, AutoUpdateFirstPass, AutoUpdateRunning}) {
        Modes().ContinuousMode = mode;
        Modes().StopContinuous = False;
        ToggleAutoUpdate(console.ForAll());
        EXPECT_EQ(Modes().StopContinuous, True);
        console.Outside.Time.Run(Second);
        EXPECT_EQ(Modes().ContinuousMode, SamplingIdle);
    }
    EXPECT_EQ(windows[0]->SettingsReads, 0);
}

TEST_F(ForAllTest, AutoUpdateWarnsThatTheIdleLimitWillNotAct) {
    console.OpenWindow(1);
    console.State.SettingsRecord.AutoDisconnect = "1";
    ToggleAutoUpdate(console.ForAll());
    ExpectBox("Auto Disconnect",
              "The 5-Minute Auto Disconnect Timer will be disabled as long as Auto Update is "
              "running.",
              BoxIcon::Information);
    console.Outside.Time.Run(400 * Second);
    EXPECT_NE(console.State.LinkRecord.LinkState, LinkDisconnected);
}

TEST_F(ForAllTest, AutoUpdateIsWarnedOfBeforeTheLinkIsLookedAt) {
    console.OpenWindow(1);
    console.State.SettingsRecord.AutoDisconnect = "1";
    console.State.LinkRecord.Connected = False;
    ToggleAutoUpdate(console.ForAll());
    EXPECT_EQ(Shown().size(), 1U);
    EXPECT_EQ(Modes().ContinuousMode, SamplingIdle);
}

TEST_F(ForAllTest, AutoUpdateShowsDataOnItsSecondPassAndThenEveryMinute) {
    OpenAll();
    ToggleAutoUpdate(console.ForAll());
    const std::size_t atStart = windows[2]->Points.size();
    console.Outside.Time.Run(30 * Second);
    EXPECT_EQ(windows[2]->Points.size(), atStart);
    console.Outside.Time.Run(60 * Second);
    EXPECT_EQ(windows[2]->Points.size(), atStart + 1);
    console.Outside.Time.Run(600 * Second);
    EXPECT_EQ(windows[2]->Points.size(), atStart + 11);
}

TEST_F(ForAllTest, AutoUpdateGoesOnThroughMidnight) {
    console.Outside.Clock.Start = {2026, 11, 15, 23, 55, 0, 0};
    OpenAll();
    ToggleAutoUpdate(console.ForAll());
    const std::size_t atStart = windows[0]->Points.size();
    console.Outside.Time.Run(600 * Second);
    const auto passes = windows[0]->Points.size() - atStart;
    EXPECT_GE(passes, 9U);
    EXPECT_LE(passes, 11U);
    EXPECT_NE(Modes().ContinuousMode, SamplingIdle);
    EXPECT_TRUE(Shown().empty());
    ToggleAutoUpdate(console.ForAll());
    console.Outside.Time.Run(Second);
    EXPECT_EQ(Modes().ContinuousMode, SamplingIdle);
    ExpectAtRest();
}

TEST_F(ForAllTest, LastWindowClosedEndsAutoUpdate) {
    console.OpenWindow(1);
    ToggleAutoUpdate(console.ForAll());
    console.Outside.Time.Run(5 * Second);
    std::static_pointer_cast<FakeClientWindow>(console.State.Windows.At(0))->Unload();
    console.Outside.Time.Run(Second);
    EXPECT_EQ(Modes().ContinuousMode, SamplingIdle);
    ExpectAtRest();
}

}  // namespace
