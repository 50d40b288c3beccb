#include "logger/settings_image.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "common/fault.h"
#include "filled_state.h"
#include "logger/float24.h"
#include "logger/image_bytes.h"
#include "logger/settings_transfer.h"
#include "support/virtual_console.h"

namespace {

using testing_support::BasicSite;
using testing_support::VirtualConsole;

struct Float24Case {
    double Value;
    int Mantissa;
    int Scale;
};

class Float24 : public ::testing::TestWithParam<Float24Case> {};

TEST_P(Float24, KeepsSixDigitsAtTheLargestScaleThatHoldsThem) {
    const Float24Case& c = GetParam();
    EXPECT_EQ(config::EncodeFloat24(c.Value), c.Mantissa + (c.Scale << 20));
    EXPECT_EQ(config::EncodeFloat24(-c.Value), c.Mantissa + (c.Scale << 20) + 0x800000);
}

INSTANTIATE_TEST_SUITE_P(
    Values, Float24,
    ::testing::Values(Float24Case{0.014, 140000, 7}, Float24Case{1234567, 999999, 0},
                      Float24Case{100000, 100000, 0}, Float24Case{99999.95, 100000, 0},
                      Float24Case{99999.94, 999999, 1}, Float24Case{1, 100000, 5},
                      Float24Case{24, 240000, 4}, Float24Case{0.0000001, 1, 7},
                      Float24Case{655.35, 655350, 3}, Float24Case{123456.45, 123456, 0},
                      Float24Case{123456.5, 123457, 0}));

TEST(Float24Decode, DividesOneStepAtATime) {
    EXPECT_EQ(config::DecodeFloat24(140000 + (7 << 20)), 0.013999999999999999);
    EXPECT_EQ(config::DecodeFloat24(0), 0);
    EXPECT_EQ(config::DecodeFloat24(5 + 0x800000), -5);
    EXPECT_FALSE(std::signbit(config::DecodeFloat24(0x800000))) << "a zero has no sign";
}

TEST(Float24Decode, GivesMantissaByPowerOfTenWithItsSign) {
    std::mt19937 random(9);
    const double powers[] = {1, 10, 100, 1e3, 1e4, 1e5, 1e6, 1e7};
    for (int i = 0; i < 100000; ++i) {
        const auto mantissa = static_cast<std::int32_t>(random() % 1'000'000);
        const auto scale = static_cast<std::int32_t>(random() % 8);
        const bool negative = random() % 2 != 0;
        const std::int32_t bits = mantissa + (scale << 20) + (negative ? 0x800000 : 0);
        const double value = mantissa / powers[scale] * (negative ? -1 : 1);
        // Each of the divisions rounds once, by half of the last place at most.
        EXPECT_NEAR(config::DecodeFloat24(bits), value, std::fabs(value) * 1e-15) << bits;
    }
}

TEST(Float24Decode, WhatTheConsoleWritesComesBackToTheBit) {
    std::mt19937 random(10);
    for (int i = 0; i < 100000; ++i) {
        const auto scale = static_cast<std::int32_t>(random() % 8);
        // Six digits wherever the scale leaves room for them.
        const auto mantissa = static_cast<std::int32_t>(scale == 7 ? 1 + random() % 999'999
                                                                   : 100'000 + random() % 900'000);
        const std::int32_t sign = random() % 2 != 0 ? 0x800000 : 0;
        const std::int32_t bits = mantissa + (scale << 20) + sign;
        EXPECT_EQ(config::EncodeFloat24(config::DecodeFloat24(bits)), bits);
    }
}

TEST(Float24Decode, WhatAnotherProgramWroteWithFewerDigitsKeepsItsValue) {
    EXPECT_EQ(config::EncodeFloat24(config::DecodeFloat24(5 + (1 << 20))), 500000 + (6 << 20));
    EXPECT_EQ(config::EncodeFloat24(config::DecodeFloat24(12 + 0x800000)),
              120000 + (4 << 20) + 0x800000);
    EXPECT_EQ(config::EncodeFloat24(config::DecodeFloat24(99999 + (3 << 20))), 999990 + (4 << 20));
}

TEST(Float24Encode, WhatIsNoNumberIsAFault) {
    EXPECT_THROW(static_cast<void>(config::EncodeFloat24(std::nan(""))), Fault);
    EXPECT_EQ(config::EncodeFloat24(std::numeric_limits<double>::infinity()), 999999);
}

TEST(ImageBytes, NumbersAreLittleEndian) {
    Bytes image(4);
    config::PutU16(0x1234, image, 1);
    EXPECT_EQ(image, (Bytes{0, 0x34, 0x12, 0}));
    EXPECT_EQ(config::GetU16(image, 1), 0x1234);
}

TEST(ImageBytes, AValueWiderThanItsFieldIsAFault) {
    Bytes image(4);
    EXPECT_THROW(config::PutByte(256, image, 0), Fault);
    EXPECT_THROW(config::PutByte(-1, image, 0), Fault);
    EXPECT_THROW(config::PutU16(65536, image, 0), Fault);
    EXPECT_THROW(config::PutU16(1, image, 3), Fault);
    EXPECT_THROW(static_cast<void>(config::GetByte(image, 4)), Fault);
}

TEST(ImageBytes, TextIsPaddedWithBlanksOrCut) {
    Bytes image(6, 0xEE);
    config::PutString("ab", image, 1, 4);
    EXPECT_EQ(image, (Bytes{0xEE, 'a', 'b', ' ', ' ', 0xEE}));
    config::PutString("abcdef", image, 1, 4);
    EXPECT_EQ(image, (Bytes{0xEE, 'a', 'b', 'c', 'd', 0xEE}));
}

TEST(ImageBytes, ACharacterGoesOutAsItsLatin1Byte) {
    Bytes image(6, 0xEE);
    config::PutString(
        "\xC2\xB0"  // degree sign
        "C",
        image, 1, 4);
    EXPECT_EQ(image, (Bytes{0xEE, 0xB0, 'C', ' ', ' ', 0xEE}));
    config::PutString("\xC3\xBF\xC2\x80\xC2\xA0!", image, 1, 4);  // the last one, the first two
    EXPECT_EQ(image, (Bytes{0xEE, 0xFF, 0x80, 0xA0, '!', 0xEE}));
}

TEST(ImageBytes, ACharacterWithoutALatin1ByteGoesOutAsOneBlank) {
    Bytes image(6, 0xEE);
    config::PutString(
        "\xE2\x82\xAC"       // euro
        "a\xF0\x9F\x93\xA1"  // satellite dish
        "b",
        image, 0, 6);
    EXPECT_EQ(image, (Bytes{' ', 'a', ' ', 'b', ' ', ' '}));
    config::PutString("\xC4\x80\xB0q", image, 0, 6);  // the first above Latin-1, then a stray byte
    EXPECT_EQ(image, (Bytes{' ', ' ', 'q', ' ', ' ', ' '}));
}

TEST(ImageBytes, ATextIsCutByCharactersNeverInsideOne) {
    Bytes image(5, 0xEE);
    config::PutString("\xC3\xA4\xC3\xB6\xC3\xBC\xC3\x9F\xC3\xA9", image, 0, 4);
    EXPECT_EQ(image, (Bytes{0xE4, 0xF6, 0xFC, 0xDF, 0xEE}));
    config::PutString("abc\xE2\x82\xAC\xC3\xA9", image, 0, 4);
    EXPECT_EQ(image, (Bytes{'a', 'b', 'c', ' ', 0xEE}));
}

TEST(ImageBytes, BytesThatAreNoPlainCharactersReadAsBlanks) {
    const Bytes image{'A', 0x07, 'B', 0x80, ' ', 0xFF};
    EXPECT_EQ(config::GetString(image, 0, 6), "A B");
    EXPECT_EQ(config::GetString(Bytes{0xB0, 'C', 0x1F, 0x7F, 0x20, '~'}, 0, 6), " C \x7F ~");
    EXPECT_EQ(config::GetString(Bytes(4, ' '), 0, 4), "");
    EXPECT_EQ(config::GetString(Bytes(4, 0), 0, 4), "");
}

Bytes Encoded(const LoggerState& state) {
    Bytes image;
    EXPECT_TRUE(config::EncodeSettingsImage(state, image));
    return image;
}

TEST(SettingsImage, PutsEachGeneralFieldAtItsOffset) {
    const Bytes image = Encoded(Filled());
    ASSERT_EQ(image.size(), 458U);
    EXPECT_EQ(config::GetString(image, 0, 32), "Pump 3");
    EXPECT_EQ(Bytes(image.begin() + 32, image.begin() + 48),
              (Bytes{5, 0, 1, 3, 2, 0x05, 0x02, 3 * 2 + 1, 0xE0, 0x2E, 1, 0, 1, 130, 0x2C, 0x01}));
    EXPECT_EQ(Bytes(image.begin() + 138, image.begin() + 146),
              (Bytes{0x05, 0x15, 0x23, 0x80, 0x06, 0x16, 0x00, 0x80}));
}

TEST(SettingsImage, PutsEachFieldOfAChannelAtItsOffset) {
    const Bytes image = Encoded(Filled());
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(config::GetString(image, 48 + 9 * i, 9), "Unit " + std::to_string(i));
        EXPECT_EQ(config::GetByte(image, 146 + i), 9 - i);
    }
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(config::GetU16(image, 156 + 2 * i), 513 + i);
        EXPECT_EQ(config::GetU16(image, 172 + 2 * i), 62384 + i);
        EXPECT_EQ(config::GetFloat24(image, 194 + 3 * i), -2.5 - i);
        EXPECT_EQ(config::GetFloat24(image, 218 + 3 * i), 24 + i);
        EXPECT_EQ(config::GetFloat24(image, 242 + 3 * i), -3 - i);
        EXPECT_EQ(config::GetFloat24(image, 266 + 3 * i), 100 + i);
    }
    EXPECT_EQ(config::GetFloat24(image, 188), 1);
    EXPECT_EQ(config::GetFloat24(image, 191), 0.5);
}

