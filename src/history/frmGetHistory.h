#ifndef ORVIA_HISTORY_FRM_GET_HISTORY_H
#define ORVIA_HISTORY_FRM_GET_HISTORY_H

#include "console/logger_operations.h"
#include "history/frmHistory.h"
#include "history/history_context.h"

class QWidget;

/// "Get History" with its windows, above `parent`; the viewer shows plots by `plot`.
void GetHistoryInWindows(const OperationContext& context, const HistoryContext& history,
                         QWidget* parent, const ShowRecordPlot& plot = nullptr);

#endif  // ORVIA_HISTORY_FRM_GET_HISTORY_H
