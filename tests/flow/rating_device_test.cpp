#include "flow/rating_device.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "flow/rating_support.h"

namespace {

constexpr double Foot = 0.3048;

TEST(RatingKindsTable, KeysAreUniqueAndFitTheirFiles) {
    std::set<std::string_view> kinds;
    for (const RatingKind& kind : RatingKinds()) {
        EXPECT_TRUE(kinds.insert(kind.Key).second) << kind.Key;
        EXPECT_EQ(FindRatingKind(kind.Key), &kind);
        EXPECT_FALSE(kind.Caption.empty() || kind.Hint.empty()) << kind.Key;
        std::set<std::string_view> fields;
        for (const RatingField& field : kind.Fields) {
            EXPECT_TRUE(fields.insert(field.Key).second) << kind.Key << field.Key;
            EXPECT_EQ(field.Key.find_first_not_of("abcdefghijklmnopqrstuvwxyz-"),
                      std::string_view::npos)
                << field.Key;
            EXPECT_FALSE(field.Caption.empty()) << field.Key;
            EXPECT_LE(field.Least, field.Greatest) << field.Key;
            EXPECT_EQ(field.Units == RatingUnits::Choice, !field.Choices.empty()) << field.Key;
            EXPECT_LE(field.Choices.size(), field.Greatest + 1) << field.Key;
        }
    }
    EXPECT_EQ(FindRatingKind("none"), nullptr);
}

TEST(RatingKindsTable, KindsOfOneGroupStandTogether) {
    std::set<RatingGroup> left;
    const RatingKind* before = nullptr;
    for (const RatingKind& kind : RatingKinds()) {
        if (before != nullptr && before->Group != kind.Group) {
            EXPECT_TRUE(left.insert(before->Group).second) << kind.Key;
        }
        EXPECT_FALSE(left.contains(kind.Group)) << kind.Key;
        EXPECT_FALSE(RatingGroupName(kind.Group).empty());
        before = &kind;
    }
}

TEST(RatingDevices, DefaultsAreAcceptedInEveryUnit) {
    for (const RatingKind& kind : RatingKinds()) {
        for (const int unit : {InFeet, InInches, InMeters, InCentimeters}) {
            const RatingDevice device = DefaultRatingDevice(kind, unit);
            for (std::size_t i = 0; i < kind.Fields.size(); ++i) {
                EXPECT_EQ(RatingFieldFault(device, i), "") << kind.Key << unit;
            }
        }
    }
}

TEST(RatingDevices, DefaultsReadWellInTheirUnit) {
    EXPECT_EQ(RatingFieldText(DeviceOf("rectangular-weir", {}, InFeet), 0), "2");
    EXPECT_EQ(RatingFieldText(DeviceOf("rectangular-weir", {}, InInches), 0), "24");
    EXPECT_EQ(RatingFieldText(DeviceOf("rectangular-weir", {}, InMeters), 0), "0.61");
    EXPECT_EQ(RatingFieldText(DeviceOf("rectangular-weir", {}, InCentimeters), 0), "61");
}

TEST(RatingDevices, ValuesComeInMetres) {
    const RatingDevice device = DeviceOf("rectangular-weir", {{"crest", 30}}, InInches);
    EXPECT_NEAR(RatingValue(device, "crest"), 2.5 * Foot, 1e-12);
    EXPECT_EQ(RatingValue(device, "angle"), 0);
    EXPECT_EQ(RatingValue(DeviceOf("v-notch", {{"angle", 53}}, InMeters), "angle"), 53);
}

TEST(RatingDevices, ChangingTheUnitTurnsLengthsAlone) {
    RatingDevice device = DeviceOf("throat-trapezoidal", {{"throat-width", 3}});
    ChangeRatingLengthUnit(device, InInches);
    EXPECT_EQ(RatingFieldText(device, 0), "36");
    EXPECT_EQ(RatingFieldText(device, 1), "1");
    ChangeRatingLengthUnit(device, InCentimeters);
    EXPECT_EQ(RatingFieldText(device, 0), "91.44");
    ChangeRatingLengthUnit(device, InFeet);
    EXPECT_EQ(RatingFieldText(device, 0), "3");
}

TEST(RatingDevices, ChangingTheUnitsTurnsTheRowsToo) {
    RatingDevice points = RowsOf("points", "1 10\n2 30");
    ChangeRatingLengthUnit(points, InInches);
    ChangeRatingFlowUnit(points, 1);
    EXPECT_EQ(RatingRowsText(points), "12\t4488\n24\t13464\n");
    RatingDevice section = RowsOf("channel-section", "0 1 0.03\n1 0 0.04\n2 1");
    ChangeRatingLengthUnit(section, InCentimeters);
    EXPECT_EQ(RatingRowsText(section), "0\t30.48\t0.03\n30.48\t0\t0.04\n60.96\t30.48\t0\n");
}

TEST(RatingDevices, TypedTextsAreTakenOrRefused) {
    RatingDevice device = DeviceOf("v-notch");
    EXPECT_TRUE(SetRatingFieldText(device, 0, " 22,5 "));
    EXPECT_EQ(device.Values[0], 22.5);
    EXPECT_FALSE(SetRatingFieldText(device, 0, "wide"));
    EXPECT_FALSE(SetRatingFieldText(device, 0, ""));
    EXPECT_FALSE(SetRatingFieldText(device, 0, "1e999"));
    EXPECT_EQ(device.Values[0], 22.5);
    EXPECT_TRUE(SetRatingFieldText(device, 1, "1.5"));
    EXPECT_TRUE(SetRatingFieldText(device, 1, " "));
    EXPECT_EQ(device.Values[1], 0);
    EXPECT_EQ(RatingFieldText(device, 1), "");
}

TEST(RatingDevices, ChoicesAreTakenByTheirWords) {
    RatingDevice device = DeviceOf("parshall");
    EXPECT_EQ(RatingFieldText(device, 0), "6 in");
    EXPECT_TRUE(SetRatingFieldText(device, 0, "12 ft"));
    EXPECT_EQ(device.Values[0], 15);
    EXPECT_FALSE(SetRatingFieldText(device, 0, "13 ft"));
    device.Values[0] = 2.5;
    EXPECT_EQ(RatingFieldFault(device, 0), "Throat width has to be one of the choices.");
    device.Values[0] = 22;
    EXPECT_EQ(RatingFieldFault(device, 0), "Throat width has to be one of the choices.");
    EXPECT_EQ(RatingFieldText(device, 0), "");
}

TEST(RatingDevices, LimitsAreAcceptedAsTheyAreShownAndLittleBeyondThemIs) {
    for (const int unit : {InFeet, InInches, InMeters, InCentimeters}) {
        for (const RatingKind& kind : RatingKinds()) {
            RatingDevice device = DefaultRatingDevice(kind, unit);
            for (std::size_t i = 0; i < kind.Fields.size(); ++i) {
                if (kind.Fields[i].Units == RatingUnits::Choice) {
                    continue;
                }
                const std::string limits = RatingFieldLimits(device, i);
                const std::size_t to = limits.find(" to ");
                ASSERT_NE(to, std::string::npos) << limits;
                const double least = std::stod(limits.substr(0, to));
                const double greatest = std::stod(limits.substr(to + 4));
                for (const double value : {least, greatest}) {
                    device.Values[i] = value;
                    EXPECT_EQ(RatingFieldFault(device, i), "");
                }
                device.Values[i] = least > 0 ? 0.98 * least : -0.01;
                EXPECT_NE(RatingFieldFault(device, i), "") << kind.Key << ": " << limits;
                device.Values[i] = 1.02 * greatest;
                EXPECT_NE(RatingFieldFault(device, i), "") << kind.Key << ": " << limits;
            }
        }
    }
}

TEST(RatingDevices, FaultsNameTheLimitsInTheDevicesUnit) {
    EXPECT_EQ(RatingFieldFault(DeviceOf("v-notch", {{"angle", 5}}), 0),
              "Angle of the notch has to lie within 10 to 150 degrees.");
    EXPECT_EQ(RatingFieldFault(DeviceOf("rectangular-weir", {{"crest", 2000}}, InFeet), 0),
              "Crest length has to lie within 0.0328 to 984 feet.");
    EXPECT_EQ(RatingFieldFault(DeviceOf("rectangular-weir", {{"crest", 984}}, InFeet), 0), "");
    EXPECT_NE(RatingFieldFault(DeviceOf("v-notch", {{"angle", std::nan("")}}), 0), "");
    EXPECT_NE(RatingFieldFault(DeviceOf("v-notch", {{"crest-height", -1}}), 1), "");
}

TEST(RatingDevices, UnitsStandInWords) {
    RatingDevice device = DeviceOf("points", {}, InMeters);
    device.FlowUnit = 4;
    EXPECT_EQ(RatingUnitText(device, RatingUnits::Length), "meters");
    EXPECT_EQ(RatingUnitText(device, RatingUnits::Flow), "LPS");
    EXPECT_EQ(RatingUnitText(device, RatingUnits::Degrees), "degrees");
    EXPECT_EQ(RatingUnitText(device, RatingUnits::Percent), "%");
    EXPECT_EQ(RatingUnitText(device, RatingUnits::Ratio), "");
}

class Rows : public ::testing::Test {
 protected:
    RatingRowsRead Read(std::string_view text) { return SetRatingRowsText(device_, text); }

