#include "sampling_bench.h"

namespace {

using simulator::CorruptByte;
using simulator::CutAfter;
using simulator::FaultKind;
using simulator::Plain;
using testing_support::Millisecond;
using testing_support::Second;
using Requests = std::vector<simulator::Bytes>;

constexpr std::int32_t RawOfTen = 6554;  // 10 of 0 to 100 over 0 to 65535

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

TEST(OneShotSample, IsNotDelayedByAStrayByteBehindItsFirstRequest) {
    const auto taken = [](bool stray) {
        testing_support::VirtualConsole console;
        const auto window = console.OpenWindow(console.AddSite(testing_support::BasicSite(1)));
        console.Connect();
        const auto start = console.Outside.Time.Now();
        console.Outside.Time.In(1500 * Millisecond, [&] {
            EXPECT_EQ(console.State.SamplingRecord.SingleSample, 2) << "between the two requests";
            console.Outside.Port.Receive(stray ? Bytes{0x55} : Bytes{});
        });
        GetSample(console.Operation());
        EXPECT_EQ(window->Points.size(), 1U);
        return console.Outside.Time.Now() - start;
    };
    EXPECT_EQ(taken(true), taken(false));
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

TEST_F(SamplingTest, ALostDeviceEndsTheModeWithoutAWord) {
    const auto window = OpenSite(1);
    StartContinuously();
    console_.Outside.Time.Run(3 * Second);
    console_.Outside.Port.PullOut();
    console_.Outside.Port.Missing = {1};
    console_.Outside.Time.Run(10 * Second);
    EXPECT_EQ(sampling_.ContinuousMode, SamplingIdle);
    EXPECT_EQ(sampling_.StopContinuous, False);
    EXPECT_EQ(operations_.OperationBusy, False);
    EXPECT_EQ(link_.LinkState, LinkDisconnected);
    EXPECT_TRUE(console_.Outside.Boxes.Shown.empty());
    console_.Outside.Port.Missing.clear();
    const auto shown = window->Points.size();
    GetSample(console_.Operation());
    EXPECT_EQ(window->Points.size(), shown + 1) << "a device that is back is opened again";
}

TEST_F(SamplingTest, AnOperationHoldsTheContinuousModeStill) {
    OpenSite(1);
    StartContinuously();
    operations_.OperationBusy = True;
    console_.Outside.Time.Run(Second);
    EXPECT_EQ(sampling_.SampleTicks, 0);
}

TEST_F(SamplingTest, AStepOfTheContinuousModeHoldsTheLink) {
    OpenSite(1);
    StartContinuously();
    console_.Outside.Network.AirDelay = 20 * Millisecond;
    bool held = true;
    int exchanges = 0;
    for (int moment = 5; moment < 3000; moment += 5) {
        console_.Outside.Time.In(moment * Millisecond, [&] {
            if (link_.CommBusy != False) {
                ++exchanges;
                held = held && operations_.OperationBusy != False;
            }
        });
    }
    console_.Outside.Time.Run(3 * Second);
    EXPECT_GT(exchanges, 10);
    EXPECT_TRUE(held);
    EXPECT_EQ(operations_.OperationBusy, False);
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

}  // namespace
