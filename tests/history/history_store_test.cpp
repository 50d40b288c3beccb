#include "history/history_store.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "common/fault.h"
#include "history/record_time.h"
#include "support/virtual_host.h"

namespace testing_support {
namespace {

/// Counts how often the system is asked for a date.
class CountingClock final : public SystemClock {
 public:
    LocalTime Now() const override { return {}; }
    std::string DateText(const LocalTime& time) const override {
        ++Asked;
        return std::to_string(time.Day) + "." + std::to_string(time.Month) + "." +
               std::to_string(time.Year);
    }
    std::string TimeText(const LocalTime&) const override { return {}; }

    mutable int Asked = 0;
};

std::string TextOf(RecordTimeTexts& texts, const RecordTimeTexts::Packed& time) {
    std::string text(texts.RoomFor(time), '?');
    EXPECT_EQ(texts.Write(text.data(), time), text.data() + text.size());
    return text;
}

TEST(ReadRecord, IsTimeThenCountsLittleEndian) {
    const Bytes block = {2, 0x40, 0x7B, 0x8A, 0x48, 0x34, 0x12, 0xFF, 0x00};
    const HistoryRecord record = ReadRecord(block, 1, 2);
    EXPECT_EQ(record.Time, (std::array<std::uint8_t, 4>{0x40, 0x7B, 0x8A, 0x48}));
    EXPECT_EQ(record.Raw[0], 0x1234);
    EXPECT_EQ(record.Raw[1], 0x00FF);
    EXPECT_EQ(record.Raw[2], 0);
}

TEST(ReadRecord, ReadsTheBlockThatTheDocumentationShows) {
    const Bytes block = {2,    0x40, 0xD1, 0x1C, 0x48, 0xD8, 0x04, 0x3B, 0x75, 0x07, 0x00,
                         0x80, 0xD2, 0x1C, 0x48, 0xEE, 0x04, 0x38, 0x75, 0x07, 0x00};
    const CountingClock clock;
    RecordTimeTexts texts(clock);
    const HistoryRecord first = ReadRecord(block, 1, 3);
    const HistoryRecord second = ReadRecord(block, 1 + RecordSize(3), 3);
    EXPECT_EQ(TextOf(texts, first.Time), "14.1.24 13:05:00");
    EXPECT_EQ(TextOf(texts, second.Time), "14.1.24 13:10:00");
    EXPECT_EQ(first.Raw, (std::array<std::uint16_t, 10>{1240, 30011, 7}));
    EXPECT_EQ(second.Raw, (std::array<std::uint16_t, 10>{1262, 30008, 7}));
}

TEST(ReadRecord, RecordThatRunsOverTheBlockIsAFault) {
    const Bytes block(9);
    EXPECT_NO_THROW((void)ReadRecord(block, 1, 2));
    EXPECT_THROW((void)ReadRecord(block, 2, 2), Fault);
    EXPECT_THROW((void)ReadRecord(block, 1, 3), Fault);
    EXPECT_THROW((void)ReadRecord(block, -1, 1), Fault);
    EXPECT_THROW((void)ReadRecord(block, 0, 11), Fault);
}

TEST(ReadRecord, GivesEveryRecordAsItIsDecoded) {
    std::mt19937 random(7);
    const CountingClock clock;
    RecordTimeTexts texts(clock);
    for (int i = 0; i < 2000; ++i) {
        Bytes block(24);
        for (std::uint8_t& byte : block) {
            byte = static_cast<std::uint8_t>(random());
        }
        const int channels = static_cast<int>(random() % 11);
        DataPoint expected;
        cmd::DecodeRecord(block, 0, channels, clock, expected);
        const HistoryRecord record = ReadRecord(block, 0, channels);
        ASSERT_EQ(TextOf(texts, record.Time), expected.Time);
        ASSERT_TRUE(std::equal(record.Raw.begin(), record.Raw.end(), expected.Raw.begin(),
                               expected.Raw.end()));
    }
}

TEST(HistoryStore, HoldsRecordsUpToItsLimit) {
    HistoryStore store;
    const HistoryRecord* const first = store.Records().data();
    for (int i = 0; i < HistoryStore::MostRecords; ++i) {
        store.Append({});
    }
    EXPECT_TRUE(store.IsFull());
    EXPECT_EQ(store.Records().data(), first) << "the store is allocated once";
    EXPECT_THROW(store.Append({}), Fault);
    store.Clear();
    EXPECT_EQ(store.HistoryCount(), 0);
    EXPECT_TRUE(store.Records().empty());
}

TEST(RecordTimeTexts, AskTheSystemOnceForEachDay) {
    const CountingClock clock;
    RecordTimeTexts texts(clock);
    EXPECT_EQ(TextOf(texts, {0x40, 0x7B, 0x8A, 0x48}), "5.3.24 07:45:00");
    EXPECT_EQ(TextOf(texts, {0x00, 0x80, 0x8A, 0x48}), "5.3.24 08:00:00");
    EXPECT_EQ(TextOf(texts, {0x00, 0x80, 0x8C, 0x48}), "6.3.24 08:00:00");
    EXPECT_EQ(TextOf(texts, {0x01, 0x80, 0x8A, 0x48}), "5.3.24 08:00:01");
    EXPECT_EQ(clock.Asked, 2);
}

TEST(RecordTimeTexts, ShowFieldsThatNoClockHas) {
    const CountingClock clock;
    RecordTimeTexts texts(clock);
    EXPECT_EQ(TextOf(texts, {0xFF, 0xFF, 0xFF, 0xFF}), "31.4.85 31:63:63");
}

}  // namespace
}  // namespace testing_support
