#include "common/flag.h"

#include <gtest/gtest.h>

namespace {

// Other programs read these numbers in what the console keeps.
TEST(Flag, TrueIsMinusOne) {
    EXPECT_EQ(ToFlag(true), -1);
    EXPECT_EQ(ToFlag(false), 0);
    EXPECT_EQ(True, -1);
    EXPECT_EQ(False, 0);
}

}  // namespace