TEST(SettingsImage, PutsEachFieldOfFlowAtItsOffset) {
    const Bytes image = Encoded(Filled());
    EXPECT_EQ(image[290], 2);
    EXPECT_EQ(Bytes(image.begin() + 291, image.begin() + 294), (Bytes{0xE0, 0x22, 0x72}));
    EXPECT_EQ(config::GetFloat24(image, 294), 2);
    EXPECT_EQ(image[297], 1);
    EXPECT_EQ(config::GetFloat24(image, 298), 18);
    EXPECT_EQ(image[301], 2);
    EXPECT_EQ(config::GetString(image, 302, 8), "P6");
    EXPECT_EQ(config::GetString(image, 310, 8), "V90");
    EXPECT_EQ(config::GetFloat24(image, 318), -1.5);
    EXPECT_EQ(image[321], 3);
    EXPECT_EQ(image[322], 4);
    EXPECT_EQ(config::GetFloat24(image, 323), 50);
    EXPECT_EQ(image[326], 1);
    EXPECT_EQ(config::GetFloat24(image, 327), 5);
    EXPECT_EQ(config::GetString(image, 330, 128), "demo.tbl");
}

TEST(SettingsImage, DecodesToAStateThatEncodesToTheSameImage) {
    const Bytes image = Encoded(Filled());
    LoggerState decoded;
    decoded.NumAnalogChannels = 3;
    decoded.NumDigitalChannels = 2;
    decoded.SODAvailable = True;
    ASSERT_TRUE(config::DecodeSettingsImage(image, decoded));
    EXPECT_EQ(Encoded(decoded), image);
    EXPECT_EQ(decoded.SampleInterval, "5 minutes");
    EXPECT_EQ(decoded.AlarmHour[0], 23);
}

