#include "flow/flow_precision.h"

#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <random>

#include "flow/flow_support.h"

namespace {

TEST(PickDecPlaces, Rows) {
    EXPECT_EQ(PickDecPlaces(3.9, 0.0005), 4);
    EXPECT_EQ(PickDecPlaces(3.9, 0.001), 3);
    EXPECT_EQ(PickDecPlaces(4.0, 0.0005), 3);
    EXPECT_EQ(PickDecPlaces(4096.0, 0), 0);
}

TEST(PickDecPlaces, EachRowBeginsAtItsLimit) {
    EXPECT_EQ(PickDecPlaces(4095.9, 0), 1);
    EXPECT_EQ(PickDecPlaces(0, 1.0), 0);
    EXPECT_EQ(PickDecPlaces(409.0, 0), 1);
    EXPECT_EQ(PickDecPlaces(408.9, 0), 2);
    EXPECT_EQ(PickDecPlaces(0, 0.1), 1);
    EXPECT_EQ(PickDecPlaces(40.0, 0), 2);
    EXPECT_EQ(PickDecPlaces(39.9, 0), 3);
    EXPECT_EQ(PickDecPlaces(0, 0.01), 2);
    EXPECT_EQ(PickDecPlaces(0, 0.00999), 3);
    EXPECT_EQ(PickDecPlaces(0, 0), 4);
}

class Precision : public ::testing::Test {
 protected:
    Precision() {
        state_.EngUnits[0] = "feet";
        state_.RawScaleUpper[0] = 65535;
        state_.UpperLimit[0] = 10;
        state_.FlowDecPlaces = 9;
        state_.VelDecPlaces = 8;
        global_.FlowDecPlaces = 7;
        global_.VelDecPlaces = 6;
    }
    void UseEquation(double b, double c) {
        state_.FlowMode = 2;
        state_.FlowEqExponent = b;
        state_.FlowEqMultiplier = c;
    }
    void ExpectState(int flow, int velocity) {
        CalculateFlowVelPrecision(state_, global_);
        EXPECT_EQ(state_.FlowDecPlaces, flow);
        EXPECT_EQ(state_.VelDecPlaces, velocity);
        EXPECT_EQ(global_.FlowDecPlaces, 7);
        EXPECT_EQ(global_.VelDecPlaces, 6);
    }
    void ExpectGlobalTwo() {
        CalculateFlowVelPrecision(state_, global_);
        EXPECT_EQ(state_.FlowDecPlaces, 9);
        EXPECT_EQ(state_.VelDecPlaces, 8);
        EXPECT_EQ(global_.FlowDecPlaces, 2);
        EXPECT_EQ(global_.VelDecPlaces, 2);
    }

