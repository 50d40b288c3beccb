#include "archive/report.h"

#include <gmock/gmock.h>

#include "archive/american_clock.h"
#include "archive/flow_device_text.h"
#include "archive/quoted_csv.h"
#include "archive/series_maker.h"
#include "support/virtual_host.h"

namespace testing_support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ReportTest : public testing::Test {
 protected:
    Report Make(PeriodStep step = PeriodStep::Day) {
        return MakeReport(SeriesValues(maker.Made), {span, step, unit, "Dam 4", "J. Smith"}, clock);
    }
    AmericanClock clock;
    SeriesMaker maker{1, 1};
    Period span{SomeDay, SomeDay + 2 * SecondsPerDay};
    std::optional<VolumeUnit> unit;
};

TEST_F(ReportTest, SaysWhereWhatWhenAndByWhom) {
    maker.FlowIsLevel(1);
    maker.Logger().FlowDeviceName = "V 90";
    maker.Add(SomeDay, {10, 1});
    EXPECT_THAT(Make().Head,
                ElementsAre(ReportLine{"Site", "Dam 4"}, ReportLine{"Logger", "Pump 3"},
                            ReportLine{"Flow Device", "Weir, V 90, Level Offset 0 Feet"},
                            ReportLine{"Period", "1/14/24 00:00:00 - 1/15/24 23:59:59"},
                            ReportLine{"Made", "11/15/2026 11:21:05 PM"},
                            ReportLine{"Made By", "J. Smith"}));
}

TEST_F(ReportTest, NamesEachLoggerNameAndFlowDeviceOfThePeriodOnce) {
    maker.FlowIsLevel(1);
    maker.Change().LevelOffset = 1;
    maker.Change().LoggerName = "Pump 4";
    maker.Change().LoggerName = "Pump 5";
    for (const std::size_t settings : {0, 1, 2, 1, 0}) {
        maker.Add(SomeDay, {10, 1}, settings);
    }
    maker.Add(SomeDay - 1, {10, 1}, 3);
    const std::vector<ReportLine> head = Make().Head;
    ASSERT_EQ(head.size(), 8U);
    EXPECT_EQ(head[1], (ReportLine{"Logger", "Pump 3"}));
    EXPECT_EQ(head[2], (ReportLine{"Logger", "Pump 4"}));
    EXPECT_EQ(head[3], (ReportLine{"Flow Device", "Weir, , Level Offset 0 Feet"}));
    EXPECT_EQ(head[4], (ReportLine{"Flow Device", "Weir, , Level Offset 1 Foot"}));
}

TEST_F(ReportTest, WorkedByHand) {
    maker.FlowIsLevel(0);
    maker.Logger().SampleInterval = "6 hours";
    maker.Logger().DecPlaces = {2, 0, 0, 0, 0, 0, 0, 0, 1, 0};
    // Levels 1, 2, 3, 2 on Sunday and 1, 1 till the next gap; ten pulses each time.
    int pulses = 0;
    for (const int level : {10, 20, 30, 20, 10, 10}) {
        maker.Add(SomeDay + Moment{pulses} / 10 * 6 * SecondsPerHour, {level, pulses});
        pulses += 10;
    }
    const Report report = Make();
    ASSERT_EQ(report.Rows.size(), 2U);
    // The volume is 1.5 + 2.5 + 2.5 + 1.5 cfs of six hours each.
    EXPECT_THAT(report.Rows[0],
                ElementsAre("1/14/24", "4", "4", "100.0 %", "0", "0", "1.00", "1/14/24 00:00:00",
                            "2.00", "3.00", "1/14/24 12:00:00", "40.0", "1.00", "1/14/24 00:00:00",
                            "2.00", "3.00", "1/14/24 12:00:00", "172800"));
    EXPECT_THAT(report.Rows[1],
                ElementsAre("1/15/24", "2", "4", "50.0 %", "0", "0", "1.00", "1/15/24 00:00:00",
                            "1.00", "1.00", "1/15/24 00:00:00", "10.0", "1.00", "1/15/24 00:00:00",
                            "1.00", "1.00", "1/15/24 00:00:00", "21600.0"));
    EXPECT_THAT(report.Total,
                ElementsAre("1/14/24 - 1/15/24", "6", "8", "75.0 %", "0", "0", "1.00",
                            "1/14/24 00:00:00", "1.67", "3.00", "1/14/24 12:00:00", "50.0", "1.00",
                            "1/14/24 00:00:00", "1.67", "3.00", "1/14/24 12:00:00", "194400"));
}

TEST_F(ReportTest, ColumnsStandInGroups) {
    maker.FlowIsLevel(0);
    unit = VolumeUnit::AcreFeet;
    std::vector<std::string> texts;
    for (const ReportColumn& column : Make().Columns) {
        texts.push_back(column.Group + "/" + column.Heading + (column.IsNumber ? "" : "*"));
    }
    EXPECT_THAT(
        texts,
        ElementsAre("/Period*", "/Records", "/Due", "/Complete", "/Gaps", "/Clock Set Back",
                    "Channel 1 (Feet)/Minimum", "Channel 1 (Feet)/At*", "Channel 1 (Feet)/Mean",
                    "Channel 1 (Feet)/Maximum", "Channel 1 (Feet)/At*", "Pulse Chan 1 (Gal)/Total",
                    "Flow (CFS)/Minimum", "Flow (CFS)/At*", "Flow (CFS)/Mean", "Flow (CFS)/Maximum",
                    "Flow (CFS)/At*", "Flow (CFS)/Volume (Acre-Feet)"));
}

