#include "flow/power_law_fit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "flow/rating_support.h"

namespace {

std::vector<FlowTablePoint> PointsOf(const PowerLaw& law, std::initializer_list<double> levels) {
    std::vector<FlowTablePoint> points;
    for (const double level : levels) {
        points.push_back({level, law.Flow(level)});
    }
    return points;
}

TEST(PowerLawFit, PointsOfALawGiveItBack) {
    for (const PowerLaw law : {PowerLaw{0, 1.5, 3.3}, PowerLaw{0.12, 2.5, 1.4},
                               PowerLaw{-0.35, 1.8, 20}, PowerLaw{0.02, 1.55, 0.4}}) {
        const std::vector<FlowTablePoint> points =
            PointsOf(law, {0.4, 0.5, 0.7, 1.0, 1.3, 1.8, 2.4, 3.1});
        const std::optional<PowerLaw> fit = FitPowerLaw(points);
        ASSERT_TRUE(fit);
        EXPECT_NEAR(fit->Offset, law.Offset, 2e-4);
        EXPECT_NEAR(fit->Exponent, law.Exponent, 2e-4);
        for (const FlowTablePoint& point : points) {
            EXPECT_NEAR(fit->Flow(point.Level) / point.Flow, 1, 1e-6);
        }
    }
}

TEST(PowerLawFit, BelowItsOffsetALawHasNoFlow) {
    EXPECT_EQ((PowerLaw{-0.5, 1.5, 2}.Flow(0.4)), 0);
}

TEST(PowerLawFit, TooFewOrEqualOrImpossiblePointsGiveNone) {
    EXPECT_FALSE(FitPowerLaw(PointsOf({0, 1.5, 1}, {1, 2, 3})));
    EXPECT_FALSE(FitPowerLaw(PointsOf({0, 1.5, 1}, {1, 1, 1, 1, 1})));
    std::vector<FlowTablePoint> points = PointsOf({0, 1.5, 1}, {1, 2, 3, 4, 5});
    EXPECT_TRUE(FitPowerLaw(points));
    points[2].Flow = 0;
    EXPECT_FALSE(FitPowerLaw(points));
    points[2].Flow = INFINITY;
    EXPECT_FALSE(FitPowerLaw(points));
}

TEST(PowerLawFit, OneMistypedPointIsFoundAndDoesNotDrawTheLaw) {
    const PowerLaw law = {0.05, 1.7, 6};
    std::vector<FlowTablePoint> points =
        PointsOf(law, {0.1, 0.2, 0.3, 0.45, 0.6, 0.8, 1.0, 1.2, 1.5});
    std::mt19937 random(7);
    for (FlowTablePoint& point : points) {
        point.Flow *= 1 + 0.01 * (static_cast<double>(random() % 201) - 100) / 100;
    }
    points[4].Flow *= 1.3;
    const std::optional<PowerLawFit> fit = FitWithoutOutliers(points);
    ASSERT_TRUE(fit);
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_EQ(fit->Outliers[i], i == 4) << i;
        if (i != 4) {
            EXPECT_NEAR(fit->Law.Flow(points[i].Level) / law.Flow(points[i].Level), 1, 0.015);
        }
    }
    EXPECT_NEAR(fit->Residuals[4], 30, 3);
    EXPECT_LT(fit->Spread, 1.5);
}

/// Seven points gauged within 1 % of a law, one of them wrong by a factor.
std::vector<FlowTablePoint> SevenPoints(std::size_t wrong, double factor) {
    std::vector<FlowTablePoint> points =
        PointsOf({0.03, 1.6, 4.2}, {0.12, 0.25, 0.4, 0.55, 0.7, 0.9, 1.1});
    const double scatter[] = {0.004, -0.007, 0.002, 0.008, -0.005, -0.003, 0.006};
    for (std::size_t i = 0; i < points.size(); ++i) {
        points[i].Flow *= 1 + scatter[i];
    }
    points[wrong].Flow *= factor;
    return points;
}

TEST(PowerLawFit, AmongSevenPointsOneFarOffIsFound) {
    // But for the lowest, which a law of another offset follows.
    for (std::size_t wrong = 1; wrong < 7; ++wrong) {
        for (const double factor : {1.66, 1 / 1.66}) {
            const std::optional<PowerLawFit> fit = FitWithoutOutliers(SevenPoints(wrong, factor));
            ASSERT_TRUE(fit);
            for (std::size_t i = 0; i < 7; ++i) {
                EXPECT_EQ(fit->Outliers[i], i == wrong)
                    << wrong << " times " << factor << ": " << i;
            }
            EXPECT_LT(fit->Spread, 2);
        }
    }
}

