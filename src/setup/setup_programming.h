#ifndef ORVIA_SETUP_SETUP_PROGRAMMING_H
#define ORVIA_SETUP_SETUP_PROGRAMMING_H

#include "setup/setup_context.h"

/// "Program Settings": asks, takes the controls, writes them to the logger, reads them back, and
/// restarts sampling. Does nothing, without a word, where the logger cannot be reached.
void ProgramSettings(const SetupContext& context);

/// The same as an answer to the question on closing: the controls have been taken, nothing more is
/// asked. False, told, when the logger could not be reached or did not take the settings.
[[nodiscard]] bool ProgramBeforeClosing(const SetupContext& context, bool controlsTaken);

#endif  // ORVIA_SETUP_SETUP_PROGRAMMING_H
