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
    static_cast<void>(OpenClientWindow(number, book, windows, view, view.NewClientWindow()));
}

std::int16_t OpenClientWindow(int number, AddressBook& book, ClientWindows& windows, MainView& view,
                              const std::shared_ptr<ClientWindow>& window) {
    auto place = std::find(windows.Slots.begin(), windows.Slots.end(), nullptr);
    if (place == windows.Slots.end()) {
        place = windows.Slots.emplace(windows.Slots.end());
    }
    *place = window;
    const auto slot = static_cast<std::int16_t>(place - windows.Slots.begin());
    ClientRadio& entry = book.Entries[number];
    window->SetCaption(ShownName(entry.Name));
    window->ResetDisplay();
    entry.WindowIndex = slot;
    entry.SmallIcon = IconWindowOpen;
    window->SetClientIndex(static_cast<std::int16_t>(number));
    view.SetClientIcon(number, IconWindowOpen);
    return slot;
}
