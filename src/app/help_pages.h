#ifndef ORVIA_APP_HELP_PAGES_H
#define ORVIA_APP_HELP_PAGES_H

#include <span>
#include <string>
#include <string_view>

/// The manual's page on a window, or on a part of one, of that name; empty if it has none.
/// tools/manual.py reads the table too: a window without a page fails a test.
[[nodiscard]] std::string_view HelpPageOf(std::string_view name);

/// The page on where the operator is. `names` are those of the control that has the focus and of
/// all around it, from the inside out; the first that has a page tells. The contents if none has.
[[nodiscard]] std::string_view HelpPageAt(std::span<const std::string> names);

#endif  // ORVIA_APP_HELP_PAGES_H
