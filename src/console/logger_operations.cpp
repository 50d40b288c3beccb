#include "console/logger_operations.h"

#include <string>

#include "common/number_text.h"
#include "console/operation_shape.h"
#include "link/sampling.h"

namespace {

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
    StartOnActiveWindow(context, GetSampleOf);
}

bool GetSampleOf(const OperationContext& context, const Target& target) {
    if (!ReadSettingsOf(context, target)) {
        return false;
    }
    OperationStatus& status = context.radio.status;
    status.Doing("Getting a sample of " + NameOf(target));
    target.Window->ClientSetNumChannels();
    if (AwaitSingleSample(context)) {
        target.Window->SetDP();
    }
    status.Came(context.newest.Time.empty() ? NameOf(target) + " gave no sample"
                                            : "Sample of " + NameOf(target) + " received",
                !context.newest.Time.empty());
    return true;
}

void SampleContinuously(const OperationContext& context) {
    Sampling& sampling = context.sampling;
    if (sampling.ContinuousMode != SamplingIdle) {
        sampling.StopContinuous = True;
        return;
    }
    if (!MayStart(context)) {
        return;
    }
    OnActiveWindow(context, [&context, &sampling](const Target& target) {
        ReadSettingsOf(context, target);
        // Slot and number of a window that was closed meanwhile can be another's by now, and a
        // device that was lost does not end a mode that begins behind that.
        if (target.Window->SettingsValid() == False || !IsOpen(context, target) ||
            context.radio.link.LinkState == LinkDisconnected) {
            return;
        }
        target.Window->ClientSetNumChannels();
        sampling.SampleTicks = 0;
        sampling.ContinuousWindow = target.Slot;
        sampling.ContinuousClient = target.Window->ClientIndex();
        sampling.StopContinuous = False;
        sampling.ContinuousMode = ContinuousFirstRequest;
        context.radio.status.Came(NameOf(target) + " is sampled every second");
    });
}

void ShowFirmwareVersion(const OperationContext& context) {
    if (!MayStart(context)) {
        return;
    }
    OnActiveWindow(context, [&context](const Target& target) {
        ReadSettingsOf(context, target);
        target.Window->ClientSetGlobalState();
        context.radio.view.SetPointer(Pointer::Normal);
        context.radio.boxes.Show(
            {.Text = "Logger firmware version = " + IntegerToText(context.global.FirmwareVersion),
             .Title = "Firmware Version"});
    });
}