TEST(SettingsImage, AnyBytesDecodeWithoutHarm) {
    std::mt19937 random(4);
    for (int i = 0; i < 2000; ++i) {
        Bytes image(458);
        for (std::uint8_t& byte : image) {
            byte = static_cast<std::uint8_t>(random());
        }
        LoggerState state;
        state.NumAnalogChannels = 8;
        ASSERT_TRUE(config::DecodeSettingsImage(image, state));
        EXPECT_LE(state.SensorWarmupTime, 60);
        EXPECT_LE(state.FlowMode, 4);
        EXPECT_LE(state.FlowUnits, 4);
    }
}

TEST(SettingsImage, AnImageOfAnotherSizeIsNotDecoded) {
    LoggerState state;
    EXPECT_FALSE(config::DecodeSettingsImage(Bytes(457), state));
}

struct Repair {
    const char* Name;
    int Offset;
    Bytes Value;
    void (*Expect)(const LoggerState& state);
};

class SettingsImageRepairs : public ::testing::TestWithParam<Repair> {};

TEST_P(SettingsImageRepairs, WhatALoggerHoldsOutOfRange) {
    Bytes image = Encoded(Filled());
    std::copy(GetParam().Value.begin(), GetParam().Value.end(), image.begin() + GetParam().Offset);
    LoggerState state;
    state.NumAnalogChannels = 3;
    state.NumDigitalChannels = 1;
    ASSERT_TRUE(config::DecodeSettingsImage(image, state));
    GetParam().Expect(state);
}

