#include <deque>

#include "archive/archive_words.h"
#include "archive/filing_bench.h"
#include "archive/store_fixture.h"

namespace testing_support {
namespace {

class FilerTest : public StoreTest {
 protected:
    void Make(const simulator::LoggerSetup& setup) {
        filing = std::make_unique<FilingBench>(setup, store.get());
    }

    /// The only logger of the archive.
    [[nodiscard]] ArchiveLogger Logger() {
        const auto loggers = store->Loggers();
        EXPECT_EQ(loggers.size(), 1U);
        return loggers.empty() ? ArchiveLogger{} : loggers.front();
    }
    [[nodiscard]] std::vector<ArchiveUpload> Uploads() { return store->UploadsOf(Logger().Id); }
    [[nodiscard]] Series Kept() { return ReadSeries(*store, Logger().Id); }
    [[nodiscard]] UploadBench& Line() { return filing->bench; }

    /// Whether the series is what the viewer's store holds.
    void ExpectKeptAll() {
        const Series kept = Kept();
        const auto records = Line().Store().Records();
        ASSERT_EQ(kept.Records.size(), records.size());
        for (std::size_t i = 0; i < records.size(); ++i) {
            ASSERT_EQ(kept.Records[i].Record, records[i]) << i;
        }
    }

    std::unique_ptr<FilingBench> filing;
};

TEST_P(FilerTest, AnUploadIsKeptWithAllThatIsKnownOfIt) {
    Make(SiteWithHistory(25));
    filing->Run();
    ExpectKeptAll();
    EXPECT_EQ(Logger().Name, "Site 1");
    EXPECT_EQ(Logger().Mac, Line().console.State.Book.Entries[1].Mac);
    EXPECT_EQ(Logger().Records, 25);
    EXPECT_EQ(Logger().Uploads, 1);
    const ArchiveUpload upload = Uploads().at(0);
    EXPECT_EQ(upload.Begin, bench->Clock);
    EXPECT_EQ(upload.End, bench->Clock);
    EXPECT_EQ(upload.Outcome, ArchiveOutcome::Complete);
    EXPECT_EQ(upload.Firmware, Line().window->State.FirmwareVersion);
    EXPECT_EQ(upload.Name, "Site 1");
    EXPECT_EQ(upload.Said, 25);
    EXPECT_EQ(upload.Received, 25);
    EXPECT_EQ(filing->Viewers, 1);
    EXPECT_TRUE(Line().Boxes().empty());
}

TEST_P(FilerTest, TheSettingsComeBackAsTheWindowHeldThem) {
    Make(SiteWithHistory(25));
    LoggerState& held = Line().window->State;
    held.FlowDeviceName = "4\" \"Palmer\"";
    held.FlowEqMultiplier = 0.1;
    held.FlowDecPlaces = 3;
    held.FlowTable.Append({0.5, 1.0 / 3});
    filing->Run();
    const Series kept = Kept();
    ASSERT_EQ(kept.Settings.size(), 1U);
    const LoggerRecord& logger = kept.Settings[0].Logger;
    EXPECT_EQ(logger.SettingsImage, held.SettingsImage);
    EXPECT_EQ(logger.LoggerName, held.LoggerName);
    EXPECT_EQ(logger.NumAnalogChannels, 8);
    EXPECT_EQ(logger.NumDigitalChannels, 2);
    EXPECT_EQ(logger.UpperLimit, held.UpperLimit);
    EXPECT_EQ(logger.FlowDeviceName, held.FlowDeviceName);
    EXPECT_EQ(logger.FlowEqMultiplier, 0.1);
    EXPECT_EQ(logger.FlowDecPlaces, 3);
    ASSERT_EQ(kept.Settings[0].Table.UpperBound(), 1);
    EXPECT_EQ(kept.Settings[0].Table[1].Flow, 1.0 / 3);
}

TEST_P(FilerTest, TheSameSettingsAreKeptOnceAndRecordsKeepThoseOfTheirFirstReader) {
    Make(SiteWithHistory(25));
    filing->Run();
    ++bench->Clock;
    filing->Run();
    EXPECT_EQ(store->SettingsOf(Logger().Id).size(), 1U);
    EXPECT_EQ(Uploads().size(), 2U);
    Line().window->State.FlowEqOffset = 7;
    ++bench->Clock;
    filing->Run();
    EXPECT_EQ(store->SettingsOf(Logger().Id).size(), 2U);
    const Series kept = Kept();
    EXPECT_EQ(kept.Settings.size(), 1U);
    EXPECT_EQ(kept.Settings[0].Logger.FlowEqOffset, 0);
    EXPECT_EQ(Logger().Records, 25);
}

/// What was received a second ago is in the archive, whatever the upload waits for.
TEST_P(FilerTest, WhatCameIsThereForOthersWithinASecondAtAnyTime) {
    Make(SiteWithHistory(4000));
    const auto other = bench->NewStore();
    other->Open();
    Line().Faults().Pass(100).LoseReply().LoseReply().LoseReply().LoseReply();
    std::deque<std::int64_t> received;
    int looks = 0;
    filing->Every(100 * Millisecond, [&] {
        received.push_back(Line().Store().HistoryCount());
        if (received.size() <= 10) {
            return;
        }
        received.pop_front();
        const auto loggers = other->Loggers();
        const std::int64_t kept = loggers.empty() ? 0 : loggers.front().Records;
        ASSERT_GE(kept, received.front());
        looks += received.front() > 0 && received.front() < 4000 ? 1 : 0;
    });
    filing->Run();
    EXPECT_GT(looks, 20);
    ExpectKeptAll();
}

TEST_P(FilerTest, AnUploadHasNoEndUntilItEnds) {
    Make(SiteWithHistory(4000));
    bool looked = false;
    filing->In(2 * Second, [&] {
        looked = true;
        ASSERT_EQ(Uploads().size(), 1U);
        EXPECT_EQ(Uploads()[0].End, std::nullopt);
        EXPECT_EQ(Uploads()[0].Outcome, std::nullopt);
        EXPECT_GT(Uploads()[0].Received, 0);
    });
    filing->Run();
    EXPECT_TRUE(looked);
    EXPECT_NE(Uploads()[0].End, std::nullopt);
}

/// A kill while the dialog waits for "Okay" takes nothing from a complete upload.
TEST_P(FilerTest, AnUploadIsCompleteBeforeItIsAcknowledged) {
    Make(SiteWithHistory(25));
    bool looked = false;
    filing->Every(10 * Millisecond, [&] {
        if (Line().view.OkayAllowed && !looked) {
            looked = true;
            EXPECT_EQ(Uploads().at(0).Outcome, ArchiveOutcome::Complete);
        }
    });
    filing->Run();
    EXPECT_TRUE(looked);
}

TEST_P(FilerTest, AStoppedUploadKeepsWhatCame) {
    Make(SiteWithHistory(4000));
    filing->In(2 * Second, [&] { Line().view.TagText = TagCancel; });
    filing->Run();
    EXPECT_EQ(Uploads().at(0).Outcome, ArchiveOutcome::Stopped);
    EXPECT_LT(Logger().Records, 4000);
    ExpectKeptAll();
}

TEST_P(FilerTest, AFailedUploadKeepsWhatCame) {
    Make(SiteWithHistory(4000));
    filing->In(2 * Second, [&] { Line().logger->Silence(); });
    filing->Run();
    EXPECT_EQ(Uploads().at(0).Outcome, ArchiveOutcome::Failed);
    EXPECT_LT(Logger().Records, 4000);
    ExpectKeptAll();
}

TEST_P(FilerTest, TheEndOfTheProgramStopsAnUpload) {
    Make(SiteWithHistory(4000));
    filing->In(2 * Second, [&] { Line().console.State.LinkRecord.ShuttingDown = True; });
    filing->Run();
    EXPECT_EQ(Uploads().at(0).Outcome, ArchiveOutcome::Stopped);
    ExpectKeptAll();
}

TEST_P(FilerTest, TellsHowManyRecordsWereNew) {
    Make(SiteWithHistory(25));
    filing->Run();
    EXPECT_EQ(Line().console.State.Filer->NewRecords(), 25);
    ++bench->Clock;
    filing->Run();
    EXPECT_EQ(Line().console.State.Filer->NewRecords(), 0);
}

TEST_P(FilerTest, SettledInWordsItShowsNoBox) {
    Make(SiteWithHistory(25));
    UploadFiler& filer = *Line().console.State.Filer;
    UploadStart start;
    start.Name = "Site";
    start.Records = 1;
    bench->Hold();
    filer.Began(start);
    filer.Took(std::vector{RecordAt(60)});
    filer.Ended(UploadOutcome::Complete);
    const auto words = filer.SettleInWords();
    bench->Release();
    ASSERT_TRUE(words);
    EXPECT_NE(words->find("another program holds it"), std::string::npos) << *words;
    EXPECT_TRUE(Line().Boxes().empty());
    filer.Began(start);
    filer.Took(std::vector{RecordAt(60)});
    filer.Ended(UploadOutcome::Complete);
    EXPECT_FALSE(filer.SettleInWords());
    EXPECT_EQ(filer.NewRecords(), 1);
}

TEST_P(FilerTest, NamesAreKeptAsTheyAre) {
    const std::vector<std::string> names = {"Robert'); DROP TABLE loggers;--",
                                            "100 % \"full\" ?1 :a", std::string("nul\0inside", 10),
                                            "\xFF\xFE no UTF-8", std::string(1 << 20, 'x')};
    Make(SiteWithHistory(25));
    for (const std::string& name : names) {
        Line().console.State.Book.Entries[1].Name = name;
        ++bench->Clock;
        filing->Run();
        EXPECT_EQ(Logger().Name, name);
        EXPECT_EQ(Uploads().back().Name, name);
    }
    EXPECT_EQ(Uploads().size(), names.size());
}

/// The clock of the computer has been set back between two uploads.
TEST_P(FilerTest, AnUploadStandsBehindAllThatIsFiled) {
    Make(SiteWithHistory(25));
    filing->Run();
    const std::int64_t first = Uploads().at(0).Begin;
    bench->Clock -= 3'600'000;
    filing->Run();
    EXPECT_EQ(Uploads().at(1).Begin, first + 1);
}

TEST_P(FilerTest, TheUploadRunsToTheStepAsWithoutAnArchive) {
    const auto run = [](ArchiveStore* archive) {
        FilingBench one(SiteWithHistory(500), archive);
        one.bench.Faults().Pass(3).LoseReply().Pass(5).LoseReply();
        one.Run();
        return std::tuple(one.bench.Requests(), one.bench.view.Progress, one.bench.view.BarValues,
                          one.Now(), one.bench.console.Outside.Pump.Waits,
                          one.bench.Boxes().size());
    };
    EXPECT_EQ(run(store.get()), run(nullptr));
}

TEST_P(FilerTest, ALockThatGoesAgainIsNotTold) {
    Make(SiteWithHistory(2000));
    bench->Hold();
    filing->In(3 * Second, [&] { bench->Release(); });
    filing->Run();
    EXPECT_TRUE(Line().Boxes().empty());
    EXPECT_EQ(Uploads().at(0).Outcome, ArchiveOutcome::Complete);
    ExpectKeptAll();
}

TEST_P(FilerTest, ALockThatStaysIsToldOnceAndTheUploadIsThere) {
    Make(SiteWithHistory(100));
    bench->Hold();
    filing->Run();
    ASSERT_EQ(Line().Boxes().size(), 1U);
    EXPECT_EQ(Line().Boxes()[0].Title, "Archive");
    EXPECT_EQ(Line().Boxes()[0].Icon, BoxIcon::Exclamation);
    EXPECT_NE(Line().Boxes()[0].Text.find("another program holds it"), std::string::npos);
    EXPECT_EQ(Line().Store().HistoryCount(), 100);
    EXPECT_EQ(filing->Viewers, 1);
    filing->Run();
    EXPECT_TRUE(Line().Boxes().empty());
    bench->Release();
    filing->Run();
    EXPECT_TRUE(Line().Boxes().empty());
    ExpectKeptAll();
    bench->Hold();
    filing->Run();
    EXPECT_EQ(Line().Boxes().size(), 1U);
    bench->Release();
}

TEST_P(FilerTest, ALoggerDeletedMeanwhileIsTold) {
    Make(SiteWithHistory(4000));
    const auto other = bench->NewStore();
    other->Open();
    filing->In(2 * Second, [&] { DeleteLogger(*other, other->Loggers().at(0).Id); });
    filing->Run();
    ASSERT_EQ(Line().Boxes().size(), 1U);
    EXPECT_NE(Line().Boxes()[0].Text.find("deleted from it meanwhile"), std::string::npos);
    EXPECT_EQ(Line().Store().HistoryCount(), 4000);
    EXPECT_TRUE(store->Loggers().empty());
}

ORVIA_FOR_ALL_STORES(FilerTest);

}  // namespace
}  // namespace testing_support