TEST(PowerLawFit, PointsOfOneLawWithScatterHaveHardlyAnOutlier) {
    std::mt19937 random(11);
    int sets = 0;
    for (int i = 0; i < 60; ++i) {
        std::vector<FlowTablePoint> points =
            PointsOf({0.03, 1.6, 4.2}, {0.12, 0.25, 0.4, 0.55, 0.7, 0.9, 1.1});
        for (FlowTablePoint& point : points) {
            point.Flow *= 1 + 0.035 * (static_cast<double>(random() % 2001) - 1000) / 1000;
        }
        const std::optional<PowerLawFit> fit = FitWithoutOutliers(points);
        ASSERT_TRUE(fit);
        sets += std::count(fit->Outliers.begin(), fit->Outliers.end(), true) > 0 ? 1 : 0;
    }
    EXPECT_LE(sets, 6);
}

TEST(PowerLawFit, AThirdOfManyPointsMayBeFarOff) {
    std::vector<FlowTablePoint> points;
    for (int i = 0; i < 60; ++i) {
        const double level = 0.1 + 0.02 * i;
        const double scatter = 0.01 * std::sin(7.0 * i);
        points.push_back(
            {level, 3 * std::pow(level, 1.5) * (1 + scatter) * (i % 3 == 1 ? 1.4 : 1)});
    }
    const std::optional<PowerLawFit> fit = FitWithoutOutliers(points);
    ASSERT_TRUE(fit);
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_EQ(fit->Outliers[i], i % 3 == 1) << i;
    }
    EXPECT_NEAR(fit->Law.Exponent, 1.5, 0.05);
}

TEST(PowerLawFit, PointsThatScatterAlikeAreNoOutliers) {
    std::vector<FlowTablePoint> points;
    for (int i = 1; i <= 12; ++i) {
        const double level = 0.1 * i;
        points.push_back({level, 5 * std::pow(level, 1.6) * (i % 2 == 0 ? 1.05 : 0.95)});
    }
    const std::optional<PowerLawFit> fit = FitWithoutOutliers(points);
    ASSERT_TRUE(fit);
    for (const bool outlier : fit->Outliers) {
        EXPECT_FALSE(outlier);
    }
}

TEST(OwnPoints, StraightLinesKeepThePointsAsTheyAre) {
    const Rating rating = ComputeRating(RowsOf("points", "0.5 1\n1 3\n2 10"));
    ASSERT_EQ(rating.Points.UpperBound(), 3);
    EXPECT_EQ(rating.Points[2].Level, 1);
    EXPECT_EQ(rating.Points[2].Flow, 3);
    EXPECT_EQ(rating.LeastHead, 0.5);
    EXPECT_EQ(rating.GreatestFlow, 10);
    EXPECT_TRUE(rating.Residuals.empty());
}

TEST(OwnPoints, UnitsOfLevelAndFlowAreTheDevices) {
    RatingDevice device = RowsOf("points", "30.48 1000\n60.96 3000", {}, InCentimeters);
    device.FlowUnit = 1;
    const Rating rating = ComputeRating(device);
    EXPECT_NEAR(rating.Points[1].Level, 1, 1e-9);
    EXPECT_NEAR(rating.Points[1].Flow, 1000 / 448.8, 1e-7);
}

TEST(OwnPoints, RowsAreSetInOrderAndToldOf) {
    const Rating rating = ComputeRating(RowsOf("points", "1 3\n0.5 1\n2 10\n0.5 1.2\n0 0"));
    ASSERT_EQ(rating.Points.UpperBound(), 3);
    EXPECT_NEAR(rating.Points[1].Flow, 1.1, 1e-12);
    EXPECT_TRUE(Remarks(rating, RatingWeight::Note, "order of their levels"));
    EXPECT_TRUE(Remarks(rating, RatingWeight::Note, "mean flow"));
    EXPECT_FALSE(RemarksOf(rating, RatingWeight::Beyond));
}

