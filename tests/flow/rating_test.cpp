#include "flow/rating.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

#include "flow/flow_support.h"

namespace {

/// A table of `count` points at levels 1, 2, 3 ..., flows ten times that.
FlowTable Ladder(int count) {
    FlowTable table;
    for (int i = 1; i <= count; ++i) {
        table.Append({static_cast<double>(i), 10.0 * i});
    }
    return table;
}

double FlowAt(const FlowTable& table, double level) {
    const std::optional<double> flow = TableFlow(table, level);
    EXPECT_TRUE(flow.has_value());
    return flow.value_or(-1);
}

TEST(FindSegment, FindsTheSegmentInEveryAscendingTable) {
    for (int count = 3; count <= 1001; ++count) {
        const FlowTable table = Ladder(count);
        for (int i = 1; i<count; i += count> 40 ? count / 17 : 1) {
            EXPECT_EQ(FindSegment(table, i), i) << count;
            EXPECT_EQ(FindSegment(table, i + 0.5), i) << count;
        }
        EXPECT_EQ(FindSegment(table, count - 0.001), count - 1) << count;
    }
}

TEST(FindSegment, AgreesWithUpperBoundOnUnevenLevels) {
    std::mt19937 random(7);
    std::vector<FlowTablePoint> points(1001);
    double level = 0;
    for (FlowTablePoint& point : points) {
        level += 1e-6 + static_cast<double>(random() % 1000) / 1000;
        point = {level, 1};
    }
    const FlowTable table = TableOf(points);
    for (int run = 0; run < 20000; ++run) {
        const double sought =
            points.front().Level +
            (level - points.front().Level) * (static_cast<double>(random()) / 4294967296.0);
        const auto above =
            std::upper_bound(points.begin(), points.end(), sought,
                             [](double l, const FlowTablePoint& p) { return l < p.Level; });
        EXPECT_EQ(FindSegment(table, sought), above - points.begin());
    }
}

TEST(FindSegment, StaysInsideTablesOutOfOrder) {
    std::mt19937 random(11);
    for (int run = 0; run < 20000; ++run) {
        const int count = 3 + static_cast<int>(random() % 60);
        FlowTable table;
        for (int i = 0; i < count; ++i) {
            table.Append({static_cast<double>(random() % 100), 1});
        }
        const double level = table[count].Level - 0.5;
        const int found = FindSegment(table, level);
        EXPECT_GE(found, 1);
        EXPECT_LT(found, count);
    }
}

TEST(TableFlow, BelowTheFirstPointRunsFromTheOrigin) {
    const FlowTable table = TableOf({{2, 10}, {4, 40}, {6, 90}});
    EXPECT_EQ(FlowAt(table, 1), 5);
    EXPECT_EQ(FlowAt(table, 0.2), 1);
}

TEST(TableFlow, OnAPointIsItsFlow) {
    const FlowTable table = TableOf({{2, 10}, {4, 40}, {6, 90}});
    EXPECT_EQ(FlowAt(table, 2), 10);
    EXPECT_EQ(FlowAt(table, 4), 40);
    EXPECT_EQ(FlowAt(table, 6), 90);
}

TEST(TableFlow, BetweenPointsIsALine) {
    const FlowTable table = TableOf({{2, 10}, {4, 40}, {6, 90}});
    EXPECT_EQ(FlowAt(table, 3), 25);
    EXPECT_EQ(FlowAt(table, 5), 65);
}

TEST(TableFlow, AboveTheLastPointGoesOnWithoutLimit) {
    const FlowTable table = TableOf({{2, 10}, {4, 40}, {6, 90}});
    EXPECT_EQ(FlowAt(table, 8), 140);
    EXPECT_EQ(FlowAt(table, 1006), 25090);
}

TEST(TableFlow, TwoPointsAreOneLineAboveTheFirst) {
    const FlowTable table = TableOf({{1, 10}, {2, 30}});
    EXPECT_EQ(FlowAt(table, 0.5), 5);
    EXPECT_EQ(FlowAt(table, 1), 10);
    EXPECT_EQ(FlowAt(table, 1.5), 20);
    EXPECT_EQ(FlowAt(table, 2), 30);
    EXPECT_EQ(FlowAt(table, 3), 50);
}

TEST(TableFlow, FallingFlowsGoNegative) {
    EXPECT_EQ(FlowAt(TableOf({{1, 10}, {2, 5}}), 4), -5);
}

TEST(TableFlow, EqualLevelsGiveTheLowerFlow) {
    EXPECT_EQ(FlowAt(TableOf({{1, 10}, {2, 20}, {2, 30}}), 2), 20);
    EXPECT_EQ(FlowAt(TableOf({{1, 10}, {1, 30}}), 5), 10);
}

TEST(TableFlow, LevelsOutOfOrderGiveTheLowerFlow) {
    EXPECT_EQ(FlowAt(TableOf({{3, 10}, {2, 30}}), 5), 10);
}

TEST(TableFlow, AFirstPointAtOrBelowZeroIsNeverUndercut) {
    EXPECT_EQ(FlowAt(TableOf({{-1, 0}, {1, 20}}), 0.5), 15);
}

TEST(TableFlow, StepsThatOverflowGiveNothing) {
    constexpr double Most = std::numeric_limits<double>::max();
    EXPECT_FALSE(TableFlow(TableOf({{1, -Most}, {2, Most}}), 1.5));
    EXPECT_FALSE(TableFlow(TableOf({{-Most, 1}, {Most, 2}}), 1));
    EXPECT_FALSE(TableFlow(TableOf({{1, 0}, {2, Most}}), 9));
}

TEST(RatingFlow, AnEquationServesFlumesAndWeirsAlone) {
    LoggerRecord record;
    record.FlowEqOffset = 0.1;
    record.FlowEqExponent = 1.5;
    record.FlowEqMultiplier = 2;
    for (const std::uint8_t mode : {2, 3}) {
        record.FlowMode = mode;
        EXPECT_NEAR(RatingFlow(record, FlowTable(), 0.5).value_or(-1), 0.92952, 5e-6);
    }
    for (const std::uint8_t mode : {4, 5, 255}) {
        record.FlowMode = mode;
        EXPECT_EQ(RatingFlow(record, FlowTable(), 0.5), 0.0);
    }
}

TEST(RatingFlow, ATableGoesBeforeTheEquation) {
    LoggerRecord record;
    record.FlowMode = 2;
    record.FlowEqMultiplier = 1000;
    EXPECT_EQ(RatingFlow(record, Ladder(3), 2), 20);
    EXPECT_EQ(RatingFlow(record, Ladder(1), 2), 0);
}

TEST(RatingFlow, ANegativeHeadUnderAFractionalExponentGivesNothing) {
    LoggerRecord record;
    record.FlowMode = 2;
    record.FlowEqOffset = -5;
    record.FlowEqExponent = 1.5;
    record.FlowEqMultiplier = 2;
    EXPECT_FALSE(RatingFlow(record, FlowTable(), 1));
    record.FlowEqExponent = 2;
    EXPECT_EQ(RatingFlow(record, FlowTable(), 1), 32);
}

TEST(RatingFlow, DivisionByZeroAndOverflowGiveNothing) {
    LoggerRecord record;
    record.FlowMode = 3;
    record.FlowEqOffset = -1;
    record.FlowEqExponent = -1;
    record.FlowEqMultiplier = 0;
    EXPECT_FALSE(RatingFlow(record, FlowTable(), 1));
    record = {};
    record.FlowMode = 3;
    record.FlowEqExponent = 999;
    record.FlowEqMultiplier = 1;
    EXPECT_FALSE(RatingFlow(record, FlowTable(), 10));
}

}  // namespace
