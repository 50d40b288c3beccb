#ifndef ORVIA_SIMULATOR_NETWORK_FILE_H
#define ORVIA_SIMULATOR_NETWORK_FILE_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/logger.h"
#include "simulator/network.h"

namespace simulator {

/// A network as its file describes it; docs/simulator.md tells the format.
struct NetworkDescription {
    std::optional<CivilSeconds> Start;  ///< nothing: the moment at which the simulation starts
    int Baud = 38400;
    std::uint8_t SystemId = 1;
    std::uint64_t Seed = 1;
    std::vector<LoggerSetup> Loggers;
};

struct NetworkFileError {
    int Line = 0;  ///< counted from 1
    std::string What;
};

struct NetworkFile {
    NetworkDescription Network;
    std::vector<NetworkFileError> Errors;  ///< empty if the file is good
};

/// Reads the text of a network file; any bytes will do. `seed` takes the place of the file's own.
[[nodiscard]] NetworkFile ParseNetwork(std::string_view text,
                                       std::optional<std::uint64_t> seed = std::nullopt);

/// The network of that description; `now` is the true time at moment 0 if it has no start of its
/// own.
[[nodiscard]] std::unique_ptr<Network> BuildNetwork(const NetworkDescription& description,
                                                    CivilSeconds now = Network::DefaultStart());

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_NETWORK_FILE_H
