#include "simulator/history.h"

#include "simulator/wire.h"

namespace simulator {
namespace {

/// Asks for one block and returns its 241 bytes.
class HistoryTest : public testing::Test {
 protected:
    void Make(std::uint32_t records, std::size_t analog, std::size_t pulse) {
        LoggerSetup setup;
        setup.HistoryRecords = records;
        setup.Settings.Analog.assign(analog, AnalogSettings{});
        setup.Settings.Pulse.assign(pulse, PulseSettings{});
        setup.AnalogSignals = {SineSignal(50, 40, 7000)};
        logger = std::make_unique<Logger>(setup, Network::DefaultStart());
    }

    Bytes Block(std::uint8_t which) {
        const auto answer = logger->Carry(Bytes{0x0D, which}, now);
        return answer && answer->Payload ? *answer->Payload : Bytes{};
    }

    /// Records that a whole upload brings.
    std::uint32_t Upload() {
        std::uint32_t records = 0;
        Bytes block = Block(0);
        while (!block.empty() && block[0] > 0) {
            records += block[0];
            block = Block(1);
        }
        return records;
    }

    std::uint32_t Status() {
        const auto answer = logger->Carry(Bytes{0x0C}, now);
        const Bytes& reply = *answer->Payload;
        return GetU16(reply, 0) + (std::uint32_t{reply[2]} << 16);
    }

