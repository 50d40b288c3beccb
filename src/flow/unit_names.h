#ifndef ORVIA_FLOW_UNIT_NAMES_H
#define ORVIA_FLOW_UNIT_NAMES_H

#include <string>

namespace config {

/// Name of a unit of length: 1 inch, 2 metre, 3 centimetre, any other code foot.
[[nodiscard]] std::string LengthUnitName(int code, bool plural);

/// Name of a unit of flow, 0 to 4; empty for any other code.
[[nodiscard]] std::string FlowUnitName(int code);

}  // namespace config

#endif  // ORVIA_FLOW_UNIT_NAMES_H
