#ifndef ORVIA_HISTORY_FRM_GET_HISTORY_H
#define ORVIA_HISTORY_FRM_GET_HISTORY_H

#include "console/logger_operations.h"
#include "history/history_context.h"

class QWidget;

/// "Get History" with its windows, above `parent`.
void GetHistoryInWindows(const OperationContext& context, const HistoryContext& history,
                         QWidget* parent);

#endif  // ORVIA_HISTORY_FRM_GET_HISTORY_H
