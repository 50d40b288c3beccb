#ifndef ORVIA_APP_WINDOW_PLACE_H
#define ORVIA_APP_WINDOW_PLACE_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A rectangle of the desktop, in device-independent pixels.
struct DesktopBox {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
    bool operator==(const DesktopBox&) const = default;
};

/// Where the main window stood, so that it can stand there again at the next start.
struct WindowPlace {
    DesktopBox Box;  ///< of the window when it is not maximized
    bool Maximized = false;
    bool operator==(const WindowPlace&) const = default;
};

/// Width and height of a window.
struct DesktopSize {
    int Width = 0;
    int Height = 0;
};

/// The place as one line of text.
[[nodiscard]] std::string TextOfPlace(const WindowPlace& place);

/// The place that such a line tells; nothing if it is none.
[[nodiscard]] std::optional<WindowPlace> PlaceOfText(std::string_view text);

/// The place on the screens there are now. One whose title could not be reached with the mouse,
/// since its screen is gone, moves to the first screen. None is larger than its screen, but for one
/// no larger than `usual`, the size of a first start, which goes before the screen's.
[[nodiscard]] WindowPlace FitToScreens(WindowPlace place, const std::vector<DesktopBox>& screens,
                                       const DesktopSize& usual);

#endif  // ORVIA_APP_WINDOW_PLACE_H
