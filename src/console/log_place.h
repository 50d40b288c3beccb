#ifndef ORVIA_CONSOLE_LOG_PLACE_H
#define ORVIA_CONSOLE_LOG_PLACE_H

#include <algorithm>

/// A size or a place, in twips.
struct TwipsPair {
    int Across = 0;
    int Down = 0;
};

/// Where the log window stands in the area of the child windows: towards the lower right of a main
/// window of width `mainWidth`, whose left panel has the size `panel`. Never above or left of the
/// area.
[[nodiscard]] constexpr TwipsPair PlaceOfLog(int mainWidth, TwipsPair panel, TwipsPair log) {
    constexpr int RightMargin = 550;
    constexpr int LowerMargin = 400;
    return {std::max(mainWidth - log.Across - panel.Across - RightMargin, 0),
            std::max(panel.Down - log.Down - LowerMargin, 0)};
}

#endif  // ORVIA_CONSOLE_LOG_PLACE_H
