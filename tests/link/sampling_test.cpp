#include "link/sampling.h"

#include <gtest/gtest.h>

#include "console/logger_operations.h"
#include "support/virtual_console.h"

namespace {

using simulator::CorruptByte;
using simulator::CutAfter;
using simulator::FaultKind;
using simulator::Plain;
using testing_support::BasicSite;
using testing_support::FakeClientWindow;
using testing_support::Millisecond;
using testing_support::Second;
using testing_support::VirtualConsole;
using Requests = std::vector<simulator::Bytes>;

constexpr std::int32_t RawOfTen = 6554;  // 10 of 0 to 100 over 0 to 65535

class SamplingTest : public ::testing::Test {
 protected:
    std::shared_ptr<FakeClientWindow> OpenSite(int number, int analog = 8, int pulse = 2) {
        auto window = console_.OpenWindow(console_.AddSite(BasicSite(number, analog, pulse)));
        if (link_.Connected == False) {
            console_.Connect();
        }
        return window;
    }

    /// Starts one sample a second on the active window, whose settings are read.
    void StartContinuously() {
        SampleContinuously(console_.Operation());
        ASSERT_EQ(sampling_.ContinuousMode, ContinuousFirstRequest);
        console_.Outside.Network.ClearRecord();
    }

    /// Starts Auto Update over windows whose settings are read.
    void StartAutoUpdate() {
        for (const auto& window : console_.State.Windows.Slots) {
            if (window && comm::SelectClient(console_.Radio(),
                                             console_.State.Book.Entries[window->ClientIndex()])) {
                static_cast<void>(window->GetSettings());
            }
        }
        sampling_.ContinuousMode = AutoUpdateStart;
        sampling_.SampleTicks = 0;
        console_.Outside.Network.ClearRecord();
    }

    Requests RequestsTo(int site) {
        return console_.Outside.Network.RequestsTo(
            *console_.Outside.Network.Loggers()[static_cast<std::size_t>(site - 1)]);
    }