    LoggerState state_;
    LoggerState global_;
};

TEST_F(Precision, EqualRawLimitsLeaveTheWindowsFiguresAndSetTheGlobalOnes) {
    state_.RawScaleLower[0] = 65535;
    ExpectGlobalTwo();
}

TEST_F(Precision, ASpanBelowTheSmallestDoesTheSame) {
    state_.UpperLimit[0] = 0.00009;
    ExpectGlobalTwo();
    state_.UpperLimit[0] = -0.00009;
    ExpectGlobalTwo();
}

TEST_F(Precision, TheSmallestSpanItselfIsSwept) {
    state_.UpperLimit[0] = 0.0001;
    ExpectState(4, 4);
}

TEST_F(Precision, AnOverflowInTheSweepDoesTheSame) {
    state_.UpperLimit[0] = std::numeric_limits<double>::max();
    state_.LowerLimit[0] = -std::numeric_limits<double>::max();
    ExpectGlobalTwo();
    state_.LowerLimit[0] = 0;
    state_.RawScaleUpper[0] = 1;
    ExpectGlobalTwo();
}

TEST_F(Precision, ModeNoneDeservesFourPlaces) {
    ExpectState(4, 4);
}

// Levels run to 10 x 64528 / 65535 = 9.846; a pair stands 16 / 65535 of 10 apart, 0.00244.
TEST_F(Precision, TheLargestFlowDecides) {
    UseEquation(1, 500);  // up to 4923, steps of 1.22
    ExpectState(0, 4);
    UseEquation(1, 100);  // up to 985, steps of 0.244
    ExpectState(1, 4);
    UseEquation(1, 10);  // up to 98.5, steps of 0.0244
    ExpectState(2, 4);
    UseEquation(1, 1);  // up to 9.85, steps of 0.00244
    ExpectState(3, 4);
    UseEquation(1, 0.1);  // up to 0.985, steps of 0.000244
    ExpectState(4, 4);
}

TEST_F(Precision, TheLargestStepDecidesWhenItIsCoarse) {
    // The pair at half range, 5.0001 and 5.0025, climbs by 0.65; a tenth of that asks for 2.
    state_.FlowMode = 4;
    state_.FlowTable = TableOf({{5, 0.1}, {5.003, 0.9}, {20, 0.9}});
    ExpectState(2, 4);
}

TEST_F(Precision, OnlyTheUpperOfAPairCountsForTheLargest) {
    state_.LowerLimit[0] = 1;
    state_.UpperLimit[0] = 11;
    state_.FlowMode = 4;
    // 5000 at raw 0, which is never the upper of a pair, and no flow above 0 anywhere else.
    state_.FlowTable = TableOf({{1, 5000}, {1.001, -1}, {20, -1}});
    ExpectState(4, 4);
}

// With a level of as many feet as counts the points of the sweep can be met one by one.
class SweptLevels : public Precision {
 protected:
    SweptLevels() {
        state_.UpperLimit[0] = 65535;
        state_.FlowMode = 4;
    }
    /// Places where all is dry but a level within a foot of `at`.
    int PlacesOfPeak(double at, double flow) {
        state_.FlowTable = TableOf({{0.1, 0}, {at - 1, 0}, {at, flow}, {at + 1, 0}, {at + 2, 0}});
        CalculateFlowVelPrecision(state_, global_);
        return state_.FlowDecPlaces;
    }
    /// Places where the flow is 1, and climbs by `climb` from one level to another.
    int PlacesOfClimb(double from, double to, double climb) {
        state_.FlowTable =
            TableOf({{0.1, 1}, {from, 1}, {to, 1 + climb}, {to + 0.5, 1}, {to + 1, 1}});
        CalculateFlowVelPrecision(state_, global_);
        return state_.FlowDecPlaces;
    }
};

TEST_F(SweptLevels, AreSixteenAboveEachOf64PointsThatLie1024Apart) {
    for (const int point : {0, 1, 2, 31, 62, 63}) {
        EXPECT_EQ(PlacesOfPeak(1024 * point + 16, 5000), 0) << point;
        EXPECT_EQ(PlacesOfPeak(1024 * point + 14, 5000), 4) << point;
        EXPECT_EQ(PlacesOfPeak(1024 * point + 18, 5000), 4) << point;
        EXPECT_EQ(PlacesOfPeak(1024 * point + 528, 5000), 4) << point;
    }
    EXPECT_EQ(PlacesOfPeak(65536 + 16, 5000), 4) << "beyond the range of a channel";
}

TEST_F(SweptLevels, FollowTheScaleOfTheChannel) {
    state_.RawScaleLower[0] = 1000;
    state_.RawScaleUpper[0] = 3000;
    state_.LowerLimit[0] = 500;
    state_.UpperLimit[0] = 1500;  // half a foot a count, 500 at 1000
    EXPECT_EQ(PlacesOfPeak(500 + (2064 - 1000) / 2.0, 5000), 0);
    EXPECT_EQ(PlacesOfPeak(2064, 5000), 4);
}

TEST_F(SweptLevels, ClimbByATenthOfAStepForEachPlace) {
    EXPECT_EQ(PlacesOfClimb(2048, 2064, 0.0099), 4);
    EXPECT_EQ(PlacesOfClimb(2048, 2064, 0.0101), 3);
    EXPECT_EQ(PlacesOfClimb(2048, 2064, 0.101), 2);
    EXPECT_EQ(PlacesOfClimb(2048, 2064, 1.01), 1);
    EXPECT_EQ(PlacesOfClimb(2048, 2064, -0.101), 2) << "a fall counts as a climb does";
    EXPECT_EQ(PlacesOfClimb(2049, 2064, 0.0101), 3) << "the whole of it lies inside the pair";
    EXPECT_EQ(PlacesOfClimb(2060, 2076, 0.0399), 4) << "a quarter of it does";
    EXPECT_EQ(PlacesOfClimb(2060, 2076, 0.0401), 3);
}

TEST_F(SweptLevels, AStepFromADryChannelOrIntoOneIsNone) {
    EXPECT_EQ(PlacesOfPeak(2064, 3.9), 4) << "dry at 2048";
    EXPECT_EQ(PlacesOfPeak(2048, 3.9), 4) << "dry at 2064";
    EXPECT_EQ(PlacesOfPeak(2064, 4.1), 3) << "but the largest flow is";
}

TEST_F(Precision, VelocityHasTheLargestOfItsOwn) {
    state_.FlowMode = 1;
    state_.ManningsD = 1;
    state_.ManningsN = 0.014;
    state_.ManningsS = 1;
    state_.ManningsSType = 1;
    // Hardly a step between these levels: 3.3 cfs, 4.7 feet per second.
    state_.LowerLimit[0] = 0.90;
    state_.UpperLimit[0] = 0.91;
    ExpectState(4, 3);
    state_.ManningsS = 0.5;
    ExpectState(4, 4);
    // At a tenth of the depth, 0.07 cfs and 1.7 feet per second, both are small.
    state_.ManningsS = 1;
    state_.LowerLimit[0] = 0.10;
    state_.UpperLimit[0] = 0.101;
    ExpectState(4, 4);
    // A wide river: 12,000 cfs.
    state_.ManningsD = 40;
    state_.LowerLimit[0] = 20;
    state_.UpperLimit[0] = 20.001;
    ExpectState(0, 2);
}

TEST_F(Precision, StepsCountForFlowAboveZeroAndForVelocityFromZero) {
    state_.FlowMode = 1;
    state_.ManningsD = 1;
    state_.ManningsN = 0.014;
    state_.ManningsS = 1;
    state_.ManningsSType = 1;
    // The velocity's first step, from a dry pipe to 0.147 feet per second, asks for 2 places. The
    // flow reaches 3.6 cfs; its steps stay near 0.01, and a tenth of that asks for 3.
    ExpectState(3, 2);
}

TEST_F(Precision, InvertedScalesAreSweptAlike) {
    UseEquation(1, 100);
    std::swap(state_.RawScaleLower[0], state_.RawScaleUpper[0]);
    ExpectState(1, 4);
}

TEST_F(Precision, ExtremeRawLimitsDoNotWrap) {
    state_.RawScaleLower[0] = std::numeric_limits<std::int32_t>::min();
    state_.RawScaleUpper[0] = std::numeric_limits<std::int32_t>::max();
    UseEquation(1, 1);
    // Half of the span at raw 0: levels about 5, steps of 3.7E-8.
    ExpectState(3, 4);
}

TEST_F(Precision, AnyLimitsGivePlacesFromZeroToFourOrTwoToTheCurrentLoggerAlone) {
    std::mt19937_64 random(5);
    state_.FlowMode = 1;
    state_.ManningsD = 1;
    state_.ManningsS = 1;
    int swept = 0;
    for (int run = 0; run < 2000; ++run) {
        state_.LowerLimit[0] = std::bit_cast<double>(random());
        state_.UpperLimit[0] = std::bit_cast<double>(random());
        state_.RawScaleLower[0] = static_cast<std::int32_t>(random());
        state_.RawScaleUpper[0] = static_cast<std::int32_t>(random());
        state_.FlowDecPlaces = state_.VelDecPlaces = -1;
        global_.FlowDecPlaces = global_.VelDecPlaces = -1;
        CalculateFlowVelPrecision(state_, global_);
        const auto placed = [](std::int16_t places) { return places >= 0 && places <= 4; };
        if (global_.FlowDecPlaces == 2 && global_.VelDecPlaces == 2) {
            ASSERT_TRUE(state_.FlowDecPlaces == -1 && state_.VelDecPlaces == -1) << run;
            continue;
        }
        ASSERT_TRUE(global_.FlowDecPlaces == -1 && global_.VelDecPlaces == -1) << run;
        ASSERT_TRUE(placed(state_.FlowDecPlaces) && placed(state_.VelDecPlaces)) << run;
        ++swept;
    }
    EXPECT_GT(swept, 100);
    EXPECT_LT(swept, 2000);
}

}  // namespace
