#ifndef ORVIA_SIMULATOR_SIM_PROGRAM_LOOP_H
#define ORVIA_SIMULATOR_SIM_PROGRAM_LOOP_H

#include "simulator/network.h"
#include "simulator/sim_program_files.h"
#include "simulator/sim_program_terminal.h"

namespace simulator {

/// From now on SIGINT and SIGTERM end the loop, at a moment that suits it.
void CatchEndingSignals();

/// Serves the network on the terminal until a signal or a control command ends it. Sleeps whenever
/// nothing is due.
void Serve(Network& network, Terminal& terminal, ControlInput& control);

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_SIM_PROGRAM_LOOP_H
