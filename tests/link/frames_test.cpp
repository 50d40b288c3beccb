#include "link/frames.h"

#include <gtest/gtest.h>

#include "common/fault.h"
#include "link/frame_codec.h"
#include "logger/memory.h"
#include "support/virtual_console.h"

namespace {

using simulator::CorruptByte;
using simulator::CutAfter;
using simulator::FaultKind;
using simulator::LateReply;
using simulator::NoiseAhead;
using simulator::NoiseBefore;
using simulator::Plain;
using simulator::WrongAck;
using simulator::WrongLength;
using testing_support::BasicSite;
using testing_support::Millisecond;
using testing_support::VirtualConsole;

/// Connected to a server radio that is on the one logger there is.
class FramesTest : public ::testing::Test {
 protected:
    FramesTest() {
        console_.Connect();
        EXPECT_TRUE(comm::SelectClient(console_.Radio(), console_.State.Book.Entries[entry_]));
        console_.Outside.Time.Run(testing_support::Second);
        port_.ClearInBuffer();
        network_.ClearRecord();
    }

    bool Send(const Bytes& payload, std::int16_t retries = 0) {
        retries_ = retries;
        return comm::SendFrame(link_, payload, retries_);
    }

    /// One exchange of the status command.
    bool ReadStatus(std::int16_t retries = 0) {
        Bytes reply(5);
        return Send({0x0C}, retries) && comm::ReceiveFrame(link_, reply);
    }

    std::int64_t Elapsed() const { return (console_.Outside.Time.Now() - start_) / Millisecond; }
    void StartWatch() { start_ = console_.Outside.Time.Now(); }
    int Requests() const { return network_.Count().Requests; }

