#include "history/upload.h"

#include <gmock/gmock.h>

#include <array>
#include <cstdlib>
#include <iostream>
#include <random>

#include "history/upload_bench.h"

namespace testing_support {
namespace {

using testing::ElementsAre;

TEST(MaxPerBlock, Is240BytesByTheRecordSizeToNearestTiesToEven) {
    const std::vector<int> expected = {40, 30, 24, 20, 17, 15, 13, 12, 11, 10};
    for (int channels = 1; channels <= AllChannels; ++channels) {
        EXPECT_EQ(MaxPerBlock(channels), expected[static_cast<std::size_t>(channels - 1)]);
    }
}

TEST(Upload, BringsEveryRecordOnceInOrder) {
    UploadBench bench(SiteWithHistory(25));
    bench.Run();
    EXPECT_EQ(bench.Store().HistoryCount(), 25);
    EXPECT_EQ(bench.FirstWrong(), -1);
    EXPECT_EQ(bench.Requests(), "011");
    EXPECT_EQ(bench.view.TagText, TagOkay);
    EXPECT_EQ(bench.view.Hidden, 1);
    EXPECT_TRUE(bench.Boxes().empty());
}

TEST(Upload, ShowsItsProgress) {
    UploadBench bench(SiteWithHistory(25));
    bench.Run();
    EXPECT_EQ(bench.view.BarMaximum, 25);
    EXPECT_THAT(bench.view.BarValues, ElementsAre(0, 10, 20, 25));
    EXPECT_THAT(bench.view.Progress,
                ElementsAre("0 records", "10 records", "20 records", "25 records",
                            "Upload complete: 25 records uploaded."));
    EXPECT_EQ(bench.view.Retries, "");
    EXPECT_TRUE(bench.view.OkayAllowed);
}

TEST(Upload, ExactlyMaxPerBlockRecordsGiveAFullBlockThenAnEmptyOne) {
    UploadBench bench(SiteWithHistory(10));
    bench.Run();
    EXPECT_EQ(bench.Requests(), "01");
    EXPECT_EQ(bench.Store().HistoryCount(), 10);
    EXPECT_EQ(bench.view.Progress.back(), "Upload complete: 10 records uploaded.");
    EXPECT_EQ(bench.view.TagText, TagOkay);
}

TEST(Upload, MoreRecordsThanNumSamplesSaidRaiseTheBarsMaximum) {
    UploadBench bench(SiteWithHistory(25));
    bench.Run(12);
    EXPECT_EQ(bench.Store().HistoryCount(), 25);
    EXPECT_EQ(bench.view.BarMaximum, 25);
    EXPECT_EQ(bench.view.BarValue, 25);
}

TEST(Upload, WithNineChannelsAFullBlockOfTenCountsAsTheLastOne) {
    UploadBench bench(SiteWithHistory(25, 8, 1));
    bench.Run();
    EXPECT_EQ(bench.Requests(), "0");
    EXPECT_EQ(bench.Store().HistoryCount(), 10);
    EXPECT_EQ(bench.view.TagText, TagOkay);
}

TEST(Upload, ToTheEndItGoesOnBehindAFullBlockOfTenOfNineChannels) {
    for (const std::uint32_t records : {25U, 30U}) {
        UploadBench bench(SiteWithHistory(records, 8, 1));
        bench.console.Outside.Network.ClearRecord();
        UploadContext context = bench.Context();
        context.toTheEnd = true;
        RunUpload(context, bench.view, static_cast<std::int32_t>(records));
        EXPECT_EQ(bench.Requests(), records == 25 ? "011" : "0111");
        EXPECT_EQ(bench.Store().HistoryCount(), static_cast<std::int32_t>(records));
        EXPECT_EQ(bench.FirstWrong(), -1);
        EXPECT_EQ(bench.view.TagText, TagOkay);
    }
}

TEST(Upload, ToTheEndChangesNothingForOtherNumbersOfChannels) {
    for (int channels = 1; channels <= 10; ++channels) {
        const int expected = channels == 9 ? 10 : MaxPerBlock(channels);
        EXPECT_EQ(RecordsThatFit(channels), expected) << channels;
    }
}

TEST(Upload, LostReplyIsFollowedByARepeatThenTheNextBlock) {
    UploadBench bench(SiteWithHistory(35));
    bench.Faults().Pass().LoseReply();
    bench.Run();
    EXPECT_EQ(bench.Requests(), "01211");
    EXPECT_EQ(bench.Store().HistoryCount(), 35);
    EXPECT_EQ(bench.FirstWrong(), -1);
    EXPECT_EQ(bench.view.Retries, "1 retries");
}

TEST(Upload, LostFirstReplyIsFollowedByARepeatThenTheNextBlock) {
    UploadBench bench(SiteWithHistory(15));
    bench.Faults().LoseReply(2);
    bench.Run();
    EXPECT_EQ(bench.Requests(), "0221");
    EXPECT_EQ(bench.FirstWrong(), -1);
    EXPECT_EQ(bench.view.Retries, "2 retries");
}

TEST(Upload, RequestThatNeverArrivedDoublesNoRecord) {
    UploadBench bench(SiteWithHistory(35));
    bench.Faults().Pass().LoseRequest();
    bench.Run();
    EXPECT_EQ(bench.Requests(), "012111");
    EXPECT_EQ(bench.Store().HistoryCount(), 35);
    EXPECT_EQ(bench.FirstWrong(), -1);
}

TEST(Upload, LostAcknowledgeLosesNoRecord) {
    UploadBench bench(SiteWithHistory(35));
    bench.Faults().Pass().LoseAnswer();
    bench.Run();
    EXPECT_EQ(bench.Requests(), "01211");
    EXPECT_EQ(bench.FirstWrong(), -1);
    EXPECT_EQ(bench.Store().HistoryCount(), 35);
}

TEST(Upload, FirstRequestThatNeverArrivedBringsNothingOfTheUploadBefore) {
    UploadBench bench(SiteWithHistory(35));
    bench.Run();
    bench.Rewind();
    bench.Faults().LoseRequest();
    bench.Run();
    EXPECT_EQ(bench.Requests(), "020111");
    EXPECT_EQ(bench.Store().HistoryCount(), 35);
    EXPECT_EQ(bench.FirstWrong(), -1);
}

TEST(Upload, AnswerThatComesAfterItsRequestWasGivenUpIsNotTakenForTheNext) {
    for (int late = 800; late <= 3000; late += 50) {
        UploadBench bench(SiteWithHistory(45));
        bench.Faults().Pass().NextReply(simulator::Late(late * Millisecond));
        bench.Run();
        EXPECT_EQ(bench.Store().HistoryCount(), 45) << late;
        EXPECT_EQ(bench.FirstWrong(), -1) << late;
    }
}

TEST(Upload, LoggerWhoseClockStandsStillSendsBlocksThatAreAlike) {
    UploadBench bench(SiteWithHistory(25));
    Bytes block(241, 0);
    block[0] = 10;
    int asked = 0;
    bench.logger->Answers(0x0D, block);
    bench.console.Outside.Network.SetTrace([&](const simulator::Exchange& exchange) {
        if (!exchange.OfRadio && exchange.Request[0] == 0x0D && ++asked == 3) {
            block[0] = 0;
            bench.logger->Answers(0x0D, block);
        }
    });
    bench.Run();
    EXPECT_EQ(bench.Store().HistoryCount(), 30);
    EXPECT_EQ(bench.view.TagText, TagOkay);
}

TEST(Upload, HundredFailuresInARowAreRepeated) {
    UploadBench bench(SiteWithHistory(15));
    bench.Faults().Pass().LoseReply(100);
    bench.Run();
    EXPECT_EQ(bench.view.TagText, TagOkay);
    EXPECT_EQ(bench.view.Retries, "100 retries");
    EXPECT_EQ(bench.Store().HistoryCount(), 15);
}

TEST(Upload, AHundredFailuresBeforeAnyRecordAreRepeatedToo) {
    UploadBench bench(SiteWithHistory(15));
    bench.Faults().LoseReply(100);
    bench.Run();
    EXPECT_EQ(bench.view.TagText, TagOkay);
    EXPECT_EQ(bench.view.Retries, "100 retries");
    EXPECT_EQ(bench.Store().HistoryCount(), 15);
}

TEST(Upload, The101stFailureInARowEndsTheUpload) {
    UploadBench bench(SiteWithHistory(15));
    bench.Faults().Pass().LoseReply(101);
    bench.Run();
    EXPECT_EQ(bench.Requests().size(), 102U);
    EXPECT_EQ(bench.view.TagText, TagRunning);
    EXPECT_EQ(bench.view.Hidden, 1);
    EXPECT_EQ(bench.view.Retries, "100 retries");
    ASSERT_EQ(bench.Boxes().size(), 1U);
    EXPECT_EQ(bench.Boxes()[0].Title, "Get History Data");
    EXPECT_EQ(bench.Boxes()[0].Text, "Error during retrieval. Received 10 records of 15 records.");
    EXPECT_EQ(bench.Boxes()[0].Icon, BoxIcon::Stop);
    EXPECT_EQ(bench.Boxes()[0].Buttons, BoxButtons::Ok);
}

TEST(Upload, GoodBlockResetsTheFailuresInARowButNotTheirTotal) {
    UploadBench bench(SiteWithHistory(25));
    bench.Faults().Pass().LoseReply(60).Pass().LoseReply(60);
    bench.Run();
    EXPECT_EQ(bench.view.TagText, TagOkay);
    EXPECT_EQ(bench.view.Retries, "120 retries");
    EXPECT_EQ(bench.Store().HistoryCount(), 25);
}

TEST(Upload, CountAboveMaxPerBlockIsAnErrorAtOnce) {
    UploadBench bench(SiteWithHistory(25));
    Bytes block(241, 0xFF);
    block[0] = 11;
    bench.logger->Answers(0x0D, block);
    bench.Run();
    EXPECT_EQ(bench.Requests(), "0");
    EXPECT_EQ(bench.view.TagText, TagRunning);
    ASSERT_EQ(bench.Boxes().size(), 1U);
    EXPECT_EQ(bench.Boxes()[0].Text, "Error during retrieval. Received 0 records of 25 records.");
}

TEST(Upload, CountThatOverrunsTheBlockKeepsTheWholeRecordsWithoutABox) {
    UploadBench bench(SiteWithHistory(25, 8, 1));
    Bytes block(241, 0x11);
    block[0] = 11;
    bench.logger->Answers(0x0D, block);
    bench.Run();
    EXPECT_EQ(bench.Store().HistoryCount(), 10);
    EXPECT_EQ(bench.view.TagText, TagRunning);
    EXPECT_EQ(bench.view.Hidden, 1);
    EXPECT_TRUE(bench.Boxes().empty());
}

TEST(Upload, StopDuringTheWaitsOfAFailingLinkEndsItInThatRound) {
    UploadBench bench(SiteWithHistory(25));
    bench.Faults().Pass().GoSilent();
    bench.console.Outside.Time.In(1 * Second, [&] { bench.view.TagText = TagCancel; });
    bench.Run();
    EXPECT_EQ(bench.Requests(), "01");
    EXPECT_EQ(bench.view.TagText, TagCancel);
    EXPECT_EQ(bench.view.Hidden, 1);
    ASSERT_EQ(bench.Boxes().size(), 1U);
    EXPECT_EQ(bench.Boxes()[0].Title, "Get History Data");
    EXPECT_EQ(bench.Boxes()[0].Text,
              "Retrieval cancelled by user. Received 10 records of 25 records.");
    EXPECT_EQ(bench.Boxes()[0].Icon, BoxIcon::Information);
    EXPECT_EQ(bench.Boxes()[0].Buttons, BoxButtons::Ok);
}

TEST(Upload, StopWhileTheLastBlockComesStillCompletes) {
    UploadBench bench(SiteWithHistory(5));
    bench.console.Outside.Time.In(30 * Millisecond, [&] { bench.view.TagText = TagCancel; });
    bench.Run();
    EXPECT_EQ(bench.view.Progress.back(), "Upload complete: 5 records uploaded.");
    EXPECT_EQ(bench.view.TagText, TagCancel);
    EXPECT_TRUE(bench.Boxes().empty());
}

TEST(Upload, The200000thRecordEndsIt) {
    UploadBench bench(SiteWithHistory(200'100, 1, 0));
    bench.console.Outside.Network.LineBaud = 0;
    bench.console.Outside.Network.KeepsRecord = false;
    bench.Run();
    EXPECT_EQ(bench.Store().HistoryCount(), 200'000);
    EXPECT_EQ(bench.view.Progress.back(), "200000 records");
    EXPECT_EQ(bench.view.TagText, TagCancel);
    EXPECT_EQ(bench.view.Hidden, 1);
    ASSERT_EQ(bench.Boxes().size(), 1U);
    EXPECT_EQ(bench.Boxes()[0].Title, "Get History Data");
    EXPECT_EQ(bench.Boxes()[0].Text, "History buffer full: upload terminated.");
    EXPECT_EQ(bench.Boxes()[0].Icon, BoxIcon::Information);
}

TEST(Upload, DoesNothingUnlessTheDialogIsStarting) {
    UploadBench bench(SiteWithHistory(5));
    bench.view.TagText = TagRunning;
    bench.Run();
    EXPECT_EQ(bench.Requests(), "");
    EXPECT_EQ(bench.view.Hidden, 0);
}

TEST(Upload, UnwindsWithoutABoxWhenTheProgramCloses) {
    for (int moment = 10; moment < 3000; moment += 130) {
        UploadBench bench(SiteWithHistory(25));
        bench.Faults().Pass().GoSilent();
        bench.console.Outside.Time.In(moment * Millisecond,
                                      [&] { bench.console.State.LinkRecord.ShuttingDown = True; });
        bench.Run();
        EXPECT_EQ(bench.view.Hidden, 1);
        EXPECT_TRUE(bench.Boxes().empty());
    }
}

TEST(Upload, EndsWhenTheProgramClosesBehindItsCompletion) {
    UploadBench bench(SiteWithHistory(5));
    bench.console.Outside.Time.In(200 * Millisecond,
                                  [&] { bench.console.State.LinkRecord.ShuttingDown = True; });
    bench.Run();
    EXPECT_TRUE(bench.view.OkayAllowed);
    EXPECT_EQ(bench.view.TagText, TagRunning);
    EXPECT_EQ(bench.view.Hidden, 1);
}

// ----- speed

/// Share of an upload's time in which bytes that the protocol asks for are on the line.
double LineUse(int baud) {
    UploadBench bench(SiteWithHistory(2000));
    simulator::Network& network = bench.console.Outside.Network;
    network.LineBaud = baud;
    network.AirDelay = 0;
    network.LoggerDelay = 0;
    const simulator::Counters before = network.Count();
    const Microseconds start = bench.console.Outside.Time.Now();
    bench.Run();
    // The operator's press of "Okay" is no part of it.
    const Microseconds taken = bench.console.Outside.Time.Now() - start - 300 * Millisecond;
    const std::int64_t bytes = network.Count().BytesWritten - before.BytesWritten +
                               network.Count().BytesToConsole - before.BytesToConsole;
    EXPECT_EQ(bench.Store().HistoryCount(), 2000);
    return static_cast<double>(bytes) * 10 * Second / baud / static_cast<double>(taken);
}

TEST(Upload, LeavesALineHardlyAMomentIdle) {
    for (const int baud : {9600, 38400, 115200}) {
        const double use = LineUse(baud);
        std::cout << baud << " baud: " << 100 * use << " % of what the protocol allows\n";
        EXPECT_GE(use, 0.97) << baud;
    }
}

// ----- every fault at every stage

std::uint64_t SeedOfThisRun() {
    const char* given = std::getenv("ORVIA_SEED");
    return given != nullptr ? std::strtoull(given, nullptr, 10) : 20261115;
}

void TryUnderFaults(std::uint64_t seed, int& complete) {
    std::mt19937_64 random(seed);
    const auto below = [&random](int limit) {
        return static_cast<int>(random() % static_cast<std::uint64_t>(limit));
    };
    UploadBench bench(
        SiteWithHistory(static_cast<std::uint32_t>(1 + below(120)), 1 + below(6), below(3)));
    bench.console.Outside.Network.LineBaud = std::array{0, 9600, 115200}[below(3)];
    const bool before = below(4) == 0;
    if (before) {
        // The logger still has a block of an upload that was stopped.
        bench.console.Outside.Time.In((10 + below(400)) * Millisecond,
                                      [&bench] { bench.view.TagText = TagCancel; });
        bench.Run();
        bench.console.Outside.Time.Run(1 * Second);
        bench.Rewind();
    }
    bench.Faults().Probability(0.05 + 0.1 * below(6), random());
    bench.Run();
    const std::int32_t received = bench.Store().HistoryCount();
    ASSERT_EQ(bench.FirstWrong(), -1) << "seed " << seed << ", requests " << bench.Requests();
    ASSERT_EQ(bench.view.Hidden, 1) << "seed " << seed;
    if (bench.view.TagText == TagOkay) {
        ++complete;
        ASSERT_EQ(received, bench.window->NumSamples())
            << "seed " << seed << ", requests " << bench.Requests();
    } else {
        ASSERT_EQ(bench.view.TagText, TagRunning) << "seed " << seed;
        ASSERT_EQ(bench.Boxes().size(), 1U) << "seed " << seed;
        EXPECT_EQ(bench.Boxes()[0].Text,
                  "Error during retrieval. Received " + std::to_string(received) + " records of " +
                      std::to_string(bench.window->NumSamples()) + " records.");
    }
}

TEST(Upload, EveryFaultAtEveryStageLosesAndDoublesNothing) {
    const std::uint64_t first = SeedOfThisRun();
    std::cout << "seed " << first << " (ORVIA_SEED sets another)\n";
    int complete = 0;
    constexpr int Uploads = 3000;
    for (std::uint64_t i = 0; i < Uploads && !testing::Test::HasFatalFailure(); ++i) {
        TryUnderFaults(first + i, complete);
    }
    std::cout << complete << " of " << Uploads << " uploads came through\n";
    EXPECT_GT(complete, Uploads / 2);
}

}  // namespace
}  // namespace testing_support
