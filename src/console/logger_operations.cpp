#include "console/logger_operations.h"

#include <memory>
#include <string>

#include "common/fault.h"
#include "link/sampling.h"

namespace {

using comm::SelectClient;

/// The window that an operation is for, and the slot it stands in.
struct Target {
    std::shared_ptr<ClientWindow> Window;
    std::int16_t Slot = 0;
};

bool LinkIsFree(const OperationContext& context) {
    return context.operations.OperationBusy == False && context.sampling.StepRuns == False &&
           context.radio.link.Connected != False && context.windows.NumClientWindows != 0;
}

bool MayStart(const OperationContext& context) {
    return LinkIsFree(context) && context.sampling.ContinuousMode == SamplingIdle;
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

bool SelectRadioOf(const OperationContext& context, const ClientWindow& window) {
    const auto& entries = context.book.Entries;
    return entries.Holds(window.ClientIndex()) &&
           SelectClient(context.radio, entries[window.ClientIndex()]);
}

/// Holds the link for an operation, under the hourglass; lets go of both on every way out.
class OperationScope {
 public:
    explicit OperationScope(const OperationContext& context) : context_(context) {
        context_.operations.OperationBusy = True;
        context_.radio.view.SetPointer(Pointer::Hourglass);
    }
    ~OperationScope() {
        context_.radio.view.SetPointer(Pointer::Normal);
        context_.operations.OperationBusy = False;
    }
    OperationScope(const OperationScope&) = delete;
    OperationScope& operator=(const OperationScope&) = delete;

 private:
    const OperationContext& context_;
};

/// Runs `work` on the window that is active, its radio selected. A fault ends the operation as a
/// failure does.
template <typename Work>
void OnActiveWindow(const OperationContext& context, Work work) {
    const OperationScope scope(context);
    const Target target = ActiveWindow(context.windows);
    try {
        if (target.Window && SelectRadioOf(context, *target.Window)) {
            work(target);
        }
    } catch (const Fault&) {
        return;
    }
}

/// Waits, with events running, until the one-shot machine has finished or its time is over.
/// True if it finished.
bool AwaitSingleSample(const OperationContext& context) {
    Sampling& sampling = context.sampling;
    comm::StartSingleSample(sampling, context.newest);
    while (sampling.SingleSampleTicks >= 1 && sampling.SingleSample != 0 &&
           context.radio.link.ShuttingDown == False) {
        context.radio.link.Events.WaitForMoreEvents();
    }
    const bool finished = sampling.SingleSample == 0;
    sampling.SingleSample = 0;
    return finished;
}

}  // namespace

void GetSample(const OperationContext& context) {
    if (!MayStart(context)) {
        return;
    }
    OnActiveWindow(context, [&context](const Target& target) {
        if (!target.Window->GetSettings()) {
            return;
        }
        target.Window->ClientSetNumChannels();
        if (AwaitSingleSample(context)) {
            target.Window->SetDP();
        }
    });
}

void SampleContinuously(const OperationContext& context) {
    Sampling& sampling = context.sampling;
    if (sampling.ContinuousMode != SamplingIdle) {
        sampling.StopContinuous = True;
        return;
    }
    if (!LinkIsFree(context)) {
        return;
    }
    OnActiveWindow(context, [&sampling](const Target& target) {
        target.Window->GetSettings();
        if (target.Window->SettingsValid() == False) {
            return;
        }
        target.Window->ClientSetNumChannels();
        sampling.SampleTicks = 0;
        sampling.ContinuousWindow = target.Slot;
        sampling.ContinuousClient = target.Window->ClientIndex();
        sampling.StopContinuous = False;
        sampling.ContinuousMode = ContinuousFirstRequest;
    });
}

void ShowFirmwareVersion(const OperationContext& context) {
    if (!MayStart(context)) {
        return;
    }
    OnActiveWindow(context, [&context](const Target& target) {
        target.Window->GetSettings();
        target.Window->ClientSetGlobalState();
        context.radio.view.SetPointer(Pointer::Normal);
        context.radio.boxes.Show(
            {.Text = "Logger firmware version = " + std::to_string(context.global.FirmwareVersion),
             .Title = "Firmware Version"});
    });
}
