#ifndef ORVIA_COMMON_DESKTOP_ENTRY_H
#define ORVIA_COMMON_DESKTOP_ENTRY_H

#include <string>

/// The text of a desktop entry by which a session starts a program. `program` is its whole path,
/// which may hold any character; `argument` is a plain word.
[[nodiscard]] std::string SessionEntry(const std::string& name, const std::string& program,
                                       const std::string& argument);

#endif  // ORVIA_COMMON_DESKTOP_ENTRY_H
