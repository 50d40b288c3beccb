#include "client/client_panel.h"

#include <gtest/gtest.h>

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

TEST(ClientPanel, ALabelThatChangesSaysWhatItShowsUnlikeAnyOther) {
    std::set<std::string> words;
    ClientPanel panel;
    for (const ControlRow& row : ClientControls()) {
        const bool changes = IsFilledAtRunTime(row.Kind);
        const int count = static_cast<int>(row.Of(panel).size());
        for (int index = 0; changes && index < count; ++index) {
            const std::string shows = ControlDescription(row, index);
            EXPECT_FALSE(shows.empty()) << row.Name;
            EXPECT_TRUE(words.insert(shows).second) << shows;
        }
    }
    EXPECT_TRUE(words.contains("Channel 1 reading"));
    EXPECT_TRUE(words.contains("Pulse channel 2 reading"));
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
    EXPECT_EQ(panel.lblMax[7].Text, "0.000");
    EXPECT_EQ(panel.lblMin[0].Text, "0.000");
    EXPECT_EQ(panel.lblValue[0].Text, "");
    EXPECT_EQ(panel.lblData2[9].Text, "");
}

}  // namespace
}  // namespace client_test
