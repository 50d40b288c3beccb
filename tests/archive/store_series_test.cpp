#include <random>
#include <set>

#include "archive/store_fixture.h"

namespace testing_support {
namespace {

/// A record of the plain model, with the begin of the upload that read it first.
struct ModelRecord {
    HistoryRecord Record;
    std::int64_t Begin = 0;
    bool operator==(const ModelRecord&) const = default;
};

/// The rule of the series, slow and plain: uploads by their begin, each appends what it holds more
/// often than all before it did.
std::vector<ModelRecord> ModelSeries(std::vector<HeldUpload> uploads) {
    std::sort(uploads.begin(), uploads.end(),
              [](const HeldUpload& a, const HeldUpload& b) { return a.Begin < b.Begin; });
    std::vector<ModelRecord> series;
    const auto countIn = [](const auto& records, const HistoryRecord& record, auto get) {
        return std::count_if(records.begin(), records.end(),
                             [&](const auto& one) { return get(one) == record; });
    };
    for (const HeldUpload& upload : uploads) {
        std::vector<HistoryRecord> sofar;
        for (const HistoryRecord& record : upload.Records) {
            sofar.push_back(record);
            const auto held = countIn(sofar, record, [](const HistoryRecord& one) { return one; });
            const auto kept =
                countIn(series, record, [](const ModelRecord& one) { return one.Record; });
            if (held > kept) {
                series.push_back({record, upload.Begin});
            }
        }
    }
    return series;
}

class SeriesTest : public StoreTest {
 protected:
    /// The series with the begins of those who read each record first.
    [[nodiscard]] std::vector<ModelRecord> Series() {
        std::map<std::int64_t, std::int64_t> begins;
        for (const ArchiveUpload& upload : store->UploadsOf(merge.Logger().Id)) {
            begins[upload.Id] = upload.Begin;
        }
        std::vector<ModelRecord> series;
        for (const ArchiveRecord& row : merge.Rows()) {
            series.push_back({HistoryRecordOf(row), begins.at(row.Upload)});
        }
        return series;
    }

    /// The times alone, which name the records of a test.
    [[nodiscard]] std::vector<std::uint32_t> Times() {
        std::vector<std::uint32_t> times;
        for (const ArchiveRecord& row : merge.Rows()) {
            times.push_back(row.Time);
        }
        return times;
    }

    static HeldUpload Upload(std::int64_t begin, const std::vector<std::uint32_t>& times) {
        HeldUpload upload{.Begin = begin, .Records = {}};
        for (const std::uint32_t time : times) {
            upload.Records.push_back(RecordAt(time));
        }
        return upload;
    }

    MergeBench merge{*store};
};

using Times = std::vector<std::uint32_t>;

TEST_P(SeriesTest, ReadingAgainAddsNothing) {
    merge.File(Upload(1, {10, 20, 30}));
    merge.File(Upload(2, {10, 20, 30}));
    EXPECT_EQ(Times(), (std::vector<std::uint32_t>{10, 20, 30}));
    EXPECT_EQ(merge.Logger().Records, 3);
}

TEST_P(SeriesTest, WhatIsNewStandsBehindAndWhatWasOverwrittenStays) {
    merge.File(Upload(1, {10, 20, 30}));
    merge.File(Upload(2, {20, 30, 40, 50}));
    EXPECT_EQ(Times(), (std::vector<std::uint32_t>{10, 20, 30, 40, 50}));
}

TEST_P(SeriesTest, OrderIsTheLoggersAndNotThatOfTime) {
    merge.File(Upload(1, {50, 60, 10, 20}));
    merge.File(Upload(2, {60, 10, 20, 5, 70}));
    EXPECT_EQ(Times(), (std::vector<std::uint32_t>{50, 60, 10, 20, 5, 70}));
}

TEST_P(SeriesTest, RecordsAlikeAreHeldAsOftenAsByTheUploadThatHeldMost) {
    merge.File(Upload(1, {10, 10, 20}));
    merge.File(Upload(2, {10, 10, 10, 20}));
    merge.File(Upload(3, {10, 20}));
    const auto times = Times();
    EXPECT_EQ(std::count(times.begin(), times.end(), 10U), 3);
    EXPECT_EQ(std::count(times.begin(), times.end(), 20U), 1);
}

TEST_P(SeriesTest, AnUploadHandedOverLateGoesIntoTheMiddle) {
    merge.File(Upload(1, {10, 20}));
    merge.File(Upload(3, {50, 60}));
    merge.File(Upload(2, {20, 30, 40, 50}));
    EXPECT_EQ(Times(), (std::vector<std::uint32_t>{10, 20, 30, 40, 50, 60}));
}

TEST_P(SeriesTest, ALateUploadHasReadFirstWhatLaterOnesHold) {
    merge.File(Upload(3, {30, 40}));
    merge.File(Upload(2, {20, 30}));
    const auto series = Series();
    ASSERT_EQ(series.size(), 3U);
    EXPECT_EQ(series[0].Begin, 2);
    EXPECT_EQ(series[1].Begin, 2);
    EXPECT_EQ(series[2].Begin, 3);
}

TEST_P(SeriesTest, AnUploadThatSharesNothingStandsByItsBegin) {
    merge.File(Upload(1, {10}));
    merge.File(Upload(5, {50}));
    merge.File(Upload(3, {30}));
    merge.File(Upload(2, {20}));
    merge.File(Upload(0, {5}));
    EXPECT_EQ(Times(), (std::vector<std::uint32_t>{5, 10, 20, 30, 50}));
}

/// Room between two uploads halves with each that comes between them.
TEST_P(SeriesTest, RoomIsMadeWhereItRunsOut) {
    merge.File(Upload(0, {0}));
    merge.File(Upload(1000, {1000}));
    std::vector<std::uint32_t> expected = {0};
    for (std::uint32_t i = 100; i > 0; --i) {
        merge.File(Upload(i, {i * 5, i * 5 + 1, i * 5 + 2}));
    }
    for (std::uint32_t i = 1; i <= 100; ++i) {
        expected.insert(expected.end(), {i * 5, i * 5 + 1, i * 5 + 2});
    }
    expected.push_back(1000);
    EXPECT_EQ(Times(), expected);
}

TEST_P(SeriesTest, TwoConsolesFilingAtOnceGiveTheSameSeries) {
    const auto other = bench->NewStore();
    other->Open();
    MergeBench there(*other);
    SeriesMerge first(*store, merge.Add(1), 1);
    SeriesMerge second(*other, there.Add(2), 2);
    AlikeCounter alikeFirst;
    AlikeCounter alikeSecond;
    for (std::uint32_t i = 0; i < 50; ++i) {
        const std::vector<HistoryRecord> ofFirst = {RecordAt(i * 10), RecordAt(i * 10 + 1)};
        const std::vector<HistoryRecord> ofSecond = {RecordAt(i * 10 + 50), RecordAt(i * 10 + 51)};
        merge.FilePortion(first, alikeFirst, ofFirst);
        there.FilePortion(second, alikeSecond, ofSecond);
    }
    HeldUpload one{.Begin = 1, .Records = {}};
    HeldUpload two{.Begin = 2, .Records = {}};
    for (std::uint32_t i = 0; i < 50; ++i) {
        one.Records.insert(one.Records.end(), {RecordAt(i * 10), RecordAt(i * 10 + 1)});
        two.Records.insert(two.Records.end(), {RecordAt(i * 10 + 50), RecordAt(i * 10 + 51)});
    }
    EXPECT_EQ(Series(), ModelSeries({one, two}));
}

TEST_P(SeriesTest, APortionTakenBackIsFiledAgainAsIfNothingHadBeen) {
    SeriesMerge one(*store, merge.Add(1), 1);
    const std::vector<RecordIdentity> records = {IdentityOf(RecordAt(10), 1),
                                                 IdentityOf(RecordAt(20), 1)};
    {
        const ArchiveTransaction lost(*store, ArchiveTransaction::Kind::Writing);
        ArchiveLogger logger = merge.Logger();
        one.File(records, logger);
    }
    one.Forget();
    merge.FileIdentities(one, records);
    EXPECT_EQ(Times(), (std::vector<std::uint32_t>{10, 20}));
    EXPECT_EQ(merge.Logger().Records, 2);
}

/// A logger with a ring of memory, and what uploads of it would hold.
class RandomLogger {
 public:
    explicit RandomLogger(std::mt19937& random) : random_(random) {}

