#include "flow/flow_definition.h"

#include <gtest/gtest.h>

#include "flow/flow_calculation.h"
#include "flow/flow_support.h"

namespace config {
namespace {

FlowDeviceEntry Equation(const char* tag, const char* name, double c) {
    return {tag, name, 0, "", 0.1, 1.5, c};
}

FlowDeviceEntry TableEntry(const char* tag, const char* name, const char* file) {
    return {tag, name, 1, file, 0, 0, 0};
}

class FlowDefinition : public ::testing::Test {
 protected:
    FlowDefinition() {
        folder_.Write("h.tbl", "1 10\n2 20\n3 30\n");
        state_.FlowDeviceName = "before";
        state_.FlowEqOffset = 9;
        state_.FlowEqExponent = 9;
        state_.FlowEqMultiplier = 9;
        state_.FlowTable.Append({5, 5});
    }
    bool Find(std::string_view tag) {
        return FindFlowDevice(tag, catalogues_.FlumeList, folder_.Path(), state_);
    }
    void Load() { LoadFlowDefinition(state_, catalogues_, folder_.Path(), boxes_); }
    void ExpectBox(const std::string& title, const std::string& text, BoxIcon icon) {
        ASSERT_EQ(boxes_.Shown.size(), 1U);
        EXPECT_EQ(boxes_.Shown[0].Title, title);
        EXPECT_EQ(boxes_.Shown[0].Text, text);
        EXPECT_EQ(boxes_.Shown[0].Icon, icon);
        EXPECT_EQ(boxes_.Shown[0].Buttons, BoxButtons::Ok);
    }
    void ExpectEquation(double a, double b, double c) {
        EXPECT_EQ(state_.FlowEqOffset, a);
        EXPECT_EQ(state_.FlowEqExponent, b);
        EXPECT_EQ(state_.FlowEqMultiplier, c);
    }

