#include "console/signal_monitor.h"

#include <functional>

#include "book_bench.h"
#include "console/signal_level.h"

namespace {

using namespace testing_support;

/// A monitor window without a screen, and the dialog that shows it.
class FakeMonitor final : public SignalView, public SignalMonitorDialog {
 public:
    void EnableNext(bool enable) override { Next = enable; }
    void ShowRadio(const RadioTexts& texts) override {
        Radio = texts;
        Names.push_back(texts.Name);
    }
    void ShowLevel(const std::string& text, int barLength) override {
        Levels.push_back(text);
        Bar = barLength;
        if (WhenShown) {
            WhenShown(static_cast<int>(Levels.size()));
        }
    }
    void HideMonitor() override { ++Hidden; }
    void ShowMonitor(const OperationContext& context, std::int16_t clientIndex) override {
        State = {clientIndex, MonitorNotStarted, false};
        DisplayClient(context.book, State, *this);
        RunMonitor(context, State, *this);
    }

    SignalMonitor State;
    bool Next = false;
    RadioTexts Radio;
    std::vector<std::string> Names;
    std::vector<std::string> Levels;
    int Bar = -1;
    int Hidden = 0;
    std::function<void(int)> WhenShown;
};

class SignalMonitorTest : public BookBench {
 protected:
    SignalMonitorTest() { console.Connect(); }

    /// Ends the monitor once so many levels were shown; `at` happens with each of them before.
    void StopAfter(int rounds, const std::function<void(int)>& at = nullptr) {
        monitor.WhenShown = [this, rounds, at](int round) {
            if (at) {
                at(round);
            }
            if (round >= rounds) {
                ExitMonitor(monitor.State, monitor);
            }
        };
    }
    void Show() { ShowSignalLevel(console.Operation(), monitor); }
    void ExpectAtRest() {
        EXPECT_EQ(console.State.OperationsRecord.OperationBusy, False);
        EXPECT_EQ(console.State.LinkRecord.CommBusy, False);
        EXPECT_EQ(console.View.Shape, Pointer::Normal);
    }

