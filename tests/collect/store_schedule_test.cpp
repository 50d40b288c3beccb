// Rounds that come by themselves, into real stores.
#include "archive/store_fixture.h"
#include "collect/schedule_bench.h"

namespace testing_support {
namespace {

class ScheduleTest : public StoreTest {
 protected:
    static constexpr int Sites = 3;

    ScheduleTest() : made(std::make_unique<ScheduleBench>(*store)), rounds(*made) {
        for (int number = 1; number <= Sites; ++number) {
            rounds.Add(CollectedSite(number, 30));
        }
    }
    void Plan(CollectPlan plan) {
        plan.On = true;
        rounds.schedule->SetPlan(plan);
    }
    void PlanDaily() { Plan({.Step = PlanStep::Daily, .Minute = 9 * 60}); }
    [[nodiscard]] std::int64_t Kept() {
        std::int64_t records = 0;
        for (const ArchiveLogger& logger : store->Loggers()) {
            records += logger.Records;
        }
        return records;
    }
    [[nodiscard]] ArchiveRound Newest() { return store->Rounds(1).at(0); }
    [[nodiscard]] Link& LinkRecord() { return rounds.console.State.LinkRecord; }
    [[nodiscard]] Operations& Flags() { return rounds.console.State.OperationsRecord; }

