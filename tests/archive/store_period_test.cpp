// Figures of a period are the same, whether just what they need was read or all.

#include <cmath>
#include <random>

#include "archive/pulse_counts.h"
#include "archive/series_maker.h"
#include "archive/statistics.h"
#include "archive/store_fixture.h"
#include "archive/volume.h"

namespace testing_support {
namespace {

constexpr std::array<int, 6> Styles = {0, 1, 2, 3, 128, 130};

class PeriodReading : public StoreTest {
 protected:
    /// Makes a logger whose records a few uploads held, each with settings of its own.
    void Fill(unsigned seed) {
        random_.seed(seed);
        ArchiveLogger logger{.Mac = {1, 2, 3, 4, 5, static_cast<std::uint8_t>(seed)}, .Name = "A"};
        store->AddLogger(logger);
        id_ = logger.Id;
        std::vector<std::int64_t> uploads;
        for (int i = 0; i < 3; ++i) {
            uploads.push_back(AddUpload());
        }
        const std::size_t count = 1 + random_() % 60;
        std::vector<ArchiveRecord> rows;
        Moment at = SomeDay;
        for (std::size_t i = 0; i < count; ++i) {
            at = NextMoment(at);
            rows.push_back({.Place = static_cast<std::int64_t>(1 + 3 * i),
                            .Time = TimeNumber(AnyPacked(at)),
                            .Counts = {static_cast<std::uint16_t>(random_() % 1000),
                                       static_cast<std::uint16_t>(random_())},
                            .Nth = 1,
                            .Upload = uploads[i * uploads.size() / count]});
        }
        ArchiveTransaction transaction(*store, ArchiveTransaction::Kind::Writing);
        store->AddRecords(id_, rows);
        transaction.Commit();
    }
    /// A period somewhere around the records, of a minute to a year.
    [[nodiscard]] Period AnyPeriod() {
        const auto begin =
            SomeDay - 20 * SecondsPerDay + static_cast<Moment>(random_() % (150 * SecondsPerDay));
        const std::array<Moment, 5> lengths = {60, 3600, SecondsPerDay, 30 * SecondsPerDay,
                                               366 * SecondsPerDay};
        return {begin, begin + lengths[random_() % lengths.size()]};
    }
    [[nodiscard]] std::int64_t Id() const { return id_; }

