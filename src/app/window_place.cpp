#include "app/window_place.h"

#include <algorithm>
#include <array>

#include "common/number_text.h"

namespace {

constexpr std::string_view MaximizedWord = "maximized";
constexpr std::string_view NormalWord = "normal";

// What must be in sight of a title for it to be dragged by.
constexpr int LeastTitleWidth = 100;
constexpr int TitleHeight = 24;
constexpr int SmallestSide = 200;

/// Takes the first word off the text.
std::string_view TakeWord(std::string_view& text) {
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return word;
}

int Overlap(int start, int length, int otherStart, int otherLength) {
    return std::min(start + length, otherStart + otherLength) - std::max(start, otherStart);
}

bool ShowsTitle(const DesktopBox& screen, const DesktopBox& window) {
    return Overlap(window.Left, window.Width, screen.Left, screen.Width) >= LeastTitleWidth &&
           Overlap(window.Top, TitleHeight, screen.Top, screen.Height) >= TitleHeight;
}

}  // namespace

std::string TextOfPlace(const WindowPlace& place) {
    return IntegerToText(place.Box.Left) + " " + IntegerToText(place.Box.Top) + " " +
           IntegerToText(place.Box.Width) + " " + IntegerToText(place.Box.Height) + " " +
           std::string(place.Maximized ? MaximizedWord : NormalWord);
}

std::optional<WindowPlace> PlaceOfText(std::string_view text) {
    std::array<std::int32_t, 4> numbers = {};
    for (std::int32_t& number : numbers) {
        if (!TextToLong(TakeWord(text), number)) {
            return std::nullopt;
        }
    }
    const auto [left, top, width, height] = numbers;
    if ((text != MaximizedWord && text != NormalWord) || width < SmallestSide ||
        height < SmallestSide) {
        return std::nullopt;
    }
    return WindowPlace{{left, top, width, height}, text == MaximizedWord};
}

WindowPlace FitToScreens(WindowPlace place, const std::vector<DesktopBox>& screens,
                         const DesktopSize& usual) {
    if (screens.empty()) {
        return place;
    }
    DesktopBox& box = place.Box;
    auto screen = std::find_if(screens.begin(), screens.end(), [&](const DesktopBox& candidate) {
        return ShowsTitle(candidate, box);
    });
    const bool gone = screen == screens.end();
    screen = gone ? screens.begin() : screen;
    box.Width = std::min(box.Width, std::max(screen->Width, usual.Width));
    box.Height = std::min(box.Height, std::max(screen->Height, usual.Height));
    if (gone) {
        // Of one that is larger than the screen the upper left is in sight.
        box.Left = screen->Left + std::max(screen->Width - box.Width, 0) / 2;
        box.Top = screen->Top + std::max(screen->Height - box.Height, 0) / 2;
    }
    return place;
}
