#include "logger/sample_frame.h"

#include <gtest/gtest.h>

#include "common/fault.h"
#include "logger/bcd.h"
#include "support/virtual_host.h"

namespace {

TEST(Bcd, PutsTensIntoTheHighNibble) {
    EXPECT_EQ(cmd::ToBcd(59), 0x59);
    EXPECT_EQ(cmd::ToBcd(159), 0xF9);
    EXPECT_EQ(cmd::FromBcd(0x59), 59);
    EXPECT_EQ(cmd::FromBcd(0x1A), 20);
}

TEST(Bcd, FaultsOnWhatDoesNotFit) {
    EXPECT_THROW(static_cast<void>(cmd::ToBcd(160)), Fault);
    EXPECT_THROW(static_cast<void>(cmd::ToBcd(-1)), Fault);
}

TEST(Bcd, ANibbleAboveNineGivesTheCharacterBehindNine) {
    EXPECT_EQ(cmd::BcdToText(0x07), "07");
    EXPECT_EQ(cmd::BcdToText(0x1A), "1:");
}

TEST(PackedTime, UnpacksEachField) {
    // 2024-03-05 13:59:58: second 58, minute 59, hour 13, day 5, month 290 = 24 x 12 + 2.
    const std::array<std::uint8_t, 4> bytes{0xFA, 0xDE, 0x8A, 0x48};
    const cmd::PackedTime time = cmd::DecodePackedTime(bytes);
    EXPECT_EQ(time.Second, 58);
    EXPECT_EQ(time.Minute, 59);
    EXPECT_EQ(time.Hour, 13);
    EXPECT_EQ(time.Day, 5);
    EXPECT_EQ(time.Month, 3);
    EXPECT_EQ(time.Year, 2024);
}

/// Every byte of it is its own offset.
Bytes CountingFrame() {
    Bytes frame(24);
    for (std::size_t i = 0; i < frame.size(); ++i) {
        frame[i] = static_cast<std::uint8_t>(i);
    }
    return frame;
}

TEST(CompactSampleFrame, LeavesEightChannelsAsTheyAre) {
    Bytes frame = CountingFrame();
    cmd::CompactSampleFrame(frame, 8, 2);
    EXPECT_EQ(frame, CountingFrame());
}

TEST(CompactSampleFrame, BringsTheLastAnalogChannelDownFromSlotSeven) {
    Bytes frame = CountingFrame();
    cmd::CompactSampleFrame(frame, 3, 0);
    EXPECT_EQ(frame[8], 18);
    EXPECT_EQ(frame[9], 19);
    EXPECT_EQ(frame[10], 10) << "no pulses are moved";
}

TEST(CompactSampleFrame, OneChannelWithTwoPulsesIgnoresSlotSeven) {
    Bytes frame = CountingFrame();
    cmd::CompactSampleFrame(frame, 1, 2);
    EXPECT_EQ(Bytes(frame.begin() + 4, frame.begin() + 10), (Bytes{4, 5, 20, 21, 22, 23}));
}

TEST(CompactSampleFrame, SevenChannelsWithTwoPulsesShowTheSecondPulseInSlotEight) {
    Bytes frame = CountingFrame();
    cmd::CompactSampleFrame(frame, 7, 2);
    DataPoint point;
    const testing_support::VirtualHost host;
    cmd::DecodeRecord(frame, 0, AllChannels, host.Clock, point);
    EXPECT_EQ(point.Raw[8], 22 + 256 * 23);
    EXPECT_EQ(point.Raw[9], 22 + 256 * 23);
}

TEST(CompactSampleFrame, CountsOrSizesThatNoLoggerHasAreFaults) {
    Bytes frame = CountingFrame();
    EXPECT_THROW(cmd::CompactSampleFrame(frame, 0, 0), Fault);
    EXPECT_THROW(cmd::CompactSampleFrame(frame, 9, 0), Fault);
    EXPECT_THROW(cmd::CompactSampleFrame(frame, 3, 3), Fault);
    Bytes shorter(23);
    EXPECT_THROW(cmd::CompactSampleFrame(shorter, 3, 0), Fault);
}

TEST(DecodeRecord, GivesTimeThenChannels) {
    const testing_support::VirtualHost host;
    Bytes block(1 + 8);
    const Bytes record{0xFA, 0xDE, 0x8A, 0x48, 0x01, 0x02, 0xFF, 0xFF};
    std::copy(record.begin(), record.end(), block.begin() + 1);
    DataPoint point;
    point.Raw.fill(7);
    cmd::DecodeRecord(block, 1, 2, host.Clock, point);
    EXPECT_EQ(point.Time, "3/5/24 13:59:58") << "a year of four digits is shortened to two";
    EXPECT_EQ(point.Raw[0], 0x0201);
    EXPECT_EQ(point.Raw[1], 65535);
    EXPECT_EQ(point.Raw[2], 7) << "slots beyond the channels stay";
}

TEST(DecodeRecord, ARecordOverTheEndIsAFault) {
    const testing_support::VirtualHost host;
    DataPoint point;
    EXPECT_THROW(cmd::DecodeRecord(Bytes(23), 0, 10, host.Clock, point), Fault);
    EXPECT_THROW(cmd::DecodeRecord(Bytes(24), 1, 10, host.Clock, point), Fault);
    EXPECT_THROW(cmd::DecodeRecord(Bytes(24), -1, 1, host.Clock, point), Fault);
}

}  // namespace
