#ifndef ORVIA_CONSOLE_LOGGER_ORDERS_H
#define ORVIA_CONSOLE_LOGGER_ORDERS_H

#include <string>

#include "console/logger_operations.h"
#include "console/operation_shape.h"
#include "platform/host.h"

// Operations that order a logger to do something. Each acts on the logger whose window is the
// active one, under the same guard as the operations that read.

/// "Sync Time": sets the logger's clock to the computer's, once the operator has agreed.
void SyncTime(const OperationContext& context);

/// "Clear History": erases the logger's history, once the operator has agreed.
void ClearHistory(const OperationContext& context);

/// "Reset Pulse Accumulators": sets the logger's pulse counts back, then reads a sample.
void ResetPulseAccumulators(const OperationContext& context);

/// What these do with a window whose radio is selected; True if the logger carried it out. Under a
/// walk they ask nothing.
[[nodiscard]] bool SyncTimeOf(const OperationContext& context, const Target& target);
[[nodiscard]] bool ClearHistoryOf(const OperationContext& context, const Target& target);
/// Restarts the logger's sampling: no button or row of its own, only the walk offers it.
[[nodiscard]] bool cmdStartup_Click(const OperationContext& context, const Target& target);

/// A moment as SetLoggerTime takes it: "11/15/26 08:30:00".
[[nodiscard]] std::string LoggerTimeText(const LocalTime& time);

#endif  // ORVIA_CONSOLE_LOGGER_ORDERS_H
