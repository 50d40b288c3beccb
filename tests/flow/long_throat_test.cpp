// Long throats against published ratings and against what physics asks for.

#include "flow/long_throat.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "flow/rating_support.h"

namespace {

constexpr double Foot = 0.3048;
constexpr double CubicFoot = Foot * Foot * Foot;

/// Flow in cubic metres per second at a head in metres, as the device's table has it.
double TableFlowAt(const RatingDevice& device, double head) {
    const Rating rating = ComputeRating(device);
    EXPECT_TRUE(rating.Made());
    return RatingFlowAt(rating, head / Foot) * CubicFoot;
}

// The drag of a smooth plate by Schlichting: 0.455 / (log Re)^2.58 with a turbulent layer from its
// edge on; the part up to Re = 450,000, where a roughness of 0.00001 l lets it turn, is laminar.
TEST(LongThroat, TheDragOfASmoothPlateIsThatOfSchlichting) {
    constexpr double Viscosity = 1.14e-6;
    constexpr double Edge = 450'000;
    const auto turbulent = [](double re) { return 0.455 / std::pow(std::log10(re), 2.58); };
    for (const double reynolds : {6e5, 1e6, 2e6, 3e6}) {
        const double law =
            turbulent(reynolds) - Edge / reynolds * (turbulent(Edge) - 1.328 / std::sqrt(Edge));
        EXPECT_NEAR(DragCoefficient(reynolds * Viscosity, 1, 1e-5) / law, 1, 0.05) << reynolds;
    }
    EXPECT_NEAR(DragCoefficient(1e5 * Viscosity, 1, 1e-9), 1.328 / std::sqrt(1e5), 1e-12);
    EXPECT_EQ(DragCoefficient(0, 1, 1e-4), 0);
}

// Prandtl and Schlichting: a fully rough plate, (1.89 + 1.62 log(l / k))^-2.5.
TEST(LongThroat, TheDragOfARoughPlateIsThatOfPrandtlAndSchlichting) {
    for (const double ratio : {500.0, 2000.0, 10000.0}) {
        const double law = std::pow(1.89 + 1.62 * std::log10(ratio), -2.5);
        EXPECT_NEAR(DragCoefficient(1000, 1, 1 / ratio) / law, 1, 0.08) << ratio;
    }
}

// Endress+Hauser, ISO-Venturi flumes: throats half as wide as their channels, without a sill, at
// their greatest head. Their length is not printed; ISO 4359 asks for 1.5 times that head, and
// lengths of 1 to 1.5 times it are common. With 1.25 the standard's way gives their flow to 0.2 %.
TEST(LongThroat, RectangularThroatsAgreeWithAMakersRatings) {
    struct Row {
        double Channel, Throat, Head, CubicMetersPerHour;
    };
    constexpr Row Rows[] = {
        {0.150, 0.075, 0.200, 42.5}, {0.250, 0.125, 0.300, 130.3}, {0.400, 0.200, 0.400, 322.2}};
    for (const Row& row : Rows) {
        const auto flow = [&](double overHead, double boundary) {
            return TableFlowAt(DeviceOf("throat-rectangular",
                                        {{"throat-width", row.Throat},
                                         {"throat-length", overHead * row.Head},
                                         {"approach-width", row.Channel},
                                         {"greatest-head", row.Head},
                                         {"boundary", boundary}},
                                        InMeters),
                               row.Head) *
                   3600 / row.CubicMetersPerHour;
        };
        EXPECT_NEAR(flow(1.25, 1), 1, 0.002) << row.Throat;
        EXPECT_NEAR(flow(1.5, 1), 1, 0.006) << row.Throat;
        EXPECT_NEAR(flow(1.5, 0), 1, 0.015) << row.Throat;
    }
}

// Water Measurement Manual, table 8-5: flat sills in pipes, Q = D^2.5 K1 (h / D + K2)^U in feet,
// fitted to ratings by drag and critical depth. Throat as long as the pipe is wide.
TEST(LongThroat, SillsInPipesAgreeWithTheManualsEquations) {
    struct Row {
        double Sill, K1, K2, U;
    };
    constexpr Row Rows[] = {{0.20, 4.130, 0.004, 1.736}, {0.25, 3.970, 0.004, 1.689},
                            {0.30, 3.780, 0.000, 1.625}, {0.35, 3.641, 0.000, 1.597},
                            {0.40, 3.507, 0.000, 1.573}, {0.45, 3.378, 0.000, 1.554},
                            {0.50, 3.251, 0.000, 1.540}};
    for (const Row& row : Rows) {
        for (const double feet : {1.0, 3.0}) {
            for (const double head : {0.15, 0.20, 0.25, 0.30}) {
                const double flow =
                    TableFlowAt(DeviceOf("pipe-sill", {{"pipe-diameter", feet},
                                                       {"sill", row.Sill * feet},
                                                       {"throat-length", feet},
                                                       {"gauge-distance", feet},
                                                       {"narrowing-length", 3 * row.Sill * feet}}),
                                head * feet * Foot);
                const double manual = std::pow(feet, 2.5) * row.K1 * std::pow(head + row.K2, row.U);
                EXPECT_NEAR(flow / CubicFoot / manual, 1, 0.015)
                    << row.Sill << " " << head << " " << feet;
            }
        }
    }
}

// The 4 inch table of the Isco handbook. It does not print the flume's proportions; a floor of D /
// 2, sides 1 in 2 and a sill of D / 8 give its rows within 1.5 %. With the floor of 5 D / 12 and
// the sill of D / 6 of another maker the same pipe carries a sixth less: the flume has to be
// measured.
TEST(LongThroat, APalmerBowlusFlumeAgreesWithAPublishedTable) {
    static constexpr double Diameter = 0.1016;
    constexpr std::pair<double, double> Rows[] = {
        {0.01829, 0.2436}, {0.03048, 0.5947}, {0.0762, 3.435}};
    const auto flume = [](double floor, double sill) {
        return DeviceOf("palmer-bowlus",
                        {{"pipe-diameter", Diameter},
                         {"throat-width", floor * Diameter},
                         {"throat-slope", 0.5},
                         {"sill", sill * Diameter},
                         {"throat-length", Diameter},
                         {"greatest-head", 0.078}},
                        InMeters);
    };
    for (const auto& [head, liters] : Rows) {
        EXPECT_NEAR(TableFlowAt(flume(0.5, 0.125), head) * 1000 / liters, 1, 0.015) << head;
        EXPECT_NEAR(TableFlowAt(flume(5.0 / 12, 1.0 / 6), head) * 1000 / liters, 0.82, 0.02)
            << head;
    }
}

/// A device whose approach is still and whose throat has no boundary layer to speak of.
struct Ideal {
    explicit Ideal(const ChannelSection& throat) {
        Device.Throat = &throat;
        Device.Approach = &Lake;
        Device.Sill = 100;
        Device.Length = 1;
        Device.Boundary = BoundaryLayer::Displacement;
    }
    [[nodiscard]] double Flow(double head) const { return FlowThroughThroat(Device, head)->Flow; }

