#ifndef ORVIA_TESTS_SUPPORT_FAKE_CLIENT_LIST_H
#define ORVIA_TESTS_SUPPORT_FAKE_CLIENT_LIST_H

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "console/client_list_view.h"
#include "console/entry_dialogs.h"
#include "support/fake_main_view.h"

namespace testing_support {

/// The list of a main window without a screen; items are 10 high.
class FakeClientList final : public ClientListView {
 public:
    static constexpr int ItemHeight = 10;

    explicit FakeClientList(FakeMainView& view) : view_(view) {}

    int ItemCount() const override { return view_.ClientCount(); }
    std::string ItemText(int item) const override {
        return view_.Clients.at(static_cast<std::size_t>(item - 1)).Name;
    }
    void SetItemText(int item, const std::string& text) override {
        view_.Clients.at(static_cast<std::size_t>(item - 1)).Name = text;
    }
    int ItemTop(int item) const override { return (item - 1) * ItemHeight; }
    void SelectItem(int item) override { view_.Selected = view_.Current = item; }
    /// The neighbour of an item that goes is highlighted, as on the screen.
    void RemoveItem(int item) override {
        view_.Clients.erase(view_.Clients.begin() + (item - 1));
        if (view_.Selected == item || view_.Current == item) {
            SelectItem(std::min(item, view_.ClientCount()));
            return;
        }
        for (int* place : {&view_.Selected, &view_.Current}) {
            *place -= *place > item ? 1 : 0;
        }
    }
    /// The list gets the focus: an item is the current one then, and none is highlighted by that.
    void TakeFocus() {
        if (view_.Current == 0 && view_.ClientCount() > 0) {
            view_.Current = 1;
        }
    }

 private:
    FakeMainView& view_;
};

/// Dialogs that answer as told; without an answer they are cancelled.
class ScriptedEntryDialogs final : public EntryDialogs {
 public:
    std::optional<std::string> AskName() override { return Name; }
    std::optional<AddressTexts> AskAddress(const AddressTexts& offered) override {
        Offered = offered;
        return Address;
    }
    std::optional<EntryTexts> EditEntry(const EntryTexts& shown) override {
        Shown = shown;
        return Edited;
    }
    std::optional<int> PickClient(const std::vector<std::string>& names) override {
        Names = names;
        return Picked;
    }

    std::optional<std::string> Name;
    std::optional<AddressTexts> Address;
    std::optional<EntryTexts> Edited;
    std::optional<int> Picked;

    std::optional<AddressTexts> Offered;
    std::optional<EntryTexts> Shown;
    std::vector<std::string> Names;
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_SUPPORT_FAKE_CLIENT_LIST_H
