#ifndef ORVIA_RECORDS_MAIN_VIEW_H
#define ORVIA_RECORDS_MAIN_VIEW_H

#include <cstdint>
#include <memory>
#include <string>

#include "records/client_window.h"

/// A colour, each part from 0 (none) to 255.
struct Colour {
    std::uint8_t Red = 0;
    std::uint8_t Green = 0;
    std::uint8_t Blue = 0;
    bool operator==(const Colour&) const = default;
};

/// The mouse pointer over the main window; the hourglass stands while something takes long.
enum class Pointer { Normal, Hourglass };

/// Which commands of the main window can be used, and what the two toggling ones say.
struct CommandStates {
    bool Operations = false;          ///< the operations on loggers, one or all
    bool SampleContinuously = false;  ///< starts and stops sampling; Auto Update too
    std::string SampleCaption;
    bool SampleHighlighted = false;  ///< a sampling mode runs
    bool AutoUpdateChecked = false;
    bool Collection = false;   ///< history can be collected
    bool BookEntries = false;  ///< edit, view and delete entries
    bool operator==(const CommandStates&) const = default;
};

/// What procedures tell the main window, and ask of it.
class MainView {
 public:
    virtual ~MainView() = default;

    [[nodiscard]] virtual bool IsVisible() const = 0;
    virtual void SetPointer(Pointer pointer) = 0;

    virtual void SetComPort(const std::string& text) = 0;                     // txtComPort
    virtual void SetServerState(const std::string& text, Colour colour) = 0;  // txtServerState
    virtual void SetSystemID(const std::string& text) = 0;                    // txtSystemID
    /// Shows or hides port and system id; the connect button reads the other way.
    virtual void ShowLinkFields(bool linked) = 0;
    virtual void SetCommandStates(const CommandStates& states) = 0;
    /// What is being done, or what came of it and whether it failed: the line at the lower edge.
    virtual void SetStatus(const std::string& text, bool failed) = 0;

    virtual void SetAddressBookName(const std::string& text) = 0;  // lblAddressBook
    // lvwClients; items count from 1.
    virtual void ClearClients() = 0;
    virtual void AddClient(const std::string& name, std::uint8_t icon) = 0;
    virtual void SetClientIcon(int item, std::uint8_t icon) = 0;
    [[nodiscard]] virtual int ClientCount() const = 0;
    /// The item that the operator sees highlighted, 0 if none is, whichever the keys would go to.
    [[nodiscard]] virtual int SelectedClient() const = 0;

    /// Makes a client window, loaded but without caption, not yet in any slot.
    [[nodiscard]] virtual std::shared_ptr<ClientWindow> NewClientWindow() = 0;
    /// The same, the active window and what has the keys staying as they are.
    [[nodiscard]] virtual std::shared_ptr<ClientWindow> NewClientWindowBehind() = 0;
    /// Unloads every form but the main window, from the one opened last to the first: dialogs, then
    /// log and client windows.
    virtual void CloseAllChildForms() = 0;
};

#endif  // ORVIA_RECORDS_MAIN_VIEW_H
