#include "flow/flow_calculation.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include "flow/flow_support.h"

namespace {

class Flow : public ::testing::Test {
 protected:
    Flow() {
        record_.EngUnits[0] = "Feet";
        record_.FlowMode = 1;
        record_.ManningsD = 1;
        record_.ManningsN = 0.014;
        record_.ManningsS = 1;
        record_.ManningsSType = 1;
    }
    double At(double level) { return CalculateFlow(record_, table_, level, velocity_); }
    void ExpectZero(double level) {
        velocity_ = 77;
        EXPECT_EQ(At(level), 0);
        EXPECT_EQ(velocity_, 0);
    }
    void UseEquation(double a, double b, double c) {
        record_.FlowMode = 2;
        record_.FlowEqOffset = a;
        record_.FlowEqExponent = b;
        record_.FlowEqMultiplier = c;
    }

    LoggerRecord record_;
    FlowTable table_;
    double velocity_ = 0;
};

TEST_F(Flow, ModeNoneGivesZero) {
    record_.FlowMode = 0;
    ExpectZero(1);
}

TEST_F(Flow, FullPipe) {
    EXPECT_NEAR(At(1.0), 3.30679, 5e-6);
    EXPECT_NEAR(velocity_, 4.21034, 5e-6);
}

TEST_F(Flow, HalfFullPipe) {
    EXPECT_NEAR(At(0.5), 1.65340, 5e-6);
    EXPECT_NEAR(velocity_, 4.21034, 5e-6);
}

TEST_F(Flow, QuarterFullPipe) {
    EXPECT_NEAR(At(0.25), 0.45289, 5e-6);
    EXPECT_NEAR(velocity_, 2.94953, 5e-6);
}

TEST_F(Flow, SurchargedPipeCountsAsFull) {
    const double full = At(1.0);
    const double fullVelocity = velocity_;
    EXPECT_EQ(At(5.0), full);
    EXPECT_EQ(velocity_, fullVelocity);
}

TEST_F(Flow, FlowUnitsOfTheFullPipe) {
    const std::array<std::array<double, 2>, 4> expected = {
        {{1484.09, 5e-3}, {2.13718, 5e-6}, {0.093648, 5e-7}, {93.637, 5e-4}}};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        record_.FlowUnits = static_cast<std::uint8_t>(i + 1);
        EXPECT_NEAR(At(1.0), expected[i][0], expected[i][1]) << i + 1;
    }
}

TEST_F(Flow, LitersAreTwoMultiplicationsInOrder) {
    const double cfs = At(1.0);
    record_.FlowUnits = 4;
    EXPECT_EQ(At(1.0), cfs * 7.4805 * 3.7854);
}

TEST_F(Flow, UnknownFlowUnitsAreCfs) {
    const double cfs = At(1.0);
    record_.FlowUnits = 5;
    EXPECT_EQ(At(1.0), cfs);
}

TEST_F(Flow, VelocityTurnsToMetersOnlyAtOne) {
    At(1.0);
    const double feet = velocity_;
    record_.VelUnits = 1;
    At(1.0);
    EXPECT_EQ(velocity_, feet * 0.3048);
    record_.VelUnits = 2;
    At(1.0);
    EXPECT_EQ(velocity_, feet);
}

TEST_F(Flow, LevelUnitsComeFromTheFirstLetter) {
    const double half = At(0.5);
    record_.EngUnits[0] = " inches";
    EXPECT_EQ(At(6.0), half);
    record_.EngUnits[0] = "METERS";
    EXPECT_NEAR(At(0.1524), half, 1e-12);
    record_.EngUnits[0] = "cubits";
    EXPECT_NEAR(At(15.24), half, 1e-12);
    for (const char* unit : {"ft", "%", "", "  "}) {
        record_.EngUnits[0] = unit;
        EXPECT_EQ(At(0.5), half) << unit;
    }
}

