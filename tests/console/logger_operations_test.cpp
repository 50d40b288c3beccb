#include "console/logger_operations.h"

#include <gtest/gtest.h>

#include "support/virtual_console.h"

namespace {

using simulator::FaultKind;
using simulator::Plain;
using testing_support::BasicSite;
using testing_support::FakeClientWindow;
using testing_support::Millisecond;
using testing_support::Second;
using testing_support::VirtualConsole;

class LoggerOperations : public ::testing::Test {
 protected:
    LoggerOperations() { console_.Connect(); }

    std::shared_ptr<FakeClientWindow> OpenSite(int number) {
        return console_.OpenWindow(console_.AddSite(BasicSite(number)));
    }

    void ExpectAtRest() {
        EXPECT_EQ(operations_.OperationBusy, False);
        EXPECT_EQ(console_.State.LinkRecord.CommBusy, False);
        EXPECT_EQ(console_.View.Shape, Pointer::Normal);
        EXPECT_EQ(console_.State.SamplingRecord.SingleSample, 0);
    }

    VirtualConsole console_;
    Operations& operations_ = console_.State.OperationsRecord;
};

TEST_F(LoggerOperations, GetSampleShowsTheHourglassThenFilesTheReading) {
    const auto window = OpenSite(1);
    Pointer during = Pointer::Normal;
    console_.Outside.Time.In(500 * Millisecond, [&] { during = console_.View.Shape; });
    GetSample(console_.Operation());
    EXPECT_EQ(during, Pointer::Hourglass);
    EXPECT_EQ(window->Points.size(), 1U);
    ExpectAtRest();
}

TEST_F(LoggerOperations, GetSampleActsOnTheActiveWindow) {
    const auto first = OpenSite(1);
    const auto second = OpenSite(2);
    GetSample(console_.Operation());
    EXPECT_TRUE(first->Points.empty());
    EXPECT_EQ(second->Points.size(), 1U);
}

TEST_F(LoggerOperations, NothingIsSampledForAWindowClosedWhileItsSettingsAreRead) {
    const auto window = OpenSite(1);
    console_.AddSite(BasicSite(2));
    std::shared_ptr<FakeClientWindow> other;
    console_.Outside.Time.In(750 * Millisecond, [&] {
        EXPECT_EQ(operations_.OperationBusy, True);
        EXPECT_EQ(console_.State.LinkRecord.LinkState, LinkNormal);
        window->Unload();
        console_.State.Book.Entries.Remove(1);
        other = console_.OpenWindow(1);
    });
    SampleContinuously(console_.Operation());
    EXPECT_EQ(console_.State.SamplingRecord.ContinuousMode, SamplingIdle);
    console_.Outside.Time.Run(5 * Second);
    ASSERT_NE(other, nullptr);
    ASSERT_EQ(console_.State.Windows.At(0), other) << "it has the slot and the number now";
    EXPECT_TRUE(other->Points.empty()) << "the other logger's samples are not its own";
    ExpectAtRest();
}

TEST_F(LoggerOperations, NothingIsSampledOnceTheDeviceIsLost) {
    const auto window = OpenSite(1);
    window->WhenSettingsRead = [this] {
        console_.Outside.Port.PullOut();
        console_.Outside.Time.Run(Second);
    };
    SampleContinuously(console_.Operation());
    EXPECT_EQ(console_.State.LinkRecord.LinkState, LinkDisconnected);
    EXPECT_EQ(console_.State.SamplingRecord.ContinuousMode, SamplingIdle);
    ExpectAtRest();
}

TEST_F(LoggerOperations, WithNoClientWindowActiveNothingHappens) {
    const auto window = OpenSite(1);
    window->Active = False;
    GetSample(console_.Operation());
    SampleContinuously(console_.Operation());
    ShowFirmwareVersion(console_.Operation());
    EXPECT_EQ(window->SettingsReads, 0);
    ExpectAtRest();
}

TEST_F(LoggerOperations, GuardsReturnWithoutAWord) {
    OpenSite(1);
    console_.Outside.Network.ClearRecord();
    operations_.OperationBusy = True;
    GetSample(console_.Operation());
    SampleContinuously(console_.Operation());
    EXPECT_EQ(operations_.OperationBusy, True) << "pressing a button during an operation";
    operations_.OperationBusy = False;
    console_.State.SamplingRecord.StepRuns = True;
    GetSample(console_.Operation());
    console_.State.SamplingRecord.StepRuns = False;
    console_.State.LinkRecord.Connected = False;
    GetSample(console_.Operation());
    SampleContinuously(console_.Operation());
    EXPECT_TRUE(console_.Outside.Network.Written().empty());
    EXPECT_TRUE(console_.Outside.Boxes.Shown.empty());
}

TEST_F(LoggerOperations, WithSampleContinuouslyRunningOnlyItsButtonActs) {
    const auto window = OpenSite(1);
    SampleContinuously(console_.Operation());
    const int reads = window->SettingsReads;
    GetSample(console_.Operation());
    ShowFirmwareVersion(console_.Operation());
    EXPECT_EQ(window->SettingsReads, reads);
    SampleContinuously(console_.Operation());
    EXPECT_EQ(console_.State.SamplingRecord.StopContinuous, True);
}

TEST_F(LoggerOperations, SampleContinuouslyNeedsTheLoggersSettings) {
    const auto window = OpenSite(1);
    console_.Outside.Network.Loggers().front()->Silence();
    SampleContinuously(console_.Operation());
    EXPECT_EQ(console_.State.SamplingRecord.ContinuousMode, SamplingIdle);
    EXPECT_EQ(window->SettingsValid(), False);
    ExpectAtRest();
}

TEST_F(LoggerOperations, GetSampleThatGetsNoSettingsFilesNothing) {
    const auto window = OpenSite(1);
    console_.Outside.Network.Loggers().front()->Silence();
    GetSample(console_.Operation());
    EXPECT_TRUE(window->Points.empty());
    ExpectAtRest();
}

TEST_F(LoggerOperations, GetSampleWithoutASampleInTimeEndsByItself) {
    const auto window = OpenSite(1);
    console_.Outside.Network.Faults().OnRequest(0x09, Plain(FaultKind::LoseAnswer), 9);
    const auto start = console_.Outside.Time.Now();
    GetSample(console_.Operation());
    // The settings, two requests that wait 1.6 s each, and a second between them.
    EXPECT_NEAR(static_cast<double>(console_.Outside.Time.Now() - start) / Second, 5.3, 0.3);
    ExpectAtRest();
}

TEST_F(LoggerOperations, FirmwareVersionTellsTheNumber) {
    OpenSite(1);
    ShowFirmwareVersion(console_.Operation());
    ASSERT_EQ(console_.Outside.Boxes.Shown.size(), 1U);
    EXPECT_EQ(console_.Outside.Boxes.Shown[0].Text, "Logger firmware version = 21");
    EXPECT_EQ(console_.Outside.Boxes.Shown[0].Title, "Firmware Version");
    EXPECT_EQ(console_.Outside.Boxes.Shown[0].Icon, BoxIcon::None);
    EXPECT_EQ(console_.Outside.Boxes.Shown[0].Buttons, BoxButtons::Ok);
    EXPECT_EQ(console_.State.Logger.LoggerName, "Site 1") << "it is the current logger now";
    ExpectAtRest();
}

TEST_F(LoggerOperations, FirmwareVersionOfASilentLoggerIsThatOfTheWindow) {
    const auto window = OpenSite(1);
    window->State.FirmwareVersion = 17;
    console_.Outside.Network.Loggers().front()->Silence();
    ShowFirmwareVersion(console_.Operation());
    ASSERT_EQ(console_.Outside.Boxes.Shown.size(), 1U);
    EXPECT_EQ(console_.Outside.Boxes.Shown[0].Text, "Logger firmware version = 17");
    EXPECT_EQ(window->SettingsReads, 1);
    ExpectAtRest();
}

TEST_F(LoggerOperations, SampleThatMissesItsTimeLimitIsNotFiled) {
    const auto window = OpenSite(1);
    console_.Outside.Time.In(1500 * Millisecond, [this] {
        EXPECT_EQ(console_.State.SamplingRecord.SingleSample, 2) << "between the two requests";
        console_.State.SamplingRecord.SampleTicks = 20;
    });
    GetSample(console_.Operation());
    EXPECT_EQ(window->SettingsReads, 1);
    EXPECT_TRUE(window->Points.empty());
    EXPECT_EQ(console_.State.SamplingRecord.SingleSampleTicks, 0);
    ExpectAtRest();
}

/// Something that happens inside a wait of an operation.
struct Interruption {
    const char* Name;
    void (*Happen)(VirtualConsole& console, FakeClientWindow& window);
};

class InterruptedOperation : public LoggerOperations,
                             public ::testing::WithParamInterface<Interruption> {};

// At every tenth of a second of a Get Sample: it ends, and nothing stays busy.
TEST_P(InterruptedOperation, EndsWithNothingBusy) {
    for (int tenth = 1; tenth < 40; ++tenth) {
        VirtualConsole console;
        const auto window = console.OpenWindow(console.AddSite(BasicSite(1)));
        console.Connect();
        console.Outside.Time.In(Millisecond * 100 * tenth, [&] {
            if (console.State.OperationsRecord.OperationBusy != False) {
                GetParam().Happen(console, *window);
            }
        });
        GetSample(console.Operation());
        EXPECT_EQ(console.State.OperationsRecord.OperationBusy, False) << tenth;
        EXPECT_EQ(console.State.LinkRecord.CommBusy, False) << tenth;
        EXPECT_EQ(console.State.SamplingRecord.SingleSample, 0) << tenth;
        EXPECT_EQ(console.View.Shape, Pointer::Normal) << tenth;
        console.Outside.Time.Run(5 * Second);
        EXPECT_EQ(console.State.SamplingRecord.ContinuousMode, SamplingIdle) << tenth;
    }
}

INSTANTIATE_TEST_SUITE_P(
    InsideEveryWait, InterruptedOperation,
    ::testing::Values(Interruption{"WindowClosed",
                                   [](VirtualConsole&, FakeClientWindow& window) {
                                       if (window.Index != 0) {
                                           window.Unload();
                                           window.Index = 0;
                                       }
                                   }},
                      Interruption{"DevicePulledOut",
                                   [](VirtualConsole& console, FakeClientWindow&) {
                                       console.Outside.Port.PullOut();
                                   }},
                      Interruption{"ProgramClosed",
                                   [](VirtualConsole& console, FakeClientWindow&) {
                                       console.State.LinkRecord.ShuttingDown = True;
                                   }},
                      Interruption{"BookEmptied",
                                   [](VirtualConsole& console, FakeClientWindow&) {
                                       console.State.Book.Entries.Reset();
                                       console.View.ClearClients();
                                   }},
                      Interruption{"SecondButton",
                                   [](VirtualConsole& console, FakeClientWindow&) {
                                       GetSample(console.Operation());
                                       SampleContinuously(console.Operation());
                                   }}),
    [](const auto& interruption) { return interruption.param.Name; });

TEST_F(LoggerOperations, NoBoxIsShownOnceTheProgramIsClosing) {
    OpenSite(1);
    console_.Outside.Network.Radio().Silence();
    console_.Outside.Time.In(Second, [this] { console_.State.LinkRecord.ShuttingDown = True; });
    GetSample(console_.Operation());
    EXPECT_TRUE(console_.Outside.Boxes.Shown.empty());
}

}  // namespace
