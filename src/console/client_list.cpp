#include "console/client_list.h"

#include <algorithm>

#include "console/entry_texts.h"

namespace {

/// Tops grow down the list, so the items at or above `y` come first.
int CountAtOrAbove(int y, int count, const std::function<int(int)>& topOf) {
    int low = 0;
    int high = count;
    while (low < high) {
        const int middle = (low + high + 1) / 2;
        if (topOf(middle) <= y) {
            low = middle;
        } else {
            high = middle - 1;
        }
    }
    return low;
}

void BringForward(ClientWindow& window) {
    if (window.IsMinimized()) {
        window.RestoreWindow();
    } else {
        window.GiveFocus();
    }
}

}  // namespace

int ItemAtY(int y, int count, const std::function<int(int)>& topOf) {
    return count == 0 ? 0 : std::max(1, CountAtOrAbove(y, count, topOf));
}

void OpenOrActivateClient(AddressBook& book, ClientWindows& windows, MainView& view) {
    const int number = view.SelectedClient();
    if (!book.Entries.Holds(number)) {
        return;
    }
    if (const auto open = windows.At(book.Entries[number].WindowIndex)) {
        BringForward(*open);
        return;
    }
    const std::int16_t slot = OpenClientWindow(book.Entries[number], windows, view);
    book.Entries[number].WindowIndex = slot;
    book.Entries[number].SmallIcon = IconWindowOpen;
    windows.At(slot)->SetClientIndex(static_cast<std::int16_t>(number));
    view.SetClientIcon(number, IconWindowOpen);
}

std::int16_t OpenClientWindow(const ClientRadio& entry, ClientWindows& windows, MainView& view) {
    auto slot = std::find(windows.Slots.begin(), windows.Slots.end(), nullptr);
    if (slot == windows.Slots.end()) {
        slot = windows.Slots.emplace(windows.Slots.end());
    }
    const auto index = slot - windows.Slots.begin();
    const std::shared_ptr<ClientWindow> window = view.NewClientWindow();
    windows.Slots[static_cast<std::size_t>(index)] = window;
    window->SetCaption(ShownName(entry.Name));
    window->ResetDisplay();
    return static_cast<std::int16_t>(index);
}