TEST_F(Flow, OffsetUnitsComeFromTheirCode) {
    const double half = At(0.5);
    const std::array<double, 5> quarterFoot = {0.25, 3, 0.0762, 7.62, 0.25};
    for (std::size_t i = 0; i < quarterFoot.size(); ++i) {
        record_.LevelOffset = quarterFoot[i];
        record_.LevelOffsetType = static_cast<std::uint8_t>(i);
        EXPECT_NEAR(At(0.25), half, 1e-12) << i;
    }
}

TEST_F(Flow, DiameterUnitsComeFromTheirCode) {
    const double full = At(1.0);
    const std::array<double, 5> oneFoot = {1, 12, 0.3048, 30.48, 1};
    for (std::size_t i = 0; i < oneFoot.size(); ++i) {
        record_.ManningsD = oneFoot[i];
        record_.ManningsDType = static_cast<std::uint8_t>(i);
        EXPECT_NEAR(At(1.0), full, 1e-12) << i;
    }
}

TEST_F(Flow, ADryChannelStaysDryWhateverTheOffset) {
    record_.LevelOffset = 0.5;
    ExpectZero(0);
    ExpectZero(-0.0);
    ExpectZero(-0.1);
}

TEST_F(Flow, ALargerNegativeOffsetGivesZero) {
    record_.LevelOffset = -0.5;
    ExpectZero(0.4);
    ExpectZero(0.5);
    EXPECT_GT(At(0.6), 0);
}

TEST_F(Flow, ANegativeSlopeGivesZero) {
    record_.ManningsS = -1;
    ExpectZero(0.5);
}

TEST_F(Flow, ALevelPipeStandsStill) {
    record_.ManningsS = 0;
    ExpectZero(0.5);
}

TEST_F(Flow, SlopeIsARatioUnlessItsTypeIsSet) {
    const double percent = At(0.5);
    record_.ManningsS = 0.01;
    record_.ManningsSType = 0;
    EXPECT_EQ(At(0.5), percent);
    record_.ManningsS = 1;
    record_.ManningsSType = 9;
    EXPECT_EQ(At(0.5), percent);
}

TEST_F(Flow, RoughnessBelowTheSmallestCountsAsIt) {
    record_.ManningsN = 0.001;
    const double smoothest = At(0.5);
    for (const double n : {0.0, -1.0, 0.0009}) {
        record_.ManningsN = n;
        EXPECT_EQ(At(0.5), smoothest) << n;
    }
}

TEST_F(Flow, DiameterBelowTheSmallestCountsAsIt) {
    record_.ManningsD = 0.01;
    const double thinnest = At(0.5);
    EXPECT_GT(thinnest, 0);
    for (const double d : {0.0, -1.0, 0.009}) {
        record_.ManningsD = d;
        EXPECT_EQ(At(0.5), thinnest) << d;
    }
}

TEST_F(Flow, AFilmOfWaterInAWidePipeIsNoDivisionByZero) {
    ExpectZero(1e-12);
    ExpectZero(std::numeric_limits<double>::denorm_min());
}

TEST_F(Flow, RatingEquation) {
    UseEquation(0.1, 1.5, 2.0);
    EXPECT_NEAR(At(0.5), 0.92952, 5e-6);
    EXPECT_EQ(velocity_, 0);
}

TEST_F(Flow, AFlumeThatWasNotFoundGivesZero) {
    UseEquation(0, 0, 0);
    ExpectZero(0.5);
}

TEST_F(Flow, RatingUsesLevelWithOffsetInFeet) {
    UseEquation(0, 1, 1);
    record_.EngUnits[0] = "inches";
    record_.LevelOffset = 1;
    EXPECT_EQ(At(6), 1.5);
}

TEST_F(Flow, AnEmptyTableGivesZero) {
    record_.FlowMode = 4;
    ExpectZero(0.5);
}

TEST_F(Flow, ATableOfOnePointGivesZeroAtEveryLevel) {
    record_.FlowMode = 4;
    table_ = TableOf({{1, 10}});
    for (const double level : {0.5, 1.0, 2.0}) {
        ExpectZero(level);
    }
}

