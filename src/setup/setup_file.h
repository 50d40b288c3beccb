#ifndef ORVIA_SETUP_SETUP_FILE_H
#define ORVIA_SETUP_SETUP_FILE_H

#include <cstdint>
#include <istream>
#include <optional>
#include <ostream>
#include <string>

#include "logger/logger_state.h"

// A set-up file: the settings of one logger as lines of text. Writer and reader differ on purpose;
// docs/setup-files.md tells how, with a whole file.

/// Largest file that is read, in bytes; no set-up file comes near it.
inline constexpr std::uintmax_t LargestSetupFile = std::uintmax_t{16} * 1024 * 1024;

/// What a file tells of its origin. No reader looks at it.
struct SetupFileOrigin {
    std::string Version;  ///< of the program, "1.0.0"
    std::string Date;
    std::string Time;
};

/// Writes the 141 lines: all channels and alarms, whatever the logger has.
void WriteSetupFile(std::ostream& file, const LoggerRecord& global, const SetupFileOrigin& origin);

/// What stopped a reader.
struct SetupFileFault {
    int Line = 0;     ///< counted from 1
    std::string Key;  ///< empty if the file itself could not be read on
};

/// Reads settings over those of `global`, where keys that are absent leave what is there; `limit`
/// bytes are read at most. Stops at the first value that is none, or channel that there is none of;
/// what was read before it stays.
[[nodiscard]] std::optional<SetupFileFault> ReadSetupFile(std::istream& file, LoggerRecord& global,
                                                          std::uintmax_t limit = LargestSetupFile);

#endif  // ORVIA_SETUP_SETUP_FILE_H
