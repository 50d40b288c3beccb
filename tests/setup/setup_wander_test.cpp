#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>

#include "common/path_text.h"
#include "setup/setup_file.h"
#include "setup/setup_fixture.h"
#include "setup/setup_transfer.h"

// Closing, prompting, cancelling, programming and loading in any order: whatever the user does, no
// change is lost without a question.

namespace {

using setup_testing::OpenedSetup;
using testing_support::FileContents;
using testing_support::FreshFolder;
using testing_support::Millisecond;
using testing_support::WriteFile;

constexpr const char* Saving = "The settings information has changed without being saved";
constexpr const char* Programming = "The settings information has changed without being programmed";

class Wanderer {
 public:
    explicit Wanderer(unsigned seed) : random_(seed) {
        WriteFile(JoinPath(folder_, "bad.set"), "LoggerName=Bad\nDeadband=x\n");
        WriteFile(JoinPath(folder_, "odd.set"), "SensorWarmupTime=61\nLoggerName=Odd\n");
        WriteFile(JoinPath(folder_, "good.set"),
                  "LoggerName=Good\nFlowMode=1\n[Analog]\n"
                  "EngUnits=Feet\n");
        Reopen();
    }

    void Act() {
        opened_.console.Outside.Network.Faults().Clear();
        if (Chance(3)) {
            opened_.console.Outside.Network.Faults().Probability(0.15, random_());
        }
        if (Chance(5)) {
            // Another press, in the middle of whatever waits.
            opened_.console.Outside.Time.In(static_cast<int>(random_() % 900) * Millisecond,
                                            [this] { Press(static_cast<int>(random_() % 6)); });
        }
        Script();
        Press(static_cast<int>(random_() % 9));
        opened_.console.Outside.Time.Run(static_cast<int>(random_() % 1200) * Millisecond);
    }

    int Closed = 0;
    int Programmed = 0;
    int Asked = 0;

 private:
    bool Chance(unsigned of) { return random_() % of == 0; }

    /// Answers and picks for what the next actions may ask.
    void Script() {
        auto& boxes = opened_.console.Outside.Boxes;
        auto& dialogs = opened_.console.Outside.Dialogs;
        boxes.Answers.clear();
        dialogs.Picks.clear();
        constexpr std::array<BoxAnswer, 3> Answers{BoxAnswer::Yes, BoxAnswer::No,
                                                   BoxAnswer::Cancel};
        for (int i = 0; i < 12; ++i) {
            boxes.Answers.push_back(Answers.at(random_() % Answers.size()));
        }
        constexpr std::array<const char*, 6> Names{"a.set",   "b.set",   "good.set",
                                                   "bad.set", "odd.set", "gone/x.set"};
        if (!Chance(4)) {
            dialogs.Picks.push_back(JoinPath(folder_, Names.at(random_() % Names.size())));
        }
    }

    void Press(int action) {
        switch (action) {
            case 0:
                ProgramSettings(opened_.Context());
                return;
            case 1:
                LoadSetupFile(opened_.Context());
                return;
            case 2:
                static_cast<void>(SaveSetupFile(opened_.Context()));
                return;
            case 3:
                LoadRecentFile(opened_.Context(), static_cast<int>(random_() % 4));
                return;
            case 4:
                InitializeSetup(opened_.Context());
                return;
            case 5:
                Close();
                return;
            default:
                Edit();
        }
    }

    void Edit() {
        // Input is held while the logger is spoken to, and a box stands before the dialog.
        if (opened_.Busy() != False || opened_.dialog.UnloadRuns != False) {
            return;
        }
        SetupControls& controls = opened_.view.Shown;
        switch (random_() % 6) {
            case 0:
                controls.txtName = "N" + std::to_string(random_() % 3);
                return;
            case 1:
                controls.Analog[0].txtHighEU = std::to_string(random_() % 3);
                return;
            case 2:
                controls.chkWrap = !controls.chkWrap;
                return;
            case 3:
                controls.FlowOption = static_cast<int>(random_() % 5);
                return;
            case 4:
                controls.txtException = Chance(4) ? "70000" : "1";
                return;
            default:
                controls.Alarms[0].txtAlarm = Chance(4) ? "1E99" : "7:00:00";
        }
    }

