#include "setup/setup_changes.h"

#include <string>

#include "link/busy_guard.h"
#include "logger/settings_image.h"
#include "setup/setup_filing.h"
#include "setup/setup_programming.h"
#include "setup/setup_transfer.h"

namespace {

/// Whether the dialog holds what an image taken earlier holds. What cannot be taken or encoded is
/// no image that anything was saved as.
bool StandsAs(const SetupContext& context, const Bytes& image) {
    Bytes WorkImage;
    return FormToState(context.view.Controls(), context.catalogues, context.global) &&
           config::EncodeSettingsImage(context.global, WorkImage) && ImagesEqual(WorkImage, image);
}

BoxAnswer Ask(const SetupContext& context, const std::string& text) {
    return context.outside.Boxes.Show({.Text = text,
                                       .Title = "Data Has Changed",
                                       .Icon = BoxIcon::Information,
                                       .Buttons = BoxButtons::YesNoCancel});
}

}  // namespace

bool ImagesEqual(const Bytes& first, const Bytes& second) {
    return first == second;
}

bool CheckSavedToFile(const SetupContext& context) {
    if (StandsAs(context, context.dialog.FileImage)) {
        return false;
    }
    switch (Ask(context,
                "The settings information has changed without being saved to a file.\n"
                "Do you want to save it now?")) {
        case BoxAnswer::No:
            return false;
        case BoxAnswer::Yes:
            // The field in use may hold what it would refuse, and may do so until it is taken.
            return !context.view.ValidateField() || !SaveSetupFile(context);
        default:
            return true;
    }
}

bool CheckProgrammed(const SetupContext& context) {
    const bool equal = StandsAs(context, context.dialog.LoggerImage);
    if (equal && context.dialog.LoggerUncertain == False) {
        return false;
    }
    switch (Ask(context,
                "The settings information has changed without being programmed to the logger.\n"
                "If you exit now, the settings information will be restored from the current "
                "contents of the logger.\nDo you want to program the logger now?")) {
        case BoxAnswer::No:
            return false;
        case BoxAnswer::Yes:
            return !context.view.ValidateField() || !ProgramBeforeClosing(context);
        default:
            return true;
    }
}

bool QueryUnloadSetup(const SetupContext& context) {
    if (!SetupIsFree(context) || context.dialog.UnloadRuns != False) {
        return false;
    }
    const BusyGuard runs(context.dialog.UnloadRuns);
    if (CheckSavedToFile(context) || CheckProgrammed(context)) {
        return false;
    }
    context.operations.OperationBusy = True;
    return true;
}
