// What physics asks of ratings whatever the dimensions: random geometry, fixed seeds.

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "flow/long_throat.h"
#include "flow/rating_support.h"

namespace {

constexpr double Foot = 0.3048;
constexpr double CubicFoot = Foot * Foot * Foot;
constexpr int Rounds = 15;

class Geometry {
 public:
    explicit Geometry(unsigned seed) : random_(seed) {}

    double Between(double least, double greatest) {
        return least + (greatest - least) * static_cast<double>(random_() % 100001) / 100000;
    }
    int Choice(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

    /// A throat of that kind that narrows its channel.
    RatingDevice Throat(std::string_view kind) {
        RatingDevice device = DeviceOf(kind, {}, InMeters);
        Set(device, "throat-length", Between(0.6, 3));
        Set(device, "sill", Between(0.05, 0.6));
        const double width = Between(0.2, 2);
        Set(device, "throat-width", width);
        Set(device, "throat-diameter", width);
        Set(device, "throat-slope", Between(0.5, 2.5));
        Set(device, "approach-width", 2 * width + Between(2, 6));
        Set(device, "approach-slope", Between(0.5, 2));
        Set(device, "roughness-height", Between(0.00005, 0.0005));
        Set(device, "boundary", Choice(2));
        if (RatingFieldAt(*device.Kind, "pipe-diameter")) {
            const double pipe = Between(0.6, 1.8);
            Set(device, "pipe-diameter", pipe);
            Set(device, "throat-length", pipe);
            Set(device, "throat-width", pipe * Between(0.3, 0.6));
            Set(device, "sill", pipe * Between(0.1, 0.35));
            Set(device, "throat-slope", Between(0.2, 1));
        }
        return device;
    }

    static void Set(RatingDevice& device, std::string_view key, double value) {
        if (const auto at = RatingFieldAt(*device.Kind, key)) {
            device.Values[*at] = value;
        }
    }

 private:
    std::mt19937 random_;
};

double FlowAt(const Rating& rating, double meters) {
    return RatingFlowAt(rating, meters / Foot) * CubicFoot;
}

/// Power of the head with which the flow grows in the upper half of a rating's range.
double ExponentOf(const Rating& rating) {
    const double low = 0.5 * rating.GreatestHead;
    const double high = rating.GreatestHead * 0.98;
    return std::log(RatingFlowAt(rating, high) / RatingFlowAt(rating, low)) / std::log(high / low);
}

void ExpectRising(const Rating& rating, const RatingDevice& device) {
    ASSERT_TRUE(rating.Made()) << device.Kind->Key;
    for (int i = 2; i <= rating.Points.UpperBound(); ++i) {
        ASSERT_LT(rating.Points[i - 1].Level, rating.Points[i].Level) << device.Kind->Key;
        ASSERT_LT(rating.Points[i - 1].Flow, rating.Points[i].Flow)
            << device.Kind->Key << " at " << rating.Points[i].Level;
    }
}

constexpr std::string_view Throats[] = {"throat-rectangular", "throat-trapezoidal",
                                        "throat-triangular",  "throat-u",
                                        "pipe-sill",          "palmer-bowlus"};

TEST(RatingPhysics, FlowThroughAThroatRisesWithHead) {
    Geometry geometry(1);
    for (int i = 0; i < Rounds; ++i) {
        for (const std::string_view kind : Throats) {
            const RatingDevice device = geometry.Throat(kind);
            ExpectRising(ComputeRating(device), device);
        }
    }
}

TEST(RatingPhysics, FlowOverAWeirRisesWithHead) {
    Geometry geometry(2);
    for (int i = 0; i < Rounds; ++i) {
        const double crest = geometry.Between(0.1, 5);
        for (const RatingDevice& device :
             {DeviceOf("v-notch", {{"angle", geometry.Between(10, 150)}}, InMeters),
              DeviceOf("rectangular-weir",
                       {{"crest", crest},
                        {"channel-width", crest * geometry.Between(1, 5)},
                        {"crest-height", geometry.Between(0.05, 3)}},
                       InMeters),
              DeviceOf("standard-weir", {{"crest", crest}, {"contractions", geometry.Choice(3)}},
                       InMeters),
              DeviceOf("cipolletti", {{"crest", crest}}, InMeters),
              DeviceOf("sutro",
                       {{"base-height", geometry.Between(0.005, 0.1)},
                        {"base-width", crest},
                        {"opening-height", geometry.Between(0.2, 2)}},
                       InMeters),
              DeviceOf("broad-crested",
                       {{"crest", crest},
                        {"sill", geometry.Between(0.1, 2)},
                        {"throat-length", geometry.Between(0.2, 3)}},
                       InMeters)}) {
            ExpectRising(ComputeRating(device), device);
        }
    }
}

TEST(RatingPhysics, FlowInAChannelRisesWithDepth) {
    Geometry geometry(3);
    for (int i = 0; i < Rounds; ++i) {
        for (const char* kind : {"channel-rectangular", "channel-trapezoidal", "channel-triangular",
                                 "channel-circular", "channel-egg"}) {
            RatingDevice device = DeviceOf(kind, {}, InMeters);
            Geometry::Set(device, "width", geometry.Between(0.1, 10));
            Geometry::Set(device, "depth", geometry.Between(0.1, 4));
            Geometry::Set(device, "side-slope", geometry.Between(0.05, 4));
            Geometry::Set(device, "pipe-diameter", geometry.Between(0.1, 4));
            Geometry::Set(device, "height", geometry.Between(0.1, 4));
            Geometry::Set(device, "slope", geometry.Between(0.001, 5));
            Geometry::Set(device, "roughness", geometry.Between(0.009, 0.15));
            Geometry::Set(device, "wall-roughness", geometry.Between(0.009, 0.15));
            ExpectRising(ComputeRating(device), device);
        }
    }
}

// A valley whose sides nowhere flatten: with one roughness no way of composing lets its flow fall.
TEST(RatingPhysics, FlowInAValleyByPointsRisesWithDepth) {
    Geometry geometry(4);
    for (int i = 0; i < Rounds; ++i) {
        std::vector<RatingRow> rows;
        double x = 0;
        double y = 0;
        double steepness = geometry.Between(0.1, 0.5);
        for (int k = 0; k < 5; ++k) {
            rows.push_back({x, y, 0});
            rows.insert(rows.begin(), {-x - 1, y, 0});
            x += geometry.Between(0.2, 2);
            y += steepness * geometry.Between(0.5, 1.5);
            steepness *= geometry.Between(1.2, 2);
        }
        RatingDevice device =
            DeviceOf("channel-section", {{"composing", geometry.Choice(3)}}, InMeters);
        device.Rows = rows;
        ExpectRising(ComputeRating(device), device);
    }
}

TEST(RatingPhysics, FlowThroughStandardFlumesRisesWithHead) {
    for (const char* kind : {"parshall", "hs-flume", "h-flume", "hl-flume", "cutthroat"}) {
        RatingDevice device = DeviceOf(kind);
        for (std::size_t size = 0; size < device.Kind->Fields[0].Choices.size(); ++size) {
            device.Values[0] = static_cast<double>(size);
            ExpectRising(ComputeRating(device), device);
        }
    }
}

TEST(RatingPhysics, ATriangularThroatGrowsWithTheTwoAndAHalfthPower) {
    Geometry geometry(5);
    for (int i = 0; i < Rounds; ++i) {
        RatingDevice device = geometry.Throat("throat-triangular");
        Geometry::Set(device, "approach-width", 60);
        EXPECT_NEAR(ExponentOf(ComputeRating(device)), 2.5, 0.06);
    }
}

TEST(RatingPhysics, ARectangularThroatGrowsWithTheOneAndAHalfthPower) {
    Geometry geometry(6);
    for (int i = 0; i < Rounds; ++i) {
        RatingDevice device = geometry.Throat("throat-rectangular");
        Geometry::Set(device, "approach-width", 60);
        EXPECT_NEAR(ExponentOf(ComputeRating(device)), 1.5, 0.06);
    }
}

TEST(RatingPhysics, ANotchGrowsWithTheTwoAndAHalfthPower) {
    Geometry geometry(7);
    for (int i = 0; i < Rounds; ++i) {
        const Rating rating = ComputeRating(
            DeviceOf("v-notch", {{"angle", geometry.Between(20, 100)}, {"greatest-head", 5}}));
        EXPECT_NEAR(std::log(RatingFlowAt(rating, 5) / RatingFlowAt(rating, 2.5)) / std::log(2.0),
                    2.5, 0.008);
    }
}

TEST(RatingPhysics, ARectangularWeirGrowsWithTheOneAndAHalfthPower) {
    Geometry geometry(8);
    for (int i = 0; i < Rounds; ++i) {
        const Rating rating = ComputeRating(DeviceOf("rectangular-weir",
                                                     {{"crest", geometry.Between(1, 5)},
                                                      {"channel-width", 0},
                                                      {"crest-height", 20},
                                                      {"greatest-head", 2}},
                                                     InMeters));
        EXPECT_NEAR(std::log(FlowAt(rating, 0.9) / FlowAt(rating, 0.3)) / std::log(3.0), 1.5,
                    0.004);
    }
}

// (2/3)^1.5 = 0.544: less what the boundary layer takes, which shrinks with size once it is
// turbulent.
TEST(RatingPhysics, AWideFlumeTendsToTheTheoreticalFlow) {
    double before = 0;
    for (const double scale : {1.0, 2.0, 5.0, 10.0}) {
        const Rating rating = ComputeRating(DeviceOf("throat-rectangular",
                                                     {{"throat-width", 20 * scale},
                                                      {"throat-length", 1.8 * scale},
                                                      {"sill", 3 * scale},
                                                      {"approach-width", 60 * scale},
                                                      {"greatest-head", scale}},
                                                     InMeters));
        ASSERT_TRUE(rating.Made());
        const double coefficient =
            FlowAt(rating, scale) / (std::sqrt(Gravity) * 20 * scale * std::pow(scale, 1.5));
        EXPECT_GT(coefficient, before) << scale;
        EXPECT_LT(coefficient, 0.5443) << scale;
        EXPECT_GT(coefficient, 0.525) << scale;
        before = coefficient;
    }
    EXPECT_GT(before, 0.538);
}

TEST(RatingPhysics, DoublingAllLengthsMultipliesFlowByTheTwoAndAHalfthPowerOfTwo) {
    Geometry geometry(9);
    for (int i = 0; i < Rounds; ++i) {
        for (const std::string_view kind : Throats) {
            const RatingDevice device = geometry.Throat(kind);
            RatingDevice twice = device;
            for (std::size_t k = 0; k < twice.Values.size(); ++k) {
                const bool length = twice.Kind->Fields[k].Units == RatingUnits::Length;
                twice.Values[k] *= length ? 2 : 1;
            }
            const Rating one = ComputeRating(device);
            const Rating two = ComputeRating(twice);
            ASSERT_TRUE(one.Made() && two.Made()) << kind;
            for (const double share : {0.3, 0.6, 1.0}) {
                const double head = one.LeastHead + share * (one.GreatestHead - one.LeastHead);
                const double ratio =
                    RatingFlowAt(two, 2 * head) / RatingFlowAt(one, head) / std::pow(2, 2.5);
                EXPECT_GT(ratio, 0.985) << kind << " at " << head;
                EXPECT_LT(ratio, 1.04) << kind << " at " << head;
            }
        }
    }
}

// Manning's equation has lengths to the power of 8/3.
TEST(RatingPhysics, DoublingAChannelMultipliesFlowByTheEightThirdthPowerOfTwo) {
    const Rating one = ComputeRating(DeviceOf("channel-egg", {{"height", 2}}));
    const Rating two = ComputeRating(DeviceOf("channel-egg", {{"height", 4}}));
    for (const double head : {0.1, 0.7, 1.5}) {
        EXPECT_NEAR(RatingFlowAt(two, 2 * head) / RatingFlowAt(one, head), std::pow(2, 8.0 / 3),
                    0.02);
    }
}

// The two ways to take the boundary layer into account differ by little where both hold.
TEST(RatingPhysics, TheTwoBoundaryLayersAgree) {
    Geometry geometry(10);
    for (int i = 0; i < Rounds; ++i) {
        for (const std::string_view kind : Throats) {
            RatingDevice device = geometry.Throat(kind);
            Geometry::Set(device, "boundary", 0);
            const Rating drag = ComputeRating(device);
            Geometry::Set(device, "boundary", 1);
            const Rating displacement = ComputeRating(device);
            ASSERT_TRUE(drag.Made() && displacement.Made()) << kind;
            const double head = 0.7 * drag.GreatestHead;
            EXPECT_NEAR(RatingFlowAt(displacement, head) / RatingFlowAt(drag, head), 1, 0.03)
                << kind;
        }
    }
}

}  // namespace
