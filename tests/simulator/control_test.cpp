#include "simulator/control.h"

#include "simulator/wire.h"

namespace simulator {
namespace {

LoggerSetup PipeSite() {
    LoggerSetup setup;
    setup.Settings.Name = "Mill Pipe";
    setup.Settings.Analog[0] = {"Feet", true, 2, 0, 65535, 0, 2, 0, 2};
    setup.Settings.Pulse.assign(1, PulseSettings{});
    setup.Settings.Flow.Mode = FlowMode::Manning;
    setup.AnalogSignals = {ConstantSignal(0.5)};
    setup.HistoryRecords = 12;
    return setup;
}

class ControlTest : public WireTest {
 protected:
    ControlTest() : WireTest(PipeSite()) {}

    std::string Say(const std::string& line) { return Control(net, line, now).Text; }
    void ExpectError(const std::string& line) {
        EXPECT_EQ(Say(line).substr(0, 7), "error: ") << line;
    }
};

TEST_F(ControlTest, TellsTheTruth) {
    EXPECT_EQ(Say("truth Mill Pipe"),
              "truth of Mill Pipe\n"
              "analog 1 0.500000 Feet raw 16384\n"
              "pulse 1 0.000000 Pulses count 0\n"
              "flow 1.653395 CFS velocity 4.210336 FPS\n"
              "records 12\n"
              "ok");
    ExpectError("truth Mill");
}

TEST_F(ControlTest, TellsWhatWasTrueWhenTheSampleWasTaken) {
    logger->SetAnalogSignal(0, SineSignal(1, 0.5, 3600));
    ExpectError("sampled Mill Pipe");
    ExpectError("sampled Mill");
    Ask({0x09, 0x01});
    const std::string then = Say("sampled Mill Pipe");
    EXPECT_EQ(then, Control(net, "truth Mill Pipe", *logger->SampleMoment(now)).Text);
    now += 600 * Second;
    EXPECT_EQ(Say("sampled Mill Pipe"), then);
    EXPECT_NE(Say("truth Mill Pipe"), then);
}

TEST_F(ControlTest, TellsWhatWasTrueAtARecord) {
    logger->SetAnalogSignal(0, SineSignal(1, 0.5, 3600));
    EXPECT_EQ(logger->RecordMoment(11), 0);
    EXPECT_EQ(logger->RecordMoment(0), -11 * (900 * Second));
    EXPECT_EQ(Say("recorded Mill Pipe 1"),
              Control(net, "truth Mill Pipe", -11 * (900 * Second)).Text);
    EXPECT_EQ(GetU16(logger->Record(3), 4), logger->RawCount(0, logger->RecordMoment(3)));
    for (const char* line : {"recorded", "recorded Mill Pipe", "recorded Mill Pipe 0",
                             "recorded Mill Pipe 13", "recorded 1", "recorded Mill 1"}) {
        ExpectError(line);
    }
}

TEST_F(ControlTest, ScriptsFaults) {
    EXPECT_EQ(Say("fault lose-reply 2"), "ok");
    EXPECT_EQ(Ask({0x0C}), Bytes{0xFA});
    EXPECT_EQ(Ask({0x0C}), Bytes{0xFA});
    EXPECT_EQ(Ask({0x0C}).size(), 11U);
    EXPECT_EQ(Say("fault cut 5"), "ok");
    EXPECT_EQ(Ask({0x0C}).size(), 6U);
    EXPECT_EQ(Say("fault noise 0102FF 1"), "ok");
    EXPECT_EQ(Ask({0x0C}).size(), 14U);
    EXPECT_EQ(Say("fault wrong-ack 15"), "ok");
    EXPECT_EQ(Ask({0x0C})[0], 0x15);
    EXPECT_EQ(Say("fault late 600"), "ok");
    EXPECT_EQ(Ask({0x0C}), Bytes{});
    EXPECT_EQ(Send({}).size(), 11U);
    EXPECT_EQ(Say("fault wrong-length -2"), "ok");
    EXPECT_EQ(Ask({0x0C}).size(), 9U);
    EXPECT_EQ(Say("fault pass 1"), "ok");
    EXPECT_EQ(Say("fault always lose-answer"), "ok");
    EXPECT_EQ(Ask({0x0C}).size(), 11U);
    EXPECT_EQ(Ask({0x0C}), Bytes{});
    EXPECT_EQ(Say("fault clear"), "ok");
    EXPECT_EQ(Ask({0x0C}).size(), 11U);
    EXPECT_EQ(Say("fault chance 1 5"), "ok");
    Ask({0x0C});
    EXPECT_EQ(net.Faults().Count(), 9);
}

TEST_F(ControlTest, ScriptsFaultsOfTheRadio) {
    EXPECT_EQ(Say("radio-fault cut 3"), "ok");
    EXPECT_EQ(Send(BytesOf("AT+++\r")).size(), 3U);
}

TEST_F(ControlTest, RefusesFaultsItDoesNotKnow) {
    for (const char* line :
         {"fault",        "fault none",       "fault explode",    "fault cut",
          "fault cut x",  "fault cut 5 0",    "fault cut 5 2 1",  "fault lose-reply x",
          "fault noise",  "fault noise 1",    "fault late -1",    "fault wrong-ack 1501",
          "fault chance", "fault chance 2 1", "fault chance 0.5", "fault pass",
          "fault pass 0", "fault clear now",  "fault always",     "fault corrupt 5000"}) {
        ExpectError(line);
    }
    EXPECT_EQ(Ask({0x0C}).size(), 11U);
}

TEST_F(ControlTest, SilencesAndWakes) {
    EXPECT_EQ(Say("silence Mill Pipe"), "ok");
    EXPECT_EQ(Ask({0x0C}), Bytes{});
    EXPECT_EQ(Say("  wake   Mill Pipe  "), "ok");
    EXPECT_EQ(Ask({0x0C}).size(), 11U);
    EXPECT_EQ(Say("silence radio"), "ok");
    EXPECT_EQ(Ask({0x0C}), Bytes{});
    EXPECT_EQ(Say("wake radio"), "ok");
    ExpectError("silence nobody");
    ExpectError("wake");
}

TEST_F(ControlTest, PutsAValueOnAChannel) {
    EXPECT_EQ(Say("set Mill Pipe 1 1.25"), "ok");
    EXPECT_EQ(logger->TrueValue(0, now), 1.25);
    for (const char* line : {"set", "set Mill Pipe", "set Mill Pipe 2 1", "set Mill Pipe 0 1",
                             "set Mill Pipe 1 x", "set 1 1.25", "set Other 1 1.25"}) {
        ExpectError(line);
    }
}

TEST_F(ControlTest, FixesTheSignalStrength) {
    EXPECT_EQ(Say("strength 120"), "ok");
    Send(BytesOf("AT+++\r"));
    EXPECT_EQ(Send({0xCC, 0x26})[1], 120);
    EXPECT_EQ(Say("strength auto"), "ok");
    EXPECT_EQ(Send({0xCC, 0x26})[1], 255);
    ExpectError("strength 256");
}

TEST_F(ControlTest, TellsItsCounters) {
    Ask({0x0C});
    EXPECT_EQ(Say("counters"),
              "written 6\nto-console 11\nradio-commands 0\nrequests 1\nbad-frames 0\n"
              "unanswered 0\nunheard 0\ndrowned 0\nok");
}

TEST_F(ControlTest, EndsTheProgram) {
    EXPECT_TRUE(Control(net, "quit", 0).Ends);
    EXPECT_TRUE(Control(net, "hangup", 0).Ends);
    EXPECT_FALSE(Control(net, "help", 0).Ends);
}

TEST_F(ControlTest, RefusesWhatItDoesNotKnow) {
    ExpectError("");
    ExpectError("   ");
    ExpectError("dance");
    ExpectError(std::string("\0\xFF\x80", 3));
}

}  // namespace
}  // namespace simulator
