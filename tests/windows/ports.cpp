// Prints the list of ports that the console offers, read from the registry of the system it runs
// on.

#include <cstdio>

#include "link/enumerate.h"
#include "platform/win/win_registry.h"

int main() {
    WinRegistry registry;
    Enumerate::PortList list;
    Enumerate::EnumerateSerialPorts(registry, list);
    for (const std::string& entry : list) {
        std::printf("%s\n", entry.c_str());
    }
    return 0;
}
