#include "console/logger_orders.h"

#include "common/text.h"
#include "logger/commands.h"

namespace {

bool AsksNothing(const OperationContext& context) {
    return context.operations.ForAllActive != False;
}

bool Agrees(const OperationContext& context, const std::string& question, const std::string& title,
            const ClientWindow& window) {
    return context.radio.boxes.Show({.Text = question + "\n\n    Radio: " + window.Caption(),
                                     .Title = title,
                                     .Icon = BoxIcon::Information,
                                     .Buttons = BoxButtons::YesNo}) == BoxAnswer::Yes;
}

/// Whether the window's settings could be read, now if not before.
bool KnowsSettings(const OperationContext& context, ClientWindow& window) {
    if (window.SettingsValid() != False) {
        return true;
    }
    static_cast<void>(window.GetSettings());
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
    OnActiveWindow(context, [&selected](const Target& target) {
        selected = true;
        static_cast<void>(target.Window->ResetPulseAccs());
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
    if (!KnowsSettings(context, window)) {
        return false;
    }
    const bool done = cmd::SetLoggerTime(context.exchange, LoggerTimeText(context.clock.Now()));
    static_cast<void>(window.GetStatus());
    static_cast<void>(window.GetTime());
    return done;
}

bool ClearHistoryOf(const OperationContext& context, const Target& target) {
    ClientWindow& window = *target.Window;
    if (!AsksNothing(context) &&
        !Agrees(context, "Are you sure you want to erase the history buffer?", "Clear History",
                window)) {
        return false;
    }
    return KnowsSettings(context, window) && cmd::ClearLoggerHistory(context.exchange) &&
           window.GetStatus();
}

bool cmdStartup_Click(const OperationContext& context, const Target& target) {
    if (!cmd::RestartSampling(context.exchange)) {
        return false;
    }
    static_cast<void>(target.Window->GetSettings());
    return true;
}

std::string LoggerTimeText(const LocalTime& time) {
    return TwoDigits(time.Month) + "/" + TwoDigits(time.Day) + "/" + TwoDigits(time.Year % 100) +
           " " + TwoDigits(time.Hour) + ":" + TwoDigits(time.Minute) + ":" + TwoDigits(time.Second);
}