    RatingDevice device_ = DeviceOf("points");
};

TEST_F(Rows, BlanksTabsCommasAndSemicolonsSeparate) {
    for (const char* text :
         {"1 2\n3 4", "1\t2\r\n3\t4\r\n", "1,2\r3,4", "1;2\n3;4", "1, 2\n3 ,4"}) {
        EXPECT_EQ(Read(text).Taken, 2) << text;
        EXPECT_EQ(RatingRowsText(device_), "1\t2\n3\t4\n") << text;
    }
}

TEST_F(Rows, ADecimalCommaCountsBesideTabsAndSemicolons) {
    EXPECT_EQ(Read("1,5\t2,25\n\"3,5\";\"4\"").Taken, 2);
    EXPECT_EQ(RatingRowsText(device_), "1.5\t2.25\n3.5\t4\n");
}

TEST_F(Rows, QuotedFiguresCount) {
    EXPECT_EQ(Read("\"1.5\",\"2\"").Taken, 1);
    EXPECT_EQ(RatingRowsText(device_), "1.5\t2\n");
}

TEST_F(Rows, HeadingsAndShortLinesArePassedOver) {
    const RatingRowsRead read = Read("level;flow\n\n1;2\n3\n4;5;6\n  \n7;x\n8;9");
    EXPECT_EQ(read.Taken, 2);
    EXPECT_EQ(read.PassedOver, 4);
    EXPECT_EQ(RatingRowsText(device_), "1\t2\n8\t9\n");
}

TEST_F(Rows, RowsReplaceThoseBefore) {
    (void)Read("1 2\n3 4");
    (void)Read("");
    EXPECT_TRUE(device_.Rows.empty());
}

TEST_F(Rows, AThirdColumnMayBeMissing) {
    device_ = DeviceOf("channel-section");
    EXPECT_EQ(Read("0 1 0.03\n1 0\n2 0\n3 1").Taken, 4);
    EXPECT_EQ(device_.Rows[1][2], 0);
}

TEST_F(Rows, TheirOwnTextReadsBack) {
    device_.Rows = {{0.1, 1e-7, 0}, {123456.789, 3, 0}};
    const std::string text = RatingRowsText(device_);
    (void)Read(text);
    EXPECT_EQ(RatingRowsText(device_), text);
}

}  // namespace
