#include "collect/collect_progress.h"

#include <gtest/gtest.h>

namespace {

class CollectProgressTest : public testing::Test {
 protected:
    /// So many ticks, at each of which some more records have come.
    void Ticks(int ticks, std::int64_t records) {
        for (int i = 0; i < ticks; ++i) {
            came += records;
            progress.Came(came);
            progress.Tick();
        }
    }

    CollectProgress progress;
    std::int64_t came = 0;
};

TEST_F(CollectProgressTest, SaysNothingWhileNoLoggerIsInHand) {
    EXPECT_EQ(progress.Text(), "");
    progress.Tick();
    EXPECT_EQ(progress.Text(), "");
}

TEST_F(CollectProgressTest, NamesALoggerOfWhichNothingIsExpectedYet) {
    progress.Begin("Site 3");
    EXPECT_EQ(progress.Text(), "Site 3...");
}

TEST_F(CollectProgressTest, TellsRateAndTimeLeftAfterASecond) {
    progress.Begin("Site 3");
    progress.Expect(10000);
    Ticks(10, 12);
    EXPECT_EQ(progress.Text(), "Site 3: 120 of 10000 records");
    Ticks(1, 12);
    EXPECT_EQ(progress.Text(), "Site 3: 132 of 10000 records, 120 a second, 1:23 left");
}

TEST_F(CollectProgressTest, TheRateFollowsTheLastSeconds) {
    progress.Begin("Site 3");
    progress.Expect(100000);
    Ticks(100, 1);
    Ticks(51, 20);
    EXPECT_EQ(progress.Text(), "Site 3: 1120 of 100000 records, 200 a second, 8:15 left");
}

TEST_F(CollectProgressTest, HoursAreTold) {
    progress.Begin("Site 3");
    progress.Expect(72020);
    Ticks(20, 1);
    EXPECT_EQ(progress.Text(), "Site 3: 20 of 72020 records, 10 a second, 2:00:00 left");
}

TEST_F(CollectProgressTest, MoreRecordsThanWereSaidAreNotLessThanNothingLeft) {
    progress.Begin("Site 3");
    progress.Expect(100);
    Ticks(11, 10);
    EXPECT_EQ(progress.Text(), "Site 3: 110 of 110 records, 100 a second, 0:00 left");
}

TEST_F(CollectProgressTest, AnotherLoggerBeginsAnew) {
    progress.Begin("Site 3");
    progress.Expect(100);
    Ticks(20, 1);
    progress.End();
    EXPECT_EQ(progress.Text(), "");
    progress.Begin("Site 4");
    progress.Expect(1);
    EXPECT_EQ(progress.Text(), "Site 4: 0 of 1 record");
}

}  // namespace
