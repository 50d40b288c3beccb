#include "flow/rating_file.h"

#include <gtest/gtest.h>

#include <sstream>

#include "flow/flow_support.h"
#include "flow/rating_support.h"

namespace {

std::optional<RatingTableRead> Read(const std::string& text) {
    std::istringstream stream(text);
    return ReadRatingTable(stream);
}

FlowTable PointsIn(const std::string& text) {
    std::istringstream stream(text);
    FlowTable table;
    EXPECT_TRUE(config::ReadFlowTable(stream, text.size(), table));
    return table;
}

std::string TextOf(const RatingDevice& device) {
    return RatingTableText(device, ComputeRating(device));
}

TEST(RatingFile, EveryKindComesBackAsItWas) {
    for (const RatingKind& kind : RatingKinds()) {
        for (const int unit : {InFeet, InInches, InMeters, InCentimeters}) {
            RatingDevice device = SomeDevice(kind, unit);
            device.FlowUnit = unit;
            device.Name = "Outfall 3, north channel";
            device.Values.back() = device.Values.back() == 0 ? 0 : device.Values.back() + 1;
            const std::optional<RatingTableRead> read =
                Read(RatingTableText(device, ComputeRating(SomeDevice(kind))));
            ASSERT_TRUE(read) << kind.Key;
            EXPECT_TRUE(read->FromHeadings);
            EXPECT_EQ(read->Device.Kind, &kind);
            EXPECT_EQ(read->Device.LengthUnit, unit);
            EXPECT_EQ(read->Device.FlowUnit, unit);
            EXPECT_EQ(read->Device.Name, device.Name);
            EXPECT_EQ(read->Device.Values, device.Values) << kind.Key;
            EXPECT_EQ(read->Device.Rows, device.Rows) << kind.Key;
        }
    }
}

// Whoever reads the file as a table has the rating's points and nothing else.
TEST(RatingFile, ItsPointsAreTheRatings) {
    for (const RatingKind& kind : RatingKinds()) {
        RatingDevice device = SomeDevice(kind);
        device.Name = "1 2";
        const Rating rating = ComputeRating(device);
        const FlowTable table = PointsIn(RatingTableText(device, rating));
        ASSERT_EQ(table.UpperBound(), rating.Points.UpperBound()) << kind.Key;
        for (int i = 1; i <= table.UpperBound(); ++i) {
            EXPECT_EQ(table[i].Level, rating.Points[i].Level) << kind.Key;
            EXPECT_EQ(table[i].Flow, rating.Points[i].Flow) << kind.Key;
        }
    }
}

TEST(RatingFile, NoHeadingIsAPoint) {
    for (const RatingKind& kind : RatingKinds()) {
        RatingDevice device = SomeDevice(kind);
        device.Name = "3 4\r\n5 6\n7 8\r9 10";
        std::string text = TextOf(device);
        text.resize(text.find("level flow"));
        EXPECT_EQ(PointsIn(text).UpperBound(), 0) << kind.Key;
        // Nor may a figure in one spoil the file for its reader.
        device.Name = "1e999 1e999";
        EXPECT_GT(PointsIn(TextOf(device)).UpperBound(), 1) << kind.Key;
    }
}

TEST(RatingFile, ANameStaysOnItsLine) {
    RatingDevice device = DeviceOf("v-notch");
    device.Name = "  weir\nDevice: parshall\t2 ";
    EXPECT_EQ(Read(TextOf(device))->Device.Name, "weir Device: parshall 2");
    EXPECT_EQ(Read(TextOf(device))->Device.Kind->Key, "v-notch");
    device.Name = std::string(1000, 'x');
    EXPECT_EQ(Read(TextOf(device))->Device.Name.size(), 200U);
    device.Name = "\n";
    EXPECT_EQ(TextOf(device).find("Name:"), std::string::npos);
}

TEST(RatingFile, HeadingsTellDeviceSourcesRangeAndUncertainty) {
    const std::string text = TextOf(DeviceOf("v-notch", {{"angle", 22.5}}));
    for (const char* line :
         {"Flow table made from a device: level in feet, flow in cubic feet per second.\r\n",
          "Length-unit: 0 - feet\r\n", "Device: v-notch - V-notch weir\r\n",
          "Dimension: angle = 22.5 - Angle of the notch: 22.5 degrees\r\n",
          "Dimension: crest-height = 0 - Crest above bed: left to the method\r\n",
          "Equation: Kindsvater and Shen", "Source: ISO 1438\r\n", "Range: 0.1969 to 1.247 feet",
          "Uncertainty: 1 %, of the coefficient", "Caution: Shen's own curves", "Note: Fully"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line;
    }
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 1)) {
        EXPECT_EQ(text[at - 1], '\r');
    }
}

