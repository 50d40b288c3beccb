#include "flow/unit_names.h"

#include <gtest/gtest.h>

#include <cmath>

namespace config {
namespace {

TEST(LengthUnitName, NamesEachUnitInBothNumbers) {
    EXPECT_EQ(LengthUnitName(0, false), "Foot");
    EXPECT_EQ(LengthUnitName(0, true), "Feet");
    EXPECT_EQ(LengthUnitName(1, false), "Inch");
    EXPECT_EQ(LengthUnitName(1, true), "Inches");
    EXPECT_EQ(LengthUnitName(2, false), "Meter");
    EXPECT_EQ(LengthUnitName(2, true), "Meters");
    EXPECT_EQ(LengthUnitName(3, false), "cm");
    EXPECT_EQ(LengthUnitName(3, true), "cm");
}

TEST(LengthUnitName, AnyOtherCodeIsFeet) {
    for (const int code : {-1, 4, 255}) {
        EXPECT_EQ(LengthUnitName(code, false), "Foot") << code;
        EXPECT_EQ(LengthUnitName(code, true), "Feet") << code;
    }
}

TEST(FlowUnitName, NamesCodes0To4) {
    EXPECT_EQ(FlowUnitName(0), "CFS");
    EXPECT_EQ(FlowUnitName(1), "GPM");
    EXPECT_EQ(FlowUnitName(2), "MGD");
    EXPECT_EQ(FlowUnitName(3), "CMS");
    EXPECT_EQ(FlowUnitName(4), "LPS");
}

TEST(FlowUnitName, AnyOtherCodeIsEmpty) {
    for (const int code : {-1, 5, 255}) {
        EXPECT_EQ(FlowUnitName(code), "") << code;
    }
}

TEST(IsFlowUnit, TakesTheFourUnitsInAnyCaseWithBlanks) {
    for (const char* unit : {"inches", "feet", "meters", "cm", "Feet ", "FEET", "  Inches", "CM"}) {
        EXPECT_TRUE(IsFlowUnit(unit)) << unit;
    }
}

TEST(IsFlowUnit, RefusesEverythingElse) {
    for (const char* unit :
         {"", " ", "ft", "foot", "inch", "meter", "metres", "c m", "%", "feet\t"}) {
        EXPECT_FALSE(IsFlowUnit(unit)) << unit;
    }
}

TEST(LevelUnitCode, LooksAtTheFirstLetterAlone) {
    EXPECT_EQ(LevelUnitCode("inches"), 1);
    EXPECT_EQ(LevelUnitCode("  Ink"), 1);
    EXPECT_EQ(LevelUnitCode("M"), 2);
    EXPECT_EQ(LevelUnitCode("cm"), 3);
    EXPECT_EQ(LevelUnitCode("Cubits"), 3);
    EXPECT_EQ(LevelUnitCode("feet"), 0);
    EXPECT_EQ(LevelUnitCode("%"), 0);
    EXPECT_EQ(LevelUnitCode(""), 0);
    EXPECT_EQ(LevelUnitCode("   "), 0);
}

TEST(LengthToFeet, DividesByTheToldConstants) {
    EXPECT_EQ(LengthToFeet(18, 1), 18 / 12.0);
    EXPECT_EQ(LengthToFeet(1, 2), 1 / 0.3048);
    EXPECT_EQ(LengthToFeet(77, 3), 77 / 100.0 / 0.3048);
    EXPECT_EQ(LengthToFeet(2.5, 0), 2.5);
    EXPECT_EQ(LengthToFeet(2.5, 4), 2.5);
    EXPECT_TRUE(std::isinf(LengthToFeet(1.7e308, 2)));
}

}  // namespace
}  // namespace config
