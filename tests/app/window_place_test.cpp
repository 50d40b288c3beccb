#include "app/window_place.h"

#include <gtest/gtest.h>

namespace {

const DesktopBox Laptop{0, 0, 1366, 728};
const DesktopBox Desk{1366, 0, 1920, 1080};

TEST(WindowPlaceText, ReadsWhatItWrote) {
    for (const bool maximized : {false, true}) {
        const WindowPlace place{{-20, 35, 893, 633}, maximized};
        EXPECT_EQ(PlaceOfText(TextOfPlace(place)), place);
    }
}

TEST(WindowPlaceText, TakesNothingElseForAPlace) {
    for (const char* text : {"", "1 2 893 633", "1 2 893 633 ", "1 2 893 633 normally", "1 2 893",
                             "a 2 893 633 normal", "1 2 0 633 normal", "1 2 893 -633 normal",
                             "1 2 893 99999999999 normal", "1  2 893 633 normal"}) {
        EXPECT_EQ(PlaceOfText(text), std::nullopt) << text;
    }
}

TEST(WindowPlaceOnScreens, StaysWhereItsTitleIsInSight) {
    const WindowPlace place{{1800, 200, 893, 633}, false};
    EXPECT_EQ(FitToScreens(place, {Laptop, Desk}), place);
    const WindowPlace partly{{1366 - 120, 600, 893, 633}, true};
    EXPECT_EQ(FitToScreens(partly, {Laptop}), partly) << "enough of the title to drag it by";
}

TEST(WindowPlaceOnScreens, MovesToTheFirstOneWhenItsScreenIsGone) {
    const WindowPlace moved = FitToScreens({{1800, 200, 893, 633}, true}, {Laptop});
    EXPECT_EQ(moved, (WindowPlace{{(1366 - 893) / 2, (728 - 633) / 2, 893, 633}, true}));
}

TEST(WindowPlaceOnScreens, MovesWhenItsTitleLiesAboveOrAlmostBesideAllScreens) {
    EXPECT_EQ(FitToScreens({{10, -20, 893, 633}, false}, {Laptop}).Box.Top, (728 - 633) / 2);
    EXPECT_EQ(FitToScreens({{1366 - 99, 0, 893, 633}, false}, {Laptop}).Box.Left, (1366 - 893) / 2);
    EXPECT_EQ(FitToScreens({{0, 728 - 23, 893, 633}, false}, {Laptop}).Box.Top, (728 - 633) / 2);
}

TEST(WindowPlaceOnScreens, IsNeverLargerThanItsScreen) {
    const WindowPlace large{{0, 0, 3000, 2000}, false};
    EXPECT_EQ(FitToScreens(large, {Laptop}).Box, (DesktopBox{0, 0, 1366, 728}));
}

TEST(WindowPlaceOnScreens, StaysAsItIsWhereNoScreenIsKnown) {
    const WindowPlace place{{1800, 200, 893, 633}, false};
    EXPECT_EQ(FitToScreens(place, {}), place);
}

}  // namespace
