#include "trace/trace_store.h"

#include <gtest/gtest.h>

#include "common/bytes.h"

namespace {

Bytes Series(std::size_t size, int first) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) {
        bytes[i] = static_cast<std::uint8_t>(first + static_cast<int>(i));
    }
    return bytes;
}

Bytes Copy(std::span<const std::uint8_t> bytes) {
    return {bytes.begin(), bytes.end()};
}

TEST(TraceStore, KeepsWhatWasSentTakenAndThrownAwayApart) {
    TraceStore store(4, 8192);
    EXPECT_EQ(store.First(), store.End());
    store.Begin({.Time = 7}, Series(3, 10));
    store.Receive(Series(2, 20), false);
    store.Receive(Series(1, 22), false);
    store.Receive(Series(2, 30), true);
    ASSERT_TRUE(store.Holds(1));
    const TraceEntry entry = store.At(1);
    EXPECT_EQ(entry.Record.Time, 7);
    EXPECT_EQ(Copy(entry.Sent), Series(3, 10));
    EXPECT_EQ(Copy(entry.Taken), Series(3, 20));
    EXPECT_EQ(Copy(entry.Thrown), Series(2, 30));
}

TEST(TraceStore, TheOldestEntryGoesWhenThereIsARecordTooMany) {
    TraceStore store(4, 1 << 20);
    for (int i = 1; i <= 6; ++i) {
        store.Begin({.Time = i}, Series(1, i));
    }
    EXPECT_EQ(store.First(), 3U);
    EXPECT_EQ(store.End(), 7U);
    EXPECT_FALSE(store.Holds(2));
    for (int i = 3; i <= 6; ++i) {
        EXPECT_EQ(store.At(static_cast<std::uint64_t>(i)).Record.Time, i);
        EXPECT_EQ(Copy(store.At(static_cast<std::uint64_t>(i)).Sent), Series(1, i));
    }
}

TEST(TraceStore, EntriesStayWholeHoweverTheRingOfBytesTurns) {
    constexpr std::size_t Room = 3 * TraceStore::MostOfOne;
    TraceStore store(1000, Room);
    for (std::size_t i = 1; i <= 5000; ++i) {
        const std::size_t sent = i * 37 % 500;
        const std::size_t taken = i * 91 % 900;
        store.Begin({.Time = static_cast<std::int64_t>(i)}, Series(sent, static_cast<int>(i)));
        store.Receive(Series(taken, static_cast<int>(2 * i)), false);
        ASSERT_LT(store.First(), store.End());
        for (std::uint64_t number = store.First(); number < store.End(); ++number) {
            const TraceEntry entry = store.At(number);
            ASSERT_EQ(entry.Record.Time, static_cast<std::int64_t>(number));
            ASSERT_EQ(Copy(entry.Sent), Series(number * 37 % 500, static_cast<int>(number)));
            ASSERT_EQ(Copy(entry.Taken), Series(number * 91 % 900, static_cast<int>(2 * number)));
        }
    }
    EXPECT_GE(store.End() - store.First(), 3U) << "more must fit";
}

TEST(TraceStore, OfOneEntryOnlySoMuchIsKeptAndTheRestCounted) {
    TraceStore store(4, 8192);
    store.Begin({}, Series(48, 0));
    store.Receive(Series(1990, 1), false);
    store.Receive(Series(30, 2), true);
    store.Receive(Series(5, 3), true);
    const TraceEntry entry = store.At(1);
    EXPECT_EQ(entry.Taken.size(), 1990U);
    EXPECT_EQ(Copy(entry.Thrown), Series(10, 2));
    EXPECT_EQ(entry.Record.NotKept, 25U);
}

TEST(TraceStore, AHundredThousandExchangesOfAnUploadFitBelowFortyMegabytes) {
    TraceStore store;
    EXPECT_LT(store.Size(), 40'000'000U);
    constexpr std::size_t Request = 7;
    // Acknowledge, start, length, 241 + 2 bytes of which one in 36 is a pair, end.
    constexpr std::size_t Answer = 255;
    for (int i = 0; i < 150'000; ++i) {
        store.Begin({}, Series(Request, i));
        store.Receive(Series(Answer, i), false);
    }
    EXPECT_EQ(store.End() - store.First(), TraceStore::MostEntries);
    EXPECT_EQ(store.End(), 150'001U);
    EXPECT_EQ(Copy(store.At(50'001).Taken), Series(Answer, 50'000));
}

TEST(TraceStore, EveryChangeCounts) {
    TraceStore store(4, 8192);
    std::uint64_t before = store.Changes();
    store.Begin({}, Series(1, 0));
    EXPECT_NE(store.Changes(), before);
    before = store.Changes();
    store.Receive(Series(1, 0), false);
    EXPECT_NE(store.Changes(), before);
    before = store.Changes();
    store.Newest().Finding = LinkFinding::FrameCrc;
    EXPECT_NE(store.Changes(), before);
}

}  // namespace
