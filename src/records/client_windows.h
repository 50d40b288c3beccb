#ifndef ORVIA_RECORDS_CLIENT_WINDOWS_H
#define ORVIA_RECORDS_CLIENT_WINDOWS_H

#include <cstdint>
#include <memory>
#include <vector>

#include "records/client_window.h"

/// The open client windows. A slot holds its window until that is closed; who works on a window
/// across a wait holds it as well, since a click in the wait can close it.
struct ClientWindows {
    std::vector<std::shared_ptr<ClientWindow>> Slots;  ///< counted from 0, empty ones between
    std::int16_t NumClientWindows = 0;

    /// The window in `slot`; nothing if the slot is empty or there is no such slot.
    [[nodiscard]] std::shared_ptr<ClientWindow> At(int slot) const {
        return slot >= 0 && slot < static_cast<int>(Slots.size())
                   ? Slots[static_cast<std::size_t>(slot)]
                   : nullptr;
    }

    /// Number of the last slot, -1 before the first window was opened.
    [[nodiscard]] int UpperBound() const { return static_cast<int>(Slots.size()) - 1; }
};

#endif  // ORVIA_RECORDS_CLIENT_WINDOWS_H
