#include "console/logger_orders.h"

#include "book_bench.h"

namespace {

using namespace testing_support;
using Order = void (*)(const OperationContext&);

constexpr std::uint8_t GetTimeCommand = 0x00;
constexpr std::uint8_t SetTimeCommand = 0x01;
constexpr std::uint8_t ClearCommand = 0x04;
constexpr std::uint8_t StatusCommand = 0x0C;
constexpr std::uint8_t ResetCommand = 0x0E;

class LoggerOrdersTest : public BookBench {
 protected:
    LoggerOrdersTest() { console.Connect(); }

    simulator::Logger& Logger(int number) {
        return *console.Outside.Network.Loggers().at(static_cast<std::size_t>(number - 1));
    }

    /// Requests with that command code that reached the logger.
    int Requests(int number, std::uint8_t code) {
        const auto requests = console.Outside.Network.RequestsTo(Logger(number));
        return static_cast<int>(
            std::count_if(requests.begin(), requests.end(),
                          [code](const Bytes& request) { return request.front() == code; }));
    }

    void ExpectAtRest() {
        EXPECT_EQ(console.State.OperationsRecord.OperationBusy, False);
        EXPECT_EQ(console.State.LinkRecord.CommBusy, False);
        EXPECT_EQ(console.View.Shape, Pointer::Normal);
    }
};

TEST_F(LoggerOrdersTest, SyncTimeAsksThenSetsTheClock) {
    console.OpenWindow(1);
    SyncTime(console.Operation());
    ExpectBox("Synchronize Time",
              "Do you want to set the logger time to equal the system time?\n\n    Radio: Site 1",
              BoxIcon::Information, BoxButtons::YesNo);
    const LocalTime now = console.Outside.Clock.Now();
    const auto clock = simulator::FromSeconds(Logger(1).ClockAt(console.Outside.Time.Now()));
    EXPECT_EQ(clock.Day, now.Day);
    EXPECT_EQ(clock.Hour, now.Hour);
    EXPECT_NEAR(clock.Minute * 60 + clock.Second, now.Minute * 60 + now.Second, 3);
    ExpectAtRest();
}

TEST_F(LoggerOrdersTest, NoToSyncTimeLeavesTheLoggerUntouched) {
    console.OpenWindow(1);
    Answer(BoxAnswer::No);
    SyncTime(console.Operation());
    EXPECT_TRUE(console.Outside.Network.RequestsTo(Logger(1)).empty());
    ExpectAtRest();
}

TEST_F(LoggerOrdersTest, SyncTimeReadsStatusAndClockBehindIt) {
    const auto window = console.OpenWindow(1);
    window->Valid = True;
    SyncTime(console.Operation());
    EXPECT_EQ(window->SettingsReads, 0);
    EXPECT_EQ(window->StatusReads, 1);
    EXPECT_FALSE(window->State.LoggerTime.empty());
}

TEST_F(LoggerOrdersTest, RefusedClockIsFollowedByStatusAndClockAllTheSame) {
    const auto window = console.OpenWindow(1);
    window->Valid = True;
    Refuse(SetTimeCommand);
    SyncTime(console.Operation());
    EXPECT_EQ(window->StatusReads, 1);
    EXPECT_EQ(Requests(1, StatusCommand), 1);
    EXPECT_EQ(Requests(1, GetTimeCommand), 1);
    EXPECT_EQ(Shown().size(), 1U) << "the question alone";
    ExpectAtRest();
}

TEST_F(LoggerOrdersTest, SettingsAreReadFirstWhereTheyAreUnknown) {
    const auto window = console.OpenWindow(1);
    ClearHistory(console.Operation());
    EXPECT_EQ(window->SettingsReads, 1);
    EXPECT_EQ(Logger(1).RecordsAt(console.Outside.Time.Now()), 0U);
}

TEST_F(LoggerOrdersTest, UnreadableSettingsAreToldUnderTheTitleOfTheUpload) {
    for (const Order order : {SyncTime, ClearHistory}) {
        Logger(1).Silence();
        console.OpenWindow(1);
        order(console.Operation());
        ASSERT_EQ(Shown().size(), 2U);
        EXPECT_EQ(Shown()[1].Title, "Get History Data");
        EXPECT_EQ(Shown()[1].Text, "Error: unable to read logger settings!");
        EXPECT_EQ(Shown()[1].Icon, BoxIcon::Information);
        EXPECT_EQ(Shown()[1].Buttons, BoxButtons::Ok);
        Shown().clear();
        ExpectAtRest();
    }
}

TEST_F(LoggerOrdersTest, ClearHistoryAsksThenClears) {
    simulator::LoggerSetup setup = BasicSite(9);
    setup.HistoryRecords = 500;
    const int entry = console.AddSite(setup);
    const auto window = console.OpenWindow(entry);
    ClearHistory(console.Operation());
    ExpectBox("Clear History",
              "Are you sure you want to erase the history buffer?\n\n    Radio: Site 9",
              BoxIcon::Information, BoxButtons::YesNo);
    EXPECT_EQ(Logger(entry).RecordsAt(console.Outside.Time.Now()), 0U);
    EXPECT_EQ(window->State.NumSamples, 0U);
    EXPECT_EQ(window->StatusReads, 1);
    ExpectAtRest();
}

TEST_F(LoggerOrdersTest, NoToClearHistoryLeavesTheLoggerUntouched) {
    console.OpenWindow(1);
    Answer(BoxAnswer::No);
    ClearHistory(console.Operation());
    EXPECT_TRUE(console.Outside.Network.RequestsTo(Logger(1)).empty());
    ExpectAtRest();
}

TEST_F(LoggerOrdersTest, QuestionComesOnlyOnceTheRadioIsSelected) {
    console.OpenWindow(1);
    console.State.LinkRecord.LinkState = LinkNormal;
    console.Outside.Network.Radio().Silence();
    ClearHistory(console.Operation());
    ASSERT_EQ(Shown().size(), 1U);
    EXPECT_EQ(Shown()[0].Title, "Server Connection Error");
    EXPECT_EQ(Shown()[0].Buttons, BoxButtons::Ok);
    ExpectAtRest();
}

TEST_F(LoggerOrdersTest, ResetPulseAccumulatorsIsFollowedByASample) {
    const auto window = console.OpenWindow(1);
    ResetPulseAccumulators(console.Operation());
    EXPECT_EQ(Requests(1, ResetCommand), 1);
    EXPECT_EQ(window->SettingsReads, 1);
    EXPECT_EQ(window->Points.size(), 1U);
    EXPECT_TRUE(Shown().empty());
    ExpectAtRest();
}

TEST_F(LoggerOrdersTest, RadioThatCannotBeSelectedGivesNoSampleEither) {
    const auto window = console.OpenWindow(1);
    console.Outside.Network.Radio().Silence();
    ResetPulseAccumulators(console.Operation());
    EXPECT_EQ(window->SettingsReads, 0);
    ExpectAtRest();
}

TEST_F(LoggerOrdersTest, WithoutAnActiveWindowNothingHappensAndTheLinkIsFree) {
    console.OpenWindow(1)->Active = False;
    for (const Order order : {SyncTime, ClearHistory, ResetPulseAccumulators}) {
        order(console.Operation());
        ExpectAtRest();
    }
    EXPECT_TRUE(Shown().empty());
    EXPECT_TRUE(console.Outside.Network.RequestsTo(Logger(1)).empty());
}

TEST_F(LoggerOrdersTest, NothingStartsWhileTheLinkIsTaken) {
    console.OpenWindow(1);
    const auto none = [this] {
        for (const Order order : {SyncTime, ClearHistory, ResetPulseAccumulators}) {
            order(console.Operation());
        }
        return Shown().empty() && console.Outside.Network.RequestsTo(Logger(1)).empty();
    };
    console.State.OperationsRecord.OperationBusy = True;
    EXPECT_TRUE(none());
    console.State.OperationsRecord.OperationBusy = False;
    console.State.SamplingRecord.ContinuousMode = AutoUpdateRunning;
    EXPECT_TRUE(none());
    console.State.SamplingRecord.ContinuousMode = SamplingIdle;
    console.State.LinkRecord.Connected = False;
    EXPECT_TRUE(none());
    console.State.LinkRecord.Connected = True;
    console.State.SamplingRecord.StepRuns = True;
    EXPECT_TRUE(none());
}

TEST_F(LoggerOrdersTest, ButtonPressedDuringARunningOperationDoesNothing) {
    console.OpenWindow(1);
    console.Outside.Time.In(300 * Millisecond, [this] { ClearHistory(console.Operation()); });
    GetSample(console.Operation());
    EXPECT_TRUE(Shown().empty());
    EXPECT_EQ(Requests(1, ClearCommand), 0);
    ExpectAtRest();
}

TEST_F(LoggerOrdersTest, EntryEditedWhileItsRadioIsSelectedIsSelectedAsItWas) {
    console.OpenWindow(1);
    console.Outside.Time.In(5 * Millisecond, [this] {
        for (int i = 0; i < 50; ++i) {
            Book().Entries.Append({});
        }
        Entry(1).Mac[5] = 2;
    });
    GetSample(console.Operation());
    EXPECT_EQ(console.State.LinkRecord.CurrentMAC[2], 1);
}

TEST(LoggerTimeTextTest, HasTwoDigitsEverywhereAndABlankBehindTheYear) {
    EXPECT_EQ(LoggerTimeText({2026, 1, 2, 3, 4, 5, 999}), "01/02/26 03:04:05");
    EXPECT_EQ(LoggerTimeText({1999, 12, 31, 23, 59, 58, 0}), "12/31/99 23:59:58");
    EXPECT_EQ(LoggerTimeText({2000, 10, 10, 0, 0, 0, 0}), "10/10/00 00:00:00");
}

}  // namespace