    FakeMonitor monitor;
};

TEST_F(SignalMonitorTest, ShowsNameChannelAndMacOfTheActiveRadio) {
    Entry(2).Mac = {0x00, 0xA0, 0x96, 0x00, 0x00, 0x02};
    console.OpenWindow(2);
    StopAfter(1);
    Show();
    EXPECT_EQ(monitor.Radio.Name, "Site 2");
    EXPECT_EQ(monitor.Radio.MacAddress, "00-A0-96-00-00-02");
    EXPECT_EQ(monitor.Radio.Channel, "10");
    ExpectAtRest();
}

TEST_F(SignalMonitorTest, ShowsWhatTheServerRadioReports) {
    console.OpenWindow(1);
    console.Outside.Network.Radio().FixSignal(0);
    StopAfter(3, [this](int round) {
        const std::array<std::uint8_t, 3> next{189, 255, 255};
        console.Outside.Network.Radio().FixSignal(next.at(static_cast<std::size_t>(round - 1)));
    });
    Show();
    EXPECT_EQ(monitor.Levels, (std::vector<std::string>{"-40 DBm", "-92 DBm", "-104 DBm"}));
    EXPECT_EQ(monitor.Bar, 0);
    EXPECT_EQ(monitor.State.MonitorState, MonitorFinished);
    EXPECT_EQ(monitor.Hidden, 1);
}

TEST_F(SignalMonitorTest, LinkIsHeldWhileItStands) {
    console.OpenWindow(1);
    StopAfter(2, [this](int) {
        EXPECT_EQ(console.State.OperationsRecord.OperationBusy, True);
        EXPECT_EQ(console.View.Shape, Pointer::Normal);
        GetSample(console.Operation());
    });
    Show();
    EXPECT_EQ(monitor.Levels.size(), 2U);
    ExpectAtRest();
}

TEST_F(SignalMonitorTest, WithOneWindowOpenNextIsDisabled) {
    console.OpenWindow(1);
    StopAfter(1);
    Show();
    EXPECT_FALSE(monitor.Next);
    console.OpenWindow(2);
    StopAfter(1);
    Show();
    EXPECT_TRUE(monitor.Next);
}

TEST_F(SignalMonitorTest, NextRadioAlternatesBetweenTwoAndShowsNoLevelForOneRound) {
    console.OpenWindow(1);
    console.OpenWindow(2);
    StopAfter(6, [this](int round) { monitor.State.NextRequested = round % 2 == 1; });
    Show();
    EXPECT_EQ(monitor.Names, (std::vector<std::string>{"Site 2", "Site 1", "Site 2", "Site 1"}));
    EXPECT_EQ(monitor.Levels,
              (std::vector<std::string>{"-62 DBm", "---", "-62 DBm", "---", "-62 DBm", "---"}));
    ExpectAtRest();
}

TEST_F(SignalMonitorTest, EmptySlotsArePassedOver) {
    const auto first = console.OpenWindow(1);
    const auto second = console.OpenWindow(2);
    console.OpenWindow(3);
    second->Unload();
    console.OpenWindow(1);
    first->Active = True;
    StopAfter(2, [this](int round) { monitor.State.NextRequested = round == 1; });
    Show();
    EXPECT_EQ(monitor.Names, (std::vector<std::string>{"Site 1", "Site 3"}));
}

TEST_F(SignalMonitorTest, StaysWhenThereIsNoOtherWindow) {
    const auto first = console.OpenWindow(1);
    console.OpenWindow(2)->Unload();
    first->Active = True;
    StopAfter(3, [this](int round) { monitor.State.NextRequested = round == 1; });
    Show();
    EXPECT_TRUE(monitor.Next);
    EXPECT_EQ(monitor.Radio.Name, "Site 1");
    EXPECT_EQ(monitor.Levels.back(), "-62 DBm");
}

TEST_F(SignalMonitorTest, AllWindowsClosedMeanwhileStaysAsWell) {
    const auto first = console.OpenWindow(1);
    StopAfter(2, [&](int round) {
        if (round == 1) {
            first->Unload();
            monitor.State.NextRequested = true;
        }
    });
    Show();
    EXPECT_EQ(monitor.Names.size(), 1U);
    ExpectAtRest();
}

TEST_F(SignalMonitorTest, LoggerThatDoesNotAnswerGivesNoReadingAndPollingGoesOn) {
    console.OpenWindow(1);
    console.Outside.Network.Loggers()[0]->Silence();
    StopAfter(3, [this](int round) {
        if (round == 2) {
            console.Outside.Network.Loggers()[0]->Wake();
        }
    });
    Show();
    EXPECT_EQ(monitor.Levels, (std::vector<std::string>{"---", "---", "-62 DBm"}));
    EXPECT_TRUE(Shown().empty());
}

TEST_F(SignalMonitorTest, ServerRadioThatFailsIsToldOnceAndTheWindowStays) {
    console.OpenWindow(1);
    StopAfter(4, [this](int round) {
        if (round == 1) {
            console.Outside.Network.RadioFaults().OnRequest(
                0x26, simulator::Plain(simulator::FaultKind::LoseAnswer), 1);
        }
    });
    Show();
    ExpectBox("Server Connection Error", "Error: unable to communicate with server radio",
              BoxIcon::Stop);
    EXPECT_EQ(monitor.Levels, (std::vector<std::string>{"-62 DBm", "---", "---", "---"}));
    EXPECT_EQ(console.State.LinkRecord.LinkState, LinkDisconnected);
    ExpectAtRest();
}

TEST_F(SignalMonitorTest, RadioThatCannotBeSelectedShowsNoMonitor) {
    console.OpenWindow(1);
    console.Outside.Network.Radio().Silence();
    Show();
    EXPECT_TRUE(monitor.Names.empty());
    ExpectAtRest();
}

TEST_F(SignalMonitorTest, WithoutAnActiveWindowNothingIsShown) {
    console.OpenWindow(1)->Active = False;
    Show();
    EXPECT_TRUE(monitor.Names.empty());
    EXPECT_EQ(monitor.Hidden, 0);
    EXPECT_TRUE(Shown().empty());
    ExpectAtRest();
}

TEST_F(SignalMonitorTest, WhileALoggerIsSampledNothingIsShown) {
    console.OpenWindow(1);
    console.State.SamplingRecord.ContinuousMode = ContinuousSecondRequest;
    Show();
    EXPECT_TRUE(monitor.Names.empty());
    EXPECT_EQ(console.State.SamplingRecord.ContinuousMode, ContinuousSecondRequest);
    EXPECT_TRUE(Shown().empty());
    ExpectAtRest();
}

TEST_F(SignalMonitorTest, WindowClosedWhileItsRadioIsSelectedShowsNoMonitor) {
    const auto window = console.OpenWindow(1);
    console.Outside.Time.In(300 * Millisecond, [&] {
        EXPECT_EQ(console.State.OperationsRecord.OperationBusy, True);
        window->Unload();
        Book().Entries.Remove(1);
    });
    StopAfter(1);
    Show();
    EXPECT_TRUE(monitor.Names.empty()) << "the entry that has its number is another radio's";
    ExpectAtRest();
}

TEST_F(SignalMonitorTest, PortThatCannotBeOpenedForItEndsIt) {
    console.OpenWindow(1);
    StopAfter(1);
    Show();
    console.Outside.Time.Run(301 * Second);
    ASSERT_FALSE(console.Outside.Port.PortOpen());
    console.Outside.Port.Missing = {1};
    monitor.Levels.clear();
    StopAfter(20);
    Show();
    ASSERT_EQ(Shown().size(), 2U);
    EXPECT_EQ(Shown()[0].Title, "Connect Error");
    EXPECT_EQ(Shown()[1].Title, "Server Connection Error");
    EXPECT_TRUE(monitor.Levels.empty());
    EXPECT_EQ(console.State.LinkRecord.LinkState, LinkDisconnected);
    ExpectAtRest();
}

TEST_F(SignalMonitorTest, DeviceThatATickNoticesBetweenTwoPollsIsToldToo) {
    console.OpenWindow(1);
    StopAfter(20, [this](int) {
        console.Outside.Time.In(0, [this] {
            console.Outside.Port.PullOut();
            comm::SuperviseTick(console.Supervision());
            EXPECT_EQ(console.State.LinkRecord.LinkState, LinkDisconnected);
        });
    });
    Show();
    EXPECT_EQ(monitor.Levels.size(), 1U);
    ExpectBox("Server Connection Error", "Error: unable to communicate with server radio",
              BoxIcon::Stop);
    ExpectAtRest();
}

/// So many virtual milliseconds behind the begin: within each part of selection and polls.
class MomentOfTheMonitor : public SignalMonitorTest, public ::testing::WithParamInterface<int> {
 protected:
    /// Has the device pulled out then, and runs the monitor till it ends; it would end by itself
    /// only after many rounds. Gives the number of rounds.
    std::size_t PullOutUnder(const std::function<void(int)>& at = nullptr) {
        console.OpenWindow(2);
        console.OpenWindow(1);
        console.Outside.Time.In(GetParam() * Millisecond, [this] {
            console.Outside.Port.PullOut();
            console.Outside.Port.Missing = {1};
        });
        StopAfter(MostRounds, at);
        Show();
        EXPECT_GE(monitor.Levels.size(), 1U) << "the monitor stood by then";
        return monitor.Levels.size();
    }

