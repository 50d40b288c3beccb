#include "setup/setup_operation.h"

#include <gtest/gtest.h>

#include "link/port.h"
#include "logger/commands.h"
#include "setup/setup_fixture.h"

namespace {

using setup_testing::SetupSite;
using testing_support::BasicSite;
using testing_support::FakeClientWindow;
using testing_support::Millisecond;
using testing_support::Second;
using testing_support::VirtualConsole;

class SetupOperation : public ::testing::Test {
 protected:
    SetupOperation() { console.Connect(); }

    void Run() {
        ::Setup(console.Operation(), [this](const std::function<bool()>& reselect) {
            ++Shown;
            BusyAtShow = console.State.OperationsRecord.OperationBusy;
            ShapeAtShow = console.View.Shape;
            NameAtShow = console.State.Logger.LoggerName;
            ReadsAtShow = window ? window->SettingsReads : 0;
            if (WhileShown) {
                WhileShown(reselect);
            }
        });
    }
    /// Closes the window, and deletes its entry: the logger behind it takes its number.
    void CloseAndDelete() {
        window->Unload();
        console.State.Book.Entries.Remove(entry);
    }
    /// Requests that came to a logger of the network, counted from 0.
    std::size_t RequestsTo(std::size_t logger) {
        return console.Outside.Network.RequestsTo(*console.Outside.Network.Loggers().at(logger))
            .size();
    }
    void ExpectReleased() {
        EXPECT_EQ(console.State.OperationsRecord.OperationBusy, False);
        EXPECT_EQ(console.View.Shape, Pointer::Normal);
    }

