#ifndef ORVIA_CLIENT_COLUMNS_H
#define ORVIA_CLIENT_COLUMNS_H

#include "client/client_panel.h"
#include "client/client_record.h"

/// Gives the bar columns their captions and scales for `DisplayMode`, which is 3 or 4: the
/// channels of the logger, or three channels, flow and velocity. A column with nothing to show is
/// blanked.
void SetUpColumns(ClientRecord& record, ClientPanel& panel);

/// Greys what belongs to channels that the logger, once it was read, does not have.
void GreyMissingChannels(const ClientRecord& record, ClientPanel& panel);

#endif  // ORVIA_CLIENT_COLUMNS_H
