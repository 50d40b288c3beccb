#ifndef ORVIA_ARCHIVE_FLOW_DEVICE_TEXT_H
#define ORVIA_ARCHIVE_FLOW_DEVICE_TEXT_H

#include <string>

#include "logger/logger_state.h"

/// The flow device of a logger and its parameters in one line, in the words of its window:
/// "Manning's Equation, Roughness 0.014, Slope 1 %, Pipe Diameter 1 Foot, Level Offset 0 Feet";
/// "Flume, Parshall 1, Level Offset 0 Feet". Empty without flow.
[[nodiscard]] std::string FlowDeviceText(const LoggerRecord& logger);

#endif  // ORVIA_ARCHIVE_FLOW_DEVICE_TEXT_H
