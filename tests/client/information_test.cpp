#include "client/information.h"

#include <gtest/gtest.h>

#include "client_fixture.h"

namespace client_test {
namespace {

struct AlarmTime {
    std::int16_t Hour;
    std::int16_t Minute;
    std::int16_t Second;
    const char* Text;
    const char* Case;
};

class AlarmTexts : public ::testing::TestWithParam<AlarmTime> {};

TEST_P(AlarmTexts, AreInATwelveHourClock) {
    LoggerRecord record;
    record.AlarmHour[1] = GetParam().Hour;
    record.AlarmMin[1] = GetParam().Minute;
    record.AlarmSec[1] = GetParam().Second;
    EXPECT_EQ(AlarmText(record, 1), GetParam().Text);
}

INSTANTIATE_TEST_SUITE_P(
    Hours, AlarmTexts,
    ::testing::Values(AlarmTime{0, 5, 9, "12:05:09 AM", "HourZeroIsTwelveInTheMorning"},
                      AlarmTime{1, 0, 0, "1:00:00 AM", "HourOneHasNoLeadingZero"},
                      AlarmTime{11, 59, 59, "11:59:59 AM", "HourElevenIsTheLastInTheMorning"},
                      AlarmTime{12, 5, 9, "12:05:09 PM", "HourTwelveIsNoon"},
                      AlarmTime{13, 5, 9, "1:05:09 PM", "HourThirteenIsOneInTheAfternoon"},
                      AlarmTime{23, 10, 10, "11:10:10 PM", "HourTwentyThreeIsElevenAtNight"}),
    [](const auto& alarm) { return alarm.param.Case; });

struct Interval {
    std::uint8_t Style;
    const char* Text;
    const char* Case;
};

class Intervals : public ::testing::TestWithParam<Interval> {};

TEST_P(Intervals, FollowTheLowTwoBitsOfTheLoggingStyle) {
    LoggerRecord record;
    record.SampleInterval = "5 minutes";
    record.LoggingStyle = GetParam().Style;
    ClientPanel panel;
    ShowSettings(record, panel);
    EXPECT_EQ(panel.lblSampleInterval.Text, GetParam().Text);
    EXPECT_EQ(panel.lblSampleInterval2.Text, GetParam().Text);
}

INSTANTIATE_TEST_SUITE_P(
    Styles, Intervals,
    ::testing::Values(Interval{0, "5 minutes", "StyleZeroIsAnOrdinaryInterval"},
                      Interval{1, "Logarithmic", "StyleOneIsLogarithmic"},
                      Interval{2, "Fast", "StyleTwoIsFast"},
                      Interval{3, "5 minutes", "StyleThreeIsAnOrdinaryInterval"},
                      Interval{5, "Logarithmic", "StyleFiveIsLogarithmicByItsLowBits"},
                      Interval{6, "Fast", "StyleSixIsFastByItsLowBits"}),
    [](const auto& interval) { return interval.param.Case; });

TEST(Information, ShowsEveryLabelAndItsTwin) {
    LoggerRecord record;
    record.LoggerTime = "09/30/23 12:05:09";
    record.LoggerName = "Weir & Co";
    record.LoggingState = "Logging";
    record.SensorWarmupTime = 3;
    record.NumSamples = 1234;
    ClientPanel panel;
    ShowSettings(record, panel);
    EXPECT_EQ(panel.lblLoggerTime.Text, "09/30/23 12:05:09");
    EXPECT_EQ(panel.lblLoggerTime2.Text, panel.lblLoggerTime.Text);
    EXPECT_EQ(panel.lblLoggerName.Text, "Weir & Co");
    EXPECT_EQ(panel.lblLoggerName2.Text, panel.lblLoggerName.Text);
    EXPECT_EQ(panel.lblLoggingState.Text, "Logging");
    EXPECT_EQ(panel.lblLoggingState2.Text, "Logging");
    EXPECT_EQ(panel.lblWarmup.Text, "3 sec");
    EXPECT_EQ(panel.lblWarmup2.Text, "3 sec");
    EXPECT_EQ(panel.lblRecords.Text, "1234");
    EXPECT_EQ(panel.lblRecords2.Text, "1234 Records");
}

TEST(Information, AnAlarmThatIsOffIsDisabled) {
    LoggerRecord record;
    record.AlarmEnable = {0, 1};
    ClientPanel panel;
    ShowSettings(record, panel);
    EXPECT_FALSE(panel.lblAlarm[0].Enabled);
    EXPECT_FALSE(panel.lblAlarm2[0].Enabled);
    EXPECT_TRUE(panel.lblAlarm[1].Enabled);
    EXPECT_TRUE(panel.lblAlarm2[1].Enabled);
    EXPECT_EQ(panel.lblAlarm2[0].Text, panel.lblAlarm[0].Text);
}

TEST(Information, EachAlarmShowsItsOwnTimeInBothItsLabels) {
    LoggerRecord record;
    record.AlarmHour = {7, 19};
    record.AlarmMin = {15, 45};
    record.AlarmSec = {1, 2};
    ClientPanel panel;
    ShowSettings(record, panel);
    EXPECT_EQ(panel.lblAlarm[0].Text, "7:15:01 AM");
    EXPECT_EQ(panel.lblAlarm2[0].Text, "7:15:01 AM");
    EXPECT_EQ(panel.lblAlarm[1].Text, "7:45:02 PM");
    EXPECT_EQ(panel.lblAlarm2[1].Text, "7:45:02 PM");
}

TEST(Information, BlankDisplayEmptiesReadingsAndInformationAndKeepsHeadings) {
    const ClientPanel design = DesignPanel();
    ClientPanel panel = design;
    for (const ControlRow& row : ClientControls()) {
        if (IsFilledAtRunTime(row.Kind)) {
            for (PanelControl& control : row.Of(panel)) {
                control.Text = "left over";
            }
        }
    }
    BlankDisplay(panel);
    for (const ControlRow& row : ClientControls()) {
        const bool blanked = IsFilledAtRunTime(row.Kind) && row.Container != "fraFlowMode";
        for (const PanelControl& control : row.Of(panel)) {
            EXPECT_EQ(control.Text.empty(),
                      blanked || row.Kind == ControlKind::Button || row.Kind == ControlKind::Column)
                << row.Name;
        }
    }
}

}  // namespace
}  // namespace client_test
