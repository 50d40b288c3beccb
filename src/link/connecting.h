#ifndef ORVIA_LINK_CONNECTING_H
#define ORVIA_LINK_CONNECTING_H

#include <functional>
#include <string>

#include "link/server_radio.h"
#include "platform/host.h"
#include "records/link.h"
#include "records/main_view.h"
#include "records/operations_state.h"
#include "records/sampling_state.h"
#include "records/settings.h"

namespace comm {

/// State of the connect dialog.
struct ConnectDialog {
    Flag Connecting = False;       ///< a connect is under way
    Flag CancelRequested = False;  ///< cancelled during it
};

/// What the connect dialog shows of the settings.
struct ConnectLabels {
    std::string Port;
    std::string BaudRate;
    std::string AutoDisconnect;
    std::string AddressBook;
};

/// The labels as the dialog opens; `breaks` line breaks stand before the book's name.
[[nodiscard]] ConnectLabels LabelsOf(const Settings& settings, int breaks);

/// Line breaks before the book's name when the dialog opens, and after its settings changed.
inline constexpr int BreaksAtLoad = 2;
inline constexpr int BreaksAfterSetup = 1;

/// Notes what changing the settings means for the link: with another port or baud rate nobody
/// has answered yet.
void SettingsChanged(Link& link, const Settings& before, const Settings& after);

/// Connects to the server radio: opens the port and brings the radio to command mode, where it
/// stays. Tells the operator what failed. The dialog ends in either case.
void Connect(const LinkContext& context, ConnectDialog& dialog,
             const std::function<void(Pointer)>& setPointers);

/// Takes the radio out of command mode and closes the port; `Connected` keeps its value. Nothing
/// happens while an exchange is on the link.
void Disconnect(Link& link, MainView& view);

/// Cancels the dialog, with a hint while nothing is connected. True if the dialog goes at once,
/// False if the connect under way ends it.
[[nodiscard]] bool CancelConnect(const Link& link, ConnectDialog& dialog, MessageBoxes& boxes);

/// What the connect button of the main window needs.
struct ToggleContext {
    LinkContext radio;
    Sampling& sampling;
    Operations& operations;
};

/// What the connect button came to.
enum class Toggle {
    Nothing,    ///< refused, or disconnected
    Postponed,  ///< a sampling step is under way further up the stack: press again when it is over
    Connect     ///< show the connect dialog; OperationBusy is set, and is the caller's to clear
};

/// The connect button of the main window: ends a sampling mode, then disconnects, or asks for
/// the dialog when the link is down. With the link down only a mode that ends already is awaited.
[[nodiscard]] Toggle ToggleConnection(const ToggleContext& context);

}  // namespace comm

#endif  // ORVIA_LINK_CONNECTING_H