    ProgramFolder folder_;
    Catalogues catalogues_;
    LoggerState state_;
    RecordingBoxes boxes_;
};

TEST_F(FlowDefinition, AnEmptyTagIsNoDevice) {
    catalogues_.FlumeList.Append(Equation("", "nameless", 2));
    EXPECT_FALSE(Find(""));
    EXPECT_EQ(state_.FlowDeviceName, "- None -");
    ExpectEquation(0, 0, 0);
}

TEST_F(FlowDefinition, AnUnknownTagLeavesTheName) {
    EXPECT_FALSE(Find("P6"));
    EXPECT_EQ(state_.FlowDeviceName, "before");
    ExpectEquation(0, 0, 0);
}

TEST_F(FlowDefinition, TagsAreComparedExactly) {
    catalogues_.FlumeList.Append(Equation("P6", "six", 2));
    EXPECT_FALSE(Find("p6"));
    EXPECT_FALSE(Find("P6 "));
    EXPECT_TRUE(Find("P6"));
    EXPECT_EQ(state_.FlowDeviceName, "six");
    ExpectEquation(0.1, 1.5, 2);
}

TEST_F(FlowDefinition, TheLastEquationOfATagHolds) {
    catalogues_.FlumeList.Append(Equation("P6", "first", 2));
    catalogues_.FlumeList.Append(Equation("P9", "other", 3));
    catalogues_.FlumeList.Append(Equation("P6", "last", 4));
    EXPECT_TRUE(Find("P6"));
    EXPECT_EQ(state_.FlowDeviceName, "last");
    ExpectEquation(0.1, 1.5, 4);
}

TEST_F(FlowDefinition, ATableEntryEndsTheSearch) {
    catalogues_.FlumeList.Append(TableEntry("P6", "table", "h.tbl"));
    catalogues_.FlumeList.Append(Equation("P6", "equation", 4));
    EXPECT_TRUE(Find("P6"));
    EXPECT_EQ(state_.FlowDeviceName, "table");
    EXPECT_EQ(state_.FlowTable.UpperBound(), 3);
    ExpectEquation(0, 0, 0);
}

TEST_F(FlowDefinition, AVanishedTableBehindAnEquationIsNotResolved) {
    catalogues_.FlumeList.Append(Equation("P6", "equation", 4));
    catalogues_.FlumeList.Append(TableEntry("P6", "table", "gone.tbl"));
    catalogues_.FlumeList.Append(Equation("P6", "later", 5));
    EXPECT_FALSE(Find("P6"));
    EXPECT_EQ(state_.FlowDeviceName, "table");
    EXPECT_EQ(state_.FlowTable.UpperBound(), 0);
    ExpectEquation(0.1, 1.5, 4);
}

TEST_F(FlowDefinition, ModesWithoutARatingOnlyLoseTheTable) {
    for (const std::uint8_t mode : {0, 1}) {
        state_.FlowMode = mode;
        state_.FlowTable.Append({5, 5});
        Load();
        EXPECT_EQ(state_.FlowTable.UpperBound(), 0);
        EXPECT_EQ(state_.FlowDeviceName, "before");
        ExpectEquation(9, 9, 9);
        EXPECT_TRUE(boxes_.Shown.empty());
    }
}

TEST_F(FlowDefinition, AFlumeIsTakenFromTheFlumes) {
    catalogues_.FlumeList.Append(Equation("X", "flume", 2));
    catalogues_.WeirList.Append(Equation("X", "weir", 3));
    state_.FlowMode = 2;
    state_.FlumeTag = "X";
    Load();
    EXPECT_EQ(state_.FlowDeviceName, "flume");
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(FlowDefinition, AWeirIsTakenFromTheWeirs) {
    catalogues_.FlumeList.Append(Equation("X", "flume", 2));
    catalogues_.WeirList.Append(Equation("X", "weir", 3));
    state_.FlowMode = 3;
    state_.WeirTag = "X";
    Load();
    EXPECT_EQ(state_.FlowDeviceName, "weir");
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(FlowDefinition, AnUnknownFlumeShowsBadFlumeTag) {
    state_.FlowMode = 2;
    state_.FlumeTag = "P7";
    Load();
    ExpectBox("Bad Flume Tag",
              "Error: a programmed flume with tag name \"P7\"\n"
              "was not found in file FLUMES.LST, or referred to a missing or \n"
              "bad table file.",
              BoxIcon::Stop);
}

TEST_F(FlowDefinition, AnUnknownWeirShowsTheFlumesTitle) {
    state_.FlowMode = 3;
    state_.WeirTag = "V7";
    Load();
    ExpectBox("Bad Flume Tag",
              "Error: a programmed weir with tag name \"V7\"\n"
              "was not found in file WEIRS.LST, or referred to a missing or \n"
              "bad table file.",
              BoxIcon::Stop);
}

TEST_F(FlowDefinition, AnEmptyFlumeTagShowsAnEmptyPairOfQuotes) {
    state_.FlowMode = 2;
    Load();
    EXPECT_EQ(state_.FlowDeviceName, "- None -");
    ExpectBox("Bad Flume Tag",
              "Error: a programmed flume with tag name \"\"\n"
              "was not found in file FLUMES.LST, or referred to a missing or \n"
              "bad table file.",
              BoxIcon::Stop);
}

TEST_F(FlowDefinition, AFlumeWhoseTableVanishedShowsBadFlumeTagAndGivesNoFlow) {
    catalogues_.FlumeList.Append(TableEntry("H1", "H flume", "gone.tbl"));
    state_.FlowMode = 2;
    state_.FlumeTag = "H1";
    Load();
    EXPECT_EQ(state_.FlowTable.UpperBound(), 0);
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Title, "Bad Flume Tag");
    double velocity = 0;
    EXPECT_EQ(CalculateFlow(state_, state_.FlowTable, 1, velocity), 0);
}

TEST_F(FlowDefinition, ATableIsReadAndNamedByItsFile) {
    state_.FlowMode = 4;
    state_.TablePath = ".\\h.tbl";
    Load();
    EXPECT_EQ(state_.FlowTable.UpperBound(), 3);
    EXPECT_EQ(state_.FlowDeviceName, "h.tbl");
    EXPECT_TRUE(boxes_.Shown.empty());
    ExpectEquation(9, 9, 9);
}

TEST_F(FlowDefinition, ATablePathWithoutASeparatorIsTheName) {
    state_.FlowMode = 4;
    state_.TablePath = "h.tbl";
    Load();
    EXPECT_EQ(state_.FlowDeviceName, "h.tbl");
}

TEST_F(FlowDefinition, ModesAboveTheTableCountAsIt) {
    state_.FlowMode = 200;
    state_.TablePath = "h.tbl";
    Load();
    EXPECT_EQ(state_.FlowTable.UpperBound(), 3);
}

TEST_F(FlowDefinition, AMissingTableShowsMissingOrEmpty) {
    state_.FlowMode = 4;
    state_.TablePath = "sub\\none.tbl";
    Load();
    EXPECT_EQ(state_.FlowTable.UpperBound(), 0);
    EXPECT_EQ(state_.FlowDeviceName, "none.tbl");
    ExpectBox("Missing or Empty Flow Table File",
              "Error: missing or empty flow table file:\n\nsub\\none.tbl", BoxIcon::Exclamation);
}

TEST_F(FlowDefinition, AnExistingEmptyTableShowsMissingOrEmpty) {
    folder_.Write("empty.tbl", "");
    state_.FlowMode = 4;
    state_.TablePath = "empty.tbl";
    Load();
    ExpectBox("Missing or Empty Flow Table File",
              "Error: missing or empty flow table file:\n\nempty.tbl", BoxIcon::Exclamation);
}

}  // namespace
}  // namespace config
