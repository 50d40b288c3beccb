#include "simulator/network.h"

#include "simulator/wire.h"

namespace simulator {
namespace {

// ----- pacing

TEST(Pacing, ByteTakesTenBitsAndRoundingDoesNotAddUp) {
    Line line;
    line.Send(1000, Bytes(4, 0x55), 38400);
    EXPECT_EQ(line.Take().Due, 1000 + 261);
    EXPECT_EQ(line.Take().Due, 1000 + 521);
    EXPECT_EQ(line.Take().Due, 1000 + 782);
    EXPECT_EQ(line.Take().Due, 1000 + 1042);
    EXPECT_EQ(line.NextDue(), std::nullopt);
}

TEST(Pacing, BytesQueueBehindThoseUnderWay) {
    Line line;
    line.Send(0, Bytes(2, 0), 9600);
    line.Send(100, Bytes(1, 0), 9600);
    line.Take();
    EXPECT_EQ(line.Take().Due, 2084);
    EXPECT_EQ(line.Take().Due, 3125);
    line.Send(10'000, Bytes(1, 0), 9600);
    EXPECT_EQ(line.Take().Due, 11'042);
}

TEST(Pacing, NoBaudRateMeansAtOnce) {
    Line line;
    line.Send(7, Bytes(3, 0), 0);
    EXPECT_EQ(line.Take().Due, 7);
    EXPECT_EQ(line.Take().Due, 7);
}

class NetworkTest : public testing::Test {
 protected:
    NetworkTest() {
        logger = &net.AddLogger({});
        net.Radio().Tune(logger->Channel(), logger->Mac());
    }

    Network net;
    Logger* logger = nullptr;
};

/// The time from a request's first byte to each byte of its answer, to the microsecond.
TEST_F(NetworkTest, AnswerArrivesExactlyWhenLineAndDelaysSay) {
    net.LineBaud = 19200;
    net.Write(0, EncodeFrame(Bytes{0x0C}));
    // 6 bytes out take 3125; 5000 in the air, 3000 in the logger, 5000 in the air; then each byte
    // takes 520.8333.
    const Microseconds answered = 3125 + 5000 + 3000 + 5000;
    EXPECT_EQ(net.Read(answered + 520).size(), 0U);
    EXPECT_EQ(net.NextEvent(), answered + 521);
    EXPECT_EQ(net.Read(answered + 521), Bytes{0xFA});
    EXPECT_EQ(net.NextEvent(), answered + 1042);
    EXPECT_EQ(net.Read(answered + 1041).size(), 0U);
    EXPECT_EQ(net.Read(answered + 1042), Bytes{0xF8});
    const Microseconds last = answered + (11 * 10'000'000 + 19199) / 19200;
    EXPECT_EQ(net.Read(last - 1).size(), 8U);
    EXPECT_EQ(net.Read(last), Bytes{0xF9});
    EXPECT_EQ(net.NextEvent(), std::nullopt);
}

TEST_F(NetworkTest, JumpingFromEventToEventMissesNothing) {
    net.Write(0, EncodeFrame(Bytes{0x08, 0x08, 0x00, 0x00, 0xF2}));
    Bytes bytes;
    Microseconds now = 0;
    int jumps = 0;
    for (auto next = net.NextEvent(); next; next = net.NextEvent()) {
        ASSERT_GE(*next, now);
        now = *next;
        const Bytes more = net.Read(now);
        bytes.insert(bytes.end(), more.begin(), more.end());
        ASSERT_LT(++jumps, 2000);
    }
    EXPECT_EQ(bytes,
              AckAndFrame(*logger->Carry(Bytes{0x08, 0x08, 0x00, 0x00, 0xF2}, now)->Payload));
    EXPECT_EQ(net.Count().BytesToConsole, static_cast<int>(bytes.size()));
}

TEST_F(NetworkTest, RadioAnswersBehindItsDelay) {
    net.LineBaud = 0;
    net.Write(500, BytesOf("AT+++\r"));
    EXPECT_EQ(net.Read(2499), Bytes{});
    EXPECT_EQ(net.Read(2500), (Bytes{0xCC, 'C', 'O', 'M'}));
}

TEST_F(NetworkTest, TimeNeverRunsBack) {
    net.LineBaud = 0;
    EXPECT_EQ(net.Read(Second), Bytes{});
    net.Write(0, BytesOf("AT+++\r"));
    EXPECT_EQ(net.NextEvent(), Second);
    EXPECT_EQ(net.Read(0), Bytes{});
    EXPECT_EQ(net.Read(2 * Second).size(), 4U);
}

TEST_F(NetworkTest, QuietNetworkHasNoEvents) {
    EXPECT_EQ(net.NextEvent(), std::nullopt);
    EXPECT_EQ(net.Read(100 * Second), Bytes{});
    EXPECT_EQ(net.NextEvent(), std::nullopt);
}

TEST_F(NetworkTest, BabbleComesAtTheLinesPace) {
    net.LineBaud = 9600;
    net.Babble(0, Bytes{0xFA, 0xF8});
    EXPECT_EQ(net.Read(1042), Bytes{0xFA});
    EXPECT_EQ(net.Read(2084), Bytes{0xF8});
}

// ----- frames that go wrong on their way out

TEST_F(NetworkTest, LoggerForgetsHalfAFrame) {
    net.LineBaud = 0;
    net.Write(0, Bytes{0xF8});
    EXPECT_EQ(net.Read(Second), Bytes{});
    net.Write(Second, EncodeFrame(Bytes{0x0C}));
    EXPECT_EQ(net.Read(2 * Second).size(), 11U);
    EXPECT_EQ(net.Count().BadFrames, 1);
}

TEST_F(NetworkTest, LoggerKeepsSilentOnABadFrame) {
    net.LineBaud = 0;
    Bytes bad = EncodeFrame(Bytes{0x0C});
    bad[3] ^= 0x10;
    net.Write(0, bad);
    EXPECT_EQ(net.Read(Second), Bytes{});
    EXPECT_EQ(net.Count().BadFrames, 1);
    EXPECT_EQ(net.Count().Requests, 0);
}

// ----- records of what went on

TEST_F(NetworkTest, RecordsWhatWasExchanged) {
    net.LineBaud = 0;
    net.Write(0, BytesOf("AT+++\r"));
    net.Write(Second, Bytes{0xCC, 0x02, logger->Channel()});
    net.Write(2 * Second, BytesOf("\xCC"
                                  "ATO\r"));
    net.Faults().LoseAck();
    net.Write(3 * Second, EncodeFrame(Bytes{0x0C}));
    EXPECT_EQ(net.Read(4 * Second).size(), 4U + 3 + 4 + 10);
    EXPECT_EQ(net.RadioCommands(), (std::vector<Bytes>{BytesOf("AT+++\r"),
                                                       {0xCC, 0x02, logger->Channel()},
                                                       {0xCC, 'A', 'T', 'O', 0x0D}}));
    EXPECT_EQ(net.RequestsTo(*logger), std::vector<Bytes>{{0x0C}});
    EXPECT_EQ(net.Written().size(), 6U + 3 + 5 + 6);
    const Exchange& last = net.Record().back();
    EXPECT_EQ(last.Time, 3 * Second + net.AirDelay);
    EXPECT_EQ(last.LoggerName, "Logger");
    EXPECT_EQ(last.Fault, FaultKind::LoseAck);
    EXPECT_EQ(last.Sent, EncodeFrame(Bytes{0x00, 0x00, 0x00, 0x80, 0x00}));
    net.ClearRecord();
    EXPECT_TRUE(net.Record().empty());
    EXPECT_TRUE(net.Written().empty());
}

TEST_F(NetworkTest, TellsAListenerWithoutKeepingARecord) {
    std::vector<Exchange> heard;
    net.SetTrace([&](const Exchange& exchange) { heard.push_back(exchange); });
    net.KeepsRecord = false;
    net.Write(0, EncodeFrame(Bytes{0x0F}));
    EXPECT_FALSE(net.Read(Second).empty());
    ASSERT_EQ(heard.size(), 1U);
    EXPECT_EQ(heard[0].Request, Bytes{0x0F});
    EXPECT_TRUE(net.Record().empty());
}

TEST_F(NetworkTest, FindsLoggersByAddressAndByName) {
    LoggerSetup setup;
    setup.Settings.Name = "Weir";
    setup.Channel = 0x20;
    setup.Mac = {1, 2, 3, 4, 5, 6};
    Logger& weir = net.AddLogger(setup);
    EXPECT_EQ(net.FindLogger(0x20, {4, 5, 6}), &weir);
    EXPECT_EQ(net.FindLogger(0x21, {4, 5, 6}), nullptr);
    EXPECT_EQ(net.FindLogger(0x20, {1, 2, 3}), nullptr);
    EXPECT_EQ(net.FindLogger("Weir"), &weir);
    EXPECT_EQ(net.FindLogger("weir"), nullptr);
}

}  // namespace
}  // namespace simulator
