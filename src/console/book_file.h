#ifndef ORVIA_CONSOLE_BOOK_FILE_H
#define ORVIA_CONSOLE_BOOK_FILE_H

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

#include "records/address_book.h"

// The book's file: a line for each radio, as `"Pump 3", 10, 00A0961F2E3D`, and an empty one at the
// end. docs/address-book.md tells the format.

/// Most entries that a book can have: their numbers are 16 bits wide.
inline constexpr int MostEntries = 32767;

/// Reads one line; nothing if it is no entry. Digits that are none read as 0.
[[nodiscard]] std::optional<ClientRadio> ParseBookLine(std::string_view line);

/// The line of an entry, without its end.
[[nodiscard]] std::string BookLine(const ClientRadio& entry);

/// Appends what the file holds to `entries`; lines that are no entries are passed over. Gives the
/// number of lines that begin as an entry and were dropped, as too short or as too many.
int ReadBook(std::istream& file, NumberedArray<ClientRadio>& entries);

/// Reads the file at `path` in place of the entries; a file that cannot be read leaves those that
/// could. Gives the number of lines dropped, as ReadBook does.
int ReadBookFile(std::string_view path, NumberedArray<ClientRadio>& entries);

/// Rewrites the file at `path` from the entries, in place; False if that failed, with a file that
/// was there as it was.
[[nodiscard]] bool WriteBookFile(std::string_view path, const NumberedArray<ClientRadio>& entries);

#endif  // ORVIA_CONSOLE_BOOK_FILE_H
