#ifndef ORVIA_SIMULATOR_CONTROL_H
#define ORVIA_SIMULATOR_CONTROL_H

#include <string>
#include <string_view>

#include "simulator/network.h"

namespace simulator {

/// What a control command brought about.
struct ControlResult {
    std::string Text;   ///< "ok", "error: ...", or the lines that were asked for
    bool Ends = false;  ///< the program shall end, which hangs the console's port up
};

/// Carries out one line of control at `now`; docs/simulator.md lists the commands.
[[nodiscard]] ControlResult Control(Network& network, std::string_view line, Microseconds now);

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_CONTROL_H
