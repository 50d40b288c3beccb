#include "setup/calibration.h"

#include <deque>

#include "setup/setup_fixture.h"

namespace {

using setup_testing::SetupTest;
using testing_support::Millisecond;
using testing_support::Second;

/// What a showing of the form looked like.
struct Showing {
    int Step = 0;
    std::string Question;
    std::string Field;
    bool Back = false;
    std::string Next;
    bool Timer = false;
    int TickCount = -1;
};

Showing AtDesign() {
    Showing showing;
    showing.Next = "&Next >";
    return showing;
}

/// What is left of a form when the wizard has unloaded it.
struct FormRecord {
    std::string Caption;
    std::vector<Showing> Shown;
};

/// The wizard's form without a screen. Each showing runs `Acts.front()`, which stands for the user.
class FakeCalibrationForm final : public CalibrationForm {
 public:
    explicit FakeCalibrationForm(FormRecord& record) : record_(record) {}

    CalibrationState& State() override { return State_; }
    void SetCaption(const std::string& caption) override { record_.Caption = caption; }
    void SetQuestion(std::string_view question) override { Current.Question = question; }
    void SetField(const std::string& text) override { Text = text; }
    std::string Field() const override { return Text; }
    void EnableBack(bool on) override { Current.Back = on; }
    void SetNextCaption(std::string_view caption) override { Current.Next = caption; }
    void StartTimer() override { Current.Timer = true; }
    void StopTimer() override { Current.Timer = false; }
    void ShowModally() override {
        Current.Step = State_.Step;
        Current.Field = Text;
        Current.TickCount = State_.TickCount;
        EXPECT_EQ(State_.Result, "");
        record_.Shown.push_back(Current);
        if (!Acts.empty()) {
            auto act = Acts.front();
            Acts.pop_front();
            act(*this);
        }
    }

    CalibrationState State_;
    std::string Text;
    Showing Current = AtDesign();
    std::deque<std::function<void(FakeCalibrationForm&)>> Acts;

 private:
    FormRecord& record_;
};

/// The user types and presses a button; an empty text leaves the field.
std::function<void(FakeCalibrationForm&)> Press(const std::string& button,
                                                const std::string& typed = "") {
    return [button, typed](FakeCalibrationForm& form) {
        if (!typed.empty()) {
            form.Text = typed;
        }
        form.State_.Result = button;
    };
}

class CalibrationWizard : public SetupTest {
 protected:
    template <typename... Acts>
    void Run(int channel, Acts... acts) {
        record_ = {};
        Calibrate(opened.Context(), channel, [&] {
            ++Loaded;
            auto form = std::make_unique<FakeCalibrationForm>(record_);
            (form->Acts.push_back(acts), ...);
            return form;
        });
    }

