#include "console/book_operations.h"

#include <optional>
#include <utility>

#include "common/number_text.h"
#include "common/path_text.h"
#include "console/book_file.h"
#include "console/entry_texts.h"
#include "link/book_choice.h"
#include "link/busy_guard.h"

namespace {

bool MayChangeBook(const BookContext& context) {
    return context.sampling.ContinuousMode == SamplingIdle &&
           context.operations.OperationBusy == False;
}

/// Whether windows of the book at `path` are open.
bool HasOpenWindows(const BookContext& context, const std::string& path) {
    return !path.empty() && context.windows.NumClientWindows >= 1;
}

/// Closes the windows of the book at `path`, if the operator agrees; True if none is open then.
bool AskToCloseWindows(const BookContext& context, const std::string& path) {
    if (!HasOpenWindows(context, path)) {
        return true;
    }
    const BoxAnswer answer = context.boxes.Show(
        {.Text = "The address book has changed.  Currently opened logger\nwindows will be closed.",
         .Title = "Address Book Changed",
         .Icon = BoxIcon::Information,
         .Buttons = BoxButtons::OkCancel});
    if (answer != BoxAnswer::Ok) {
        return false;
    }
    context.view.CloseAllChildForms();
    return true;
}

void TakeBook(const BookContext& context, const std::string& path) {
    context.settings.AddressBookPath = path;
    const bool loaded = LoadAddressBook(path, context.book, context.view);
    TellBookLoaded(context.status, path, context.book, loaded);
}

}  // namespace

void RefreshClientList(const AddressBook& book, MainView& view) {
    view.ClearClients();
    for (const ClientRadio& entry : book.Entries) {
        view.AddClient(ShownName(entry.Name), entry.SmallIcon);
    }
}

bool LoadAddressBook(const std::string& path, AddressBook& book, MainView& view) {
    book.Entries.Reset();
    view.SetAddressBookName(BookBaseName(path));
    if (path.empty()) {
        return false;
    }
    // What was dropped is told to nobody: the operator sees what the list holds.
    static_cast<void>(ReadBookFile(path, book.Entries));
    RefreshClientList(book, view);
    return IsRegularFile(path);
}

void TellBookLoaded(OperationStatus& status, const std::string& path, const AddressBook& book,
                    bool loaded) {
    const std::string name = BookBaseName(path);
    status.Came(loaded ? "Address book " + name +
                             " loaded, client radios: " + IntegerToText(book.Entries.UpperBound())
                       : "Address book " + name + " could not be read",
                loaded);
}

bool SaveAddressBook(const std::string& path, const AddressBook& book) {
    return WriteBookFile(path, book.Entries);
}

void SaveBook(OperationStatus& status, const std::string& path, const AddressBook& book) {
    const bool saved = SaveAddressBook(path, book);
    status.Came("Address book " + BookBaseName(path) + (saved ? " saved" : " could not be saved"),
                saved);
}

void SwapClientRadios(AddressBook& book, const ClientWindows& windows, int a, int b) {
    std::swap(book.Entries[a], book.Entries[b]);
    for (const int number : {a, b}) {
        if (const auto window = windows.At(book.Entries[number].WindowIndex)) {
            window->SetClientIndex(static_cast<std::int16_t>(number));
        }
    }
}

void TakeEntryDefaults(AddressBook& book) {
    constexpr std::uint8_t FirstChannel = 0x10;
    book.LastChannel = FirstChannel;
    if (book.Entries.UpperBound() >= 1) {
        const ClientRadio& first = book.Entries[1];
        book.LastChannel = first.Channel;
        book.LastMacPrefix = {first.Mac[0], first.Mac[1], first.Mac[2]};
    }
}

void LoadOtherBook(const BookContext& context) {
    if (!MayChangeBook(context)) {
        return;
    }
    const BusyGuard busy(context.operations.OperationBusy);
    const std::string& current = context.settings.AddressBookPath;
    const std::optional<std::string> chosen =
        context.dialogs.PickExisting(BookQuery("Load Address Book", context.startFolder));
    if (chosen && *chosen != current && AskToCloseWindows(context, current)) {
        TakeBook(context, *chosen);
    }
}

void CreateBlankBook(const BookContext& context) {
    if (!MayChangeBook(context)) {
        return;
    }
    const BusyGuard busy(context.operations.OperationBusy);
    const std::string& current = context.settings.AddressBookPath;
    const std::optional<std::string> chosen = context.dialogs.PickForSaving(
        BookQuery("Create New Blank Address Book", context.startFolder), true);
    if (!chosen || *chosen == current) {
        return;
    }
    if (HasOpenWindows(context, current)) {
        context.view.CloseAllChildForms();
    }
    context.book.Entries.Reset();
    SaveBook(context.status, *chosen, context.book);
    TakeBook(context, *chosen);
}

void TakeBookOfConnectDialog(const BookContext& context, const std::string& before) {
    const std::string chosen = context.settings.AddressBookPath;
    if (chosen == before) {
        return;
    }
    if (AskToCloseWindows(context, before)) {
        TakeBook(context, chosen);
    } else {
        context.settings.AddressBookPath = before;
    }
}
