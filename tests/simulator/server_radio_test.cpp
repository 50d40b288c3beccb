#include "simulator/server_radio.h"

#include "simulator/wire.h"

namespace simulator {
namespace {

class ServerRadioTest : public WireTest {
 protected:
    Bytes Enter() { return Send(BytesOf("AT+++\r")); }
    Bytes Leave() { return Send({0xCC, 'A', 'T', 'O', 0x0D}); }
};

TEST_F(ServerRadioTest, EntersCommandMode) {
    EXPECT_EQ(Enter(), (Bytes{0xCC, 'C', 'O', 'M'}));
    EXPECT_TRUE(net.Radio().InCommandMode());
}

TEST_F(ServerRadioTest, LeavesCommandMode) {
    Enter();
    EXPECT_EQ(Leave(), (Bytes{0xCC, 'D', 'A', 'T'}));
    EXPECT_FALSE(net.Radio().InCommandMode());
}

TEST_F(ServerRadioTest, IgnoresTheEntryTextInCommandMode) {
    Enter();
    EXPECT_EQ(Enter(), Bytes{});
    EXPECT_EQ(Leave(), (Bytes{0xCC, 'D', 'A', 'T'}));
}

TEST_F(ServerRadioTest, LeaveTextInNormalModeIsDataForTheLogger) {
    EXPECT_EQ(Leave(), Bytes{});
    EXPECT_FALSE(net.Radio().InCommandMode());
    EXPECT_TRUE(net.RadioCommands().empty());
}

TEST_F(ServerRadioTest, TakesChannel) {
    Enter();
    EXPECT_EQ(Send({0xCC, 0x02, 0x37}), (Bytes{0xCC, 0x37, 0x00}));
    EXPECT_EQ(net.Radio().Channel(), 0x37);
}

TEST_F(ServerRadioTest, TakesMac) {
    Enter();
    EXPECT_EQ(Send({0xCC, 0x10, 0x1F, 0x2E, 0x3D}), (Bytes{0xCC, 0x1F, 0x2E, 0x3D}));
    EXPECT_EQ(net.Radio().Mac(), (Mac3{0x1F, 0x2E, 0x3D}));
}

TEST_F(ServerRadioTest, MacMayHoldTheCommandStart) {
    Enter();
    EXPECT_EQ(Send({0xCC, 0x10, 0xCC, 0xCC, 0x02}), (Bytes{0xCC, 0xCC, 0xCC, 0x02}));
}

TEST_F(ServerRadioTest, GivesSystemIdAsFourthByte) {
    net.Radio().SetSystemId(0x2A);
    Enter();
    EXPECT_EQ(Send({0xCC, 0xC0, 0x76, 0x01}), (Bytes{0xCC, 0x76, 0x01, 0x2A}));
}

TEST_F(ServerRadioTest, AnswersNoOtherConstantThanThatOfTheSystemId) {
    Enter();
    EXPECT_EQ(Send({0xCC, 0xC0, 0x77, 0x01}), Bytes{});
}

TEST_F(ServerRadioTest, ReportsTheSignalOfTheLoggerLastHeard) {
    Ask({0x0C});
    Enter();
    EXPECT_EQ(Send({0xCC, 0x26}), (Bytes{0xCC, 43, 0, 0}));
}

TEST_F(ServerRadioTest, ReportsTheWeakestSignalBeforeAnythingIsHeard) {
    Enter();
    EXPECT_EQ(Send({0xCC, 0x26}), (Bytes{0xCC, 0xFF, 0, 0}));
}

TEST_F(ServerRadioTest, ReportsFixedSignal) {
    net.Radio().FixSignal(189);
    Enter();
    EXPECT_EQ(Send({0xCC, 0x26}), (Bytes{0xCC, 189, 0, 0}));
}

TEST_F(ServerRadioTest, AnswersNothingToUnknownCommand) {
    Enter();
    EXPECT_EQ(Send({0xCC, 0x55, 0x01}), Bytes{});
    EXPECT_EQ(Send({0xCC, 0x26}), (Bytes{0xCC, 0xFF, 0, 0}));
}

TEST_F(ServerRadioTest, AnswersNoCommandInNormalMode) {
    EXPECT_EQ(Send({0xCC, 0x02, 0x05}), Bytes{});
    EXPECT_EQ(net.Radio().Channel(), logger->Channel());
}

TEST_F(ServerRadioTest, ForgetsCommandThatIsNotFinished) {
    Enter();
    EXPECT_EQ(Send({0xCC, 0x10, 0x01}), Bytes{});
    EXPECT_EQ(Send({0xCC, 0x02, 0x05}), (Bytes{0xCC, 0x05, 0x00}));
}

TEST_F(ServerRadioTest, PassesNothingThroughTheAirInCommandMode) {
    Enter();
    EXPECT_EQ(Ask({0x0C}), Bytes{});
    EXPECT_TRUE(net.RequestsTo(*logger).empty());
}

TEST_F(ServerRadioTest, FindsEntryTextBehindItsOwnBeginning) {
    EXPECT_EQ(Send(BytesOf("AT+AT+++\r")), (Bytes{0xCC, 'C', 'O', 'M'}));
}

TEST_F(ServerRadioTest, PassesOnWhatOnlyBeganLikeTheEntryText) {
    const Bytes name = BytesOf("AT++");
    Bytes write = {0x07, 0xA7, 0x7A, 0x08, 0x00, 0x0B, 0x00};
    write.insert(write.end(), name.begin(), name.end());
    EXPECT_EQ(Ask(write), Bytes{Acknowledge});
    EXPECT_EQ(Bytes(logger->Memory().begin() + 8, logger->Memory().begin() + 12), name);
}

TEST_F(ServerRadioTest, KeepsWhatCameInPartsTogether) {
    EXPECT_EQ(Send(BytesOf("AT+"), Millisecond), Bytes{});
    EXPECT_EQ(Send(BytesOf("++\r")), (Bytes{0xCC, 'C', 'O', 'M'}));
}

TEST_F(ServerRadioTest, SilentRadioTakesNothing) {
    net.Radio().Silence();
    EXPECT_EQ(Enter(), Bytes{});
    net.Radio().Wake();
    EXPECT_FALSE(net.Radio().InCommandMode());
    EXPECT_EQ(Enter(), (Bytes{0xCC, 'C', 'O', 'M'}));
}

TEST_F(ServerRadioTest, ReachesOnlyTheLoggerOfItsChannelAndMac) {
    LoggerSetup other;
    other.Settings.Name = "Other";
    other.Mac = {0, 0, 0, 1, 2, 3};
    Logger& second = net.AddLogger(other);
    net.Radio().Tune(second.Channel(), {1, 2, 3});
    EXPECT_FALSE(Ask({0x0C}).empty());
    EXPECT_TRUE(net.RequestsTo(*logger).empty());
    EXPECT_EQ(net.RequestsTo(second).size(), 1U);
    net.Radio().Tune(0x11, {1, 2, 3});
    EXPECT_TRUE(Ask({0x0C}).empty());
    EXPECT_EQ(net.Count().Unheard, 6);
}

TEST_F(ServerRadioTest, DoesNotHearLoggerThatAnswersWhenItIsElsewhere) {
    net.Faults().NextReply(Late(Second));
    EXPECT_EQ(Ask({0x0C}), Bytes{});
    Enter();
    EXPECT_EQ(Send({}, 2 * Second), Bytes{});
    EXPECT_EQ(net.Count().Drowned, 11);
}

}  // namespace
}  // namespace simulator
