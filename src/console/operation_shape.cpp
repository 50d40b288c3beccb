#include "console/operation_shape.h"

bool LinkIsFree(const OperationContext& context) {
    return context.operations.OperationBusy == False && context.sampling.StepRuns == False &&
           context.sampling.ContinuousMode == SamplingIdle && context.radio.link.Connected != False;
}

bool MayStart(const OperationContext& context) {
    return LinkIsFree(context) && context.windows.NumClientWindows != 0;
}

Target WindowInSlot(const OperationContext& context, int slot) {
    Target target{context.windows.At(slot), static_cast<std::int16_t>(slot), std::nullopt};
    const auto& entries = context.book.Entries;
    if (target.Window && entries.Holds(target.Window->ClientIndex())) {
        target.Radio = entries[target.Window->ClientIndex()];
    }
    return target;
}

Target ActiveWindow(const OperationContext& context) {
    for (int slot = 0; slot <= context.windows.UpperBound(); ++slot) {
        const auto window = context.windows.At(slot);
        if (window && window->IsActive() != False) {
            return WindowInSlot(context, slot);
        }
    }
    return {};
}

Target WindowOfWalk(const OperationContext& context) {
    return WindowInSlot(context, context.operations.ForAllWindow);
}

bool SelectRadioOf(const OperationContext& context, const Target& target) {
    if (!target.Radio) {
        return false;
    }
    OperationStatus& status = context.radio.status;
    status.Doing("Tuning the server radio to " + NameOf(target));
    const bool selected = comm::SelectClient(context.radio, *target.Radio);
    if (!selected) {
        status.Came("The server radio could not be tuned to " + NameOf(target), false);
    }
    return selected;
}

std::string NameOf(const Target& target) {
    return target.Window ? target.Window->Caption() : std::string();
}

bool ReadSettingsOf(const OperationContext& context, const Target& target) {
    OperationStatus& status = context.radio.status;
    status.Doing("Reading settings of " + NameOf(target));
    const bool read = target.Window->GetSettings();
    status.Came(
        read ? "Settings of " + NameOf(target) + " read" : NameOf(target) + " did not answer",
        read);
    return read;
}

bool IsOpen(const OperationContext& context, const Target& target) {
    return target.Window && context.windows.At(target.Slot) == target.Window;
}

void StartOnActiveWindow(const OperationContext& context, OperationWork work) {
    if (MayStart(context)) {
        OnActiveWindow(context, [&context, work](const Target& target) {
            static_cast<void>(work(context, target));
        });
    }
}
