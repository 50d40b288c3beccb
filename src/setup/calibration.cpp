#include "setup/calibration.h"

#include <array>
#include <optional>

#include "common/fault.h"
#include "common/number_text.h"
#include "common/text.h"
#include "link/busy_guard.h"
#include "logger/commands.h"
#include "setup/input_held.h"

namespace {

constexpr std::int16_t LastTick = 3;

struct StepPlan {
    std::string_view Question;
    std::string CalibrationValues::*Value;
    bool ReadsLogger;
    std::string_view NextCaption;  ///< empty: stays as it is
};

constexpr std::string_view SettleQuestion = "Press Next when the value is settled:";

constexpr std::array<StepPlan, 4> Plans{
    {{"Enter the highest value in engineering units:", &CalibrationValues::HighEU, false, ""},
     {SettleQuestion, &CalibrationValues::HighRaw, true, ""},
     {"Enter the lowest value in engineering units:", &CalibrationValues::LowEU, false, "Next"},
     {SettleQuestion, &CalibrationValues::LowRaw, true, "Finish"}}};

/// Shows the form for one step.
void ShowStep(CalibrationForm& form, const StepPlan& plan, const std::string& value) {
    CalibrationState& state = form.State();
    state.Result.clear();
    state.TickCount = 0;
    form.SetQuestion(plan.Question);
    form.SetField(value);
    form.EnableBack(state.Step > 1);
    if (!plan.NextCaption.empty()) {
        form.SetNextCaption(plan.NextCaption);
    }
    if (plan.ReadsLogger) {
        form.StartTimer();
    }
    form.ShowModally();
    form.StopTimer();
    state.TickCount = 0;
}

BoxContent BadNumber(std::string_view text) {
    return {.Text = std::string(text), .Title = "Bad Number", .Icon = BoxIcon::Exclamation};
}

/// The reading of the sample asked for, of `channel`; nothing if it did not come.
std::optional<std::int32_t> ReadRaw(const CalibrationReader& reader, int channel) {
    DataPoint point;
    const auto result = cmd::ReadSample(reader.exchange, reader.global, reader.clock, point);
    if (result != cmd::SampleResult::Read) {
        return std::nullopt;
    }
    return point.Raw.at(static_cast<std::size_t>(channel));
}

void ReadIntoField(const CalibrationReader& reader, CalibrationForm& form) {
    const auto raw = ReadRaw(reader, form.State().CalibrationChannel);
    // A button pressed during the exchange took the value that stood there.
    if (raw && form.State().Result.empty()) {
        form.SetField(IntegerToText(*raw));
    }
}

FieldCheck CheckEngineering(std::string_view text) {
    const std::optional<double> value = WholeNumber(text);
    if (!value || *value <= -FloatLimit || *value >= FloatLimit) {
        return {false, std::nullopt,
                BadNumber("Value must be a floating point number in the range -999999 to "
                          "999999!")};
    }
    return {true, Float24Text(*value), std::nullopt};
}

FieldCheck CheckRawCount(std::string_view text) {
    FieldCheck check = CheckRaw(text);
    if (!check.Accepted) {
        check.Box = BadNumber("Value must be an integer between 0 and 65535!");
    }
    return check;
}

/// Opens the port again if the idle limit closed it; false if the logger stays out of reach, told.
bool ReachLogger(const SetupContext& context) {
    if (context.link.LinkState != LinkDisconnected) {
        return true;
    }
    context.view.SetPointer(Pointer::Hourglass);
    const bool reached = context.reselect();
    context.view.SetPointer(Pointer::Normal);
    return reached;
}

}  // namespace

bool RunCalibration(CalibrationForm& form, CalibrationValues& values) {
    CalibrationState& state = form.State();
    state.Step = 1;
    while (state.Step >= 1 && state.Step <= static_cast<int>(Plans.size())) {
        const StepPlan& plan = Plans.at(static_cast<std::size_t>(state.Step - 1));
        ShowStep(form, plan, values.*plan.Value);
        if (state.Result == "Next") {
            values.*plan.Value = form.Field();
            ++state.Step;
        } else if (state.Result == "Back") {
            --state.Step;
        } else {
            return false;
        }
    }
    return state.Step > 1;
}

void CalibrationTick(const CalibrationReader& reader, CalibrationForm& form) {
    if (reader.link.Connected == False) {
        return;
    }
    std::int16_t& TickCount = form.State().TickCount;
    try {
        if (TickCount == 0) {
            TickCount = 1;
            cmd::RequestSample(reader.exchange, cmd::SampleNow);
        } else {
            ++TickCount;
            ReadIntoField(reader, form);
        }
    } catch (const Fault&) {
        // The field keeps the reading that it has, as after any failed exchange.
    }
    if (TickCount > LastTick) {
        TickCount = 0;
    }
}

FieldCheck CheckCalibration(std::string_view text, std::int16_t step) {
    return step == 1 || step == 3 ? CheckEngineering(text) : CheckRawCount(text);
}

void Calibrate(const SetupContext& context, int channel,
               const std::function<std::unique_ptr<CalibrationForm>()>& load) {
    if (!LoggerIsFree(context)) {
        return;
    }
    const BusyGuard busy(context.operations.OperationBusy);
    // Between two steps no form stands before the dialog.
    const InputHeld held(context.view);
    if (!ReachLogger(context)) {
        return;
    }
    const auto form = load();
    const AnalogRow row = context.view.Controls().Analog.at(static_cast<std::size_t>(channel));
    CalibrationValues values{.HighEU = row.txtHighEU, .LowEU = row.txtLowEU};
    form->State().CalibrationChannel = static_cast<std::int16_t>(channel);
    form->SetCaption("Calibrate Channel " + IntegerToText(channel + 1) + " (" +
                     std::string(Trim(row.cmbEU)) + ")");
    const std::string name = "hannel " + IntegerToText(channel + 1);
    context.status.Doing("Calibrating c" + name);
    const bool finished = RunCalibration(*form, values);
    if (finished) {
        context.view.SetCalibration(channel, values);
    }
    context.status.Came("C" + name + (finished ? " calibrated" : " was not calibrated"), finished);
}
