#ifndef ORVIA_FLOW_FLOW_DEFINITION_H
#define ORVIA_FLOW_FLOW_DEFINITION_H

#include <string_view>

#include "flow/catalogues.h"
#include "logger/logger_state.h"
#include "platform/host.h"

namespace config {

/// Fills the working fields of `state` from the entry with that tag, compared exactly; True if it
/// was resolved. The last equation entry of a tag holds, but its first table entry ends the
/// search; an unknown tag leaves the name.
[[nodiscard]] bool FindFlowDevice(std::string_view tag, const FlowDeviceList& list,
                                  std::string_view appPath, LoggerState& state);

/// Turns the flow fields of `state` into their working form; tells the operator of a device or
/// table that is missing. Modes 0 and 1 only lose their table.
void LoadFlowDefinition(LoggerState& state, const Catalogues& catalogues, std::string_view appPath,
                        MessageBoxes& boxes);

}  // namespace config

#endif  // ORVIA_FLOW_FLOW_DEFINITION_H
