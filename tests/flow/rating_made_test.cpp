#include "flow/rating_made.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <string_view>

#include "common/number_text.h"
#include "flow/flow_calculation.h"
#include "flow/rating_method.h"
#include "flow/rating_points.h"
#include "flow/rating_support.h"

namespace {

/// Farthest that straight lines between the points are off the method's own curve, as a share.
double FarthestOff(const Rating& rating, const std::function<double(double)>& flow) {
    constexpr int Heads = 4000;
    const double first = rating.Points[1].Level;
    const double last = rating.Points[rating.Points.UpperBound()].Level;
    double farthest = 0;
    for (int i = 0; i <= Heads; ++i) {
        const double head = first * std::pow(last / first, static_cast<double>(i) / Heads);
        const double exact = flow(head * 0.3048) / CubicMetersPerCubicFoot;
        farthest = std::max(farthest, std::fabs(RatingFlowAt(rating, head) / exact - 1));
    }
    return farthest;
}

TEST(MadeRating, EveryKindMakesOneFromItsDefaults) {
    for (const RatingKind& kind : RatingKinds()) {
        const Rating rating = ComputeRating(SomeDevice(kind));
        ASSERT_TRUE(rating.Made()) << kind.Key;
        EXPECT_GE(rating.Points.UpperBound(), 2) << kind.Key;
        EXPECT_LE(rating.Points.UpperBound(), MostRatingPoints) << kind.Key;
        EXPECT_FALSE(rating.Equations.empty() || rating.Sources.empty()) << kind.Key;
        EXPECT_LT(rating.LeastHead, rating.GreatestHead) << kind.Key;
        EXPECT_LT(rating.LeastFlow, rating.GreatestFlow) << kind.Key;
        for (int i = 2; i <= rating.Points.UpperBound(); ++i) {
            EXPECT_LT(rating.Points[i - 1].Level, rating.Points[i].Level) << kind.Key;
            EXPECT_LT(rating.Points[i - 1].Flow, rating.Points[i].Flow) << kind.Key;
        }
    }
}

TEST(MadeRating, UnitsOfTheDeviceDoNotChangeItsRating) {
    for (const RatingKind& kind : RatingKinds()) {
        RatingDevice device = SomeDevice(kind);
        const Rating rating = ComputeRating(device);
        ChangeRatingLengthUnit(device, InCentimeters);
        const Rating turned = ComputeRating(device);
        ASSERT_TRUE(turned.Made()) << kind.Key;
        const double head = (rating.LeastHead + rating.GreatestHead) / 2;
        EXPECT_NEAR(RatingFlowAt(turned, head) / RatingFlowAt(rating, head), 1, 1e-6) << kind.Key;
    }
}

/// The method of a kind, for what has one curve: that of its own, or else of its group.
RatingMethod MethodFor(const RatingDevice& device) {
    using Method = RatingMethod (*)(const RatingDevice&);
    static const std::map<std::string_view, Method> own = {
        {"v-notch", VNotchMethod},
        {"rectangular-weir", RectangularWeirMethod},
        {"standard-weir", StandardWeirMethod},
        {"cipolletti", CipollettiMethod},
        {"sutro", SutroMethod},
        {"broad-crested", BroadCrestedMethod},
        {"parshall", ParshallMethod},
        {"cutthroat", CutthroatMethod},
        {"channel-section", SectionMethod}};
    static const std::map<RatingGroup, Method> common = {{RatingGroup::LongThroated, ThroatMethod},
                                                         {RatingGroup::Flume, HFlumeMethod},
                                                         {RatingGroup::Channel, ChannelMethod},
                                                         {RatingGroup::OwnPoints, PointsMethod}};
    const auto found = own.find(device.Kind->Key);
    return found != own.end() ? found->second(device) : common.at(device.Kind->Group)(device);
}

TEST(MadeRating, StraightLinesBetweenItsPointsKeepToTheCurve) {
    for (const RatingKind& kind : RatingKinds()) {
        RatingDevice device = SomeDevice(kind);
        if (kind.Group == RatingGroup::OwnPoints) {
            device.Values[0] = 2;
        }
        const RatingMethod method = MethodFor(device);
        EXPECT_LT(FarthestOff(ComputeRating(device), method.Flow), RatingTolerance) << kind.Key;
    }
}

// Roughly one point for every 4 % of head: a hundred or so, however bent the curve.
TEST(MadeRating, ItTakesNoMorePointsThanItNeeds) {
    for (const RatingKind& kind : RatingKinds()) {
        EXPECT_LT(ComputeRating(SomeDevice(kind)).Points.UpperBound(), 260) << kind.Key;
    }
}

TEST(MadeRating, TheLiveCalculationReadsTheCurve) {
    const Rating rating = ComputeRating(DeviceOf("throat-rectangular"));
    LoggerState state;
    state.FlowMode = 4;
    state.FlowTable = rating.Points;
    state.EngUnits[0] = "feet";
    double velocity = 0;
    EXPECT_EQ(CalculateFlow(state, state.FlowTable, 0.7777, velocity),
              RatingFlowAt(rating, 0.7777));
}

TEST(MadeRating, FiguresOutsideTheirLimitsAreRefusedOneByOne) {
    const Rating rating =
        ComputeRating(DeviceOf("throat-rectangular", {{"throat-width", -1}, {"throat-length", 0}}));
    EXPECT_FALSE(rating.Made());
    ASSERT_EQ(rating.Remarks.size(), 2U);
    EXPECT_EQ(rating.Remarks[0].Field, 0);
    EXPECT_EQ(rating.Remarks[1].Field, 2);
    EXPECT_EQ(rating.Remarks[0].Weight, RatingWeight::Refused);
    EXPECT_EQ(RatingFlowAt(rating, 1), 0);
    EXPECT_TRUE(ListRating(rating, 0, 0, 10).empty());
}

TEST(MadeRating, ADeviceWithoutKindOrFiguresIsRefused) {
    EXPECT_TRUE(RemarksOf(ComputeRating(RatingDevice{}), RatingWeight::Refused));
    RatingDevice device = DeviceOf("v-notch");
    device.Values.pop_back();
    EXPECT_TRUE(RemarksOf(ComputeRating(device), RatingWeight::Refused));
}

TEST(MadeRating, TheWeightiestRemarkComesFirst) {
    const Rating rating = ComputeRating(DeviceOf("v-notch", {{"angle", 120}}));
    ASSERT_GE(rating.Remarks.size(), 2U);
    EXPECT_EQ(rating.Remarks.front().Weight, RatingWeight::Beyond);
    EXPECT_EQ(rating.Remarks.back().Weight, RatingWeight::Note);
}

/// Any double at all, the odd ones often.
double AnyFigure(std::mt19937& random) {
    constexpr double Odd[] = {0,
                              -1,
                              1e-300,
                              1e300,
                              std::numeric_limits<double>::infinity(),
                              -std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN(),
                              std::numeric_limits<double>::max(),
                              std::numeric_limits<double>::denorm_min(),
                              1,
                              2,
                              3};
    if (random() % 4 == 0) {
        return Odd[random() % std::size(Odd)];
    }
    return std::pow(10.0, static_cast<double>(random() % 6000) / 1000 - 3);
}

void ExpectFinite(const Rating& rating, const std::string& what) {
    for (const FlowTablePoint& point : rating.Points) {
        ASSERT_TRUE(std::isfinite(point.Level) && std::isfinite(point.Flow)) << what;
        ASSERT_GE(point.Flow, 0) << what;
    }
    ASSERT_TRUE(std::isfinite(rating.LeastHead + rating.GreatestHead + rating.LeastFlow +
                              rating.GreatestFlow + rating.Uncertainty))
        << what;
    for (const RatingResidual& residual : rating.Residuals) {
        ASSERT_TRUE(std::isfinite(residual.Head + residual.Flow + residual.Percent)) << what;
    }
    ASSERT_TRUE(rating.Made() || RemarksOf(rating, RatingWeight::Refused)) << what;
    ASSERT_LE(rating.Points.UpperBound(), MostRatingPoints) << what;
}

TEST(MadeRating, AnyFiguresEndInFiniteOnesOrARefusal) {
    std::mt19937 random(11);
    int made = 0;
    for (int round = 0; round < 150; ++round) {
        for (const RatingKind& kind : RatingKinds()) {
            RatingDevice device = DefaultRatingDevice(kind, static_cast<int>(random() % 5));
            std::string what(kind.Key);
            for (double& value : device.Values) {
                value = random() % 2 == 0 ? value : AnyFigure(random);
                what += " " + std::to_string(value);
            }
            for (std::size_t i = kind.Columns.empty() ? 12 : random() % 3; i < 12; ++i) {
                device.Rows.push_back({AnyFigure(random), AnyFigure(random), AnyFigure(random)});
            }
            const Rating rating = ComputeRating(device);
            made += rating.Made() ? 1 : 0;
            ExpectFinite(rating, what);
        }
    }
    EXPECT_GT(made, 200);
}

TEST(MadeRating, AcceptedFiguresMakeARatingMostly) {
    std::mt19937 random(5);
    int made = 0;
    int tried = 0;
    for (int round = 0; round < 60; ++round) {
        for (const RatingKind& kind : RatingKinds()) {
            RatingDevice device = SomeDevice(kind, InMeters);
            for (std::size_t i = 0; i < device.Values.size(); ++i) {
                if (kind.Fields[i].Units == RatingUnits::Choice) {
                    device.Values[i] =
                        static_cast<double>(random() % kind.Fields[i].Choices.size());
                } else {
                    device.Values[i] *= 0.5 + static_cast<double>(random() % 1000) / 1000;
                }
            }
            const Rating rating = ComputeRating(device);
            ExpectFinite(rating, std::string(kind.Key));
            ++tried;
            made += rating.Made() ? 1 : 0;
        }
    }
    EXPECT_GT(made, tried * 9 / 10);
}

TEST(RatingListing, HeadsAreRoundAndInTheUnitAskedFor) {
    const Rating rating = ComputeRating(DeviceOf("v-notch", {{"angle", 90}}));
    const std::vector<RatingListingLine> feet = ListRating(rating, InFeet, 0, 12);
    ASSERT_GE(feet.size(), 8U);
    EXPECT_EQ(feet[0].HeadText, "0.1");
    EXPECT_EQ(feet[1].HeadText, "0.2");
    EXPECT_NEAR(feet[1].Flow, RatingFlowAt(rating, 0.2), 1e-12);
    EXPECT_EQ(feet[1].FlowText, FormatFixed(feet[1].Flow, 5));
    EXPECT_TRUE(feet[0].Beyond);
    EXPECT_FALSE(feet[1].Beyond);
    const std::vector<RatingListingLine> inches = ListRating(rating, InInches, 1, 10);
    EXPECT_EQ(inches[0].HeadText, "2");
    EXPECT_NEAR(inches[0].Flow, RatingFlowAt(rating, 2.0 / 12) * 448.8, 1e-9);
}

TEST(RatingListing, ItHasAboutAsManyLinesAsAskedFor) {
    for (const RatingKind& kind : RatingKinds()) {
        const Rating rating = ComputeRating(SomeDevice(kind));
        for (const int lines : {1, 10, 25, 100}) {
            const std::size_t count = ListRating(rating, InMeters, 3, lines).size();
            EXPECT_LE(count, static_cast<std::size_t>(lines) * 5 / 4 + 2) << kind.Key;
            EXPECT_GE(static_cast<int>(count), lines / 3) << kind.Key;
        }
    }
}

TEST(RatingListing, TheCurveIsThePointsInTheUnitsAskedFor) {
    const Rating rating = ComputeRating(DeviceOf("parshall"));
    const FlowTable curve = RatingCurve(rating, InCentimeters, 4);
    ASSERT_EQ(curve.UpperBound(), rating.Points.UpperBound());
    EXPECT_NEAR(curve[3].Level, rating.Points[3].Level * 30.48, 1e-9);
    EXPECT_NEAR(curve[3].Flow, rating.Points[3].Flow * 7.4805 * 3.7854, 1e-9);
}

TEST(RatingListing, RangeAndUncertaintyStandInWords) {
    const Rating rating = ComputeRating(DeviceOf("parshall"));
    EXPECT_EQ(RatingRangeText(rating, InFeet, 0), "0.1 to 1.5 feet, 0.0542 to 3.909 CFS");
    EXPECT_EQ(RatingRangeText(rating, InInches, 1), "1.2 to 18 inches, 24.32 to 1754 GPM");
    EXPECT_EQ(RatingUncertaintyText(rating),
              "3 %, of a flume built to its standard dimensions, in free flow");
    EXPECT_EQ(RatingUncertaintyText(Rating{}), "none is published");
    EXPECT_EQ(RatingRangeText(Rating{}, InFeet, 0), "none inside the limits of the method");
}

TEST(RatingPoints, SampleHeadsRiseFromEndToEndWithTheBends) {
    const std::vector<double> heads = SampleHeads(0.0123456, 2.5, {0.5, 7, 1.23456789});
    EXPECT_EQ(heads.front(), 0.0123456);
    EXPECT_EQ(heads.back(), 2.5);
    EXPECT_TRUE(std::is_sorted(heads.begin(), heads.end()));
    for (const double bend : {0.5, 1.23456789}) {
        EXPECT_NE(std::find(heads.begin(), heads.end(), bend), heads.end());
    }
    for (std::size_t i = 1; i < heads.size(); ++i) {
        EXPECT_LT(heads[i] / heads[i - 1], 1.011);
    }
    EXPECT_TRUE(SampleHeads(0, 1, {}).empty());
    EXPECT_TRUE(SampleHeads(2, 1, {}).empty());
    EXPECT_TRUE(SampleHeads(1e-9, 1, {}).empty());
    EXPECT_TRUE(SampleHeads(std::nan(""), 1, {}).empty());
    EXPECT_TRUE(SampleHeads(1, INFINITY, {}).empty());
}

TEST(RatingPoints, AStraightCurveNeedsItsEndsAlone) {
    std::vector<FlowTablePoint> points;
    for (int i = 1; i <= 100; ++i) {
        points.push_back({i * 0.1, i * 0.3 + 1});
    }
    EXPECT_EQ(ChoosePoints(points, 0.001, 1000).UpperBound(), 2);
}

TEST(RatingPoints, NoLineLeavesThePointsByMoreThanTheTolerance) {
    std::mt19937 random(3);
    std::vector<FlowTablePoint> points;
    double level = 0.1;
    double flow = 1;
    for (int i = 0; i < 500; ++i) {
        level += 0.001 * static_cast<double>(1 + random() % 100);
        flow += 0.01 * static_cast<double>(1 + random() % 100);
        points.push_back({level, flow});
    }
    for (const double tolerance : {0.0, 0.001, 0.01, 0.1}) {
        Rating rating;
        rating.Points = ChoosePoints(points, tolerance, 1000);
        EXPECT_EQ(rating.Points[1].Level, points.front().Level);
        EXPECT_EQ(rating.Points[rating.Points.UpperBound()].Level, points.back().Level);
        for (const FlowTablePoint& point : points) {
            EXPECT_NEAR(RatingFlowAt(rating, point.Level) / point.Flow, 1, tolerance + 1e-12);
        }
    }
}

TEST(RatingPoints, MorePointsThanWantedLoosenTheTolerance) {
    std::vector<FlowTablePoint> points;
    for (int i = 1; i <= 3000; ++i) {
        points.push_back({i * 0.01, i + (i % 2 == 0 ? 0.4 : 0)});
    }
    const FlowTable table = ChoosePoints(points, 1e-9, 100);
    EXPECT_LE(table.UpperBound(), 100);
    EXPECT_GE(table.UpperBound(), 2);
}

}  // namespace
