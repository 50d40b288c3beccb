#include "client/client_panel.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

namespace client_test {
namespace {

TEST(ClientPanel, MembersOfAnArrayHaveTheirIndexInTheName) {
    std::set<std::string> names;
    ClientPanel panel;
    for (const ControlRow& row : ClientControls()) {
        const int count = static_cast<int>(row.Of(panel).size());
        for (int index = 0; index < count; ++index) {
            EXPECT_TRUE(names.insert(ControlName(row, index)).second) << row.Name;
        }
    }
    for (const char* name : {"lblData(0)", "lblData2(9)", "fraMeter(7)", "fraAlarm1", "fraAlarm2",
                             "lblAlarm(1)", "lblRecords2", "cmdFlow", "lblPulse3(1)"}) {
        EXPECT_TRUE(names.contains(name)) << name;
    }
}

TEST(ClientPanel, WhatStandsOnceForEachChannelIsAnArray) {
    std::set<std::string> indexed;
    std::set<std::string> numbered;
    for (const ControlRow& row : ClientControls()) {
        if (row.Naming == ControlNaming::Indexed) {
            indexed.emplace(row.Name);
        } else if (row.Naming == ControlNaming::Numbered) {
            numbered.emplace(row.Name);
        }
    }
    EXPECT_EQ(indexed,
              (std::set<std::string>{"lblData", "lblData2", "fraMeter", "fraColumn", "lblValue",
                                     "lblUnits", "lblMax", "lblMin", "lblHistory", "lblPulse2",
                                     "lblPulse3", "lblAlarm", "lblAlarm2", "lblAlarm3"}));
    EXPECT_EQ(numbered, std::set<std::string>{"fraAlarm"});
}

class DescriptionsInMode : public ::testing::TestWithParam<std::int16_t> {};

// Of everything that changes, by name.
std::map<std::string, std::string> DescriptionsIn(std::int16_t mode) {
    std::map<std::string, std::string> words;
    ClientPanel panel;
    for (const ControlRow& row : ClientControls()) {
        const bool changes = IsFilledAtRunTime(row.Kind) || row.Kind == ControlKind::Column;
        const int count = static_cast<int>(row.Of(panel).size());
        for (int index = 0; changes && index < count; ++index) {
            words[ControlName(row, index)] = ControlDescription(row, index, mode);
        }
    }
    return words;
}

TEST_P(DescriptionsInMode, SayWhatIsShownUnlikeAnyOther) {
    std::set<std::string> seen;
    for (const auto& [name, words] : DescriptionsIn(GetParam())) {
        EXPECT_FALSE(words.empty()) << name;
        EXPECT_TRUE(seen.insert(words).second) << words;
    }
    EXPECT_TRUE(seen.contains("Channel 1 reading"));
    EXPECT_TRUE(seen.contains("Pulse channel 2 reading"));
}

TEST(ClientPanel, ReadersAreToldTheseWords) {
    std::string words;
    for (const ControlRow& row : ClientControls()) {
        if (!row.Shows.empty()) {
            words.append(row.Name).append(": ").append(row.Shows).append("\n");
        }
    }
    EXPECT_EQ(words,
              "cmdSmall: Small view\n"
              "cmdMedium: Medium view\n"
              "cmdWide: Wide view\n"
              "cmdMeter: Bar graph view\n"
              "cmdFlow: Flow view\n"
              "lblLoggerName: Logger name\n"
              "lblLoggerTime: Logger time\n"
              "lblSampleInterval: Sample interval\n"
              "lblWarmup: Warmup time\n"
              "lblLoggingState: Logging state\n"
              "lblRecords: Number of records\n"
              "lblAlarm: Alarm # time\n"
              "lblLoggerName2: Logger name beside the buttons\n"
              "lblRecords2: Number of records beside the buttons\n"
              "lblLoggerTime2: Logger time beside the readings\n"
              "lblSampleInterval2: Sample interval above the bars\n"
              "lblWarmup2: Warmup time above the bars\n"
              "lblLoggingState2: Logging state above the bars\n"
              "lblData2: Channel # reading\n"
              "lblFlowMode: Flow mode\n"
              "lblFWT: Kind of flow device\n"
              "lblFWT2: Flow device or table\n"
              "lblOffset2: Level offset\n"
              "lblPipeDiameter2: Pipe diameter\n"
              "lblSlope2: Pipe slope\n"
              "lblRoughness2: Pipe roughness\n"
              "fraColumn: Column # bar\n"
              "lblValue: Column # reading\n"
              "lblUnits: Column # units\n"
              "lblMax: Column # top of scale\n"
              "lblMin: Column # foot of scale\n"
              "lblHistory: Column # older readings\n"
              "lblPulse2: Pulse count # below the bars\n"
              "lblAlarm2: Alarm # time below the bars\n");
}

INSTANTIATE_TEST_SUITE_P(Five, DescriptionsInMode,
                         ::testing::Values(DisplaySmall, DisplayMedium, DisplayWide, DisplayMeter,
                                           DisplayFlow),
                         [](const auto& mode) { return "Mode" + std::to_string(mode.param); });

TEST(ClientPanel, InTheFlowModeColumnsFourAndFiveAreFlowAndVelocity) {
    auto words = DescriptionsIn(DisplayFlow);
    EXPECT_EQ(words["lblValue(2)"], "Column 3 reading");
    EXPECT_EQ(words["lblValue(3)"], "Flow reading");
    EXPECT_EQ(words["lblHistory(3)"], "Flow older readings");
    EXPECT_EQ(words["fraColumn(3)"], "Flow bar");
    EXPECT_EQ(words["lblUnits(4)"], "Velocity units");
    EXPECT_EQ(words["lblMax(4)"], "Velocity top of scale");
    EXPECT_EQ(words["lblValue(5)"], "Column 6 reading");
    EXPECT_EQ(DescriptionsIn(DisplayMeter)["lblValue(3)"], "Column 4 reading");
}

TEST(ClientPanel, ContainersComeBeforeWhatTheyContain) {
    std::set<std::string> seen;
    for (const ControlRow& row : ClientControls()) {
        EXPECT_TRUE(row.Container.empty() || seen.contains(std::string(row.Container))) << row.Name;
        seen.insert(std::string(row.Name));
    }
}

TEST(ClientPanel, TheMenuComesUpOnTheToldControlsAlone) {
    std::set<std::string> silent;
    for (const ControlRow& row : ClientControls()) {
        if (!row.ShowsPopup) {
            silent.insert(std::string(row.Name));
        }
    }
    EXPECT_EQ(silent,
              (std::set<std::string>{"cmdFlow", "fraFlowMode", "lblFlowMode2", "lblFlowMode",
                                     "lblFWT", "lblFWT2", "lblOffset", "lblOffset2",
                                     "lblPipeDiameter", "lblPipeDiameter2", "lblSlope", "lblSlope2",
                                     "lblRoughness", "lblRoughness2"}));
}

TEST(ClientPanel, DesignCaptionsStandAsTheyAreKnown) {
    const ClientPanel panel = DesignPanel();
    EXPECT_EQ(panel.lblData[0].Text, "Channel 1");
    EXPECT_EQ(panel.lblData[7].Text, "Channel 8");
    EXPECT_EQ(panel.lblData[8].Text, "Pulse Chan 1");
    EXPECT_EQ(panel.lblData[9].Text, "Pulse Chan 2");
    EXPECT_EQ(panel.lblPulse3[0].Text, "Pusle Chan 1");
    EXPECT_EQ(panel.lblPulse3[1].Text, "Pusle Chan 2");
    EXPECT_EQ(panel.fraAlarm[1].Text, "Alarm 2");
    EXPECT_EQ(panel.lblWarmup3.Text, "Warmup Time");
    for (const PanelControl& meter : panel.fraMeter) {
        EXPECT_EQ(meter.Text, "meter");
    }
    EXPECT_EQ(panel.lblMax[7].Text, "0.000");
    EXPECT_EQ(panel.lblMin[0].Text, "0.000");
    EXPECT_EQ(panel.lblValue[0].Text, "");
    EXPECT_EQ(panel.lblData2[9].Text, "");
}

}  // namespace
}  // namespace client_test
