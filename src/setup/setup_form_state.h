#ifndef ORVIA_SETUP_SETUP_FORM_STATE_H
#define ORVIA_SETUP_SETUP_FORM_STATE_H

#include "setup/setup_context.h"

// Life of the dialog between its opening and its closing.

/// Opens the dialog on the current logger: takes the images that changes are told by, shows the
/// settings, and frees the link for the dialog's own commands.
void OpenSetup(const SetupContext& context);

/// Shows the state after a file was loaded. False, with every control as it was, if one of the
/// general page cannot show its value.
[[nodiscard]] bool ShowLoadedState(const SetupContext& context);

/// "Initialize to Default Values": asks, and shows the defaults.
void InitializeSetup(const SetupContext& context);

/// What the dialog's timer keeps in step: the times of the alarms and the recent files.
void SetupTick(const SetupContext& context);

#endif  // ORVIA_SETUP_SETUP_FORM_STATE_H
