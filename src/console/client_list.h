#ifndef ORVIA_CONSOLE_CLIENT_LIST_H
#define ORVIA_CONSOLE_CLIENT_LIST_H

#include <cstdint>
#include <functional>
#include <memory>

#include "records/address_book.h"
#include "records/client_windows.h"
#include "records/main_view.h"

/// Number of the last of `count` items whose top edge, `topOf(number)`, is at or above `y`: 1 for
/// a point above them all, the last for one below. 0 in an empty list.
[[nodiscard]] int ItemAtY(int y, int count, const std::function<int(int)>& topOf);

/// Opens the window of the selected entry, or brings the one that is open forward. Nothing
/// selected, or no entry behind it, is nothing to do.
void OpenOrActivateClient(AddressBook& book, ClientWindows& windows, MainView& view);

/// Makes `window`, fresh from the view, that of entry `number` and gives its slot: the first empty
/// one, else a new one.
[[nodiscard]] std::int16_t OpenClientWindow(int number, AddressBook& book, ClientWindows& windows,
                                            MainView& view,
                                            const std::shared_ptr<ClientWindow>& window);

#endif  // ORVIA_CONSOLE_CLIENT_LIST_H
