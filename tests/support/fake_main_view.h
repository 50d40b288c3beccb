#ifndef ORVIA_TESTS_SUPPORT_FAKE_MAIN_VIEW_H
#define ORVIA_TESTS_SUPPORT_FAKE_MAIN_VIEW_H

#include <functional>
#include <string>
#include <vector>

#include "records/main_view.h"

namespace testing_support {

/// A main window that remembers what it was told.
class FakeMainView final : public MainView {
 public:
    struct Item {
        std::string Name;
        std::uint8_t Icon = 0;
    };

    bool IsVisible() const override { return Visible; }
    void SetPointer(Pointer pointer) override { Shape = pointer; }
    void SetComPort(const std::string& text) override { ComPort = text; }
    void SetServerState(const std::string& text, Colour colour) override {
        ServerState = text;
        StateColour = colour;
    }
    void SetSystemID(const std::string& text) override { SystemID = text; }
    void ShowLinkFields(bool linked) override { LinkFields = linked; }
    void SetCommandStates(const CommandStates& states) override { Commands = states; }
    void SetStatus(const std::string& text, bool failed) override {
        if (text != Status) {
            Statuses.push_back(text);
        }
        Status = text;
        StatusFailed = failed;
    }
    void SetAddressBookName(const std::string& text) override { BookName = text; }
    void ClearClients() override {
        Clients.clear();
        Selected = Current = 0;
    }
    void AddClient(const std::string& name, std::uint8_t icon) override {
        Clients.push_back({name, icon});
    }
    void SetClientIcon(int item, std::uint8_t icon) override {
        Clients.at(static_cast<std::size_t>(item - 1)).Icon = icon;
    }
    int ClientCount() const override { return static_cast<int>(Clients.size()); }
    int SelectedClient() const override { return Selected; }
    std::shared_ptr<ClientWindow> NewClientWindow() override { return MakeWindow(); }
    std::shared_ptr<ClientWindow> NewClientWindowBehind() override {
        ++OpenedBehind;
        return MakeWindow();
    }
    void CloseAllChildForms() override {
        ++ClosedAll;
        if (WhenClosingAll) {
            WhenClosingAll();
        }
    }

    bool Visible = true;
    Pointer Shape = Pointer::Normal;
    std::string ComPort;
    std::string ServerState;
    Colour StateColour;
    std::string SystemID;
    bool LinkFields = false;
    CommandStates Commands;
    std::string BookName;
    std::string Status;
    bool StatusFailed = false;
    std::vector<std::string> Statuses;  ///< all that it told, one behind the other
    std::vector<Item> Clients;
    int Selected = 0;  ///< the item highlighted
    int Current = 0;   ///< the item that the keys go to; no procedure can see it
    int OpenedBehind = 0;
    int ClosedAll = 0;
    std::function<void()> WhenClosingAll;
    std::function<std::shared_ptr<ClientWindow>()> MakeWindow;
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_SUPPORT_FAKE_MAIN_VIEW_H
