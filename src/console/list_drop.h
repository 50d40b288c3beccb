#ifndef ORVIA_CONSOLE_LIST_DROP_H
#define ORVIA_CONSOLE_LIST_DROP_H

#include <optional>
#include <string>

#include "console/client_list_view.h"
#include "records/address_book.h"
#include "records/client_windows.h"
#include "records/main_view.h"
#include "records/operation_status.h"
#include "records/operations_state.h"
#include "records/sampling_state.h"
#include "records/settings.h"

/// What a drop in the client list works on.
struct DropContext {
    const Settings& settings;
    AddressBook& book;
    const ClientWindows& windows;
    const Operations& operations;
    Sampling& sampling;
    MainView& view;
    ClientListView& list;
    OperationStatus& status;
};

/// The item under the pointer is selected while one is dragged over the list.
void DragOverList(ClientListView& list, int y);

/// Exchanges the entry dragged, known by its text, with the one at `y`, and files the book. The
/// first entry of that name is taken. Nothing happens while an operation runs, with a drag that
/// is no text, or in a list of fewer than two.
void DropOnList(const DropContext& context, const std::optional<std::string>& dragged, int y);

#endif  // ORVIA_CONSOLE_LIST_DROP_H
