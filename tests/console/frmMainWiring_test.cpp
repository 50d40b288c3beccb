// What each button and menu row of the main window does when it is pressed.
#include <QDialog>
#include <QMenu>
#include <QPushButton>
#include <set>

#include "flow/frmRating.h"
#include "main_console_bench.h"
#include "trace/frmTrace.h"

namespace {

using namespace testing_support;

/// A control, and by what its operation is known.
struct Wire {
    const char* Control;
    const char* Caption;
    /// Title and text of the first box, as far as told; else the title of the first dialog.
    const char* Shows;
    /// Command codes that reached the logger, up to the box or dialog if there is one.
    std::set<int> Commands;
};

void PrintTo(const Wire& wire, std::ostream* out) {
    *out << wire.Control;
}

std::string NameOf(const ::testing::TestParamInfo<Wire>& wire) {
    return wire.param.Control;
}

const std::set<int> Nothing;
const std::set<int> Settings{0x0F, 0x08, 0x0C, 0x00};
const std::set<int> Sample{0x0F, 0x08, 0x0C, 0x00, 0x09, 0x0A};
const std::set<int> Status{0x0C};
const std::set<int> ResetThenSample{0x0E, 0x0F, 0x08, 0x0C, 0x00, 0x09, 0x0A};

/// The console with the window of the first site open, answering No to every question.
class frmMainWiringTest : public frmMainConsoleTest, public ::testing::WithParamInterface<Wire> {
 protected:
    frmMainWiringTest() {
        // A logger without records: an upload ends with a box.
        Logger().Answers(0x0C, Bytes{0, 0, 0, 0x80, 0});
        state_.SettingsRecord.AutoDisconnect = "1";
        ClickItem(1);
        AwaitCommands();
        boxes_.Shown.clear();
        boxes_.Answers.assign(9, BoxAnswer::No);
        Network().ClearRecord();
    }

    simulator::Network& Network() { return host_.Virtual.Network; }
    simulator::Logger& Logger() { return *Network().Loggers().front(); }

    std::set<int> CommandsSoFar() {
        std::set<int> codes;
        for (const Bytes& request : Network().RequestsTo(Logger())) {
            codes.insert(request.front());
        }
        return codes;
    }

    /// Expects that `press` does what the wire tells.
    void ExpectEffect(const std::function<void()>& press) {
        std::string shown;
        std::set<int> commands;
        const auto look = [&](const std::string& text) {
            if (shown.empty()) {
                shown = text;
                commands = CommandsSoFar();
            }
        };
        boxes_.WhileShown = [&] {
            look(boxes_.Shown.front().Title + ": " + boxes_.Shown.front().Text);
        };
        const ModalAnswer<QDialog> leave([&](QDialog& dialog) {
            look(FromQt(dialog.windowTitle()));
            dialog.reject();
        });
        press();
        boxes_.WhileShown = nullptr;
        EXPECT_EQ(shown.substr(0, std::string_view(GetParam().Shows).size()), GetParam().Shows);
        EXPECT_EQ(shown.empty(), std::string_view(GetParam().Shows).empty()) << shown;
        EXPECT_EQ(shown.empty() ? CommandsSoFar() : commands, GetParam().Commands);
    }

