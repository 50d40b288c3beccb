#ifndef ORVIA_CONSOLE_FOR_ALL_H
#define ORVIA_CONSOLE_FOR_ALL_H

#include "console/logger_operations.h"
#include "console/operation_log.h"

/// What the operations on all open client windows work on. `log` is also where the single
/// operations log.
struct ForAllContext {
    OperationContext operation;
    WalkLog& log;
};

// Each walks over all open windows, minimized ones too, in the order of their slots, and tells in
// the log how it went. Nothing happens while the link is not connected, or while another operation
// or a sampling mode runs. The windows may come and go meanwhile.

/// Tells that no window is open to walk over.
void TellNoClients(const OperationContext& context);

/// "Get Sample for All Client Windows".
void GetSampleForAll(const ForAllContext& context);
/// "Clear History for All Client Windows", once the operator has agreed.
void ClearHistoryForAll(const ForAllContext& context);
/// "Sync Time for All Client Windows", once the operator has agreed.
void SyncTimeForAll(const ForAllContext& context);
/// "Restart Sampling for All Client Windows", once the operator has agreed.
void RestartSamplingForAll(const ForAllContext& context);

/// "Update All Client Windows Every Minute": starts Auto Update if a logger answers, or stops it.
void ToggleAutoUpdate(const ForAllContext& context);

#endif  // ORVIA_CONSOLE_FOR_ALL_H
