#include "platform/serial_line.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace {

/// A driver: what it holds, and how its calls end.
class FakeCalls final : public LineCalls {
 public:
    bool BeginWait() override {
        EXPECT_FALSE(waits);
        ++begunWaits;
        waits = works;
        told = endsWaitsAtOnce;
        const Bytes untold = std::exchange(coming, {});
        held.insert(held.end(), untold.begin(), untold.end());
        return works;
    }
    CallState EndWait() override {
        EXPECT_TRUE(waits);
        if (works && !told) {
            return CallState::Pending;
        }
        waits = false;
        return works ? CallState::Done : CallState::Failed;
    }
    bool BeginRead() override {
        EXPECT_FALSE(reads);
        reads = works;
        reading = std::exchange(held, {});
        return works;
    }
    CallState EndRead(Bytes& into) override {
        EXPECT_TRUE(reads);
        if (works && readsAreLate) {
            return CallState::Pending;
        }
        reads = false;
        into.insert(into.end(), reading.begin(), reading.end());
        return works ? CallState::Done : CallState::Failed;
    }
    bool BeginWrite(std::span<const std::uint8_t> bytes) override {
        EXPECT_TRUE(writing.empty());
        writing.assign(bytes.begin(), bytes.end());
        return works;
    }
    CallState EndWrite(std::size_t& count) override {
        if (works && !writesEnd) {
            return CallState::Pending;
        }
        count = std::min(takes, writing.size());
        sent.insert(sent.end(), writing.begin(), writing.begin() + static_cast<int>(count));
        writing.clear();
        return works ? CallState::Done : CallState::Failed;
    }
    void Purge() override { held.clear(); }
    bool IsThere() override { return works && there; }

    void Arrive(const Bytes& bytes) {
        held.insert(held.end(), bytes.begin(), bytes.end());
        told = told || !bytes.empty();
    }

    bool works = true;
    bool there = true;
    bool told = false;  // that a byte has come
    bool waits = false;
    bool reads = false;
    bool readsAreLate = false;
    bool writesEnd = false;
    bool endsWaitsAtOnce = false;
    int begunWaits = 0;
    std::size_t takes = 1000;
    Bytes coming;  // as the next wait begins
    Bytes held;
    Bytes reading;
    Bytes writing;
    Bytes sent;
};

class SerialLineTest : public ::testing::Test {
 protected:
    FakeCalls calls;
    SerialLine line{calls};
};

TEST_F(SerialLineTest, ListensFromTheStart) {
    line.Start();
    EXPECT_TRUE(calls.waits);
    EXPECT_EQ(line.Waiting(), 0U);
    EXPECT_FALSE(line.Failed());
}

TEST_F(SerialLineTest, TakesInWhatASignalTellsOf) {
    line.Start();
    calls.Arrive({1, 2, 3});
    line.OnSignal();
    EXPECT_EQ(line.Take(1), Bytes{1});
    EXPECT_EQ(line.Take(0), (Bytes{2, 3}));
    EXPECT_TRUE(calls.waits);
}

TEST_F(SerialLineTest, NoByteFallsBetweenReadingAndWaiting) {
    line.Start();
    calls.Arrive({1});
    calls.coming = {2};  // after the wait for the first byte ended; the driver does not tell of it
    line.OnSignal();
    EXPECT_EQ(line.Take(0), (Bytes{1, 2}));
}

TEST_F(SerialLineTest, WhatWasThereBeforeItOpenedIsTakenIn) {
    calls.held = {7};
    line.Start();
    EXPECT_EQ(line.Take(0), Bytes{7});
}

TEST_F(SerialLineTest, AReadThatEndsLaterIsTakenInThen) {
    line.Start();
    calls.readsAreLate = true;
    calls.Arrive({1, 2});
    line.OnSignal();
    EXPECT_EQ(line.Waiting(), 0U);
    calls.readsAreLate = false;
    line.OnSignal();
    EXPECT_EQ(line.Take(0), (Bytes{1, 2}));
}

TEST_F(SerialLineTest, APurgeAlsoThrowsAwayWhatHasBeenRead) {
    line.Start();
    calls.readsAreLate = true;
    calls.Arrive({1, 2});
    line.OnSignal();
    calls.Arrive({3});
    calls.readsAreLate = false;
    line.Purge();
    line.OnSignal();
    EXPECT_EQ(line.Waiting(), 0U);
    calls.Arrive({4});
    line.OnSignal();
    EXPECT_EQ(line.Take(0), Bytes{4});
}

