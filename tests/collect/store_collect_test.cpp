// History collected from many loggers, into real stores.
#include "archive/store_fixture.h"
#include "collect/collect_bench.h"
#include "logger/command_codes.h"

namespace testing_support {
namespace {

class CollectTest : public StoreTest {
 protected:
    void Make() { collect = std::make_unique<CollectBench>(*store); }
    /// Three sites with so many records each, their windows open.
    void MakeThree(std::uint32_t records = 30) {
        Make();
        for (int number = 1; number <= 3; ++number) {
            collect->Add(CollectedSite(number, records));
        }
        collect->OpenAll();
    }
    [[nodiscard]] std::vector<std::int64_t> Kept() {
        std::vector<std::int64_t> records;
        for (const ArchiveLogger& logger : store->Loggers()) {
            records.push_back(logger.Records);
        }
        return records;
    }
    void ExpectAtRest() {
        const SharedState& state = collect->console.State;
        EXPECT_EQ(state.OperationsRecord.OperationBusy, False);
        EXPECT_EQ(state.OperationsRecord.ForAllActive, False);
        EXPECT_EQ(state.LinkRecord.CommBusy, False);
        EXPECT_EQ(collect->console.View.Shape, Pointer::Normal);
        EXPECT_EQ(collect->console.Log.Foot, "");
        EXPECT_EQ(state.Collecting.Text(), "");
        EXPECT_TRUE(collect->console.Log.ButtonCloses);
    }