    [[nodiscard]] std::vector<HeldUpload> Uploads(int count) {
        std::vector<HeldUpload> uploads;
        for (int i = 0; i < count; ++i) {
            Log();
            uploads.push_back({.Begin = 10 + i, .Records = Held()});
        }
        return uploads;
    }

 private:
    [[nodiscard]] int Below(int limit) {
        return std::uniform_int_distribution<int>(0, limit - 1)(random_);
    }

    /// New records: steps of time, ten with one second, records alike, the clock set.
    void Log() {
        const int records = Below(25);
        for (int i = 0; i < records; ++i) {
            if (Below(12) == 0) {
                clock_ = static_cast<std::uint32_t>(Below(60));
            }
            const int alike = Below(8) == 0 ? Below(10) : 1;
            for (int same = 0; same < alike; ++same) {
                memory_.push_back(
                    RecordAt(clock_, static_cast<std::uint16_t>(Below(5) == 0 ? Below(3) : 0)));
            }
            clock_ += static_cast<std::uint32_t>(Below(4));
        }
        // It overwrites the oldest, or was cleared.
        const std::size_t room = Below(15) == 0 ? 0 : 60;
        if (memory_.size() > room) {
            memory_.erase(memory_.begin(), memory_.end() - static_cast<std::ptrdiff_t>(room));
        }
    }

    /// All of the memory, or as far as the upload got.
    [[nodiscard]] std::vector<HistoryRecord> Held() {
        if (Below(3) != 0) {
            return memory_;
        }
        const auto end = memory_.begin() + Below(static_cast<int>(memory_.size()) + 1);
        return {memory_.begin(), end};
    }

    std::mt19937& random_;
    std::vector<HistoryRecord> memory_;
    std::uint32_t clock_ = 0;
};

/// Thousands of histories, filed in any order and in portions of any size.
TEST_P(SeriesTest, EqualsThePlainModelWhateverTheOrderOfFiling) {
    const int cases = bench->CasesOf(3000);
    std::mt19937 random(20261122);
    for (int one = 0; one < cases; ++one) {
        std::vector<HeldUpload> uploads = RandomLogger(random).Uploads(1 + one % 7);
        const auto model = ModelSeries(uploads);
        if (one % 2 == 1) {
            std::shuffle(uploads.begin(), uploads.end(), random);
        }
        for (const HeldUpload& upload : uploads) {
            merge.File(upload, 1 + random() % 70);
        }
        ASSERT_EQ(Series(), model) << "case " << one;
        ASSERT_EQ(merge.Logger().Records, static_cast<std::int64_t>(model.size()));
        DeleteLogger(*store, merge.Logger().Id);
    }
}

ORVIA_FOR_ALL_STORES(SeriesTest);

}  // namespace
}  // namespace testing_support