    VirtualConsole console_;
    int entry_ = console_.AddSite(BasicSite(1));
    Link& link_ = console_.State.LinkRecord;
    testing_support::VirtualPort& port_ = console_.Outside.Port;
    simulator::Network& network_ = console_.Outside.Network;
    simulator::Logger& logger_ = *network_.Loggers().front();
    std::int16_t retries_ = 0;
    testing_support::Microseconds start_ = 0;
};

TEST_F(FramesTest, AnAcknowledgedFrameIsTrueWithItsReplyBehindIt) {
    logger_.Answers(0x0C, Bytes{1, 2, 3, 4, 5});
    ASSERT_TRUE(Send({0x0C}));
    EXPECT_EQ(link_.CommBusy, False) << "the caller asks for the reply next";
    Bytes reply(5);
    ASSERT_TRUE(comm::ReceiveFrame(link_, reply));
    EXPECT_EQ(reply, (Bytes{1, 2, 3, 4, 5}));
    EXPECT_EQ(link_.CommBusy, False);
}

TEST_F(FramesTest, BusyLinkRefusesAtOnceWithNothingOnTheWire) {
    link_.CommBusy = True;
    Bytes reply(5);
    EXPECT_FALSE(Send({0x0C}, 2));
    EXPECT_FALSE(comm::ReceiveFrame(link_, reply));
    EXPECT_TRUE(network_.Written().empty());
    EXPECT_EQ(retries_, 2);
    EXPECT_EQ(link_.CommBusy, True) << "the flag is its holder's";
}

TEST_F(FramesTest, WithoutAcknowledgeTwoRetriesMakeThreeTries) {
    network_.Faults().LoseAnswer(5);
    const int before = Requests();
    StartWatch();
    EXPECT_FALSE(Send({0x0C}, 2));
    EXPECT_EQ(Requests() - before, 3);
    EXPECT_NEAR(static_cast<double>(Elapsed()), 2400, 100);
    EXPECT_EQ(retries_, 0) << "retries are used up";
    EXPECT_EQ(link_.CommBusy, False);
}

TEST_F(FramesTest, ASecondTryThatIsAnsweredIsTrue) {
    network_.Faults().LoseRequest();
    EXPECT_TRUE(ReadStatus(2));
    EXPECT_EQ(retries_, 1);
}

TEST_F(FramesTest, AnotherByteInPlaceOfTheAcknowledgeCountsAsNone) {
    network_.Faults().NextReply(WrongAck(0xFC));
    EXPECT_FALSE(Send({0x0C}));
}

TEST_F(FramesTest, ALateAnswerThatTakesThePlaceOfAnAcknowledgeCostsOneRequestAlone) {
    // It comes at the line's own pace, byte by byte, and each byte would cost a request.
    network_.Babble(console_.Outside.Time.Now(), Bytes(170, 0x55));
    EXPECT_FALSE(Send({0x0C}, 0));
    StartWatch();
    EXPECT_TRUE(ReadStatus()) << "the next request first lets it run out";
    EXPECT_NEAR(static_cast<double>(Elapsed()), 600, 60) << "two ticks, then four";
    StartWatch();
    EXPECT_TRUE(ReadStatus());
    EXPECT_LT(Elapsed(), 60) << "and the one behind it goes out at once";
}

TEST_F(FramesTest, StrayBytesAreThrownAwayWithAPauseBeforeTheRequest) {
    port_.Receive({0xFA, 0xFA});
    StartWatch();
    EXPECT_TRUE(ReadStatus());
    EXPECT_NEAR(static_cast<double>(Elapsed()), 200, 60) << "a pause of two ticks";
}

TEST_F(FramesTest, StrayBytesThatGoOnGetALongerPause) {
    port_.Receive({1});
    console_.Outside.Time.In(50 * Millisecond, [this] { port_.Receive({2}); });
    StartWatch();
    EXPECT_TRUE(ReadStatus());
    EXPECT_NEAR(static_cast<double>(Elapsed()), 600, 60) << "two ticks, then four";
}

TEST_F(FramesTest, WhatComesInTheLongerPauseIsThrownAwayToo) {
    port_.Receive({1});
    console_.Outside.Time.In(50 * Millisecond, [this] { port_.Receive({2}); });
    console_.Outside.Time.In(400 * Millisecond, [this] { port_.Receive({3, 4}); });
    StartWatch();
    EXPECT_TRUE(ReadStatus());
    EXPECT_NEAR(static_cast<double>(Elapsed()), 600, 60) << "without a third pause";
}

TEST_F(FramesTest, WhatComesBehindAFailedReplyIsThrownAway) {
    network_.Faults().LoseReply();
    ASSERT_TRUE(Send({0x0C}));
    console_.Outside.Time.In(1200 * Millisecond, [this] { port_.Receive({1, 2, 3}); });
    Bytes reply(5);
    EXPECT_FALSE(comm::ReceiveFrame(link_, reply));
    EXPECT_EQ(port_.InBufferCount(), 0);
}

TEST_F(FramesTest, APayloadTooLongIsAFaultThatLetsGoOfTheLink) {
    EXPECT_THROW(Send(Bytes(254, 1)), Fault);
    EXPECT_EQ(link_.CommBusy, False);
}

TEST_F(FramesTest, AReplyThatNeverComesFailsAfterElevenTicksAndEmptiesTheInput) {
    network_.Faults().LoseReply();
    ASSERT_TRUE(Send({0x0C}));
    StartWatch();
    Bytes reply(5);
    EXPECT_FALSE(comm::ReceiveFrame(link_, reply));
    EXPECT_NEAR(static_cast<double>(Elapsed()), 1300, 100) << "1.1 s, input emptied 0.2 s later";
    EXPECT_EQ(port_.InBufferCount(), 0);
}

TEST_F(FramesTest, AFrameCutOffFailsAfterEightTicksOfSilence) {
    network_.Faults().NextReply(CutAfter(6));
    ASSERT_TRUE(Send({0x0C}));
    StartWatch();
    Bytes reply(5);
    EXPECT_FALSE(comm::ReceiveFrame(link_, reply));
    EXPECT_NEAR(static_cast<double>(Elapsed()), 1000, 100) << "0.8 s, input emptied 0.2 s later";
    EXPECT_EQ(port_.InBufferCount(), 0);
}

TEST_F(FramesTest, NoiseAheadOfAFrameIsSkipped) {
    network_.Faults().NextReply(NoiseBefore({0x00, 0xF9, 0x55}));
    EXPECT_TRUE(ReadStatus());
}

TEST_F(FramesTest, TheHuntLooksOnlyAtBytesThatHaveArrived) {
    network_.LineBaud = 300;
    network_.Faults().NextReply(NoiseBefore({1, 2, 3, 4}));
    ASSERT_TRUE(Send({0x0C}));
    Bytes reply(5);
    EXPECT_FALSE(comm::ReceiveFrame(link_, reply)) << "four bytes of noise run dry before F8";
}

TEST_F(FramesTest, AReplyOfAnotherLengthThanExpectedFails) {
    network_.Faults().NextReply(WrongLength(1)).NextReply(WrongLength(-1));
    EXPECT_FALSE(ReadStatus());
    EXPECT_FALSE(ReadStatus());
    EXPECT_TRUE(ReadStatus());
}

TEST_F(FramesTest, AFailedReceiveLeavesTheNextExchangeUnharmed) {
    network_.Faults().NextReply(LateReply(1500 * Millisecond));
    EXPECT_FALSE(ReadStatus());
    EXPECT_TRUE(ReadStatus());
    EXPECT_EQ(link_.CommBusy, False);
}

/// One fault at one place of a reply.
struct PlacedFault {
    const char* Name;
    simulator::LineFault (*Make)(int position);
    bool Harmless;  ///< the exchange succeeds all the same
};

class FramesUnderFault : public FramesTest, public ::testing::WithParamInterface<PlacedFault> {};

// At every byte position of a read of memory: the exchange fails as a whole, nothing of it
// shows, and the one after it works.
TEST_P(FramesUnderFault, EndsAsToldAndTheNextExchangeWorks) {
    constexpr int ReplyLength = 3 + 12 + 2 + 2 + 1;
    for (int position = 0; position < ReplyLength; ++position) {
        network_.Faults().Clear().OnRequest(0x08, GetParam().Make(position));
        Bytes reply(15, 0xEE);
        const bool received = Send({0x08, 8, 0, 0, 12}) && comm::ReceiveFrame(link_, reply);
        Bytes next(15);
        EXPECT_EQ(link_.CommBusy, False);
        ASSERT_TRUE(Send({0x08, 8, 0, 0, 12}, 2) && comm::ReceiveFrame(link_, next)) << position;
        if (GetParam().Harmless) {
            EXPECT_TRUE(received) << GetParam().Name << " at " << position;
        }
        if (received) {
            EXPECT_EQ(reply, next) << GetParam().Name << " at " << position;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    AtEveryByte, FramesUnderFault,
    ::testing::Values(
        PlacedFault{"Cut", [](int at) { return CutAfter(at); }, false},
        PlacedFault{"Corrupted", [](int at) { return CorruptByte(at); }, false},
        PlacedFault{"OneBit", [](int at) { return CorruptByte(at, 0x10); }, false},
        PlacedFault{"Doubled", [](int) { return Plain(FaultKind::Repeat); }, true},
        PlacedFault{"Late", [](int at) { return LateReply(100 * Millisecond * (at + 1)); }, false},
        PlacedFault{"Noise",
                    [](int at) {
                        return NoiseBefore(simulator::Bytes(static_cast<std::size_t>(at), 0xF9));
                    },
                    false},
        PlacedFault{"FalseStart", [](int) { return NoiseBefore({0xF8}); }, false},
        PlacedFault{"NoiseAhead",
                    [](int at) {
                        return NoiseAhead(simulator::Bytes(static_cast<std::size_t>(at + 1), 0x41));
                    },
                    false}),
    [](const auto& fault) { return fault.param.Name; });

TEST_F(FramesTest, ReadMemorySendsAddressThenCount) {
    Bytes memory;
    ASSERT_TRUE(cmd::ReadLoggerMemory(console_.State.Exchange, memory, 0, 12, 0x010203));
    EXPECT_EQ(network_.RequestsTo(logger_), (std::vector<simulator::Bytes>{{0x08, 3, 2, 1, 12}}));
}

TEST_F(FramesTest, ReadMemoryFillsOnlyWithAMatchingEcho) {
    logger_.Answers(0x08, Bytes{9, 0, 0, 0x41, 0x42});
    Bytes memory(2, 0x11);
    EXPECT_FALSE(cmd::ReadLoggerMemory(console_.State.Exchange, memory, 4, 2, 8));
    EXPECT_EQ(memory, (Bytes{0x11, 0x11, 0, 0, 0, 0})) << "enlarged but unfilled";
    EXPECT_EQ(network_.RequestsTo(logger_).size(), 2U) << "two attempts";
}

TEST_F(FramesTest, ReadMemoryTransmitsAtMostSixTimes) {
    network_.Faults().LoseAnswer(10);
    Bytes memory;
    EXPECT_FALSE(cmd::ReadLoggerMemory(console_.State.Exchange, memory, 0, 4, 8));
    EXPECT_EQ(network_.RequestsTo(logger_).size(), 6U);
}

TEST_F(FramesTest, ReadMemoryRepairsAFrameLostOnce) {
    network_.Faults().LoseReply();
    Bytes memory;
    ASSERT_TRUE(cmd::ReadLoggerMemory(console_.State.Exchange, memory, 0, 6, 8));
    EXPECT_EQ(memory, (Bytes{'S', 'i', 't', 'e', ' ', '1'}));
}

TEST_F(FramesTest, WriteCarriesTheLastAddress) {
    std::int32_t address = 136;
    const Bytes source(200, 0x20);
    ASSERT_TRUE(cmd::WriteLoggerMemory(console_.State.Exchange, source, 50, 114, address));
    const simulator::Bytes request = network_.RequestsTo(logger_).front();
    EXPECT_EQ(simulator::Bytes(request.begin(), request.begin() + 7),
              (simulator::Bytes{0x07, 0xA7, 0x7A, 136, 0, 249, 0}));
    EXPECT_EQ(request.size(), 121U);
    EXPECT_EQ(address, 249) << "the caller goes on from the last address";
}

TEST_F(FramesTest, MemoryPiecesThatCannotBeAreFaults) {
    Bytes memory;
    std::int32_t address = 0;
    EXPECT_THROW(
        static_cast<void>(cmd::ReadLoggerMemory(console_.State.Exchange, memory, 0, 256, 0)),
        Fault);
    EXPECT_THROW(
        static_cast<void>(cmd::WriteLoggerMemory(console_.State.Exchange, memory, 0, 1, address)),
        Fault);
}

}  // namespace
