#ifndef ORVIA_CONSOLE_BOOK_OPERATIONS_H
#define ORVIA_CONSOLE_BOOK_OPERATIONS_H

#include <string>
#include <string_view>

#include "platform/host.h"
#include "records/address_book.h"
#include "records/client_windows.h"
#include "records/main_view.h"
#include "records/operation_status.h"
#include "records/operations_state.h"
#include "records/sampling_state.h"
#include "records/settings.h"

/// What the operations on the book work on.
struct BookContext {
    Settings& settings;
    AddressBook& book;
    const ClientWindows& windows;
    Operations& operations;
    const Sampling& sampling;
    MainView& view;
    MessageBoxes& boxes;
    FileDialogs& dialogs;
    const std::string& startFolder;
    OperationStatus& status;
};

/// Puts the book's entries into the list on the screen.
void RefreshClientList(const AddressBook& book, MainView& view);

/// Replaces the book in memory by the file at `path` and rebuilds the list. An empty path empties
/// the book but leaves the list as it stands. False if there is no such file.
bool LoadAddressBook(const std::string& path, AddressBook& book, MainView& view);

/// Tells that the book at `path` was loaded, or was not.
void TellBookLoaded(OperationStatus& status, const std::string& path, const AddressBook& book,
                    bool loaded);

/// Rewrites the file at `path` from the book. Failure is silent, but for the result.
bool SaveAddressBook(const std::string& path, const AddressBook& book);

/// The same, and tells whether it was saved.
void SaveBook(OperationStatus& status, const std::string& path, const AddressBook& book);

/// Exchanges two entries whole, and tells their open windows their new numbers. Faults if there
/// is no such entry.
void SwapClientRadios(AddressBook& book, const ClientWindows& windows, int a, int b);

/// What the next new entry is offered, from the book just loaded.
void TakeEntryDefaults(AddressBook& book);

/// "Load Address Book": asks for a file and takes it, once open windows may be closed.
void LoadOtherBook(const BookContext& context);

/// "New Blank Address Book": asks for a name, writes an empty book there and takes it. Open
/// windows are closed without asking.
void CreateBlankBook(const BookContext& context);

/// Takes the book that the connect dialog left in the settings, `before` being the one before
/// it; an operator who wants to keep the open windows gets that one back.
void TakeBookOfConnectDialog(const BookContext& context, const std::string& before);

#endif  // ORVIA_CONSOLE_BOOK_OPERATIONS_H
