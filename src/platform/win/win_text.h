#ifndef ORVIA_PLATFORM_WIN_WIN_TEXT_H
#define ORVIA_PLATFORM_WIN_WIN_TEXT_H

#include <string>
#include <string_view>

// The system's own texts are UTF-16; the program's are UTF-8.

[[nodiscard]] std::wstring ToWide(std::string_view text);
[[nodiscard]] std::string FromWide(std::wstring_view text);

/// What the system says of an error, by its number.
[[nodiscard]] std::string SystemErrorText(unsigned long error);

#endif  // ORVIA_PLATFORM_WIN_WIN_TEXT_H
