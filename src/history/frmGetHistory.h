#ifndef ORVIA_HISTORY_FRM_GET_HISTORY_H
#define ORVIA_HISTORY_FRM_GET_HISTORY_H

#include "app/shared_state.h"
#include "console/logger_operations.h"
#include "records/main_view.h"

class QWidget;

/// "Get History" with its windows, above `parent`.
void GetHistoryInWindows(const OperationContext& context, SharedState& state, MainView& view,
                         QWidget* parent);

#endif  // ORVIA_HISTORY_FRM_GET_HISTORY_H
