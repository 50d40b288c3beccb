#ifndef ORVIA_COMMON_FILE_PATH_H
#define ORVIA_COMMON_FILE_PATH_H

#include <filesystem>
#include <string_view>

/// NativePath, as the library of files takes it. Texts are UTF-8; where a path is made of wider
/// characters, some libraries widen a plain text byte by byte.
[[nodiscard]] std::filesystem::path FilePath(std::string_view path);

/// Whether Windows would take the path for one of its devices (NUL, COM1, CON...), in whatever
/// folder and with whatever extension: what is written there is gone, or goes to a radio. There no
/// such path is a file, or takes one.
[[nodiscard]] bool NamesDevice(std::string_view path);

#endif  // ORVIA_COMMON_FILE_PATH_H
