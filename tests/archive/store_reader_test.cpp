#include <QFileInfo>

#include "archive/gap_count.h"
#include "archive/gaps.h"
#include "archive/series_maker.h"
#include "archive/store_fixture.h"

namespace testing_support {
namespace {

class ReaderTest : public StoreTest {
 protected:
    void File(std::int64_t begin, const std::vector<std::uint32_t>& times) {
        HeldUpload upload{.Begin = begin, .Records = {}};
        for (const std::uint32_t time : times) {
            upload.Records.push_back(RecordAt(time));
        }
        merge.File(upload);
    }
    [[nodiscard]] std::vector<std::uint32_t> TimesOf(const Series& series) {
        std::vector<std::uint32_t> times;
        for (const SeriesRecord& one : series.Records) {
            times.push_back(TimeNumber(one.Record.Time));
        }
        return times;
    }
    /// Times of the records read for a period that the packed times of both ends tell.
    [[nodiscard]] std::vector<std::uint32_t> Within(std::uint32_t first, std::uint32_t last) {
        return TimesOf(ReadSeries(
            *store, merge.Logger().Id,
            {.Begin = MomentOf(PackedTimeOf(first)), .End = MomentOf(PackedTimeOf(last)) + 1}));
    }

    MergeBench merge{*store};
};

using Numbers = std::vector<std::uint32_t>;

/// The packed time of midnight, so many months behind January 2000.
constexpr std::uint32_t MonthAt(std::uint32_t months, std::uint32_t day = 1) {
    return months << 22 | day << 17;
}

TEST_P(ReaderTest, APeriodComesWithTheRecordBeforeAndTheOneBehind) {
    File(1, {MonthAt(1), MonthAt(2), MonthAt(3), MonthAt(4), MonthAt(5), MonthAt(6)});
    EXPECT_EQ(Within(MonthAt(3), MonthAt(4)),
              (Numbers{MonthAt(2), MonthAt(3), MonthAt(4), MonthAt(5)}));
    EXPECT_EQ(Within(MonthAt(1), MonthAt(2)), (Numbers{MonthAt(1), MonthAt(2), MonthAt(3)}));
    EXPECT_EQ(Within(MonthAt(5), MonthAt(6)), (Numbers{MonthAt(4), MonthAt(5), MonthAt(6)}));
    EXPECT_EQ(TimesOf(ReadSeries(*store, merge.Logger().Id)).size(), 6U);
}

TEST_P(ReaderTest, APeriodWithoutRecordsComesWithThoseAroundIt) {
    File(1, {MonthAt(1), MonthAt(2), MonthAt(4), MonthAt(5)});
    EXPECT_EQ(Within(MonthAt(2, 20), MonthAt(3, 20)), (Numbers{MonthAt(2), MonthAt(4)}));
    EXPECT_EQ(Within(MonthAt(7), MonthAt(8)), (Numbers{MonthAt(4), MonthAt(5)}));
    EXPECT_EQ(Within(MonthAt(0), MonthAt(0, 10)), (Numbers{MonthAt(1), MonthAt(2)}));
}

TEST_P(ReaderTest, RecordsBetweenWhoseClockStoodElsewhereAreNotLeftOut) {
    File(1, {MonthAt(1), MonthAt(4), MonthAt(9), MonthAt(4, 2), MonthAt(11), MonthAt(12)});
    EXPECT_EQ(Within(MonthAt(4), MonthAt(4, 10)),
              (Numbers{MonthAt(1), MonthAt(4), MonthAt(9), MonthAt(4, 2), MonthAt(11)}));
}

TEST_P(ReaderTest, APairThatLeapsOverThePeriodElsewhereIsRead) {
    File(1, {MonthAt(1), MonthAt(8), MonthAt(2), MonthAt(4), MonthAt(8, 9), MonthAt(9)});
    EXPECT_EQ(Within(MonthAt(4), MonthAt(4, 10)),
              (Numbers{MonthAt(1), MonthAt(8), MonthAt(2), MonthAt(4), MonthAt(8, 9)}));
}

TEST_P(ReaderTest, EveryValueComesBackAsItCame) {
    HeldUpload upload{.Begin = 1, .Records = {}};
    for (const std::uint16_t one : {0, 1, 32767, 32768, 65535}) {
        HistoryRecord record;
        record.Time = {0xFF, 0xFE, static_cast<std::uint8_t>(one), 0x80};
        for (std::size_t i = 0; i < record.Raw.size(); ++i) {
            record.Raw[i] = static_cast<std::uint16_t>(one + i);
        }
        upload.Records.push_back(record);
    }
    merge.File(upload);
    const Series series = ReadSeries(*store, merge.Logger().Id);
    ASSERT_EQ(series.Records.size(), upload.Records.size());
    for (std::size_t i = 0; i < upload.Records.size(); ++i) {
        EXPECT_EQ(series.Records[i].Record, upload.Records[i]);
    }
}

TEST_P(ReaderTest, TheListTellsFirstAndLastRecordAndTheShareOfTheSize) {
    File(1, {50, 60, 10});
    ArchiveLogger empty{.Mac = {1, 2, 3, 4, 5, 6}, .Name = "A"};
    store->AddLogger(empty);
    const auto list = ListLoggers(*store);
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].Logger.Mac, empty.Mac);
    EXPECT_EQ(list[0].First, std::nullopt);
    EXPECT_EQ(list[0].SizeInBytes, 0);
    EXPECT_EQ(list[1].First->Time, 50U);
    EXPECT_EQ(list[1].Last->Time, 10U);
    EXPECT_EQ(list[1].SizeInBytes, store->SizeInBytes());
    EXPECT_GT(list[1].SizeInBytes, 4096);
}