    int Loaded = 0;
    FormRecord record_;
    std::vector<Showing>& Shown = record_.Shown;
    std::string& Caption = record_.Caption;
};

TEST_F(CalibrationWizard, FourStepsWriteFourFields) {
    AnalogRow& before = controls.Analog[1];
    before.txtHighEU = "42.5";
    before.txtHighRaw = "61000";
    before.txtLowEU = "-3";
    before.txtLowRaw = "7";
    const AnalogRow other = controls.Analog[0];
    Run(1, Press("Next", "90"), Press("Next", "60000"), Press("Next", "-5"), Press("Next", "12"));
    const AnalogRow& row = controls.Analog[1];
    EXPECT_EQ(row.txtHighEU, "90");
    EXPECT_EQ(row.txtHighRaw, "60000");
    EXPECT_EQ(row.txtLowEU, "-5");
    EXPECT_EQ(row.txtLowRaw, "12");
    EXPECT_EQ(controls.Analog[0], other);
    EXPECT_EQ(opened.Busy(), False);
    ASSERT_EQ(Shown.size(), 4U);
    const char* settle = "Press Next when the value is settled:";
    EXPECT_EQ(Shown[0].Question, "Enter the highest value in engineering units:");
    EXPECT_EQ(Shown[1].Question, settle);
    EXPECT_EQ(Shown[2].Question, "Enter the lowest value in engineering units:");
    EXPECT_EQ(Shown[3].Question, settle);
    for (std::size_t i = 0; i < Shown.size(); ++i) {
        EXPECT_EQ(Shown[i].Step, static_cast<int>(i) + 1);
        EXPECT_EQ(Shown[i].Back, i != 0);
        EXPECT_EQ(Shown[i].Timer, i % 2 == 1);
        EXPECT_EQ(Shown[i].TickCount, 0);
    }
    EXPECT_EQ(Shown[0].Field, "42.5");
    EXPECT_EQ(Shown[1].Field, "65535") << "not the raw value of the row";
    EXPECT_EQ(Shown[2].Field, "-3");
    EXPECT_EQ(Shown[3].Field, "0") << "nor this one";
}

TEST_F(CalibrationWizard, TheCaptionNamesChannelAndUnit) {
    controls.Analog[2].cmbEU = " Feet ";
    Run(2);
    EXPECT_EQ(Caption, "Calibrate Channel 3 (Feet)");
}

TEST_F(CalibrationWizard, NextTurnsIntoFinishAndBack) {
    Run(0, Press("Next"), Press("Next"), Press("Next"), Press("Back"), Press("Back"),
        Press("Back"));
    ASSERT_EQ(Shown.size(), 7U);
    const std::vector<std::string> captions = {"&Next >", "&Next >", "Next", "Finish",
                                               "Next",    "Next",    "Next"};
    const std::vector<int> steps = {1, 2, 3, 4, 3, 2, 1};
    for (std::size_t i = 0; i < Shown.size(); ++i) {
        EXPECT_EQ(Shown[i].Next, captions[i]) << i;
        EXPECT_EQ(Shown[i].Step, steps[i]);
    }
}

TEST_F(CalibrationWizard, GoingBackKeepsWhatEarlierStepsTook) {
    Run(0, Press("Next", "90"), Press("Back", "61000"), Press("Next"), Press("Next"),
        Press("Next", "1"), Press("Next"));
    ASSERT_EQ(Shown.size(), 6U);
    EXPECT_EQ(Shown[2].Field, "90") << "kept";
    EXPECT_EQ(Shown[3].Field, "65535") << "a reading that was left by Back is lost";
    EXPECT_EQ(controls.Analog[0].txtHighRaw, "65535") << "Next with an untouched field";
}

TEST_F(CalibrationWizard, CancelAtStep4LeavesTheRow) {
    const SetupControls before = controls;
    Run(0, Press("Next", "90"), Press("Next", "1"), Press("Next", "2"), Press("Cancel", "3"));
    EXPECT_EQ(controls, before);
    EXPECT_EQ(Shown.size(), 4U);
    EXPECT_EQ(opened.Busy(), False);
}

TEST_F(CalibrationWizard, TheCloseBoxEndsItAtEveryStep) {
    const SetupControls before = controls;
    Run(0, Press(""));
    Run(0, Press("Next", "1"), Press(""));
    Run(0, Press("Next", "1"), Press("Next", "1"), Press(""));
    Run(0, Press("Next", "1"), Press("Next", "1"), Press("Next", "1"), Press(""));
    EXPECT_EQ(controls, before);
    EXPECT_EQ(opened.Busy(), False);
}

TEST_F(CalibrationWizard, BackWhereThereIsNoneEndsIt) {
    Run(0, Press("Back"));
    EXPECT_EQ(Shown.size(), 1U);
}

TEST_F(CalibrationWizard, WithoutALoggerNothingIsLoaded) {
    opened.console.State.LinkRecord.Connected = False;
    Run(0);
    opened.console.State.LinkRecord.Connected = True;
    opened.console.State.SamplingRecord.ContinuousMode = AutoUpdateRunning;
    Run(0);
    opened.console.State.SamplingRecord.ContinuousMode = SamplingIdle;
    opened.Busy() = True;
    Run(0);
    EXPECT_EQ(Loaded, 0);
    EXPECT_EQ(opened.Busy(), True);
    ExpectNoBox();
}

TEST_F(CalibrationWizard, TheDialogCannotCloseMeanwhile) {
    bool closes = true;
    Run(0, [&](FakeCalibrationForm&) { closes = QueryUnloadSetup(opened.Context()); });
    EXPECT_FALSE(closes);
}

TEST_F(CalibrationWizard, TheDialogsInputIsHeldUntilItEnds) {
    bool held = false;
    const auto look = [&](FakeCalibrationForm& form) {
        held = view.Held;
        form.State_.Result = "Next";
    };
    Run(0, look, Press("Next"), Press("Next"), Press("Next"));
    EXPECT_TRUE(held);
    EXPECT_FALSE(view.Held);
    Run(0, Press("Cancel"));
    EXPECT_FALSE(view.Held);
}

TEST_F(CalibrationWizard, APortThatIsOpenedAgainIsWaitedForUnderTheHourglass) {
    opened.console.Outside.Time.Run(301 * Second);
    Pointer shape = Pointer::Normal;
    bool held = false;
    opened.console.Outside.Time.In(100 * Millisecond, [&] {
        shape = view.Shape;
        held = view.Held;
    });
    Run(0, Press("Cancel"));
    EXPECT_EQ(shape, Pointer::Hourglass);
    EXPECT_TRUE(held);
    EXPECT_EQ(view.Shape, Pointer::Normal);
    EXPECT_EQ(Loaded, 1);
}

TEST_F(CalibrationWizard, APortThatWillNotOpenLetsGoOfTheDialog) {
    opened.console.Outside.Time.Run(301 * Second);
    opened.console.Outside.Port.Missing.insert(1);
    opened.console.State.LinkRecord.CurrentChannel = UnknownChannel;
    Run(0);
    EXPECT_EQ(Loaded, 0);
    EXPECT_FALSE(view.Held);
    EXPECT_EQ(view.Shape, Pointer::Normal);
    EXPECT_EQ(opened.Busy(), False);
}

TEST_F(CalibrationWizard, APortThatTheIdleLimitClosedIsOpenedAgain) {
    opened.console.Outside.Time.Run(301 * Second);
    Run(0);
    EXPECT_EQ(Loaded, 1);
    EXPECT_TRUE(opened.console.Outside.Port.PortOpen());
}

// ----- the live readings

class CalibrationReadings : public SetupTest {
 protected:
    CalibrationReadings() {
        form.State_.CalibrationChannel = 1;
        form.Text = "before";
        opened.console.Outside.Time.Run(Second);
        network().ClearRecord();
    }

