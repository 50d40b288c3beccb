#include "console/signal_monitor.h"

#include "console/entry_texts.h"
#include "console/hex_text.h"
#include "console/operation_shape.h"
#include "console/signal_level.h"
#include "link/port.h"
#include "logger/command_codes.h"
#include "platform/moments.h"

namespace {

std::string HyphenedMac(const MacAddress& mac) {
    std::string text;
    for (const std::uint8_t byte : mac) {
        text += (text.empty() ? "" : "-") + ByteToHex(byte);
    }
    return text;
}

bool StopAsked(const OperationContext& context, const SignalMonitor& monitor) {
    return monitor.MonitorState == MonitorStopAsked || context.radio.link.ShuttingDown != False;
}

int SlotInView(const OperationContext& context, const SignalMonitor& monitor) {
    const auto& entries = context.book.Entries;
    return entries.Holds(monitor.ClientIndex) ? entries[monitor.ClientIndex].WindowIndex : NoWindow;
}

/// The window in the next slot that has one, going round; none if there is none at all. It is the
/// same window again if there is no other.
Target NextWindow(const OperationContext& context, int slot) {
    const int count = context.windows.UpperBound() + 1;
    for (int step = 1; step <= count; ++step) {
        const int next = (slot + step) % count;
        if (context.windows.At(next)) {
            return WindowInSlot(context, next);
        }
    }
    return {};
}

void StepToNextRadio(const OperationContext& context, SignalMonitor& monitor, SignalView& view) {
    monitor.NextRequested = false;
    const Target next = NextWindow(context, SlotInView(context, monitor));
    if (!next.Radio) {
        return;
    }
    monitor.ClientIndex = next.Window->ClientIndex();
    DisplayClient(context.book, monitor, view);
    context.radio.view.SetPointer(Pointer::Hourglass);
    // A radio that cannot be selected has told so, and gives no readings.
    if (SelectRadioOf(context, next)) {
        context.radio.status.Doing("Watching the signal level");
    }
    context.radio.view.SetPointer(Pointer::Normal);
}

/// Whether the device of the port is gone. That is told like any failure of the server radio,
/// unless one was told already.
bool DeviceIsGone(const OperationContext& context) {
    Link& link = context.radio.link;
    if (link.LinkState != LinkDisconnected && !link.MSComm1.PortOpen()) {
        comm::LinkDown(link, context.radio.boxes);
        return true;
    }
    return comm::DeviceLost(link);
}

bool GoesOn(const OperationContext& context, const SignalMonitor& monitor) {
    return !StopAsked(context, monitor) && !DeviceIsGone(context);
}

/// Lets events run. A tick among them can be the first to notice that the device is gone, and tells
/// nobody.
void RunEvents(const OperationContext& context) {
    Link& link = context.radio.link;
    const bool linked = link.LinkState != LinkDisconnected;
    link.Events.RunPendingEvents();
    if (linked && comm::DeviceLost(link)) {
        comm::LinkDown(link, context.radio.boxes);
    }
}

}  // namespace

void DisplayClient(const AddressBook& book, const SignalMonitor& monitor, SignalView& view) {
    if (book.Entries.Holds(monitor.ClientIndex)) {
        const ClientRadio& entry = book.Entries[monitor.ClientIndex];
        view.ShowRadio({ShownName(entry.Name), HyphenedMac(entry.Mac), ByteToHex(entry.Channel)});
    }
}

std::optional<int> ReadSignalLevel(const OperationContext& context, const SignalMonitor& monitor) {
    // The clock: the shortest request that a logger answers.
    const Bytes request{cmd::GetTimeCode};
    std::int16_t retries = 0;
    if (!context.exchange.SendFrame(request, retries) || StopAsked(context, monitor)) {
        return std::nullopt;
    }
    Bytes reply(cmd::TimeReplySize);
    if (!context.exchange.ReceiveFrame(reply) || StopAsked(context, monitor)) {
        return std::nullopt;
    }
    std::uint8_t value = 0;
    if (!comm::ReadRadioSignal(context.radio.link, context.radio.boxes, value) ||
        StopAsked(context, monitor)) {
        return std::nullopt;
    }
    return RssiToDBm(value);
}

void RunMonitor(const OperationContext& context, SignalMonitor& monitor, SignalView& view) {
    if (monitor.MonitorState != MonitorNotStarted) {
        return;
    }
    monitor.MonitorState = MonitorRunning;
    view.EnableNext(context.windows.UpperBound() >= 1);
    std::optional<int> level = ReadSignalLevel(context, monitor);
    while (GoesOn(context, monitor)) {
        if (monitor.NextRequested) {
            level.reset();
            StepToNextRadio(context, monitor, view);
        }
        view.ShowLevel(LevelText(level), BarLength(level));
        view.KeepReading({ToMilliseconds(context.clock.Now()), level});
        RunEvents(context);
        level = ReadSignalLevel(context, monitor);
    }
    monitor.MonitorState = MonitorFinished;
    view.HideMonitor();
}

void ExitMonitor(SignalMonitor& monitor, SignalView& view) {
    if (monitor.MonitorState != MonitorRunning) {
        view.HideMonitor();
    }
    monitor.MonitorState = MonitorStopAsked;
}

bool MayCloseMonitor(SignalMonitor& monitor) {
    if (monitor.MonitorState != MonitorRunning) {
        return true;
    }
    monitor.MonitorState = MonitorStopAsked;
    return false;
}

void ShowSignalLevel(const OperationContext& context, SignalMonitorDialog& dialog) {
    if (!MayStart(context)) {
        return;
    }
    OnActiveWindow(context, [&](const Target& target) {
        context.radio.view.SetPointer(Pointer::Normal);
        if (IsOpen(context, target)) {
            context.radio.status.Doing("Watching the signal level");
            dialog.ShowMonitor(context, target.Window->ClientIndex());
            context.radio.status.Came("Signal level watched");
        }
    });
}