    std::unique_ptr<ScheduleBench> made;
    ScheduleBench& rounds;
};

TEST_P(ScheduleTest, NothingHappensAndNothingIsKeptWithoutAPlan) {
    rounds.Pass(24 * 8);
    EXPECT_EQ(rounds.RoundsRun(), 0);
    EXPECT_TRUE(rounds.console.Outside.Store.Values.empty());
    EXPECT_TRUE(store->Rounds(10).empty());
    EXPECT_FALSE(rounds.schedule->NextRound());
}

TEST_P(ScheduleTest, ADailyRoundComesOnceADay) {
    PlanDaily();
    EXPECT_EQ(MomentText(*rounds.schedule->NextRound()), "2024-03-05 09:00:00");
    rounds.Pass(24 * 3);
    EXPECT_EQ(rounds.RoundsRun(), 3);
    EXPECT_EQ(Kept(), 30 * Sites);
    EXPECT_TRUE(rounds.Boxes().empty());
    EXPECT_EQ(MomentText(*rounds.schedule->NextRound()), "2024-03-08 09:00:00");
}

TEST_P(ScheduleTest, EveryFourHoursAreSixADay) {
    Plan({.Step = PlanStep::Hours, .Hours = 4});
    rounds.Pass(25);
    EXPECT_EQ(rounds.RoundsRun(), 6);
}

TEST_P(ScheduleTest, AWeeklyRoundComesOnItsDay) {
    // It is a Tuesday.
    Plan({.Step = PlanStep::Weekly, .Weekday = 3, .Minute = 0});
    rounds.Pass(24 * 15);
    EXPECT_EQ(rounds.RoundsRun(), 3);
}

TEST_P(ScheduleTest, SwitchedOffItComesNoMore) {
    PlanDaily();
    rounds.Pass(24);
    rounds.schedule->SetPlan({.On = false});
    rounds.Pass(48);
    EXPECT_EQ(rounds.RoundsRun(), 1);
}

TEST_P(ScheduleTest, TheLogTellsAllWithDateAndTimeAndIsKeptInTheArchive) {
    PlanDaily();
    rounds.Pass(2);
    const ArchiveRound round = Newest();
    EXPECT_EQ(round.Loggers, Sites);
    EXPECT_EQ(round.Done, Sites);
    EXPECT_TRUE(round.End);
    EXPECT_EQ(round.Log, rounds.schedule->LogText());
    std::string plain;
    std::size_t lines = 0;
    for (std::size_t at = 0; at < round.Log.size(); ++lines) {
        const std::size_t end = round.Log.find('\n', at);
        EXPECT_TRUE(MomentOfText(round.Log.substr(at, 19))) << round.Log;
        plain += round.Log.substr(at + 21, end - at - 20);
        at = end + 1;
    }
    EXPECT_TRUE(
        plain.starts_with("Round begins\n"
                          "Collecting history from client window Site 1...OK, 30 records, 30 new"))
        << plain;
    EXPECT_TRUE(plain.ends_with("Round is over: 3 of 3 loggers done\n")) << plain;
    EXPECT_EQ(lines, 5U);
}

TEST_P(ScheduleTest, ALoggerThatFailedIsTriedTwiceAgainAtTheEnd) {
    rounds.Logger(1).Silence();
    rounds.Logger(2).Silence();
    rounds.schedule->StartNow();
    rounds.OnceTold("Trying those that failed again", [this] { rounds.Logger(2).Wake(); });
    ASSERT_TRUE(rounds.RunOut());
    const std::string& log = rounds.schedule->LogText();
    const auto count = [&log](const std::string& what) {
        int times = 0;
        for (auto at = log.find(what); at != std::string::npos; at = log.find(what, at + 1)) {
            ++times;
        }
        return times;
    };
    EXPECT_EQ(count("Site 1...FAIL, no answer"), 3);
    EXPECT_EQ(count("Site 2...FAIL, no answer"), 1);
    EXPECT_EQ(count("Site 2...OK, 30 records, 30 new"), 1);
    EXPECT_EQ(count("Site 3...OK"), 1);
    EXPECT_EQ(count("Trying those that failed again"), 2);
    EXPECT_EQ(Newest().Done, 2);
    EXPECT_EQ(rounds.Digests.at(0).find("Site 1: no answer\n"), 0U) << rounds.Digests.at(0);
    EXPECT_EQ(Newest().Digest, rounds.Digests.at(0));
}

TEST_P(ScheduleTest, AMissedRoundIsMadeUpOnce) {
    PlanDaily();
    rounds.Pass(24);
    ASSERT_EQ(rounds.RoundsRun(), 1);
    // The computer sleeps for ten days.
    rounds.SetClock(10 * 86'400);
    rounds.Seconds(600);
    EXPECT_EQ(rounds.RoundsRun(), 2);
    EXPECT_NE(rounds.schedule->LogText().find("Round begins, made up: it was due at 2024-03-06 "
                                              "09:00:00\n"),
              std::string::npos)
        << rounds.schedule->LogText();
    rounds.Pass(24);
    EXPECT_EQ(rounds.RoundsRun(), 3);
}

TEST_P(ScheduleTest, ARoundMissedWhileTheProgramDidNotRunIsMadeUpOnce) {
    PlanDaily();
    rounds.schedule.reset();
    rounds.Seconds(60);
    rounds.SetClock(5 * 86'400);
    rounds.Restart();
    rounds.Seconds(600);
    EXPECT_EQ(rounds.RoundsRun(), 1);
    rounds.Restart();
    rounds.Seconds(600);
    EXPECT_EQ(rounds.RoundsRun(), 1);
}

TEST_P(ScheduleTest, AClockSetBackALittleRepeatsNoRoundAndFurtherDoesNotKeepThemAway) {
    PlanDaily();
    rounds.Pass(2);
    ASSERT_EQ(rounds.RoundsRun(), 1);
    rounds.SetClock(-3600);  // to 9:00 again, about
    rounds.SetClock(-600);
    rounds.Pass(2);
    EXPECT_EQ(rounds.RoundsRun(), 1);
    rounds.SetClock(-400LL * 86'400);
    rounds.Pass(25);
    EXPECT_EQ(rounds.RoundsRun(), 2);
}

TEST_P(ScheduleTest, AClockSetForwardAndBackGivesOneRoundAndNoBurst) {
    PlanDaily();
    rounds.SetClock(365LL * 86'400);
    rounds.Seconds(300);
    EXPECT_EQ(rounds.RoundsRun(), 1);
    rounds.SetClock(-365LL * 86'400);
    rounds.Pass(20);
    EXPECT_EQ(rounds.RoundsRun(), 2);
}

TEST_P(ScheduleTest, ARoundWaitsUntilTheOperatorHasLetTheLinkAlone) {
    rounds.OpenAll();
    PlanDaily();
    rounds.console.State.SamplingRecord.ContinuousMode = AutoUpdateRunning;
    rounds.console.State.SamplingRecord.NextAutoUpdate = 1e9F;
    rounds.SetClock(7200);
    rounds.Seconds(120);
    EXPECT_TRUE(rounds.schedule->RoundWaits());
    EXPECT_EQ(rounds.schedule->StateText(), "A round waits until the operator is done");
    rounds.console.State.SamplingRecord.ContinuousMode = SamplingIdle;
    rounds.Seconds(29);
    EXPECT_TRUE(rounds.schedule->RoundWaits());
    rounds.Seconds(2);
    EXPECT_EQ(rounds.RoundsRun(), 1);
}

TEST_P(ScheduleTest, ADialogOfTheOperatorHoldsARoundBetweenTwoLoggers) {
    rounds.schedule->StartNow();
    rounds.console.Outside.Time.In(Second, [this] { rounds.Dialog = true; });
    rounds.Seconds(600);
    EXPECT_TRUE(rounds.schedule->RoundRuns());
    EXPECT_EQ(Flags().OperationBusy, False);
    EXPECT_EQ(rounds.schedule->LogText().find("Site 2"), std::string::npos);
    rounds.Dialog = false;
    EXPECT_TRUE(rounds.RunOut());
    EXPECT_EQ(Kept(), 30 * Sites);
}

TEST_P(ScheduleTest, TheOperatorsClickComesBetweenTwoLoggersAndTheRoundGoesOnLater) {
    const auto window = rounds.console.OpenWindow(3);
    rounds.schedule->StartNow();
    bool clicked = false;
    std::string logAtClick;
    rounds.console.Outside.Time.In(Second, [&] {
        EXPECT_NE(Flags().OperationBusy, False);
        clicked = rounds.schedule->Defer([&] {
            logAtClick = rounds.schedule->LogText();
            GetSample(rounds.console.Operation());
        });
    });
    rounds.Seconds(20);
    EXPECT_TRUE(clicked);
    EXPECT_EQ(window->Points.size(), 1U);
    EXPECT_NE(logAtClick.find("Site 1...OK"), std::string::npos);
    EXPECT_EQ(logAtClick.find("Site 2"), std::string::npos);
    EXPECT_TRUE(rounds.schedule->RoundRuns());
    EXPECT_EQ(rounds.schedule->LogText().find("Site 2"), std::string::npos);
    EXPECT_TRUE(rounds.RunOut());
    EXPECT_NE(rounds.schedule->LogText().find("Steps back for the operator\n"), std::string::npos);
    EXPECT_NE(rounds.schedule->LogText().find("Goes on\n"), std::string::npos);
    EXPECT_EQ(Kept(), 30 * Sites);
}

TEST_P(ScheduleTest, BehindAClickThatNeedsNoLinkTheRoundWaitsTheSame) {
    rounds.schedule->StartNow();
    rounds.console.Outside.Time.In(
        Second, [&] { EXPECT_TRUE(rounds.schedule->Defer([] { /* a look at the book */ })); });
    rounds.Seconds(25);
    EXPECT_EQ(rounds.schedule->LogText().find("Site 2"), std::string::npos);
    EXPECT_TRUE(rounds.RunOut());
    EXPECT_EQ(Kept(), 30 * Sites);
}

TEST_P(ScheduleTest, AClickOutsideOfALoggerIsNotKept) {
    EXPECT_FALSE(rounds.schedule->Defer([] { FAIL(); }));
    EXPECT_FALSE(rounds.schedule->DeferUrgently([] { FAIL(); }));
    rounds.schedule->StartNow();
    EXPECT_TRUE(rounds.RunOut());
}

TEST_P(ScheduleTest, AnUrgentClickEndsTheUploadInHandWhichIsTriedAgainLater) {
    rounds.Add(CollectedSite(4, 4000));
    rounds.schedule->StartNow();
    Microseconds asked = 0;
    Microseconds done = 0;
    rounds.OnceTold("Site 4...", [&] {
        rounds.console.Outside.Time.In(4 * Second, [&] {
            asked = rounds.console.Outside.Time.Now();
            EXPECT_TRUE(
                rounds.schedule->DeferUrgently([&] { done = rounds.console.Outside.Time.Now(); }));
        });
    });
    ASSERT_TRUE(rounds.RunOut());
    EXPECT_GT(done, asked);
    EXPECT_LT(done - asked, Second);
    EXPECT_NE(rounds.schedule->LogText().find("Site 4...FAIL, stopped behind "), std::string::npos);
    EXPECT_NE(rounds.schedule->LogText().find("Site 4...OK, 4000 records, "), std::string::npos);
    EXPECT_EQ(Kept(), 30 * Sites + 4000);
}

TEST_P(ScheduleTest, APortThatWasClosedIsOpenedAndClosedAgain) {
    comm::Disconnect(LinkRecord(), rounds.console.View);
    rounds.schedule->StartNow();
    ASSERT_TRUE(rounds.RunOut());
    EXPECT_EQ(Kept(), 30 * Sites);
    EXPECT_FALSE(rounds.console.Outside.Port.PortOpen());
    EXPECT_EQ(LinkRecord().LinkState, LinkDisconnected);
}

TEST_P(ScheduleTest, APortThatWasOpenStaysOpen) {
    rounds.schedule->StartNow();
    ASSERT_TRUE(rounds.RunOut());
    EXPECT_TRUE(rounds.console.Outside.Port.PortOpen());
}

TEST_P(ScheduleTest, ALinkThatWasNeverConnectedIsConnected) {
    comm::Disconnect(LinkRecord(), rounds.console.View);
    LinkRecord().Connected = False;
    rounds.schedule->StartNow();
    ASSERT_TRUE(rounds.RunOut());
    EXPECT_NE(rounds.schedule->LogText().find("Connecting with the server radio on COM1...OK\n"),
              std::string::npos);
    EXPECT_EQ(Kept(), 30 * Sites);
    EXPECT_FALSE(rounds.console.Outside.Port.PortOpen());
}

TEST_P(ScheduleTest, ARadioThatCannotBeReachedIsTriedThriceAndToldInNoBox) {
    comm::Disconnect(LinkRecord(), rounds.console.View);
    LinkRecord().Connected = False;
    rounds.console.Outside.Port.Missing = {1};
    rounds.schedule->StartNow();
    ASSERT_TRUE(rounds.RunOut());
    const std::string& log = rounds.schedule->LogText();
    EXPECT_NE(log.find("COM1...FAIL\n"), std::string::npos);
    EXPECT_NE(log.find("    Error opening port."), std::string::npos) << log;
    EXPECT_NE(log.find("Round was ended: 0 of 0 loggers done\n"), std::string::npos) << log;
    EXPECT_TRUE(rounds.Boxes().empty());
    EXPECT_GT(rounds.console.Outside.Time.Now(), 120 * Second);
    EXPECT_EQ(Flags().OperationBusy, False);
    EXPECT_FALSE(rounds.Digests.at(0).empty());
}

TEST_P(ScheduleTest, StoppedItEndsWithTheUploadInHand) {
    rounds.Add(CollectedSite(4, 4000));
    rounds.schedule->StartNow();
    Microseconds stopped = 0;
    rounds.OnceTold("Site 4...", [&] {
        rounds.console.Outside.Time.In(4 * Second, [&] {
            stopped = rounds.console.Outside.Time.Now();
            rounds.schedule->Stop();
        });
    });
    EXPECT_TRUE(rounds.RunOut());
    EXPECT_GT(stopped, 0);
    EXPECT_LT(rounds.console.Outside.Time.Now() - stopped, 2 * Second);
    EXPECT_NE(rounds.schedule->LogText().find("Site 4...FAIL, stopped behind "), std::string::npos);
    EXPECT_NE(rounds.schedule->LogText().find("Round was ended: "), std::string::npos);
}

TEST_P(ScheduleTest, TheEndOfTheProgramInTheMiddleEndsTheRound) {
    rounds.Add(CollectedSite(4, 4000));
    rounds.schedule->StartNow();
    rounds.Seconds(8);
    LinkRecord().ShuttingDown = True;
    rounds.Seconds(5);
    EXPECT_EQ(Flags().OperationBusy, False);
    EXPECT_FALSE(rounds.schedule->RoundRuns());
}

TEST_P(ScheduleTest, ALogThatTheArchiveDoesNotTakeIsKeptLater) {
    bench->Hold();
    rounds.schedule->StartNow();
    ASSERT_TRUE(rounds.RunOut());
    bench->Release();
    EXPECT_TRUE(store->Rounds(1).empty());
    rounds.Seconds(11);
    EXPECT_EQ(Newest().Log, rounds.schedule->LogText());
    EXPECT_EQ(store->Rounds(10).size(), 1U);
}

TEST_P(ScheduleTest, WhatGoesWrongWithTheDigestStandsInTheLog) {
    rounds.Trouble = "No mail";
    rounds.schedule->StartNow();
    ASSERT_TRUE(rounds.RunOut());
    EXPECT_TRUE(Newest().Log.ends_with("  No mail\n")) << Newest().Log;
}

TEST_P(ScheduleTest, TheWindowsAloneAreCollectedIfThePlanSaysSo) {
    rounds.console.OpenWindow(2);
    Plan({.Step = PlanStep::Daily, .Minute = 540, .Choice = {.Scope = CollectScope::Windows}});
    rounds.Pass(2);
    EXPECT_EQ(rounds.RoundsRun(), 1);
    EXPECT_EQ(Kept(), 30);
}

TEST_P(ScheduleTest, ARestingScheduleLooksAtTheClockOnceASecondAndDoesNothingElse) {
    PlanDaily();
    const auto before = rounds.console.Outside.Network.Count().BytesWritten;
    rounds.Seconds(600);
    EXPECT_EQ(rounds.console.Outside.Network.Count().BytesWritten, before);
    EXPECT_EQ(Flags().OperationBusy, False);
}

TEST_P(ScheduleTest, RoundsComeBackTheNewestFirstAndOldOnesGo) {
    for (int i = 0; i < 3; ++i) {
        bench->Clock += 1000;
        rounds.schedule->StartNow();
        ASSERT_TRUE(rounds.RunOut());
    }
    const auto kept = store->Rounds(2);
    ASSERT_EQ(kept.size(), 2U);
    EXPECT_GT(kept[0].Begin, kept[1].Begin);
    store->DropRounds(kept[0].Begin);
    EXPECT_EQ(store->Rounds(10).size(), 1U);
}

ORVIA_FOR_ALL_STORES(ScheduleTest);

}  // namespace
}  // namespace testing_support
