#include "link/connecting.h"

#include <gtest/gtest.h>

#include "console/logger_operations.h"
#include "support/virtual_console.h"

namespace {

using testing_support::BasicSite;
using testing_support::Millisecond;
using testing_support::Second;
using testing_support::VirtualConsole;

class ConnectingTest : public ::testing::Test {
 protected:
    void Connect() {
        comm::Connect(console_.Radio(), dialog_,
                      [this](Pointer pointer) { pointers_.push_back(pointer); });
    }

    VirtualConsole console_;
    comm::ConnectDialog dialog_;
    std::vector<Pointer> pointers_;
    Link& link_ = console_.State.LinkRecord;
    Settings& settings_ = console_.State.SettingsRecord;
    testing_support::ScriptedBoxes& boxes_ = console_.Outside.Boxes;
    testing_support::VirtualPort& port_ = console_.Outside.Port;
};

TEST_F(ConnectingTest, LabelsTellTheSettings) {
    settings_.PortName = "COM3";
    settings_.BaudRate = "9600";
    settings_.AddressBookPath = "/books/north.site.obk";
    settings_.AutoDisconnect = "1";
    const comm::ConnectLabels labels = comm::LabelsOf(settings_, comm::BreaksAtLoad);
    EXPECT_EQ(labels.Port, "Port: COM3");
    EXPECT_EQ(labels.BaudRate, "Baud: 9600");
    EXPECT_EQ(labels.AutoDisconnect, "Auto Disconnnect Enabled");
    EXPECT_EQ(labels.AddressBook, "Address Book:\n\nnorth.site");
}

TEST_F(ConnectingTest, AfterItsSettingsChangedTheBookHasOneLineBreakOnly) {
    settings_.AutoDisconnect = "0";
    const comm::ConnectLabels labels = comm::LabelsOf(settings_, comm::BreaksAfterSetup);
    EXPECT_EQ(labels.AddressBook, "Address Book:\n-- None --");
    EXPECT_EQ(labels.AutoDisconnect, "Auto Disconnect Disabled");
}

TEST_F(ConnectingTest, AnotherPortOrBaudRateMeansNobodyHasAnsweredYet) {
    Settings changed = settings_;
    link_.Connected = True;
    changed.AutoDisconnect = "1";
    comm::SettingsChanged(link_, settings_, changed);
    EXPECT_EQ(link_.Connected, True);
    changed.BaudRate = "9600";
    comm::SettingsChanged(link_, settings_, changed);
    EXPECT_EQ(link_.Connected, False);
    link_.Connected = True;
    changed = settings_;
    changed.PortName = "COM2";
    comm::SettingsChanged(link_, settings_, changed);
    EXPECT_EQ(link_.Connected, False);
}

TEST_F(ConnectingTest, ConnectLeavesTheRadioInCommandModeWithItsSystemIDShown) {
    console_.Outside.Network.Radio().SetSystemId(17);
    Connect();
    EXPECT_EQ(link_.Connected, True);
    EXPECT_EQ(link_.LinkState, LinkCommand);
    EXPECT_EQ(link_.ServerSystemID, 17);
    EXPECT_EQ(console_.View.SystemID, "17");
    EXPECT_EQ(console_.View.ComPort, "COM1");
    EXPECT_EQ(pointers_, (std::vector<Pointer>{Pointer::Hourglass, Pointer::Normal}));
    EXPECT_EQ(dialog_.Connecting, False);
    EXPECT_EQ(link_.CommBusy, False);
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(ConnectingTest, ATwoDigitPortIsOpenedByItsWholeNumber) {
    settings_.PortName = "COM12";
    Connect();
    EXPECT_EQ(link_.Connected, True);
    EXPECT_EQ(port_.CommPort(), 12);
    EXPECT_EQ(console_.View.ComPort, "COM12");
}

TEST_F(ConnectingTest, ASystemIDThatDoesNotComeIsShownAs255) {
    console_.Outside.Network.RadioFaults().OnRequest(
        0xC0, simulator::Plain(simulator::FaultKind::LoseAnswer));
    Connect();
    EXPECT_EQ(console_.View.SystemID, "255");
    EXPECT_EQ(link_.Connected, True);
}

TEST_F(ConnectingTest, APortThatWillNotOpenTellsSo) {
    port_.Missing = {1};
    Connect();
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Text, comm::OpenPortFailure(console_.Radio()).Text);
    EXPECT_EQ(boxes_.Shown[0].Buttons, BoxButtons::Ok);
    EXPECT_EQ(link_.LinkState, LinkDisconnected);
    EXPECT_EQ(link_.Connected, False);
    EXPECT_EQ(dialog_.Connecting, False);
}

TEST_F(ConnectingTest, AnotherConnectBeginsDisconnectedWhateverWasBefore) {
    link_.LinkState = LinkNormal;
    port_.Missing = {1};
    boxes_.WhileShown = [this] { EXPECT_EQ(link_.LinkState, LinkDisconnected); };
    Connect();
    EXPECT_EQ(boxes_.Shown.size(), 1U);
}

TEST_F(ConnectingTest, APortNameWithoutANumberIsAPortThatWillNotOpen) {
    settings_.PortName = "nonsense";
    Connect();
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Title, "Connect Error");
}

