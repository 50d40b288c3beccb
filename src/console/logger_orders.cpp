#include "console/logger_orders.h"

#include "common/text.h"
#include "logger/commands.h"

namespace {

bool AsksNothing(const OperationContext& context) {
    return context.operations.ForAllActive != False;
}

bool Agrees(const OperationContext& context, const std::string& question, const std::string& title,
            const ClientWindow& window) {
    context.radio.status.Doing(title + " of " + window.Caption() + ": an answer is awaited");
    const BoxAnswer answer =
        context.radio.boxes.Show({.Text = question + "\n\n    Radio: " + window.Caption(),
                                  .Title = title,
                                  .Icon = BoxIcon::Information,
                                  .Buttons = BoxButtons::YesNo});
    if (answer != BoxAnswer::Yes) {
        context.radio.status.Came(title + " of " + window.Caption() + " was not wanted");
    }
    return answer == BoxAnswer::Yes;
}

/// Tells what came of an order.
bool TellDone(const OperationContext& context, bool done, const std::string& success,
              const ClientWindow& window) {
    context.radio.status.Came(done ? success : window.Caption() + " did not answer", done);
    return done;
}

/// Whether the window's settings could be read, now if not before.
bool KnowsSettings(const OperationContext& context, const Target& target) {
    ClientWindow& window = *target.Window;
    if (window.SettingsValid() != False) {
        return true;
    }
    ReadSettingsOf(context, target);
    if (window.SettingsValid() == False && !AsksNothing(context)) {
        // The title has always been that of another operation.
        context.radio.boxes.Show({.Text = "Error: unable to read logger settings!",
                                  .Title = "Get History Data",
                                  .Icon = BoxIcon::Information});
    }
    return window.SettingsValid() != False;
}

}  // namespace

void SyncTime(const OperationContext& context) {
    StartOnActiveWindow(context, SyncTimeOf);
}

void ClearHistory(const OperationContext& context) {
    StartOnActiveWindow(context, ClearHistoryOf);
}

void ResetPulseAccumulators(const OperationContext& context) {
    if (!MayStart(context)) {
        return;
    }
    bool selected = false;
    OnActiveWindow(context, [&](const Target& target) {
        selected = true;
        context.radio.status.Doing("Setting the pulse counts of " + NameOf(target) + " to 0");
        TellDone(context, target.Window->ResetPulseAccs(),
                 "Pulse counts of " + NameOf(target) + " set to 0", *target.Window);
    });
    if (selected) {
        GetSample(context);
    }
}

bool SyncTimeOf(const OperationContext& context, const Target& target) {
    ClientWindow& window = *target.Window;
    if (!AsksNothing(context) &&
        !Agrees(context, "Do you want to set the logger time to equal the system time?",
                "Synchronize Time", window)) {
        return false;
    }
    if (!KnowsSettings(context, target)) {
        return false;
    }
    context.radio.status.Doing("Setting the clock of " + window.Caption());
    const bool done = cmd::SetLoggerTime(context.exchange, LoggerTimeText(context.clock.Now()));
    static_cast<void>(window.GetStatus());
    static_cast<void>(window.GetTime());
    return TellDone(context, done, "Clock of " + window.Caption() + " set", window);
}

bool ClearHistoryOf(const OperationContext& context, const Target& target) {
    ClientWindow& window = *target.Window;
    if (!AsksNothing(context) &&
        !Agrees(context, "Are you sure you want to erase the history buffer?", "Clear History",
                window)) {
        return false;
    }
    if (!KnowsSettings(context, target)) {
        return false;
    }
    context.radio.status.Doing("Clearing the history of " + window.Caption());
    const bool done = cmd::ClearLoggerHistory(context.exchange) && window.GetStatus();
    return TellDone(context, done, "History of " + window.Caption() + " cleared", window);
}

bool cmdStartup_Click(const OperationContext& context, const Target& target) {
    context.radio.status.Doing("Restarting sampling of " + NameOf(target));
    if (!TellDone(context, cmd::RestartSampling(context.exchange),
                  "Sampling of " + NameOf(target) + " restarted", *target.Window)) {
        return false;
    }
    ReadSettingsOf(context, target);
    return true;
}

std::string LoggerTimeText(const LocalTime& time) {
    return TwoDigits(time.Month) + "/" + TwoDigits(time.Day) + "/" + TwoDigits(time.Year % 100) +
           " " + TwoDigits(time.Hour) + ":" + TwoDigits(time.Minute) + ":" + TwoDigits(time.Second);
}
