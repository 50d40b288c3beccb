#include "link/connecting.h"

#include "common/fault.h"
#include "common/number_text.h"
#include "common/text.h"
#include "link/book_choice.h"
#include "link/busy_guard.h"
#include "link/port.h"

namespace comm {

namespace {

bool OpenForConnect(const LinkContext& context) {
    context.link.PortRefusal.clear();
    try {
        return OpenPort(context.link, context.view, PortNumber(context.settings.PortName),
                        PortSettings(context.settings.BaudRate));
    } catch (const Fault&) {
        return false;
    }
}

/// Brings the radio to command mode and takes its identity; False if it does not answer.
bool AskRadio(const LinkContext& context) {
    Link& link = context.link;
    const BusyGuard busy(link.CommBusy);
    if (!EnterCommandMode(link)) {
        return false;
    }
    link.ServerSystemID = ReadServerSystemID(link);
    context.view.SetSystemID(IntegerToText(link.ServerSystemID));
    link.Connected = True;
    return true;
}

void TellRadio(const LinkContext& context, bool answered) {
    const std::string& port = context.settings.PortName;
    context.status.Came(answered ? "Connected with the server radio on " + port
                                 : "The server radio on " + port + " did not answer",
                        answered);
}

/// From the port to a radio in command mode; False with the operator told, or told to stop.
bool ReachRadio(const LinkContext& context, const ConnectDialog& dialog,
                const std::function<void(Pointer)>& setPointers) {
    if (!OpenForConnect(context)) {
        context.status.Came(context.settings.PortName + " could not be opened", false);
        context.boxes.Show(OpenPortFailure(context));
        return false;
    }
    context.link.LinkState = LinkConnecting;
    if (dialog.CancelRequested != False) {
        context.status.Came("Connecting was cancelled");
        return false;
    }
    setPointers(Pointer::Hourglass);
    const bool answered = AskRadio(context);
    setPointers(Pointer::Normal);
    TellRadio(context, answered);
    if (!answered) {
        context.boxes.Show({.Text = "Error: unable to establish communication with server radio.",
                            .Title = "Connect Error",
                            .Icon = BoxIcon::Exclamation});
    }
    return answered;
}

}  // namespace

ConnectLabels LabelsOf(const Settings& settings, int breaks) {
    ConnectLabels labels;
    labels.Port = "Port: " + settings.PortName;
    labels.BaudRate = "Baud: " + settings.BaudRate;
    labels.AutoDisconnect =
        settings.AutoDisconnect == "1" ? "Auto Disconnnect Enabled" : "Auto Disconnect Disabled";
    labels.AddressBook = "Address Book:";
    for (int i = 0; i < breaks; ++i) {
        labels.AddressBook += LineBreak;
    }
    labels.AddressBook += BookBaseName(settings.AddressBookPath);
    return labels;
}

void SettingsChanged(Link& link, const Settings& before, const Settings& after) {
    if (before.PortName != after.PortName || before.BaudRate != after.BaudRate) {
        link.Connected = False;
    }
}

void Connect(const LinkContext& context, ConnectDialog& dialog,
             const std::function<void(Pointer)>& setPointers) {
    Link& link = context.link;
    dialog.Connecting = True;
    context.status.Doing("Connecting with the server radio on " + context.settings.PortName);
    link.Connected = False;
    link.LinkState = LinkDisconnected;
    if (!ReachRadio(context, dialog, setPointers)) {
        ClosePort(link);
        link.LinkState = LinkDisconnected;
    }
    dialog.Connecting = False;
}

void Disconnect(Link& link, MainView& view) {
    if (link.CommBusy != False) {
        return;
    }
    const BusyGuard busy(link.CommBusy);
    view.SetPointer(Pointer::Hourglass);
    if (link.LinkState == LinkCommand) {
        LeaveCommandMode(link);
    }
    ClosePort(link);
    link.LinkState = LinkDisconnected;
    view.SetPointer(Pointer::Normal);
}

bool CancelConnect(const Link& link, ConnectDialog& dialog, MessageBoxes& boxes) {
    if (link.Connected == False) {
        boxes.Show({.Text = "You will need to establish connection with the server radio "
                            "before\nyou can communicate with a remote logger.  Click the "
                            "CONNECT button\non the server radio status bar when you want to "
                            "connect.",
                    .Title = "Connection Required",
                    .Icon = BoxIcon::Information});
    }
    if (dialog.Connecting == False) {
        return true;
    }
    dialog.CancelRequested = True;
    return false;
}

Toggle ToggleConnection(const ToggleContext& context) {
    Link& link = context.radio.link;
    Sampling& sampling = context.sampling;
    // A mode that a lost device has told to end is waited for as well.
    const bool ends = link.LinkState != LinkDisconnected || sampling.StopContinuous != False;
    if (ends && sampling.ContinuousMode != SamplingIdle) {
        sampling.StopContinuous = True;
        if (sampling.StepRuns != False) {
            return Toggle::Postponed;
        }
        while (sampling.ContinuousMode != SamplingIdle &&
               context.operations.OperationBusy == False && link.ShuttingDown == False) {
            link.Events.WaitForMoreEvents();
        }
    }
    if (context.operations.OperationBusy != False || sampling.ContinuousMode != SamplingIdle) {
        return Toggle::Nothing;
    }
    if (link.LinkState == LinkDisconnected) {
        context.operations.OperationBusy = True;
        return Toggle::Connect;
    }
    const BusyGuard busy(context.operations.OperationBusy);
    Disconnect(link, context.radio.view);
    context.radio.status.Came("Disconnected");
    return Toggle::Nothing;
}

}  // namespace comm
