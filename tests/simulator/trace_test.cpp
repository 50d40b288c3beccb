#include "simulator/trace.h"

#include "simulator/wire.h"

namespace simulator {
namespace {

class TraceTest : public WireTest {
 protected:
    TraceTest() {
        net.SetTrace([this](const Exchange& exchange) { last = exchange; });
    }

    /// The line of the exchange, without its time.
    std::string Radio(const Bytes& command) {
        Send(command);
        return TraceLine(last).substr(15);
    }
    std::string Line(const Bytes& request) { return Radio(EncodeFrame(request)); }

    Exchange last;
};

TEST_F(TraceTest, TellsTimeAndName) {
    now = 12 * Second;
    Ask({0x0B, 0xAB, 0xBA});
    EXPECT_EQ(TraceLine(last), "    12.005000  Logger: 0B restart sampling -> FA, FC");
}

TEST_F(TraceTest, DecodesTheRadio) {
    EXPECT_EQ(Radio(BytesOf("AT+++\r")), "radio: AT+++ -> command mode");
    EXPECT_EQ(Radio({0xCC, 0xC0, 0x76, 0x01}), "radio: CC C0 system id -> system id 1");
    EXPECT_EQ(Radio({0xCC, 0x26}), "radio: CC 26 signal -> signal 255");
    EXPECT_EQ(Radio({0xCC, 0x02, 0x1A}), "radio: CC 02 channel 1A -> taken");
    EXPECT_EQ(Radio({0xCC, 0x10, 0x01, 0x02, 0x03}), "radio: CC 10 address 01 02 03 -> taken");
    EXPECT_EQ(Radio({0xCC, 'A', 'T', 'O', 0x0D}), "radio: CC ATO -> normal mode");
}

TEST_F(TraceTest, DecodesLoggerCommands) {
    EXPECT_EQ(Line({0x08, 0x08, 0x00, 0x00, 0xF2}),
              "Logger: 08 read 242 bytes at 8 -> FA, frame of 245");
    EXPECT_EQ(Line({0x07, 0xA7, 0x7A, 0x00, 0x02, 0x01, 0x02, 1, 2}),
              "Logger: 07 write 2 bytes at 512 -> FA");
    EXPECT_EQ(Line({0x0C}), "Logger: 0C status -> FA, frame of 5: 00 00 00 80 00");
    EXPECT_EQ(Line({0x0D, 0x00}),
              "Logger: 0D history, first block -> FA, frame of 241 with 0 "
              "records");
    EXPECT_EQ(Line({0x0A}), "Logger: 0A read sample -> FA, FD");
    EXPECT_EQ(Line({0x55}), "Logger: 55 unknown command -> nothing");
}

TEST_F(TraceTest, TellsWhatWentWrong) {
    net.Faults().LoseReply().NextReply(CutAfter(4)).NextReply(CorruptByte(3)).LoseRequest();
    EXPECT_EQ(Line({0x0C}), "Logger: 0C status -> FA  (lose-reply)");
    EXPECT_EQ(Line({0x0C}), "Logger: 0C status -> FA, part of a frame  (cut)");
    EXPECT_EQ(Line({0x0C}), "Logger: 0C status -> FA, bad frame  (corrupt)");
    EXPECT_EQ(Line({0x0C}), "Logger: 0C status -> nothing  (lose-request)");
    net.RadioFaults().NextReply(CutAfter(1));
    EXPECT_EQ(Radio(BytesOf("AT+++\r")), "radio: AT+++ -> CC  (cut)");
}

TEST_F(TraceTest, OddRequestsAreToldToo) {
    for (int code = 0; code < 256; ++code) {
        const auto byte = static_cast<std::uint8_t>(code);
        EXPECT_FALSE(Line({byte}).empty());
        EXPECT_FALSE(Line({byte, 0xFF}).empty());
        EXPECT_FALSE(Line({byte, 1, 2, 3, 4, 5}).empty());
    }
}

}  // namespace
}  // namespace simulator
