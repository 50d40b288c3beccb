// What the line at the lower edge tells while operations run, and behind them.
#include "records/operation_status.h"

#include <gmock/gmock.h>

#include <functional>

#include "book_bench.h"
#include "console/logger_orders.h"

namespace {

using namespace testing_support;
using ::testing::Contains;
using ::testing::HasSubstr;

/// Three loggers with their windows open; the last one is the active one.
class OperationStatusTest : public BookBench {
 protected:
    OperationStatusTest() {
        console.Connect();
        for (int number = 1; number <= Book().Entries.UpperBound(); ++number) {
            windows.push_back(console.OpenWindow(number));
        }
        console.View.Statuses.clear();
    }

    simulator::Logger& Logger(int number) {
        return *console.Outside.Network.Loggers().at(static_cast<std::size_t>(number - 1));
    }
    /// What the line told, once a tick has shown the end.
    const std::vector<std::string>& Told() {
        console.Outside.Time.Run(200 * Millisecond);
        return console.View.Statuses;
    }
    /// The line at the end, its time taken off; nothing without a time.
    std::string Outcome() {
        Told();
        const std::string& line = console.View.Status;
        const std::size_t gap = line.find("  ");
        return gap == std::string::npos ? std::string() : line.substr(gap + 2);
    }

    std::vector<std::shared_ptr<FakeClientWindow>> windows;
};

TEST_F(OperationStatusTest, ALoggerThatDoesNotAnswerIsToldTryByTry) {
    Logger(3).Silence();
    GetSample(console.Operation());
    EXPECT_THAT(Told(), Contains("Tuning the server radio to Site 3..."));
    EXPECT_THAT(Told(), Contains("Reading settings of Site 3..."));
    EXPECT_THAT(Told(), Contains("Reading settings of Site 3, try 2 of 3..."));
    EXPECT_THAT(Told(), Contains("Reading settings of Site 3, try 3 of 3..."));
    EXPECT_EQ(Outcome(), "Site 3 did not answer");
}

TEST_F(OperationStatusTest, WhatCameOfItStandsWithTheTimeOfTheHost) {
    Logger(3).Silence();
    GetSample(console.Operation());
    const SystemClock& clock = console.State.Outside.Clock;
    const std::string ended = clock.TimeText(clock.Now());
    console.Outside.Time.Run(90 * Second);
    EXPECT_EQ(console.View.Status, ended + "  Site 3 did not answer");
    EXPECT_TRUE(console.View.StatusFailed);
    EXPECT_NE(clock.TimeText(clock.Now()), ended);
}

TEST_F(OperationStatusTest, ReadingSettingsTellsHowFarItIs) {
    GetSample(console.Operation());
    EXPECT_THAT(Told(), Contains("Reading settings of Site 3, block 2 of 3..."));
    EXPECT_THAT(Told(), Contains("Getting a sample of Site 3..."));
    EXPECT_EQ(Outcome(), "Sample of Site 3 received");
}

TEST_F(OperationStatusTest, AServerRadioThatFailsIsTold) {
    console.Outside.Network.RadioFaults().GoSilent();
    GetSample(console.Operation());
    EXPECT_EQ(Outcome(), "The server radio could not be tuned to Site 3");
}

TEST_F(OperationStatusTest, WhatWasNotWantedIsTold) {
    console.Outside.Boxes.Answers = {BoxAnswer::No};
    ClearHistory(console.Operation());
    EXPECT_EQ(Outcome(), "Clear History of Site 3 was not wanted");
}

TEST_F(OperationStatusTest, AWalkTellsWhichOfHowManyAndWhoFailed) {
    Logger(2).Silence();
    GetSampleForAll(console.ForAll());
    EXPECT_THAT(Told(), Contains("1 of 3: Getting a sample of Site 1..."));
    EXPECT_THAT(Told(), Contains("2 of 3: Reading settings of Site 2, try 2 of 3..."));
    EXPECT_EQ(Outcome(), "Get Sample for all: 2 of 3 done, not Site 2");
}

TEST_F(OperationStatusTest, AWalkThatWasCancelledTellsHowFarItCame) {
    console.Outside.Time.In(500 * Millisecond, [this] { console.Log.Cancel = true; });
    GetSampleForAll(console.ForAll());
    EXPECT_EQ(Outcome(), "Get Sample for all was ended: 1 of 3 done");
}

TEST_F(OperationStatusTest, SamplingContinuouslyTellsOfEachSampleAndOfItsEnd) {
    SampleContinuously(console.Operation());
    EXPECT_EQ(Outcome(), "Site 3 is sampled every second");
    console.Outside.Time.Run(5 * Second);
    EXPECT_EQ(Outcome(), "Sample of Site 3 received");
    Logger(3).Silence();
    console.Outside.Time.Run(5 * Second);
    EXPECT_EQ(Outcome(), "Site 3 did not answer");
    SampleContinuously(console.Operation());
    console.Outside.Time.Run(5 * Second);
    EXPECT_EQ(Outcome(), "Continuous sampling stopped");
}

TEST_F(OperationStatusTest, AutoUpdateTellsOfEachPass) {
    ToggleAutoUpdate(console.ForAll());
    EXPECT_EQ(Outcome(), "Get Sample for all: 3 of 3 done");
    Logger(1).Silence();
    console.Outside.Time.Run(150 * Second);
    EXPECT_EQ(Outcome(), "Auto Update: 2 of 3 loggers gave a sample");
}

TEST_F(OperationStatusTest, APortThatTheIdleLimitClosesIsTold) {
    console.Outside.Time.Run(301 * Second);
    EXPECT_THAT(Outcome(), HasSubstr("Port closed after five quiet minutes"));
}

TEST_F(OperationStatusTest, ADeviceThatIsGoneIsTold) {
    console.Outside.Port.PullOut();
    console.Outside.Time.Run(Second);
    EXPECT_EQ(Outcome(), "The port is closed: its device is gone");
}

struct OrderCase {
    const char* Name;
    std::function<void(const OperationContext&)> Run;
    const char* Success;
};

class EveryOperation : public OperationStatusTest,
                       public ::testing::WithParamInterface<OrderCase> {};

TEST_P(EveryOperation, TellsThatItSucceeded) {
    console.Outside.Boxes.Answers = {BoxAnswer::Yes, BoxAnswer::Yes};
    GetParam().Run(console.Operation());
    EXPECT_EQ(Outcome(), GetParam().Success);
    EXPECT_FALSE(console.State.Status.Busy());
}

TEST_P(EveryOperation, TellsThatTheLoggerDidNotAnswer) {
    Logger(3).Silence();
    console.Outside.Boxes.Answers = {BoxAnswer::Yes, BoxAnswer::Yes};
    GetParam().Run(console.Operation());
    EXPECT_EQ(Outcome(), "Site 3 did not answer");
    EXPECT_FALSE(console.State.Status.Busy());
}

INSTANTIATE_TEST_SUITE_P(
    Operations, EveryOperation,
    ::testing::Values(
        OrderCase{"GetSample", GetSample, "Sample of Site 3 received"},
        OrderCase{"SyncTime", SyncTime, "Clock of Site 3 set"},
        OrderCase{"ClearHistory", ClearHistory, "History of Site 3 cleared"},
        OrderCase{"ShowFirmwareVersion", ShowFirmwareVersion, "Settings of Site 3 read"},
        OrderCase{"ResetPulseAccumulators", ResetPulseAccumulators, "Sample of Site 3 received"}),
    [](const auto& order) { return order.param.Name; });

class BookStatus : public BookBench {
 protected:
    OperationStatus& Status() { return console.State.Status; }
};

TEST_F(BookStatus, ABookThatIsLoadedTellsHowManyRadiosItHas) {
    TellBookLoaded(Status(), "/books/north.obk", Book(), true);
    EXPECT_THAT(Status().Text(), HasSubstr("  Address book north loaded, client radios: 3"));
}

TEST_F(BookStatus, ABookThatIsNotThereIsTold) {
    AddressBook book;
    TellBookLoaded(Status(), "/gone/north.obk", book,
                   LoadAddressBook("/gone/north.obk", book, console.View));
    EXPECT_THAT(Status().Text(), HasSubstr("  Address book north could not be read"));
}

TEST_F(BookStatus, ABookThatCannotBeWrittenIsTold) {
    SaveBook(Status(), "/gone/north.obk", Book());
    EXPECT_THAT(Status().Text(), HasSubstr("  Address book north could not be saved"));
    EXPECT_TRUE(Status().Failed());
    SaveBook(Status(), Path, Book());
    EXPECT_THAT(Status().Text(), HasSubstr(" saved"));
    EXPECT_FALSE(Status().Failed());
}

TEST(OperationStatusLine, WhatFailedIsAFailureUntilTheNextBegins) {
    VirtualHost host;
    OperationStatus status(host.Clock);
    EXPECT_FALSE(status.Failed());
    status.Came("Site 1 did not answer", false);
    EXPECT_TRUE(status.Failed());
    status.Doing("Reading");
    EXPECT_FALSE(status.Failed());
    status.End();
    EXPECT_TRUE(status.Failed()) << "not completed";
    status.Came("Sample of Site 1 received");
    EXPECT_FALSE(status.Failed());
}

TEST(OperationStatusLine, AnOperationThatEndsWithoutAWordWasNotCompleted) {
    VirtualHost host;
    OperationStatus status(host.Clock);
    EXPECT_EQ(status.Text(), "");
    status.End();
    EXPECT_EQ(status.Text(), "") << "nothing was being done";
    status.Doing("Reading");
    status.HowFar("block", 1, 3);
    EXPECT_EQ(status.Text(), "Reading, block 1 of 3...");
    status.End();
    EXPECT_THAT(status.Text(), ::testing::EndsWith("  Reading was not completed"));
    status.HowFar("block", 2, 3);
    EXPECT_THAT(status.Text(), ::testing::EndsWith("completed")) << "that is over";
}

}  // namespace