    std::unique_ptr<CollectBench> collect;
};

TEST_P(CollectTest, EachWindowMakesOneLineAndGoesIntoTheArchive) {
    MakeThree();
    collect->Run();
    EXPECT_EQ(collect->Log(),
              "Collecting history from client window Site 1...OK, 30 records, 30 new\n"
              "Collecting history from client window Site 2...OK, 30 records, 30 new\n"
              "Collecting history from client window Site 3...OK, 30 records, 30 new\n"
              "Done\n");
    EXPECT_EQ(Kept(), (std::vector<std::int64_t>{30, 30, 30}));
    EXPECT_TRUE(collect->Boxes().empty());
    ExpectAtRest();
}

TEST_P(CollectTest, ASecondCollectionFindsNothingNew) {
    MakeThree();
    collect->Run();
    bench->Clock += 1000;
    collect->Run();
    EXPECT_NE(collect->Log().find("Site 2...OK, 30 records, 0 new\n"), std::string::npos);
    EXPECT_EQ(Kept(), (std::vector<std::int64_t>{30, 30, 30}));
}

TEST_P(CollectTest, WhatWasLoggedSinceIsNew) {
    Make();
    simulator::LoggerSetup site = CollectedSite(1, 30);
    site.Logging = true;
    collect->Add(site);
    collect->OpenAll();
    collect->Run();
    const std::int64_t first = Kept().at(0);
    collect->console.Outside.Time.Run(3600 * Second);
    bench->Clock += 3'600'000;
    collect->Run();
    const std::int64_t added = Kept().at(0) - first;
    EXPECT_GT(added, 0);
    EXPECT_NE(collect->Log().find(", " + std::to_string(added) + " new\n"), std::string::npos)
        << collect->Log();
}

TEST_P(CollectTest, ASilentLoggerIsSkipped) {
    MakeThree();
    collect->Logger(2).Silence();
    collect->Run();
    EXPECT_EQ(collect->Log(),
              "Collecting history from client window Site 1...OK, 30 records, 30 new\n"
              "Collecting history from client window Site 2...FAIL, no answer\n"
              "Collecting history from client window Site 3...OK, 30 records, 30 new\n"
              "Done\n"
              "\nThis needs a person:\n"
              "Site 2: no answer\n");
    EXPECT_TRUE(collect->Boxes().empty());
    ExpectAtRest();
}

TEST_P(CollectTest, AServerRadioThatIsSilentIsToldWithEachLogger) {
    MakeThree();
    collect->console.Outside.Network.Radio().Silence();
    collect->Run();
    EXPECT_EQ(
        collect->Log().find(
            "Collecting history from client window Site 1...FAIL, the server radio could not be "
            "tuned to it\n"
            "Collecting history from client window Site 2...FAIL, the server radio could not be "
            "tuned to it\n"
            "Collecting history from client window Site 3...FAIL, the server radio could not be "
            "tuned to it\n"
            "Done\n"),
        0U)
        << collect->Log();
    EXPECT_TRUE(collect->Boxes().empty());
    ExpectAtRest();
}

/// The radio has gone to the second site, and its echo was lost: it must not be taken to be on the
/// first one still.
TEST_P(CollectTest, ALostEchoOfTheRadioMixesUpNoLoggers) {
    constexpr std::uint8_t SetAddress = 0x10;
    Make();
    collect->Add(CollectedSite(1, 30));
    collect->Add(CollectedSite(2, 40));
    collect->OpenAll();
    collect->windows[0]->WhenSettingsRead = [this] {
        collect->console.Outside.Network.RadioFaults().OnRequest(
            SetAddress, simulator::Plain(simulator::FaultKind::LoseAnswer));
    };
    collect->Run();
    EXPECT_NE(collect->Log().find("Site 2...FAIL, the server radio could not be tuned to it"),
              std::string::npos)
        << collect->Log();
    bench->Clock += 1000;
    collect->Run();
    EXPECT_EQ(collect->Log(),
              "Collecting history from client window Site 1...OK, 30 records, 0 new\n"
              "Collecting history from client window Site 2...OK, 40 records, 40 new\n"
              "Done\n");
}

/// A block of the first site is on its way still when the second one's is lost.
TEST_P(CollectTest, ALateAnswerIsNotTakenForTheNextLoggers) {
    constexpr std::uint8_t ReadBlock = 0x0D;
    for (auto delay = Second; delay <= 5 * Second; delay += Second / 4) {
        SCOPED_TRACE(delay);
        bench = GetParam().Make();
        store = bench->NewStore();
        Make();
        collect->Add(CollectedSite(1, 10));
        simulator::LoggerSetup second = CollectedSite(2, 10);
        second.ClockOffset = 3600;  // by which its records differ from the first one's
        collect->Add(second);
        collect->OpenAll();
        const auto onBlock = [this](const simulator::LineFault& fault) {
            return [this, fault] {
                collect->console.Outside.Network.Faults().OnRequest(ReadBlock, fault);
            };
        };
        collect->windows[0]->WhenSettingsRead = onBlock(simulator::LateReply(delay));
        collect->windows[1]->WhenSettingsRead =
            onBlock(simulator::Plain(simulator::FaultKind::LoseReply));
        collect->Run();
        bench->Clock += 1000;
        collect->Run();
        EXPECT_NE(collect->Log().find("Site 2...OK, 10 records, 0 new"), std::string::npos)
            << collect->Log();
    }
}

/// Where all answers come, nothing is waited for.
TEST_P(CollectTest, OnlyWhatStaysOutIsWaitedFor) {
    constexpr Microseconds Rest = 5 * Second;
    MakeThree();
    const auto timeOf = [this] {
        const auto begin = collect->console.Outside.Time.Now();
        collect->Run();
        return collect->console.Outside.Time.Now() - begin;
    };
    const auto quick = timeOf();
    collect->console.Outside.Network.Faults().LoseReply();
    const auto slow = timeOf();
    EXPECT_GT(slow - quick, Rest - Second);
    EXPECT_LT(slow - quick, Rest + 3 * Second);
}

TEST_P(CollectTest, WhatABoxWouldSayStandsInTheLog) {
    MakeThree();
    comm::Disconnect(collect->console.State.LinkRecord, collect->console.View);
    collect->console.Outside.Port.Missing = {1};
    collect->Run();
    EXPECT_NE(collect->Log().find("Site 1...FAIL, the server radio could not be tuned to it\n"
                                  "    Error opening port. If this port exists, it may be in use "
                                  "by another application."),
              std::string::npos)
        << collect->Log();
    EXPECT_TRUE(collect->Boxes().empty());
    ExpectAtRest();
}

TEST_P(CollectTest, AnUploadThatBreaksOffKeepsWhatCame) {
    Make();
    collect->Add(CollectedSite(1, 4000));
    collect->OpenAll();
    collect->windows[0]->WhenSettingsRead = [this] {
        collect->console.Outside.Time.In(3 * Second, [this] { collect->Logger(1).Silence(); });
    };
    collect->Run();
    EXPECT_NE(collect->Log().find("FAIL, the upload broke off behind "), std::string::npos)
        << collect->Log();
    EXPECT_GT(Kept().at(0), 0);
    EXPECT_LT(Kept().at(0), 4000);
    ExpectAtRest();
}

TEST_P(CollectTest, CancelEndsTheUploadInHandAndTheWalk) {
    MakeThree(4000);
    collect->console.Outside.Time.In(5 * Second, [this] { collect->console.Log.Cancel = true; });
    collect->Run();
    const std::string& log = collect->Log();
    EXPECT_NE(log.find("Site 1...FAIL, stopped behind "), std::string::npos) << log;
    EXPECT_NE(
        log.find(" new\n\nOperation Cancelled\n\nThis needs a person:\nSite 1: stopped behind "),
        std::string::npos)
        << log;
    EXPECT_EQ(log.find("Site 2"), std::string::npos);
    EXPECT_LT(collect->console.Outside.Time.Now(), 8 * Second);
    EXPECT_EQ(store->UploadsOf(1).at(0).Outcome, ArchiveOutcome::Stopped);
    ExpectAtRest();
}

TEST_P(CollectTest, WithTheLogClosedItGoesOnToTheLastWindow) {
    MakeThree(200);
    collect->console.Outside.Time.In(2 * Second, [this] { collect->console.Log.Open = false; });
    collect->Run();
    EXPECT_EQ(Kept(), (std::vector<std::int64_t>{200, 200, 200}));
}

TEST_P(CollectTest, OfNineChannelsItTakesAllWhereGetHistoryTakesOneBlock) {
    Make();
    collect->Add(CollectedSite(1, 95, 8, 1));
    collect->OpenAll();
    collect->Run();
    EXPECT_EQ(collect->Log(),
              "Collecting history from client window Site 1...OK, 95 records, 95 new\nDone\n");
    EXPECT_EQ(Kept(), (std::vector<std::int64_t>{95}));
}

TEST_P(CollectTest, OfNineChannelsAMultipleOfABlockEndsWithAnEmptyOne) {
    Make();
    collect->Add(CollectedSite(1, 90, 8, 1));
    collect->OpenAll();
    collect->Run();
    EXPECT_EQ(Kept(), (std::vector<std::int64_t>{90}));
}

TEST_P(CollectTest, ALoggerWithoutRecordsIsOk) {
    Make();
    collect->Add(CollectedSite(1, 0));
    collect->OpenAll();
    collect->Run();
    EXPECT_EQ(collect->Log(),
              "Collecting history from client window Site 1...OK, no records\nDone\n");
    EXPECT_TRUE(Kept().empty());
}

TEST_P(CollectTest, AClockThatIsOffIsToldAndLeftAlone) {
    Make();
    simulator::LoggerSetup site = CollectedSite(1, 5);
    site.ClockOffset = -200;
    collect->Add(site);
    site = CollectedSite(2, 5);
    site.ClockOffset = 3661;
    site.Clock = simulator::ClockForm::Hours12;
    collect->Add(site);
    site = CollectedSite(3, 5);
    site.ClockOffset = 50;
    collect->Add(site);
    collect->OpenAll();
    collect->Run();
    EXPECT_EQ(collect->Log(),
              "Collecting history from client window Site 1...OK, 5 records, 5 new, its clock is "
              "3 min 20 s behind\n"
              "Collecting history from client window Site 2...OK, 5 records, 5 new, its clock is "
              "1 h 1 min ahead\n"
              "Collecting history from client window Site 3...OK, 5 records, 5 new\n"
              "Done\n"
              "\nThis needs a person:\n"
              "Site 1: its clock is 3 min 20 s behind\n"
              "Site 2: its clock is 1 h 1 min ahead\n");
    EXPECT_EQ(collect->Requests(1, cmd::SetTimeCode), 0);
}

TEST_P(CollectTest, AndSyncTimeSetsEachClockWithoutAsking) {
    Make();
    simulator::LoggerSetup site = CollectedSite(1, 5);
    site.ClockOffset = -200;
    collect->Add(site);
    collect->OpenAll();
    collect->Run({.SyncTime = true});
    EXPECT_EQ(collect->Log(),
              "Collecting history from client window Site 1...OK, 5 records, 5 new, its clock is "
              "3 min 20 s behind, clock set\nDone\n");
    EXPECT_TRUE(collect->Boxes().empty());
    collect->Run();
    EXPECT_EQ(collect->Log().find("clock"), std::string::npos) << collect->Log();
}

TEST_P(CollectTest, NothingIsEverClearedOnALogger) {
    MakeThree();
    collect->Run({.Scope = CollectScope::WholeBook, .SyncTime = true});
    for (int number = 1; number <= 3; ++number) {
        EXPECT_EQ(collect->Requests(number, cmd::ClearHistoryCode), 0);
        EXPECT_EQ(collect->Requests(number, cmd::RestartSamplingCode), 0);
        EXPECT_EQ(collect->Requests(number, cmd::WriteMemoryCode), 0);
        EXPECT_EQ(collect->Logger(number).RecordsAt(0), 30U);
    }
}

TEST_P(CollectTest, TheWholeBookOpensWhatIsClosedAndClosesItAgain) {
    Make();
    for (int number = 1; number <= 3; ++number) {
        collect->Add(CollectedSite(number, 30));
    }
    const auto open = collect->console.OpenWindow(2);
    collect->Run({.Scope = CollectScope::WholeBook});
    EXPECT_EQ(collect->Log(),
              "Collecting history from client window Site 1...OK, 30 records, 30 new\n"
              "Collecting history from client window Site 2...OK, 30 records, 30 new\n"
              "Collecting history from client window Site 3...OK, 30 records, 30 new\n"
              "Done\n");
    EXPECT_EQ(collect->console.State.Windows.NumClientWindows, 1);
    EXPECT_EQ(collect->console.State.Windows.At(collect->console.State.Book.Entries[2].WindowIndex),
              open);
    EXPECT_EQ(collect->console.State.Book.Entries[1].WindowIndex, NoWindow);
    EXPECT_EQ(collect->console.View.Clients.at(0).Icon, IconNoWindow);
    EXPECT_EQ(collect->console.View.OpenedBehind, 2);
    EXPECT_NE(open->IsActive(), False);
    ExpectAtRest();
}

TEST_P(CollectTest, WithoutWindowsOnlyTheWholeBookHasSomethingToCollect) {
    Make();
    collect->Add(CollectedSite(1, 30));
    collect->Run();
    ASSERT_EQ(collect->Boxes().size(), 1U);
    EXPECT_EQ(collect->Boxes()[0].Text, "There are no client windows active!");
    EXPECT_EQ(collect->console.Log.Opened, 0);
    collect->Run({.Scope = CollectScope::WholeBook});
    EXPECT_EQ(Kept(), (std::vector<std::int64_t>{30}));
    EXPECT_EQ(collect->console.State.OperationsRecord.OperationBusy, False);
}

TEST_P(CollectTest, NothingHappensWhileTheLinkIsNotFree) {
    MakeThree();
    collect->console.State.OperationsRecord.OperationBusy = True;
    collect->Run();
    EXPECT_EQ(collect->console.Log.Opened, 0);
    EXPECT_NE(collect->console.State.OperationsRecord.OperationBusy, False);
    collect->console.State.OperationsRecord.OperationBusy = False;
    collect->console.State.SamplingRecord.ContinuousMode = AutoUpdateRunning;
    collect->Run();
    EXPECT_EQ(collect->console.Log.Opened, 0);
    collect->console.State.SamplingRecord.ContinuousMode = SamplingIdle;
    collect->console.State.LinkRecord.Connected = False;
    collect->Run();
    EXPECT_EQ(collect->console.Log.Opened, 0);
}

TEST_P(CollectTest, TheFootTellsHowFarTheLoggerInHandIs) {
    Make();
    collect->Add(CollectedSite(1, 2000));
    collect->OpenAll();
    collect->Run();
    bool rate = false;
    for (const std::string& foot : collect->console.Log.Feet) {
        rate = rate || (foot.starts_with("Site 1: ") &&
                        foot.find(" of 2000 records, ") != std::string::npos &&
                        foot.find(" a second, 0:") != std::string::npos && foot.ends_with(" left"));
    }
    EXPECT_TRUE(rate);
    EXPECT_EQ(collect->console.Log.Feet.back(), "");
}

TEST_P(CollectTest, AnArchiveThatTakesNothingIsToldWithEachLoggerAndInNoBox) {
    MakeThree(5);
    bench->Hold();
    collect->Run();
    bench->Release();
    EXPECT_NE(collect->Log().find("Site 1...FAIL, 5 records, 0 new, not kept: "), std::string::npos)
        << collect->Log();
    EXPECT_NE(collect->Log().find("Site 3...FAIL, "), std::string::npos);
    EXPECT_TRUE(collect->Boxes().empty());
    ExpectAtRest();
}

TEST_P(CollectTest, AValueBelowItsLimitStandsBelowTheLog) {
    Make();
    collect->Add(CollectedSite(1, 5));
    collect->OpenAll();
    collect->Limits.LowestValues[{collect->console.State.Book.Entries[1].Mac, 1}] = 1e6;
    collect->Run();
    EXPECT_NE(collect->Log().find("Done\n\nThis needs a person:\nSite 1: channel 1 is at "),
              std::string::npos)
        << collect->Log();
}

TEST_P(CollectTest, AWindowClosedMeanwhileIsCollectedToItsEnd) {
    MakeThree(200);
    collect->console.Outside.Time.In(2 * Second, [this] { collect->windows[0]->Unload(); });
    collect->Run();
    EXPECT_NE(collect->Log().find("Site 1...OK, 200 records, 200 new\n"), std::string::npos);
    ExpectAtRest();
}

TEST_P(CollectTest, TheEndOfTheProgramEndsIt) {
    MakeThree(4000);
    collect->console.Outside.Time.In(5 * Second, [this] {
        collect->console.State.LinkRecord.ShuttingDown = True;
        collect->console.Log.Open = false;
    });
    collect->Run();
    EXPECT_LT(collect->console.Outside.Time.Now(), 7 * Second);
    EXPECT_TRUE(collect->Boxes().empty());
}

ORVIA_FOR_ALL_STORES(CollectTest);

}  // namespace
}  // namespace testing_support
