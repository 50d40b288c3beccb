#ifndef ORVIA_SETUP_SETUP_TRANSFER_H
#define ORVIA_SETUP_SETUP_TRANSFER_H

#include "flow/catalogues.h"
#include "logger/logger_state.h"
#include "setup/setup_controls.h"

// Between the settings of a logger and the controls of the dialog. The two ways are no mirror
// images: what a control cannot show comes back as what it can.

/// Has the controls show the settings; a control that refuses a value keeps what it had. False if
/// one on the general page did, or the name of one is beyond a number.
[[nodiscard]] bool StateToForm(const LoggerRecord& global, const Catalogues& catalogues,
                               SetupControls& controls);

/// Takes the settings from the controls, in order. A list without a selection leaves its field as
/// it was, and so does a channel that the logger does not have. False at the first value that no
/// field could hold, with the fields behind it untouched.
[[nodiscard]] bool FormToState(const SetupControls& controls, const Catalogues& catalogues,
                               LoggerRecord& global);

#endif  // ORVIA_SETUP_SETUP_TRANSFER_H