    VirtualConsole console_;
    Link& link_ = console_.State.LinkRecord;
    Sampling& sampling_ = console_.State.SamplingRecord;
    Operations& operations_ = console_.State.OperationsRecord;
    DataPoint& newest_ = console_.State.Newest;
    simulator::FaultScript& faults_ = console_.Outside.Network.Faults();
};

TEST_F(SamplingTest, AtRestATickDoesNothing) {
    console_.Outside.Time.Run(Second);
    EXPECT_EQ(sampling_.SampleTicks, 0);
    EXPECT_EQ(operations_.OperationBusy, False);
}

TEST_F(SamplingTest, AOneShotSampleAsksTwiceThenReads) {
    const auto window = OpenSite(1);
    GetSample(console_.Operation());
    Requests requests = RequestsTo(1);
    const Requests last(requests.end() - 3, requests.end());
    EXPECT_EQ(last, (Requests{{0x09, 0x01}, {0x09, 0x01}, {0x0A}}));
    ASSERT_EQ(window->Points.size(), 1U);
    EXPECT_EQ(window->Points[0].Raw[0], RawOfTen);
    EXPECT_NE(window->Points[0].Time, "");
}

TEST_F(SamplingTest, AOneShotSampleStepsAtTicksTenAndTwelve) {
    OpenSite(1);
    comm::StartSingleSample(sampling_, newest_);
    std::vector<std::pair<int, int>> steps;  // SingleSample and SampleTicks as it changed
    int before = sampling_.SingleSample;
    while (sampling_.SingleSample != 0 && sampling_.SingleSampleTicks > 0) {
        console_.Outside.Time.JumpToNextEvent();
        if (sampling_.SingleSample != before) {
            before = sampling_.SingleSample;
            steps.emplace_back(before, sampling_.SampleTicks);
        }
    }
    EXPECT_EQ(steps, (std::vector<std::pair<int, int>>{{2, 1}, {3, 10}, {0, 12}}));
}

TEST_F(SamplingTest, AOneShotSampleHasPrecedenceOverAContinuousMode) {
    OpenSite(1);
    StartContinuously();
    operations_.OperationBusy = True;
    comm::StartSingleSample(sampling_, newest_);
    console_.Outside.Time.Run(300 * Millisecond);
    EXPECT_EQ(sampling_.ContinuousMode, ContinuousFirstRequest);
    EXPECT_GT(sampling_.SampleTicks, 1);
}

TEST_F(SamplingTest, ALoggerWithoutASampleGivesTheMarks) {
    const auto window = OpenSite(1);
    faults_.OnRequest(0x09, Plain(FaultKind::LoseRequest), 2);
    GetSample(console_.Operation());
    ASSERT_EQ(window->Points.size(), 1U);
    EXPECT_EQ(window->Points[0].Raw[0], NoReading);
    EXPECT_EQ(window->Points[0].Time, "");
}

TEST_F(SamplingTest, AFailedOneShotReadNeverShowsAnOlderReading) {
    const auto window = OpenSite(1);
    GetSample(console_.Operation());
    faults_.OnRequest(0x0A, Plain(FaultKind::LoseAnswer));
    GetSample(console_.Operation());
    ASSERT_EQ(window->Points.size(), 2U);
    EXPECT_EQ(window->Points[1].Raw[0], NoReading);
}

TEST_F(SamplingTest, ContinuouslyMeansOneSampleASecond) {
    const auto window = OpenSite(1);
    StartContinuously();
    console_.Outside.Time.Run(12 * Second);
    EXPECT_GE(window->Points.size(), 10U);
    EXPECT_LE(window->Points.size(), 12U);
    EXPECT_EQ(window->StatusReads, static_cast<int>(window->Points.size()));
    EXPECT_EQ(operations_.OperationBusy, False);
    EXPECT_EQ(sampling_.StepRuns, False);
}

TEST_F(SamplingTest, ContinuouslyAsksAtTickTenThenReadsAtTwelve) {
    OpenSite(1);
    StartContinuously();
    console_.Outside.Time.Run(2500 * Millisecond);
    const Requests requests = RequestsTo(1);
    ASSERT_GE(requests.size(), 5U);
    EXPECT_EQ(Requests(requests.begin(), requests.begin() + 6),
              (Requests{{0x09, 0x01}, {0x09, 0x01}, {0x0A}, {0x0C}, {0x09, 0x01}, {0x0A}}));
}

TEST_F(SamplingTest, AFailedSendOfAContinuousReadGivesTheMarks) {
    const auto window = OpenSite(1);
    StartContinuously();
    console_.Outside.Time.Run(1500 * Millisecond);
    ASSERT_EQ(window->Points.size(), 1U);
    faults_.OnRequest(0x0A, Plain(FaultKind::LoseAnswer));
    ASSERT_TRUE(
        console_.Outside.Time.RunUntil([&] { return window->Points.size() == 2; }, 10 * Second));
    EXPECT_EQ(window->Points[1].Raw[0], NoReading);
}

TEST_F(SamplingTest, AFailedFrameOrAnotherStatusLeavesTheContinuousReadingAsItWas) {
    const auto window = OpenSite(1);
    StartContinuously();
    console_.Outside.Time.Run(1500 * Millisecond);
    // A sample that breaks off, one that is damaged, and a status byte other than FA and FD.
    for (const auto& fault : {CutAfter(8), CorruptByte(8), CorruptByte(0)}) {
        const std::size_t shown = window->Points.size();
        const DataPoint before = window->Points.back();
        faults_.OnRequest(0x0A, fault);
        ASSERT_TRUE(console_.Outside.Time.RunUntil(
            [&] { return window->Points.size() == shown + 1; }, 10 * Second));
        EXPECT_EQ(window->Points.back().Raw, before.Raw);
        EXPECT_EQ(window->Points.back().Time, before.Time);
    }
    EXPECT_EQ(faults_.Count(), 3);
    console_.Outside.Time.Run(5 * Second);
    EXPECT_NE(window->Points.back().Time, window->Points.front().Time) << "the mode goes on";
}

TEST_F(SamplingTest, StopEndsTheModeOnTheNextTick) {
    OpenSite(1);
    StartContinuously();
    console_.Outside.Time.Run(3 * Second);
    SampleContinuously(console_.Operation());
    EXPECT_EQ(sampling_.StopContinuous, True);
    console_.Outside.Time.Run(200 * Millisecond);
    EXPECT_EQ(sampling_.ContinuousMode, SamplingIdle);
    EXPECT_EQ(sampling_.StopContinuous, False);
}

TEST_F(SamplingTest, ClosingTheLastWindowEndsTheModeOnTheNextTick) {
    const auto window = OpenSite(1);
    StartContinuously();
    console_.Outside.Time.Run(550 * Millisecond);
    window->Unload();
    console_.Outside.Time.Run(200 * Millisecond);
    EXPECT_EQ(sampling_.ContinuousMode, SamplingIdle);
}

TEST_F(SamplingTest, ClosingTheSampledWindowAmongOthersEndsTheMode) {
    OpenSite(2);
    const auto window = OpenSite(1);
    StartContinuously();
    window->Unload();
    console_.Outside.Time.Run(3 * Second);
    EXPECT_EQ(sampling_.ContinuousMode, SamplingIdle);
    EXPECT_TRUE(window->Points.empty());
}

TEST_F(SamplingTest, ClosingTheWindowInsideTheReadDoesNoHarm) {
    const auto window = OpenSite(1);
    StartContinuously();
    faults_.OnRequest(0x0A, Plain(FaultKind::LoseReply));
    console_.Outside.Time.In(1800 * Millisecond, [&] { window->Unload(); });
    console_.Outside.Time.Run(8 * Second);
    EXPECT_EQ(sampling_.ContinuousMode, SamplingIdle);
    EXPECT_EQ(operations_.OperationBusy, False);
    EXPECT_EQ(link_.CommBusy, False);
}

TEST_F(SamplingTest, AnOperationHoldsTheContinuousModeStill) {
    OpenSite(1);
    StartContinuously();
    operations_.OperationBusy = True;
    console_.Outside.Time.Run(Second);
    EXPECT_EQ(sampling_.SampleTicks, 0);
}

TEST_F(SamplingTest, AFaultEndsTheMachines) {
    OpenSite(1);
    StartContinuously();
    // A sample frame cannot be brought together for counts that no logger has.
    console_.State.Logger.NumAnalogChannels = 0;
    console_.Outside.Time.Run(2 * Second);
    EXPECT_EQ(sampling_.ContinuousMode, SamplingIdle);
    EXPECT_EQ(operations_.OperationBusy, False);
    EXPECT_EQ(sampling_.StepRuns, False);
    EXPECT_EQ(console_.View.Shape, Pointer::Normal);
}

TEST_F(SamplingTest, AutoUpdatesFirstPassOnlyAsksThenDataComeSixtySecondsLater) {
    const auto window = OpenSite(1);
    StartAutoUpdate();
    console_.Outside.Time.Run(2 * Second);
    EXPECT_EQ(sampling_.ContinuousMode, AutoUpdateRunning);
    EXPECT_EQ(RequestsTo(1), (Requests{{0x09, 0x00}}));
    EXPECT_TRUE(window->Points.empty());
    console_.Outside.Time.Run(56 * Second);
    EXPECT_TRUE(window->Points.empty());
    console_.Outside.Time.Run(5 * Second);
    ASSERT_EQ(window->Points.size(), 1U);
    EXPECT_EQ(window->Points[0].Raw[0], RawOfTen);
    EXPECT_EQ(window->Points[0].Time, window->State.LoggerTime) << "the clock just read";
    EXPECT_EQ(RequestsTo(1), (Requests{{0x09, 0x00}, {0x0A}, {0x00}, {0x0C}, {0x09, 0x00}}));
}

TEST_F(SamplingTest, AutoUpdateGoesOverAllWindows) {
    const auto first = OpenSite(1);
    const auto second = OpenSite(2, 3, 0);
    StartAutoUpdate();
    console_.Outside.Time.Run(70 * Second);
    ASSERT_EQ(first->Points.size(), 1U);
    ASSERT_EQ(second->Points.size(), 1U);
    EXPECT_EQ(second->Points[0].Raw[1], 2 * RawOfTen - 1);
    EXPECT_EQ(operations_.OperationBusy, False);
    EXPECT_EQ(console_.View.Shape, Pointer::Normal);
}

TEST_F(SamplingTest, AutoUpdatePassesOverAWindowWithoutSettings) {
    const auto window = OpenSite(1);
    StartAutoUpdate();
    window->Valid = False;
    console_.Outside.Time.Run(70 * Second);
    EXPECT_TRUE(RequestsTo(1).empty());
    EXPECT_EQ(sampling_.ContinuousMode, AutoUpdateRunning);
}

TEST_F(SamplingTest, AClientThatCannotBeSelectedEndsAutoUpdateWithAMessage) {
    const auto first = OpenSite(1);
    OpenSite(2);
    StartAutoUpdate();
    console_.Outside.Network.RadioFaults().OnRequest(0x10, Plain(FaultKind::LoseAnswer));
    console_.Outside.Time.Run(3 * Second);
    EXPECT_EQ(sampling_.ContinuousMode, SamplingIdle);
    EXPECT_EQ(operations_.OperationBusy, False);
    EXPECT_EQ(console_.View.Shape, Pointer::Normal);
    ASSERT_EQ(console_.Outside.Boxes.Shown.size(), 1U);
    EXPECT_EQ(console_.Outside.Boxes.Shown[0].Text,
              "Error: unable to connect with radio \"Site 1\"");
    EXPECT_EQ(console_.Outside.Boxes.Shown[0].Title, "Auto Update Failed");
    EXPECT_EQ(console_.Outside.Boxes.Shown[0].Icon, BoxIcon::Exclamation);
    EXPECT_EQ(console_.Outside.Boxes.Shown[0].Buttons, BoxButtons::Ok);
    EXPECT_TRUE(first->Points.empty());
}

TEST_F(SamplingTest, AtMidnightAPassRunsAtOnceThenTheMarkRestarts) {
    console_.Outside.Clock.Start = {2026, 11, 15, 23, 59, 10, 0};
    const auto window = OpenSite(1);
    const auto started = console_.Outside.Time.Now();
    StartAutoUpdate();
    console_.Outside.Time.Run(2 * Second);
    const auto untilMidnight = 50 * Second - started;
    console_.Outside.Time.Run(untilMidnight);
    ASSERT_EQ(window->Points.size(), 1U) << "the day turned";
    console_.Outside.Time.Run(55 * Second);
    EXPECT_EQ(window->Points.size(), 1U) << "not a pass on every tick";
    console_.Outside.Time.Run(10 * Second);
    EXPECT_EQ(window->Points.size(), 2U);
}

TEST_F(SamplingTest, AutoUpdateEndsWithTheLastWindow) {
    const auto window = OpenSite(1);
    StartAutoUpdate();
    console_.Outside.Time.Run(10 * Second);
    window->Unload();
    console_.Outside.Time.Run(Second);
    EXPECT_EQ(sampling_.ContinuousMode, SamplingIdle);
}

/// So many virtual milliseconds behind the begin of the second pass.
class MomentOfAPass : public SamplingTest, public ::testing::WithParamInterface<int> {
 protected:
    /// Does `act` inside the pass that begins next.
    void InNextPass(std::function<void()> act) {
        console_.Outside.Time.StartTimer(
            Millisecond, [this, act = std::move(act), begun = false]() mutable {
                if (!begun && operations_.OperationBusy != False) {
                    begun = true;
                    console_.Outside.Time.In(GetParam() * Millisecond, act);
                }
            });
    }
};

TEST_P(MomentOfAPass, WindowsClosedThenDoNoHarm) {
    const auto first = OpenSite(1);
    const auto second = OpenSite(2);
    StartAutoUpdate();
    console_.Outside.Time.Run(5 * Second);
    faults_.OnRequest(0x0A, Plain(FaultKind::LoseReply), 4);
    bool inside = false;
    InNextPass([&] {
        inside = operations_.OperationBusy != False && sampling_.StepRuns != False;
        first->Unload();
        second->Unload();
    });
    console_.Outside.Time.Run(80 * Second);
    EXPECT_TRUE(inside);
    EXPECT_EQ(sampling_.ContinuousMode, SamplingIdle);
    EXPECT_EQ(operations_.OperationBusy, False);
    EXPECT_EQ(sampling_.StepRuns, False);
    EXPECT_EQ(link_.CommBusy, False);
    EXPECT_EQ(console_.View.Shape, Pointer::Normal);
    EXPECT_TRUE(console_.Outside.Boxes.Shown.empty());
}

INSTANTIATE_TEST_SUITE_P(AutoUpdate, MomentOfAPass, ::testing::Range(0, 3300, 300));

}  // namespace
