#include "common/number_text.h"

#include <gtest/gtest.h>

#include <array>
#include <cfenv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

#include "common/fault.h"

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

TEST(IntegerToText, GivesAllDigitsOfEveryWholeNumber) {
    EXPECT_EQ(IntegerToText(0), "0");
    EXPECT_EQ(IntegerToText(-1), "-1");
    EXPECT_EQ(IntegerToText(200000), "200000");
    EXPECT_EQ(IntegerToText(std::numeric_limits<std::int64_t>::max()), "9223372036854775807");
    EXPECT_EQ(IntegerToText(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
}

TEST(DoubleToText, GivesTheShortestGeneralForm) {
    EXPECT_EQ(DoubleToText(0.014), "0.014");
    EXPECT_EQ(DoubleToText(1.5), "1.5");
    EXPECT_EQ(DoubleToText(-100), "-100");
    EXPECT_EQ(DoubleToText(999999), "999999");
}

TEST(DoubleToText, KeepsFifteenSignificantDigits) {
    EXPECT_EQ(DoubleToText(0.1 + 0.2), "0.3");
    EXPECT_EQ(DoubleToText(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(DoubleToText(123456789012345.0), "123456789012345");
}

TEST(DoubleToText, TurnsToExponentFormAtTheEdges) {
    EXPECT_EQ(DoubleToText(1e15), "1E+15");
    EXPECT_EQ(DoubleToText(999999999999999.0), "999999999999999");
    EXPECT_EQ(DoubleToText(0.0001), "0.0001");
    EXPECT_EQ(DoubleToText(0.00001), "1E-05");
    EXPECT_EQ(DoubleToText(-1.5e300), "-1.5E+300");
}

TEST(DoubleToText, ShowsWhatIsNoNumberAsZero) {
    EXPECT_EQ(DoubleToText(NaN), "0");
    EXPECT_EQ(DoubleToText(Infinity), "0");
    EXPECT_EQ(DoubleToText(-0.0), "0");
}

TEST(FormatFixed, RoundsTheExactBinaryValueTiesToEven) {
    EXPECT_EQ(FormatFixed(0.5, 0), "0");
    EXPECT_EQ(FormatFixed(1.5, 0), "2");
    EXPECT_EQ(FormatFixed(2.5, 0), "2");
    EXPECT_EQ(FormatFixed(0.125, 2), "0.12");
    EXPECT_EQ(FormatFixed(0.375, 2), "0.38");
    EXPECT_EQ(FormatFixed(1.005, 2), "1.00");  // just below 1.005 in binary
}

TEST(FormatFixed, HoldsThePlacesToSix) {
    EXPECT_EQ(FormatFixed(1, 7), "1.000000");
    EXPECT_EQ(FormatFixed(1, -3), "1");
}

TEST(FormatFixed, GivesZeroNoSign) {
    EXPECT_EQ(FormatFixed(-0.0, 1), "0.0");
    EXPECT_EQ(FormatFixed(-0.004, 2), "0.00");
    EXPECT_EQ(FormatFixed(-0.006, 2), "-0.01");
}

TEST(FormatFixed, HasADigitBeforeThePoint) {
    EXPECT_EQ(FormatFixed(0.25, 3), "0.250");
}

TEST(FormatFixed, ShowsWhatIsNoNumberAsZero) {
    EXPECT_EQ(FormatFixed(NaN, 2), "0.00");
    EXPECT_EQ(FormatFixed(-Infinity, 1), "0.0");
}

TEST(FormatFixed, EqualsTheExactTextOfOverAMillionValues) {
    std::mt19937_64 random(20261115);
    const auto agrees = [](double value, int places) {
        std::array<char, FixedTextRoom> exact{};
        std::snprintf(exact.data(), exact.size(), "%.*f", places, value);
        std::string expected(exact.data());
        if (expected.find_first_of("123456789") == std::string::npos && expected[0] == '-') {
            expected.erase(0, 1);
        }
        return FormatFixed(value, places) == expected;
    };
    for (int i = 0; i < 300'000; ++i) {
        const int places = static_cast<int>(random() % 7);
        const double scale = std::pow(10.0, static_cast<int>(random() % 20) - 7);
        const double any = (static_cast<double>(random() >> 11) * 0x1p-53 - 0.5) * scale;
        // Midway between two texts, and one step of a double to either side of it.
        const double midway = (std::floor(any) + 0.5) / std::pow(10.0, places);
        for (const double value : {any, midway, std::nextafter(midway, Infinity),
                                   std::nextafter(midway, -Infinity), std::floor(any) / 8}) {
            ASSERT_TRUE(agrees(value, places)) << DoubleToText(value) << " to " << places;
        }
    }
}

TEST(FormatFixed, FitsTheLargestNumberIntoItsRoom) {
    EXPECT_LE(FormatFixed(-std::numeric_limits<double>::max(), 6).size(),
              static_cast<std::size_t>(FixedTextRoom));
    EXPECT_EQ(FormatFixed(-std::numeric_limits<double>::max(), 6).size(), 317U);
}

TEST(FormatSignificant, KeepsSoManyDigitsAndClosingZeros) {
    EXPECT_EQ(FormatSignificant(1234.5, 6), "1234.50");
    EXPECT_EQ(FormatSignificant(-0.0123456789, 6), "-0.0123457");
    EXPECT_EQ(FormatSignificant(1, 6), "1.00000");
    EXPECT_EQ(FormatSignificant(99.99996, 6), "100.000");
    EXPECT_EQ(FormatSignificant(2.5, 1), "2");
    EXPECT_EQ(FormatSignificant(1.0 / 3, 15), "0.333333333333333");
}

TEST(FormatSignificant, KeepsAllWholeDigits) {
    EXPECT_EQ(FormatSignificant(999999.4, 6), "999999");
    EXPECT_EQ(FormatSignificant(999999.7, 6), "1000000");
    EXPECT_EQ(FormatSignificant(123456789.5, 6), "123456790");
    EXPECT_EQ(FormatSignificant(1e300, 6).size(), 301U);
}

TEST(FormatSignificant, TurnsToAnExponentWhereTheGeneralFormDoes) {
    EXPECT_EQ(FormatSignificant(0.0001, 6), "0.000100000");
    EXPECT_EQ(FormatSignificant(0.0000999999, 6), "9.99999E-05");
    EXPECT_EQ(FormatSignificant(0.00009999999, 6), "0.000100000");
    EXPECT_EQ(FormatSignificant(5e-324, 6), "4.94066E-324");
}

TEST(FormatSignificant, ShowsNothingAndWhatIsNoNumberAsZero) {
    EXPECT_EQ(FormatSignificant(0, 6), "0");
    EXPECT_EQ(FormatSignificant(-0.0, 6), "0");
    EXPECT_EQ(FormatSignificant(Infinity, 6), "0");
    EXPECT_EQ(FormatSignificant(NaN, 6), "0");
}

TEST(FormatSignificant, HoldsTheDigitsToFifteen) {
    EXPECT_EQ(FormatSignificant(0.5, 40), "0.500000000000000");
    EXPECT_EQ(FormatSignificant(0.26, 0), "0.3");
    EXPECT_EQ(FormatSignificant(std::numeric_limits<double>::max(), 15).size(), 309U);
}

TEST(LeadingNumber, StopsAtTheFirstOtherCharacter) {
    EXPECT_EQ(LeadingNumber("12 minutes"), 12);
    EXPECT_EQ(LeadingNumber("  -1.5e2x"), -150);
    EXPECT_EQ(LeadingNumber("1,5"), 1);
    EXPECT_EQ(LeadingNumber("3e"), 3);
    EXPECT_EQ(LeadingNumber("3e+"), 3);
    EXPECT_EQ(LeadingNumber(".5"), 0.5);
    EXPECT_EQ(LeadingNumber("+5."), 5);
    EXPECT_EQ(LeadingNumber("1.2.3"), 1.2);
}

TEST(LeadingNumber, IsZeroWhereThereIsNone) {
    EXPECT_EQ(LeadingNumber(""), 0);
    EXPECT_EQ(LeadingNumber("abc"), 0);
    EXPECT_EQ(LeadingNumber("."), 0);
    EXPECT_EQ(LeadingNumber("-"), 0);
    EXPECT_EQ(LeadingNumber("\t1"), 0) << "a tab is no blank";
    EXPECT_EQ(LeadingNumber("inf"), 0);
}

TEST(LeadingNumber, FaultsOnOverflowAlone) {
    EXPECT_THROW(static_cast<void>(LeadingNumber("1e999")), Fault);
    EXPECT_EQ(LeadingNumber("1e-999"), 0);
}

TEST(ReadNumber, TakesOnlyAWholeText) {
    EXPECT_EQ(WholeNumber(" 2.5 "), 2.5);
    EXPECT_EQ(WholeNumber("5."), 5.0);
    EXPECT_EQ(WholeNumber("1E3"), 1000.0);
    for (const char* text : {"", " ", "2.0;", "1 2", "0x10", "inf", "nan", "1e", "--1", "1,0"}) {
        EXPECT_FALSE(WholeNumber(text)) << text;
    }
}

TEST(ReadNumber, TellsTooLargeFromNoNumber) {
    double value = 1;
    EXPECT_EQ(ReadNumber("1e999", value), NumberForm::TooLarge);
    EXPECT_EQ(value, 0);
    EXPECT_EQ(ReadNumber("-" + std::string(400, '9'), value), NumberForm::TooLarge);
    EXPECT_EQ(ReadNumber("0." + std::string(400, '0') + "1", value), NumberForm::Number);
    EXPECT_EQ(value, 0);
    EXPECT_EQ(ReadNumber("1" + std::string(400, '0') + "e-400", value), NumberForm::Number);
    EXPECT_EQ(value, 1);
    EXPECT_EQ(ReadNumber("1e-99999999999999999999", value), NumberForm::Number);
    EXPECT_EQ(ReadNumber("1e+99999999999999999999", value), NumberForm::TooLarge);
}

TEST(ReadNumber, AnExponentAtTheEndOfTheIntegersLeavesRoomForTheDigits) {
    double value = 1;
    EXPECT_EQ(ReadNumber("10e9223372036854775807", value), NumberForm::TooLarge);
    EXPECT_EQ(ReadNumber("10e2147483647", value), NumberForm::TooLarge);
    EXPECT_EQ(ReadNumber("0.001e-9223372036854775807", value), NumberForm::Number);
    EXPECT_EQ(value, 0);
    EXPECT_EQ(ReadNumber("0.001e-2147483647", value), NumberForm::Number);
    EXPECT_EQ(value, 0);
}

TEST(TextToDouble, TurnsCommasInPlace) {
    std::string text = "1,5 ft";
    EXPECT_EQ(TextToDouble(text), 1.5);
    EXPECT_EQ(text, "1.5 ft");
}

TEST(TextToDouble, NeverFails) {
    std::string garbage = "abc";
    std::string huge = "1e999";
    EXPECT_EQ(TextToDouble(garbage), 0);
    EXPECT_EQ(TextToDouble(huge), 0);
}

TEST(TextToLong, RoundsTiesToEven) {
    std::int32_t value = 0;
    EXPECT_TRUE(TextToLong("1.5", value));
    EXPECT_EQ(value, 2);
    EXPECT_TRUE(TextToLong("2.5", value));
    EXPECT_EQ(value, 2);
    EXPECT_TRUE(TextToLong(" -3e1 ", value));
    EXPECT_EQ(value, -30);
}

TEST(TextToLong, ChecksTheRangeAfterRounding) {
    std::int32_t value = 5;
    EXPECT_TRUE(TextToLong("2147483647.5", value) == false);
    EXPECT_EQ(value, 0);
    EXPECT_TRUE(TextToLong("2147483647.4", value));
    EXPECT_EQ(value, 2147483647);
    EXPECT_TRUE(TextToLong("-2147483648.5", value));
    EXPECT_EQ(value, -2147483648);
    EXPECT_FALSE(TextToLong("1e999", value));
    EXPECT_FALSE(TextToLong("12x", value));
}

TEST(RoundTiesToEven, HoldsInEveryRoundingMode) {
    for (const int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO, FE_TONEAREST}) {
        std::fesetround(mode);
        EXPECT_EQ(RoundTiesToEven(2.5), 2);
        EXPECT_EQ(RoundTiesToEven(3.5), 4);
        EXPECT_EQ(RoundTiesToEven(-2.5), -2);
        EXPECT_EQ(RoundTiesToEven(-0.6), -1);
    }
    std::fesetround(FE_TONEAREST);
}

TEST(NumberTexts, ComeBackFromTheirText) {
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        const double value = std::ldexp(static_cast<double>(random() % 1'000'000'000),
                                        static_cast<int>(random() % 80) - 40);
        const double back = LeadingNumber(DoubleToText(value));
        EXPECT_NEAR(back, value, std::fabs(value) * 1e-14);
    }
}

}  // namespace
