#include "platform/line_pace.h"

#include <gtest/gtest.h>

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;

class LinePaceTest : public ::testing::Test {
 protected:
    void Came(microseconds later, int bytes) { pace_.Came(now_ += later, bytes); }

    LinePace::Time now_{milliseconds(5000)};
    LinePace pace_;
};

TEST_F(LinePaceTest, OfALineThatHasBroughtNothingNothingIsKnown) {
    EXPECT_EQ(pace_.RestFor(1000), milliseconds(0));
    Came(milliseconds(1), 1);
    EXPECT_EQ(pace_.RestFor(1000), milliseconds(0));
}

TEST_F(LinePaceTest, BytesThatComeOneByOneGoOnSo) {
    Came(milliseconds(1), 1);
    Came(milliseconds(1), 1);
    EXPECT_EQ(pace_.RestFor(17), milliseconds(12));
    Came(milliseconds(3), 2);
    EXPECT_EQ(pace_.RestFor(17), milliseconds(18));
}

TEST_F(LinePaceTest, TheLastByteIsWaitedFor) {
    Came(milliseconds(1), 1);
    Came(milliseconds(1), 1);
    EXPECT_EQ(pace_.RestFor(1), milliseconds(0));
    EXPECT_EQ(pace_.RestFor(6), milliseconds(0)) << "not worth it";
    EXPECT_EQ(pace_.RestFor(7), milliseconds(4));
}

TEST_F(LinePaceTest, WhatComesInPacksIsLookedForAtOnce) {
    Came(milliseconds(1), 1);
    Came(milliseconds(3), 3);
    EXPECT_EQ(pace_.RestFor(100), milliseconds(0));
}

TEST_F(LinePaceTest, ByteBehindASilenceTellsNothing) {
    Came(milliseconds(1), 1);
    Came(microseconds(2001), 1);
    EXPECT_EQ(pace_.RestFor(100), milliseconds(0));
    Came(milliseconds(2), 1);
    EXPECT_EQ(pace_.RestFor(100), milliseconds(148));
}

TEST_F(LinePaceTest, BytesThatCameUnseenTellThePaceHoweverManyTheyAre) {
    Came(milliseconds(1), 1);
    pace_.CameUnseen(now_ += milliseconds(12), 12);
    EXPECT_EQ(pace_.RestFor(17), milliseconds(12));
    pace_.CameUnseen(now_ += milliseconds(12), 0);
    EXPECT_EQ(pace_.RestFor(17), milliseconds(0)) << "the bytes have stopped";
}

TEST_F(LinePaceTest, APortThatIsOpenedAgainBeginsAnew) {
    Came(milliseconds(1), 1);
    Came(milliseconds(1), 1);
    pace_.Forget();
    EXPECT_EQ(pace_.RestFor(100), milliseconds(0));
    Came(milliseconds(1), 1);
    EXPECT_EQ(pace_.RestFor(100), milliseconds(0));
}

}  // namespace