TEST(RatingFile, ATableMadeElsewhereBecomesOwnPoints) {
    const std::optional<RatingTableRead> read = Read("old table\n0.1 0.2\n0.5 2\n1\t9\n");
    ASSERT_TRUE(read);
    EXPECT_FALSE(read->FromHeadings);
    EXPECT_EQ(read->Device.Kind->Key, "points");
    EXPECT_EQ(RatingRowsText(read->Device), "0.1\t0.2\n0.5\t2\n1\t9\n");
}

TEST(RatingFile, WhatIsNoTableGivesNothing) {
    EXPECT_FALSE(Read(""));
    EXPECT_FALSE(Read("nothing\nof the kind\n"));
    EXPECT_FALSE(Read("1 1e999\n"));
    EXPECT_FALSE(Read("Device: unknown - thing\n"));
}

TEST(RatingFile, SpoiledHeadingsLeaveTheDefaults) {
    const std::optional<RatingTableRead> read = Read(
        "Length-unit: 9\nDevice: v-notch\nDimension: angle = x\nDimension: none = 3\n"
        "Dimension\nDimension:\nFlow-unit: \nRow: 1 2\nDimension: crest-height = 1.5\n");
    ASSERT_TRUE(read);
    EXPECT_EQ(read->Device.LengthUnit, 0);
    EXPECT_EQ(read->Device.Values, (std::vector<double>{60, 1.5, 0, 0}));
    EXPECT_TRUE(read->Device.Rows.empty());
}

TEST(RatingFile, OnlyTheFirstKindCounts) {
    const std::optional<RatingTableRead> read =
        Read("Device: v-notch\nDimension: angle = 45\nDevice: parshall\nDimension: size = 3\n");
    ASSERT_TRUE(read);
    EXPECT_EQ(read->Device.Kind->Key, "v-notch");
    EXPECT_EQ(read->Device.Values[0], 45);
}

TEST(RatingFile, EveryPieceOfAFileIsReadWithoutHarm) {
    const std::string text =
        TextOf(RowsOf("channel-section", "0 2 0.03\n1 0 0.02\n2 0\n3 2", {{"slope", 0.5}}));
    for (std::size_t length = 0; length < text.size(); length += 7) {
        const std::optional<RatingTableRead> read = Read(text.substr(0, length));
        if (read && read->FromHeadings) {
            EXPECT_EQ(read->Device.Values.size(), read->Device.Kind->Fields.size());
        }
    }
}

TEST(RatingFile, AFileIsOpenedByItsPath) {
    const ProgramFolder folder;
    const std::string path = folder.Write("weir.tbl", TextOf(DeviceOf("cipolletti")));
    EXPECT_EQ(OpenRatingTable(path)->Device.Kind->Key, "cipolletti");
    EXPECT_FALSE(OpenRatingTable(folder.PathOf("none.tbl")));
    EXPECT_FALSE(OpenRatingTable(folder.Path()));
    EXPECT_FALSE(OpenRatingTable(""));
}

}  // namespace
