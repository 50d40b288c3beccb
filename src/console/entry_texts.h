#ifndef ORVIA_CONSOLE_ENTRY_TEXTS_H
#define ORVIA_CONSOLE_ENTRY_TEXTS_H

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/host.h"
#include "records/address_book.h"

/// Channel and MAC of a radio as the entry fields hold them.
struct AddressTexts {
    std::string Channel;
    std::array<std::string, 6> Mac;
};

/// All fields of an entry.
struct EntryTexts {
    std::string Name;
    AddressTexts Address;
};

/// Most characters of a name that is typed; one from a file may be longer.
inline constexpr int MostNameCharacters = 32;

/// The fields for a channel and a MAC: two upper-case digits each.
[[nodiscard]] AddressTexts TextsOf(std::uint8_t channel, const MacAddress& mac);

/// Reads the fields into the entry. A field that is no number gives what its first digits built.
void ReadAddress(const AddressTexts& texts, ClientRadio& entry);

/// The name as it is kept: without blanks at its ends, and with a blank for each carriage return
/// and line feed, which would break the book's lines. All else stays, tabs too.
[[nodiscard]] std::string KeptName(std::string_view text);

/// The name as lists, titles and boxes show it: the first kilobyte of one that is longer, never
/// part of a character. Laid out as text, a name of a megabyte would stop every window.
[[nodiscard]] std::string ShownName(std::string_view name);

/// What the add wizard offers for the next entry.
[[nodiscard]] AddressTexts OfferedAddress(const AddressBook& book);

/// Turns a text to lower case. The letters of all languages are the toolkit's matter.
using LowerCase = std::function<std::string(const std::string& text)>;

/// Checks a new entry's name: it must not be empty, nor that of another entry in either case.
/// Tells the operator of each fault; False if there was one.
[[nodiscard]] bool ValidateNewName(const AddressBook& book, std::string_view text,
                                   const LowerCase& lower, MessageBoxes& boxes);

/// The first entry with that channel and MAC; nothing if there is none.
[[nodiscard]] std::optional<int> EntryWithAddress(const AddressBook& book,
                                                  const ClientRadio& wanted);

#endif  // ORVIA_CONSOLE_ENTRY_TEXTS_H
