// Standard flumes against figures that are not those their laws were taken from.

#include "flow/standard_flumes.h"

#include <gtest/gtest.h>

#include <cmath>

#include "flow/rating_support.h"

namespace {

constexpr double FeetPerMeter = 1 / 0.3048;
constexpr double LitersPerCfs = 28.316846592;
constexpr double GpmPerCfs = 448.831;

double LawFlow(const FlumeLaw& law, double head) {
    return law.Multiplier * std::pow(head, law.Exponent);
}

// Bos (1989): flow of the large Parshall flumes at their least and greatest head. The greatest
// heads are rounded from feet, 1.07 m from 3.5 ft and so on; the least is 0.09 m.
TEST(StandardFlumes, LargeParshallFlumesAgreeWithTheLimitsOfBos) {
    struct Row {
        const char* Size;
        double Feet, CubicMeters;
        double Least;
    };
    constexpr Row Rows[] = {{"10 ft", 3.5, 8.28, 0.16},  {"12 ft", 4.5, 14.68, 0.19},
                            {"15 ft", 5.5, 25.04, 0.23}, {"20 ft", 6, 37.97, 0.31},
                            {"25 ft", 6, 47.14, 0.38},   {"30 ft", 6, 56.33, 0.46},
                            {"40 ft", 6, 74.70, 0.60},   {"50 ft", 6, 93.04, 0.75}};
    std::size_t size = 14;
    for (const Row& row : Rows) {
        ASSERT_EQ(ParshallSizeNames[size], row.Size);
        const FlumeLaw law = ParshallLaw(size++);
        EXPECT_EQ(law.GreatestHead, row.Feet);
        EXPECT_NEAR(LawFlow(law, row.Feet) * LitersPerCfs / 1000, row.CubicMeters,
                    0.001 * row.CubicMeters)
            << row.Size;
        EXPECT_NEAR(LawFlow(law, 0.09 * FeetPerMeter) * LitersPerCfs / 1000, row.Least, 0.0055)
            << row.Size;
    }
}

// Parshall's two laws have to meet between 8 and 10 ft of throat.
TEST(StandardFlumes, TheTwoLawsOfParshallMeetBetweenTheirSizes) {
    const double small = 4 * 9 * std::pow(1.5, 1.522 * std::pow(9, 0.026));
    const double large = LargeParshallMultiplier(9) * std::pow(1.5, 1.6);
    EXPECT_NEAR(large / small, 1, 0.02);
}

// The least and the greatest flow that are published for the 16 sizes together, in gallons per
// minute; the heads follow from the sizes.
TEST(StandardFlumes, CutthroatFlumesAgreeWithThePublishedSpanOfTheirFlows) {
    EXPECT_NEAR(LawFlow(CutthroatLaw(0), 0.05) * GpmPerCfs, 0.3536, 0.0001);
    EXPECT_NEAR(LawFlow(CutthroatLaw(15), 3) * GpmPerCfs, 54801, 5);
}

// Skogerboe: C = K W^1.025 with one K for each length. The narrowest flume is listed 3.4 % above.
TEST(StandardFlumes, CutthroatMultipliersFollowTheThroatsWidth) {
    constexpr double K[] = {6.1, 4.5, 3.98, 3.5};
    constexpr double Inches[] = {1, 2, 4, 8, 2, 4, 8, 16, 3, 6, 12, 24, 12, 24, 48, 72};
    for (std::size_t size = 0; size < CutthroatSizeNames.size(); ++size) {
        const double law = K[size / 4] * std::pow(Inches[size] / 12, 1.025);
        EXPECT_NEAR(CutthroatLaw(size).Multiplier / law, 1, size == 0 ? 0.035 : 0.012) << size;
    }
}

TEST(StandardFlumes, CutthroatFlumesHoldFromATenthToAThirdOfTheirLength) {
    const Rating rating = ComputeRating(DeviceOf("cutthroat", {{"size", 12}}));
    EXPECT_NEAR(rating.LeastHead, 0.9, 1e-6);
    EXPECT_NEAR(rating.GreatestHead, 3, 1e-6);
}

// Froude's law of similarity from one H flume to the others: how far it is from their own laws is
// what may be expected of the HL flumes that have none.
TEST(StandardFlumes, HFlumesScaledFromOneAnotherKeepToTheirOwnLaws) {
    for (const auto& [small, large] :
         {std::pair<std::size_t, std::size_t>{4, 6}, {5, 6}, {6, 7}, {4, 7}, {3, 6}}) {
        const HFlumeLaw own = LawOfHFlume(HFlumeKind::H, small);
        HFlumeLaw scaled = LawOfHFlume(HFlumeKind::H, large);
        scaled.ScaledFrom = scaled.Depth;
        scaled.Depth = own.Depth;
        for (const double share : {0.05, 0.1, 0.2, 0.5, 1.0}) {
            EXPECT_NEAR(HFlumeFlow(scaled, share * own.Depth) / HFlumeFlow(own, share * own.Depth),
                        1, 0.0105)
                << own.Depth << " from " << scaled.ScaledFrom << " at " << share;
        }
    }
}

TEST(StandardFlumes, AnHlFlumeWithoutALawOfItsOwnIsToldOf) {
    const Rating rating = ComputeRating(DeviceOf("hl-flume", {{"size", 3}}));
    EXPECT_TRUE(Remarks(rating, RatingWeight::Beyond, "scaled by Froude"));
    EXPECT_NEAR(rating.GreatestHead, 3.5, 1e-6);
    EXPECT_NEAR(rating.GreatestFlow, 117 * std::pow(3.5 / 4, 2.5), 0.2);
    EXPECT_FALSE(
        RemarksOf(ComputeRating(DeviceOf("hl-flume", {{"size", 4}})), RatingWeight::Beyond));
}

// Bos (1989): the least head of a 3 inch flume is 0.03 m, its greatest flow 32.1 l/s.
TEST(StandardFlumes, AParshallRatingHasTheRangeOfItsSize) {
    const Rating rating = ComputeRating(DeviceOf("parshall", {{"size", 2}}));
    EXPECT_NEAR(rating.LeastHead, 0.03 * FeetPerMeter, 0.002);
    EXPECT_NEAR(rating.GreatestFlow * LitersPerCfs, 32.1, 0.5);
    EXPECT_TRUE(Remarks(rating, RatingWeight::Note, "50 %"));
    EXPECT_EQ(rating.Uncertainty, 3);
}

}  // namespace
