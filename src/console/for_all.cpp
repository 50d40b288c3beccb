#include "console/for_all.h"

#include <optional>
#include <string>
#include <string_view>

#include "console/logger_orders.h"
#include "console/operation_shape.h"
#include "link/busy_guard.h"

namespace {

/// An operation that is run on each window, and how the log begins to tell of it.
struct WalkOperation {
    std::string_view Beginning;
    OperationWork Work = nullptr;
};

constexpr WalkOperation SampleOperation{"Getting sample for client window ", GetSampleOf};

/// Shows which window an operation is for while it runs under the walk.
class WalkStep {
 public:
    WalkStep(const OperationContext& context, int slot) : context_(context) {
        context_.operations.ForAllActive = True;
        context_.operations.ForAllWindow = static_cast<std::int16_t>(slot);
        context_.radio.view.SetPointer(Pointer::Hourglass);
    }
    ~WalkStep() {
        context_.radio.view.SetPointer(Pointer::Normal);
        context_.operations.ForAllActive = False;
    }
    WalkStep(const WalkStep&) = delete;
    WalkStep& operator=(const WalkStep&) = delete;

 private:
    const OperationContext& context_;
};

bool WorkOn(const OperationContext& context, const WalkOperation& operation) {
    const Target target = WindowOfWalk(context);
    try {
        if (!SelectRadioOf(context, target)) {
            return false;
        }
        context.log.AppendLog(std::string(operation.Beginning) + target.Window->Caption() + "...");
        return operation.Work(context, target);
    } catch (const Fault&) {
        return false;
    }
}

void StepOnWindow(const OperationContext& context, int slot, const WalkOperation& operation) {
    const WalkStep step(context, slot);
    const bool done = WorkOn(context, operation);
    context.log.AppendLog(done ? "OK\n" : "FAIL\n");
}

/// Runs `visit` on each open window until it says to stop; True if it never did. Windows that are
/// opened or closed by then count as they stand when their slot's turn comes.
template <typename Visit>
bool VisitWindows(const OperationContext& context, Visit visit) {
    for (int slot = 0; slot <= context.windows.UpperBound(); ++slot) {
        const Target target = WindowInSlot(context, slot);
        if (context.radio.link.ShuttingDown != False || (target.Window && !visit(target))) {
            return false;
        }
    }
    return true;
}

bool Cancelled(const WalkLog& log) {
    return log.LogWindowOpen() && log.CancelRequested();
}

void Walk(const ForAllContext& context, const WalkOperation& operation) {
    WalkLog& log = context.log;
    log.OpenLog();
    const bool wholeWay = VisitWindows(context.operation, [&](const Target& target) {
        if (Cancelled(log)) {
            log.AppendLog("\nOperation Cancelled\n");
            return false;
        }
        StepOnWindow(context.operation, target.Slot, operation);
        return true;
    });
    if (wholeWay) {
        log.AppendLog("Done\n");
    }
    log.EndLog();
}

void TellNoClients(const OperationContext& context) {
    context.radio.boxes.Show({.Text = "There are no client windows active!",
                              .Title = "No Clients",
                              .Icon = BoxIcon::Information});
}

void StartWalk(const ForAllContext& context, const WalkOperation& operation,
               const std::optional<BoxContent>& question) {
    const OperationContext& work = context.operation;
    // That no window is open is told only where the walk could begin.
    if (!LinkIsFree(work)) {
        return;
    }
    const BusyGuard busy(work.operations.OperationBusy);
    if (work.windows.NumClientWindows == 0) {
        TellNoClients(work);
    } else if (!question || work.radio.boxes.Show(*question) == BoxAnswer::Yes) {
        Walk(context, operation);
    }
}

// All three questions have the title of the first.
BoxContent Question(std::string text, BoxIcon icon) {
    return {.Text = std::move(text),
            .Title = "Synchronize Time",
            .Icon = icon,
            .Buttons = BoxButtons::YesNo};
}

/// Reads a sample of each window; the number of those whose settings are known then.
int SampleAll(const OperationContext& context) {
    int answered = 0;
    VisitWindows(context, [&](const Target& target) {
        StepOnWindow(context, target.Slot, SampleOperation);
        answered += target.Window->SettingsValid() != False ? 1 : 0;
        return true;
    });
    return answered;
}

void StartAutoUpdate(const OperationContext& context) {
    const BusyGuard busy(context.operations.OperationBusy);
    const int answered = SampleAll(context);
    if (context.radio.link.ShuttingDown != False) {
        return;
    }
    if (answered == 0) {
        context.radio.boxes.Show(
            {.Text = "Error: unable to communicate with any open client logger!",
             .Title = "Communication Error",
             .Icon = BoxIcon::Exclamation});
        return;
    }
    context.sampling.ContinuousMode = AutoUpdateStart;
    context.sampling.SampleTicks = 0;
}

}  // namespace

void GetSampleForAll(const ForAllContext& context) {
    StartWalk(context, SampleOperation, std::nullopt);
}

void ClearHistoryForAll(const ForAllContext& context) {
    StartWalk(context, {"Clearing history for client window ", ClearHistoryOf},
              Question("WARNING: Are you sure that you want to clear the history data\nfor all "
                       "active client windows (this includes minimized windows)?",
                       BoxIcon::Exclamation));
}

void SyncTimeForAll(const ForAllContext& context) {
    StartWalk(context, {"Syncing time for client window ", SyncTimeOf},
              Question("Do you want to set the logger time to equal the system time\nfor all "
                       "active client windows?",
                       BoxIcon::Information));
}

void RestartSamplingForAll(const ForAllContext& context) {
    StartWalk(context, {"Restarting sampling for client window ", cmdStartup_Click},
              Question("Do you want to restart sampling including alarm timers for all\nactive "
                       "client windows (this includes minimized windows)?",
                       BoxIcon::Exclamation));
}

void ToggleAutoUpdate(const ForAllContext& context) {
    const OperationContext& work = context.operation;
    if (work.sampling.ContinuousMode >= AutoUpdateStart) {
        work.sampling.StopContinuous = True;
        return;
    }
    if (work.windows.NumClientWindows == 0) {
        TellNoClients(work);
        return;
    }
    if (work.radio.settings.AutoDisconnect == "1") {
        work.radio.boxes.Show({.Text = "The 5-Minute Auto Disconnect Timer will be disabled as "
                                       "long as Auto Update is running.",
                               .Title = "Auto Disconnect",
                               .Icon = BoxIcon::Information});
    }
    if (LinkIsFree(work)) {
        StartAutoUpdate(work);
    }
}
