#ifndef ORVIA_CLIENT_VIEW_MEMORY_H
#define ORVIA_CLIENT_VIEW_MEMORY_H

#include <cstdint>
#include <optional>

#include "platform/host.h"
#include "records/address_book.h"

// The view that each logger's window last had, kept by the address of its radio: names change.

/// Keeps the display mode, one of the five.
void KeepView(SettingsStore& store, const MacAddress& radio, std::int16_t displayMode);

/// The display mode kept; nothing if there is none.
[[nodiscard]] std::optional<std::int16_t> KeptView(const SettingsStore& store,
                                                   const MacAddress& radio);

#endif  // ORVIA_CLIENT_VIEW_MEMORY_H
