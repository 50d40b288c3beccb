// Whatever the records, the figures of parts add up to those of the whole.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "archive/pulse_counts.h"
#include "archive/report.h"
#include "archive/series_maker.h"
#include "archive/statistics.h"
#include "archive/volume.h"
#include "support/virtual_host.h"

namespace testing_support {
namespace {

constexpr std::array<int, 6> Styles = {0, 1, 2, 3, 128, 130};

/// Any series: styles, units, gaps, clocks set back, resets.
Series RandomSeries(std::mt19937& random) {
    SeriesMaker maker(1, 1);
    maker.FlowIsLevel(static_cast<int>(random() % 5));
    for (int i = 0; i < 3; ++i) {
        LoggerRecord& logger = maker.Change();
        logger.LoggingStyle = static_cast<std::uint8_t>(Styles[random() % Styles.size()]);
        logger.SampleInterval = std::to_string(1 + random() % 90) + " minutes";
        logger.FlowUnits = static_cast<std::uint8_t>(random() % 5);
        logger.FlowMode = random() % 5 == 0 ? 0 : 3;
    }
    Moment at = SomeDay;
    std::size_t settings = 0;
    const std::size_t records = random() % 400;
    for (std::size_t i = 0; i < records; ++i) {
        if (random() % 40 == 0) {
            settings = random() % maker.Made.Settings.size();
        }
        const std::array<Moment, 5> steps = {0, 60, 900, 3600, 40'000};
        at += random() % 50 == 0 ? -static_cast<Moment>(random() % 200'000)
                                 : steps[random() % steps.size()];
        maker.Add(at, {static_cast<int>(random() % 1000), static_cast<int>(random() % 65'536)},
                  settings);
    }
    return maker.Made;
}

struct Sums {
    double Volume = 0;
    Moment Covered = 0;
    double Pulses = 0;
    std::int64_t Resets = 0;
    Attendance Present;
    std::int64_t Count = 0;
};

void AddPulses(const SeriesValues& values, const Periods& periods, Sums& sums) {
    for (std::size_t column = 0; column < values.Columns().size(); ++column) {
        if (values.Columns()[column].Kind == ColumnKind::Pulse) {
            for (const auto& total : PulseTotalsOf(values, column, periods)) {
                sums.Pulses += total ? total->Pulses : 0;
                sums.Resets += total ? total->Resets : 0;
            }
        }
    }
}

Sums SumsOf(const Series& series, const Periods& periods) {
    const SeriesValues values(series);
    Sums sums;
    for (const auto& volume : VolumesOf(values, VolumeUnit::CubicFeet, periods)) {
        sums.Volume += volume ? volume->Volume : 0;
        sums.Covered += volume ? volume->Covered : 0;
    }
    AddPulses(values, periods, sums);
    for (const Attendance& period : AttendanceOf(values.Times(), periods)) {
        EXPECT_LE(period.Scheduled, period.Due);
        sums.Present.Records += period.Records;
        sums.Present.Due += period.Due;
        sums.Present.Gaps += period.Gaps;
        sums.Present.ClockChanges += period.ClockChanges;
    }
    for (const ColumnStatistics& period : StatisticsOf(values, 0, periods)) {
        sums.Count += period.Count;
    }
    return sums;
}

void ExpectSame(const Sums& parts, const Sums& whole) {
    EXPECT_NEAR(parts.Volume, whole.Volume, 1e-9 * std::max(1.0, whole.Volume));
    EXPECT_EQ(parts.Covered, whole.Covered);
    EXPECT_NEAR(parts.Pulses, whole.Pulses, 1e-9 * std::max(1.0, whole.Pulses));
    EXPECT_EQ(parts.Resets, whole.Resets);
    EXPECT_EQ(parts.Present.Records, whole.Present.Records);
    EXPECT_EQ(parts.Present.Due, whole.Present.Due);
    EXPECT_EQ(parts.Present.Gaps, whole.Present.Gaps);
    EXPECT_EQ(parts.Present.ClockChanges, whole.Present.ClockChanges);
    EXPECT_EQ(parts.Count, whole.Count);
}

TEST(Additivity, DaysAndWeeksAddUpToTheWholeAndItsMonths) {
    std::mt19937 random(2024);
    double volume = 0;
    for (int i = 0; i < 60; ++i) {
        const Series series = RandomSeries(random);
        const Period span{MonthBegin(SomeDay - SecondsPerWeek), At(2024, 5, 1)};
        const Sums whole = SumsOf(series, Periods(span));
        volume += whole.Volume;
        ExpectSame(SumsOf(series, Periods(span, PeriodStep::Day)), whole);
        ExpectSame(SumsOf(series, Periods(span, PeriodStep::Week)), whole);
        ExpectSame(SumsOf(series, Periods(span, PeriodStep::Month)), whole);
    }
    EXPECT_GT(volume, 0);
}

TEST(Additivity, SplittingAPeriodAnywhereLeavesItsTotals) {
    std::mt19937 random(11);
    for (int i = 0; i < 200; ++i) {
        const Series series = RandomSeries(random);
        const Moment begin = SomeDay - 100'000 + static_cast<Moment>(random() % 400'000);
        const Moment end = begin + 2 + static_cast<Moment>(random() % 3'000'000);
        const Moment middle = begin + 1 + static_cast<Moment>(random() % (end - begin - 1));
        const Sums first = SumsOf(series, Periods({begin, middle}));
        const Sums second = SumsOf(series, Periods({middle, end}));
        Sums both = first;
        both.Volume += second.Volume;
        both.Covered += second.Covered;
        both.Pulses += second.Pulses;
        both.Resets += second.Resets;
        both.Present.Records += second.Present.Records;
        both.Present.Due += second.Present.Due;
        both.Present.Gaps += second.Present.Gaps;
        both.Present.ClockChanges += second.Present.ClockChanges;
        both.Count += second.Count;
        ExpectSame(both, SumsOf(series, Periods({begin, end})));
    }
}

TEST(Additivity, OrderOfTheSettingsAndSettingsTwiceChangeNoFigure) {
    std::mt19937 random(7);
    const VirtualHost host;
    for (int i = 0; i < 40; ++i) {
        const Series series = RandomSeries(random);
        Series other = series;
        std::reverse(other.Settings.begin(), other.Settings.end());
        other.Settings.insert(other.Settings.end(), series.Settings.begin(), series.Settings.end());
        const auto count = static_cast<std::uint32_t>(series.Settings.size());
        for (SeriesRecord& record : other.Records) {
            record.Settings =
                random() % 2 == 0 ? count - 1 - record.Settings : count + record.Settings;
        }
        if (series.Records.empty()) {
            continue;
        }
        const ReportRequest request{
            {SomeDay, SomeDay + 30 * SecondsPerDay}, PeriodStep::Week, std::nullopt, "", ""};
        const Report one = MakeReport(SeriesValues(series), request, host.Clock);
        const Report two = MakeReport(SeriesValues(other), request, host.Clock);
        EXPECT_EQ(one.Columns, two.Columns);
        EXPECT_EQ(one.Rows, two.Rows);
        EXPECT_EQ(one.Total, two.Total);
    }
}

TEST(Additivity, AnyBytesGiveFiniteFigures) {
    std::mt19937 random(99);
    const VirtualHost host;
    Series series = RandomSeries(random);
    series.Settings[1].Logger.UpperLimit[0] = 1.7e308;
    series.Settings[2].Logger.PulseUnit[0] = -1.7e308;
    series.Records.resize(300);
    for (SeriesRecord& record : series.Records) {
        for (std::uint8_t& byte : record.Record.Time) {
            byte = static_cast<std::uint8_t>(random());
        }
        for (std::uint16_t& count : record.Record.Raw) {
            count = static_cast<std::uint16_t>(random());
        }
        record.Settings = random() % 5;  // one of them is missing
    }
    const SeriesValues values(series);
    const Periods months({EarliestMoment, LatestMoment}, PeriodStep::Month);
    for (std::size_t column = 0; column < values.Columns().size(); ++column) {
        for (const ColumnStatistics& period : StatisticsOf(values, column, months)) {
            EXPECT_TRUE(std::isfinite(period.Mean.value_or(0)));
        }
        if (values.Columns()[column].Kind == ColumnKind::Pulse) {
            for (const auto& total : PulseTotalsOf(values, column, months)) {
                EXPECT_TRUE(!total || std::isfinite(total->Total));
            }
        }
    }
    for (const auto& volume : VolumesOf(values, VolumeUnit::Liters, months)) {
        EXPECT_TRUE(!volume || std::isfinite(volume->Volume));
    }
}

}  // namespace
}  // namespace testing_support