TEST_F(Flow, ATableOfTwoPointsIsALineAndOneFromTheOrigin) {
    record_.FlowMode = 4;
    table_ = TableOf({{1, 10}, {2, 30}});
    EXPECT_EQ(At(0.5), 5);
    EXPECT_EQ(At(1.5), 20);
    EXPECT_EQ(At(3), 50);
}

TEST_F(Flow, AFallingTableGivesANegativeFlow) {
    record_.FlowMode = 4;
    table_ = TableOf({{1, 10}, {2, 5}});
    EXPECT_EQ(At(4), -5);
}

TEST_F(Flow, OverflowAnywhereGivesZeroForBoth) {
    constexpr double Most = std::numeric_limits<double>::max();
    record_.EngUnits[0] = "meters";
    ExpectZero(Most);
    record_.EngUnits[0] = "feet";
    record_.LevelOffset = Most;
    ExpectZero(Most);
    record_.LevelOffset = 0;
    record_.ManningsD = Most;
    ExpectZero(Most);
    record_.ManningsD = 1;
    UseEquation(0, 1, Most);
    record_.FlowUnits = 1;
    ExpectZero(0.9);
}

TEST_F(Flow, WhatIsNoNumberGivesZeroForBoth) {
    for (const double odd : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        ExpectZero(odd);
        for (double LoggerRecord::*field : {&LoggerRecord::ManningsD, &LoggerRecord::ManningsN,
                                            &LoggerRecord::ManningsS, &LoggerRecord::LevelOffset}) {
            const double kept = record_.*field;
            record_.*field = odd;
            ExpectZero(0.5);
            record_.*field = kept;
        }
    }
}

/// A double of random bits: every exponent, the infinities and NaN among them.
double AnyDouble(std::mt19937_64& random) {
    return std::bit_cast<double>(random());
}

LoggerRecord AnyRecord(std::mt19937_64& random) {
    constexpr std::array<const char*, 5> Units = {"feet", "inches", "meters", "cm", ""};
    LoggerRecord record;
    record.EngUnits[0] = Units[random() % Units.size()];
    record.FlowMode = static_cast<std::uint8_t>(random() % 6);
    record.FlowUnits = static_cast<std::uint8_t>(random() % 6);
    record.VelUnits = static_cast<std::uint8_t>(random() % 3);
    record.ManningsSType = static_cast<std::uint8_t>(random() % 2);
    record.ManningsDType = static_cast<std::uint8_t>(random() % 5);
    record.LevelOffsetType = static_cast<std::uint8_t>(random() % 5);
    for (double LoggerRecord::*field :
         {&LoggerRecord::ManningsN, &LoggerRecord::ManningsS, &LoggerRecord::ManningsD,
          &LoggerRecord::LevelOffset, &LoggerRecord::FlowEqOffset, &LoggerRecord::FlowEqExponent,
          &LoggerRecord::FlowEqMultiplier}) {
        // Half of the fields keep to a plain range, or nearly every record would fail at once.
        record.*field =
            random() % 2 == 0 ? AnyDouble(random) : static_cast<double>(random() % 2001) / 100 - 10;
    }
    return record;
}

TEST(FlowOfAnySettings, IsFiniteForEveryBitPattern) {
    std::mt19937_64 random(31);
    int flowing = 0;
    for (int run = 0; run < 300'000; ++run) {
        const LoggerRecord record = AnyRecord(random);
        FlowTable table;
        for (std::uint64_t points = random() % 8; points > 2; --points) {
            table.Append({AnyDouble(random), AnyDouble(random)});
        }
        const double level =
            random() % 2 == 0 ? AnyDouble(random) : static_cast<double>(random() % 500) / 100;
        double velocity = std::nan("");
        const double flow = CalculateFlow(record, table, level, velocity);
        ASSERT_TRUE(std::isfinite(flow) && std::isfinite(velocity)) << run;
        flowing += flow != 0 ? 1 : 0;
    }
    EXPECT_GT(flowing, 10'000);
}

}  // namespace
