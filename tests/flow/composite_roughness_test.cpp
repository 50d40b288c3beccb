// Manning's equation with one and several roughnesses, against published examples and sums done by
// hand.

#include "flow/composite_roughness.h"

#include <gtest/gtest.h>

#include <cmath>

#include "flow/rating_support.h"

namespace {

constexpr double Foot = 0.3048;
constexpr double CubicFoot = Foot * Foot * Foot;

double CfsAt(const RatingDevice& device, double feet) {
    return RatingFlowAt(ComputeRating(device), feet);
}

// hydReng (a package of the R archive), example of its function for the flow by Einstein's mean
// roughness: bed 5 m wide with Strickler 35, banks 1 in 2 with 45, 2 m deep, slope 0.0001: 8.677.
TEST(CompositeRoughness, EinsteinAgreesWithAPublishedExample) {
    const std::vector<RatingRow> rows = {
        {0, 2, 1.0 / 45}, {4, 0, 1.0 / 35}, {9, 0, 1.0 / 45}, {13, 2, 0}};
    const PointSection section(rows, 0.03);
    EXPECT_NEAR(section.Area(2), 18, 1e-12);
    EXPECT_NEAR(section.Flow(2, 0.0001, Composing::OneVelocity), 8.677, 0.0005);
}

// The same channel as a trapezoid with two roughnesses.
TEST(CompositeRoughness, ATrapezoidWithRoughBedIsTheSameSection) {
    const RatingDevice device = DeviceOf("channel-trapezoidal",
                                         {{"width", 5},
                                          {"side-slope", 2},
                                          {"depth", 2},
                                          {"slope", 0.01},
                                          {"roughness", 1.0 / 35},
                                          {"wall-roughness", 1.0 / 45}},
                                         InMeters);
    EXPECT_NEAR(CfsAt(device, 2 / Foot) * CubicFoot, 8.677, 0.0005);
    EXPECT_EQ(ComputeRating(device).Equations.size(), 2);
}

// Chow (1959), example 6-2: bed 20 ft, sides 2 to 1, n 0.025, slope 0.0016; 400 cfs stand 3.36 ft
// deep.
TEST(CompositeRoughness, ATrapezoidAgreesWithChowsExample) {
    const double flow = CfsAt(DeviceOf("channel-trapezoidal", {{"width", 20},
                                                               {"side-slope", 2},
                                                               {"depth", 5},
                                                               {"slope", 0.16},
                                                               {"roughness", 0.025}}),
                              3.36);
    EXPECT_NEAR(flow, 400, 1);
}

// The flow calculation of the console has a round pipe of its own, with 1.486 and 0.667 for this
// equation's 1.4859 and 2/3.
TEST(CompositeRoughness, ARoundPipeAgreesWithTheFlowCalculation) {
    const RatingDevice pipe =
        DeviceOf("channel-circular", {{"pipe-diameter", 1}, {"slope", 1}, {"roughness", 0.014}});
    EXPECT_NEAR(CfsAt(pipe, 0.5), 1.65340, 0.0015);
    EXPECT_NEAR(CfsAt(pipe, 0.25), 0.45289, 0.0008);
}

// Well known of round pipes: at 0.938 of the height the flow is greatest, 1.076 of the full one.
TEST(CompositeRoughness, ARoundPipesTableEndsWhereFlowStopsRising) {
    const RatingDevice pipe =
        DeviceOf("channel-circular", {{"pipe-diameter", 2}, {"slope", 1}, {"roughness", 0.014}});
    const Rating rating = ComputeRating(pipe);
    EXPECT_NEAR(rating.GreatestHead / 2, 0.938, 0.0005);
    const double full = 1.4859 / 0.014 * 3.14159265 * std::pow(0.5, 2.0 / 3) * 0.1;
    EXPECT_NEAR(rating.GreatestFlow / full, 1.076, 0.0005);
    EXPECT_TRUE(Remarks(rating, RatingWeight::Note, "0.94 of the height"));
}

// Full, a standard egg carries 0.5105 H^2 (0.1931 H)^(2/3) S^(1/2) / n.
TEST(CompositeRoughness, AnEggsTableEndsNearItsCrownToo) {
    const Rating rating = ComputeRating(
        DeviceOf("channel-egg", {{"height", 3}, {"slope", 0.2}, {"roughness", 0.013}}, InMeters));
    const double full = 0.5105 * 9 * std::pow(0.1931 * 3, 2.0 / 3) * std::sqrt(0.002) / 0.013;
    EXPECT_GT(rating.GreatestHead * Foot / 3, 0.93);
    EXPECT_LT(rating.GreatestHead * Foot / 3, 0.96);
    EXPECT_NEAR(rating.GreatestFlow * CubicFoot / full, 1.06, 0.02);
}

/// A river between two plains, water 2.6 m deep; areas, perimeters and flows by hand: river 32.4 m2
/// over 15.6569 m, plains 12 over 20.6 and 9.6 over 16.6 m.
std::vector<RatingRow> River() {
    return {{0, 3, 0.06},  {0, 2, 0.06},  {20, 2, 0.03}, {22, 0, 0.03},
            {32, 0, 0.03}, {34, 2, 0.05}, {50, 2, 0.05}, {50, 3, 0}};
}

TEST(CompositeRoughness, TheThreeWaysOfComposingGiveTheirSums) {
    const PointSection section(River(), 0.02);
    EXPECT_NEAR(section.Area(2.6), 54, 1e-9);
    const double slope = 0.0004;
    EXPECT_NEAR(section.Flow(2.6, slope, Composing::OneVelocity), 22.4519, 0.0005);
    EXPECT_NEAR(section.Flow(2.6, slope, Composing::Forces), 22.1113, 0.0005);
    EXPECT_NEAR(section.Flow(2.6, slope, Composing::Conveyances), 40.5318, 0.0005);
}

TEST(CompositeRoughness, OneRoughnessIsComposedToItself) {
    const RoughPart parts[] = {{2, 0.02, 1}, {3, 0.02, 1}};
    EXPECT_NEAR(ComposedRoughness(parts, Composing::OneVelocity), 0.02, 1e-15);
    EXPECT_NEAR(ComposedRoughness(parts, Composing::Forces), 0.02, 1e-15);
    EXPECT_EQ(ComposedRoughness({}, Composing::Forces), 0);
}

TEST(PointSections, ASectionMayBeToldFromEitherBank) {
    std::vector<RatingRow> rows = {{0, 2, 0.03}, {3, 0, 0.02}, {5, 0, 0.04}, {9, 2, 0}};
    const double flow = PointSection(rows, 0.02).Flow(1.5, 0.001, Composing::OneVelocity);
    const std::vector<RatingRow> back = {{9, 2, 0.04}, {5, 0, 0.02}, {3, 0, 0.03}, {0, 2, 0}};
    EXPECT_NEAR(PointSection(back, 0.02).Flow(1.5, 0.001, Composing::OneVelocity), flow, 1e-12);
}

TEST(PointSections, ARoughnessOfZeroIsThatOfTheRowBefore) {
    const PointSection section({{0, 1, 0}, {1, 0, 0}, {2, 0, 0.05}, {3, 1, 0}}, 0.02);
    const PointSection told({{0, 1, 0.02}, {1, 0, 0.02}, {2, 0, 0.05}, {3, 1, 0}}, 0.9);
    EXPECT_EQ(section.Flow(0.8, 0.01, Composing::Forces), told.Flow(0.8, 0.01, Composing::Forces));
    EXPECT_TRUE(section.SeveralRoughnesses());
}

TEST(PointSections, AClosedSectionIsFullAtItsCrown) {
    const RatingDevice box =
        RowsOf("channel-section", "0 1\n0 0\n2 0\n2 1\n0 1", {{"slope", 1}, {"roughness", 0.014}});
    const Rating rating = ComputeRating(box);
    ASSERT_TRUE(rating.Made());
    // A box's roof takes its flow away at once: the flow is greatest just below it.
    EXPECT_NEAR(rating.GreatestHead, 1, 0.01);
    const double below = 1.4859 / 0.014 * 2 * std::pow(0.5, 2.0 / 3) * 0.1;
    EXPECT_NEAR(rating.GreatestFlow / below, 1, 0.02);
    // The other way round it is the same box.
    const RatingDevice other =
        RowsOf("channel-section", "0 1\n2 1\n2 0\n0 0\n0 1", {{"slope", 1}, {"roughness", 0.014}});
    EXPECT_NEAR(CfsAt(other, 0.5) / CfsAt(box, 0.5), 1, 1e-9);
}

TEST(PointSections, ASectionOfAPipesShapeFlowsAsThePipe) {
    std::string rows;
    constexpr int Corners = 200;
    for (int i = 0; i <= Corners; ++i) {
        const double angle = 2 * 3.14159265358979 * (i % Corners) / Corners;
        rows += std::to_string(0.5 - 0.5 * std::sin(angle)) + " " +
                std::to_string(0.5 + 0.5 * std::cos(angle)) + "\n";
    }
    const Rating section =
        ComputeRating(RowsOf("channel-section", rows, {{"slope", 1}, {"roughness", 0.014}}));
    const Rating pipe = ComputeRating(
        DeviceOf("channel-circular", {{"pipe-diameter", 1}, {"slope", 1}, {"roughness", 0.014}}));
    for (const double head : {0.2, 0.5, 0.8}) {
        EXPECT_NEAR(RatingFlowAt(section, head) / RatingFlowAt(pipe, head), 1, 0.002) << head;
    }
    EXPECT_NEAR(section.GreatestHead, 0.938, 0.01);
}

TEST(PointSections, WhereFlowWouldFallTheTableKeepsTheHighest) {
    const Rating rating = ComputeRating(
        RowsOf("channel-section", "0 3\n0 2\n100 2\n100.1 0\n104 0\n104.1 2\n200 2\n200 3",
               {{"slope", 0.1}}));
    ASSERT_TRUE(rating.Made());
    EXPECT_TRUE(Remarks(rating, RatingWeight::Beyond, "spreads over a bank"));
    for (int i = 2; i <= rating.Points.UpperBound(); ++i) {
        EXPECT_LE(rating.Points[i - 1].Flow, rating.Points[i].Flow);
    }
    // Parted by verticals where the roughness changes it never falls.
    const Rating parted = ComputeRating(
        RowsOf("channel-section",
               "0 3 .06\n0 2 .06\n100 2 .03\n100.1 0 .03\n104 0 .03\n104.1 2 .05\n200 2 .05\n200 3",
               {{"slope", 0.1}, {"composing", 2}}));
    EXPECT_FALSE(RemarksOf(parted, RatingWeight::Beyond));
}

TEST(PointSections, WhatHoldsNoWaterIsRefused) {
    const auto refused = [](const char* rows) {
        return RemarksOf(ComputeRating(RowsOf("channel-section", rows)), RatingWeight::Refused);
    };
    EXPECT_TRUE(refused("0 1\n1 0"));
    EXPECT_TRUE(refused("0 0\n1 1\n2 0"));
    EXPECT_TRUE(refused("0 1\n1 0\n2 0"));
    EXPECT_TRUE(refused("0 1\n1 0 5\n2 1"));
    EXPECT_TRUE(refused("0 1\n1 0 0.0001\n2 1"));
    EXPECT_TRUE(refused("0 1e300\n1 0\n2 1e300"));
    EXPECT_FALSE(refused("0 1\n1 0\n2 1"));
}

TEST(PointSections, SidesThatLeanBackAreNotPartedByVerticals) {
    constexpr const char* Rows = "1 2\n0 1\n1 0\n3 0\n4 1\n3 2";
    EXPECT_TRUE(Remarks(ComputeRating(RowsOf("channel-section", Rows, {{"composing", 2}})),
                        RatingWeight::Refused, "verticals"));
    EXPECT_TRUE(ComputeRating(RowsOf("channel-section", Rows)).Made());
}

TEST(ChannelRatings, ASteepChannelIsToldOf) {
    EXPECT_TRUE(Remarks(ComputeRating(DeviceOf("channel-rectangular", {{"slope", 5}})),
                        RatingWeight::Note, "so steep"));
    EXPECT_FALSE(Remarks(ComputeRating(DeviceOf("channel-rectangular", {{"slope", 0.05}})),
                         RatingWeight::Note, "so steep"));
}

}  // namespace
