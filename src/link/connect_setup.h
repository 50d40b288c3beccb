#ifndef ORVIA_LINK_CONNECT_SETUP_H
#define ORVIA_LINK_CONNECT_SETUP_H

#include <array>
#include <map>
#include <string>
#include <string_view>

#include "link/enumerate.h"
#include "platform/host.h"
#include "records/settings.h"

namespace comm {

/// Baud rates offered for the server radio.
inline constexpr std::array<std::string_view, 6> BaudRates{"9600",  "19200", "28800",
                                                           "38400", "57600", "115200"};

/// What the operator chose in the settings of the connection.
struct ConnectChoices {
    std::string Port;  ///< the entry of the port list
    std::string BaudRate;
    bool AutoDisconnect = false;
    std::string AddressBookPath;
};

/// What an offered port is marked with: who has it, empty if nobody does.
[[nodiscard]] std::string PortMark(int number, const std::map<int, PortUser>& used);

/// Which of the offered ports is that of the settings, from 0; the first if none is.
[[nodiscard]] int PortChoice(const Enumerate::PortList& offered, std::string_view portName);

/// Which of BaudRates is that of the settings, from 0; 38400 if none is.
[[nodiscard]] int BaudChoice(std::string_view baudRate);

/// Takes the choices into the settings. A new book that does not exist is refused with a message,
/// and nothing is taken; no book at all is fine.
[[nodiscard]] bool TakeChoices(const ConnectChoices& choices, Settings& settings,
                               MessageBoxes& boxes);

}  // namespace comm

#endif  // ORVIA_LINK_CONNECT_SETUP_H