    void Tick() {
        SharedState& state = opened.console.State;
        CalibrationTick({.link = state.LinkRecord,
                         .exchange = state.Exchange,
                         .global = state.Logger,
                         .clock = state.Outside.Clock},
                        form);
    }
    /// A tick each quarter of a second, until `ticks` of them.
    void Ticks(int ticks) {
        for (int i = 0; i < ticks; ++i) {
            opened.console.Outside.Time.Run(250 * Millisecond);
            Tick();
        }
    }
    simulator::Network& network() { return opened.console.Outside.Network; }
    std::vector<int> Codes() {
        std::vector<int> codes;
        for (const auto& request : network().RequestsTo(opened.Logger())) {
            codes.push_back(request.front());
        }
        return codes;
    }
    std::string RawNow(std::size_t channel) {
        return std::to_string(opened.Logger().RawCount(channel, opened.console.Outside.Time.Now()));
    }

    FormRecord record;
    FakeCalibrationForm form{record};
};

TEST_F(CalibrationReadings, OneSampleIsRequestedAndReadThreeTimes) {
    Ticks(8);
    EXPECT_EQ(Codes(), (std::vector<int>{9, 0x0A, 0x0A, 0x0A, 9, 0x0A, 0x0A, 0x0A}));
    EXPECT_EQ(network().RequestsTo(opened.Logger()).front(), (simulator::Bytes{9, 1}));
}

TEST_F(CalibrationReadings, TheFieldShowsTheChannelsRawReading) {
    Ticks(1);
    EXPECT_EQ(form.Text, "before") << "the first tick only asks";
    Ticks(1);
    EXPECT_EQ(form.Text, RawNow(1));
    form.State_.CalibrationChannel = 2;
    Ticks(1);
    EXPECT_EQ(form.Text, RawNow(2)) << "the last channel of the logger";
}

TEST_F(CalibrationReadings, ALoggerWithoutASampleLeavesTheField) {
    opened.Logger().Answers(0x0A, simulator::Answer{{simulator::Acknowledge, 0xFD}, {}, {}});
    Ticks(4);
    EXPECT_EQ(form.Text, "before");
    EXPECT_EQ(form.State_.TickCount, 0) << "the cycle goes on";
    Ticks(1);
    EXPECT_EQ(form.State_.TickCount, 1);
}

TEST_F(CalibrationReadings, AFailedExchangeLeavesTheField) {
    opened.Logger().Silence();
    Ticks(4);
    EXPECT_EQ(form.Text, "before");
    opened.Logger().Wake();
    Ticks(4);
    EXPECT_EQ(form.Text, RawNow(1));
}

TEST_F(CalibrationReadings, WithoutALoggerATickDoesNothing) {
    opened.console.State.LinkRecord.Connected = False;
    Ticks(3);
    EXPECT_TRUE(Codes().empty());
    EXPECT_EQ(form.State_.TickCount, 0);
}

TEST_F(CalibrationReadings, AReadingBehindNextDoesNotReplaceWhatWasTaken) {
    for (const std::string pressed : {"", "Next"}) {
        form.Text = "taken";
        form.State_ = {};
        form.State_.CalibrationChannel = 1;
        Ticks(1);
        opened.console.Outside.Time.Run(250 * Millisecond);
        const auto start = opened.console.Outside.Time.Now();
        opened.console.Outside.Time.In(5 * Millisecond, [&] { form.State_.Result = pressed; });
        Tick();
        EXPECT_GT(opened.console.Outside.Time.Now() - start, 5 * Millisecond)
            << "the exchange went on behind the press";
        EXPECT_EQ(form.Text, pressed.empty() ? RawNow(1) : "taken");
    }
}

TEST_F(CalibrationReadings, ChannelCountsThatNoLoggerHasLeaveTheField) {
    opened.Global().NumAnalogChannels = 0;
    Ticks(4);
    EXPECT_EQ(form.Text, "before");
}

TEST_F(CalibrationReadings, TheEndOfTheProgramEndsTheTick) {
    opened.Logger().Silence();
    opened.console.State.LinkRecord.ShuttingDown = True;
    const auto start = opened.console.Outside.Time.Now();
    Tick();
    EXPECT_LT(opened.console.Outside.Time.Now() - start, Second);
}

// ----- the validator

struct Number {
    std::int16_t Step;
    const char* Typed;
    const char* Becomes;  ///< null: refused
};

class CalibrationNumbers : public ::testing::TestWithParam<Number> {};

TEST_P(CalibrationNumbers, AreTakenOrRefusedWithAWarning) {
    const FieldCheck check = CheckCalibration(GetParam().Typed, GetParam().Step);
    if (GetParam().Becomes != nullptr) {
        EXPECT_TRUE(check.Accepted);
        EXPECT_EQ(check.Text, GetParam().Becomes);
        EXPECT_FALSE(check.Box.has_value());
        return;
    }
    EXPECT_FALSE(check.Accepted);
    EXPECT_FALSE(check.Text.has_value());
    ASSERT_TRUE(check.Box.has_value());
    EXPECT_EQ(check.Box->Text,
              GetParam().Step % 2 == 1
                  ? "Value must be a floating point number in the range -999999 to 999999!"
                  : "Value must be an integer between 0 and 65535!");
    EXPECT_EQ(check.Box->Title, "Bad Number");
    EXPECT_EQ(check.Box->Icon, BoxIcon::Exclamation);
    EXPECT_EQ(check.Box->Buttons, BoxButtons::Ok);
}

INSTANTIATE_TEST_SUITE_P(Typed, CalibrationNumbers,
                         ::testing::Values(Number{1, "1000000", nullptr},
                                           Number{1, "-1000000", nullptr},
                                           Number{1, "999999.4", "999999"},
                                           Number{1, "abc", nullptr}, Number{3, "", nullptr},
                                           Number{3, "0.0140000001", "0.014"},
                                           Number{3, "1,5", nullptr}, Number{2, "70000", nullptr},
                                           Number{2, "-1", nullptr}, Number{2, "65535", "65535"},
                                           Number{4, "1.5", "2"}, Number{4, "x", nullptr}));

}  // namespace
