#ifndef ORVIA_CLIENT_FLOW_DISPLAY_H
#define ORVIA_CLIENT_FLOW_DISPLAY_H

#include <optional>

#include "client/client_panel.h"
#include "client/client_record.h"
#include "platform/host.h"

/// Fills the labels of `fraFlowMode` by the logger's flow settings; hides them all outside the
/// flow mode and while no settings are known.
void ShowFlowParameters(const ClientRecord& record, ClientPanel& panel);

/// Why the flow mode cannot show this logger, as the box that tells so; nothing if it can. Stricter
/// than the calculation of flow, which takes the first letter of the units.
[[nodiscard]] std::optional<BoxContent> FlowModeRefusal(const LoggerRecord& record);

#endif  // ORVIA_CLIENT_FLOW_DISPLAY_H
