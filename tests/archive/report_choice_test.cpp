#include "archive/report_choice.h"

#include <gmock/gmock.h>

#include "archive/series_maker.h"
#include "support/virtual_host.h"

namespace testing_support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ReportChoiceTest : public testing::Test {
 protected:
    ReportChoice Choose(const Period& span = Week, const std::string& name = "Pump 3") {
        series = std::make_unique<NamedSeries>(name, maker.Made);
        return {*series, span, outside};
    }

    static inline const Period Week{SomeDay + 3600, SomeDay + 7 * SecondsPerDay + 60};
    VirtualHost host;
    Host outside = host.AsHost("/program");
    SeriesMaker maker{1, 1};
    std::unique_ptr<NamedSeries> series;
};

TEST_F(ReportChoiceTest, TakesTheSpanToTheSecond) {
    ReportChoice choice = Choose();
    EXPECT_EQ(choice.From(), SomeDay);
    EXPECT_EQ(choice.To(), SomeDay + 7 * SecondsPerDay);
    EXPECT_EQ(choice.Request().Span, Week);
    EXPECT_EQ(choice.Request().Step, PeriodStep::Day);
    EXPECT_EQ(choice.Request().Unit, std::nullopt);
}

TEST_F(ReportChoiceTest, ASpanThatEndsAtMidnightEndsWithTheDayBefore) {
    EXPECT_EQ(Choose({SomeDay, SomeDay + SecondsPerDay}).To(), SomeDay);
}

TEST_F(ReportChoiceTest, AChosenDateIsAWholeDay) {
    ReportChoice choice = Choose();
    choice.SetFrom(SomeDay + SecondsPerDay + 5);
    EXPECT_EQ(choice.Request().Span, (Period{SomeDay + SecondsPerDay, Week.End}));
    choice.SetTo(SomeDay + 2 * SecondsPerDay);
    EXPECT_EQ(choice.Request().Span,
              (Period{SomeDay + SecondsPerDay, SomeDay + 3 * SecondsPerDay}));
}

TEST_F(ReportChoiceTest, TheSameDateLeavesTheTimeOfDay) {
    ReportChoice choice = Choose();
    choice.SetFrom(SomeDay);
    choice.SetTo(SomeDay + 7 * SecondsPerDay);
    EXPECT_EQ(choice.Request().Span, Week);
}

TEST_F(ReportChoiceTest, AnEndBeforeTheBeginIsAFaultUntilItIsMended) {
    ReportChoice choice = Choose();
    EXPECT_THAT(choice.Fault(), IsEmpty());
    choice.SetTo(SomeDay - 1);
    EXPECT_EQ(choice.Fault(), "The period ends before it begins. Change one of its dates.");
    EXPECT_TRUE(choice.Request().Span.IsEmpty());
    choice.SetFrom(SomeDay - 1);
    EXPECT_THAT(choice.Fault(), IsEmpty());
    EXPECT_EQ(choice.Request().Span, (Period{SomeDay - SecondsPerDay, SomeDay}));
}

TEST_F(ReportChoiceTest, ASecondIsAPeriod) {
    EXPECT_THAT(Choose({SomeDay, SomeDay + 1}).Fault(), IsEmpty());
}

TEST_F(ReportChoiceTest, AnEmptySpanIsAllOfTheSeries) {
    maker.Add(SomeDay + 7, {1, 1});
    maker.Add(SomeDay + 907, {1, 1});
    EXPECT_EQ(Choose({}).Request().Span, (Period{SomeDay + 7, SomeDay + 908}));
}

TEST_F(ReportChoiceTest, WithoutRecordsItIsToday) {
    host.Clock.Start = {2024, 1, 14, 8, 30, 0, 0};
    EXPECT_EQ(Choose({}).Request().Span, (Period{SomeDay, SomeDay + SecondsPerDay}));
}

TEST_F(ReportChoiceTest, UnitsOfVolumeAreThoseOfTheFlow) {
    EXPECT_THAT(Choose().Units(), IsEmpty());
    maker.FlowIsLevel(4);
    maker.Add(SomeDay, {1, 1});
    ReportChoice choice = Choose();
    EXPECT_THAT(choice.Units(), ElementsAre(VolumeUnit::Liters, VolumeUnit::CubicMeters));
    EXPECT_EQ(choice.Request().Unit, VolumeUnit::Liters);
    choice.SetUnit(1);
    EXPECT_EQ(choice.Request().Unit, VolumeUnit::CubicMeters);
}

TEST_F(ReportChoiceTest, StepSiteAndNameAreAskedFor) {
    ReportChoice choice = Choose();
    choice.SetStep(PeriodStep::Month);
    choice.SetSite("Dam 4");
    choice.SetMadeBy("J. Smith");
    EXPECT_EQ(choice.Step(), PeriodStep::Month);
    EXPECT_EQ(choice.Request().Step, PeriodStep::Month);
    EXPECT_EQ(choice.Request().Site, "Dam 4");
    EXPECT_EQ(choice.Request().MadeBy, "J. Smith");
}

TEST_F(ReportChoiceTest, RemembersTheSiteOfEachLoggerAndWhoMakesReports) {
    ReportChoice first = Choose();
    first.SetSite("Dam 4");
    first.SetMadeBy("J. Smith");
    EXPECT_THAT(host.Store.Values, IsEmpty());
    first.Remember();
    EXPECT_EQ(Choose().Site(), "Dam 4");
    EXPECT_EQ(Choose().MadeBy(), "J. Smith");
    EXPECT_EQ(Choose(Week, "Pump 4").Site(), "");
    EXPECT_EQ(Choose(Week, "Pump 4").MadeBy(), "J. Smith");
}

TEST_F(ReportChoiceTest, NamesWithSlashesKeepSitesOfTheirOwn) {
    for (const char* name : {"a/b", "a\\b", "a%2Fb", "ab"}) {
        ReportChoice choice = Choose(Week, name);
        EXPECT_EQ(choice.Site(), "") << name;
        choice.SetSite(name);
        choice.Remember();
    }
    for (const char* name : {"a/b", "a\\b", "a%2Fb", "ab"}) {
        EXPECT_EQ(Choose(Week, name).Site(), name);
    }
    EXPECT_EQ(host.Store.Values.count("Report/Site a%2Fb"), 1U);
}

TEST_F(ReportChoiceTest, FilesAreNamedForLoggerReportAndTime) {
    EXPECT_EQ(DefaultReportName("Pump: 3/4", PeriodStep::Week, {2026, 11, 5, 8, 30, 0, 0}, ".pdf"),
              "Pump 34 Weekly Report 20261105-0830.pdf");
    EXPECT_EQ(DefaultReportName("", PeriodStep::Day, {2026, 11, 5, 8, 30, 0, 0}, ".csv"),
              "Daily Report 20261105-0830.csv");
}

}  // namespace
}  // namespace testing_support
