#ifndef ORVIA_SETUP_SETUP_OPERATION_H
#define ORVIA_SETUP_SETUP_OPERATION_H

#include <functional>

#include "console/logger_operations.h"

/// "Setup": reads the settings of the logger whose window is the active one, has `show` show the
/// dialog on them, and reads them again when it is closed. `show` is handed what brings the server
/// radio back to that logger. No dialog is shown for a window that was closed meanwhile.
void Setup(const OperationContext& context,
           const std::function<void(const std::function<bool()>& reselect)>& show);

#endif  // ORVIA_SETUP_SETUP_OPERATION_H
