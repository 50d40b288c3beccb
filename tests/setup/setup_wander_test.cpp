#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <optional>
#include <random>
#include <set>

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
    explicit Wanderer(unsigned seed) : random_(seed) { Reopen(); }

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
    int Refused = 0;  ///< of the closings, from a field that refuses

 private:
    bool Chance(unsigned of) { return random_() % of == 0; }

    /// Answers and picks for what the next actions may ask.
    void Script() {
        auto& dialogs = opened_.console.Outside.Dialogs;
        script_.clear();
        dialogs.Picks.clear();
        constexpr std::array<BoxAnswer, 3> Answers{BoxAnswer::Yes, BoxAnswer::No,
                                                   BoxAnswer::Cancel};
        for (int i = 0; i < 40; ++i) {
            script_.push_back(Answers.at(random_() % Answers.size()));
        }
        opened_.console.Outside.Boxes.Answers.assign(script_.begin(), script_.end());
        constexpr std::array<const char*, 6> Names{"a.set",   "b.set",   "good.set",
                                                   "bad.set", "odd.set", "gone/x.set"};
        if (!Chance(4)) {
            dialogs.Picks.push_back(JoinPath(folder_, Names.at(random_() % Names.size())));
        }
    }

    void Press(int action) {
        constexpr int Closing = 5;
        if (!opened_.view.FieldAccepts && action < Closing) {
            // Neither button nor menu is reached from a field that refuses.
            return;
        }
        switch (action) {
            case 0:
                ProgramSettings(opened_.Context());
                return;
            case 1:
                Load([this] { LoadSetupFile(opened_.Context()); });
                return;
            case 2:
                static_cast<void>(SaveSetupFile(opened_.Context()));
                return;
            case 3:
                Load(
                    [this] { LoadRecentFile(opened_.Context(), static_cast<int>(random_() % 4)); });
                return;
            case 4:
                InitializeSetup(opened_.Context());
                return;
            case Closing:
                Close();
                return;
            default:
                Edit();
        }
    }

    /// Loads, and notes the file that was taken.
    template <typename Way>
    void Load(Way way) {
        const auto& boxes = opened_.console.Outside.Boxes;
        const auto& dialogs = opened_.console.Outside.Dialogs;
        const std::size_t queries = dialogs.Queries.size();
        const std::size_t shown = boxes.Shown.size();
        const auto picks = dialogs.Picks;
        way();
        // Asked for another file, the user picks none: the one that saved before has it.
        const bool picked = dialogs.Queries.size() == queries + 1 && !picks.empty() &&
                            dialogs.Queries.back().Title == "Load Setup File";
        const bool failed = boxes.Shown.size() > shown && boxes.Shown.back().Title == "Load Setup";
        if (picked && !failed) {
            loaded_.insert(picks.front());
        }
    }

    void Edit() {
        // Input is held while the logger is spoken to, and a box stands before the dialog.
        if (opened_.Busy() != False || opened_.dialog.UnloadRuns != False) {
            return;
        }
        SetupControls& controls = opened_.view.Shown;
        // A field that refuses cannot be left for another.
        field_ = opened_.view.FieldAccepts ? static_cast<int>(random_() % 6) : field_;
        opened_.view.FieldAccepts = true;
        switch (field_) {
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
                opened_.view.FieldAccepts = CheckException(controls.txtException).Accepted;
                return;
            default:
                controls.Alarms[0].txtAlarm = Chance(4) ? "1E99" : "7:00:00";
                opened_.view.FieldAccepts = CheckAlarm(controls.Alarms[0].txtAlarm).Accepted;
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
            const std::string path = file.path().string();
            const auto before = Originals().find(file.path().filename().string());
            if (!loaded_.contains(path) && before != Originals().end() &&
                FileContents(path) == before->second) {
                continue;
            }
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

    /// The last answer to the question that begins so, among the boxes since `first`; none if it
    /// was not asked.
    std::optional<BoxAnswer> AnswerTo(const char* question, std::size_t first) {
        const auto& boxes = opened_.console.Outside.Boxes;
        const std::size_t given = script_.size() - boxes.Answers.size();
        std::optional<BoxAnswer> answer;
        for (std::size_t i = first; i < boxes.Shown.size(); ++i) {
            if (boxes.Shown[i].Text.starts_with(question)) {
                answer = script_.at(given + i - boxes.Shown.size());
            }
        }
        return answer;
    }

    void Close() {
        auto& boxes = opened_.console.Outside.Boxes;
        const std::size_t first = boxes.Shown.size();
        const Bytes wanted = Wanted();
        if (!QueryUnloadSetup(opened_.Context())) {
            return;
        }
        const auto saving = AnswerTo(Saving, first);
        const auto programming = AnswerTo(Programming, first);
        Refused += opened_.view.FieldAccepts ? 0 : 1;
        EXPECT_EQ(opened_.Busy(), True);
        EXPECT_NE(saving, BoxAnswer::Cancel);
        EXPECT_NE(programming, BoxAnswer::Cancel);
        EXPECT_TRUE(saving == BoxAnswer::No || InFile(wanted));
        EXPECT_TRUE(programming == BoxAnswer::No || InLogger(wanted));
        ++Closed;
        Asked += saving || programming ? 1 : 0;
        Programmed += InLogger(wanted) ? 1 : 0;
        Reopen();
    }

    /// The files that are there at each opening.
    static const std::map<std::string, std::string>& Originals() {
        static const std::map<std::string, std::string> Files{
            {"bad.set", "LoggerName=Bad\nDeadband=x\n"},
            {"odd.set", "SensorWarmupTime=61\nLoggerName=Odd\n"},
            {"good.set", "LoggerName=Good\nFlowMode=1\n[Analog]\nEngUnits=Feet\n"}};
        return Files;
    }

    void Reopen() {
        folder_ = FreshFolder("wander");
        for (const auto& [name, text] : Originals()) {
            WriteFile(JoinPath(folder_, name), text);
        }
        loaded_.clear();
        opened_.console.Outside.Network.Faults().Clear();
        opened_.console.Outside.Boxes.Shown.clear();
        opened_.view.Shown = SetupControls();
        opened_.view.FieldAccepts = true;
        opened_.dialog = SetupDialog();
        opened_.Read();
        opened_.Open();
        opening_ = Wanted();
    }

    std::mt19937 random_;
    std::string folder_;
    std::set<std::string> loaded_;  ///< paths, since the opening
    std::vector<BoxAnswer> script_;
    int field_ = 0;  ///< the one in use
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
              << user.Programmed << " with the logger programmed, " << user.Refused
              << " from a field that refuses\n";
    EXPECT_GT(user.Closed, 50);
    EXPECT_GT(user.Asked, 20);
    EXPECT_GT(user.Programmed, 10);
    EXPECT_GT(user.Refused, 0);
}

}  // namespace
