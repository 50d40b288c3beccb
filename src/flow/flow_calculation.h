#ifndef ORVIA_FLOW_FLOW_CALCULATION_H
#define ORVIA_FLOW_FLOW_CALCULATION_H

#include "logger/logger_state.h"

/// Flow in `FlowUnits` at a level in the units of channel 1; `velocity` in `VelUnits` takes the
/// mean velocity in Manning's mode, else 0. Whatever cannot be computed is 0 for both.
[[nodiscard]] double CalculateFlow(const LoggerRecord& record, const FlowTable& table, double level,
                                   double& velocity);

#endif  // ORVIA_FLOW_FLOW_CALCULATION_H