    std::unique_ptr<Logger> logger;
    Microseconds now = 0;
};

TEST_F(HistoryTest, BlockIsAlways241BytesWithItsCountInFront) {
    Make(5, 1, 0);
    const Bytes block = Block(0);
    ASSERT_EQ(block.size(), 241U);
    EXPECT_EQ(block[0], 5);
    EXPECT_EQ(block[1 + 5 * 6], 0xFF);
    EXPECT_EQ(block.back(), 0xFF);
}

TEST_F(HistoryTest, RecordIsTimeAndCountsOfAllChannels) {
    Make(2, 2, 1);
    // The second channel rests in the middle of its span. The records are 15 minutes apart, the
    // last at 8:00:00 of the 5th of March 2024.
    const Bytes block = Block(0);
    EXPECT_EQ(Bytes(block.begin() + 1, block.begin() + 5), (Bytes{0x40, 0x7B, 0x8A, 0x48}));
    EXPECT_EQ(Bytes(block.begin() + 11, block.begin() + 15), (Bytes{0x00, 0x80, 0x8A, 0x48}));
    EXPECT_EQ(GetU16(block, 15), logger->RawCount(0, 0));
    EXPECT_EQ(GetU16(block, 17), 32768);
    EXPECT_EQ(GetU16(block, 19), 0);
}

TEST_F(HistoryTest, LongestHistoryReachesNoFurtherThanTheEngineCounts) {
    LoggerSetup setup;
    setup.HistoryRecords = 1'000'000;
    setup.Settings.IntervalCount = 65535;
    setup.Settings.Interval = IntervalUnit::Days;
    const Logger longest(setup, Network::DefaultStart());
    EXPECT_GT(longest.RecordMoment(0), INT64_MIN / 50 * 49);
    EXPECT_LE(longest.RecordMoment(0), longest.RecordMoment(1));
    EXPECT_LT(longest.RecordMoment(1), longest.RecordMoment(999'999));
}

TEST_F(HistoryTest, FullBlockHoldsAsManyRecordsAsFitIn240Bytes) {
    const std::vector<std::uint8_t> fit = {40, 30, 24, 20, 17, 15, 13, 12, 10, 10};
    for (std::size_t channels = 1; channels <= 10; ++channels) {
        const std::size_t pulse = channels > 8 ? channels - 8 : 0;
        Make(1000, channels - pulse, pulse);
        EXPECT_EQ(Block(0)[0], fit[channels - 1]) << channels;
    }
}

TEST_F(HistoryTest, NextBlockGoesOnWhereTheLastEnded) {
    Make(45, 1, 0);
    EXPECT_EQ(Block(0)[0], 40);
    const Bytes second = Block(1);
    EXPECT_EQ(second[0], 5);
    const Bytes record = logger->Record(40);
    EXPECT_EQ(Bytes(second.begin() + 1, second.begin() + 7), record);
    EXPECT_EQ(Block(1)[0], 0);
}

TEST_F(HistoryTest, ExactlyOneFullBlockIsFollowedByAnEmptyOne) {
    Make(40, 1, 0);
    EXPECT_EQ(Block(0)[0], 40);
    EXPECT_EQ(Block(1)[0], 0);
}

TEST_F(HistoryTest, RepeatBringsTheSameBlockAgain) {
    Make(100, 1, 0);
    Block(0);
    const Bytes second = Block(1);
    EXPECT_EQ(Block(2), second);
    EXPECT_EQ(Block(2), second);
    EXPECT_NE(Block(1), second);
}

TEST_F(HistoryTest, RepeatBeforeAnyBlockBringsTheFirst) {
    Make(100, 1, 0);
    const Bytes block = Block(2);
    EXPECT_EQ(Block(0), block);
}

TEST_F(HistoryTest, FirstBlockStartsOverAgain) {
    Make(100, 1, 0);
    const Bytes first = Block(0);
    Block(1);
    EXPECT_EQ(Block(0), first);
}

TEST_F(HistoryTest, RefusesOtherBlocks) {
    Make(10, 1, 0);
    EXPECT_TRUE(Block(3).empty());
    EXPECT_EQ(logger->Refused().back(), "0D: parameter");
}

TEST_F(HistoryTest, UploadsMoreRecordsThanTheConsoleHolds) {
    Make(200'010, 1, 0);
    EXPECT_EQ(Status(), 200'010U);
    EXPECT_EQ(Upload(), 200'010U);
}

TEST_F(HistoryTest, GrowsByOneRecordEveryInterval) {
    Make(3, 1, 0);
    now = 900 * Second - 1;
    EXPECT_EQ(Status(), 3U);
    now += 1;
    EXPECT_EQ(Status(), 4U);
    now += 3600 * Second;
    EXPECT_EQ(Status(), 8U);
}

TEST_F(HistoryTest, ClearDropsEverything) {
    Make(30, 1, 0);
    ASSERT_TRUE(logger->Carry(Bytes{0x04, 0xA4, 0x4A}, now));
    EXPECT_EQ(Status(), 0U);
    EXPECT_EQ(Block(0)[0], 0);
    now += 900 * Second;
    EXPECT_EQ(Status(), 1U);
}

TEST_F(HistoryTest, ClockSetKeepsWhatWasLogged) {
    Make(30, 1, 0);
    const Bytes before = logger->Record(29);
    ASSERT_TRUE(
        logger->Carry(Bytes{0x01, 0x00, 0x00, 0x20, 0x01, 0x06, 0x03, 0x24}, now += 5 * Second));
    EXPECT_EQ(Status(), 30U);
    EXPECT_EQ(logger->Record(29), before);
    now += 900 * Second;
    EXPECT_EQ(Status(), 31U);
    const auto stamp = PackTime({2024, 3, 6, 20, 15, 0});
    const Bytes record = logger->Record(30);
    EXPECT_TRUE(std::equal(stamp.begin(), stamp.end(), record.begin()));
    EXPECT_EQ(GetU16(record, 4), logger->RawCount(0, now));
}

TEST_F(HistoryTest, RestartTakesTheIntervalFromMemory) {
    Make(1, 1, 0);
    logger->Memory()[IntervalCountAddress] = 10;
    logger->Memory()[IntervalUnitAddress] = 0;
    now += 20 * Second;
    EXPECT_EQ(Status(), 1U);
    ASSERT_TRUE(logger->Carry(Bytes{0x0B, 0xAB, 0xBA}, now));
    now += 20 * Second;
    EXPECT_EQ(Status(), 3U);
}

TEST_F(HistoryTest, AlarmsGateTheLogging) {
    LoggerSetup setup;
    setup.Settings.IntervalCount = 1;
    setup.Settings.Alarms = {{{true, 8, 10, 0}, {true, 8, 20, 0}}};
    logger = std::make_unique<Logger>(setup, Network::DefaultStart());
    ASSERT_TRUE(logger->Carry(Bytes{0x0B, 0xAB, 0xBA}, 0));
    const auto at = [](int minutes) { return minutes * (60 * Second); };
    EXPECT_EQ(logger->StatusWordAt(at(9)), 0x0880);
    EXPECT_EQ(logger->RecordsAt(at(9)), 0U);
    EXPECT_EQ(logger->StatusWordAt(at(15)), 0x1080);
    EXPECT_EQ(logger->RecordsAt(at(15)), 5U);
    EXPECT_EQ(logger->StatusWordAt(at(25)), 0x2080);
    EXPECT_EQ(logger->RecordsAt(at(25)), 10U);
}

TEST_F(HistoryTest, StatusMayLie) {
    LoggerSetup setup;
    setup.HistoryRecords = 10;
    setup.ReportedSamples = 70'000;
    setup.StatusWord = 0x2080;
    setup.Logging = false;
    logger = std::make_unique<Logger>(setup, Network::DefaultStart());
    EXPECT_EQ(*logger->Carry(Bytes{0x0C}, 0)->Payload, (Bytes{0x70, 0x11, 0x01, 0x80, 0x20}));
    EXPECT_EQ(Upload(), 10U);
    now = 86400 * Second;
    EXPECT_EQ(Upload(), 10U);
}

TEST_F(HistoryTest, SameSetupGivesTheSameRecords) {
    Make(50, 3, 1);
    const Bytes once = Block(0);
    Make(50, 3, 1);
    EXPECT_EQ(Block(0), once);
}

}  // namespace
}  // namespace simulator
