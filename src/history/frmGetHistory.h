#ifndef ORVIA_HISTORY_FRM_GET_HISTORY_H
#define ORVIA_HISTORY_FRM_GET_HISTORY_H

#include "app/main_view.h"
#include "app/shared_state.h"
#include "console/logger_operations.h"

class QWidget;

/// "Get History" with its windows, above `parent`.
void GetHistoryInWindows(const OperationContext& context, SharedState& state, MainView& view,
                         QWidget* parent);

#endif  // ORVIA_HISTORY_FRM_GET_HISTORY_H
