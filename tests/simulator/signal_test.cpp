#include "simulator/signal.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace simulator {
namespace {

constexpr double Hour = 3600;
constexpr double Day = 24 * Hour;
/// The 5th of March 2024, 0:00.
constexpr double March = 8830 * Day;

TEST(Signals, ConstantStays) {
    EXPECT_EQ(ConstantSignal(4.5)->ValueAt(0), 4.5);
    EXPECT_EQ(ConstantSignal(4.5)->ValueAt(1e9), 4.5);
}

TEST(Signals, SineSwingsAroundItsMean) {
    const SignalPtr sine = SineSignal(10, 2, Hour);
    EXPECT_NEAR(sine->ValueAt(0), 10, 1e-9);
    EXPECT_NEAR(sine->ValueAt(Hour / 4), 12, 1e-9);
    EXPECT_NEAR(sine->ValueAt(March + Hour * 3 / 4), 8, 1e-6);
}

TEST(Signals, TankDrainsSlowlyAndFillsFast) {
    const SignalPtr tank = TankSignal(2, 12, 10 * Hour);
    EXPECT_NEAR(tank->ValueAt(0), 12, 1e-9);
    EXPECT_NEAR(tank->ValueAt(4.5 * Hour), 7, 1e-9);
    EXPECT_NEAR(tank->ValueAt(9 * Hour), 2, 1e-9);
    EXPECT_NEAR(tank->ValueAt(9.5 * Hour), 7, 1e-6);
}

TEST(Signals, LevelRisesFastInAStormAndFallsSlowly) {
    const SignalPtr level = LevelSignal({1, 0, 2, 8}, 1);
    double highest = 0;
    double steepestRise = 0;
    double steepestFall = 0;
    for (int step = 0; step < 60 * 144; ++step) {
        const double time = March + step * 600;
        const double change = level->ValueAt(time + 600) - level->ValueAt(time);
        steepestRise = std::max(steepestRise, change);
        steepestFall = std::max(steepestFall, -change);
        highest = std::max(highest, level->ValueAt(time));
        ASSERT_GE(level->ValueAt(time), 1.0);
    }
    EXPECT_GT(highest, 2);
    EXPECT_GT(steepestRise, 3 * steepestFall);
}

TEST(Signals, LevelHasADailyWave) {
    const SignalPtr level = LevelSignal({1, 0.25, 0, 8}, 1);
    EXPECT_NEAR(level->ValueAt(March + 9 * Hour), 1.25, 1e-6);
    EXPECT_NEAR(level->ValueAt(March + 21 * Hour), 0.75, 1e-6);
}

TEST(Signals, RainNeverFallsAndStandsStillBetweenStorms) {
    const SignalPtr rain = RainSignal(10, 5);
    int still = 0;
    int wet = 0;
    for (int hour = 0; hour < 60 * 24; ++hour) {
        const double time = March + hour * Hour;
        const double fallen = rain->ValueAt(time + Hour) - rain->ValueAt(time);
        ASSERT_GE(fallen, 0);
        ++(fallen == 0 ? still : wet);
    }
    EXPECT_GT(still, wet);
    EXPECT_GT(wet, 20);
}

TEST(Signals, RainAndLevelOfOneSeedShareTheirStorms) {
    const SignalPtr rain = RainSignal(10, 5);
    const SignalPtr level = LevelSignal({1, 0, 2, 8}, 5);
    for (int hour = 0; hour < 60 * 24; ++hour) {
        const double time = March + hour * Hour;
        if (level->ValueAt(time + Hour) - level->ValueAt(time) > 0.1) {
            EXPECT_GT(rain->ValueAt(time + Hour), rain->ValueAt(time));
        }
    }
}

TEST(Signals, BatteryChargesByDay) {
    const SignalPtr battery = BatterySignal(11.8, 13.6);
    EXPECT_NEAR(battery->ValueAt(March + 6 * Hour), 11.8, 1e-6);
    EXPECT_NEAR(battery->ValueAt(March + 18 * Hour), 13.6, 1e-6);
    EXPECT_NEAR(battery->ValueAt(March + 24 * Hour), 12.7, 1e-6);
    EXPECT_NEAR(battery->ValueAt(March + 5.9999 * Hour), 11.8, 1e-3);
}

TEST(Signals, NoiseStaysInItsBandAndRepeats) {
    const SignalPtr noisy = NoisySignal(ConstantSignal(5), 0.5, 3);
    double lowest = 10;
    double highest = 0;
    for (int time = 0; time < 1000; ++time) {
        const double value = noisy->ValueAt(time);
        EXPECT_EQ(noisy->ValueAt(time), value);
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
    }
    EXPECT_GE(lowest, 4.5);
    EXPECT_LE(highest, 5.5);
    EXPECT_GT(highest - lowest, 0.9);
}

TEST(Signals, ValueDoesNotDependOnTheOrderOfAsking) {
    const SignalPtr forward = RainSignal(10, 9);
    const SignalPtr backward = RainSignal(10, 9);
    const double early = forward->ValueAt(March);
    const double late = forward->ValueAt(March + 30 * Day);
    EXPECT_EQ(backward->ValueAt(March + 30 * Day), late);
    EXPECT_EQ(backward->ValueAt(March), early);
}

}  // namespace
}  // namespace simulator
