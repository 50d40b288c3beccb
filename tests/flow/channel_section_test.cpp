#include "flow/channel_section.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <vector>

namespace {

struct Element {
    double Depth, Area, Radius;
};

// Chow (1959), appendix A: geometric elements of a circular section of diameter 1.
TEST(ChannelSection, ACircleHasThePublishedElements) {
    constexpr Element Elements[] = {
        {0.1, 0.0409, 0.0635}, {0.2, 0.1118, 0.1206}, {0.3, 0.1982, 0.1709}, {0.4, 0.2934, 0.2142},
        {0.5, 0.3927, 0.2500}, {0.6, 0.4920, 0.2776}, {0.7, 0.5872, 0.2962}, {0.8, 0.6736, 0.3042},
        {0.9, 0.7445, 0.2980}, {1.0, 0.7854, 0.2500}};
    const CircleSection circle(1);
    for (const Element& element : Elements) {
        const double area = circle.Area(element.Depth);
        EXPECT_NEAR(area, element.Area, 5.1e-5) << element.Depth;
        EXPECT_NEAR(area / circle.Perimeter(element.Depth), element.Radius, 5.1e-5)
            << element.Depth;
    }
    EXPECT_NEAR(circle.Width(0.5), 1, 1e-12);
    EXPECT_NEAR(circle.Width(1), 0, 1e-7);
}

// The standard egg: full, 0.5105 of the height squared, and a radius of 0.1931 of the height;
// partly full after the table of the Storm Water Management Model, which is worked by hand to 1 %.
TEST(ChannelSection, AnEggHasThePublishedElements) {
    const EggSection egg(1);
    const double full = egg.Area(1);
    const double radius = full / egg.Perimeter(1);
    EXPECT_NEAR(full, 0.5105, 5.1e-5);
    EXPECT_NEAR(radius, 0.1931, 5.1e-5);
    constexpr Element Shares[] = {{0.20, 0.120, 0.465},
                                  {0.40, 0.320, 0.791},
                                  {0.60, 0.570, 1.045},
                                  {0.80, 0.835, 1.186},
                                  {0.92, 0.955, 1.162}};
    for (const Element& element : Shares) {
        const double area = egg.Area(element.Depth);
        EXPECT_NEAR(area / full, element.Area, 0.01) << element.Depth;
        EXPECT_NEAR(area / egg.Perimeter(element.Depth) / radius, element.Radius, 0.035)
            << element.Depth;
    }
    EXPECT_NEAR(egg.Width(2.0 / 3), 2.0 / 3, 1e-12);
}

TEST(ChannelSection, ATrapezoidHasItsElements) {
    const TrapezoidSection trapezoid(2, 1.5);
    EXPECT_DOUBLE_EQ(trapezoid.Area(2), 10);
    EXPECT_DOUBLE_EQ(trapezoid.Width(2), 8);
    EXPECT_NEAR(trapezoid.Perimeter(2), 2 + 4 * std::sqrt(3.25), 1e-12);
    EXPECT_DOUBLE_EQ(trapezoid.Area(-1), 0);
}

TEST(ChannelSection, AUHasAHalfCircleBelowUprightSides) {
    const USection section(2);
    EXPECT_NEAR(section.Area(1), std::numbers::pi / 2, 1e-12);
    EXPECT_NEAR(section.Area(3), std::numbers::pi / 2 + 4, 1e-12);
    EXPECT_NEAR(section.Perimeter(3), std::numbers::pi + 4, 1e-12);
    EXPECT_NEAR(section.Width(3), 2, 1e-12);
}

TEST(ChannelSection, ASillTakesTheLowerPartOfAPipe) {
    const PipeAboveSill section(1, 0.5);
    EXPECT_NEAR(section.Area(0.5), std::numbers::pi / 8, 1e-12);
    EXPECT_NEAR(section.Perimeter(0.5), std::numbers::pi / 2 + 1, 1e-12);
    EXPECT_NEAR(section.Perimeter(0), 1, 1e-12);
    EXPECT_NEAR(section.Width(0), 1, 1e-12);
}

TEST(ChannelSection, ATrapezoidInAPipeEndsAtThePipe) {
    const TrapezoidInPipe section(1, 0.125, 0.5, 0.5);
    const TrapezoidSection free(0.5, 0.5);
    EXPECT_DOUBLE_EQ(section.Area(0.2), free.Area(0.2));
    EXPECT_DOUBLE_EQ(section.Perimeter(0.2), free.Perimeter(0.2));
    const double meeting = section.Bends().front();
    EXPECT_NEAR(free.Width(meeting), CircleSection(1).Width(meeting + 0.125), 1e-9);
    EXPECT_LT(section.Area(0.8), free.Area(0.8));
    EXPECT_NEAR(section.Width(0.875), 0, 1e-7);
}

std::vector<std::unique_ptr<ChannelSection>> Sections() {
    std::vector<std::unique_ptr<ChannelSection>> sections;
    sections.push_back(std::make_unique<TrapezoidSection>(0.7, 0));
    sections.push_back(std::make_unique<TrapezoidSection>(0.7, 2));
    sections.push_back(std::make_unique<TrapezoidSection>(0, 0.5));
    sections.push_back(std::make_unique<CircleSection>(1.3));
    sections.push_back(std::make_unique<USection>(0.9));
    sections.push_back(std::make_unique<EggSection>(1.5));
    sections.push_back(std::make_unique<PipeAboveSill>(1.2, 0.3));
    sections.push_back(std::make_unique<TrapezoidInPipe>(1.2, 0.15, 0.5, 0.5));
    return sections;
}

// What the water gains in area with depth is its width, and the edge is as long as its rise and the
// narrowing or widening of both sides make it.
TEST(ChannelSection, WidthAndPerimeterAreTheGrowthOfArea) {
    for (const auto& section : Sections()) {
        const double top = std::min(1.1, section->Height() * 0.97);
        constexpr double Step = 1e-6;
        const int depths = static_cast<int>((top - 0.011) / 0.0173);
        for (int i = 0; i <= depths; ++i) {
            const double depth = 0.011 + i * 0.0173;
            const double growth =
                (section->Area(depth + Step) - section->Area(depth - Step)) / (2 * Step);
            EXPECT_NEAR(growth, section->Width(depth), 1e-5 * (1 + growth)) << depth;
            const double side =
                (section->Width(depth + Step) - section->Width(depth - Step)) / (4 * Step);
            const double edge =
                (section->Perimeter(depth + Step) - section->Perimeter(depth - Step)) / (2 * Step);
            EXPECT_NEAR(edge, 2 * std::sqrt(1 + side * side), 1e-3 * edge) << depth;
        }
    }
}

}  // namespace
