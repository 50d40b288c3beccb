#ifndef ORVIA_RECORDS_ADDRESS_BOOK_H
#define ORVIA_RECORDS_ADDRESS_BOOK_H

#include <array>
#include <cstdint>
#include <string>

#include "common/numbered_array.h"

/// Slot of a book entry that has no window.
inline constexpr std::int16_t NoWindow = -1;

/// Pictures of the client list, one a state of an entry.
inline constexpr std::uint8_t IconNoWindow = 2;
inline constexpr std::uint8_t IconWindowOpen = 3;
inline constexpr std::uint8_t IconAddressed = 4;  ///< open, and the server radio is on this client

using MacAddress = std::array<std::uint8_t, 6>;  ///< first byte first
using RadioAddress = std::array<std::uint8_t, 3>;

/// One entry of the book: a logger's radio.
struct ClientRadio {
    std::string Name;
    std::uint8_t Channel = 0;
    MacAddress Mac = {};
    std::int16_t WindowIndex = NoWindow;  ///< slot of its window
    std::uint8_t SmallIcon = IconNoWindow;
};

/// The last three bytes of a MAC: what the server radio is told of it. The first three are the
/// vendor's prefix.
[[nodiscard]] constexpr RadioAddress AddressOf(const MacAddress& mac) {
    return {mac[3], mac[4], mac[5]};
}

/// The operator's list of radios, and what the next new entry is offered.
struct AddressBook {
    NumberedArray<ClientRadio> Entries;
    std::uint8_t LastChannel = 0;
    std::array<std::uint8_t, 3> LastMacPrefix = {};
};

#endif  // ORVIA_RECORDS_ADDRESS_BOOK_H
