#ifndef ORVIA_LINK_SERVER_RADIO_H
#define ORVIA_LINK_SERVER_RADIO_H

#include <cstdint>

#include "platform/host.h"
#include "records/link.h"
#include "records/main_view.h"
#include "records/operation_status.h"
#include "records/settings.h"

// The server radio answers commands itself in command mode; in normal mode all bytes pass
// through the air to the client radio that it addresses. docs/server-radio.md has the bytes.

namespace comm {

/// System id of a radio that gave none.
inline constexpr std::uint8_t NoSystemID = 255;

/// Brings the radio to command mode, up to three attempts; LinkState tells how that ended.
[[nodiscard]] bool EnterCommandMode(Link& link);

/// Brings the radio to normal mode. Its answer stays in the input, for the next purge. True.
bool LeaveCommandMode(Link& link);

/// The radio's system identifier, NoSystemID when its answer is wrong. In command mode.
[[nodiscard]] std::uint8_t ReadServerSystemID(Link& link);

/// Takes the link down, with the message that the server radio does not answer.
void LinkDown(Link& link, MessageBoxes& boxes);

// These three take the radio to command mode if it is not there. False when another exchange is
// on the link, and after a radio that does not answer or answers wrong, which closes the port
// with a message. In the first two an answer too short to look at is a Fault instead.

/// Tunes the radio.
[[nodiscard]] bool SetServerChannel(Link& link, MessageBoxes& boxes, std::uint8_t channel);
/// Addresses a client radio.
[[nodiscard]] bool SetServerMAC(Link& link, MessageBoxes& boxes, const RadioAddress& mac);
/// Reads the strength of the last packet from the air, 0 strong to 255 weak, and goes back to
/// normal mode.
[[nodiscard]] bool ReadRadioSignal(Link& link, MessageBoxes& boxes, std::uint8_t& value);

/// Where a procedure that may open the port finds what it needs.
struct LinkContext {
    Link& link;
    const Settings& settings;
    MainView& view;
    MessageBoxes& boxes;
    OperationStatus& status;
    PortInquiry& inquiry;  ///< why a port does not open
    Registry& registry;    ///< which ports there are
};

/// Brings the radio to normal mode on `client`: the call that every operation makes before it
/// speaks to a logger. Sends nothing when the radio is there already; opens a port that the idle
/// limit closed. False when that failed, of which the operator has been told, while another
/// exchange is on the link, or at the end of the program.
[[nodiscard]] bool SelectClient(const LinkContext& context, const ClientRadio& client);

/// The message of a port that will not open; below it, why, as far as the system tells.
[[nodiscard]] BoxContent OpenPortFailure(const LinkContext& context);

}  // namespace comm

#endif  // ORVIA_LINK_SERVER_RADIO_H