TEST_F(ReportTest, EveryRowHasATextForEveryColumn) {
    maker.FlowIsLevel(1);
    maker.Logger().FlowMode = 1;
    maker.Change().EngUnits[0] = "Meters";
    maker.Add(SomeDay, {10, 1});
    maker.Add(SomeDay + 900, {10, 1}, 1);
    for (const PeriodStep step : {PeriodStep::Day, PeriodStep::Week, PeriodStep::Month}) {
        const Report report = Make(step);
        EXPECT_EQ(report.Total.size(), report.Columns.size());
        for (const auto& row : report.Rows) {
            EXPECT_EQ(row.size(), report.Columns.size());
        }
    }
}

TEST_F(ReportTest, WeeksAndMonthsAreToldByTheirDates) {
    span = {At(2024, 1, 30), At(2024, 2, 6)};
    maker.Add(At(2024, 2, 1), {1, 1});
    EXPECT_EQ(Make(PeriodStep::Week).Rows[0][0], "1/30/24 - 2/4/24");
    EXPECT_EQ(Make(PeriodStep::Week).Rows[1][0], "2/5/24");
    EXPECT_EQ(Make(PeriodStep::Month).Rows[0][0], "1/30/24 - 1/31/24");
    EXPECT_EQ(Make(PeriodStep::Month).Rows[1][0], "2/1/24 - 2/5/24");
}

TEST_F(ReportTest, EmptySpanAndEmptySeriesAreTold) {
    Report report = Make();
    EXPECT_EQ(report.Rows.size(), 2U);
    EXPECT_THAT(report.Rows[0],
                ElementsAre("1/14/24", "0", "", "", "0", "0", "", "", "", "", "", ""));
    span = {};
    report = Make();
    EXPECT_THAT(report.Rows, IsEmpty());
    EXPECT_THAT(report.Total, IsEmpty());
    EXPECT_THAT(report.Head, ElementsAre(ReportLine{"Site", "Dam 4"}, testing::_, testing::_));
    maker.Made.Settings.clear();
    EXPECT_EQ(Make().Columns.size(), 6U);
}

TEST_F(ReportTest, CsvHasHeadLinesAndTheTable) {
    maker = SeriesMaker(0, 1);
    maker.Logger().EngUnits[8] = "a\"b";
    span = {SomeDay, SomeDay + 900};
    maker.Add(SomeDay, {1});
    EXPECT_EQ(ReportCsv(Make()),
              "Site,Dam 4\r\nLogger,Pump 3\r\nPeriod,1/14/24 00:00:00 - 1/14/24 00:14:59\r\n"
              "Made,11/15/2026 11:21:05 PM\r\nMade By,J. Smith\r\n\r\n"
              "Period,Records,Due,Complete,Gaps,Clock Set Back,"
              "\"Pulse Chan 1 (a\"\"b) Total\"\r\n"
              "1/14/24,1,1,100.0 %,0,0,\r\n1/14/24,1,1,100.0 %,0,0,\r\n");
    const std::string path = FreshFolder("report") + "/out.csv";
    EXPECT_TRUE(SaveReportCsv(path, Make()));
    EXPECT_EQ(FileContents(path), ReportCsv(Make()));
    EXPECT_FALSE(SaveReportCsv(path + "/none", Make()));
}

TEST(Completeness, IsNeverRoundedUpToAll) {
    EXPECT_EQ(CompletenessText(std::nullopt), "");
    EXPECT_EQ(CompletenessText(1), "100.0 %");
    EXPECT_EQ(CompletenessText(0.99999), "99.9 %");
    EXPECT_EQ(CompletenessText(0.5), "50.0 %");
    EXPECT_EQ(CompletenessText(0), "0.0 %");
}

TEST(FlowDeviceText, NamesModeDeviceAndParameters) {
    LoggerRecord logger;
    EXPECT_EQ(FlowDeviceText(logger), "");
    logger.FlowMode = 1;
    logger.ManningsN = 0.014;
    logger.ManningsS = 1.5;
    logger.ManningsSType = 1;
    logger.ManningsD = 1;
    logger.LevelOffset = -2;
    logger.LevelOffsetType = 1;
    EXPECT_EQ(FlowDeviceText(logger),
              "Manning's Equation, Roughness 0.014, Slope 1.5 %, Pipe Diameter 1 Foot, "
              "Level Offset -2 Inches");
    logger.ManningsSType = 0;
    EXPECT_THAT(FlowDeviceText(logger), testing::HasSubstr("Slope 1.5, Pipe"));
    logger.FlowDeviceName = "X";
    logger.FlowMode = 2;
    EXPECT_EQ(FlowDeviceText(logger), "Flume, X, Level Offset -2 Inches");
    logger.FlowMode = 4;
    EXPECT_EQ(FlowDeviceText(logger), "Table Method, X, Level Offset -2 Inches");
}

TEST(QuotedCsv, QuotesWhatWouldBreakALine) {
    std::string text;
    AddCsvLine(
        std::vector<std::string>{"plain", "a,b", "say \"x\"", "two\r\nlines", "\n", "\r", ""},
        text);
    EXPECT_EQ(text, "plain,\"a,b\",\"say \"\"x\"\"\",\"two\r\nlines\",\"\n\",\"\r\",\r\n");
    text.clear();
    AddCsvLine({}, text);
    EXPECT_EQ(text, "\r\n");
}

}  // namespace
}  // namespace testing_support