INSTANTIATE_TEST_SUITE_P(
    Fields, SettingsImageRepairs,
    ::testing::Values(
        Repair{"WarmupOf65535MillisecondsIs60Seconds",
               40,
               {0xFF, 0xFF},
               [](const LoggerState& s) { EXPECT_EQ(s.SensorWarmupTime, 60); }},
        Repair{"FlowUnitsOf5AreZero",
               322,
               {5},
               [](const LoggerState& s) { EXPECT_EQ(s.FlowUnits, 0); }},
        Repair{
            "VelUnitsOf5AreZero", 326, {5}, [](const LoggerState& s) { EXPECT_EQ(s.VelUnits, 0); }},
        Repair{
            "FlowModeOf5IsZero", 290, {5}, [](const LoggerState& s) { EXPECT_EQ(s.FlowMode, 0); }},
        Repair{"TypesAreMasked",
               297,
               {0xFF},
               [](const LoggerState& s) { EXPECT_EQ(s.ManningsSType, 1); }},
        Repair{"AControlByteInTheNameIsABlank",
               1,
               {0x0A},
               [](const LoggerState& s) { EXPECT_EQ(s.LoggerName, "P mp 3"); }},
        Repair{"TheNameEndsWhereTheIntervalBegins",
               32,
               {'A'},
               [](const LoggerState& s) { EXPECT_EQ(s.LoggerName, "Pump 3"); }},
        Repair{"ChannelsBeyondTheCountsAreDisabled",
               37,
               {0xFF, 0xFF},
               [](const LoggerState& s) {
                   EXPECT_EQ(s.AnalogEnable, (std::array<std::uint8_t, 8>{1, 1, 1}));
                   EXPECT_EQ(s.DigitalEnable, (std::array<std::uint8_t, 2>{1, 0}));
               }},
        Repair{"SampleOnDemandNeedsTheAbility",
               44,
               {1},
               [](const LoggerState& s) { EXPECT_EQ(s.EnableSOD, 0); }},
        Repair{"AnyFurtherIntervalUnitIsDays",
               34,
               {9},
               [](const LoggerState& s) { EXPECT_EQ(s.SampleInterval, "5 days"); }},
        Repair{"OneIsSingular",
               32,
               {1, 0, 2},
               [](const LoggerState& s) { EXPECT_EQ(s.SampleInterval, "1 hour"); }},
        Repair{"ZeroIsSingularToo",
               32,
               {0, 0, 0},
               [](const LoggerState& s) { EXPECT_EQ(s.SampleInterval, "0 second"); }},
        Repair{"TagsLoseBlanksOnTheLeft",
               302,
               {' ', ' ', 'A'},
               [](const LoggerState& s) { EXPECT_EQ(s.FlumeTag, "A"); }}),
    [](const auto& repair) { return repair.param.Name; });

TEST(SettingsImage, AFreshLoggersUpperBlockOfFFYieldsTheFlowDefaults) {
    Bytes image = Encoded(Filled());
    std::fill(image.begin() + 290, image.end(), std::uint8_t{0xFF});
    LoggerState state = Filled();
    state.FlowTable.Append({1, 2});
    ASSERT_TRUE(config::DecodeSettingsImage(image, state));
    EXPECT_EQ(state.FlowMode, 0);
    EXPECT_EQ(state.ManningsN, 0.014) << "the default itself, not what a logger would store";
    EXPECT_EQ(state.ManningsSType, 1);
    EXPECT_EQ(state.LevelOffsetType, 1);
    EXPECT_EQ(state.FlumeTag, "");
    EXPECT_EQ(state.TablePath, "");
    EXPECT_EQ(state.FlowTop, 100);
    EXPECT_EQ(state.FlowTable.UpperBound(), 0);
}