    TrapezoidSection Lake{1000, 0};
    LongThroat Device;
};

TEST(LongThroat, AnIdealRectangleHasTheTheoreticalCoefficient) {
    const TrapezoidSection throat(2, 0);
    const double flow = Ideal(throat).Flow(0.5);
    EXPECT_NEAR(flow / (std::sqrt(Gravity) * 2 * std::pow(0.5, 1.5)), std::pow(2.0 / 3, 1.5), 1e-9);
}

// Bos (1989): triangular control section, 16/25 sqrt(2 g / 5) tan(angle / 2) H^2.5.
TEST(LongThroat, AnIdealTriangleHasTheTheoreticalCoefficient) {
    const TrapezoidSection throat(0, 1.7);
    const double theory = 16.0 / 25 * std::sqrt(0.4 * Gravity) * 1.7 * std::pow(0.3, 2.5);
    EXPECT_NEAR(Ideal(throat).Flow(0.3) / theory, 1, 1e-9);
}

// Above its half circle a U flows as the rectangle of its width does, with a floor so much higher
// as the half circle lacks of a square one.
TEST(LongThroat, AnIdealUFlowsAsARectangleWithAHigherFloor) {
    const USection throat(0.4);
    const TrapezoidSection rectangle(0.4, 0);
    const double higher = 0.2 * (1 - std::numbers::pi / 4);
    EXPECT_NEAR(Ideal(throat).Flow(0.8) / Ideal(rectangle).Flow(0.8 - higher), 1, 1e-9);
}

// Chow (1959), appendix A: section factor for critical flow in a circle of diameter 1, A sqrt(D).
TEST(LongThroat, AnIdealRoundThroatHasThePublishedSectionFactor) {
    constexpr std::pair<double, double> Factors[] = {
        {0.2, 0.0418}, {0.3, 0.0921}, {0.5, 0.246}, {0.7, 0.470}, {0.8, 0.618}};
    const CircleSection throat(1);
    const Ideal ideal(throat);
    for (const auto& [depth, factor] : Factors) {
        const double energy = depth + throat.Area(depth) / throat.Width(depth) / 2;
        EXPECT_NEAR(ideal.Flow(energy) / std::sqrt(Gravity), factor, 5e-4) << depth;
    }
}

TEST(LongThroat, TheApproachsVelocityAddsToTheFlow) {
    const TrapezoidSection throat(1, 0);
    const TrapezoidSection channel(2, 0);
    LongThroat device = Ideal(throat).Device;
    device.Approach = &channel;
    device.Sill = 0;
    const ThroatFlow flow = *FlowThroughThroat(device, 0.5);
    // Bos (1989): 4/27 (Cd A / A1)^2 Cv^2 = Cv^(2/3) - 1, here with a throat of half the area.
    const double still = std::pow(2.0 / 3, 1.5) * std::sqrt(Gravity) * std::pow(0.5, 1.5);
    const double coefficient = flow.Flow / still;
    EXPECT_NEAR(4.0 / 27 * 0.25 * coefficient * coefficient, std::pow(coefficient, 2.0 / 3) - 1,
                1e-9);
    EXPECT_NEAR(coefficient, 1.0635, 0.0001);
    const double velocity = flow.Flow / (2 * 0.5);
    EXPECT_NEAR(flow.EnergyHead, 0.5 + velocity * velocity / (2 * Gravity), 1e-9);
    EXPECT_NEAR(flow.Froude, velocity / std::sqrt(Gravity * 0.5), 1e-9);
}

TEST(LongThroat, AThroatAsWideAsItsChannelDoesNotRuleTheFlow) {
    const Rating rating =
        ComputeRating(DeviceOf("throat-rectangular", {{"throat-width", 4}, {"approach-width", 4}}));
    EXPECT_FALSE(rating.Made());
    EXPECT_TRUE(Remarks(rating, RatingWeight::Refused, "hardly narrows"));
}

TEST(LongThroat, WaterBehindMayStandHigherAboveASlopingRamp) {
    const TrapezoidSection throat(1, 0);
    const TrapezoidSection channel(1.5, 0);
    LongThroat device;
    device.Throat = &throat;
    device.Approach = &channel;
    device.Sill = 0.2;
    device.Length = 1;
    device.RoughnessHeight = 0.00015;
    const ThroatFlow flow = *FlowThroughThroat(device, 0.4);
    const double abrupt = ModularLimit(device, 0.4, flow);
    device.ExitSlope = 6;
    const double ramp = ModularLimit(device, 0.4, flow);
    EXPECT_GT(abrupt, 0.65);
    EXPECT_LT(abrupt, ramp);
    EXPECT_LT(ramp, 1);
}

// Without loss of velocity behind the throat, the energy there is what the water behind has.
TEST(LongThroat, TheModularLimitIsWhereTheEnergyBehindSuffices) {
    const TrapezoidSection throat(1, 0);
    const TrapezoidSection channel(1.5, 0);
    LongThroat device;
    device.Throat = &throat;
    device.Approach = &channel;
    device.Sill = 0.2;
    device.Length = 1;
    device.RoughnessHeight = 0.00015;
    const ThroatFlow flow = *FlowThroughThroat(device, 0.4);
    const double depth = 0.4 * ModularLimit(device, 0.4, flow);
    const double velocity = flow.Flow / (1.5 * (depth + 0.2));
    const double lost = flow.Flow / flow.CriticalDepth - velocity;
    // 1.2 of the head of the velocity lost, as for any sudden end.
    EXPECT_NEAR(depth + velocity * velocity / (2 * Gravity) + 1.2 * lost * lost / (2 * Gravity),
                flow.EnergyBehind, 1e-4);
}

TEST(ThroatRatings, TellTheModularLimitAndTheLeastHead) {
    const Rating rating = ComputeRating(DeviceOf("throat-trapezoidal"));
    EXPECT_TRUE(Remarks(rating, RatingWeight::Note, "Modular limit"));
    EXPECT_TRUE(Remarks(rating, RatingWeight::Note, "Heads below 0.07"));
    EXPECT_NEAR(rating.LeastHead, 0.07 * 3, 1e-6);
    EXPECT_NEAR(rating.GreatestHead, 0.7 * 3, 1e-6);
    EXPECT_LT(rating.Points[1].Level, rating.LeastHead / 2);
}

TEST(ThroatRatings, AFastApproachEndsTheRange) {
    const Rating rating = ComputeRating(
        DeviceOf("throat-rectangular", {{"throat-width", 3.6}, {"approach-width", 4}}));
    ASSERT_TRUE(rating.Made());
    EXPECT_TRUE(Remarks(rating, RatingWeight::Beyond, "too fast"));
}

TEST(ThroatRatings, APipeIsNotFilledToItsCrown) {
    const Rating rating = ComputeRating(DeviceOf("pipe-sill", {{"throat-length", 3}}));
    EXPECT_NEAR(rating.GreatestHead, 0.9 - 0.3, 1e-6);
    EXPECT_TRUE(Remarks(ComputeRating(DeviceOf("pipe-sill", {{"sill", 0.85}})),
                        RatingWeight::Refused, "sill takes more"));
    EXPECT_TRUE(Remarks(ComputeRating(DeviceOf("palmer-bowlus", {{"throat-width", 1.2}})),
                        RatingWeight::Refused, "wider than the pipe"));
}

// Bos (1989), ISO 3846: a square edge has 0.848 while the head is 0.08 to 0.33 of the length.
TEST(ThroatRatings, ASquareEdgeHasItsConstantCoefficient) {
    const RatingDevice device =
        DeviceOf("broad-crested", {{"crest", 2}, {"sill", 25}, {"throat-length", 1}}, InMeters);
    const double flow = TableFlowAt(device, 0.2);
    EXPECT_NEAR(flow, 0.848 * std::pow(2.0 / 3, 1.5) * std::sqrt(Gravity) * 2 * std::pow(0.2, 1.5),
                0.001 * flow);
    const Rating rating = ComputeRating(device);
    EXPECT_NEAR(rating.LeastHead * Foot, 0.08, 1e-6);
    EXPECT_NEAR(rating.GreatestHead * Foot, 0.33, 1e-6);
}

}  // namespace
