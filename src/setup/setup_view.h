#ifndef ORVIA_SETUP_SETUP_VIEW_H
#define ORVIA_SETUP_SETUP_VIEW_H

#include <string>
#include <string_view>

#include "records/main_view.h"
#include "setup/setup_controls.h"

struct CalibrationValues;

/// Which controls of the flow page can be used.
struct FlowStates {
    bool Flume = false;     ///< cmbFlume
    bool Weir = false;      ///< cmbWeir
    bool Table = false;     ///< txtTableFile, cmdBrowse
    bool Flow = false;      ///< units, top and offset
    bool Mannings = false;  ///< the group of Manning's equation
    bool operator==(const FlowStates&) const = default;
};

/// What procedures of the set-up tell their dialog, and ask of it.
class SetupView {
 public:
    virtual ~SetupView() = default;

    /// What the controls hold now, validated or not.
    [[nodiscard]] virtual SetupControls Controls() const = 0;
    /// Has every control show its value, without any of what a change by the user leads to.
    virtual void ShowControls(const SetupControls& controls) = 0;
    /// Runs the validator of the field that the user is in, or left without validating. False if
    /// it refuses, told where the field tells its refusals; the focus is then there.
    [[nodiscard]] virtual bool ValidateField() = 0;
    /// Lets the controls of the flow page be used or not.
    virtual void EnableFlow(const FlowStates& states) = 0;
    /// Shows the path of a table file that was chosen.
    virtual void SetTableFile(const std::string& path) = 0;
    /// Writes what a calibration found into the row of a channel.
    virtual void SetCalibration(int channel, const CalibrationValues& values) = 0;

    /// The time of an alarm can be set or not.
    virtual void EnableAlarm(int alarm, bool on) = 0;
    /// Name of recent file `place`, 0 to 3, in the menu.
    virtual void SetRecentFile(int place, std::string_view name) = 0;

    /// The pointer over the dialog.
    virtual void SetPointer(Pointer pointer) = 0;
    /// Lets `cmdCancel` be pressed or not.
    virtual void EnableCancel(bool on) = 0;
    /// Gives `cmdCancel` the focus.
    virtual void FocusCancel() = 0;
    /// Keeps the user from changing anything while the dialog waits for the logger.
    virtual void HoldInput(bool held) = 0;
};

#endif  // ORVIA_SETUP_SETUP_VIEW_H
