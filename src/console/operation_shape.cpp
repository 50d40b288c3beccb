#include "console/operation_shape.h"

#include <utility>

bool LinkIsFree(const OperationContext& context) {
    return context.operations.OperationBusy == False && context.sampling.StepRuns == False &&
           context.sampling.ContinuousMode == SamplingIdle && context.radio.link.Connected != False;
}

bool MayStart(const OperationContext& context) {
    return LinkIsFree(context) && context.windows.NumClientWindows != 0;
}

Target ActiveWindow(const ClientWindows& windows) {
    for (int slot = 0; slot <= windows.UpperBound(); ++slot) {
        auto window = windows.At(slot);
        if (window && window->IsActive() != False) {
            return {std::move(window), static_cast<std::int16_t>(slot)};
        }
    }
    return {};
}

Target WindowOfWalk(const OperationContext& context) {
    const std::int16_t slot = context.operations.ForAllWindow;
    return {context.windows.At(slot), slot};
}

bool SelectRadioOf(const OperationContext& context, const ClientWindow& window) {
    const auto& entries = context.book.Entries;
    if (!entries.Holds(window.ClientIndex())) {
        return false;
    }
    // A copy: the operator can edit the book while the radio answers.
    const ClientRadio client = entries[window.ClientIndex()];
    return comm::SelectClient(context.radio, client);
}

void StartOnActiveWindow(const OperationContext& context, OperationWork work) {
    if (MayStart(context)) {
        OnActiveWindow(context, [&context, work](const Target& target) {
            static_cast<void>(work(context, target));
        });
    }
}
