#ifndef ORVIA_PLATFORM_WIN_WIN_PORT_INQUIRY_H
#define ORVIA_PLATFORM_WIN_WIN_PORT_INQUIRY_H

#include "platform/port_inquiry.h"

/// Asks Windows, which tells whether a port is there and whether somebody has it, but not who.
class WinPortInquiry final : public PortInquiry {
 public:
    [[nodiscard]] PortCondition ConditionOf(int number) override;
    /// None: the system would have to open each port to know.
    [[nodiscard]] std::map<int, PortUser> UsedPorts() override { return {}; }
};

#endif  // ORVIA_PLATFORM_WIN_WIN_PORT_INQUIRY_H
