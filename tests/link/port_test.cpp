#include "link/port.h"

#include <gtest/gtest.h>

#include "common/fault.h"
#include "support/virtual_console.h"

namespace {

using testing_support::Millisecond;
using testing_support::VirtualConsole;

class PortTest : public ::testing::Test {
 protected:
    bool Open(int number = 1, const std::string& settings = "38400,N,8,1") {
        return comm::OpenPort(link_, console_.View, number, settings);
    }

    /// Virtual milliseconds that `work` takes.
    template <typename Work>
    std::int64_t Lasts(Work work) {
        const auto start = console_.Outside.Time.Now();
        work();
        return (console_.Outside.Time.Now() - start) / Millisecond;
    }

    VirtualConsole console_;
    Link& link_ = console_.State.LinkRecord;
    testing_support::VirtualPort& port_ = console_.Outside.Port;
};

TEST_F(PortTest, WaitOfZeroTicksRunsEventsOnceThenReturns) {
    EXPECT_EQ(Lasts([this] { comm::WaitForBytes(link_, 0, 0); }), 0);
    EXPECT_EQ(console_.Outside.Pump.Runs, 1);
    EXPECT_EQ(console_.Outside.Pump.Waits, 0);
}

TEST_F(PortTest, WaitLastsBetweenOneTickLessThanToldAndTold) {
    console_.Outside.Time.Run(50 * Millisecond);
    EXPECT_EQ(Lasts([this] { comm::Pause(link_, 5); }), 450);
    EXPECT_EQ(Lasts([this] { comm::Pause(link_, 5); }), 500);
}

TEST_F(PortTest, WaitForFourEndsAsSoonAsFourAreIn) {
    ASSERT_TRUE(Open());
    console_.Outside.Time.In(30 * Millisecond, [this] { port_.Receive({1, 2, 3}); });
    console_.Outside.Time.In(70 * Millisecond, [this] { port_.Receive({4}); });
    EXPECT_EQ(Lasts([this] { comm::WaitForBytes(link_, 5, 4); }), 70);
}

TEST_F(PortTest, WaitForFourReportsNothingIfOnlyThreeCame) {
    ASSERT_TRUE(Open());
    port_.Receive({1, 2, 3});
    EXPECT_EQ(Lasts([this] { comm::WaitForBytes(link_, 5, 4); }), 500);
    EXPECT_EQ(port_.InBufferCount(), 3);
}

TEST_F(PortTest, WhoNeedsManyBytesIsNotWokenForEach) {
    ASSERT_TRUE(Open());
    for (int i = 1; i <= 24; ++i) {
        console_.Outside.Time.In(i * Millisecond,
                                 [this] { port_.Receive({static_cast<std::uint8_t>(7)}); });
    }
    EXPECT_EQ(Lasts([this] { comm::WaitForBytes(link_, 5, 24); }), 24) << "with the last of them";
    EXPECT_EQ(port_.InBufferCount(), 24);
}

TEST_F(PortTest, BytesThatAreFewerThanExpectedAreThereWithTheNextTick) {
    ASSERT_TRUE(Open());
    console_.Outside.Time.In(30 * Millisecond, [this] { port_.Receive({1, 2, 3}); });
    std::int16_t byte = -1;
    EXPECT_EQ(Lasts([&] { byte = comm::ReadByteWait(link_, 5, 9); }), 100);
    EXPECT_EQ(byte, 1);
    EXPECT_EQ(port_.InBufferCount(), 2);
}

TEST_F(PortTest, NoMoreThanFortyEightBytesAreHeldBack) {
    ASSERT_TRUE(Open());
    console_.Outside.Time.In(30 * Millisecond, [this] { port_.Receive(Bytes(47)); });
    console_.Outside.Time.In(40 * Millisecond, [this] { port_.Receive(Bytes(1)); });
    std::int16_t byte = -1;
    EXPECT_EQ(Lasts([&] { byte = comm::ReadByteWait(link_, 5, 200); }), 40);
    EXPECT_EQ(byte, 0);
}

TEST_F(PortTest, BehindAWaitEveryByteIsSeenAtOnce) {
    ASSERT_TRUE(Open());
    comm::WaitForBytes(link_, 2, 10);
    port_.Receive({1});
    EXPECT_EQ(port_.InBufferCount(), 1);
}

TEST_F(PortTest, EveryWaitRenewsTheIdleLimit) {
    link_.IdleTicks = 1;
    comm::WaitForBytes(link_, 0, 0);
    EXPECT_EQ(link_.IdleTicks, 3000);
}

TEST_F(PortTest, ShutdownEndsAWaitForBytes) {
    ASSERT_TRUE(Open());
    console_.Outside.Time.In(10 * Millisecond, [this] { link_.ShuttingDown = True; });
    EXPECT_EQ(Lasts([this] { comm::WaitForBytes(link_, 5, 1); }), 10);
}

TEST_F(PortTest, ShutdownDoesNotCutAPauseShort) {
    link_.ShuttingDown = True;
    EXPECT_EQ(Lasts([this] { comm::Pause(link_, 5); }), 500);
}

TEST_F(PortTest, ReadByteWaitTakesAWaitingByteAtOnce) {
    ASSERT_TRUE(Open());
    port_.Receive({0xFC, 0x01});
    EXPECT_EQ(Lasts([this] { EXPECT_EQ(comm::ReadByteWait(link_, 8), 0xFC); }), 0);
    EXPECT_EQ(port_.InBufferCount(), 1);
}

TEST_F(PortTest, ReadByteWaitTimesOutWithMinusOne) {
    ASSERT_TRUE(Open());
    EXPECT_EQ(Lasts([this] { EXPECT_EQ(comm::ReadByteWait(link_, 8), -1); }), 800);
}

TEST_F(PortTest, OpeningShowsThePortAndRaisesDtr) {
    ASSERT_TRUE(Open(12));
    EXPECT_EQ(console_.View.ComPort, "COM12");
    EXPECT_TRUE(port_.Dtr);
    EXPECT_EQ(port_.Settings(), "38400,N,8,1");
}

TEST_F(PortTest, OpeningTheOpenPortWithEqualSettingsEmptiesTheInputWithoutClosing) {
    ASSERT_TRUE(Open());
    port_.Receive({1, 2});
    EXPECT_TRUE(Open());
    EXPECT_EQ(port_.InBufferCount(), 0);
    EXPECT_EQ(port_.Opened, 1);
    EXPECT_EQ(port_.Closed, 0);
}

TEST_F(PortTest, OpeningWithAnotherBaudRateClosesThenReopens) {
    ASSERT_TRUE(Open());
    EXPECT_TRUE(Open(1, "9600,N,8,1"));
    EXPECT_EQ(port_.Closed, 1);
    EXPECT_EQ(port_.Opened, 2);
    EXPECT_EQ(port_.Settings(), "9600,N,8,1");
}

TEST_F(PortTest, OpeningAnotherNumberClosesThenReopens) {
    ASSERT_TRUE(Open());
    EXPECT_TRUE(Open(2));
    EXPECT_EQ(port_.Opened, 2);
    EXPECT_EQ(port_.CommPort(), 2);
}

TEST_F(PortTest, OpeningForgetsTheStrayBytesOfBefore) {
    link_.StrayInput = True;
    ASSERT_TRUE(Open());
    EXPECT_EQ(link_.StrayInput, False) << "another port has them no more";
    link_.StrayInput = True;
    ASSERT_TRUE(Open());
    EXPECT_EQ(link_.StrayInput, False) << "the emptied input has them no more";
}

TEST_F(PortTest, APortThatStaysShutForgetsNothing) {
    link_.StrayInput = True;
    port_.Missing = {1};
    ASSERT_FALSE(Open());
    EXPECT_EQ(link_.StrayInput, True);
}

TEST_F(PortTest, AMissingPortIsFalse) {
    port_.Missing = {3};
    EXPECT_FALSE(Open(3));
    EXPECT_FALSE(port_.PortOpen());
}

TEST_F(PortTest, ClosingDropsDtrAndNeverFails) {
    ASSERT_TRUE(Open());
    comm::ClosePort(link_);
    EXPECT_FALSE(port_.PortOpen());
    EXPECT_FALSE(port_.Dtr);
    comm::ClosePort(link_);
    EXPECT_EQ(port_.Closed, 1);
}

TEST_F(PortTest, ADeviceIsLostFromItsGoingUntilAPortIsOpenedAgain) {
    EXPECT_FALSE(comm::DeviceLost(link_)) << "never opened";
    ASSERT_TRUE(Open());
    EXPECT_FALSE(comm::DeviceLost(link_));
    port_.PullOut();
    port_.LookForHangUp();
    EXPECT_TRUE(comm::DeviceLost(link_));
    comm::ClosePort(link_);
    EXPECT_TRUE(comm::DeviceLost(link_)) << "there was nothing to close";
    port_.Missing = {1};
    EXPECT_FALSE(Open());
    EXPECT_TRUE(comm::DeviceLost(link_));
    port_.Missing.clear();
    ASSERT_TRUE(Open());
    EXPECT_FALSE(comm::DeviceLost(link_));
}

TEST_F(PortTest, APortThatWasClosedHasNotLostItsDevice) {
    ASSERT_TRUE(Open());
    comm::ClosePort(link_);
    EXPECT_FALSE(comm::DeviceLost(link_));
    port_.Missing = {1};
    EXPECT_FALSE(Open());
    EXPECT_FALSE(comm::DeviceLost(link_)) << "nor has one that was not there";
}

TEST_F(PortTest, ATwoDigitPortOpensByItsWholeNumber) {
    EXPECT_EQ(comm::PortNumber("Com1"), 1);
    ASSERT_TRUE(Open(comm::PortNumber("COM12")));
    EXPECT_EQ(port_.CommPort(), 12);
}

TEST_F(PortTest, APortNameWithoutANumberIsAFault) {
    for (const char* name : {"", "COM", "COMx", "CO"}) {
        EXPECT_THROW(static_cast<void>(comm::PortNumber(name)), Fault) << name;
    }
}

TEST_F(PortTest, TextGoesOutAsBytes) {
    ASSERT_TRUE(Open());
    comm::SendText(link_,
                   "\xCC"
                   "ATO\r");
    EXPECT_EQ(console_.Outside.Network.Written(), (Bytes{0xCC, 'A', 'T', 'O', 0x0D}));
}

}  // namespace
