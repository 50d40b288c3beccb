#include "client/client_model.h"

#include <gtest/gtest.h>

#include "client_fixture.h"
#include "common/fault.h"

namespace client_test {
namespace {

using testing_support::FakeClientWindow;

class Client : public ClientTest {
 protected:
    Client() { console.Logger.Settings = PipeLogger(); }

    std::shared_ptr<FakeClientWindow> OpenOther(Flag active) {
        auto other = std::make_shared<FakeClientWindow>(console.State);
        other->Active = active;
        console.State.Windows.Slots.push_back(other);
        return other;
    }
    // Puts a window that answers for this one into a slot and the book's first entry.
    std::shared_ptr<FakeClientWindow> EnterInBook() {
        auto self = OpenOther(False);
        ClientRadio entry;
        entry.WindowIndex = static_cast<std::int16_t>(console.State.Windows.UpperBound());
        entry.SmallIcon = IconAddressed;
        console.State.Book.Entries.Append(entry);
        console.View.AddClient(entry.Name, entry.SmallIcon);
        window.Record.ClientIndex = 1;
        return self;
    }
};

TEST_F(Client, LoadingCountsTheWindowInAndStartsEmptyInTheMediumMode) {
    EXPECT_EQ(console.State.Windows.NumClientWindows, 1);
    EXPECT_EQ(window.Record.DisplayMode, DisplayMedium);
    EXPECT_EQ(window.Record.SettingsValid, False);
    EXPECT_FALSE(Shown().fraMeter[1].Visible);
    EXPECT_EQ(Shown().lblMax[3].Text, "0.000");
    EXPECT_EQ(Shown().lblValue[3].Text, "");
    for (const MeterEntry& meter : window.Record.Meters) {
        EXPECT_EQ(meter.Active, False);
        EXPECT_EQ(meter.WasActive, False);
        EXPECT_EQ(meter.LastBarTop, 0);
    }
}

TEST_F(Client, GetSettingsReadsTheLoggerAndShowsIt) {
    console.Logger.Settings.NumSamples = 70000;
    console.Logger.Settings.StatusWord = 0x0080;
    ASSERT_TRUE(window.GetSettings());
    EXPECT_NE(window.Record.SettingsValid, False);
    EXPECT_EQ(Shown().lblLoggerName.Text, "North outfall");
    EXPECT_EQ(Shown().lblLoggerTime2.Text, "9/30/23 12:05:09");
    EXPECT_EQ(Shown().lblLoggingState2.Text, "Logging");
    EXPECT_EQ(Shown().lblSampleInterval.Text, "5 minutes");
    EXPECT_EQ(Shown().lblWarmup2.Text, "3 sec");
    EXPECT_EQ(Shown().lblRecords2.Text, "70000 Records");
    EXPECT_EQ(Shown().lblAlarm2[0].Text, "12:00:00 AM");
    EXPECT_EQ(window.NumSamples(), 70000);
    EXPECT_TRUE(console.Boxes().empty());
}

TEST_F(Client, GetSettingsWorksOutTheDecimalsOfFlow) {
    State().FlowDecPlaces = State().VelDecPlaces = -1;
    ASSERT_TRUE(window.GetSettings());
    EXPECT_EQ(State().FlowDecPlaces, 4) << "up to 3.6 cfs";
    EXPECT_EQ(State().VelDecPlaces, 3) << "up to 4.8 feet per second";
}

TEST_F(Client, GetSettingsLooksTheFlowDeviceUp) {
    console.Logger.Settings.FlowMode = 2;
    console.Logger.Settings.FlumeTag = "P2";
    FlowDeviceEntry flume;
    flume.Tag = "P2";
    flume.Name = "2 in. Parshall";
    flume.EqMultiplier = 0.676;
    console.State.CataloguesRecord.FlumeList.Append(flume);
    ASSERT_TRUE(window.GetSettings());
    EXPECT_EQ(State().FlowDeviceName, "2 in. Parshall");
    EXPECT_EQ(State().FlowEqMultiplier, 0.676);
}

TEST_F(Client, GetSettingsTellsOfADeviceThatIsMissingAndGoesOn) {
    console.Logger.Settings.FlowMode = 2;
    console.Logger.Settings.FlumeTag = "GONE";
    EXPECT_TRUE(window.GetSettings());
    ASSERT_EQ(console.Boxes().size(), 1U);
    EXPECT_EQ(console.Boxes()[0].Title, "Bad Flume Tag");
    EXPECT_NE(window.Record.SettingsValid, False);
}

TEST_F(Client, TheLabelsAreFilledBeforeABoxComesUp) {
    console.Logger.Settings.FlowMode = 2;
    std::string name;
    console.Outside.Boxes.WhileShown = [&] { name = surface.Shown.lblLoggerName.Text; };
    ASSERT_TRUE(window.GetSettings());
    EXPECT_EQ(name, "North outfall");
}

TEST_F(Client, GetSettingsThatFailsLeavesSettingsValidFalseAndEveryLabelAsItWas) {
    ASSERT_TRUE(window.GetSettings());
    const std::string name = Shown().lblLoggerName.Text;
    const int shows = surface.Shows;
    console.Logger.Answers = false;
    console.Logger.Settings.LoggerName = "Other";
    EXPECT_FALSE(window.GetSettings());
    EXPECT_EQ(window.Record.SettingsValid, False);
    EXPECT_EQ(Shown().lblLoggerName.Text, name);
    EXPECT_EQ(surface.Shows, shows);
}

TEST_F(Client, GetSettingsLaysTheColumnsOut) {
    window.ChooseDisplay(DisplayMeter);
    ASSERT_TRUE(window.GetSettings());
    EXPECT_EQ(Shown().lblUnits[0].Text, "Feet");
    EXPECT_NE(Meter(0).Active, False);
}

TEST_F(Client, GetStatusShowsStateAndRecords) {
    console.Logger.Settings.NumSamples = 12;
    EXPECT_TRUE(window.GetStatus());
    EXPECT_EQ(Shown().lblLoggingState.Text, "Not Logging");
    EXPECT_EQ(Shown().lblLoggingState2.Text, "Not Logging");
    EXPECT_EQ(Shown().lblRecords.Text, "12");
    EXPECT_EQ(Shown().lblRecords2.Text, "12 Records");
}

TEST_F(Client, GetStatusThatFailsShowsWhatTheRecordHolds) {
    State().NumSamples = 5;
    State().LoggingState = "Logging";
    console.Logger.Answers = false;
    EXPECT_FALSE(window.GetStatus());
    EXPECT_EQ(Shown().lblRecords.Text, "5");
    EXPECT_EQ(Shown().lblLoggingState.Text, "Logging");
}

TEST_F(Client, GetTimeShowsTheClockWhateverCameOfIt) {
    EXPECT_TRUE(window.GetTime());
    EXPECT_EQ(Shown().lblLoggerTime.Text, "9/30/23 12:05:09");
    console.Logger.Answers = false;
    EXPECT_FALSE(window.GetTime());
    EXPECT_EQ(Shown().lblLoggerTime.Text, "00/00/00 00:00:00");
    EXPECT_EQ(Shown().lblLoggerTime2.Text, "00/00/00 00:00:00");
}

TEST_F(Client, ResetPulseAccsTellsWhetherTheLoggerDidIt) {
    EXPECT_TRUE(window.ResetPulseAccs());
    console.Logger.Answers = false;
    EXPECT_FALSE(window.ResetPulseAccs());
}

TEST_F(Client, TheSwapLeavesSamplesAndTableOfBothSidesAlone) {
    Sample({1, 2, 3});
    State().LoggerName = "Here";
    State().FlowTable.Append({1, 2});
    console.State.Logger.NumDataPoints = 4;
    window.ClientSetGlobalState();
    EXPECT_EQ(console.State.Logger.LoggerName, "Here");
    EXPECT_EQ(console.State.Logger.NumDataPoints, 4);
    EXPECT_EQ(console.State.Logger.FlowTable.UpperBound(), 0);
    console.State.Logger.LoggerName = "Changed";
    window.ClientGetGlobalState();
    EXPECT_EQ(State().LoggerName, "Changed");
    EXPECT_EQ(State().NumDataPoints, 1);
    EXPECT_EQ(State().FlowTable.UpperBound(), 1);
}

TEST_F(Client, ClientSetNumChannelsHandsOverTheCountsAlone) {
    State().NumAnalogChannels = 5;
    State().NumDigitalChannels = 1;
    State().LoggerName = "Here";
    window.ClientSetNumChannels();
    EXPECT_EQ(console.State.Logger.NumAnalogChannels, 5);
    EXPECT_EQ(console.State.Logger.NumDigitalChannels, 1);
    EXPECT_EQ(console.State.Logger.LoggerName, "");
}

TEST_F(Client, SetDPFilesTheNewestSample) {
    for (const std::int32_t raw : {1, 2, 3, 4, 5}) {
        Sample({raw});
    }
    EXPECT_EQ(State().NumDataPoints, 4);
    EXPECT_EQ(State().DataPoints[0].Raw[0], 5);
    EXPECT_EQ(State().DataPoints[3].Raw[0], 2);
}

TEST_F(Client, EqualRawLimitsSetTheDecimalsOfTheCurrentLoggerAlone) {
    State() = PipeLogger();
    State().RawScaleUpper[0] = State().RawScaleLower[0];
    State().FlowDecPlaces = 4;
    window.CalculateFlowVelPrecision();
    EXPECT_EQ(State().FlowDecPlaces, 4);
    EXPECT_EQ(console.State.Logger.FlowDecPlaces, 2);
}

TEST_F(Client, ResetDisplayTouchesNoData) {
    ASSERT_TRUE(window.GetSettings());
    Sample({100});
    window.ResetDisplay();
    EXPECT_EQ(Shown().lblData2[0].Text, "");
    EXPECT_EQ(Shown().lblLoggerName2.Text, "");
    EXPECT_EQ(State().LoggerName, "North outfall");
    EXPECT_EQ(State().NumDataPoints, 1);
}

TEST_F(Client, TheMenuComesUpOnceTheWindowIsActive) {
    EnterInBook()->Active = True;  // stands for this window among the slots
    surface.Active = true;
    window.ShowClientPopup();
    EXPECT_EQ(surface.FocusRequests, 1);
    EXPECT_EQ(console.Events.Turns, 1);
    EXPECT_EQ(console.Popup.Captions, std::vector<std::string>{"Sample Continuously"});
}

TEST_F(Client, TheMenuOffersToStopWhileASamplingModeRuns) {
    EnterInBook()->Active = True;
    surface.Active = true;
    console.State.SamplingRecord.ContinuousMode = AutoUpdateRunning;
    window.ShowClientPopup();
    EXPECT_EQ(console.Popup.Captions, std::vector<std::string>{"Stop Sample Continuously"});
}

TEST_F(Client, WithASecondWindowActiveTheMenuWaitsForTheActivation) {
    const auto self = EnterInBook();
    const auto other = OpenOther(True);
    console.Events.OnTurn = [&](int turn) {
        if (turn == 3) {
            other->Active = False;
            self->Active = True;
            surface.Active = true;
        }
    };
    window.ShowClientPopup();
    EXPECT_EQ(console.Events.Turns, 3);
    EXPECT_EQ(console.Popup.Captions.size(), 1U);
}

TEST_F(Client, TwoActiveWindowsGiveNoMenu) {
    EnterInBook()->Active = True;
    surface.Active = true;
    const auto other = OpenOther(True);
    window.ShowClientPopup();
    EXPECT_TRUE(console.Popup.Captions.empty());
}

TEST_F(Client, WithoutActivationWithin32TurnsNoMenuComesUp) {
    EnterInBook();
    const auto other = OpenOther(True);
    window.ShowClientPopup();
    EXPECT_EQ(console.Events.Turns, 32);
    EXPECT_TRUE(console.Popup.Captions.empty());
}

TEST_F(Client, AFaultInTheWaitGivesNoMenu) {
    console.Events.OnTurn = [](int /*turn*/) { throw Fault("no events"); };
    EXPECT_NO_THROW(window.ShowClientPopup());
    EXPECT_TRUE(console.Popup.Captions.empty());
}

TEST_F(Client, UnloadTakesTheWindowOutOfSlotBookAndList) {
    EnterInBook();
    window.Unload();
    EXPECT_EQ(console.State.Windows.NumClientWindows, 1);
    EXPECT_EQ(console.State.Windows.At(0), nullptr);
    EXPECT_EQ(console.State.Book.Entries[1].WindowIndex, NoWindow);
    EXPECT_EQ(console.State.Book.Entries[1].SmallIcon, IconNoWindow);
    EXPECT_EQ(console.View.Clients[0].Icon, IconNoWindow);
}

TEST_F(Client, UnloadOfTheLastWindowLeavesNone) {
    console.State.Windows.NumClientWindows = 1;
    window.Unload();
    EXPECT_EQ(console.State.Windows.NumClientWindows, 0);
}

TEST_F(Client, UnloadDoesNotCountBelowZero) {
    console.State.Windows.NumClientWindows = 0;
    window.Unload();
    EXPECT_EQ(console.State.Windows.NumClientWindows, 0);
}

TEST_F(Client, UnloadWithAnotherClientIndexLeavesTheBookAlone) {
    EnterInBook();
    for (const std::int16_t index : std::initializer_list<std::int16_t>{0, -1, 2}) {
        RecordedSurface another;
        ClientModel model(console.Context, another);
        model.Load();
        model.Record.ClientIndex = index;
        model.Unload();
        EXPECT_EQ(console.State.Book.Entries[1].WindowIndex, 0) << index;
    }
    EXPECT_EQ(console.View.Clients[0].Icon, IconAddressed);
}

TEST_F(Client, UnloadOfAnEntryWithoutASlotLeavesItAlone) {
    EnterInBook();
    console.State.Book.Entries[1].WindowIndex = NoWindow;
    window.Unload();
    EXPECT_NE(console.State.Windows.At(0), nullptr);
    EXPECT_EQ(console.State.Book.Entries[1].SmallIcon, IconAddressed);
}

TEST_F(Client, UnloadTwiceCountsOnce) {
    console.State.Windows.NumClientWindows = 3;
    window.Unload();
    window.Unload();
    EXPECT_EQ(console.State.Windows.NumClientWindows, 2);
}

TEST_F(Client, AClosedWindowStillReadsItsLoggerAndShowsNothing) {
    const int shows = surface.Shows;
    console.Logger.InEveryWait = [this] { window.Unload(); };
    EXPECT_TRUE(window.GetSettings());
    EXPECT_TRUE(window.GetStatus());
    EXPECT_TRUE(window.GetTime());
    Sample({100});
    EXPECT_EQ(State().LoggerName, "North outfall");
    EXPECT_EQ(State().NumDataPoints, 1);
    EXPECT_EQ(surface.Shows, shows);
}

// Settings that the console cannot do without a box: an unknown flume, on a logger that the flow
// mode refuses.
class ClientBoxes : public Client {
 protected:
    ClientBoxes() {
        LoggerState settings = FreshLogger(8, 0);
        settings.FlowMode = 2;
        settings.FlumeTag = "GONE";
        console.Logger.Settings = settings;
        window.ChooseDisplay(DisplayFlow);
    }
    void ExpectBoxes(const std::vector<std::string>& titles) {
        std::vector<std::string> shown;
        for (const BoxContent& box : console.Boxes()) {
            shown.push_back(box.Title);
        }
        EXPECT_EQ(shown, titles);
    }
};

TEST_F(ClientBoxes, GetSettingsShowsBothWhileTheWindowIsOpen) {
    ASSERT_TRUE(window.GetSettings());
    ExpectBoxes({"Bad Flume Tag", "Flow Mode Error"});
    EXPECT_EQ(window.Record.DisplayMode, DisplayMeter);
}

TEST_F(ClientBoxes, AWindowClosedInAWaitShowsNone) {
    console.Logger.InEveryWait = [this] { window.Unload(); };
    EXPECT_TRUE(window.GetSettings());
    ExpectBoxes({});
}

TEST_F(ClientBoxes, AWindowClosedBehindTheFirstShowsNoSecond) {
    console.Outside.Boxes.WhileShown = [this] { window.Unload(); };
    EXPECT_TRUE(window.GetSettings());
    ExpectBoxes({"Bad Flume Tag"});
}

TEST_F(ClientBoxes, AProgramShutDownBehindTheFirstShowsNoSecond) {
    console.Outside.Boxes.WhileShown = [this] { console.State.LinkRecord.ShuttingDown = True; };
    EXPECT_TRUE(window.GetSettings());
    ExpectBoxes({"Bad Flume Tag"});
}

TEST_F(ClientBoxes, AWindowClosedBehindTheFlowCheckOfGetSettingsIsNotRepainted) {
    console.Logger.Settings.FlowMode = 0;
    console.Outside.Boxes.WhileShown = [this] { window.Unload(); };
    EXPECT_TRUE(window.GetSettings());
    ExpectBoxes({"Flow Mode Error"});
    EXPECT_EQ(surface.Repaints, 0);
}

}  // namespace
}  // namespace client_test