TEST(OwnPoints, FlowThatFallsIsToldOf) {
    const Rating rating = ComputeRating(RowsOf("points", "1 3\n2 2\n3 5"));
    ASSERT_TRUE(rating.Made());
    EXPECT_TRUE(Remarks(rating, RatingWeight::Beyond, "does not rise from 1 foot to 2 feet"));
}

TEST(OwnPoints, RowsWithoutAPossibleFlowAreLeftOutAndToldOf) {
    const Rating rating = ComputeRating(RowsOf("points", "1 3\n2 -2\n3 5\n1e300 7"));
    EXPECT_EQ(rating.Points.UpperBound(), 2);
    EXPECT_TRUE(Remarks(rating, RatingWeight::Beyond, "Row 2 has no flow"));
    EXPECT_TRUE(Remarks(rating, RatingWeight::Beyond, "Row 4 has no flow"));
    EXPECT_TRUE(RemarksOf(ComputeRating(RowsOf("points", "1 3\n1 5")), RatingWeight::Refused));
    EXPECT_TRUE(RemarksOf(ComputeRating(DeviceOf("points")), RatingWeight::Refused));
}

TEST(OwnPoints, ManyOddRowsAreToldOfInFewRemarks) {
    std::string rows;
    for (int i = 1; i <= 200; ++i) {
        rows += std::to_string(i) + " " + std::to_string(300 - i) + "\n";
    }
    const Rating rating = ComputeRating(RowsOf("points", rows));
    EXPECT_LT(rating.Remarks.size(), 30U);
    EXPECT_TRUE(Remarks(rating, RatingWeight::Beyond, "The same holds for 194 more."));
}

TEST(OwnPoints, StraightInLogarithmsPassesThroughEveryPoint) {
    const Rating rating =
        ComputeRating(RowsOf("points", "0.1 0.12\n0.2 0.36\n0.5 1.58\n1 4.95", {{"curve", 1}}));
    EXPECT_NEAR(RatingFlowAt(rating, 0.2) / 0.36, 1, 0.001);
    EXPECT_NEAR(RatingFlowAt(rating, 0.5) / 1.58, 1, 0.001);
    // Midway in logarithms the flow is the geometric mean.
    EXPECT_NEAR(RatingFlowAt(rating, std::sqrt(0.1 * 0.2)) / std::sqrt(0.12 * 0.36), 1, 0.001);
}

TEST(OwnPoints, APowerLawSmoothsAndTellsItsNumbers) {
    // Q = 5 (H + 0.02)^1.6 with an error of 10 % in one row.
    const char* rows =
        "0.1 0.16814\n0.2 0.44345\n0.3 0.80763\n0.5 1.7562\n0.7 3.2516\n0.9 4.3755\n1.2 6.873";
    const Rating rating = ComputeRating(RowsOf("points", rows, {{"curve", 2}}));
    ASSERT_TRUE(rating.Made());
    EXPECT_NEAR(RatingFlowAt(rating, 0.7) / (5 * std::pow(0.72, 1.6)), 1, 0.002);
    EXPECT_TRUE(Remarks(rating, RatingWeight::Beyond, "The flow at 0.7 feet lies 10"));
    EXPECT_TRUE(Remarks(rating, RatingWeight::Note, "A, B, C = 0.0"));
    ASSERT_EQ(rating.Residuals.size(), 7U);
    EXPECT_TRUE(rating.Residuals[4].Outlier);
    EXPECT_NEAR(rating.Residuals[4].Percent, 10, 0.5);
    EXPECT_FALSE(rating.Residuals[3].Outlier);
    EXPECT_TRUE(Remarks(ComputeRating(RowsOf("points", "1 3\n2 9\n3 15", {{"curve", 2}})),
                        RatingWeight::Refused, "four points"));
}

TEST(OwnPoints, ATableOfAThousandRowsIsKept) {
    std::string rows;
    for (int i = 1; i <= 1005; ++i) {
        rows += std::to_string(i) + " " + std::to_string(i * (i % 2 == 0 ? 2.0 : 2.002)) + "\n";
    }
    RatingDevice device = DeviceOf("points");
    const RatingRowsRead read = SetRatingRowsText(device, rows);
    EXPECT_EQ(read.Taken, 1000);
    EXPECT_EQ(read.Beyond, 5);
    EXPECT_EQ(ComputeRating(device).Points.UpperBound(), 1000);
    device.Values[0] = 1;
    EXPECT_LE(ComputeRating(device).Points.UpperBound(), MostRatingPoints);
}

}  // namespace