    static constexpr int MostRounds = 40;
};

TEST_P(MomentOfTheMonitor, DeviceThatIsLostThenIsToldOnceAndEndsIt) {
    EXPECT_LT(PullOutUnder(), MostRounds);
    ExpectBox("Server Connection Error", "Error: unable to communicate with server radio",
              BoxIcon::Stop);
    EXPECT_EQ(monitor.Hidden, 1);
    EXPECT_EQ(monitor.State.MonitorState, MonitorFinished);
    EXPECT_EQ(console.State.LinkRecord.LinkState, LinkDisconnected);
    console.Outside.Time.Run(Second);
    EXPECT_EQ(console.View.ServerState, "Disconnected");
    ExpectAtRest();
}

TEST_P(MomentOfTheMonitor, DeviceThatIsLostThenEndsTheStepsFromRadioToRadio) {
    EXPECT_LT(PullOutUnder([this](int) { monitor.State.NextRequested = true; }), MostRounds);
    ExpectBox("Server Connection Error", "Error: unable to communicate with server radio",
              BoxIcon::Stop);
    EXPECT_EQ(console.State.LinkRecord.LinkState, LinkDisconnected);
    ExpectAtRest();
}

INSTANTIATE_TEST_SUITE_P(Polls, MomentOfTheMonitor, ::testing::Range(3000, 6000, 70));

TEST_F(SignalMonitorTest, ExitTakesEffectWithinOneExchange) {
    console.OpenWindow(1);
    const auto asked = std::make_shared<Microseconds>(0);
    console.Outside.Time.In(3 * Second, [this, asked] {
        *asked = console.Outside.Time.Now();
        ExitMonitor(monitor.State, monitor);
        EXPECT_EQ(monitor.Hidden, 0) << "the loop hides the window itself";
    });
    Show();
    EXPECT_EQ(monitor.Hidden, 1);
    EXPECT_LE(console.Outside.Time.Now() - *asked, 1200 * Millisecond);
}

TEST_F(SignalMonitorTest, ExitOfAMonitorThatDoesNotRunHidesAtOnce) {
    ExitMonitor(monitor.State, monitor);
    EXPECT_EQ(monitor.Hidden, 1);
    EXPECT_EQ(monitor.State.MonitorState, MonitorStopAsked);
}

TEST_F(SignalMonitorTest, ClosingByTheFrameIsRefusedWhileItRuns) {
    SignalMonitor state;
    EXPECT_TRUE(MayCloseMonitor(state));
    state.MonitorState = MonitorRunning;
    EXPECT_FALSE(MayCloseMonitor(state));
    EXPECT_EQ(state.MonitorState, MonitorStopAsked);
}

TEST_F(SignalMonitorTest, LoopRunsOnceForAShowing) {
    console.OpenWindow(1);
    monitor.State.MonitorState = MonitorFinished;
    RunMonitor(console.Operation(), monitor.State, monitor);
    EXPECT_TRUE(monitor.Levels.empty());
    EXPECT_EQ(monitor.Hidden, 0);
}

TEST_F(SignalMonitorTest, ShutdownEndsTheLoop) {
    console.OpenWindow(1);
    console.Outside.Time.In(3 * Second, [this] { console.State.LinkRecord.ShuttingDown = True; });
    Show();
    EXPECT_EQ(monitor.Hidden, 1);
    ExpectAtRest();
}

}  // namespace