TEST(SettingsImage, AValueThatOverflowsItsFieldFailsTheEncode) {
    Bytes image;
    LoggerState state = Filled();
    state.Deadband = 65536;
    EXPECT_FALSE(config::EncodeSettingsImage(state, image));
    EXPECT_TRUE(image.empty());
    state = Filled();
    state.AlarmHour[1] = -1;
    EXPECT_FALSE(config::EncodeSettingsImage(state, image));
    state = Filled();
    state.SampleInterval = "70000 days";
    EXPECT_FALSE(config::EncodeSettingsImage(state, image));
    state = Filled();
    state.FixedBaudRate = 200;
    EXPECT_FALSE(config::EncodeSettingsImage(state, image)) << "200 x 2 + 1 is no byte";
    state = Filled();
    state.SampleInterval = "1e999 days";
    EXPECT_FALSE(config::EncodeSettingsImage(state, image));
}

TEST(SettingsImage, TheIntervalsUnitIsLookedForExactlyInCase) {
    LoggerState state = Filled();
    state.SampleInterval = "15 Min";
    EXPECT_EQ(Encoded(state)[34], 0) << "seconds, where no unit is found";
    state.SampleInterval = "2 days";
    EXPECT_EQ(Encoded(state)[34], 3);
}

/// The transfer over the link.
class SettingsTransfer : public ::testing::Test {
 protected:
    SettingsTransfer() {
        console_.Connect();
        EXPECT_TRUE(comm::SelectClient(console_.Radio(), console_.State.Book.Entries[entry_]));
        network_.ClearRecord();
    }

    bool Read(LoggerState& state) {
        return config::GetLoggerSettings(console_.State.Exchange, console_.Outside.Clock, state);
    }
    bool Write(const LoggerState& state) {
        return config::WriteLoggerSettings(console_.State.Exchange, state);
    }

    VirtualConsole console_;
    int entry_ = console_.AddSite(BasicSite(1, 3, 2));
    simulator::Network& network_ = console_.Outside.Network;
    simulator::Logger& logger_ = *network_.Loggers().front();
};

TEST_F(SettingsTransfer, ReadsIdentityThreeBlocksStatusClock) {
    LoggerState state;
    ASSERT_TRUE(Read(state));
    EXPECT_EQ(network_.RequestsTo(logger_), (std::vector<simulator::Bytes>{{0x0F},
                                                                           {0x08, 8, 0, 0, 242},
                                                                           {0x08, 0, 1, 0, 48},
                                                                           {0x08, 0, 2, 0, 168},
                                                                           {0x0C},
                                                                           {0x00}}));
    EXPECT_EQ(state.LoggerName, "Site 1");
    EXPECT_EQ(state.NumAnalogChannels, 3);
    EXPECT_EQ(state.SampleInterval, "15 minutes");
    EXPECT_EQ(state.UpperLimit[0], 100);
    EXPECT_EQ(state.LoggingState, "Logging");
    EXPECT_NE(state.LoggerTime, "");
}

TEST_F(SettingsTransfer, SurvivesTwoLostVersionReplies) {
    network_.Faults().LoseReply(2);
    LoggerState state;
    EXPECT_TRUE(Read(state));
}

TEST_F(SettingsTransfer, AThirdLostVersionReplyEndsIt) {
    network_.Faults().LoseReply(3);
    LoggerState state;
    EXPECT_FALSE(Read(state));
    EXPECT_EQ(network_.RequestsTo(logger_).size(), 3U);
}

TEST_F(SettingsTransfer, AFailedBlockLeavesTheSettingsUndecoded) {
    network_.Faults().Pass(3).LoseAnswer(6);
    LoggerState state;
    EXPECT_FALSE(Read(state));
    EXPECT_EQ(state.LoggerName, "");
    EXPECT_EQ(state.NumAnalogChannels, 3) << "the identity came";
}

