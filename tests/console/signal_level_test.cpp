#include "console/signal_level.h"

#include <gtest/gtest.h>

namespace {

struct LevelCase {
    int Value;
    int DBm;
};

class RssiTest : public ::testing::TestWithParam<LevelCase> {};

TEST_P(RssiTest, GivesItsLevel) {
    EXPECT_EQ(RssiToDBm(static_cast<std::uint8_t>(GetParam().Value)), GetParam().DBm);
}

INSTANTIATE_TEST_SUITE_P(
    Points, RssiTest,
    ::testing::Values(LevelCase{0, -40}, LevelCase{12, -40}, LevelCase{13, -46}, LevelCase{14, -49},
                      LevelCase{15, -50}, LevelCase{16, -51}, LevelCase{17, -52},
                      LevelCase{23, -56}, LevelCase{28, -59}, LevelCase{43, -62},
                      LevelCase{64, -66}, LevelCase{85, -69}, LevelCase{98, -72},
                      LevelCase{113, -76}, LevelCase{120, -79}, LevelCase{132, -82},
                      LevelCase{154, -86}, LevelCase{173, -89}, LevelCase{189, -92},
                      LevelCase{255, -104}));

// Ties: 126 lies midway between 120 (-79) and 132 (-82), 143 between 132 and 154.
INSTANTIATE_TEST_SUITE_P(Ties, RssiTest,
                         ::testing::Values(LevelCase{126, -80}, LevelCase{143, -84},
                                           LevelCase{181, -90}, LevelCase{20, -54}));

TEST(RssiCurveTest, WeakerIsNeverStronger) {
    for (int value = 1; value <= 255; ++value) {
        EXPECT_LE(RssiToDBm(static_cast<std::uint8_t>(value)),
                  RssiToDBm(static_cast<std::uint8_t>(value - 1)))
            << value;
    }
}

TEST(BarLengthTest, StandsAtItsEndsForTheEdgesOfTheScale) {
    EXPECT_EQ(BarLength(RssiToDBm(0)), 56);
    EXPECT_EQ(BarLength(RssiToDBm(189)), 4);
    EXPECT_EQ(BarLength(RssiToDBm(255)), 0);
    EXPECT_EQ(BarLength(std::nullopt), 0);
    EXPECT_EQ(BarLength(10), 56);
}

TEST(LevelTextTest, SaysTheLevelOrThatThereIsNone) {
    EXPECT_EQ(LevelText(-62), "-62 DBm");
    EXPECT_EQ(LevelText(std::nullopt), "---");
}

}  // namespace
