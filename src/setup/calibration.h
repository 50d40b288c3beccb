#ifndef ORVIA_SETUP_CALIBRATION_H
#define ORVIA_SETUP_CALIBRATION_H

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "setup/setup_context.h"
#include "setup/setup_validators.h"

// The wizard that takes the two calibration points of an analog channel from its sensor. One form
// serves all four steps, hidden between them.

/// What the form and the wizard share.
struct CalibrationState {
    std::int16_t Step = 0;  ///< 1 to 4; tells the validator what the field holds
    std::int16_t CalibrationChannel = 0;
    std::string Result;          ///< "Next", "Back" or "Cancel"; empty if the form was closed
    std::int16_t TickCount = 0;  ///< position in the timer's cycle of four ticks
};

/// The form, as the wizard and its timer see it.
class CalibrationForm {
 public:
    virtual ~CalibrationForm() = default;

    /// What wizard and form share, while the form is loaded.
    [[nodiscard]] virtual CalibrationState& State() = 0;
    /// The title of the form, shown as it is.
    virtual void SetCaption(const std::string& caption) = 0;
    /// What `lblCalibrate` asks in this step.
    virtual void SetQuestion(std::string_view question) = 0;
    /// The text of `txtCalibrate`, put there without validating.
    virtual void SetField(const std::string& text) = 0;
    /// The text of `txtCalibrate`, validated once a step ended with Next.
    [[nodiscard]] virtual std::string Field() const = 0;
    /// Lets `cmdBack` be pressed or not.
    virtual void EnableBack(bool on) = 0;
    /// The words on `cmdNext`.
    virtual void SetNextCaption(std::string_view caption) = 0;
    /// Has `CalibrationTick` run each quarter of a second, until it is stopped.
    virtual void StartTimer() = 0;
    /// No further ticks; nothing if the timer stands.
    virtual void StopTimer() = 0;
    /// Shows the form and returns when it has been hidden again.
    virtual void ShowModally() = 0;
};

/// The wizard's four working values, as text: two points of engineering units and raw counts. The
/// raw ones start from the ends of their range, not from the row.
struct CalibrationValues {
    std::string HighEU;
    std::string HighRaw = "65535";
    std::string LowEU;
    std::string LowRaw = "0";
};

/// Runs the four steps. True if the last one was finished; `values` are those of the steps that
/// ended with Next.
[[nodiscard]] bool RunCalibration(CalibrationForm& form, CalibrationValues& values);

/// What the form's timer reads the logger with.
struct CalibrationReader {
    const Link& link;
    FrameExchange& exchange;
    const LoggerRecord& global;  ///< its channel counts tell how a sample lies
    const SystemClock& clock;
};

/// One tick: asks for a sample, or reads the one asked for into the field. One is asked for each
/// second and read three times.
void CalibrationTick(const CalibrationReader& reader, CalibrationForm& form);

/// Validator of the form's field: engineering units in steps 1 and 3, raw counts in 2 and 4.
[[nodiscard]] FieldCheck CheckCalibration(std::string_view text, std::int16_t step);

/// Calibrates channel `channel`, 0 to 7: runs the wizard on the form that `load` gives, and writes
/// the four values into the channel's row if it was finished. The dialog's input is held meanwhile.
/// Does nothing, without a word, where the link is not free.
void Calibrate(const SetupContext& context, int channel,
               const std::function<std::unique_ptr<CalibrationForm>()>& load);

#endif  // ORVIA_SETUP_CALIBRATION_H