TEST_F(SettingsTransfer, WritesFourPiecesThenReadsThemBack) {
    LoggerState state;
    ASSERT_TRUE(Read(state));
    network_.ClearRecord();
    state.LoggerName = "New name";
    state.FlowMode = 1;
    ASSERT_TRUE(Write(state));
    const auto requests = network_.RequestsTo(logger_);
    ASSERT_EQ(requests.size(), 7U);
    const auto head = [&](std::size_t i) {
        return simulator::Bytes(requests[i].begin(), requests[i].begin() + 7);
    };
    EXPECT_EQ(head(0), (simulator::Bytes{0x07, 0xA7, 0x7A, 8, 0, 135, 0}));
    EXPECT_EQ(head(1), (simulator::Bytes{0x07, 0xA7, 0x7A, 136, 0, 249, 0}));
    EXPECT_EQ(head(2), (simulator::Bytes{0x07, 0xA7, 0x7A, 0, 1, 47, 1}));
    EXPECT_EQ(head(3), (simulator::Bytes{0x07, 0xA7, 0x7A, 0, 2, 167, 2}));
    EXPECT_EQ(requests[4][0], 0x08);
    LoggerState back;
    ASSERT_TRUE(Read(back));
    EXPECT_EQ(back.LoggerName, "New name");
    EXPECT_EQ(back.FlowMode, 1);
}

TEST_F(SettingsTransfer, TextBeyondPlainCharactersIsOneByteInTheLoggerAndABlankBehindIt) {
    LoggerState state;
    ASSERT_TRUE(Read(state));
    state.EngUnits[1] =
        "\xC2\xB0"
        "C";
    state.LoggerName =
        "S\xC3\xBC"
        "d 3";
    ASSERT_TRUE(Write(state));
    const simulator::Bytes& memory = logger_.Memory();
    EXPECT_EQ(simulator::Bytes(memory.begin() + 8, memory.begin() + 15),
              (simulator::Bytes{'S', 0xFC, 'd', ' ', '3', ' ', ' '}));
    EXPECT_EQ(simulator::Bytes(memory.begin() + 8 + 57, memory.begin() + 8 + 60),
              (simulator::Bytes{0xB0, 'C', ' '}));
    LoggerState back;
    ASSERT_TRUE(Read(back));
    EXPECT_EQ(back.EngUnits[1], " C");
    EXPECT_EQ(back.LoggerName, "S d 3");
}

TEST_F(SettingsTransfer, MemoryThatDoesNotTakeAValueFailsTheComparison) {
    LoggerState state;
    ASSERT_TRUE(Read(state));
    logger_.IgnoreWritesAt(8 + 45);
    state.LoggingStyle = 2;
    EXPECT_FALSE(Write(state));
}

// Whichever of the 458 bytes the logger does not take. Tried at both ends of every piece and block,
// and between.
TEST(ReadBack, ComparesEveryByte) {
    const LoggerState written = Filled();
    const Bytes image = Encoded(written);
    for (const std::size_t at : {0, 1, 64, 127, 128, 129, 200, 240, 241, 242, 243, 265, 288, 289,
                                 290, 291, 400, 456, 457}) {
        VirtualConsole console;
        const int entry = console.AddSite(BasicSite(1, 3, 2));
        console.Connect();
        ASSERT_TRUE(comm::SelectClient(console.Radio(), console.State.Book.Entries[entry]));
        simulator::Logger& logger = *console.Outside.Network.Loggers().front();
        const std::size_t address = at < 242 ? 8 + at : at < 290 ? 256 + at - 242 : 512 + at - 290;
        logger.Memory()[address] = static_cast<std::uint8_t>(~image[at]);
        logger.IgnoreWritesAt(address);
        EXPECT_FALSE(config::WriteLoggerSettings(console.State.Exchange, written)) << at;
    }
}

TEST_F(SettingsTransfer, AValueThatDoesNotFitWritesNothing) {
    LoggerState state;
    ASSERT_TRUE(Read(state));
    network_.ClearRecord();
    state.Deadband = -1;
    EXPECT_FALSE(Write(state));
    EXPECT_TRUE(network_.RequestsTo(logger_).empty());
}

}  // namespace
