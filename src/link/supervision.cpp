#include "link/supervision.h"

#include <array>
#include <string_view>

#include "link/port.h"

namespace comm {

namespace {

struct StateShown {
    std::string_view Text;
    Colour Shade;
};

constexpr std::array<StateShown, 4> StatesShown{{{"Disconnected", {255, 0, 0}},
                                                 {"Connecting...", {240, 128, 0}},
                                                 {"Connected - Normal", {0, 160, 0}},
                                                 {"Connected - Command", {0, 0, 240}}}};

/// The limit acts whatever the setting for it says: an idle port is closed, and the next
/// operation opens it again.
void CountIdleTicks(const SupervisionContext& context) {
    Link& link = context.link;
    if (link.Connected == False || link.IdleTicks <= 0 || --link.IdleTicks > 0) {
        return;
    }
    if (context.operations.OperationBusy != False) {
        link.IdleTicks = 1;
        return;
    }
    ClosePort(link);
    link.LinkState = LinkDisconnected;
    context.status.Came("Port closed after five quiet minutes; the next operation opens it again");
}

/// The mode that runs ends with its step, or on its next tick.
void EndSampling(Sampling& sampling) {
    if (sampling.ContinuousMode != SamplingIdle) {
        sampling.StopContinuous = True;
    }
}

CommandStates StatesOf(const SupervisionContext& context) {
    const bool enable = context.windows.NumClientWindows >= 1 && context.link.Connected != False;
    const std::int16_t mode = context.sampling.ContinuousMode;
    CommandStates states;
    states.SampleContinuously = enable;
    states.AutoUpdateChecked = mode >= AutoUpdateStart;
    states.SampleHighlighted = enable && mode != SamplingIdle;
    states.SampleCaption = !states.SampleHighlighted ? "Sample Continuously"
                           : mode < AutoUpdateStart  ? "Stop Sampling"
                                                     : "Stop Auto Update";
    states.Operations = enable && mode == SamplingIdle;
    states.Collection = context.link.Connected != False && mode == SamplingIdle;
    states.BookEntries = context.view.ClientCount() >= 1;
    return states;
}

/// The icon of an entry with an open window.
std::uint8_t IconOfOpenEntry(const Link& link, const ClientRadio& entry) {
    const bool addressed = link.LinkState == LinkNormal && AddressOf(entry.Mac) == link.CurrentMAC;
    return addressed ? IconAddressed : IconWindowOpen;
}

void ShowEntryIcon(const SupervisionContext& context, int number, ClientRadio& entry,
                   std::uint8_t icon) {
    entry.SmallIcon = icon;
    context.view.SetClientIcon(number, icon);
    if (const auto window = context.windows.At(entry.WindowIndex)) {
        window->ShowIcon(icon);
    }
}

void FollowAddressedClient(const SupervisionContext& context) {
    for (int number = 1; number <= context.book.Entries.UpperBound(); ++number) {
        ClientRadio& entry = context.book.Entries[number];
        if (entry.SmallIcon == IconNoWindow) {
            continue;
        }
        const std::uint8_t icon = IconOfOpenEntry(context.link, entry);
        if (entry.SmallIcon != icon) {
            ShowEntryIcon(context, number, entry, icon);
        }
    }
}

}  // namespace

void SuperviseTick(const SupervisionContext& context) {
    Link& link = context.link;
    if (link.WaitTicks > 0) {
        --link.WaitTicks;
    }
    link.MSComm1.LookForHangUp();
    if (!context.view.IsVisible()) {
        return;
    }
    if (NoticeLostDevice(link)) {
        EndSampling(context.sampling);
        context.status.Came("The port is closed: its device is gone", false);
    }
    CountIdleTicks(context);
    if (link.LinkState != link.LinkStateShown) {
        UpdateServerState(link, context.view);
    }
    context.view.ShowLinkFields(link.LinkState != LinkDisconnected);
    context.view.SetCommandStates(StatesOf(context));
    FollowAddressedClient(context);
    context.view.SetStatus(context.status.Text(), context.status.Failed());
}

void UpdateServerState(Link& link, MainView& view) {
    const StateShown& shown = StatesShown.at(link.LinkState);
    view.SetServerState(std::string(shown.Text), shown.Shade);
    link.LinkStateShown = link.LinkState;
}

}  // namespace comm
