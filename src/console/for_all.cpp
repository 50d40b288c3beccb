#include "console/for_all.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include "common/number_text.h"
#include "console/logger_orders.h"
#include "console/operation_shape.h"
#include "link/busy_guard.h"

namespace {

/// An operation that is run on each window, and how the log begins to tell of it.
struct WalkOperation {
    std::string_view Name;
    std::string_view Beginning;
    OperationWork Work = nullptr;
};

constexpr WalkOperation SampleOperation{"Get Sample", "Getting sample for client window ",
                                        GetSampleOf};

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

/// What a walk came to.
struct WalkCount {
    int Windows = 0;
    int Done = 0;
    std::string Failed;  ///< names, with commas between them
};

void StepOnWindow(const OperationContext& context, const Target& target,
                  const WalkOperation& operation, WalkCount& count) {
    const WalkStep step(context, target.Slot);
    const bool done = WorkOn(context, operation);
    context.log.AppendLog(done ? "OK\n" : "FAIL\n");
    ++count.Windows;
    count.Done += done ? 1 : 0;
    if (!done) {
        count.Failed += (count.Failed.empty() ? "" : ", ") + NameOf(target);
    }
}

void TellWalk(const OperationContext& context, const WalkOperation& operation, bool wholeWay,
              const WalkCount& count) {
    context.radio.status.RoundOver();
    const int most = std::max<int>(count.Windows, context.windows.NumClientWindows);
    const std::string ended = wholeWay ? "" : " was ended";
    context.radio.status.Came(std::string(operation.Name) + " for all" + ended + ": " +
                                  IntegerToText(count.Done) + " of " + IntegerToText(most) +
                                  " done" + (count.Failed.empty() ? "" : ", not " + count.Failed),
                              count.Failed.empty());
}

/// Runs `visit` on each open window until it says to stop; True if it never did. Windows that are
/// opened or closed by then count as they stand when their slot's turn comes.
template <typename Visit>
bool VisitWindows(const OperationContext& context, Visit visit) {
    int number = 0;
    for (int slot = 0; slot <= context.windows.UpperBound(); ++slot) {
        const Target target = WindowInSlot(context, slot);
        if (target.Window) {
            context.radio.status.Round(++number, context.windows.NumClientWindows);
        }
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
    WalkCount count;
    const bool wholeWay = VisitWindows(context.operation, [&](const Target& target) {
        if (Cancelled(log)) {
            log.AppendLog("\nOperation Cancelled\n");
            return false;
        }
        StepOnWindow(context.operation, target, operation, count);
        return true;
    });
    TellWalk(context.operation, operation, wholeWay, count);
    if (wholeWay) {
        log.AppendLog("Done\n");
    }
    log.EndLog();
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
    WalkCount count;
    const bool wholeWay = VisitWindows(context, [&](const Target& target) {
        StepOnWindow(context, target, SampleOperation, count);
        answered += target.Window->SettingsValid() != False ? 1 : 0;
        return true;
    });
    TellWalk(context, SampleOperation, wholeWay, count);
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

void TellNoClients(const OperationContext& context) {
    context.radio.boxes.Show({.Text = "There are no client windows active!",
                              .Title = "No Clients",
                              .Icon = BoxIcon::Information});
}

void GetSampleForAll(const ForAllContext& context) {
    StartWalk(context, SampleOperation, std::nullopt);
}

void ClearHistoryForAll(const ForAllContext& context) {
    StartWalk(context, {"Clear History", "Clearing history for client window ", ClearHistoryOf},
              Question("WARNING: Are you sure that you want to clear the history data\nfor all "
                       "active client windows (this includes minimized windows)?",
                       BoxIcon::Exclamation));
}

void SyncTimeForAll(const ForAllContext& context) {
    StartWalk(context, {"Sync Time", "Syncing time for client window ", SyncTimeOf},
              Question("Do you want to set the logger time to equal the system time\nfor all "
                       "active client windows?",
                       BoxIcon::Information));
}

void RestartSamplingForAll(const ForAllContext& context) {
    StartWalk(context,
              {"Restart Sampling", "Restarting sampling for client window ", cmdStartup_Click},
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
