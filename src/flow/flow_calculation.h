#ifndef ORVIA_FLOW_FLOW_CALCULATION_H
#define ORVIA_FLOW_FLOW_CALCULATION_H

#include <cstdint>

#include "logger/logger_state.h"

/// Flow in `FlowUnits` at a level in the units of channel 1; `velocity` in `VelUnits` takes the
/// mean velocity in Manning's mode, else 0. Whatever cannot be computed is 0 for both.
[[nodiscard]] double CalculateFlow(const LoggerRecord& record, const FlowTable& table, double level,
                                   double& velocity);

/// Works out how many decimals flow and velocity deserve over the range of channel 1, into
/// `state`; where the range is none or the sweep fails, into `global` instead, as 2.
void CalculateFlowVelPrecision(LoggerState& state, LoggerState& global);

/// Decimal places for figures up to `max` whose smallest significant step is `step`: 0 to 4.
[[nodiscard]] std::int16_t PickDecPlaces(double max, double step);

#endif  // ORVIA_FLOW_FLOW_CALCULATION_H