    VirtualConsole console;
    int entry = console.AddSite(SetupSite());
    std::shared_ptr<FakeClientWindow> window = console.OpenWindow(entry);
    int Shown = 0;
    Flag BusyAtShow = False;
    Pointer ShapeAtShow = Pointer::Hourglass;
    std::string NameAtShow;
    int ReadsAtShow = 0;
    std::function<void(const std::function<bool()>&)> WhileShown;
};

TEST_F(SetupOperation, ReadsTheLoggerShowsTheDialogAndReadsAgain) {
    WhileShown = [this](const auto&) {
        console.State.OperationsRecord.OperationBusy = False;  // as the dialog does
        window->State.LoggerName = "stale";
    };
    Run();
    EXPECT_EQ(Shown, 1);
    EXPECT_EQ(ReadsAtShow, 1);
    EXPECT_EQ(NameAtShow, "Site 1") << "the logger is the current one";
    EXPECT_EQ(BusyAtShow, True);
    EXPECT_EQ(ShapeAtShow, Pointer::Normal);
    EXPECT_EQ(window->SettingsReads, 2);
    EXPECT_EQ(window->State.LoggerName, "Site 1");
    ExpectReleased();
}

TEST_F(SetupOperation, ShowsTheDialogEvenIfTheLoggerDidNotAnswer) {
    console.Outside.Network.Loggers().front()->Silence();
    Run();
    EXPECT_EQ(Shown, 1);
    EXPECT_EQ(window->Valid, False);
    ExpectReleased();
}

TEST_F(SetupOperation, TellsInTheDialogThatTheLoggerDidNotAnswer) {
    console.Outside.Network.Loggers().front()->Silence();
    std::string line;
    WhileShown = [&](const std::function<bool()>&) { line = console.State.Status.Text(); };
    Run();
    EXPECT_NE(line.find(window->Caption() + " did not answer: these are not its settings of now"),
              std::string::npos)
        << line;
}

TEST_F(SetupOperation, WithoutAnActiveWindowNothingShows) {
    window->Active = False;
    Run();
    EXPECT_EQ(Shown, 0);
    ExpectReleased();
}

TEST_F(SetupOperation, DoesNothingWhileTheLinkIsTaken) {
    console.State.OperationsRecord.OperationBusy = True;
    Run();
    EXPECT_EQ(console.State.OperationsRecord.OperationBusy, True);
    console.State.OperationsRecord.OperationBusy = False;
    console.State.SamplingRecord.ContinuousMode = ContinuousFirstRequest;
    Run();
    console.State.SamplingRecord.ContinuousMode = SamplingIdle;
    console.State.LinkRecord.Connected = False;
    Run();
    EXPECT_EQ(Shown, 0);
}

TEST_F(SetupOperation, ASelectionThatFailsEndsIt) {
    console.State.LinkRecord.CurrentChannel = UnknownChannel;
    console.Outside.Network.RadioFaults().Always(
        simulator::Plain(simulator::FaultKind::LoseAnswer));
    Run();
    EXPECT_EQ(Shown, 0);
    ExpectReleased();
}

TEST_F(SetupOperation, ReadsAgainThoughTheIdleLimitClosedThePort) {
    WhileShown = [this](const auto&) {
        console.State.OperationsRecord.OperationBusy = False;
        console.Outside.Time.Run(301 * Second);
        EXPECT_FALSE(console.Outside.Port.PortOpen());
    };
    Run();
    EXPECT_EQ(window->SettingsReads, 2);
    EXPECT_EQ(window->Valid, True);
}

TEST_F(SetupOperation, TheLinkIsHeldForTheReadBehindADialogThatLetGoOfIt) {
    Flag held = False;
    WhileShown = [&](const auto&) {
        console.State.OperationsRecord.OperationBusy = False;
        console.Outside.Time.In(5 * testing_support::Millisecond, [&] {
            EXPECT_NE(console.State.LinkRecord.CommBusy, False) << "the read has begun";
            held = console.State.OperationsRecord.OperationBusy;
        });
    };
    Run();
    EXPECT_EQ(window->SettingsReads, 2);
    EXPECT_NE(held, False);
    ExpectReleased();
}

TEST_F(SetupOperation, TheDialogCanBringTheRadioBack) {
    bool back = false;
    WhileShown = [&](const std::function<bool()>& reselect) {
        console.State.OperationsRecord.OperationBusy = False;
        console.Outside.Time.Run(301 * Second);
        back = reselect();
    };
    Run();
    EXPECT_TRUE(back);
}

TEST_F(SetupOperation, TheDialogKnowsItsLoggerWhateverBecomesOfWindowAndEntry) {
    console.AddSite(BasicSite(2));
    WhileShown = [this](const std::function<bool()>& reselect) {
        console.State.OperationsRecord.OperationBusy = False;
        CloseAndDelete();
        console.Outside.Time.Run(301 * Second);
        console.Outside.Network.ClearRecord();
        EXPECT_TRUE(reselect());
        EXPECT_TRUE(cmd::RestartSampling(console.State.Exchange));
        EXPECT_EQ(RequestsTo(0), 1U);
        console.Outside.Time.Run(301 * Second);
    };
    Run();
    EXPECT_EQ(Shown, 1);
    EXPECT_GT(RequestsTo(0), 1U) << "that logger is read again";
    EXPECT_EQ(RequestsTo(1), 0U) << "the one that has the number now hears nothing";
    ExpectReleased();
}

TEST_F(SetupOperation, TheDialogKeepsToItsLoggerWhenTheWindowsNumberChanges) {
    const int other = console.AddSite(BasicSite(2));
    WhileShown = [this, other](const std::function<bool()>& reselect) {
        console.State.OperationsRecord.OperationBusy = False;
        window->SetClientIndex(static_cast<std::int16_t>(other));
        console.Outside.Time.Run(301 * Second);
        EXPECT_TRUE(reselect());
        EXPECT_TRUE(cmd::RestartSampling(console.State.Exchange));
    };
    Run();
    EXPECT_EQ(RequestsTo(1), 0U);
}

TEST_F(SetupOperation, TheEndOfTheProgramUnderTheDialogUnwinds) {
    int requests = 0;
    bool back = true;
    WhileShown = [&](const std::function<bool()>& reselect) {
        Link& link = console.State.LinkRecord;
        console.State.OperationsRecord.OperationBusy = False;
        comm::ClosePort(link);
        link.LinkState = LinkDisconnected;
        link.ShuttingDown = True;
        requests = console.Outside.Network.Count().Requests;
        back = reselect();
    };
    Run();
    EXPECT_EQ(Shown, 1);
    EXPECT_FALSE(back) << "nor does the dialog bring the radio back";
    EXPECT_FALSE(console.Outside.Port.PortOpen());
    EXPECT_EQ(window->SettingsReads, 1);
    EXPECT_EQ(console.Outside.Network.Count().Requests, requests);
    EXPECT_TRUE(console.Outside.Boxes.Shown.empty());
    ExpectReleased();
}

/// So many virtual milliseconds behind the press of the button: while the radio is selected, then
/// while the logger is read.
class MomentBeforeSetup : public SetupOperation, public ::testing::WithParamInterface<int> {};

TEST_P(MomentBeforeSetup, NoDialogOpensForAWindowClosedThen) {
    console.AddSite(BasicSite(2));
    bool inside = false;
    console.Outside.Time.In(GetParam() * Millisecond, [&] {
        inside = console.State.OperationsRecord.OperationBusy != False;
        CloseAndDelete();
    });
    Run();
    EXPECT_TRUE(inside);
    EXPECT_EQ(Shown, 0);
    EXPECT_EQ(RequestsTo(1), 0U);
    EXPECT_TRUE(console.Outside.Boxes.Shown.empty());
    ExpectReleased();
}

TEST_P(MomentBeforeSetup, NoDialogOpensThoughTheEntryHasAnotherWindowByThen) {
    bool inside = false;
    console.Outside.Time.In(GetParam() * Millisecond, [&] {
        inside = console.State.OperationsRecord.OperationBusy != False;
        window->Unload();
        console.OpenWindow(entry);
    });
    Run();
    EXPECT_TRUE(inside);
    EXPECT_EQ(Shown, 0);
    ExpectReleased();
}

INSTANTIATE_TEST_SUITE_P(InsideItsWaits, MomentBeforeSetup, ::testing::Range(50, 900, 100));

}  // namespace
