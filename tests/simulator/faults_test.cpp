#include "simulator/faults.h"

#include <set>

#include "simulator/wire.h"

namespace simulator {
namespace {

/// The status request, and its answer in its parts.
const Bytes Request = {0x0C};
const Bytes Ack = {0xFA};
const Bytes Frame = EncodeFrame(Bytes{0x00, 0x00, 0x00, 0x80, 0x00});

Bytes Join(std::initializer_list<Bytes> parts) {
    Bytes all;
    for (const Bytes& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

class FaultsTest : public WireTest {
 protected:
    const Bytes good = Join({Ack, Frame});
};

TEST_F(FaultsTest, NothingGoesWrongByItself) {
    EXPECT_EQ(Ask(Request), good);
    EXPECT_EQ(net.Faults().Count(), 0);
}

TEST_F(FaultsTest, LostRequestIsNotCarriedOut) {
    net.Faults().LoseRequest();
    EXPECT_EQ(Ask({0x07, 0xA7, 0x7A, 0x08, 0x00, 0x08, 0x00, 'X'}), Bytes{});
    EXPECT_NE(logger->Memory()[8], 'X');
    EXPECT_EQ(Ask({0x07, 0xA7, 0x7A, 0x08, 0x00, 0x08, 0x00, 'X'}), Ack);
    EXPECT_EQ(logger->Memory()[8], 'X');
}

TEST_F(FaultsTest, LostAckLeavesTheReply) {
    net.Faults().LoseAck();
    EXPECT_EQ(Ask(Request), Frame);
}

TEST_F(FaultsTest, LostAckOfAnAnswerThatIsNoMoreIsAllOfIt) {
    net.Faults().LoseAck();
    EXPECT_EQ(Ask({0x07, 0xA7, 0x7A, 0x08, 0x00, 0x08, 0x00, 'X'}), Bytes{});
    EXPECT_EQ(logger->Memory()[8], 'X');
}

TEST_F(FaultsTest, LostReplyLeavesTheAck) {
    net.Faults().LoseReply(2);
    EXPECT_EQ(Ask(Request), Ack);
    EXPECT_EQ(Ask(Request), Ack);
    EXPECT_EQ(Ask(Request), good);
}

TEST_F(FaultsTest, LostAnswerIsCarriedOut) {
    net.Faults().LoseAnswer();
    EXPECT_EQ(Ask({0x0B, 0xAB, 0xBA}), Bytes{});
    EXPECT_TRUE(logger->Refused().empty());
    net.Faults().LoseAnswer();
    EXPECT_EQ(Ask({0x07, 0xA7, 0x7A, 0x08, 0x00, 0x08, 0x00, 'X'}), Bytes{});
    EXPECT_EQ(logger->Memory()[8], 'X');
}

TEST_F(FaultsTest, LateAnswerComesWhole) {
    net.Faults().NextReply(Late(2 * Second));
    EXPECT_EQ(Send(EncodeFrame(Request), 2 * Second), Bytes{});
    EXPECT_EQ(Send({}, Second), good);
}

TEST_F(FaultsTest, LateReplyComesBehindTheAck) {
    net.Faults().NextReply(LateReply(2 * Second));
    EXPECT_EQ(Send(EncodeFrame(Request), 2 * Second), Ack);
    EXPECT_EQ(Send({}, Second), Frame);
}

TEST_F(FaultsTest, CutReplyEndsEarly) {
    net.Faults().NextReply(CutAfter(5));
    EXPECT_EQ(Ask(Request), Join({Ack, Bytes(Frame.begin(), Frame.begin() + 5)}));
    net.Faults().NextReply(CutAfter(500));
    EXPECT_EQ(Ask(Request), good);
    net.Faults().NextReply(CutAfter(0));
    EXPECT_EQ(Ask(Request), Ack);
}

TEST_F(FaultsTest, CorruptReplyHasOneByteChanged) {
    net.Faults().NextReply(CorruptByte(4, 0x81));
    Bytes expected = good;
    expected[1 + 4] ^= 0x81;
    EXPECT_EQ(Ask(Request), expected);
    net.Faults().NextReply(CorruptByte(400));
    EXPECT_EQ(Ask(Request), good);
}

TEST_F(FaultsTest, NoiseStandsBeforeTheReply) {
    net.Faults().NextReply(NoiseBefore({1, 2}));
    EXPECT_EQ(Ask(Request), Join({Ack, {1, 2}, Frame}));
}

TEST_F(FaultsTest, NoiseAheadStandsBeforeTheAck) {
    net.Faults().NextReply(NoiseAhead({1, 2}));
    EXPECT_EQ(Ask(Request), Join({{1, 2}, Ack, Frame}));
}

TEST_F(FaultsTest, WrongAckStandsInItsPlace) {
    net.Faults().NextReply(WrongAck(0x15));
    EXPECT_EQ(Ask(Request), Join({{0x15}, Frame}));
}

TEST_F(FaultsTest, ReplyOfWrongLengthIsStillAGoodFrame) {
    net.Faults().NextReply(WrongLength(1)).NextReply(WrongLength(-1)).NextReply(WrongLength(-9));
    EXPECT_EQ(Ask(Request), Join({Ack, EncodeFrame(Bytes{0x00, 0x00, 0x00, 0x80, 0x00, 0x00})}));
    EXPECT_EQ(Ask(Request), Join({Ack, EncodeFrame(Bytes{0x00, 0x00, 0x00, 0x80})}));
    EXPECT_EQ(Ask(Request), Join({Ack, EncodeFrame({})}));
}

TEST_F(FaultsTest, RepeatedReplyComesTwice) {
    net.Faults().RepeatReply();
    EXPECT_EQ(Ask(Request), Join({Ack, Frame, Frame}));
}

TEST_F(FaultsTest, SilentLoggerSaysNothingUntilWoken) {
    net.Faults().GoSilent();
    EXPECT_EQ(Ask(Request), Bytes{});
    EXPECT_EQ(Ask(Request), Bytes{});
    EXPECT_TRUE(logger->IsSilent());
    logger->Wake();
    EXPECT_EQ(Ask(Request), good);
}

TEST_F(FaultsTest, PassLetsRequestsThrough) {
    net.Faults().Pass(2).LoseRequest();
    EXPECT_EQ(Ask(Request), good);
    EXPECT_EQ(Ask(Request), good);
    EXPECT_EQ(Ask(Request), Bytes{});
}

TEST_F(FaultsTest, ScriptOfAnyLengthTakesTheRoomOfItsEntries) {
    LineFault babble = NoiseAhead(Bytes(2000, 0x55));
    net.Faults().NextReply(babble, 1'000'000'000).NextReply(babble, 0).Clear();
    net.Faults().NextReply(babble, 1'000'000'000);
    EXPECT_EQ(Send(EncodeFrame(Request), 2 * Second).size(), 2000 + good.size());
    EXPECT_EQ(Send(EncodeFrame(Request), 2 * Second).size(), 2000 + good.size());
}

TEST_F(FaultsTest, EntryOfNoTimesIsNone) {
    net.Faults().Pass(0).LoseRequest(-1).LoseReply();
    EXPECT_EQ(Ask(Request), Ack);
    EXPECT_EQ(Ask(Request), good);
}

TEST_F(FaultsTest, RuleActsOnItsCommandAlone) {
    net.Faults().OnRequest(0x0F, Plain(FaultKind::LoseRequest), 2);
    EXPECT_EQ(Ask(Request), good);
    EXPECT_EQ(Ask({0x0F}), Bytes{});
    EXPECT_EQ(Ask({0x0F}), Bytes{});
    EXPECT_FALSE(Ask({0x0F}).empty());
}

TEST_F(FaultsTest, AlwaysGivesWayToWhatIsScripted) {
    net.Faults().Always(Plain(FaultKind::LoseReply)).LoseRequest();
    EXPECT_EQ(Ask(Request), Bytes{});
    EXPECT_EQ(Ask(Request), Ack);
    EXPECT_EQ(Ask(Request), Ack);
    net.Faults().Clear();
    EXPECT_EQ(Ask(Request), good);
}

TEST_F(FaultsTest, ServerRadioHasAScriptOfItsOwn) {
    net.RadioFaults().LoseRequest().OnRequest('A', WrongAck(0x00)).OnRequest(0x02, CutAfter(2));
    net.Faults().LoseRequest(100);
    EXPECT_EQ(Send(BytesOf("AT+++\r")), (Bytes{0x00, 'C', 'O', 'M'}));
    EXPECT_EQ(Send({0xCC, 0x26}), Bytes{});
    EXPECT_EQ(Send({0xCC, 0x02, 0x05}), (Bytes{0xCC, 0x05}));
    EXPECT_EQ(Send({0xCC, 0x26}), (Bytes{0xCC, 0xFF, 0, 0}));
}

TEST_F(FaultsTest, RadioThatLosesACommandDoesNotObeyIt) {
    Send(BytesOf("AT+++\r"));
    net.RadioFaults().LoseRequest().LoseReply().GoSilent();
    Send({0xCC, 0x02, 0x05});
    EXPECT_EQ(net.Radio().Channel(), logger->Channel());
    EXPECT_EQ(Send({0xCC, 0x02, 0x06}), Bytes{});
    EXPECT_EQ(net.Radio().Channel(), 0x06);
    EXPECT_EQ(Send({0xCC, 0x02, 0x07}), Bytes{});
    EXPECT_TRUE(net.Radio().IsSilent());
}

TEST(FaultChance, StrikesAsOftenAsAsked) {
    FaultScript script;
    script.Probability(0.25, 1);
    std::set<FaultKind> met;
    for (int i = 0; i < 4000; ++i) {
        met.insert(script.Take(0x0C).Kind);
    }
    EXPECT_NEAR(script.Count(), 1000, 100);
    EXPECT_EQ(met.size(), 1U + 13U);
    EXPECT_FALSE(met.contains(FaultKind::Silent));
}

TEST(FaultChance, IsTheSameForTheSameSeed) {
    FaultScript one;
    FaultScript same;
    FaultScript other;
    one.Probability(0.5, 7);
    same.Probability(0.5, 7);
    other.Probability(0.5, 8);
    int differences = 0;
    for (int i = 0; i < 100; ++i) {
        const LineFault fault = one.Take(0);
        const LineFault again = same.Take(0);
        EXPECT_EQ(fault.Kind, again.Kind);
        EXPECT_EQ(fault.Data, again.Data);
        EXPECT_EQ(fault.Delay, again.Delay);
        differences += fault.Kind == other.Take(0).Kind ? 0 : 1;
    }
    EXPECT_GT(differences, 20);
}

TEST(FaultChance, DrawsFromTheKindsGiven) {
    FaultScript script;
    script.Probability(1, 3, {FaultKind::Cut});
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(script.Take(0).Kind, FaultKind::Cut);
    }
}

TEST(FaultNames, LeadBackToTheirKinds) {
    for (int kind = 0; kind <= static_cast<int>(FaultKind::Silent); ++kind) {
        EXPECT_EQ(FaultKindNamed(NameOf(static_cast<FaultKind>(kind))),
                  static_cast<FaultKind>(kind));
    }
    EXPECT_EQ(FaultKindNamed("lose-everything"), std::nullopt);
}

}  // namespace
}  // namespace simulator