TEST_F(ConnectingTest, ARadioThatDoesNotAnswerTellsSoAndClosesThePort) {
    console_.Outside.Network.Radio().Silence();
    Connect();
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Text, "Error: unable to establish communication with server radio.");
    EXPECT_EQ(boxes_.Shown[0].Title, "Connect Error");
    EXPECT_EQ(boxes_.Shown[0].Icon, BoxIcon::Exclamation);
    EXPECT_EQ(boxes_.Shown[0].Buttons, BoxButtons::Ok);
    EXPECT_FALSE(port_.PortOpen());
    EXPECT_EQ(link_.LinkState, LinkDisconnected);
    EXPECT_EQ(pointers_.back(), Pointer::Normal);
    EXPECT_EQ(link_.CommBusy, False);
}

TEST_F(ConnectingTest, CancellingUnconnectedHintsAndCloses) {
    EXPECT_TRUE(comm::CancelConnect(link_, dialog_, boxes_));
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Text,
              "You will need to establish connection with the server radio before\nyou can "
              "communicate with a remote logger.  Click the CONNECT button\non the server radio "
              "status bar when you want to connect.");
    EXPECT_EQ(boxes_.Shown[0].Title, "Connection Required");
    EXPECT_EQ(boxes_.Shown[0].Icon, BoxIcon::Information);
    EXPECT_EQ(boxes_.Shown[0].Buttons, BoxButtons::Ok);
    EXPECT_EQ(link_.LinkState, LinkDisconnected);
    EXPECT_EQ(link_.Connected, False);
}

