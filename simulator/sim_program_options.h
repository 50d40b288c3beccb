#ifndef ORVIA_SIMULATOR_SIM_PROGRAM_OPTIONS_H
#define ORVIA_SIMULATOR_SIM_PROGRAM_OPTIONS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// The command line of orvia-sim.
struct ProgramOptions {
    std::string NetworkFile;
    std::string Link;
    std::string Control;  ///< a FIFO, "-" for standard input, empty for none
    std::optional<int> Baud;
    std::optional<std::uint64_t> Seed;
    bool Trace = false;
    bool Help = false;

    std::string Wrong;  ///< what is wrong with the command line, empty if nothing is
};

[[nodiscard]] ProgramOptions ParseOptions(int count, const char* const* arguments);

/// What --help prints.
extern const std::string_view UsageText;

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_SIM_PROGRAM_OPTIONS_H
