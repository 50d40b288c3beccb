#include "sampling_bench.h"

namespace {

using simulator::FaultKind;
using simulator::Plain;
using testing_support::BasicSite;
using testing_support::FakeClientWindow;
using testing_support::Millisecond;
using testing_support::Second;
using Requests = std::vector<simulator::Bytes>;

constexpr std::int32_t RawOfTen = 6554;  // 10 of 0 to 100 over 0 to 65535

class AutoUpdateTest : public SamplingTest {};

TEST_F(AutoUpdateTest, AutoUpdatesFirstPassOnlyAsksThenDataComeSixtySecondsLater) {
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

TEST_F(AutoUpdateTest, AutoUpdateGoesOverAllWindows) {
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

TEST_F(AutoUpdateTest, WhatTheRadioSaidOnItsWayToALoggerDelaysNoRequest) {
    OpenSite(1);
    OpenSite(2);
    StartAutoUpdate();
    testing_support::Microseconds left = 0;
    std::vector<testing_support::Microseconds> delays;
    console_.Outside.Network.SetTrace([&](const simulator::Exchange& exchange) {
        const auto now = console_.Outside.Time.Now();
        if (exchange.OfRadio) {
            left = now;
        } else if (exchange.Request == simulator::Bytes{0x09, 0x00}) {
            delays.push_back(now - left);
        }
    });
    console_.Outside.Time.Run(10 * Second);
    ASSERT_EQ(delays.size(), 2U);
    for (const auto delay : delays) {
        EXPECT_LT(delay, 150 * Millisecond) << "a pause for stray bytes is longer";
    }
}

TEST_F(AutoUpdateTest, AutoUpdatePassesOverAWindowWithoutSettings) {
    const auto window = OpenSite(1);
    StartAutoUpdate();
    window->Valid = False;
    console_.Outside.Time.Run(70 * Second);
    EXPECT_TRUE(RequestsTo(1).empty());
    EXPECT_EQ(sampling_.ContinuousMode, AutoUpdateRunning);
}

TEST_F(AutoUpdateTest, AClientThatCannotBeSelectedEndsAutoUpdateWithAMessage) {
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

TEST_F(AutoUpdateTest, AtMidnightAPassRunsAtOnceThenTheMarkRestarts) {
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

TEST_F(AutoUpdateTest, AfterAClockThatJumpedForwardOnePassRunsThenMarksCountFromThere) {
    for (const int jumped : {121, 300, 3600, 8 * 3600}) {
        SCOPED_TRACE(jumped);
        console_.State.Windows = {};
        console_.State.Book.Entries.Reset();
        const auto window = OpenSite(1);
        StartAutoUpdate();
        console_.Outside.Time.Run(70 * Second);
        ASSERT_EQ(window->Points.size(), 1U);
        console_.Outside.Clock.Start.Second += jumped;
        console_.Outside.Time.Run(55 * Second);
        EXPECT_EQ(window->Points.size(), 2U) << "missed passes are not made up";
        console_.Outside.Time.Run(10 * Second);
        EXPECT_EQ(window->Points.size(), 3U) << "a minute from the pass";
        sampling_.ContinuousMode = SamplingIdle;
    }
}

TEST_F(AutoUpdateTest, AClockSetForwardByLessGivesOnePassTheMarksStay) {
    const auto window = OpenSite(1);
    StartAutoUpdate();
    console_.Outside.Time.Run(70 * Second);
    const float mark = sampling_.NextAutoUpdate;
    console_.Outside.Clock.Start.Second += 90;
    console_.Outside.Time.Run(10 * Second);
    EXPECT_EQ(window->Points.size(), 2U);
    EXPECT_EQ(sampling_.NextAutoUpdate, mark + 60);
}

TEST_F(AutoUpdateTest, AfterAClockSetBackOnePassRunsThenMarksCountFromThere) {
    const auto window = OpenSite(1);
    StartAutoUpdate();
    console_.Outside.Time.Run(70 * Second);
    console_.Outside.Clock.Start.Hour -= 1;
    console_.Outside.Time.Run(55 * Second);
    EXPECT_EQ(window->Points.size(), 2U);
    console_.Outside.Time.Run(10 * Second);
    EXPECT_EQ(window->Points.size(), 3U);
}

TEST_F(AutoUpdateTest, AutoUpdateEndsWithTheLastWindow) {
    const auto window = OpenSite(1);
    StartAutoUpdate();
    console_.Outside.Time.Run(10 * Second);
    window->Unload();
    console_.Outside.Time.Run(Second);
    EXPECT_EQ(sampling_.ContinuousMode, SamplingIdle);
}

/// So many virtual milliseconds behind the begin of the second pass.
class MomentOfAPass : public AutoUpdateTest, public ::testing::WithParamInterface<int> {
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

TEST_P(MomentOfAPass, AnEntryDeletedThenTakesNoOtherWindowsTurn) {
    console_.AddSite(BasicSite(1));
    std::vector<std::shared_ptr<FakeClientWindow>> windows;
    for (int number = 2; number <= 6; ++number) {
        windows.push_back(OpenSite(number));
    }
    StartAutoUpdate();
    console_.Outside.Time.Run(30 * Second);
    bool inside = false;
    InNextPass([&] {
        inside = operations_.OperationBusy != False && sampling_.StepRuns != False;
        console_.State.Book.Entries.Remove(1);
        for (const auto& window : windows) {
            window->SetClientIndex(static_cast<std::int16_t>(window->Index - 1));
        }
    });
    console_.Outside.Time.Run(55 * Second);
    EXPECT_TRUE(inside);
    for (const auto& window : windows) {
        EXPECT_EQ(window->Points.size(), 1U) << window->Title;
    }
    EXPECT_EQ(sampling_.ContinuousMode, AutoUpdateRunning);
}

TEST_P(MomentOfAPass, AWindowClosedThenAndItsEntryDeletedTakeNoOtherWindowsTurn) {
    std::vector<std::shared_ptr<FakeClientWindow>> windows;
    for (int number = 1; number <= 3; ++number) {
        windows.push_back(OpenSite(number));
    }
    StartAutoUpdate();
    console_.Outside.Time.Run(30 * Second);
    InNextPass([&] {
        windows[0]->Unload();
        console_.State.Book.Entries.Remove(1);
        windows[1]->SetClientIndex(1);
        windows[2]->SetClientIndex(2);
    });
    console_.Outside.Time.Run(55 * Second);
    EXPECT_EQ(windows[1]->Points.size(), 1U);
    EXPECT_EQ(windows[2]->Points.size(), 1U);
    EXPECT_EQ(sampling_.ContinuousMode, AutoUpdateRunning);
}

TEST_P(MomentOfAPass, AnEntryAddedThenTakesNoOtherWindowsTurn) {
    const auto first = OpenSite(1);
    const auto second = OpenSite(2);
    StartAutoUpdate();
    console_.Outside.Time.Run(30 * Second);
    InNextPass([this] { console_.AddSite(BasicSite(3)); });
    console_.Outside.Time.Run(55 * Second);
    EXPECT_EQ(first->Points.size(), 1U);
    EXPECT_EQ(second->Points.size(), 1U);
}

TEST_P(MomentOfAPass, ADeviceLostThenEndsTheMode) {
    for (int number = 1; number <= 3; ++number) {
        OpenSite(number);
    }
    StartAutoUpdate();
    console_.Outside.Time.Run(30 * Second);
    InNextPass([this] {
        console_.Outside.Port.PullOut();
        console_.Outside.Port.Missing = {1};
    });
    console_.Outside.Time.Run(55 * Second);
    EXPECT_EQ(sampling_.ContinuousMode, SamplingIdle);
    EXPECT_EQ(sampling_.StopContinuous, False);
    EXPECT_EQ(operations_.OperationBusy, False);
    EXPECT_EQ(link_.LinkState, LinkDisconnected);
    EXPECT_EQ(console_.View.Shape, Pointer::Normal);
    for (const BoxContent& box : console_.Outside.Boxes.Shown) {
        EXPECT_NE(box.Title, "Connect Error") << "nobody tries to open it for the next window";
    }
}

TEST_F(AutoUpdateTest, AWindowClosedBeforeItsTurnInAPassIsPassedOver) {
    OpenSite(1);
    const auto second = OpenSite(2);
    const auto third = OpenSite(3);
    StartAutoUpdate();
    console_.Outside.Time.Run(30 * Second);
    ASSERT_TRUE(console_.Outside.Time.RunUntil(
        [this] { return operations_.OperationBusy == False; }, Second));
    console_.Outside.Network.ClearRecord();
    bool closed = false;
    console_.Outside.Time.StartTimer(Millisecond, [&] {
        if (!closed && operations_.OperationBusy != False) {
            closed = true;
            second->Unload();
        }
    });
    console_.Outside.Time.Run(55 * Second);
    EXPECT_TRUE(closed);
    EXPECT_TRUE(RequestsTo(2).empty());
    EXPECT_EQ(third->Points.size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(AutoUpdate, MomentOfAPass, ::testing::Range(0, 3300, 300));

}  // namespace
