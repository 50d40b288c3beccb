#ifndef ORVIA_CONSOLE_ENTRY_EDITING_H
#define ORVIA_CONSOLE_ENTRY_EDITING_H

#include "console/client_list_view.h"
#include "console/entry_dialogs.h"
#include "platform/host.h"
#include "records/address_book.h"
#include "records/client_windows.h"
#include "records/main_view.h"
#include "records/operation_status.h"
#include "records/sampling_state.h"
#include "records/settings.h"

/// What adding, editing and deleting of entries work on.
struct EntryContext {
    const Settings& settings;
    AddressBook& book;
    const ClientWindows& windows;
    Sampling& sampling;
    MainView& view;
    ClientListView& list;
    EntryDialogs& dialogs;
    MessageBoxes& boxes;
    OperationStatus& status;
};

// None of these looks at OperationBusy: they may run while an exchange waits. Who waits looks at
// the book anew behind the wait.

/// "Add New Client Radio": the wizard, then a new entry at the end of the book. A channel and MAC
/// that another entry has are refused.
void AddClientRadio(const EntryContext& context);

/// "Edit Client Settings" on the selected item. Names and addresses of other entries may be taken.
void EditClientRadio(const EntryContext& context);

/// "Delete Client Radio" on the selected item, once the operator has agreed. Not while the
/// entry's window is open.
void DeleteClientRadio(const EntryContext& context);

/// Has the operator pick an entry, which the list then selects; False if none was.
[[nodiscard]] bool ChooseClientFromList(const EntryContext& context);

#endif  // ORVIA_CONSOLE_ENTRY_EDITING_H
