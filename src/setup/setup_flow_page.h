#ifndef ORVIA_SETUP_SETUP_FLOW_PAGE_H
#define ORVIA_SETUP_SETUP_FLOW_PAGE_H

#include <cstdint>
#include <string>
#include <string_view>

#include "setup/setup_context.h"
#include "setup/setup_validators.h"

/// What can be used under a flow option.
[[nodiscard]] FlowStates FlowStatesOf(int FlowOption);

/// What the change of the flow option leads to: controls come and go, and a unit of channel 1 that
/// no flow can be worked out from is told.
void UpdateFlowOptions(const SetupContext& context);

/// Validator of the unit of channel 1, on whose unit a flow calculation depends.
[[nodiscard]] FieldCheck CheckFirstUnit(std::string_view text, std::uint8_t NumAnalogChannels,
                                        int FlowOption);

/// Asks for a table file and takes it; tells how many entries it has.
void BrowseTable(const SetupContext& context);

/// The path of a chosen table file as the logger keeps it: relative below the program's folder.
[[nodiscard]] std::string TablePathOf(std::string_view chosen, std::string_view appPath);

#endif  // ORVIA_SETUP_SETUP_FLOW_PAGE_H
