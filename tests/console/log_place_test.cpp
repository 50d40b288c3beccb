#include "console/log_place.h"

#include <gtest/gtest.h>

namespace {

TEST(PlaceOfLogTest, IsNeverOutsideTheArea) {
    EXPECT_EQ(PlaceOfLog(13400, {3000, 8000}, {5000, 3000}).Across, 13400 - 5000 - 3000 - 550);
    EXPECT_EQ(PlaceOfLog(13400, {3000, 8000}, {5000, 3000}).Down, 8000 - 3000 - 400);
    EXPECT_EQ(PlaceOfLog(4000, {3000, 1000}, {5000, 3000}).Across, 0);
    EXPECT_EQ(PlaceOfLog(4000, {3000, 1000}, {5000, 3000}).Down, 0);
}

}  // namespace
