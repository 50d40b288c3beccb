#include "flow/pipe_section.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

TEST(ArcCos, BeyondItsLimitsIsAStraightAngleOrNone) {
    EXPECT_EQ(ArcCos(1), 0);
    EXPECT_EQ(ArcCos(0.9999991), 0);
    EXPECT_EQ(ArcCos(-1), 3.14159265358979);
    EXPECT_EQ(ArcCos(-0.9999991), 3.14159265358979);
}

TEST(ArcCos, AtItsLimitsIsComputed) {
    EXPECT_NEAR(ArcCos(0.999999), std::acos(0.999999), 1e-12);
    EXPECT_NEAR(ArcCos(-0.999999), std::acos(-0.999999), 1e-12);
}

TEST(ArcCos, BetweenItsLimitsAgreesWithTheCosine) {
    for (int i = -99; i < 100; ++i) {
        const double x = i / 100.0;
        EXPECT_NEAR(ArcCos(x), std::acos(x), 1e-14) << x;
    }
}

TEST(WettedSection, AFullPipeIsTheWholeCircle) {
    EXPECT_NEAR(WettedPerimeter(1, 1), 3.141593, 5e-7);
    EXPECT_NEAR(WettedArea(1, 1), 0.785398, 5e-7);
    EXPECT_EQ(WettedPerimeter(9, 2), WettedPerimeter(2, 2));
    EXPECT_EQ(WettedArea(9, 2), WettedArea(2, 2));
}

TEST(WettedSection, AHalfFullPipeIsHalfOfIt) {
    EXPECT_NEAR(WettedPerimeter(0.5, 1), 1.570796, 5e-7);
    EXPECT_NEAR(WettedArea(0.5, 1), 0.392699, 5e-7);
}

TEST(WettedSection, AQuarterFullPipeSpansAThirdOfATurn) {
    // Half angle 60 degrees: arc pi/3 x D, segment r^2 (pi/3 - sin(120) / 2).
    EXPECT_NEAR(WettedPerimeter(0.25, 1), 1.0471975512, 1e-10);
    EXPECT_NEAR(WettedArea(0.25, 1), 0.25 * (1.0471975512 - 0.4330127019), 1e-10);
}

TEST(WettedSection, AnEmptyPipeIsDry) {
    EXPECT_EQ(WettedPerimeter(0, 1), 0);
    EXPECT_EQ(WettedArea(0, 1), 0);
    EXPECT_EQ(WettedPerimeter(-3, 1), 0);
}

}  // namespace
