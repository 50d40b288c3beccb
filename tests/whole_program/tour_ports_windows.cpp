// Ports that cannot be opened on Windows.

#include "whole_program/tour_ports.h"

namespace whole_program {

int TryPorts(Tour& tour) {
    OpenUnconnected(tour);
    ExpectRefusal(tour, QStringLiteral("COM9"), QStringLiteral("port-missing"),
                  {QStringLiteral("There is no device COM9")});
    return 1;
}

int HoldPort() {
    return 2;  // nobody asks for it
}

}  // namespace whole_program
