// Weirs against figures that others have published; docs/flow-devices.md names the sources.

#include "flow/thin_plate_weirs.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

#include "flow/long_throat.h"
#include "flow/rating_support.h"

namespace {

constexpr double Foot = 0.3048;
constexpr double CubicFoot = Foot * Foot * Foot;

// Blevins (1984) after Shen: coefficients and corrections (metres) by angle, rounded to two digits
// or so; the curves through Shen's figures keep to that.
TEST(ThinPlateWeirs, NotchFiguresAgreeWithThoseOfBlevins) {
    struct Row {
        double Degrees, Coefficient, Correction;
    };
    constexpr Row Rows[] = {{20, 0.59, 0.0028},
                            {40, 0.58, 0.0017},
                            {60, 0.575, 0.0012},
                            {80, 0.575, 0.0010},
                            {100, 0.58, 0.0010}};
    for (const Row& row : Rows) {
        const NotchFigures figures = FiguresOfNotch(row.Degrees);
        EXPECT_NEAR(figures.Coefficient, row.Coefficient, 0.005) << row.Degrees;
        EXPECT_NEAR(figures.HeadCorrection, row.Correction, 0.00025) << row.Degrees;
    }
}

// ISO 1438 gives the right-angled notch a head correction of 0.85 mm.
TEST(ThinPlateWeirs, TheRightAngledNotchHasTheCorrectionOfTheStandard) {
    EXPECT_NEAR(FiguresOfNotch(90).HeadCorrection, 0.00085, 0.00005);
}

// Endress+Hauser: cubic metres per hour by the 2.5th power of the head in millimetres, without the
// head correction: near full head the two agree, the wide notches all the way.
TEST(ThinPlateWeirs, NotchesAgreeWithASecondListAtFullHead) {
    constexpr std::pair<double, double> Factors[] = {
        {22.5, 0.0000313}, {30, 0.0000421}, {45, 0.0000651}, {60, 0.0000907}, {90, 0.0001571}};
    for (const auto& [degrees, factor] : Factors) {
        const double listed = factor * std::pow(380.0, 2.5) / 3600;
        EXPECT_NEAR(NotchFlow(degrees, 0.38) / listed, 1, 0.027) << degrees;
    }
    for (const double head : {0.10, 0.15, 0.25, 0.38}) {
        const double listed = 0.0001571 * std::pow(1000 * head, 2.5) / 3600;
        EXPECT_NEAR(NotchFlow(90, head) / listed, 1, 0.012) << head;
    }
}

// Cone's law of the right-angled notch.
TEST(ThinPlateWeirs, TheRightAngledNotchAgreesWithConesLaw) {
    for (const double feet : {0.2, 0.3, 0.5, 0.8, 1.0, 1.25}) {
        const double cone = 2.49 * std::pow(feet, 2.48);
        EXPECT_NEAR(NotchFlow(90, feet * Foot) / CubicFoot / cone, 1, 0.008) << feet;
    }
}

TEST(ThinPlateWeirs, AnglesBeyondThePublishedOnesKeepTheFiguresOfTheNearest) {
    EXPECT_EQ(FiguresOfNotch(10).Coefficient, FiguresOfNotch(20).Coefficient);
    EXPECT_EQ(FiguresOfNotch(140).HeadCorrection, FiguresOfNotch(100).HeadCorrection);
}

// A published handbook function after Blevins (1984): 0.3 m over a full-width crest of 2 m, 0.4 m
// high, gives 0.641560 cubic metres per second; it takes 1 mm from the crest where Bos takes 0.9.
TEST(ThinPlateWeirs, AFullWidthWeirAgreesWithAWorkedExample) {
    EXPECT_NEAR(RectangularWeirFlow(2, 1, 0.4, 0.3), 0.641560, 0.0001);
    EXPECT_NEAR(RectangularWeirFlow(2.0 - 0.0001, 1, 0.4, 0.3), 0.641560, 5e-7);
}

// The same handbook's fully contracted weir, 1 m long, 0.5 m high, head 0.2 m: 0.155459. Its head
// correction is 0.1 mm where Kindsvater and Carter have 1 mm: 0.67 % of the flow.
TEST(ThinPlateWeirs, AContractedWeirAgreesWithAWorkedExampleButForItsHeadCorrection) {
    const double correction = std::pow(0.2010 / 0.2001, 1.5);
    EXPECT_NEAR(RectangularWeirFlow(1, 0, 0.5, 0.2) / (0.155459 * correction), 1, 0.0015);
}

// A worked sheet: crest 2 ft in a channel of 4 ft, 1 ft high, head 0.45 ft, 1.981 cfs. It takes C2
// from another row of its own table (3.152 for 3.173) and has the corrections of head (0.003 ft)
// and crest (0.010 ft) changed round; put right, its figures give 1.961.
TEST(ThinPlateWeirs, APartlyContractedWeirAgreesWithAWorkedSheetPutRight) {
    const double asPrinted = (0.0612 * 0.45 + 3.152) * (2 - 0.003) * std::pow(0.45 + 0.010, 1.5);
    EXPECT_NEAR(asPrinted, 1.981, 0.0005);
    const double right = (0.0612 * 0.45 + 3.173) * (2 + 0.010) * std::pow(0.45 + 0.003, 1.5);
    EXPECT_NEAR(right, 1.961, 0.0005);
    EXPECT_NEAR(RectangularWeirFlow(2 * Foot, 0.5, Foot, 0.45 * Foot) / CubicFoot / right, 1,
                0.003);
}

// Water Measurement Manual: C = C1 h / P + C2 in feet, by crest over channel. Bos gives the same
// curves in other digits.
TEST(ThinPlateWeirs, RectangularWeirsAgreeWithASecondListOfCoefficients) {
    struct Row {
        double Share, C1, C2;
    };
    constexpr Row Rows[] = {{0.2, -0.0087, 3.152}, {0.4, 0.0317, 3.164}, {0.5, 0.0612, 3.173},
                            {0.6, 0.0995, 3.178},  {0.7, 0.1602, 3.182}, {0.8, 0.2376, 3.189},
                            {0.9, 0.3447, 3.205},  {1.0, 0.4000, 3.220}};
    const double inFeet = 2.0 / 3 * std::sqrt(2 * Gravity / Foot);
    for (const Row& row : Rows) {
        const RectangularWeirFigures figures = FiguresOfRectangularWeir(row.Share);
        EXPECT_NEAR(figures.Coefficient * inFeet / row.C2, 1, 0.0025) << row.Share;
        EXPECT_NEAR((figures.Coefficient + figures.Rise) * inFeet / (row.C1 + row.C2), 1, 0.005)
            << row.Share;
    }
}

TEST(ThinPlateWeirs, WidthCorrectionsAreThoseWrittenOnTheCurve) {
    EXPECT_DOUBLE_EQ(FiguresOfRectangularWeir(0).WidthCorrection, 0.0024);
    EXPECT_DOUBLE_EQ(FiguresOfRectangularWeir(0.4).WidthCorrection, 0.0027);
    EXPECT_DOUBLE_EQ(FiguresOfRectangularWeir(0.8).WidthCorrection, 0.0042);
    EXPECT_DOUBLE_EQ(FiguresOfRectangularWeir(1).WidthCorrection, -0.0009);
}

// A worked sheet: crest 2 ft, head 0.45 ft, two contractions, 1.92 cfs by Francis.
TEST(ThinPlateWeirs, FrancisAgreesWithAWorkedSheet) {
    EXPECT_NEAR(FrancisFlow(2, 2, 0.45), 1.92, 0.005);
}

TEST(ThinPlateWeirs, FrancisNeverFallsWithRisingHead) {
    double before = 0;
    for (int tenths = 1; tenths < 300; ++tenths) {
        const double head = tenths / 10.0;
        const double flow = FrancisFlow(1, 2, head);
        EXPECT_GE(flow, before) << head;
        before = flow;
    }
    EXPECT_DOUBLE_EQ(FrancisFlow(1, 1, 0.3), 3.33 * 0.97 * std::pow(0.3, 1.5));
}

// Bos (1989) has 0.63 as coefficient of the Cipolletti weir.
TEST(ThinPlateWeirs, CipollettiAgreesWithTheCoefficientOfBos) {
    const double bos = 0.63 * 2 / 3 * std::sqrt(2 * Gravity / Foot) * 3 * std::pow(0.8, 1.5);
    EXPECT_NEAR(CipollettiFlow(3, 0.8) / bos, 1, 0.0025);
}

// Coefficients of the published table, at its entries and midway between them.
TEST(ThinPlateWeirs, ProportionalWeirsTakeTheirCoefficientFromTheTable) {
    EXPECT_NEAR(SutroCoefficient(0.10 * Foot, 1.00 * Foot, false), 0.6120, 1e-9);
    EXPECT_NEAR(SutroCoefficient(0.30 * Foot, 1.50 * Foot, false), 0.6080, 1e-9);
    EXPECT_NEAR(SutroCoefficient(0.02 * Foot, 0.50 * Foot, true), 0.6140, 1e-9);
    EXPECT_NEAR(SutroCoefficient(0.20 * Foot, 1.25 * Foot, true), 0.6155, 1e-9);
    EXPECT_NEAR(SutroCoefficient(0.125 * Foot, 0.875 * Foot, false), 0.608875, 1e-9);
    EXPECT_NEAR(SutroCoefficient(Foot, 3 * Foot, false), 0.6080, 1e-9);
}

TEST(ThinPlateWeirs, AProportionalWeirsFlowIsStraightAboveItsBase) {
    const double base = 0.03;
    const double step = SutroFlow(base, 0.3, false, 0.11) - SutroFlow(base, 0.3, false, 0.10);
    EXPECT_NEAR(SutroFlow(base, 0.3, false, 0.31) - SutroFlow(base, 0.3, false, 0.30), step, 1e-12);
    EXPECT_NEAR(SutroFlow(base, 0.3, false, base), SutroFlow(base, 0.3, false, base * (1 - 1e-9)),
                1e-9);
    // By its equation, with the table's 0.612 at 0.1 ft by 1 ft.
    const double equation =
        0.612 * Foot * std::sqrt(2 * Gravity * 0.1 * Foot) * (0.5 * Foot - 0.1 * Foot / 3);
    EXPECT_NEAR(SutroFlow(0.1 * Foot, Foot, false, 0.5 * Foot), equation, 1e-9);
}

// The sides are cut so that the flow through base and curve is the straight law: summing the flow
// of thin strips under their heads has to give it back.
TEST(ThinPlateWeirs, TheProportionalWeirsCurveGivesItsOwnLaw) {
    const double base = 0.05;
    const double width = 0.4;
    const double head = 0.35;
    constexpr int Strips = 400'000;
    double sum = 0;
    for (int i = 0; i < Strips; ++i) {
        const double y = head * (i + 0.5) / Strips;
        const double share = y < base ? 1 : SutroWidthShare(y - base, base);
        sum += width * share * std::sqrt(2 * Gravity * (head - y)) * head / Strips;
    }
    const double coefficient = SutroCoefficient(base, width, false);
    EXPECT_NEAR(SutroFlow(base, width, false, head) / (coefficient * sum), 1, 1e-4);
}

TEST(WeirRatings, NotchesTellOfAnglesBeyondThePublishedOnes) {
    EXPECT_FALSE(
        RemarksOf(ComputeRating(DeviceOf("v-notch", {{"angle", 60}})), RatingWeight::Beyond));
    for (const double angle : {15.0, 22.5, 120.0}) {
        const Rating rating = ComputeRating(DeviceOf("v-notch", {{"angle", angle}}));
        ASSERT_TRUE(rating.Made());
        EXPECT_TRUE(Remarks(rating, RatingWeight::Beyond, "degrees")) << angle;
        EXPECT_EQ(rating.Remarks.front().Field, 0) << angle;
    }
}

TEST(WeirRatings, ANotchNearBedOrWallsHasAShorterRange) {
    const auto greatest = [](double height, double channel) {
        return ComputeRating(DeviceOf("v-notch",
                                      {{"crest-height", height}, {"channel-width", channel}},
                                      InMeters))
                   .GreatestHead *
               Foot;
    };
    EXPECT_NEAR(greatest(0, 0), 0.38, 1e-6);
    EXPECT_NEAR(greatest(0.5, 0), 0.2, 1e-6);
    EXPECT_NEAR(greatest(0.5, 0.8), 0.16, 1e-6);
}

TEST(WeirRatings, AHeadAskedForBeyondTheLimitIsGivenAndToldOf) {
    const Rating rating = ComputeRating(DeviceOf("v-notch", {{"greatest-head", 0.6}}, InMeters));
    EXPECT_NEAR(rating.GreatestHead * Foot, 0.38, 1e-6);
    EXPECT_NEAR(rating.Points[rating.Points.UpperBound()].Level * Foot, 0.6, 1e-6);
    EXPECT_TRUE(Remarks(rating, RatingWeight::Beyond, "Above 0.38 meters"));
}

TEST(WeirRatings, ACrestLongerThanItsChannelIsRefused) {
    for (const char* kind : {"rectangular-weir", "cipolletti"}) {
        const Rating rating = ComputeRating(DeviceOf(kind, {{"crest", 3}, {"channel-width", 2}}));
        EXPECT_FALSE(rating.Made()) << kind;
        EXPECT_TRUE(Remarks(rating, RatingWeight::Refused, "longer than the channel")) << kind;
    }
}

TEST(WeirRatings, ARectangularWeirTellsOfItsLimits) {
    const auto rating = [](double crest, double channel, double height) {
        return ComputeRating(DeviceOf(
            "rectangular-weir",
            {{"crest", crest}, {"channel-width", channel}, {"crest-height", height}}, InMeters));
    };
    EXPECT_FALSE(RemarksOf(rating(1, 1, 0.5), RatingWeight::Beyond));
    EXPECT_TRUE(Remarks(rating(1, 1, 0.5), RatingWeight::Note, "Full width"));
    EXPECT_TRUE(Remarks(rating(1, 1.1, 0.5), RatingWeight::Beyond, "from the wall"));
    EXPECT_TRUE(Remarks(rating(0.1, 1, 0.5), RatingWeight::Beyond, "shorter than"));
    EXPECT_TRUE(Remarks(rating(1, 2, 0.05), RatingWeight::Beyond, "above the bed"));
    EXPECT_EQ(rating(1, 2, 2).Uncertainty, 1.5);
    EXPECT_EQ(rating(1, 2, 0.8).Uncertainty, 2);
    EXPECT_EQ(rating(1, 2, 0.2).Uncertainty, 3);
}

TEST(WeirRatings, ASmallCipollettiWeirHasNoHeadInsideItsLimits) {
    const Rating rating = ComputeRating(DeviceOf("cipolletti", {{"crest", 0.5}}));
    ASSERT_TRUE(rating.Made());
    EXPECT_EQ(rating.GreatestHead, 0);
    EXPECT_TRUE(Remarks(rating, RatingWeight::Beyond, "No head is inside"));
}

TEST(WeirRatings, AProportionalWeirTellsHowWideItsOpeningHasToBe) {
    const Rating rating = ComputeRating(DeviceOf("sutro"));
    EXPECT_TRUE(Remarks(rating, RatingWeight::Note, "0.45 feet above the base"));
    EXPECT_TRUE(Remarks(rating, RatingWeight::Note, "0.2804 feet wide"));
    EXPECT_TRUE(Remarks(ComputeRating(DeviceOf("sutro", {{"base-width", 4}})), RatingWeight::Beyond,
                        "Coefficients are published"));
    EXPECT_TRUE(Remarks(ComputeRating(DeviceOf("sutro", {{"opening-height", 0.05}})),
                        RatingWeight::Refused, "higher than"));
}

}  // namespace
