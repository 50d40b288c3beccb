#include "simulator/logger.h"

#include "simulator/wire.h"

namespace simulator {
namespace {

using testing::ElementsAre;

const Bytes Done = {0xFA, 0xFC};

LoggerSetup TwoAnalogOnePulse() {
    LoggerSetup setup;
    setup.Settings.Name = "Pond";
    setup.Settings.Analog.assign(2, AnalogSettings{});
    setup.Settings.Pulse.assign(1, PulseSettings{});
    setup.AnalogSignals = {ConstantSignal(50), ConstantSignal(100)};
    setup.PulseSignals = {ConstantSignal(0)};
    return setup;
}

class LoggerTest : public WireTest {
 protected:
    LoggerTest() : WireTest(TwoAnalogOnePulse()) {}

    void ExpectSilence(const Bytes& request, const std::string& why) {
        EXPECT_EQ(Ask(request), Bytes{});
        ASSERT_FALSE(logger->Refused().empty());
        EXPECT_EQ(logger->Refused().back(), why);
    }
};

// ----- clock

TEST_F(LoggerTest, TellsItsClock) {
    // Tuesday, the 5th of March 2024, 8:00:00: day 3 of the week.
    EXPECT_EQ(Ask({0x00}), AckAndFrame({0x00, 0x00, 0x08, 0x03, 0x05, 0x03, 0x24}));
}

TEST_F(LoggerTest, ClockGoesOnWithTime) {
    now = 3661 * Second;
    EXPECT_EQ(Ask({0x00}), AckAndFrame({0x01, 0x01, 0x09, 0x03, 0x05, 0x03, 0x24}));
}

TEST_F(LoggerTest, TakesTheTimeItIsGiven) {
    EXPECT_EQ(Ask({0x01, 0x58, 0x59, 0x23, 0x01, 0x31, 0x12, 0x25}), Done);
    now += 2 * Second;
    EXPECT_EQ(Ask({0x00}), AckAndFrame({0x00, 0x00, 0x00, 0x05, 0x01, 0x01, 0x26}));
}

TEST_F(LoggerTest, RefusesTimesThatAreNone) {
    ExpectSilence({0x01, 0x60, 0x00, 0x08, 0x01, 0x05, 0x03, 0x24}, "01: not a time");
    ExpectSilence({0x01, 0x00, 0x0A, 0x08, 0x01, 0x05, 0x03, 0x24}, "01: not a time");
    ExpectSilence({0x01, 0x00, 0x00, 0x24, 0x01, 0x05, 0x03, 0x24}, "01: not a time");
    ExpectSilence({0x01, 0x00, 0x00, 0x08, 0x01, 0x30, 0x02, 0x24}, "01: not a time");
    ExpectSilence({0x01, 0x00, 0x00, 0x08, 0x01, 0x05, 0x13, 0x24}, "01: not a time");
    ExpectSilence({0x01, 0x00, 0x00, 0x08, 0x02, 0x05, 0x03, 0x24}, "01: not a time");
    ExpectSilence({0x01, 0x00, 0x00, 0x08, 0x01, 0x05, 0x03}, "01: length");
}

TEST(LoggerClock, TwelveHourFormMarksNoonAndMidnight) {
    EXPECT_EQ(HourByte(0, ClockForm::Hours12), 0x52);
    EXPECT_EQ(HourByte(1, ClockForm::Hours12), 0x41);
    EXPECT_EQ(HourByte(12, ClockForm::Hours12), 0x72);
    EXPECT_EQ(HourByte(20, ClockForm::Hours12), 0x68);
    EXPECT_EQ(HourByte(20, ClockForm::Hours24), 0x20);
}

TEST(LoggerClock, PacksTimeFromTheLowestBit) {
    // 31 December 2024 23:59:58: 111010 | 111011 | 10111 | 11111 | months 299 = 0100101011.
    EXPECT_THAT(PackTime({2024, 12, 31, 23, 59, 58}), ElementsAre(0xFA, 0x7E, 0xFF, 0x4A));
    EXPECT_THAT(PackTime({2000, 1, 1, 0, 0, 0}), ElementsAre(0x00, 0x00, 0x02, 0x00));
}

TEST(LoggerClock, CalendarComesBackAsItWas) {
    for (CivilSeconds seconds = 0; seconds < 40LL * 366 * SecondsPerDay; seconds += 86399) {
        const CivilTime time = FromSeconds(seconds);
        ASSERT_TRUE(IsCivilTime(time));
        ASSERT_EQ(ToSeconds(time), seconds);
    }
    EXPECT_EQ(ToSeconds({2024, 3, 1, 0, 0, 0}) - ToSeconds({2024, 2, 28, 0, 0, 0}),
              2 * SecondsPerDay);
}

// ----- memory

TEST_F(LoggerTest, ReadsMemoryBehindTheEchoOfTheAddress) {
    EXPECT_EQ(Ask({0x08, 0x08, 0x00, 0x00, 0x05}),
              AckAndFrame({0x08, 0x00, 0x00, 'P', 'o', 'n', 'd', ' '}));
}

TEST_F(LoggerTest, ReadsTheLargestBlock) {
    const Bytes reply = Ask({0x08, 0x08, 0x00, 0x00, 0xF2});
    EXPECT_EQ(reply[2], 0xF2 + 3 + 2);
    FrameReader reader;
    auto outcome = FrameReader::Outcome::None;
    for (std::size_t i = 1; i < reply.size(); ++i) {
        outcome = reader.Take(reply[i]);
    }
    ASSERT_EQ(outcome, FrameReader::Outcome::Good);
    const auto block = logger->Memory().begin() + 8;
    EXPECT_TRUE(std::equal(block, block + 0xF2, reader.Payload().begin() + 3));
}

TEST_F(LoggerTest, MemoryBeyondItsEndReadsAsNeverWritten) {
    logger->Memory()[0xFFFF] = 0x12;
    EXPECT_EQ(Ask({0x08, 0xFF, 0xFF, 0x00, 0x02}), AckAndFrame({0xFF, 0xFF, 0x00, 0x12, 0xFF}));
    EXPECT_EQ(Ask({0x08, 0x00, 0x00, 0x02, 0x01}), AckAndFrame({0x00, 0x00, 0x02, 0xFF}));
}

TEST_F(LoggerTest, RefusesReadThatNoFrameCanCarry) {
    EXPECT_FALSE(Ask({0x08, 0x00, 0x00, 0x00, 250}).empty());
    ExpectSilence({0x08, 0x00, 0x00, 0x00, 251}, "08: count");
    ExpectSilence({0x08, 0x00, 0x00, 0x00}, "08: length");
}

TEST_F(LoggerTest, WriteIsAcknowledgedAndNothingMore) {
    EXPECT_EQ(Ask({0x07, 0xA7, 0x7A, 0x08, 0x00, 0x09, 0x00, 'S', 'e'}), Bytes{0xFA});
    EXPECT_EQ(Ask({0x08, 0x08, 0x00, 0x00, 0x04}),
              AckAndFrame({0x08, 0x00, 0x00, 'S', 'e', 'n', 'd'}));
}

TEST_F(LoggerTest, RefusesWriteWhoseAddressesDoNotCountItsData) {
    ExpectSilence({0x07, 0xA7, 0x7A, 0x08, 0x00, 0x0A, 0x00, 'S', 'e'}, "07: addresses");
    ExpectSilence({0x07, 0xA7, 0x7A, 0x08, 0x00, 0x07, 0x00, 'S', 'e'}, "07: addresses");
    ExpectSilence({0x07, 0xA7, 0x7A, 0x08, 0x00, 0x07, 0x00}, "07: length");
}

TEST_F(LoggerTest, WriteLeavesStubbornByteAlone) {
    logger->IgnoreWritesAt(9);
    EXPECT_EQ(Ask({0x07, 0xA7, 0x7A, 0x08, 0x00, 0x0A, 0x00, 'S', 'e', 'a'}), Bytes{0xFA});
    EXPECT_EQ(Ask({0x08, 0x08, 0x00, 0x00, 0x03}), AckAndFrame({0x08, 0x00, 0x00, 'S', 'o', 'a'}));
}

// ----- guards

TEST_F(LoggerTest, ActsOnlyOnTheRightGuardBytes) {
    const std::vector<Bytes> guarded = {{0x04, 0xA4, 0x4A}, {0x0B, 0xAB, 0xBA}, {0x0E, 0x03}};
    for (const Bytes& request : guarded) {
        EXPECT_EQ(Ask(request), Done);
        for (std::size_t i = 1; i < request.size(); ++i) {
            Bytes wrong = request;
            wrong[i] ^= 0x01;
            const std::string code = HexText({request.data(), 1});
            ExpectSilence(wrong, code + ": guard bytes");
        }
    }
    ExpectSilence({0x07, 0xA7, 0x7B, 0x08, 0x00, 0x08, 0x00, 'S'}, "07: guard bytes");
    ExpectSilence({0x04, 0xA4}, "04: guard bytes");
    ExpectSilence({0x04, 0xA4, 0x4A, 0x00}, "04: length");
    EXPECT_EQ(net.Count().Unanswered, 8);
}

TEST_F(LoggerTest, MeetsUnknownCommandWithSilence) {
    for (int code : {0x02, 0x03, 0x05, 0x06, 0x10, 0xFF}) {
        EXPECT_EQ(Ask({static_cast<std::uint8_t>(code)}), Bytes{}) << code;
    }
    EXPECT_EQ(logger->Refused().back(), "FF: unknown command");
}

TEST_F(LoggerTest, RefusesPlainCommandWithMoreBehindIt) {
    for (int code : {0x00, 0x0A, 0x0C, 0x0F}) {
        EXPECT_EQ(Ask({static_cast<std::uint8_t>(code), 0x00}), Bytes{}) << code;
    }
}

// ----- status, version, samples

TEST_F(LoggerTest, TellsItsVersion) {
    EXPECT_EQ(Ask({0x0F}), AckAndFrame({21, 2, 1, 0, 0, 0, 0, 0}));
}

TEST_F(LoggerTest, TellsItsStatus) {
    EXPECT_EQ(Ask({0x0C}), AckAndFrame({0x00, 0x00, 0x00, 0x80, 0x00}));
}

TEST_F(LoggerTest, HasNoSampleUntilOneWasRequested) {
    EXPECT_EQ(Ask({0x0A}), (Bytes{0xFA, 0xFD}));
}

TEST_F(LoggerTest, SampleIsReadyWhenItsTimeHasCome) {
    net.Write(now, EncodeFrame(Bytes{0x09, 0x01}));
    now += 50 * Millisecond;
    EXPECT_EQ(net.Read(now), Done);
    EXPECT_EQ(Send(EncodeFrame(Bytes{0x0A}), 40 * Millisecond), (Bytes{0xFA, 0xFD}));
    now += 20 * Millisecond;
    EXPECT_EQ(Ask({0x0A}).size(), 2 + 1 + 1 + 24 + 2 + 1U);
}

TEST_F(LoggerTest, SampleHasTheLastAnalogChannelInSlot7) {
    Ask({0x09, 0x00});
    Bytes expected = {0xFA};
    const Bytes frame =
        EncodeFrame(Bytes{0x00, 0x80, 0x8A, 0x48, 0x00, 0x80, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
                          0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00, 0xFF, 0xFF});
    expected.push_back(0xFA);
    expected.insert(expected.end(), frame.begin(), frame.end());
    EXPECT_EQ(Ask({0x0A}), expected);
}

TEST_F(LoggerTest, SampleStaysUntilTheNextIsRequested) {
    Ask({0x09, 0x01});
    const Bytes first = Ask({0x0A});
    EXPECT_EQ(Ask({0x0A}), first);
    EXPECT_EQ(Send(EncodeFrame(Bytes{0x09, 0x01}), 30 * Millisecond), Done);
    EXPECT_EQ(Ask({0x0A}), (Bytes{0xFA, 0xFD}));
}

TEST_F(LoggerTest, RefusesSampleRequestWithOtherParameter) {
    ExpectSilence({0x09, 0x02}, "09: parameter");
    ExpectSilence({0x09}, "09: parameter");
}

TEST_F(LoggerTest, ConsolesTicks10And12FindTheSample) {
    // Requests at ticks 1 and 10, the read at 12, a tick being 100 ms; at 9600 baud.
    net.LineBaud = 9600;
    Send(EncodeFrame(Bytes{0x09, 0x01}), 900 * Millisecond);
    Send(EncodeFrame(Bytes{0x09, 0x01}), 200 * Millisecond);
    EXPECT_GT(Ask({0x0A}).size(), 2U);
}

TEST(LoggerSample, OfOneChannelStandsInSlots0And7) {
    Network net;
    LoggerSetup setup;
    setup.AnalogSignals = {ConstantSignal(25)};
    Logger& logger = net.AddLogger(setup);
    ASSERT_TRUE(logger.Carry(Bytes{0x09, 0x01}, 0));
    const auto answer = logger.Carry(Bytes{0x0A}, Second);
    ASSERT_TRUE(answer && answer->Payload);
    EXPECT_EQ(GetU16(*answer->Payload, 4), 16384);
    EXPECT_EQ(GetU16(*answer->Payload, 18), 16384);
}

TEST(LoggerSample, OfEightChannelsFillsEverySlot) {
    Network net;
    LoggerSetup setup;
    setup.Settings.Analog.assign(8, AnalogSettings{});
    setup.Settings.Pulse.assign(2, PulseSettings{});
    for (int i = 0; i < 8; ++i) {
        setup.AnalogSignals.push_back(ConstantSignal(10.0 * i));
    }
    setup.PulseSignals = {nullptr, SineSignal(0, 0, 1)};
    Logger& logger = net.AddLogger(setup);
    ASSERT_TRUE(logger.Carry(Bytes{0x09, 0x01}, 0));
    const auto answer = logger.Carry(Bytes{0x0A}, Second);
    ASSERT_TRUE(answer && answer->Payload && answer->Payload->size() == 24);
    for (std::size_t i = 0; i < 8; ++i) {
        EXPECT_NEAR(GetU16(*answer->Payload, 4 + 2 * i), 6553.5 * static_cast<double>(i), 0.5);
    }
    EXPECT_EQ(GetU16(*answer->Payload, 20), 0);
    EXPECT_EQ(GetU16(*answer->Payload, 22), 0);
}

TEST(LoggerCounts, ReadingsThatNoScaleHoldsAreCountsAllTheSame) {
    LoggerSetup setup = TwoAnalogOnePulse();
    setup.Settings.Analog[0].RawLower = 7;
    setup.Settings.Analog[0].RawUpper = 7;
    setup.Settings.Analog[0].UpperLimit = 0.001;
    setup.Settings.Pulse[0].UnitsPerPulse = 1e-320;
    setup.AnalogSignals = {ConstantSignal(1e308), ConstantSignal(1e308)};
    setup.PulseSignals = {SineSignal(10, 10, 3600)};
    const Logger odd(setup, 0);
    EXPECT_EQ(odd.RawCount(0, 0), 7);
    EXPECT_EQ(odd.RawCount(1, 0), 65535);
    EXPECT_EQ(odd.PulseCount(0, 900 * Second), 0);
}

TEST_F(LoggerTest, PulsesCountFromTheirReset) {
    LoggerSetup setup = TwoAnalogOnePulse();
    setup.Settings.Pulse[0].UnitsPerPulse = 0.5;
    setup.Settings.Name = "Rain";
    setup.Mac[5] = 9;
    setup.PulseSignals = {SineSignal(100, 50, 4 * 3600)};
    Logger& rain = net.AddLogger(setup);
    net.Radio().Tune(rain.Channel(), rain.Mac());
    // The wave stands at 100 at the start and at 150 an hour later: 100 pulses of half a unit.
    EXPECT_EQ(rain.PulseCount(0, 0), 0);
    EXPECT_EQ(rain.PulseCount(0, 3600 * Second), 100);
    net.AirDelay = 0;
    now = 1200 * Second;
    EXPECT_EQ(Ask({0x0E, 0x03}), Done);
    EXPECT_EQ(rain.PulseCount(0, 1200 * Second), 0);
    EXPECT_EQ(rain.PulseCount(0, 3600 * Second), 50);
}

TEST(LoggerSensor, ReadsOutsideItsRawRangeAreHeldToSixteenBits) {
    Network net;
    LoggerSetup setup;
    setup.Settings.Analog[0].RawLower = 100;
    setup.Settings.Analog[0].RawUpper = 200;
    setup.AnalogSignals = {ConstantSignal(-1000)};
    Logger& logger = net.AddLogger(setup);
    EXPECT_EQ(logger.RawCount(0, 0), 0);
    logger.SetAnalogSignal(0, ConstantSignal(200));
    EXPECT_EQ(logger.RawCount(0, 0), 300);
    logger.SetAnalogSignal(0, ConstantSignal(1e9));
    EXPECT_EQ(logger.RawCount(0, 0), 65535);
}

TEST(LoggerSensor, KeepsItsScaleWhateverTheLoggerIsProgrammedWith) {
    Network net;
    Logger& logger = net.AddLogger({});
    const std::uint16_t before = logger.RawCount(0, 0);
    std::fill(logger.Memory().begin(), logger.Memory().end(), 0);
    EXPECT_EQ(logger.RawCount(0, 0), before);
}

TEST_F(LoggerTest, AnswersAsTold) {
    logger->Answers(0x0F, {1, 9, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(Ask({0x0F}), AckAndFrame({1, 9, 0, 0, 0, 0, 0, 0}));
    logger->Answers(0x0B, Answer{{0xFA}, {0xFD}, std::nullopt});
    EXPECT_EQ(Ask({0x0B, 0xAB, 0xBA}), (Bytes{0xFA, 0xFD}));
}

TEST(LoggerSignal, WandersAroundItsStrength) {
    LoggerSetup setup;
    setup.Signal = 100;
    setup.SignalSwing = 20;
    const Logger logger(setup, 0);
    EXPECT_EQ(logger.SignalAt(0), 100);
    EXPECT_EQ(logger.SignalAt(15 * Second), 120);
    EXPECT_EQ(logger.SignalAt(45 * Second), 80);
}

}  // namespace
}  // namespace simulator
