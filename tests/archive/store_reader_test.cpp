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
    int pieces = 0;
    DeleteLogger(*store, id, [&pieces] { ++pieces; });
    EXPECT_GE(pieces, 3);
    EXPECT_TRUE(store->Loggers().empty());
    EXPECT_TRUE(store->UploadsOf(id).empty());
    EXPECT_TRUE(store->SettingsOf(id).empty());
    EXPECT_EQ(store->LastRecord(id), std::nullopt);
    File(2, {1});
    EXPECT_NE(merge.Logger().Id, id);
}

ORVIA_FOR_ALL_STORES(ReaderTest);

}  // namespace
}  // namespace testing_support
