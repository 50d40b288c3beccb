#include "archive/plot_view.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

#include "archive/plot_path.h"
#include "archive/value_axis.h"

namespace {

using Gesture = PlotView::Gesture;

/// A view of 0 to 1000, all of it shown.
PlotView Whole() {
    PlotView view;
    view.SetWhole({0, 1001});
    view.ZoomAll();
    view.Forget();
    return view;
}

void ExpectShows(const PlotView& view, Moment from, Moment to) {
    EXPECT_EQ(view.Shown().From, from);
    EXPECT_EQ(view.Shown().To, to);
}

TEST(PlotView, ZoomsAtAShareWhichStays) {
    PlotView view = Whole();
    view.ZoomTime(0.5, 0.25, Gesture::Single);
    ExpectShows(view, 125, 625);
    view.ZoomTime(0.5, 1, Gesture::Single);
    ExpectShows(view, 375, 625);
}

TEST(PlotView, ZoomingOutEndsWithAll) {
    PlotView view = Whole();
    view.ZoomTime(0.5, 0, Gesture::Single);
    view.ZoomTime(4, 0, Gesture::Single);
    EXPECT_TRUE(view.ShowsAll());
}

TEST(PlotView, NoPartIsNarrowerThanTenSeconds) {
    PlotView view = Whole();
    view.ZoomTime(1e-6, 0.5, Gesture::Single);
    EXPECT_EQ(view.Shown().Width(), PlotView::LeastWidth);
    view.ZoomTo(500, 501);
    EXPECT_EQ(view.Shown().Width(), PlotView::LeastWidth);
    view.SetWhole({70, 71});
    view.ZoomAll();
    ExpectShows(view, 65, 75);
}

TEST(PlotView, PansUntilHalfLiesOutside) {
    PlotView view = Whole();
    view.ZoomTime(0.2, 0, Gesture::Single);
    view.Pan(1);
    ExpectShows(view, 200, 400);
    view.Pan(100);
    ExpectShows(view, 900, 1100);
    view.Pan(-100);
    ExpectShows(view, -100, 100);
}

TEST(PlotView, APeriodIsShownWhicheverWayItWasDrawn) {
    PlotView view = Whole();
    view.ZoomTo(700, 300);
    ExpectShows(view, 300, 700);
}

TEST(PlotView, GoesBackStepByStepAndWheelTurnsAtOnce) {
    PlotView view = Whole();
    EXPECT_FALSE(view.CanGoBack());
    view.ZoomTo(300, 700);
    for (int i = 0; i < 5; ++i) {
        view.ZoomTime(0.8, 0.5, Gesture::Wheel);
    }
    view.Back();
    ExpectShows(view, 300, 700);
    view.Back();
    EXPECT_TRUE(view.ShowsAll());
    view.Back();
    EXPECT_TRUE(view.ShowsAll());
}

TEST(PlotView, AStepThatShowsTheSameIsNone) {
    PlotView view = Whole();
    view.ZoomAll();
    view.Pan(0);
    EXPECT_FALSE(view.CanGoBack());
}

TEST(PlotView, TwoTurnsOfTheWheelAreTwoSteps) {
    PlotView view = Whole();
    view.ZoomTime(0.5, 0, Gesture::Wheel);
    view.EndGesture();
    view.ZoomTime(0.5, 0, Gesture::Wheel);
    view.Back();
    ExpectShows(view, 0, 500);
}

TEST(PlotView, ADragMovesWhatWasShownWhenItBegan) {
    PlotView view = Whole();
    view.ZoomTo(400, 600);
    view.BeginDrag();
    view.DragBy(0.1, 0);
    view.DragBy(0.25, 0);
    ExpectShows(view, 350, 550);
    view.Back();
    ExpectShows(view, 400, 600);
}

TEST(PlotView, ValuesAreZoomedAtAShareAndMoved) {
    PlotView view = Whole();
    view.ZoomValues(0.5, 0.25, {{"Feet", {0, 100}}, {"GPM", {-1, 1}}}, Gesture::Single);
    EXPECT_DOUBLE_EQ(view.Shown().Values.at("Feet").Lowest, 12.5);
    EXPECT_DOUBLE_EQ(view.Shown().Values.at("Feet").Highest, 62.5);
    EXPECT_DOUBLE_EQ(view.Shown().Values.at("GPM").Lowest, -0.75);
    EXPECT_FALSE(view.ShowsAll());
    view.PanValues(0.5);
    EXPECT_DOUBLE_EQ(view.Shown().Values.at("Feet").Lowest, 37.5);
    view.BeginDrag();
    view.DragBy(0, 0.5);
    EXPECT_DOUBLE_EQ(view.Shown().Values.at("Feet").Lowest, 12.5);
    view.ZoomAll();
    EXPECT_TRUE(view.Shown().Values.empty());
}

TEST(PlotView, ValuesAreZoomedNoFurtherThanNumbersReach) {
    PlotView view = Whole();
    for (int i = 0; i < 2000; ++i) {
        view.ZoomValues(0.5, 0.3,
                        {{"Feet", i == 0 ? ValueRange{1, 2} : view.Shown().Values.at("Feet")}},
                        Gesture::Wheel);
    }
    const ValueRange range = view.Shown().Values.at("Feet");
    EXPECT_LT(range.Lowest, range.Highest);
    EXPECT_FALSE(ValueTicksOf(range, 10).At.empty());
}

TEST(PlotView, ANewWholeIsFollowedUnlessTheOperatorZoomed) {
    PlotView view = Whole();
    view.SetWhole({60, 1061});
    ExpectShows(view, 60, 1060);
    EXPECT_TRUE(view.ShowsAll());
    view.ZoomTo(500, 600);
    view.SetWhole({120, 1121});
    ExpectShows(view, 500, 600);
}

TEST(PlotView, RevealsAMomentByTheShortestWay) {
    PlotView view = Whole();
    view.ZoomTo(400, 600);
    view.Reveal(500);
    ExpectShows(view, 400, 600);
    view.Reveal(700);
    ExpectShows(view, 502, 702);
    view.Reveal(100);
    ExpectShows(view, 98, 298);
}

TEST(PlotView, SharesAndMomentsTurnIntoEachOther) {
    const PlotPart part{100, 300, {}};
    EXPECT_EQ(part.At(0.5), 200);
    EXPECT_EQ(part.At(-1), 100);
    EXPECT_EQ(part.At(2), 300);
    EXPECT_EQ(part.ShareOf(150), 0.25);
    EXPECT_FALSE(part.ShareOf(301));
    EXPECT_FALSE(part.ShareOf(99));
}

TEST(WheelFactor, ANotchIsAFifth) {
    EXPECT_DOUBLE_EQ(WheelFactor(120), 0.8);
    EXPECT_DOUBLE_EQ(WheelFactor(-120), 1.25);
    EXPECT_DOUBLE_EQ(WheelFactor(0), 1);
}

// ----- axes of values

TEST(ValueAxis, LeavesRoomAroundTheFigures) {
    const ValueRange range = RangeWithRoom(ValueRange{0, 100});
    EXPECT_DOUBLE_EQ(range.Lowest, -5);
    EXPECT_DOUBLE_EQ(range.Highest, 105);
}

TEST(ValueAxis, ARangeAlwaysHasSomeExtent) {
    for (const double same : {0.0, 5.0, -7.5, 1e-300, 1.7e308, -1.7e308}) {
        const ValueRange range = RangeWithRoom(ValueRange{same, same});
        EXPECT_LT(range.Lowest, range.Highest) << same;
        EXPECT_TRUE(std::isfinite(range.Highest - range.Lowest)) << same;
    }
    EXPECT_LT(RangeWithRoom(std::nullopt).Lowest, RangeWithRoom(std::nullopt).Highest);
    const ValueRange widest = RangeWithRoom(ValueRange{-1.7e308, 1.7e308});
    EXPECT_TRUE(std::isfinite(widest.Highest - widest.Lowest));
}

TEST(ValueAxis, TicksAreRoundAndAllHaveTheSameDecimals) {
    const ValueTicks ticks = ValueTicksOf({-0.13, 1.07}, 8);
    EXPECT_EQ(ticks.Texts, (std::vector<std::string>{"0.0", "0.2", "0.4", "0.6", "0.8", "1.0"}));
    EXPECT_EQ(ValueTicksOf({0, 40000}, 6).Texts,
              (std::vector<std::string>{"0", "10000", "20000", "30000", "40000"}));
    EXPECT_EQ(ValueTicksOf({-5, 5}, 3).Texts, (std::vector<std::string>{"-5", "0", "5"}));
}

TEST(ValueAxis, NoMoreTicksThanThereIsRoomForAtAnyScale) {
    for (double scale = 1e-12; scale < 1e15; scale *= 7.3) {
        for (const int most : {2, 5, 20}) {
            const ValueTicks ticks = ValueTicksOf({scale, scale * 3}, most);
            EXPECT_LE(ticks.At.size(), static_cast<std::size_t>(most)) << scale;
            const std::set<std::string> texts(ticks.Texts.begin(), ticks.Texts.end());
            EXPECT_EQ(texts.size(), ticks.Texts.size()) << scale;
        }
    }
}

// ----- paths

constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr PlotBox Box{100, 50, 1000, 200, 0, 1000, {0, 10}};

TEST(PlotPath, PointsLieWhereTheirTimesAndValuesAre) {
    const PlotPath path = PathOf({{0, 0}, {500, 5}, {1000, 10}}, Box, 100, 0);
    ASSERT_EQ(path.Spots.size(), 3U);
    EXPECT_EQ(path.Ends, (std::vector<std::size_t>{3}));
    EXPECT_DOUBLE_EQ(path.Spots[0].X, 100);
    EXPECT_DOUBLE_EQ(path.Spots[0].Y, 250);
    EXPECT_DOUBLE_EQ(path.Spots[1].X, 600);
    EXPECT_DOUBLE_EQ(path.Spots[2].Y, 50);
    EXPECT_EQ(path.Markers.size(), 3U) << "few points have a marker each";
    EXPECT_FALSE(path.Dense);
}

TEST(PlotPath, BreaksEndStrokesAndLonePointsHaveAMarker) {
    std::vector<PlotPoint> points;
    for (Moment time = 0; time < 400; time += 2) {
        points.push_back({time, 5});
    }
    points.push_back({398, NoNumber});
    points.push_back({700, 7});
    points.push_back({700, NoNumber});
    points.push_back({900, 5});
    points.push_back({902, 5});
    const PlotPath path = PathOf(points, Box, 10'000, 0);
    EXPECT_EQ(path.Ends, (std::vector<std::size_t>{200, 202}));
    EXPECT_EQ(path.Spots.size(), 202U);
    const auto lone = std::find_if(path.Markers.begin(), path.Markers.end(),
                                   [](const PlotSpot& spot) { return spot.X == 800; });
    EXPECT_NE(lone, path.Markers.end());
    EXPECT_LE(path.Markers.size(), 3U);
}

TEST(PlotPath, MarkersStandApartAndStayOnTheirPointsWhilePanning) {
    std::vector<PlotPoint> points;
    for (Moment time = -500; time < 1500; time += 4) {
        points.push_back({time, 5});
    }
    const auto times = [&](Moment from) {
        PlotBox box = Box;
        box.From = from;
        box.To = from + 1000;
        std::set<Moment> marked;
        for (const PlotSpot& spot : PathOf(points, box, 100, 0.3).Markers) {
            marked.insert(from + static_cast<Moment>(std::lround(spot.X - box.Left)));
        }
        return marked;
    };
    const std::set<Moment> here = times(0);
    EXPECT_GE(here.size(), 9U);
    EXPECT_LE(here.size(), 11U);
    const std::set<Moment> there = times(57);
    std::set<Moment> both;
    std::set_intersection(here.begin(), here.end(), there.begin(), there.end(),
                          std::inserter(both, both.begin()));
    EXPECT_GE(both.size(), here.size() - 1);
}

TEST(PlotPath, NoSpotLiesTooFarOutsideToBeDrawnAndLinesKeepTheirSlope) {
    PlotBox narrow = Box;
    narrow.Values = {4.999, 5.001};
    const PlotPath path = PathOf({{0, 0}, {1000, 10}, {1001, 1e300}}, narrow, 100, 0);
    for (const PlotSpot& spot : path.Spots) {
        EXPECT_LE(std::fabs(spot.X), 10'000);
        EXPECT_LE(std::fabs(spot.Y), 10'000);
    }
    ASSERT_EQ(path.Ends, (std::vector<std::size_t>{2}));
    const PlotSpot a = path.Spots[0];
    const PlotSpot b = path.Spots[1];
    const double middle = a.X + (b.X - a.X) * (150 - a.Y) / (b.Y - a.Y);
    EXPECT_NEAR(middle, 600, 0.01) << "through the middle of the box";
    EXPECT_TRUE(PathOf({{0, 9}, {1000, 9}}, narrow, 100, 0).Spots.empty());
}

TEST(PlotPath, ManyPointsAreDense) {
    const std::vector<PlotPoint> points(2001, PlotPoint{500, 5});
    EXPECT_TRUE(PathOf(points, Box, 100, 0).Dense);
}

}  // namespace
