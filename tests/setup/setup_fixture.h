#ifndef ORVIA_TESTS_SETUP_SETUP_FIXTURE_H
#define ORVIA_TESTS_SETUP_SETUP_FIXTURE_H

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "logger/settings_image.h"
#include "setup/calibration.h"
#include "setup/setup_changes.h"
#include "setup/setup_context.h"
#include "setup/setup_filing.h"
#include "setup/setup_form_state.h"
#include "setup/setup_programming.h"
#include "support/virtual_console.h"

namespace setup_testing {

/// The dialog without a screen.
class FakeSetupView final : public SetupView {
 public:
    SetupControls Controls() const override { return Shown; }
    void ShowControls(const SetupControls& controls) override { Shown = controls; }
    bool ValidateField() override {
        ++FieldChecks;
        if (OnValidation) {
            OnValidation();
        }
        return FieldAccepts;
    }
    void EnableFlow(const FlowStates& states) override { Flow = states; }
    void SetTableFile(const std::string& path) override { Shown.txtTableFile = path; }
    void SetCalibration(int channel, const CalibrationValues& values) override {
        AnalogRow& row = Shown.Analog.at(static_cast<std::size_t>(channel));
        row.txtHighEU = values.HighEU;
        row.txtHighRaw = values.HighRaw;
        row.txtLowEU = values.LowEU;
        row.txtLowRaw = values.LowRaw;
    }
    void EnableAlarm(int alarm, bool on) override {
        AlarmOn.at(static_cast<std::size_t>(alarm)) = on;
    }
    void SetRecentFile(int place, std::string_view name) override {
        Recent.at(static_cast<std::size_t>(place)) = name;
    }
    void SetPointer(Pointer pointer) override { Shape = pointer; }
    void EnableCancel(bool on) override { CancelEnabled = on; }
    void FocusCancel() override { ++CancelFocused; }
    void HoldInput(bool held) override { Held = held; }

    SetupControls Shown;
    bool FieldAccepts = true;            ///< what the field in use says
    int FieldChecks = 0;                 ///< times that it was asked
    std::function<void()> OnValidation;  ///< what its validator does to the controls
    FlowStates Flow;
    std::array<bool, 2> AlarmOn = {};
    std::array<std::string, 4> Recent;
    Pointer Shape = Pointer::Normal;
    bool CancelEnabled = true;
    int CancelFocused = 0;
    bool Held = false;
};

/// A site whose settings come back from the dialog as they went in.
inline simulator::LoggerSetup SetupSite(int analog = 3, int pulse = 2) {
    simulator::LoggerSetup site = testing_support::BasicSite(1, analog, pulse);
    site.Settings.Analog.front().Units = "Feet";
    return site;
}

/// The dialog on a logger that has just been read, the radio on it.
class OpenedSetup {
 public:
    explicit OpenedSetup(const simulator::LoggerSetup& site = SetupSite(),
                         const std::string& appPath = "/nowhere")
        : console(appPath), entry(console.AddSite(site)) {
        console.Connect();
        window = console.OpenWindow(entry);
        Read();
    }

    /// Reads the logger into the global copy, as the operation does before it shows the dialog.
    void Read() {
        EXPECT_TRUE(Select());
        EXPECT_TRUE(window->GetSettings());
        window->ClientSetGlobalState();
    }
    bool Select() { return comm::SelectClient(console.Radio(), console.State.Book.Entries[entry]); }

    void Open() {
        console.State.OperationsRecord.OperationBusy = True;
        OpenSetup(Context());
    }

    SetupRecords Records() {
        const SetupRecords made = console.Make.Setup();
        return {.global = made.global,
                .settings = made.settings,
                .catalogues = made.catalogues,
                .link = made.link,
                .sampling = made.sampling,
                .operations = made.operations,
                .exchange = exchange != nullptr ? *exchange : made.exchange,
                .status = made.status,
                .outside = made.outside,
                .version = "1.0.0"};
    }
    SetupContext Context() {
        return {Records(), [this] { return Select(); }, view, dialog};
    }

    /// Answers of the boxes to come, in order.
    template <typename... Answers>
    void Answer(Answers... answers) {
        (console.Outside.Boxes.Answers.push_back(answers), ...);
    }
    /// What has been shown since the last call.
    std::vector<BoxContent> TakeBoxes() { return std::exchange(console.Outside.Boxes.Shown, {}); }

    [[nodiscard]] Bytes Image() const {
        Bytes image;
        EXPECT_TRUE(config::EncodeSettingsImage(console.State.Logger, image));
        return image;
    }
    /// The settings as the logger holds them.
    [[nodiscard]] Bytes LoggerMemory() {
        const simulator::Bytes& memory = Logger().Memory();
        Bytes image;
        for (const config::ImageBlock& block : config::ImageBlocks) {
            const auto first = memory.begin() + block.Address;
            image.insert(image.end(), first, first + block.Size);
        }
        return image;
    }
    simulator::Logger& Logger() { return *console.Outside.Network.Loggers().front(); }
    LoggerState& Global() { return console.State.Logger; }
    Flag& Busy() { return console.State.OperationsRecord.OperationBusy; }

    testing_support::VirtualConsole console;
    int entry;
    std::shared_ptr<testing_support::FakeClientWindow> window;
    FakeSetupView view;
    SetupDialog dialog;
    FrameExchange* exchange = nullptr;  ///< in place of the link's, if set
};

/// A test with the dialog open.
class SetupTest : public ::testing::Test {
 protected:
    SetupTest() { opened.Open(); }

    /// All boxes since the last look are the one expected.
    void ExpectBox(const std::string& text, const std::string& title, BoxIcon icon,
                   BoxButtons buttons = BoxButtons::Ok) {
        const std::vector<BoxContent> boxes = opened.TakeBoxes();
        ASSERT_EQ(boxes.size(), 1U);
        EXPECT_EQ(boxes.front().Text, text);
        EXPECT_EQ(boxes.front().Title, title);
        EXPECT_EQ(boxes.front().Icon, icon);
        EXPECT_EQ(boxes.front().Buttons, buttons);
    }
    void ExpectNoBox() { EXPECT_TRUE(opened.TakeBoxes().empty()); }

    OpenedSetup opened;
    FakeSetupView& view = opened.view;
    SetupControls& controls = opened.view.Shown;
};

}  // namespace setup_testing

#endif  // ORVIA_TESTS_SETUP_SETUP_FIXTURE_H
