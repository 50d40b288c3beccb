#ifndef ORVIA_COMMON_PATH_TEXT_H
#define ORVIA_COMMON_PATH_TEXT_H

#include <cstddef>
#include <string>
#include <string_view>

// Paths are text and keep the separator that they came with. Wherever a rule looks for the last
// backslash, a slash counts as one too.

#ifdef _WIN32
inline constexpr char Separator = '\\';
#else
inline constexpr char Separator = '/';
#endif

/// Position of the last separator, counted from 1; 0 if there is none.
[[nodiscard]] std::size_t LastSeparator(std::string_view path);

/// The part behind the last separator, the whole path if it has none.
[[nodiscard]] std::string_view BehindLastSeparator(std::string_view path);

/// `folder`, one separator of this system, `name`.
[[nodiscard]] std::string JoinPath(std::string_view folder, std::string_view name);

/// The path as this system opens it: backslashes turned where the separator is the slash.
[[nodiscard]] std::string NativePath(std::string_view path);

/// Whether something that is no folder stands at the path, a device as well as a file; never fails.
[[nodiscard]] bool FileExists(std::string_view path);

/// Whether a file stands there that can be read to its end: a pipe or a device may hold a reader up
/// for ever.
[[nodiscard]] bool IsRegularFile(std::string_view path);

/// Whether a file could be written there: a regular file, a device that takes characters, or a name
/// that is free. A pipe would hold the writer up, and a disk is not written over.
[[nodiscard]] bool TakesFile(std::string_view path);

#endif  // ORVIA_COMMON_PATH_TEXT_H
