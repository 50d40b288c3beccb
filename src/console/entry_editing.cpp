#include "console/entry_editing.h"

#include <string>
#include <utility>
#include <vector>

#include "console/book_file.h"
#include "console/book_operations.h"

namespace {

void TellBookUpdated(const EntryContext& context) {
    SaveBook(context.status, context.settings.AddressBookPath, context.book);
    context.boxes.Show({.Text = "The current address book has been updated.",
                        .Title = "",
                        .Icon = BoxIcon::Information});
}

/// Whether there is a book that takes another entry.
bool MayAdd(const EntryContext& context) {
    if (context.settings.AddressBookPath.empty()) {
        context.boxes.Show({.Text = "Before adding a new client, you need to open an existing "
                                    "address book file\nor create a new address book file. Use the "
                                    "\"File\" pulldown menu.",
                            .Title = "No Address Book Loaded"});
        return false;
    }
    if (context.book.Entries.UpperBound() >= MostEntries) {
        context.boxes.Show({.Text = "The address book cannot take any more client radios.",
                            .Title = "Address Book Full",
                            .Icon = BoxIcon::Exclamation});
        return false;
    }
    return true;
}

void KeepAsDefaults(AddressBook& book, const ClientRadio& entry) {
    book.LastChannel = entry.Channel;
    book.LastMacPrefix = {entry.Mac[0], entry.Mac[1], entry.Mac[2]};
}

bool AddressIsFree(const EntryContext& context, const ClientRadio& entry) {
    const std::optional<int> holder = EntryWithAddress(context.book, entry);
    if (!holder) {
        return true;
    }
    context.boxes.Show({.Text = "Error: the following client radio already has the same channel "
                                "and MAC number:\n\n    " +
                                ShownName(context.book.Entries[*holder].Name),
                        .Title = "Channel/MAC Not Unique",
                        .Icon = BoxIcon::Exclamation});
    return false;
}

void StoreEdited(const EntryContext& context, int number, const EntryTexts& texts) {
    ClientRadio& entry = context.book.Entries[number];
    entry.Name = KeptName(texts.Name);
    context.list.SetItemText(number, entry.Name);
    if (const auto window = context.windows.At(entry.WindowIndex)) {
        window->SetCaption(entry.Name);
    }
    ReadAddress(texts.Address, entry);
}

bool MayDelete(const EntryContext& context, int number) {
    if (context.book.Entries[number].WindowIndex == NoWindow) {
        return true;
    }
    context.boxes.Show(
        {.Text = "This client entry cannot be deleted because its client window is open",
         .Title = "Delete Error",
         .Icon = BoxIcon::Exclamation});
    return false;
}

bool ConfirmDelete(const EntryContext& context, const std::string& name) {
    return context.boxes.Show(
               {.Text = "Are you sure you want to delete client:\n\n     \"" + name + "\"?",
                .Title = "Confirm Delete",
                .Icon = BoxIcon::None,
                .Buttons = BoxButtons::YesNo}) == BoxAnswer::Yes;
}

/// Tells the windows of the entries from `first` on their numbers.
void RenumberWindows(const EntryContext& context, int first) {
    for (int number = first; number <= context.book.Entries.UpperBound(); ++number) {
        if (const auto window = context.windows.At(context.book.Entries[number].WindowIndex)) {
            window->SetClientIndex(static_cast<std::int16_t>(number));
        }
    }
}

/// Sampling goes on under the new number of its client. That of a deleted client is another's now:
/// its sampling finds no client and ends.
void FollowSampledClient(Sampling& sampling, int deleted) {
    if (sampling.ContinuousClient > deleted) {
        --sampling.ContinuousClient;
    } else if (sampling.ContinuousClient == deleted) {
        sampling.ContinuousClient = 0;
    }
}

void TakeOut(const EntryContext& context, int number) {
    context.book.Entries.Remove(number);
    RenumberWindows(context, number);
    FollowSampledClient(context.sampling, number);
    context.list.RemoveItem(number);
}

}  // namespace

void AddClientRadio(const EntryContext& context) {
    if (!MayAdd(context)) {
        return;
    }
    const std::optional<std::string> name = context.dialogs.AskName();
    if (!name) {
        return;
    }
    const std::optional<AddressTexts> address =
        context.dialogs.AskAddress(OfferedAddress(context.book));
    if (!address) {
        return;
    }
    ClientRadio entry;
    entry.Name = KeptName(*name);
    ReadAddress(*address, entry);
    KeepAsDefaults(context.book, entry);
    if (!AddressIsFree(context, entry)) {
        return;
    }
    context.book.Entries.Append(std::move(entry));
    RefreshClientList(context.book, context.view);
    TellBookUpdated(context);
}

void EditClientRadio(const EntryContext& context) {
    const int number = context.view.SelectedClient();
    const auto& entries = context.book.Entries;
    if (!entries.Holds(number)) {
        return;
    }
    const ClientRadio& shown = entries[number];
    const std::optional<EntryTexts> texts =
        context.dialogs.EditEntry({shown.Name, TextsOf(shown.Channel, shown.Mac)});
    if (texts && entries.Holds(number)) {
        StoreEdited(context, number, *texts);
        TellBookUpdated(context);
    }
}

void DeleteClientRadio(const EntryContext& context) {
    const int number = context.view.SelectedClient();
    const auto& entries = context.book.Entries;
    if (!entries.Holds(number) || !MayDelete(context, number) ||
        !ConfirmDelete(context, ShownName(entries[number].Name))) {
        return;
    }
    if (entries.Holds(number) && entries[number].WindowIndex == NoWindow) {
        TakeOut(context, number);
        TellBookUpdated(context);
    }
}

bool ChooseClientFromList(const EntryContext& context) {
    std::vector<std::string> names;
    for (int item = 1; item <= context.list.ItemCount(); ++item) {
        names.push_back(context.list.ItemText(item));
    }
    if (names.empty()) {
        return false;
    }
    const std::optional<int> chosen = context.dialogs.PickClient(names);
    if (!chosen) {
        return false;
    }
    context.list.SelectItem(*chosen);
    return true;
}
