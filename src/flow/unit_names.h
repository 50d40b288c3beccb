#ifndef ORVIA_FLOW_UNIT_NAMES_H
#define ORVIA_FLOW_UNIT_NAMES_H

#include <string>
#include <string_view>

namespace config {

inline constexpr double MetersPerFoot = 0.3048;

/// Name of a unit of length: 1 inch, 2 metre, 3 centimetre, any other code foot.
[[nodiscard]] std::string LengthUnitName(int code, bool plural);

/// Name of a unit of flow, 0 to 4; empty for any other code.
[[nodiscard]] std::string FlowUnitName(int code);

/// Whether a level in this unit may be shown as flow: "inches", "feet", "meters" or "cm", in any
/// case, with or without blanks around it. The calculation itself asks less: see LevelUnitCode.
[[nodiscard]] bool IsFlowUnit(std::string_view unit);

/// Code of a unit of length from the first letter of its name, in any case and behind blanks:
/// "i" 1, "m" 2, "c" 3, anything else and nothing 0 (feet).
[[nodiscard]] int LevelUnitCode(std::string_view unit);

/// A length in feet; the codes are those of LengthUnitName. A length that no double holds in feet
/// comes out infinite.
[[nodiscard]] double LengthToFeet(double length, int code);

}  // namespace config

#endif  // ORVIA_FLOW_UNIT_NAMES_H
