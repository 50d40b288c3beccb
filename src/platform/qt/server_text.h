#ifndef ORVIA_PLATFORM_QT_SERVER_TEXT_H
#define ORVIA_PLATFORM_QT_SERVER_TEXT_H

#include <string>

// A server keeps texts that are UTF-8 without zeros, and no others. Every byte of a name that is
// neither is kept as a character of its own, U+10F700 and the byte, so that each name comes back as
// it was; so are the bytes of such a character if a name holds one.

/// A text as the server can keep it: most are the same.
[[nodiscard]] std::string ServerText(const std::string& text);
/// The text that was kept so.
[[nodiscard]] std::string TextOfServer(const std::string& kept);

#endif  // ORVIA_PLATFORM_QT_SERVER_TEXT_H
