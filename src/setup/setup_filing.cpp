#include "setup/setup_filing.h"

#include <sstream>

#include "common/file_rewrite.h"
#include "common/line_reader.h"
#include "common/path_text.h"
#include "logger/settings_image.h"
#include "setup/recent_files.h"
#include "setup/setup_changes.h"
#include "setup/setup_file.h"
#include "setup/setup_form_state.h"
#include "setup/setup_transfer.h"

namespace {

FileQuery SetupFileQuery(const SetupContext& context, const std::string& title) {
    return {.Title = title,
            .DefaultExtension = ".dat",
            .Filter = "Setup Files (*.set)|*.set",
            .InitialName = InitialSetupName(context.settings, context.dialog.CurrentFile,
                                            context.outside.StartFolder())};
}

bool MayOverwrite(const SetupContext& context, const std::string& path) {
    return !FileExists(path) ||
           context.outside.Boxes.Show(
               {.Text = "The setup file already exists, do you want to overwrite it?",
                .Title = "Save Setup",
                .Icon = BoxIcon::Information,
                .Buttons = BoxButtons::YesNo}) == BoxAnswer::Yes;
}

bool WriteFileAt(const SetupContext& context, const std::string& path) {
    const LocalTime now = context.outside.Clock.Now();
    std::ostringstream text;
    WriteSetupFile(text, context.global,
                   {context.version, context.outside.Clock.DateText(now),
                    context.outside.Clock.TimeText(now)});
    return RewriteFile(path, text.view());
}

/// Reads a file over the defaults: keys that it lacks take those.
bool ReadFileAt(const SetupContext& context, const std::string& path) {
    TextFile file;
    if (!OpenTextFile(path, LargestSetupFile, file)) {
        return false;
    }
    SetDefaultSettings(context.global);
    return !ReadSetupFile(file.Stream, context.global, file.Size).has_value();
}

bool LoadFileAt(const SetupContext& context, const std::string& path) {
    if (!ReadFileAt(context, path)) {
        return false;
    }
    static_cast<void>(config::EncodeSettingsImage(context.global, context.dialog.FileImage));
    return ShowLoadedState(context);
}

}  // namespace

bool SaveSetupFile(const SetupContext& context) {
    if (!SetupIsFree(context)) {
        return false;
    }
    const auto path =
        context.outside.Dialogs.PickForSaving(SetupFileQuery(context, "Save Setup File"), false);
    if (!path) {
        return false;
    }
    RememberChosenFile(*path, context.settings, context.dialog.CurrentFile);
    if (!MayOverwrite(context, *path)) {
        return false;
    }
    const bool taken = FormToState(context.view.Controls(), context.catalogues, context.global);
    if (!taken || !WriteFileAt(context, *path)) {
        context.outside.Boxes.Show({.Text = "Error: file was not saved correctly.",
                                    .Title = "Save Setup",
                                    .Icon = BoxIcon::Stop});
        return false;
    }
    static_cast<void>(config::EncodeSettingsImage(context.global, context.dialog.FileImage));
    return true;
}

void LoadSetupFile(const SetupContext& context) {
    if (!SetupIsFree(context) || CheckSavedToFile(context)) {
        return;
    }
    const auto path =
        context.outside.Dialogs.PickExisting(SetupFileQuery(context, "Load Setup File"));
    if (!path) {
        return;
    }
    RememberChosenFile(*path, context.settings, context.dialog.CurrentFile);
    if (!LoadFileAt(context, *path)) {
        context.outside.Boxes.Show({.Text = "Error: file was not loaded correctly.",
                                    .Title = "Load Setup",
                                    .Icon = BoxIcon::Stop});
    }
}

void LoadRecentFile(const SetupContext& context, int place) {
    if (!SetupIsFree(context)) {
        return;
    }
    const std::string path = context.settings.LastFile.at(static_cast<std::size_t>(place));
    if (path.empty() || !FileExists(path) ||
        !RememberFolder(path, context.settings, context.dialog.CurrentFile)) {
        return;
    }
    LoadSetupFile(context);
}
