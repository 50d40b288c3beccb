#include "setup/setup_form_state.h"

#include "logger/settings_image.h"
#include "setup/recent_files.h"
#include "setup/setup_flow_page.h"
#include "setup/setup_transfer.h"

namespace {

void Show(const SetupContext& context, const SetupControls& controls) {
    const int before = context.view.Controls().FlowOption;
    context.view.ShowControls(controls);
    if (controls.FlowOption != before) {
        UpdateFlowOptions(context);
    }
}

/// Shows what can be shown; a control that cannot keeps what it had.
void ShowState(const SetupContext& context) {
    SetupControls controls = context.view.Controls();
    static_cast<void>(StateToForm(context.global, context.catalogues, controls));
    Show(context, controls);
}

}  // namespace

void OpenSetup(const SetupContext& context) {
    SetupDialog& dialog = context.dialog;
    // Both describe the logger before any control has had its say.
    static_cast<void>(config::EncodeSettingsImage(context.global, dialog.FileImage));
    dialog.LoggerImage = dialog.FileImage;
    ShowState(context);
    dialog.CurrentFile.clear();
    context.operations.OperationBusy = False;
}

bool ShowLoadedState(const SetupContext& context) {
    SetupControls controls = context.view.Controls();
    if (!StateToForm(context.global, context.catalogues, controls)) {
        return false;
    }
    Show(context, controls);
    return true;
}

void InitializeSetup(const SetupContext& context) {
    if (!SetupIsFree(context)) {
        return;
    }
    const BoxAnswer answer = context.outside.Boxes.Show(
        {.Text = "This action will reset all setup values to defaults, but will not program the\n"
                 "values into the logger until the Program button is clicked. Do you want to "
                 "proceed?",
         .Title = "Initialize to Default Values",
         .Icon = BoxIcon::Question,
         .Buttons = BoxButtons::YesNo});
    if (answer == BoxAnswer::Yes) {
        SetDefaultSettings(context.global);
        ShowState(context);
    }
}

void SetupTick(const SetupContext& context) {
    const SetupControls controls = context.view.Controls();
    for (std::size_t i = 0; i < controls.Alarms.size(); ++i) {
        context.view.EnableAlarm(static_cast<int>(i), controls.Alarms[i].chkAlarm);
    }
    for (std::size_t i = 0; i < context.settings.LastFile.size(); ++i) {
        context.view.SetRecentFile(static_cast<int>(i),
                                   FileNameOfPath(context.settings.LastFile[i]));
    }
}
