#include "setup/setup_programming.h"

#include "common/fault.h"
#include "link/busy_guard.h"
#include "logger/commands.h"
#include "logger/settings_image.h"
#include "logger/settings_transfer.h"
#include "setup/input_held.h"
#include "setup/setup_transfer.h"

namespace {

constexpr const char* Title = "Program Settings";

std::string LoggerName(const SetupContext& context) {
    return context.global.LoggerName.empty() ? "the logger" : context.global.LoggerName;
}

bool WriteAndRestart(const SetupContext& context) {
    if (context.link.LinkState == LinkDisconnected && !context.reselect()) {
        return false;
    }
    Bytes image;
    if (!config::EncodeSettingsImage(context.global, image)) {
        return false;
    }
    // From here on a piece can reach the logger.
    context.dialog.LoggerUncertain = True;
    context.status.Doing("Programming " + LoggerName(context));
    if (!config::WriteLoggerSettings(context.exchange, context.global)) {
        return false;
    }
    context.status.Doing("Restarting sampling of " + LoggerName(context));
    if (!cmd::RestartSampling(context.exchange)) {
        return false;
    }
    context.dialog.LoggerUncertain = False;
    return true;
}

/// Writes the current settings to the logger, under the wait pointer. A fault leaves the pointer.
bool Program(const SetupContext& context) {
    const InputHeld held(context.view);
    const bool programmed = WriteAndRestart(context);
    context.status.Came(programmed ? "Settings of " + LoggerName(context) + " programmed"
                                   : "Programming " + LoggerName(context) + " failed",
                        programmed);
    return programmed;
}

void TellNotCompleted(const SetupContext& context) {
    context.outside.Boxes.Show({.Text = "Error: programming not completed successfully.",
                                .Title = Title,
                                .Icon = BoxIcon::Stop});
}

bool IsConfirmed(const SetupContext& context) {
    return context.outside.Boxes.Show(
               {.Text = "Are you sure you want to program settings into logger memory?",
                .Title = Title,
                .Icon = BoxIcon::Information,
                .Buttons = BoxButtons::YesNo}) == BoxAnswer::Yes;
}

void TakeAndProgram(const SetupContext& context) {
    context.view.SetPointer(Pointer::Hourglass);
    if (!FormToState(context.view.Controls(), context.catalogues, context.global)) {
        throw Fault("a control holds no value");
    }
    const bool programmed = Program(context);
    context.view.SetPointer(Pointer::Normal);
    if (!programmed) {
        TellNotCompleted(context);
        context.view.EnableCancel(true);
        return;
    }
    // The logger has been compared with these very settings.
    static_cast<void>(config::EncodeSettingsImage(context.global, context.dialog.LoggerImage));
    context.view.EnableCancel(true);
    context.view.FocusCancel();
}

}  // namespace

void ProgramSettings(const SetupContext& context) {
    if (!LoggerIsFree(context)) {
        return;
    }
    const BusyGuard busy(context.operations.OperationBusy);
    context.view.EnableCancel(false);
    if (!IsConfirmed(context)) {
        context.view.EnableCancel(true);
        return;
    }
    try {
        TakeAndProgram(context);
    } catch (const Fault&) {
        context.status.End();
        context.outside.Boxes.Show(
            {.Text = "Error: unable to complete operation. Check that setup data is valid and "
                     "connection is working.",
             .Title = Title,
             .Icon = BoxIcon::Stop});
    }
}

bool ProgramBeforeClosing(const SetupContext& context) {
    bool programmed = false;
    if (FormToState(context.view.Controls(), context.catalogues, context.global) &&
        LoggerIsFree(context)) {
        const BusyGuard busy(context.operations.OperationBusy);
        context.view.SetPointer(Pointer::Hourglass);
        try {
            programmed = Program(context);
        } catch (const Fault&) {
            context.status.End();
            programmed = false;
        }
        context.view.SetPointer(Pointer::Normal);
    }
    if (!programmed) {
        TellNotCompleted(context);
    }
    return programmed;
}
