#ifndef ORVIA_APP_LIFECYCLE_H
#define ORVIA_APP_LIFECYCLE_H

#include <functional>
#include <string>
#include <string_view>

#include "app/shared_state.h"
#include "records/main_view.h"

/// Title of the main window: name and version.
[[nodiscard]] std::string ApplicationTitle();

/// The version, as "1.0.0".
[[nodiscard]] std::string VersionText();

/// First part of the start: settings read, a book that is gone forgotten, link state shown.
void BeginStart(SharedState& state, MainView& view);

/// Lets the splash stand for a second; the supervising timer runs.
void AwaitSplash(Link& link);

/// Reads the catalogues of flumes and weirs beside the program.
void ReadCatalogues(SharedState& state);

/// Last part of the start, behind the connect dialog: book and defaults of the radio.
void EndStart(SharedState& state, MainView& view);

/// Size of the main window, in twips.
struct WindowSize {
    int Width = 0;
    int Height = 0;
};

/// Writes version and window size to a file beside the program, but only with `errorTrapping`
/// off, which no run of the program has: the file serves who builds it.
void WriteVersionFile(Flag errorTrapping, std::string_view appPath, WindowSize size);

/// Closes the console: saves the settings, leaves command mode, closes the port and has
/// `unloadForms` unload every form. A fault ends just the one of these in which it happens. False
/// if an exchange is on the link, which refuses the close.
[[nodiscard]] bool QueryUnload(SharedState& state, MainView& view, WindowSize size,
                               const std::function<void()>& unloadForms);

#endif  // ORVIA_APP_LIFECYCLE_H
