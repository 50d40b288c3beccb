#include "simulator/true_flow.h"

#include <gtest/gtest.h>

namespace simulator {
namespace {

/// A pipe of 1 foot, roughness 0.014, falling 1 percent.
FlowSettings Pipe() {
    FlowSettings settings;
    settings.Mode = FlowMode::Manning;
    settings.LevelOffset = 0;
    return settings;
}

Flow PipeAt(double level) {
    return TrueFlow(Pipe(), {}, level, "Feet");
}

FlowSettings Rated(FlowMode mode) {
    FlowSettings settings;
    settings.Mode = mode;
    return settings;
}

TEST(TrueFlow, OfFullPipe) {
    EXPECT_NEAR(PipeAt(1.0).Velocity, 4.21034, 5e-6);
    EXPECT_NEAR(PipeAt(1.0).Rate, 3.30679, 5e-6);
}

TEST(TrueFlow, OfPartlyFullPipe) {
    EXPECT_NEAR(PipeAt(0.5).Velocity, 4.21034, 5e-6);
    EXPECT_NEAR(PipeAt(0.5).Rate, 1.65340, 5e-6);
    EXPECT_NEAR(PipeAt(0.25).Velocity, 2.94953, 5e-6);
    EXPECT_NEAR(PipeAt(0.25).Rate, 0.45289, 5e-6);
}

TEST(TrueFlow, OfSurchargedPipeIsThatOfAFullOne) {
    EXPECT_EQ(PipeAt(5.0).Rate, PipeAt(1.0).Rate);
    EXPECT_EQ(PipeAt(5.0).Velocity, PipeAt(1.0).Velocity);
}

TEST(TrueFlow, InOtherUnits) {
    FlowSettings pipe = Pipe();
    pipe.FlowUnits = FlowUnit::Gpm;
    EXPECT_NEAR(TrueFlow(pipe, {}, 1, "Feet").Rate, 1484.09, 5e-3);
    pipe.FlowUnits = FlowUnit::Mgd;
    EXPECT_NEAR(TrueFlow(pipe, {}, 1, "Feet").Rate, 2.13718, 5e-6);
    pipe.FlowUnits = FlowUnit::Cms;
    EXPECT_NEAR(TrueFlow(pipe, {}, 1, "Feet").Rate, 0.093648, 5e-7);
    pipe.FlowUnits = FlowUnit::Lps;
    EXPECT_NEAR(TrueFlow(pipe, {}, 1, "Feet").Rate, 93.637, 5e-4);
    pipe.VelUnits = VelocityUnit::Mps;
    EXPECT_NEAR(TrueFlow(pipe, {}, 1, "Feet").Velocity, 4.21034 * 0.3048, 5e-6);
}

TEST(TrueFlow, TakesTheLevelInTheUnitOfItsFirstLetter) {
    const double half = PipeAt(0.5).Rate;
    EXPECT_NEAR(TrueFlow(Pipe(), {}, 6, "Inches").Rate, half, 1e-9);
    EXPECT_NEAR(TrueFlow(Pipe(), {}, 0.1524, " meters").Rate, half, 1e-9);
    EXPECT_NEAR(TrueFlow(Pipe(), {}, 15.24, "cm").Rate, half, 1e-9);
    EXPECT_NEAR(TrueFlow(Pipe(), {}, 0.5, "").Rate, half, 1e-9);
}

TEST(TrueFlow, TakesTheDiameterInItsUnit) {
    FlowSettings pipe = Pipe();
    pipe.ManningsDType = LengthUnit::Inch;
    pipe.ManningsD = 12;
    EXPECT_NEAR(TrueFlow(pipe, {}, 0.5, "Feet").Rate, PipeAt(0.5).Rate, 1e-9);
    pipe.ManningsDType = LengthUnit::Centimeter;
    pipe.ManningsD = 30.48;
    EXPECT_NEAR(TrueFlow(pipe, {}, 0.5, "Feet").Rate, PipeAt(0.5).Rate, 1e-9);
}

TEST(TrueFlow, DryChannelStaysDryWhateverTheOffset) {
    FlowSettings pipe = Pipe();
    pipe.LevelOffset = 6;
    pipe.LevelOffsetType = LengthUnit::Inch;
    EXPECT_EQ(TrueFlow(pipe, {}, 0, "Feet").Rate, 0);
    EXPECT_EQ(TrueFlow(pipe, {}, -0.1, "Feet").Rate, 0);
    EXPECT_NEAR(TrueFlow(pipe, {}, 0.25, "Feet").Rate, PipeAt(0.75).Rate, 1e-9);
    pipe.LevelOffset = -6;
    EXPECT_EQ(TrueFlow(pipe, {}, 0.25, "Feet").Rate, 0);
}

TEST(TrueFlow, PipeThatRisesFlowsNothing) {
    FlowSettings pipe = Pipe();
    pipe.ManningsS = -1;
    EXPECT_EQ(TrueFlow(pipe, {}, 0.5, "Feet").Rate, 0);
    EXPECT_EQ(TrueFlow(pipe, {}, 0.5, "Feet").Velocity, 0);
}

TEST(TrueFlow, RoughnessAndDiameterHaveASmallestValue) {
    FlowSettings pipe = Pipe();
    pipe.ManningsN = 0;
    EXPECT_NEAR(TrueFlow(pipe, {}, 1, "Feet").Velocity, 4.21034 * 14, 1e-4);
    pipe = Pipe();
    pipe.ManningsD = 0;
    FlowSettings smallest = Pipe();
    smallest.ManningsD = 0.01;
    EXPECT_EQ(TrueFlow(pipe, {}, 1, "Feet").Rate, TrueFlow(smallest, {}, 1, "Feet").Rate);
}

TEST(TrueFlow, SlopeMayBeARatio) {
    FlowSettings pipe = Pipe();
    pipe.ManningsSPercent = false;
    pipe.ManningsS = 0.01;
    EXPECT_NEAR(TrueFlow(pipe, {}, 1, "Feet").Rate, 3.30679, 5e-6);
}

TEST(TrueFlow, OfRatingEquation) {
    EXPECT_NEAR(TrueFlow(Rated(FlowMode::Flume), {0.1, 1.5, 2.0, {}}, 0.5, "Feet").Rate, 0.92952,
                5e-6);
}

TEST(TrueFlow, OfDeviceThatIsNotKnownIsZero) {
    EXPECT_EQ(TrueFlow(Rated(FlowMode::Weir), {}, 0.5, "Feet").Rate, 0);
}

TEST(TrueFlow, OfTable) {
    const auto at = [](const std::vector<RatingPoint>& points, double level) {
        return TrueFlow(Rated(FlowMode::Table), {0, 0, 0, points}, level, "Feet").Rate;
    };
    EXPECT_EQ(at({}, 1), 0);
    EXPECT_EQ(at({{1, 5}}, 1), 0);
    EXPECT_EQ(at({{1, 5}}, 2), 0);
    EXPECT_DOUBLE_EQ(at({{1, 4}, {2, 10}}, 0.5), 2);
    EXPECT_DOUBLE_EQ(at({{1, 4}, {2, 10}}, 1.5), 7);
    EXPECT_DOUBLE_EQ(at({{1, 4}, {2, 10}}, 3), 16);
    EXPECT_DOUBLE_EQ(at({{1, 4}, {2, 10}, {3, 11}}, 2), 10);
    EXPECT_DOUBLE_EQ(at({{1, 4}, {2, 10}, {3, 11}}, 4), 12);
    EXPECT_DOUBLE_EQ(at({{1, 4}, {2, 1}}, 3), -2);
    EXPECT_DOUBLE_EQ(at({{1, 4}, {1, 6}}, 3), 4);
}

TEST(TrueFlow, OfNoMethodIsZero) {
    EXPECT_EQ(TrueFlow(Rated(FlowMode::None), {0, 1, 1, {}}, 1, "Feet").Rate, 0);
}

}  // namespace
}  // namespace simulator
