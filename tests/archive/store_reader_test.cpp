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
    [[nodiscard]] std::vector<std::uint32_t> Within(std::uint32_t first, std::uint32_t last) {
        return TimesOf(ReadSeries(*store, merge.Logger().Id, {.First = first, .Last = last}));
    }

    MergeBench merge{*store};
};

using Numbers = std::vector<std::uint32_t>;

TEST_P(ReaderTest, APeriodHasItsEndsAndKeepsTheOrderOfTheSeries) {
    File(1, {50, 60, 10, 20, 55, 70});
    EXPECT_EQ(Within(20, 60), (Numbers{50, 60, 20, 55}));
    EXPECT_EQ(Within(61, 69), Numbers{});
    EXPECT_EQ(Within(0, 0xFFFFFFFF), (Numbers{50, 60, 10, 20, 55, 70}));
    EXPECT_EQ(TimesOf(ReadSeries(*store, merge.Logger().Id)), Within(0, 0xFFFFFFFF));
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