    /// Ends a sampling mode that was started.
    void ExpectRest() {
        state_.SamplingRecord.StopContinuous =
            ToFlag(state_.SamplingRecord.ContinuousMode != SamplingIdle);
        ASSERT_TRUE(RunEventsUntil([this] {
            return state_.SamplingRecord.ContinuousMode == SamplingIdle &&
                   state_.OperationsRecord.OperationBusy == False;
        }));
        ExpectAtRest();
    }
};

class frmMainButtonTest : public frmMainWiringTest {};

TEST_P(frmMainButtonTest, RunsItsOperation) {
    auto& button = Find<QPushButton>(GetParam().Control);
    EXPECT_EQ(FromQt(button.text().remove(QLatin1Char('&'))), GetParam().Caption);
    ExpectEffect([&] { QTest::mouseClick(&button, Qt::LeftButton); });
    EXPECT_EQ(state_.SamplingRecord.ContinuousMode != SamplingIdle,
              std::string_view(GetParam().Control) == "cmdSampleContinuously");
    ExpectRest();
}

INSTANTIATE_TEST_SUITE_P(
    Buttons, frmMainButtonTest,
    ::testing::Values(
        Wire{"cmdGetSettings", "Get Sample", "", Sample},
        Wire{"cmdSampleContinuously", "Sample Continuously", "", Settings},
        Wire{"cmdSignalLevel", "Signal Level", "Signal Level", Nothing},
        Wire{"cmdGetHistory", "Get History", "Get History Data: No history in memory!", Status},
        Wire{"cmdClearHistory", "Clear History",
             "Clear History: Are you sure you want to erase the history buffer?", Nothing},
        Wire{"cmdSyncTime", "Sync Time",
             "Synchronize Time: Do you want to set the logger time to equal the system time?",
             Nothing},
        Wire{"cmdSetup", "Setup", "Tessel Setup", Settings}),
    NameOf);

class frmMainRowTest : public frmMainWiringTest {};

TEST_P(frmMainRowTest, RunsItsOperation) {
    EXPECT_EQ(FromQt(Row(GetParam().Control).text()), GetParam().Caption);
    ExpectEffect([this] { Choose(GetParam().Control); });
    ExpectRest();
}

INSTANTIATE_TEST_SUITE_P(
    Popup, frmMainRowTest,
    ::testing::Values(
        Wire{"mnuClientGetSettings", "Get Sample", "", Sample},
        Wire{"mnuClientSampleContinuously", "Sample Continuously", "", Settings},
        Wire{"mnuClientSignalLevel", "Signal Level", "Signal Level", Nothing},
        Wire{"mnuClientGetHistory", "Get History", "Get History Data: No history in memory!",
             Status},
        Wire{"mnuClientClearHistory", "Clear History",
             "Clear History: Are you sure you want to erase the history buffer?", Nothing},
        Wire{"mnuClientSyncTime", "Sync Time",
             "Synchronize Time: Do you want to set the logger time to equal the system time?",
             Nothing},
        Wire{"mnuClientSetup", "Setup", "Tessel Setup", Settings},
        Wire{"mnuClientFirmwareVersion", "Firmware Version",
             "Firmware Version: Logger firmware version = 21", Settings},
        Wire{"mnuClientResetPulseAccs", "Reset Pulse Accumulators", "", ResetThenSample}),
    NameOf);

INSTANTIATE_TEST_SUITE_P(
    ForAll, frmMainRowTest,
    ::testing::Values(
        Wire{"mnuGetSettingsFACW", "Get Sample for All Client Windows", "", Sample},
        Wire{"mnuAutoUpdateFACW", "Update All Client Windows Every Minute",
             "Auto Disconnect: The 5-Minute Auto Disconnect Timer", Nothing},
        Wire{"mnuClearHistoryFACW", "Clear History for All Client Windows",
             "Synchronize Time: WARNING: Are you sure that you want to clear the history data",
             Nothing},
        Wire{"mnuSyncFACW", "Sync Time for All Client Windows",
             "Synchronize Time: Do you want to set the logger time to equal the system time\n",
             Nothing},
        Wire{"mnuStartupFACW", "Restart Sampling for All Client Windows",
             "Synchronize Time: Do you want to restart sampling including alarm timers", Nothing}),
    NameOf);

TEST_F(frmMainConsoleTest, NewFlowTableOpensItsWindowBesideTheOthers) {
    EXPECT_EQ(FromQt(Row("mnuNewFlowTable").text()), "&New Flow Table...");
    EXPECT_TRUE(
        forms_bench::Find<QMenu>(*window_, "mnuData")->actions().contains(&Row("mnuNewFlowTable")));
    Choose("mnuNewFlowTable");
    auto* table = window_->findChild<frmRating*>();
    ASSERT_NE(table, nullptr);
    EXPECT_TRUE(table->isVisible());
    EXPECT_TRUE(table->isWindow());
    EXPECT_FALSE(table->isModal());
    Choose("mnuNewFlowTable");
    EXPECT_EQ(window_->findChildren<frmRating*>().size(), 1);
    // The link is free all the while.
    ClickItem(1);
    AwaitCommands();
    Choose("mnuGetSettingsFACW");
    EXPECT_FALSE(
        host_.Virtual.Network.RequestsTo(*host_.Virtual.Network.Loggers().front()).empty());
    EXPECT_TRUE(table->close());
    ExpectAtRest();
}

TEST_F(frmMainConsoleTest, TheTraceOpensBesideTheOthersAndLeavesTheLinkFree) {
    Choose("mnuTrace");
    auto* trace = window_->findChild<frmTrace*>();
    ASSERT_NE(trace, nullptr);
    EXPECT_TRUE(trace->isVisible());
    EXPECT_TRUE(trace->isWindow());
    EXPECT_FALSE(trace->isModal());
    Choose("mnuTrace");
    EXPECT_EQ(window_->findChildren<frmTrace*>().size(), 1);
    ClickItem(1);
    AwaitCommands();
    Choose("mnuGetSettingsFACW");
    EXPECT_FALSE(
        host_.Virtual.Network.RequestsTo(*host_.Virtual.Network.Loggers().front()).empty());
    EXPECT_TRUE(trace->close());
    ExpectAtRest();
}

TEST_F(frmMainConsoleTest, RowsOfTheBookAskForAFile) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"mnuLoadAddressbook", "Load Address Book"},
        {"mnuNewAddressBook", "New Blank Address Book"}};
    for (const auto& [name, caption] : rows) {
        EXPECT_EQ(FromQt(Row(name).text()), caption);
        EXPECT_TRUE(forms_bench::Find<QMenu>(*window_, "mnuFile")->actions().contains(&Row(name)));
        Choose(name);
    }
    const ScriptedDialogs& dialogs = host_.Virtual.Dialogs;
    ASSERT_EQ(dialogs.Queries.size(), 2U);
    EXPECT_EQ(dialogs.Queries[0].Title, "Load Address Book");
    EXPECT_EQ(dialogs.Queries[1].Title, "Create New Blank Address Book");
    EXPECT_EQ(dialogs.Prompts, std::vector<bool>{true});
    EXPECT_EQ(Names(), "Site 1,Site 2,Site 3");
    ExpectAtRest();
}

}  // namespace
