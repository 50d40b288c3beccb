#ifndef ORVIA_FLOW_CATALOGUES_H
#define ORVIA_FLOW_CATALOGUES_H

#include <cstdint>
#include <string>
#include <string_view>

#include "common/numbered_array.h"
#include "logger/logger_state.h"
#include "platform/host.h"

/// One record of a catalogue of primary devices.
struct FlowDeviceEntry {
    std::string Tag;           ///< upper case, at most 8 characters; the key kept in the logger
    std::string Name;          ///< shown in lists and in the client window
    std::int16_t IsTable = 0;  ///< 0 equation, 1 table
    std::string TableFile;     ///< table entries only: path as written
    double EqOffset = 0;       ///< equation entries only: A of Q = C (H + A)^B, feet and cfs
    double EqExponent = 0;     ///< B
    double EqMultiplier = 0;   ///< C
};

using FlowDeviceList = NumberedArray<FlowDeviceEntry>;

/// The devices that this installation knows, read once at the start.
struct Catalogues {
    FlowDeviceList FlumeList;
    FlowDeviceList WeirList;
};

namespace config {

/// Reads a catalogue file into `list`, lines that do not fit passed over; a missing file leaves
/// it empty. `appPath` is what relative table files stand against.
void ReadFlowDeviceList(std::string_view path, std::string_view appPath, FlowDeviceList& list);

/// Fills the working fields of `state` from the entry with that tag; True if it was resolved.
[[nodiscard]] bool FindFlowDevice(std::string_view tag, const FlowDeviceList& list,
                                  std::string_view appPath, LoggerState& state);

/// Turns the flow fields of `state` into their working form; tells the operator of a device or
/// table that is missing.
void LoadFlowDefinition(LoggerState& state, const Catalogues& catalogues, std::string_view appPath,
                        MessageBoxes& boxes);

}  // namespace config

#endif  // ORVIA_FLOW_CATALOGUES_H
