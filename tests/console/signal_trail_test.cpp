#include "console/signal_trail.h"

#include <gtest/gtest.h>

namespace {

constexpr std::int64_t Second = 1000;

TEST(SignalTrailTest, KeepsFiveMinutes) {
    SignalTrail trail;
    for (int second = 0; second <= 400; second += 100) {
        trail.Add({second * Second, -60});
    }
    ASSERT_EQ(trail.Readings().size(), 4U);
    EXPECT_EQ(trail.Readings().front().Time, 100 * Second) << "just five minutes old";
    trail.Add({400 * Second + 1, -60});
    EXPECT_EQ(trail.Readings().front().Time, 200 * Second);
}

TEST(SignalTrailTest, TheBestIsTheNewestOfTheStrongest) {
    SignalTrail trail;
    EXPECT_FALSE(trail.Best());
    EXPECT_EQ(trail.BestText(), "Best: ---");
    trail.Add({0, -70});
    trail.Add({1 * Second, -58});
    trail.Add({2 * Second, -58});
    EXPECT_EQ(trail.BestText(), "Best: -58 DBm, now");
    trail.Add({3 * Second, std::nullopt});
    trail.Add({44'900, -80});
    EXPECT_EQ(trail.Best(), (SignalTrail::Reading{2 * Second, -58}));
    EXPECT_EQ(trail.BestText(), "Best: -58 DBm, 42 s ago");
}

TEST(SignalTrailTest, ABestThatIsTooOldGivesWayToTheNext) {
    SignalTrail trail;
    trail.Add({0, -50});
    trail.Add({200 * Second, -70});
    trail.Add({301 * Second, -75});
    EXPECT_EQ(trail.Best()->DBm, -70);
}

TEST(SignalTrailTest, TheNewestIsBestIfNoneIsStronger) {
    SignalTrail trail;
    EXPECT_FALSE(trail.NewestIsBest());
    trail.Add({0, std::nullopt});
    EXPECT_FALSE(trail.NewestIsBest());
    trail.Add({1, -70});
    EXPECT_TRUE(trail.NewestIsBest());
    trail.Add({2, -71});
    EXPECT_FALSE(trail.NewestIsBest());
    trail.Add({3, -70});
    EXPECT_TRUE(trail.NewestIsBest());
    trail.Add({4, std::nullopt});
    EXPECT_FALSE(trail.NewestIsBest());
}

TEST(SignalTrailTest, AClockThatWasPutBackBeginsANewTrail) {
    SignalTrail trail;
    trail.Add({100 * Second, -50});
    trail.Add({10 * Second, -70});
    EXPECT_EQ(trail.Readings().size(), 1U);
    EXPECT_EQ(trail.Best()->DBm, -70);
}

TEST(SignalTrailTest, APlaceGoesByAgeAndStrength) {
    const TrailPlace newest = PlaceOf({300 * Second, -40}, 300 * Second);
    EXPECT_DOUBLE_EQ(newest.Across, 1);
    EXPECT_DOUBLE_EQ(newest.Down, 0);
    const TrailPlace oldest = PlaceOf({0, -96}, 300 * Second);
    EXPECT_DOUBLE_EQ(oldest.Across, 0);
    EXPECT_DOUBLE_EQ(oldest.Down, 1);
    const TrailPlace middle = PlaceOf({150 * Second, -68}, 300 * Second);
    EXPECT_DOUBLE_EQ(middle.Across, 0.5);
    EXPECT_DOUBLE_EQ(middle.Down, 0.5);
}

}  // namespace
