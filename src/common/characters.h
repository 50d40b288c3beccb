#ifndef ORVIA_COMMON_CHARACTERS_H
#define ORVIA_COMMON_CHARACTERS_H

#include <cstddef>
#include <string>
#include <string_view>

// Characters of UTF-8 texts. A byte that belongs to no character counts as one of its own.

/// How many characters the text has.
[[nodiscard]] std::size_t CountCharacters(std::string_view text);

/// The text cut to its first `most` characters.
[[nodiscard]] std::string CutText(std::string_view text, std::size_t most);

/// The text in one byte a character, as a logger keeps it: the character's Latin-1 byte, or a blank
/// if it has none.
[[nodiscard]] std::string ToLatin1(std::string_view text);

#endif  // ORVIA_COMMON_CHARACTERS_H
