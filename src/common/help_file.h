#ifndef ORVIA_COMMON_HELP_FILE_H
#define ORVIA_COMMON_HELP_FILE_H

#include <string>
#include <string_view>

/// Path of the help file, empty if there is none beside the program.
[[nodiscard]] std::string HelpFile(std::string_view appPath);

#endif  // ORVIA_COMMON_HELP_FILE_H
