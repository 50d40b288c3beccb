#ifndef ORVIA_CONSOLE_BOOK_NAME_H
#define ORVIA_CONSOLE_BOOK_NAME_H

#include <string>
#include <string_view>

/// The name that the console shows for a book: its file's name without folder and extension,
/// "-- None --" without a book.
[[nodiscard]] std::string BookBaseName(std::string_view path);

#endif  // ORVIA_CONSOLE_BOOK_NAME_H
