#ifndef ORVIA_LINK_BOOK_CHOICE_H
#define ORVIA_LINK_BOOK_CHOICE_H

#include <string>
#include <string_view>

#include "platform/host.h"

// How a book's file is named and asked for, in the connect dialog as in the menu.

/// The name that the console shows for a book: its file's name without folder and extension,
/// "-- None --" without a book.
[[nodiscard]] std::string BookBaseName(std::string_view path);

/// The question for a book's file, beginning in the program's folder.
[[nodiscard]] FileQuery BookQuery(const std::string& title, std::string_view startFolder);

#endif  // ORVIA_LINK_BOOK_CHOICE_H
