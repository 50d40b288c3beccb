#ifndef ORVIA_SETUP_SETUP_FILING_H
#define ORVIA_SETUP_SETUP_FILING_H

#include "setup/setup_context.h"

// "Save Setup File", "Load Setup File" and the recent files. Cancelling ends them without a word.

/// Asks for a file and writes the settings of the controls to it. False when cancelled, when the
/// file is not to be overwritten, or could not be written, which is told.
[[nodiscard]] bool SaveSetupFile(const SetupContext& context);

/// Offers to save changes, asks for a file, and has the dialog show its settings. A file that is
/// none is told, and leaves the controls as they were.
void LoadSetupFile(const SetupContext& context);

/// Loads with recent file `place` chosen already, 0 to 3. Nothing if it is gone.
void LoadRecentFile(const SetupContext& context, int place);

#endif  // ORVIA_SETUP_SETUP_FILING_H