    /// What the controls stand for, as an image; empty if for nothing that can be encoded.
    Bytes Wanted() {
        LoggerState state = opened_.Global();
        Bytes image;
        if (!FormToState(opened_.view.Shown, opened_.console.State.CataloguesRecord, state) ||
            !config::EncodeSettingsImage(state, image)) {
            image.clear();
        }
        return image;
    }

    bool InLogger(const Bytes& wanted) {
        LoggerState state = opened_.Global();
        Bytes held;
        EXPECT_TRUE(config::DecodeSettingsImage(opened_.LoggerMemory(), state));
        state.AnalogEnable = opened_.Global().AnalogEnable;
        LoggerState wantedState = state;
        EXPECT_TRUE(config::EncodeSettingsImage(state, held));
        return !wanted.empty() && config::DecodeSettingsImage(wanted, wantedState) &&
               held == Normal(wantedState);
    }
    Bytes Normal(LoggerState state) {
        state.AnalogEnable = opened_.Global().AnalogEnable;
        Bytes image;
        EXPECT_TRUE(config::EncodeSettingsImage(state, image));
        return image;
    }

    /// Whether some file that was saved or loaded since the opening holds these settings, or the
    /// logger held them at the opening.
    bool InFile(const Bytes& wanted) {
        if (!wanted.empty() && wanted == opening_) {
            return true;
        }
        for (const auto& file : std::filesystem::directory_iterator(folder_)) {
            LoggerState state = opened_.Global();
            SetDefaultSettings(state);
            std::ifstream text(file.path(), std::ios::binary);
            Bytes image;
            if (!ReadSetupFile(text, state) && config::EncodeSettingsImage(state, image) &&
                image == wanted) {
                return true;
            }
        }
        return false;
    }

    /// The answer to the question that begins so, among the boxes since `first`.
    bool WasAsked(const std::vector<MessageBox>& boxes, const char* question) {
        return std::any_of(boxes.begin(), boxes.end(), [question](const MessageBox& box) {
            return box.Text.starts_with(question);
        });
    }

    void Close() {
        auto& boxes = opened_.console.Outside.Boxes;
        const std::size_t first = boxes.Shown.size();
        const Bytes wanted = Wanted();
        if (!QueryUnloadSetup(opened_.Context())) {
            return;
        }
        const std::vector<MessageBox> asked(boxes.Shown.begin() + static_cast<long>(first),
                                            boxes.Shown.end());
        EXPECT_EQ(opened_.Busy(), True);
        EXPECT_TRUE(WasAsked(asked, Saving) || InFile(wanted));
        EXPECT_TRUE(WasAsked(asked, Programming) || InLogger(wanted));
        ++Closed;
        Asked += WasAsked(asked, Saving) || WasAsked(asked, Programming) ? 1 : 0;
        Programmed += InLogger(wanted) ? 1 : 0;
        Reopen();
    }

    void Reopen() {
        opened_.console.Outside.Network.Faults().Clear();
        opened_.console.Outside.Boxes.Shown.clear();
        opened_.view.Shown = SetupControls();
        opened_.dialog = SetupDialog();
        opened_.Read();
        opened_.Open();
        opening_ = Wanted();
    }

    std::mt19937 random_;
    std::string folder_ = FreshFolder("wander");
    OpenedSetup opened_;
    Bytes opening_;
};

TEST(SetupWander, NoWayThroughTheDialogLosesAChangeWithoutAQuestion) {
    // The same walk in every run; another one on demand.
    const char* told = std::getenv("ORVIA_WANDER_SEED");
    const auto seed =
        static_cast<unsigned>(std::strtoul(told != nullptr ? told : "1402362391", nullptr, 10));
    std::cout << "seed " << seed << '\n';
    Wanderer user(seed);
    for (int action = 0; action < 6000; ++action) {
        user.Act();
        if (::testing::Test::HasFailure()) {
            FAIL() << "seed " << seed << ", action " << action;
        }
    }
    std::cout << user.Closed << " closings, " << user.Asked << " with questions, "
              << user.Programmed << " with the logger programmed\n";
    EXPECT_GT(user.Closed, 50);
    EXPECT_GT(user.Asked, 20);
    EXPECT_GT(user.Programmed, 10);
}

}  // namespace
