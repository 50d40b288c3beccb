#ifndef ORVIA_TESTS_CONSOLE_OPERATOR_STORM_H
#define ORVIA_TESTS_CONSOLE_OPERATOR_STORM_H

#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "console/entry_editing.h"
#include "console/list_drop.h"
#include "console/signal_monitor.h"
#include "support/fake_client_list.h"
#include "support/virtual_console.h"

namespace operator_storm {

/// An operator who does anything at any moment, on a network that fails at any moment. All of it
/// follows from the seed.
class Storm final : private EntryDialogs, private SignalMonitorDialog, private SignalView {
 public:
    explicit Storm(std::uint32_t seed);
    ~Storm() override;
    Storm(const Storm&) = delete;
    Storm& operator=(const Storm&) = delete;

    /// Plays the actions and waits until all is at rest.
    void Run(int actions);

    /// What is wrong with windows, slots, icons, list and file; empty if nothing is.
    [[nodiscard]] std::string FaultOfBook();
    /// What is still busy; empty if nothing is.
    [[nodiscard]] std::string FaultOfRest() const;

    /// Actions that the operator could do: no dialog stood, and the program was not closing.
    [[nodiscard]] int ActionsDone() const { return done_; }
    [[nodiscard]] const std::string& FirstFault() const { return firstFault_; }

 private:
    using Action = void (Storm::*)();

    // Actions of the operator.
    void OpenWindow();
    void ActivateWindow();
    void CloseWindow();
    void AddEntry();
    void EditEntryOfList();
    void DeleteEntry();
    void Drag();
    void PressButton();
    void StartWalk();
    void PressLog();
    void TurnLink();
    void ChangeBook();
    // Events that nobody asked for.
    void Disturb();
    void CloseProgram();

    // EntryDialogs
    std::optional<std::string> AskName() override;
    std::optional<AddressTexts> AskAddress(const AddressTexts& offered) override;
    std::optional<EntryTexts> EditEntry(const EntryTexts& shown) override;
    std::optional<int> PickClient(const std::vector<std::string>& names) override;
    // SignalMonitorDialog and SignalView
    void ShowMonitor(const OperationContext& context, std::int16_t clientIndex) override;
    void EnableNext(bool /*enable*/) override {}
    void ShowRadio(const RadioTexts& /*texts*/) override {}
    void ShowLevel(const std::string& /*text*/, int /*barLength*/) override {}
    void HideMonitor() override {}

    [[nodiscard]] EntryContext Entries();
    [[nodiscard]] int Draw(int below);
    [[nodiscard]] bool Chance(int percent) { return Draw(100) < percent; }
    [[nodiscard]] AddressTexts DrawAddress();
    [[nodiscard]] std::shared_ptr<testing_support::FakeClientWindow> DrawWindow();
    void Schedule(int actions);
    void Act();
    void PassModalTime();
    void StandBox();
    void ConnectAnew();
    void CloseAllWindows();
    void Unload(ClientWindow& window);
    void Settle();
    [[nodiscard]] std::string FaultOfEntry(int number);
    [[nodiscard]] std::string FaultOfSlots() const;
    [[nodiscard]] std::string FaultOfFile();

    std::mt19937 random_;
    std::string folder_;
    testing_support::VirtualConsole console_;
    testing_support::FakeClientList list_{console_.View};
    SignalMonitor monitor_;
    int modal_ = 0;  ///< dialogs and boxes that keep the operator from the main window
    int done_ = 0;
    std::string firstFault_;
};

}  // namespace operator_storm

#endif  // ORVIA_TESTS_CONSOLE_OPERATOR_STORM_H
