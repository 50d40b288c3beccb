#ifndef ORVIA_COMMON_TEXT_H
#define ORVIA_COMMON_TEXT_H

#include <string>
#include <string_view>
#include <vector>

/// Line break inside a text that is shown.
inline constexpr std::string_view LineBreak = "\n";

/// The text without the blanks (character 32 alone, never tabs) at its ends.
[[nodiscard]] std::string_view Trim(std::string_view text);
[[nodiscard]] std::string_view TrimLeft(std::string_view text);
[[nodiscard]] std::string_view TrimRight(std::string_view text);

/// Letters A to Z turned to the other case; all other bytes stay, so UTF-8 passes unharmed.
[[nodiscard]] std::string ToUpper(std::string_view text);
[[nodiscard]] std::string ToLower(std::string_view text);

/// The pieces between blanks, empty ones left out.
[[nodiscard]] std::vector<std::string_view> SplitAtBlanks(std::string_view text);

/// Two decimal digits at least, with a leading zero: 7 gives "07".
[[nodiscard]] std::string TwoDigits(int value);

#endif  // ORVIA_COMMON_TEXT_H
