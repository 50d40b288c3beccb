#ifndef ORVIA_SETUP_SETUP_CHANGES_H
#define ORVIA_SETUP_SETUP_CHANGES_H

#include "common/bytes.h"
#include "setup/setup_context.h"

// Changes are told by the encoded settings images, never by the texts of controls: what encodes
// alike is alike.

/// Whether two images are the same, both whole.
[[nodiscard]] bool ImagesEqual(const Bytes& first, const Bytes& second);

/// Offers to save settings that differ from their file. True if the user wants to go on with the
/// dialog instead, the field in use refuses what it holds, or the saving failed.
[[nodiscard]] bool CheckSavedToFile(const SetupContext& context);

/// Offers to program settings that differ from the logger's. True as above.
[[nodiscard]] bool CheckProgrammed(const SetupContext& context);

/// Whether the dialog may close: not during an operation, nor with changes that the user wants to
/// keep. If so `OperationBusy` is set, for the operation that showed the dialog.
[[nodiscard]] bool QueryUnloadSetup(const SetupContext& context);

#endif  // ORVIA_SETUP_SETUP_CHANGES_H
