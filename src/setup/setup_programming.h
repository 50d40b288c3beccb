#ifndef ORVIA_SETUP_SETUP_PROGRAMMING_H
#define ORVIA_SETUP_SETUP_PROGRAMMING_H

#include "setup/setup_context.h"

/// "Program Settings": asks, takes the controls, writes them to the logger, reads them back, and
/// restarts sampling. Does nothing, without a word, where the logger cannot be reached.
void ProgramSettings(const SetupContext& context);

/// The same as an answer to the question on closing: nothing more is asked. False, told, when a
/// control holds no value, or the logger could not be reached or did not take the settings.
[[nodiscard]] bool ProgramBeforeClosing(const SetupContext& context);

#endif  // ORVIA_SETUP_SETUP_PROGRAMMING_H
