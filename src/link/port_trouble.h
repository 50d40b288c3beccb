#ifndef ORVIA_LINK_PORT_TROUBLE_H
#define ORVIA_LINK_PORT_TROUBLE_H

#include <string>

#include "link/enumerate.h"
#include "platform/port_inquiry.h"

// Why a port does not open, and what helps. docs/serial-ports.md has the cases.

namespace comm {

enum class PortTrouble {
    Missing,    ///< there is no such device
    NotSerial,  ///< something else stands in its place
    NotAllowed,
    InUse,
    LockLeft,  ///< a lock of a program that has ended
    Unknown
};

[[nodiscard]] PortTrouble TroubleOf(const PortCondition& condition);

/// A program: "minicom (process 1234)", or what is known of it.
[[nodiscard]] std::string ProgramText(const PortUser& user);

/// Why `port`, as "COM5", did not open, and what helps: some lines. `known` are the ports that the
/// system has, `reason` its own words.
[[nodiscard]] std::string PortTroubleText(const std::string& port, const PortCondition& condition,
                                          const Enumerate::PortList& known,
                                          const std::string& reason);

}  // namespace comm

#endif  // ORVIA_LINK_PORT_TROUBLE_H
