#ifndef ORVIA_FLOW_FLOW_PRECISION_H
#define ORVIA_FLOW_FLOW_PRECISION_H

#include <cstdint>

#include "logger/logger_state.h"

/// A channel whose limits lie closer together than this has no range.
inline constexpr double SmallestSpan = 0.0001;

/// Works out how many decimals flow and velocity deserve over the range of channel 1, into
/// `state`; where the range is none or the sweep fails, into `global` instead, as 2.
void CalculateFlowVelPrecision(LoggerState& state, LoggerState& global);

/// Decimal places for figures up to `max` whose smallest significant step is `step`: 0 to 4.
[[nodiscard]] std::int16_t PickDecPlaces(double max, double step);

#endif  // ORVIA_FLOW_FLOW_PRECISION_H
