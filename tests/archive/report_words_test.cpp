#include "archive/report_words.h"

#include <gmock/gmock.h>

#include "archive/american_clock.h"
#include "archive/series_maker.h"

namespace testing_support {
namespace {

using testing::ElementsAre;

class ReportWordsTest : public testing::Test {
 protected:
    Report Make() {
        return MakeReport(SeriesValues(maker.Made), {span, PeriodStep::Day, {}, "", ""}, clock);
    }
    AmericanClock clock;
    SeriesMaker maker{1, 1};
    Period span{SomeDay, SomeDay + 2 * SecondsPerDay};
};

TEST_F(ReportWordsTest, TitlesTellWhatTheRowsAre) {
    EXPECT_EQ(ReportTitle(PeriodStep::Day), "Daily Report");
    EXPECT_EQ(ReportTitle(PeriodStep::Week), "Weekly Report");
    EXPECT_EQ(ReportTitle(PeriodStep::Month), "Monthly Report");
}

TEST_F(ReportWordsTest, TheSummaryTellsWhatTheTotalDoes) {
    maker.Logger().SampleInterval = "1 day";
    maker.Add(SomeDay, {10, 1});
    EXPECT_TRUE(HasRecords(Make()));
    EXPECT_EQ(SummaryText(Make()), "1 record of 2 due, 50.0 % complete, 0 gaps");
    maker.Add(SomeDay + SecondsPerDay, {10, 1});
    EXPECT_EQ(SummaryText(Make()), "2 records of 2 due, 100.0 % complete, 0 gaps");
}

TEST_F(ReportWordsTest, TheSummaryTellsOfGapsAndClockChanges) {
    for (const Moment time : {0, 900, 3600, 1800, 2700, 900}) {
        maker.Add(SomeDay + time, {10, 1});
    }
    EXPECT_EQ(SummaryText(Make()),
              "6 records of 195 due, 3.1 % complete, 1 gap, clock set back 2 times");
}

TEST_F(ReportWordsTest, TheSummarySaysNothingOfWhatIsDueWhereNothingTells) {
    maker.Logger().LoggingStyle = 1;
    maker.Logger().SampleInterval = "0 minutes";
    maker.Add(SomeDay, {10, 1});
    EXPECT_EQ(SummaryText(Make()), "1 record, 0 gaps");
}

TEST_F(ReportWordsTest, TheSummarySaysWhatIsMissing) {
    EXPECT_EQ(SummaryText(Make()), "There are no records in this period.");
    EXPECT_FALSE(HasRecords(Make()));
    span = {};
    EXPECT_EQ(SummaryText(Make()), "There is no period to report on.");
    EXPECT_FALSE(HasRecords(Make()));
}

TEST_F(ReportWordsTest, ThePageTellsHowCompleteItIsBeforeWhoMadeIt) {
    maker.Logger().SampleInterval = "1 day";
    maker.Add(SomeDay, {10, 1});
    const Report report = Make();
    EXPECT_THAT(PageHeadOf(report),
                ElementsAre(ReportLine{"Logger", "Pump 3"},
                            ReportLine{"Period", "1/14/24 00:00:00 - 1/15/24 23:59:59"},
                            ReportLine{"Records", SummaryText(report)},
                            ReportLine{"Made", "11/15/2026 11:21:05 PM"}));
}

TEST_F(ReportWordsTest, OneLineTellsThePeriodAndHowCompleteItIs) {
    EXPECT_EQ(PeriodSummary(Make()),
              "1/14/24 00:00:00 - 1/15/24 23:59:59: There are no records in this period.");
    span = {};
    EXPECT_EQ(PeriodSummary(Make()), "There is no period to report on.");
}

TEST_F(ReportWordsTest, NeighboursOfAGroupStandTogether) {
    const std::vector<ReportColumn> columns = {{"", "Period"}, {"", "Records"}, {"A", "Minimum"},
                                               {"A", "At"},    {"B", "Total"},  {"A", "Mean"}};
    EXPECT_THAT(GroupsOf(columns),
                ElementsAre(ColumnGroup{"", 0, 1}, ColumnGroup{"", 1, 1}, ColumnGroup{"A", 2, 2},
                            ColumnGroup{"B", 4, 1}, ColumnGroup{"A", 5, 1}));
}

TEST_F(ReportWordsTest, SpreadsheetsGetTabsBetweenCells) {
    Report report;
    report.Columns = {{"", "Period"}, {"Channel 1 (Feet)", "Mean"}};
    report.Rows = {{"1/14/24", "1.00"}, {"1/15/24", ""}};
    report.Total = {"1/14/24 - 1/15/24", "1.00"};
    EXPECT_EQ(ReportTabText(report),
              "Period\tChannel 1 (Feet) Mean\n1/14/24\t1.00\n1/15/24\t\n"
              "1/14/24 - 1/15/24\t1.00\n");
    EXPECT_EQ(RowsTabText(report, std::vector<std::size_t>{1, 2}),
              "1/15/24\t\n1/14/24 - 1/15/24\t1.00\n");
    report.Rows.clear();
    report.Total.clear();
    EXPECT_EQ(ReportTabText(report), "Period\tChannel 1 (Feet) Mean\n");
}

}  // namespace
}  // namespace testing_support