 private:
    [[nodiscard]] std::int64_t AddUpload() {
        SeriesMaker maker(1, 1);
        maker.FlowIsLevel(1);
        LoggerRecord& settings = maker.Logger();
        settings.LoggingStyle = static_cast<std::uint8_t>(Styles[random_() % Styles.size()]);
        settings.SampleInterval = std::to_string(1 + random_() % 90) + " minutes";
        ArchiveSettings row = SettingsRow(settings, FlowTable());
        store->AddSettings(id_, row);
        ArchiveUpload upload{.Logger = id_, .Begin = ++begun_, .Settings = row.Id};
        store->AddUpload(upload);
        return upload.Id;
    }
    [[nodiscard]] Moment NextMoment(Moment at) {
        const std::array<Moment, 6> steps = {0, 60, 900, 3600, 400'000, 4'000'000};
        return random_() % 6 == 0 ? at - static_cast<Moment>(random_() % (40 * SecondsPerDay))
                                  : at + steps[random_() % steps.size()];
    }
    /// Now and then a date that is none.
    [[nodiscard]] std::array<std::uint8_t, 4> AnyPacked(Moment at) {
        if (random_() % 8 != 0) {
            return Packed(at);
        }
        const LocalTime time = TimeOfMoment(at);
        return Packed(time.Year, time.Month, random_() % 2 == 0 ? 31 : 0,
                      static_cast<int>(random_() % 32), static_cast<int>(random_() % 64));
    }

    std::mt19937 random_;
    std::int64_t id_ = 0;
    std::int64_t begun_ = 0;
};

void ExpectSameStatistics(const SeriesValues& one, const SeriesValues& other,
                          const Periods& periods) {
    const auto figures = [&periods](const SeriesValues& values) {
        return StatisticsOf(values, 0, periods).front();
    };
    const ColumnStatistics read = figures(one);
    const ColumnStatistics all = figures(other);
    EXPECT_EQ(read.Count, all.Count);
    EXPECT_EQ(read.Mean, all.Mean);
    EXPECT_EQ(read.Minimum.has_value(), all.Minimum.has_value());
    if (read.Minimum && all.Minimum) {
        EXPECT_EQ(read.Minimum->Value, all.Minimum->Value);
        EXPECT_EQ(one.Times().At(read.Maximum->Record), other.Times().At(all.Maximum->Record));
    }
}

void ExpectSameSums(const SeriesValues& one, const SeriesValues& other, const Periods& periods) {
    const auto volume = [&periods](const SeriesValues& values) {
        const auto found = VolumesOf(values, VolumeUnit::Gallons, periods).front();
        return found ? std::pair(found->Volume, found->Covered) : std::pair(-1.0, Moment{-1});
    };
    EXPECT_EQ(volume(one), volume(other));
    const auto pulses = [&periods](const SeriesValues& values) {
        const auto found = PulseTotalsOf(values, 1, periods).front();
        return found ? std::tuple(found->Total, found->Resets, found->RollOvers)
                     : std::tuple(-1.0, std::int64_t{-1}, std::int64_t{-1});
    };
    EXPECT_EQ(pulses(one), pulses(other));
}

void ExpectSameAttendance(const SeriesValues& one, const SeriesValues& other,
                          const Periods& periods) {
    const Attendance read = AttendanceOf(one.Times(), periods).front();
    const Attendance all = AttendanceOf(other.Times(), periods).front();
    EXPECT_EQ(read.Records, all.Records);
    EXPECT_EQ(read.Scheduled, all.Scheduled);
    EXPECT_EQ(read.Due, all.Due);
    EXPECT_EQ(read.Gaps, all.Gaps);
    EXPECT_EQ(read.ClockChanges, all.ClockChanges);
}

TEST_P(PeriodReading, GivesTheFiguresThatTheWholeSeriesGives) {
    std::size_t spared = 0;
    std::size_t without = 0;
    for (unsigned seed = 0; seed < 60; ++seed) {
        Fill(seed);
        const Series all = ReadSeries(*store, Id());
        const SeriesValues allValues(all);
        for (int i = 0; i < 12; ++i) {
            const Period period = AnyPeriod();
            SCOPED_TRACE(std::to_string(seed) + ": " + IsoText(period.Begin) + " to " +
                         IsoText(period.End));
            const Series read = ReadSeries(*store, Id(), period);
            const SeriesValues values(read);
            ASSERT_EQ(values.Columns().size(), allValues.Columns().size());
            const Periods periods(period);
            ExpectSameStatistics(values, allValues, periods);
            ExpectSameSums(values, allValues, periods);
            ExpectSameAttendance(values, allValues, periods);
            spared += all.Records.size() - read.Records.size();
            without += AttendanceOf(values.Times(), periods).front().Records == 0 ? 1 : 0;
        }
    }
    EXPECT_GT(spared, 5000U);
    EXPECT_GT(without, 50U);
}

ORVIA_FOR_ALL_STORES(PeriodReading);

TEST(TimeNumberAt, WritesAMomentAsAPackedTime) {
    for (const Moment at : {Moment{0}, SomeDay, SomeDay + 86'399, At(2085, 4, 30, 23, 59, 59)}) {
        EXPECT_EQ(PackedTimeOf(TimeNumberAt(at)), Packed(at));
        EXPECT_EQ(MomentOf(PackedTimeOf(TimeNumberAt(at))), at);
    }
    EXPECT_EQ(TimeNumberAt(-1), 0U);
    EXPECT_EQ(TimeNumberAt(At(2085, 5, 1)), 0xFFFFFFFF);
    EXPECT_EQ(TimeNumberAt(At(3000, 1, 1)), 0xFFFFFFFF);
}

}  // namespace
}  // namespace testing_support
