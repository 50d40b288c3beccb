#include "setup/setup_changes.h"

#include <string>

#include "link/busy_guard.h"
#include "logger/settings_image.h"
#include "setup/setup_filing.h"
#include "setup/setup_programming.h"
#include "setup/setup_transfer.h"

namespace {

/// What the dialog holds, against an image taken earlier.
struct Comparison {
    bool Taken = false;  ///< the controls went into the state
    bool Equal = false;
};

Comparison Compare(const SetupContext& context, const Bytes& image) {
    Bytes WorkImage;
    const bool taken = FormToState(context.view.Controls(), context.catalogues, context.global);
    const bool encoded = config::EncodeSettingsImage(context.global, WorkImage);
    // What cannot be encoded is no image that anything was saved as.
    return {taken, taken && encoded && ImagesEqual(WorkImage, image)};
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
    if (Compare(context, context.dialog.FileImage).Equal) {
        return false;
    }
    switch (Ask(context,
                "The settings information has changed without being saved to a file.\n"
                "Do you want to save it now?")) {
        case BoxAnswer::No:
            return false;
        case BoxAnswer::Yes:
            return !SaveSetupFile(context);
        default:
            return true;
    }
}

bool CheckProgrammed(const SetupContext& context) {
    const Comparison comparison = Compare(context, context.dialog.LoggerImage);
    if (comparison.Equal && context.dialog.LoggerUncertain == False) {
        return false;
    }
    switch (Ask(context,
                "The settings information has changed without being programmed to the logger.\n"
                "If you exit now, the settings information will be restored from the current "
                "contents of the logger.\nDo you want to program the logger now?")) {
        case BoxAnswer::No:
            return false;
        case BoxAnswer::Yes:
            return !ProgramBeforeClosing(context, comparison.Taken);
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
