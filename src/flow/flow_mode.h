#ifndef ORVIA_FLOW_FLOW_MODE_H
#define ORVIA_FLOW_FLOW_MODE_H

/// Values of `FlowMode`. Whatever lies above TableMode counts as it.
enum FlowModes { NoFlowMode, ManningMode, FlumeMode, WeirMode, TableMode };

#endif  // ORVIA_FLOW_FLOW_MODE_H