// Some systems let a read wait although none should: then it was begun before the purge and brings
// the answer to what was sent behind it.
TEST_F(SerialLineTest, AReadThatWaitsThroughAPurgeBringsWhatComesBehindIt) {
    line.Start();
    calls.readsAreLate = true;
    calls.Arrive({1});
    line.OnSignal();
    calls.reading.clear();
    line.Purge();
    calls.reading = {4};
    calls.readsAreLate = false;
    line.OnSignal();
    EXPECT_EQ(line.Take(0), Bytes{4});
}

TEST_F(SerialLineTest, ATickTakesInWhatNoSignalToldOf) {
    line.Start();
    calls.held = {9};
    line.Look();
    EXPECT_EQ(line.Take(0), Bytes{9});
    EXPECT_FALSE(line.Failed());
}

TEST_F(SerialLineTest, ADeviceThatGoesIsSeenByItsSignal) {
    line.Start();
    calls.works = false;
    line.OnSignal();
    EXPECT_TRUE(line.Failed());
}

TEST_F(SerialLineTest, ADeviceThatGoesWithoutASignalIsSeenByTheTick) {
    line.Start();
    calls.works = false;
    line.Look();
    EXPECT_TRUE(line.Failed());
}

TEST_F(SerialLineTest, ADeviceThatGoesAndEndsNoCallIsSeenByTheTick) {
    line.Start();
    calls.there = false;
    line.OnSignal();
    EXPECT_FALSE(line.Failed());
    line.Look();
    EXPECT_TRUE(line.Failed());
}

TEST_F(SerialLineTest, NothingIsBegunOnADeviceThatIsGone) {
    line.Start();
    calls.works = false;
    line.Look();
    const int begun = calls.begunWaits;
    for (int i = 0; i < 100; ++i) {
        line.OnSignal();
        line.Look();
    }
    EXPECT_EQ(calls.begunWaits, begun);
}

TEST_F(SerialLineTest, WaitsThatEndAtOnceAreNoStorm) {
    calls.endsWaitsAtOnce = true;
    line.Start();
    for (int i = 0; i < 1000; ++i) {
        line.OnSignal();
    }
    EXPECT_LT(calls.begunWaits, SerialLine::MostEmptyWaits + 3);
    EXPECT_FALSE(line.Failed());
    // The next tick listens again.
    calls.endsWaitsAtOnce = false;
    line.Look();
    EXPECT_TRUE(calls.waits);
    calls.Arrive({5});
    line.OnSignal();
    EXPECT_EQ(line.Take(0), Bytes{5});
}

TEST_F(SerialLineTest, ManyBytesOneByOneAreNoStorm) {
    line.Start();
    for (int i = 0; i < 100; ++i) {
        calls.Arrive({static_cast<std::uint8_t>(i)});
        line.OnSignal();
    }
    EXPECT_EQ(line.Waiting(), 100U);
    EXPECT_TRUE(calls.waits);
}

TEST_F(SerialLineTest, InputBeyondTheBufferIsLost) {
    line.Start();
    calls.Arrive(Bytes(SerialLine::MaxWaiting - 1, 0x55));
    line.OnSignal();
    calls.Arrive(Bytes(100, 0x55));
    line.OnSignal();
    EXPECT_EQ(line.Waiting(), SerialLine::MaxWaiting);
    EXPECT_FALSE(line.Failed());
}

TEST_F(SerialLineTest, SendsInOrderOneCallAtATime) {
    line.Start();
    line.Send(Bytes{1, 2});
    line.Send(Bytes{3});
    line.Send(Bytes{4});
    EXPECT_EQ(calls.writing, (Bytes{1, 2}));
    EXPECT_TRUE(line.IsSending());
    calls.writesEnd = true;
    line.OnSignal();
    EXPECT_EQ(calls.writing, (Bytes{3, 4}));
    line.OnSignal();
    EXPECT_EQ(calls.sent, (Bytes{1, 2, 3, 4}));
    EXPECT_FALSE(line.IsSending());
}

TEST_F(SerialLineTest, WhatADriverDoesNotTakeGoesNext) {
    line.Start();
    calls.writesEnd = true;
    calls.takes = 2;
    line.Send(Bytes{1, 2, 3, 4, 5});
    line.Send(Bytes{6});
    for (int i = 0; i < 3; ++i) {
        line.OnSignal();
    }
    EXPECT_EQ(calls.sent, (Bytes{1, 2, 3, 4, 5, 6}));
}

TEST_F(SerialLineTest, ADriverThatTakesNothingIsGone) {
    line.Start();
    calls.writesEnd = true;
    calls.takes = 0;
    line.Send(Bytes{1});
    line.OnSignal();
    EXPECT_TRUE(line.Failed());
    EXPECT_FALSE(line.IsSending());
}

}  // namespace
