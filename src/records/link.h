#ifndef ORVIA_RECORDS_LINK_H
#define ORVIA_RECORDS_LINK_H

#include <array>
#include <cstdint>
#include <string>

#include "common/flag.h"
#include "platform/host.h"
#include "records/address_book.h"
#include "records/link_listener.h"

// Values of LinkState.
inline constexpr std::uint8_t LinkDisconnected = 0;  ///< port closed
inline constexpr std::uint8_t LinkConnecting = 1;    ///< port open, radio's mode not confirmed
inline constexpr std::uint8_t LinkNormal = 2;        ///< radio passes data to the selected client
inline constexpr std::uint8_t LinkCommand = 3;       ///< radio answers commands

/// A channel that the radio was never told: "not known".
inline constexpr std::uint8_t UnknownChannel = 255;

/// State of the link. The port and the event pump belong to the host.
struct Link {
    Link(SerialPort& port, EventPump& events) : MSComm1(port), Events(events) {}

    SerialPort& MSComm1;
    EventPump& Events;
    LinkListener* Listener = nullptr;  ///< who follows what becomes of requests; may be nobody

    Flag ShuttingDown = False;  ///< last act of closing; ends every wait for bytes
    Flag CommBusy = False;      ///< one exchange is on the link
    Flag Connected = False;     ///< the server radio answered since the port settings last changed
    std::uint8_t LinkState = LinkDisconnected;
    std::uint8_t LinkStateShown = LinkDisconnected;
    std::int16_t WaitTicks = 0;   ///< countdown of the timed wait
    std::int16_t ReplyTicks = 8;  ///< ticks allowed for a reply byte
    int IdleTicks = 0;            ///< countdown to the idle limit
    /// The port was opened and not closed again: one that is closed all the same lost its device.
    Flag PortHeld = False;
    std::string PortRefusal;  ///< why the port did not open when it was last tried; empty if it did
    /// The last acknowledge was another byte: more of its kind may be on the way.
    Flag StrayInput = False;
    std::uint8_t ServerSystemID = 0;
    std::uint8_t CurrentChannel = UnknownChannel;  ///< what the radio was last told
    RadioAddress CurrentMAC = {0xFF, 0xFF, 0xFF};  ///< what the radio was last told
};

#endif  // ORVIA_RECORDS_LINK_H
