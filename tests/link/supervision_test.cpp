#include "link/supervision.h"

#include <gtest/gtest.h>

#include <chrono>

#include "link/port.h"
#include "support/virtual_console.h"

namespace {

using testing_support::BasicSite;
using testing_support::Millisecond;
using testing_support::Second;
using testing_support::VirtualConsole;

class SupervisionTest : public ::testing::Test {
 protected:
    void Tick() { comm::SuperviseTick(console_.Supervision()); }
    std::uint8_t IconOf(int entry) { return console_.State.Book.Entries[entry].SmallIcon; }

    /// Connected, with one window open whose client the radio is on.
    std::shared_ptr<testing_support::FakeClientWindow> OpenSelected() {
        const int entry = console_.AddSite(BasicSite(1));
        console_.Connect();
        auto window = console_.OpenWindow(entry);
        EXPECT_TRUE(comm::SelectClient(console_.Radio(), console_.State.Book.Entries[entry]));
        return window;
    }

    VirtualConsole console_;
    Link& link_ = console_.State.LinkRecord;
    testing_support::FakeMainView& view_ = console_.View;
    testing_support::VirtualPort& port_ = console_.Outside.Port;
};

TEST_F(SupervisionTest, CountsTheWaitEvenWhileTheMainWindowIsHidden) {
    view_.Visible = false;
    link_.WaitTicks = 2;
    link_.Connected = True;
    link_.IdleTicks = 10;
    Tick();
    Tick();
    Tick();
    EXPECT_EQ(link_.WaitTicks, 0);
    EXPECT_EQ(link_.IdleTicks, 10) << "the rest of the tick needs the window";
}

TEST_F(SupervisionTest, EachStateHasItsTextInItsColour) {
    const std::vector<std::pair<std::string, Colour>> shown{{"Disconnected", {255, 0, 0}},
                                                            {"Connecting...", {240, 128, 0}},
                                                            {"Connected - Normal", {0, 160, 0}},
                                                            {"Connected - Command", {0, 0, 240}}};
    for (std::size_t state = 0; state < shown.size(); ++state) {
        link_.LinkState = static_cast<std::uint8_t>(state);
        comm::UpdateServerState(link_, view_);
        EXPECT_EQ(view_.ServerState, shown[state].first);
        EXPECT_EQ(view_.StateColour, shown[state].second);
        EXPECT_EQ(link_.LinkStateShown, state);
    }
}

TEST_F(SupervisionTest, LinkFieldsFollowTheLink) {
    console_.Connect();
    Tick();
    EXPECT_TRUE(view_.LinkFields);
    EXPECT_EQ(view_.ServerState, "Connected - Command");
    link_.LinkState = LinkDisconnected;
    Tick();
    EXPECT_FALSE(view_.LinkFields);
}

TEST_F(SupervisionTest, TheIdleLimitClosesThePortAfterFiveMinutes) {
    console_.Connect();
    console_.Outside.Time.Run(299 * Second);
    EXPECT_TRUE(port_.PortOpen());
    console_.Outside.Time.Run(2 * Second);
    EXPECT_FALSE(port_.PortOpen());
    EXPECT_EQ(link_.LinkState, LinkDisconnected);
    EXPECT_EQ(link_.Connected, True) << "the next selection reopens the port";
}

TEST_F(SupervisionTest, TheIdleLimitActsWithAutoDisconnectOffThenTheNextOperationReopens) {
    const auto window = OpenSelected();
    console_.State.SettingsRecord.AutoDisconnect = "0";
    console_.Outside.Time.Run(301 * Second);
    EXPECT_FALSE(port_.PortOpen());
    GetSample(console_.Operation());
    EXPECT_TRUE(port_.PortOpen());
    EXPECT_EQ(window->Points.size(), 1U);
}

TEST_F(SupervisionTest, ABusyOperationHoldsTheIdleLimitAtOneUntilTheFirstFreeTick) {
    console_.Connect();
    console_.State.OperationsRecord.OperationBusy = True;
    link_.IdleTicks = 2;
    for (int i = 0; i < 5; ++i) {
        Tick();
    }
    EXPECT_EQ(link_.IdleTicks, 1);
    EXPECT_TRUE(port_.PortOpen());
    console_.State.OperationsRecord.OperationBusy = False;
    Tick();
    EXPECT_FALSE(port_.PortOpen());
    EXPECT_EQ(link_.IdleTicks, 0);
}

TEST_F(SupervisionTest, NothingCountsDownWhileNotConnected) {
    link_.IdleTicks = 1;
    Tick();
    EXPECT_EQ(link_.IdleTicks, 1);
}

TEST_F(SupervisionTest, CommandsNeedAWindowOfAConnectedConsole) {
    Tick();
    EXPECT_FALSE(view_.Commands.Operations);
    EXPECT_FALSE(view_.Commands.SampleContinuously);
    const int entry = console_.AddSite(BasicSite(1));
    console_.OpenWindow(entry);
    Tick();
    EXPECT_FALSE(view_.Commands.Operations);
    console_.Connect();
    Tick();
    EXPECT_TRUE(view_.Commands.Operations);
    EXPECT_TRUE(view_.Commands.SampleContinuously);
    EXPECT_EQ(view_.Commands.SampleCaption, "Sample Continuously");
    EXPECT_FALSE(view_.Commands.SampleHighlighted);
}

TEST_F(SupervisionTest, ASamplingModeLeavesOnlyItsStopButton) {
    OpenSelected();
    auto& mode = console_.State.SamplingRecord.ContinuousMode;
    mode = ContinuousRead;
    Tick();
    EXPECT_EQ(view_.Commands.SampleCaption, "Stop Sampling");
    EXPECT_TRUE(view_.Commands.SampleHighlighted);
    EXPECT_TRUE(view_.Commands.SampleContinuously);
    EXPECT_FALSE(view_.Commands.Operations);
    EXPECT_FALSE(view_.Commands.AutoUpdateChecked);
    mode = AutoUpdateStart;
    Tick();
    EXPECT_EQ(view_.Commands.SampleCaption, "Stop Auto Update");
    EXPECT_TRUE(view_.Commands.AutoUpdateChecked);
    link_.Connected = False;
    Tick();
    EXPECT_EQ(view_.Commands.SampleCaption, "Sample Continuously");
    EXPECT_FALSE(view_.Commands.SampleHighlighted);
}

TEST_F(SupervisionTest, EntryCommandsNeedAnEntry) {
    Tick();
    EXPECT_FALSE(view_.Commands.BookEntries);
    console_.AddSite(BasicSite(1));
    Tick();
    EXPECT_TRUE(view_.Commands.BookEntries);
}

TEST_F(SupervisionTest, TheAddressedClientsOpenEntryGetsTheActiveIcon) {
    const auto window = OpenSelected();
    console_.AddSite(BasicSite(2));
    EXPECT_EQ(IconOf(1), IconWindowOpen);
    Tick();
    EXPECT_EQ(IconOf(1), IconAddressed);
    EXPECT_EQ(view_.Clients[0].Icon, IconAddressed);
    EXPECT_EQ(window->Icon, IconAddressed);
    EXPECT_EQ(IconOf(2), IconNoWindow);
}

TEST_F(SupervisionTest, TheIconFallsBackWhenAnotherClientIsAddressed) {
    const auto window = OpenSelected();
    Tick();
    link_.CurrentMAC = {9, 9, 9};
    Tick();
    EXPECT_EQ(IconOf(1), IconWindowOpen);
    EXPECT_EQ(window->Icon, IconWindowOpen);
}

TEST_F(SupervisionTest, OutsideNormalModeNoEntryIsActive) {
    const auto window = OpenSelected();
    Tick();
    link_.LinkState = LinkCommand;
    Tick();
    EXPECT_EQ(IconOf(1), IconWindowOpen);
    EXPECT_EQ(window->Icon, IconWindowOpen);
}

TEST_F(SupervisionTest, AnEntryWithoutAWindowNeverChangesItsIcon) {
    console_.AddSite(BasicSite(1));
    console_.Connect();
    ASSERT_TRUE(comm::SelectClient(console_.Radio(), console_.State.Book.Entries[1]));
    Tick();
    EXPECT_EQ(IconOf(1), IconNoWindow);
}

TEST_F(SupervisionTest, ADevicePulledOutIsAClosedPort) {
    console_.Connect();
    Tick();
    port_.PullOut();
    Tick();
    EXPECT_FALSE(port_.PortOpen());
    EXPECT_EQ(link_.LinkState, LinkDisconnected);
    EXPECT_EQ(view_.ServerState, "Disconnected");
    EXPECT_TRUE(console_.Outside.Boxes.Shown.empty()) << "a tick never shows a box";
}

TEST_F(SupervisionTest, ADevicePulledOutEndsASamplingMode) {
    OpenSelected();
    for (std::int16_t mode = ContinuousFirstRequest; mode <= AutoUpdateRunning; ++mode) {
        SCOPED_TRACE(mode);
        ASSERT_TRUE(comm::SelectClient(console_.Radio(), console_.State.Book.Entries[1]));
        console_.State.SamplingRecord.ContinuousMode = mode;
        port_.PullOut();
        console_.Outside.Time.Run(300 * Millisecond);
        EXPECT_EQ(console_.State.SamplingRecord.ContinuousMode, SamplingIdle);
        EXPECT_EQ(console_.State.SamplingRecord.StopContinuous, False);
        EXPECT_EQ(view_.Commands.SampleCaption, "Sample Continuously");
        EXPECT_TRUE(view_.Commands.Operations);
    }
    EXPECT_TRUE(console_.Outside.Boxes.Shown.empty());
}

TEST_F(SupervisionTest, ADevicePulledOutAtRestAsksNoModeToStop) {
    OpenSelected();
    port_.PullOut();
    Tick();
    EXPECT_EQ(link_.LinkState, LinkDisconnected);
    EXPECT_EQ(console_.State.SamplingRecord.StopContinuous, False);
}

TEST_F(SupervisionTest, ThePortThatTheIdleLimitClosesEndsNoSamplingMode) {
    OpenSelected();
    link_.IdleTicks = 1;
    console_.State.SamplingRecord.ContinuousMode = AutoUpdateRunning;
    Tick();
    Tick();
    EXPECT_FALSE(port_.PortOpen());
    EXPECT_EQ(console_.State.SamplingRecord.StopContinuous, False);
}

TEST_F(SupervisionTest, ADevicePulledOutIsNotNoticedInTheMiddleOfAnExchange) {
    console_.Connect();
    link_.CommBusy = True;
    port_.PullOut();
    Tick();
    EXPECT_EQ(link_.LinkState, LinkCommand) << "the exchange itself says how it ends";
    link_.CommBusy = False;
    Tick();
    EXPECT_EQ(link_.LinkState, LinkDisconnected);
}

}  // namespace
