#include "app/window_place.h"

#include <gtest/gtest.h>

namespace {

const DesktopBox Laptop{0, 0, 1366, 728};
const DesktopBox Desk{1366, 0, 1920, 1080};
const DesktopSize FirstStart{893, 633};

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
    EXPECT_EQ(FitToScreens(place, {Laptop, Desk}, FirstStart), place);
    const WindowPlace partly{{1366 - 120, 600, 893, 633}, true};
    EXPECT_EQ(FitToScreens(partly, {Laptop}, FirstStart), partly)
        << "enough of the title to drag it by";
}

TEST(WindowPlaceOnScreens, MovesToTheFirstOneWhenItsScreenIsGone) {
    const WindowPlace moved = FitToScreens({{1800, 200, 893, 633}, true}, {Laptop}, FirstStart);
    EXPECT_EQ(moved, (WindowPlace{{(1366 - 893) / 2, (728 - 633) / 2, 893, 633}, true}));
}

TEST(WindowPlaceOnScreens, MovesWhenItsTitleLiesAboveOrAlmostBesideAllScreens) {
    EXPECT_EQ(FitToScreens({{10, -20, 893, 633}, false}, {Laptop}, FirstStart).Box.Top,
              (728 - 633) / 2);
    EXPECT_EQ(FitToScreens({{1366 - 99, 0, 893, 633}, false}, {Laptop}, FirstStart).Box.Left,
              (1366 - 893) / 2);
    EXPECT_EQ(FitToScreens({{0, 728 - 23, 893, 633}, false}, {Laptop}, FirstStart).Box.Top,
              (728 - 633) / 2);
}

TEST(WindowPlaceOnScreens, IsNeverLargerThanItsScreen) {
    const WindowPlace large{{0, 0, 3000, 2000}, false};
    EXPECT_EQ(FitToScreens(large, {Laptop}, FirstStart).Box, (DesktopBox{0, 0, 1366, 728}));
}

TEST(WindowPlaceOnScreens, KeepsTheSizeOfAFirstStartOnAnyScreen) {
    const DesktopBox small{0, 0, 800, 600};
    const WindowPlace first{{20, 30, 893, 633}, false};
    EXPECT_EQ(FitToScreens(first, {small}, FirstStart), first);
    const WindowPlace large{{20, 30, 1000, 700}, false};
    EXPECT_EQ(FitToScreens(large, {small}, FirstStart), first);
    const WindowPlace gone{{1800, 200, 893, 633}, false};
    EXPECT_EQ(FitToScreens(gone, {small}, FirstStart).Box, (DesktopBox{0, 0, 893, 633}));
}

TEST(WindowPlaceOnScreens, StaysAsItIsWhereNoScreenIsKnown) {
    const WindowPlace place{{1800, 200, 893, 633}, false};
    EXPECT_EQ(FitToScreens(place, {}, FirstStart), place);
}

}  // namespace