TEST_F(ConnectingTest, CancellingConnectedClosesWithoutAWord) {
    link_.Connected = True;
    EXPECT_TRUE(comm::CancelConnect(link_, dialog_, boxes_));
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(ConnectingTest, CancellingDuringAConnectLeavesTheEndToIt) {
    dialog_.Connecting = True;
    EXPECT_FALSE(comm::CancelConnect(link_, dialog_, boxes_));
    EXPECT_EQ(dialog_.CancelRequested, True);
}

TEST_F(ConnectingTest, ACancelRequestedBeforeTheRadioIsAskedEndsTheConnect) {
    dialog_.CancelRequested = True;
    Connect();
    EXPECT_EQ(link_.Connected, False);
    EXPECT_FALSE(port_.PortOpen());
    EXPECT_TRUE(console_.Outside.Network.Written().empty());
}

TEST_F(ConnectingTest, ADevicePulledOutDuringAConnectLeavesNothingBusy) {
    console_.Outside.Time.In(300 * Millisecond, [this] { port_.PullOut(); });
    console_.Outside.Network.Radio().Silence();
    Connect();
    EXPECT_EQ(link_.CommBusy, False);
    EXPECT_EQ(link_.LinkState, LinkDisconnected);
    EXPECT_EQ(boxes_.Shown.size(), 1U);
}

TEST_F(ConnectingTest, ToggleDisconnectsALinkThenConnectedStaysTrue) {
    Connect();
    EXPECT_EQ(comm::ToggleConnection(console_.Toggling()), comm::Toggle::Nothing);
    EXPECT_FALSE(port_.PortOpen());
    EXPECT_EQ(link_.LinkState, LinkDisconnected);
    EXPECT_EQ(link_.Connected, True);
    EXPECT_FALSE(console_.Outside.Network.Radio().InCommandMode()) << "left on the way out";
    EXPECT_EQ(console_.State.OperationsRecord.OperationBusy, False);
}

TEST_F(ConnectingTest, ADisconnectHoldsTheLinkUntilTheRadioIsLeft) {
    Connect();
    Flag held = False;
    console_.Outside.Time.In(200 * Millisecond,
                             [&] { held = console_.State.OperationsRecord.OperationBusy; });
    EXPECT_EQ(comm::ToggleConnection(console_.Toggling()), comm::Toggle::Nothing);
    EXPECT_NE(held, False);
    EXPECT_EQ(console_.State.OperationsRecord.OperationBusy, False);
}

TEST_F(ConnectingTest, AfterADisconnectTheNextOperationReopensThePortByItself) {
    const auto window = console_.OpenWindow(console_.AddSite(BasicSite(1)));
    Connect();
    ASSERT_EQ(comm::ToggleConnection(console_.Toggling()), comm::Toggle::Nothing);
    GetSample(console_.Operation());
    EXPECT_TRUE(port_.PortOpen());
    EXPECT_EQ(window->Points.size(), 1U);
}

TEST_F(ConnectingTest, ToggleAsksForTheDialogWhileTheLinkIsDown) {
    EXPECT_EQ(comm::ToggleConnection(console_.Toggling()), comm::Toggle::Connect);
    EXPECT_EQ(console_.State.OperationsRecord.OperationBusy, True);
}

TEST_F(ConnectingTest, ToggleDoesNothingDuringAnOperation) {
    Connect();
    console_.State.OperationsRecord.OperationBusy = True;
    EXPECT_EQ(comm::ToggleConnection(console_.Toggling()), comm::Toggle::Nothing);
    EXPECT_TRUE(port_.PortOpen());
}

TEST_F(ConnectingTest, ToggleEndsASamplingModeFirst) {
    console_.OpenWindow(console_.AddSite(BasicSite(1)));
    Connect();
    SampleContinuously(console_.Operation());
    ASSERT_TRUE(console_.Outside.Time.RunUntil(
        [this] { return console_.State.SamplingRecord.SampleTicks == 5; }, 3 * Second));
    EXPECT_EQ(comm::ToggleConnection(console_.Toggling()), comm::Toggle::Nothing);
    EXPECT_EQ(console_.State.SamplingRecord.ContinuousMode, SamplingIdle);
    EXPECT_FALSE(port_.PortOpen());
}

TEST_F(ConnectingTest, ToggleAsksForTheDialogAfterALostDeviceEndedTheSampling) {
    console_.OpenWindow(console_.AddSite(BasicSite(1)));
    Connect();
    SampleContinuously(console_.Operation());
    console_.Outside.Time.Run(3 * Second);
    port_.PullOut();
    comm::SuperviseTick(console_.Supervision());
    EXPECT_EQ(link_.LinkState, LinkDisconnected);
    EXPECT_NE(console_.State.SamplingRecord.ContinuousMode, SamplingIdle) << "for a tick still";
    EXPECT_EQ(comm::ToggleConnection(console_.Toggling()), comm::Toggle::Connect);
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(ConnectingTest, ToggleInsideTheStepThatLostItsDeviceIsPostponed) {
    console_.OpenWindow(console_.AddSite(BasicSite(1)));
    Connect();
    SampleContinuously(console_.Operation());
    console_.Outside.Network.Faults().LoseAnswer(3);
    console_.Outside.Time.In(250 * Millisecond, [this] { port_.PullOut(); });
    comm::Toggle inside = comm::Toggle::Nothing;
    bool pressed = false;
    console_.Outside.Time.StartTimer(10 * Millisecond, [&] {
        if (!pressed && link_.LinkState == LinkDisconnected) {
            pressed = true;
            ASSERT_EQ(console_.State.SamplingRecord.StepRuns, True);
            inside = comm::ToggleConnection(console_.Toggling());
        }
    });
    console_.Outside.Time.Run(10 * Second);
    EXPECT_TRUE(pressed);
    EXPECT_EQ(inside, comm::Toggle::Postponed) << "not forgotten";
    EXPECT_EQ(comm::ToggleConnection(console_.Toggling()), comm::Toggle::Connect);
}

TEST_F(ConnectingTest, ToggleInsideASamplingStepIsPostponedForItCannotWaitThere) {
    console_.OpenWindow(console_.AddSite(BasicSite(1)));
    Connect();
    SampleContinuously(console_.Operation());
    console_.Outside.Network.Faults().LoseAnswer(3);
    ASSERT_TRUE(console_.Outside.Time.RunUntil(
        [this] { return console_.State.SamplingRecord.ContinuousMode != SamplingIdle; }, Second));
    comm::Toggle inside = comm::Toggle::Nothing;
    console_.Outside.Time.In(300 * Millisecond,
                             [&] { inside = comm::ToggleConnection(console_.Toggling()); });
    console_.Outside.Time.Run(5 * Second);
    EXPECT_EQ(inside, comm::Toggle::Postponed);
    EXPECT_EQ(console_.State.SamplingRecord.ContinuousMode, SamplingIdle) << "the mode ends";
    EXPECT_TRUE(port_.PortOpen());
}

}  // namespace