TEST_P(ReaderTest, ADeletedLoggerLeavesNothing) {
    Numbers many(5000);
    for (std::uint32_t i = 0; i < many.size(); ++i) {
        many[i] = i;
    }
    File(1, many);
    const std::int64_t id = merge.Logger().Id;
    ArchiveSettings settings;
    settings.Image = {1, 2, 3};
    settings.Points = {{1, 2}};
    store->AddSettings(id, settings);
    const ArchiveLogger asked = merge.Logger();
    int pieces = 1;
    for (std::int64_t left = asked.Records; left > 0; ++pieces) {
        const Deletion now = DeletePiece(*store, asked);
        ASSERT_LT(now.Left, left);
        left = now.Left;
        EXPECT_EQ(now.Now == Deletion::State::Done, left == 0);
        EXPECT_EQ(store->Loggers().size(), left == 0 ? 0U : 1U);
    }
    EXPECT_GE(pieces, 3);
    EXPECT_TRUE(store->Loggers().empty());
    EXPECT_TRUE(store->UploadsOf(id).empty());
    EXPECT_TRUE(store->SettingsOf(id).empty());
    EXPECT_EQ(store->LastRecord(id), std::nullopt);
    File(2, {1});
    EXPECT_NE(merge.Logger().Id, id);
}

TEST_P(ReaderTest, ALoggerThatWasUploadedMeanwhileIsDeletedNoFurther) {
    File(1, {1, 2, 3});
    const ArchiveLogger asked = merge.Logger();
    ArchiveLogger uploaded = asked;
    ++uploaded.Uploads;
    store->UpdateLogger(uploaded);
    EXPECT_EQ(DeletePiece(*store, asked).Now, Deletion::State::Refused);
    EXPECT_EQ(merge.Rows().size(), 3U);
}

TEST_P(ReaderTest, TheListReadsAnewJustWhatChanged) {
    File(1, {50, 60});
    auto known = ListLoggers(*store);
    known[0].Last->Time = 1;
    EXPECT_EQ(ListLoggers(*store, known)[0].Last->Time, 1U) << "not from what was known";
    File(2, {70});
    EXPECT_EQ(ListLoggers(*store, known)[0].Last->Time, 70U);
}

TEST_P(ReaderTest, TheStampTellsOfEveryChangeByWhomever) {
    const std::int64_t fresh = store->Stamp();
    EXPECT_EQ(store->Stamp(), fresh);
    File(1, {50});
    const std::int64_t own = store->Stamp();
    EXPECT_NE(own, fresh);
    static_cast<void>(ListLoggers(*store));
    EXPECT_EQ(store->Stamp(), own);
    const auto other = bench->NewStore();
    other->Open();
    ArchiveLogger logger{.Mac = {9}, .Name = "B"};
    other->AddLogger(logger);
    EXPECT_NE(store->Stamp(), own);
}

TEST_P(ReaderTest, LookingWhetherThereIsAnArchiveMakesNone) {
    EXPECT_TRUE(store->Exists());
    SqliteBench nowhere;
    const auto none = nowhere.NewStore();
    EXPECT_FALSE(none->Exists());
    EXPECT_FALSE(QFileInfo::exists(nowhere.File()));
}

TEST_P(ReaderTest, GapsAreCountedInPortionsAsInTheWholeSeries) {
    SeriesMaker maker(1, 0);
    ArchiveSettings row = SettingsRow(maker.Logger(), FlowTable());
    const std::int64_t id = merge.Logger().Id;
    store->AddSettings(id, row);
    ArchiveUpload upload{.Logger = id, .Begin = 9, .Settings = row.Id};
    store->AddUpload(upload);
    std::vector<ArchiveRecord> rows;
    Moment at = SomeDay;
    for (std::int64_t i = 1; i <= 10'000; ++i) {
        at += i % 1000 == 0 ? 3600 : i % 1500 == 0 ? -60 : 900;
        rows.push_back({.Place = i, .Time = TimeNumberAt(at), .Upload = upload.Id});
    }
    store->AddRecords(id, rows);
    GapCount count(id);
    int portions = 1;
    while (!count.Portion(*store)) {
        ++portions;
    }
    EXPECT_GT(portions, 1);
    EXPECT_EQ(count.Gaps(), 10);
    const Series all = ReadSeries(*store, id);
    EXPECT_EQ(FindBreaks(SeriesTimes(all)).Gaps.size(), 10U);
}

TEST_P(ReaderTest, CountingGapsBeginsAnewWhenTheSeriesHasChanged) {
    Numbers many(6000);
    for (std::uint32_t i = 0; i < many.size(); ++i) {
        many[i] = i;
    }
    File(1, many);
    GapCount count(merge.Logger().Id);
    EXPECT_FALSE(count.Portion(*store));
    File(2, {100'000'000});
    EXPECT_FALSE(count.Portion(*store)) << "it went on behind what it had read";
    EXPECT_TRUE(count.Portion(*store));
    EXPECT_EQ(count.Revision(), merge.Logger().Revision);
}

ORVIA_FOR_ALL_STORES(ReaderTest);

}  // namespace
}  // namespace testing_support
