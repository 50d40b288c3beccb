#ifndef ORVIA_SIMULATOR_NETWORK_FILE_KEYS_H
#define ORVIA_SIMULATOR_NETWORK_FILE_KEYS_H

#include <string>
#include <string_view>

#include "simulator/network_file.h"

namespace simulator {

enum class FileSection { None, Network, Logger, Analog, Pulse, Flow };

/// The section of that name; None if there is none.
[[nodiscard]] FileSection SectionNamed(std::string_view name);

/// Puts a key's value where it belongs: into the network, its last logger, or that logger's last
/// analog or pulse channel, which must exist. Returns what is wrong, empty if nothing is.
[[nodiscard]] std::string ApplyKey(NetworkDescription& network, FileSection section,
                                   std::string_view key, std::string_view value);

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_NETWORK_FILE_KEYS_H
