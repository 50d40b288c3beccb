#include "logger/commands.h"

#include <gtest/gtest.h>

#include "support/virtual_console.h"

namespace {

using testing_support::BasicSite;
using testing_support::VirtualConsole;
using Requests = std::vector<simulator::Bytes>;

TEST(LoggingState, TestsItsBitsInOrder) {
    EXPECT_EQ(cmd::LoggingStateText(0xFF7F), "Not Logging") << "bit 7 clear, whatever the others";
    EXPECT_EQ(cmd::LoggingStateText(0x0880), "Waiting for Alarm 1");
    EXPECT_EQ(cmd::LoggingStateText(0x3880), "Waiting for Alarm 1");
    EXPECT_EQ(cmd::LoggingStateText(0x3080), "Stopped by Alarm 2");
    EXPECT_EQ(cmd::LoggingStateText(0x1080), "Logging Until Alarm 2");
    EXPECT_EQ(cmd::LoggingStateText(0x0080), "Logging");
}

TEST(LoggingState, LooksAtNoOtherBit) {
    constexpr std::uint32_t others = 0xFFFFC77F;
    for (const std::uint32_t looked : {0x0000U, 0x0080U, 0x0880U, 0x2080U, 0x1080U}) {
        EXPECT_EQ(cmd::LoggingStateText(looked | others), cmd::LoggingStateText(looked)) << looked;
    }
}

/// The commands over the link, to the one logger there is.
class CommandsTest : public ::testing::Test {
 protected:
    CommandsTest() {
        console_.Connect();
        EXPECT_TRUE(comm::SelectClient(console_.Radio(), console_.State.Book.Entries[entry_]));
        network_.ClearRecord();
    }

    Requests Sent() const { return network_.RequestsTo(logger_); }
    std::string TimeOf(Bytes reply) {
        logger_.Answers(0x00, std::move(reply));
        EXPECT_TRUE(cmd::GetLoggerTime(exchange_, console_.Outside.Clock, record_));
        return record_.LoggerTime;
    }

    VirtualConsole console_;
    int entry_ = console_.AddSite(BasicSite(1, 3, 2));
    simulator::Network& network_ = console_.Outside.Network;
    simulator::Logger& logger_ = *network_.Loggers().front();
    FrameExchange& exchange_ = console_.State.Exchange;
    LoggerRecord record_;
};

TEST_F(CommandsTest, ReadsTheClock) {
    // second, minute, hour, weekday, day, month, year
    EXPECT_EQ(TimeOf({0x09, 0x58, 0x23, 0x03, 0x15, 0x11, 0x26}), "11/15/26 23:58:09");
    EXPECT_EQ(Sent(), (Requests{{0x00}}));
}

TEST_F(CommandsTest, TwelveTwentyAmReadsAsHourZero) {
    EXPECT_EQ(TimeOf({0x00, 0x20, 0x52, 0x03, 0x15, 0x11, 0x26}), "11/15/26 00:20:00");
}

TEST_F(CommandsTest, TwelveHourFormAddsAPlainEighteenForTheAfternoon) {
    EXPECT_EQ(TimeOf({0, 0, 0x61, 3, 0x15, 0x11, 0x26}), "11/15/26 13:00:00");
    EXPECT_EQ(TimeOf({0, 0, 0x68, 3, 0x15, 0x11, 0x26}), "11/15/26 1::00:00") << "08 PM, told so";
    EXPECT_EQ(TimeOf({0, 0, 0x72, 3, 0x15, 0x11, 0x26}), "11/15/26 12:00:00");
    EXPECT_EQ(TimeOf({0, 0, 0x49, 3, 0x15, 0x11, 0x26}), "11/15/26 09:00:00");
}

TEST_F(CommandsTest, AClockThatDoesNotAnswerReadsZeros) {
    network_.Faults().LoseAnswer();
    EXPECT_FALSE(cmd::GetLoggerTime(exchange_, console_.Outside.Clock, record_));
    EXPECT_EQ(record_.LoggerTime, "00/00/00 00:00:00");
    EXPECT_EQ(Sent().size(), 1U) << "one try";
}

TEST_F(CommandsTest, TheClockAsAMomentIsRightInEitherForm) {
    const auto hour = [this](std::uint8_t byte) {
        logger_.Answers(0x00, {0x09, 0x58, byte, 0x03, 0x15, 0x11, 0x26});
        return cmd::ReadLoggerClock(exchange_).value().Hour;
    };
    EXPECT_EQ(hour(0x23), 23);
    EXPECT_EQ(hour(0x00), 0);
    EXPECT_EQ(hour(0x52), 0) << "12 AM";
    EXPECT_EQ(hour(0x49), 9) << "9 AM";
    EXPECT_EQ(hour(0x72), 12) << "12 PM";
    EXPECT_EQ(hour(0x68), 20) << "8 PM";
    const LocalTime time = cmd::ReadLoggerClock(exchange_).value();
    EXPECT_EQ(time.Year, 2026);
    EXPECT_EQ(time.Month, 11);
    EXPECT_EQ(time.Day, 15);
    EXPECT_EQ(time.Minute, 58);
    EXPECT_EQ(time.Second, 9);
    network_.Faults().LoseAnswer();
    EXPECT_FALSE(cmd::ReadLoggerClock(exchange_));
}

struct ClockText {
    const char* Name;
    const char* Text;
    simulator::Bytes Request;
};

class SetLoggerTime : public CommandsTest, public ::testing::WithParamInterface<ClockText> {};

TEST_P(SetLoggerTime, SendsTheTextAsBcd) {
    EXPECT_TRUE(cmd::SetLoggerTime(exchange_, GetParam().Text));
    EXPECT_EQ(Sent(), Requests{GetParam().Request});
}

INSTANTIATE_TEST_SUITE_P(
    Texts, SetLoggerTime,
    ::testing::Values(
        ClockText{"Plain", "11/15/26 23:12:05", {1, 0x05, 0x12, 0x23, 1, 0x15, 0x11, 0x26}},
        ClockText{"FullYear", "1/2/2026 3:4:5", {1, 5, 4, 3, 1, 2, 1, 0x26}},
        ClockText{"Afternoon", "11/15/26 1:00:00 PM", {1, 0, 0, 0x13, 1, 0x15, 0x11, 0x26}},
        ClockText{"Noon", "11/15/26 12:00:00 PM", {1, 0, 0, 0x12, 1, 0x15, 0x11, 0x26}},
        ClockText{"Midnight", "11/15/26 12:00:00 AM", {1, 0, 0, 0x00, 1, 0x15, 0x11, 0x26}}),
    [](const auto& text) { return text.param.Name; });

TEST_F(CommandsTest, AClockTextOfAnotherShapeSendsNothing) {
    for (const char* text : {"", "11/15/26", "11-15-26 1:2:3", "x/1/26 1:2:3", "1/1/26 1:2",
                             "200/1/26 1:2:3", "-1/1/26 1:2:3"}) {
        EXPECT_FALSE(cmd::SetLoggerTime(exchange_, text)) << text;
    }
    EXPECT_TRUE(Sent().empty());
}

TEST_F(CommandsTest, ReadsTheStatus) {
    logger_.Answers(0x0C, Bytes{0x40, 0x0D, 0x03, 0x80, 0x10});
    ASSERT_TRUE(cmd::GetLoggerStatus(exchange_, record_));
    EXPECT_EQ(record_.NumSamples, 200000U);
    EXPECT_EQ(record_.StatusWord, 0x1080U);
    EXPECT_EQ(record_.LoggingState, "Logging Until Alarm 2");
}

TEST_F(CommandsTest, ReadsTheVersion) {
    logger_.Answers(0x0F, Bytes{33, 3, 2, 1, 0, 0, 0, 0});
    ASSERT_TRUE(cmd::GetLoggerVersion(exchange_, record_));
    EXPECT_EQ(record_.FirmwareVersion, 33);
    EXPECT_EQ(record_.NumAnalogChannels, 3);
    EXPECT_EQ(record_.NumDigitalChannels, 2);
    EXPECT_EQ(record_.SODAvailable, True);
}

TEST_F(CommandsTest, CountsThatNoLoggerHasFailThoughTheFirmwareHasChanged) {
    record_.NumAnalogChannels = 5;
    for (const Bytes& reply : {Bytes{9, 0, 0, 0, 0, 0, 0, 0}, Bytes{9, 9, 0, 0, 0, 0, 0, 0},
                               Bytes{9, 3, 3, 0, 0, 0, 0, 0}}) {
        record_.FirmwareVersion = 0;
        logger_.Answers(0x0F, reply);
        EXPECT_FALSE(cmd::GetLoggerVersion(exchange_, record_));
        EXPECT_EQ(record_.FirmwareVersion, 9);
        EXPECT_EQ(record_.NumAnalogChannels, 5);
    }
}

TEST_F(CommandsTest, OrdersCarryTheirGuardBytes) {
    EXPECT_TRUE(cmd::ClearLoggerHistory(exchange_));
    EXPECT_TRUE(cmd::RestartSampling(exchange_));
    EXPECT_TRUE(cmd::ResetPulseAccumulators(exchange_));
    EXPECT_EQ(Sent(), (Requests{{0x04, 0xA4, 0x4A}, {0x0B, 0xAB, 0xBA}, {0x0E, 0x03}}));
}

TEST_F(CommandsTest, AnOrderWithoutItsDoneByteIsFalse) {
    network_.Faults().LoseReply();
    EXPECT_FALSE(cmd::ClearLoggerHistory(exchange_));
    logger_.Answers(0x0B, simulator::Answer{{0xFA}, {0xFD}, {}});
    EXPECT_FALSE(cmd::RestartSampling(exchange_));
}

TEST_F(CommandsTest, ALoggerThatSaysNothingFailsEveryCommand) {
    logger_.Silence();
    DataPoint point;
    EXPECT_FALSE(cmd::GetLoggerTime(exchange_, console_.Outside.Clock, record_));
    EXPECT_FALSE(cmd::SetLoggerTime(exchange_, "11/15/26 23:12:05"));
    EXPECT_FALSE(cmd::GetLoggerStatus(exchange_, record_));
    EXPECT_FALSE(cmd::GetLoggerVersion(exchange_, record_));
    EXPECT_FALSE(cmd::ResetPulseAccumulators(exchange_));
    EXPECT_EQ(cmd::ReadSample(exchange_, record_, console_.Outside.Clock, point),
              cmd::SampleResult::NotSent);
}

struct TriedCommand {
    const char* Name;
    std::size_t Tries;
    bool (*Run)(FrameExchange& exchange, const SystemClock& clock, LoggerRecord& record);
};

class CommandTries : public CommandsTest, public ::testing::WithParamInterface<TriedCommand> {
 protected:
    bool RunWithout(int answers) {
        network_.Faults().Clear().LoseAnswer(answers);
        network_.ClearRecord();
        return GetParam().Run(exchange_, console_.Outside.Clock, record_);
    }
};

TEST_P(CommandTries, AreAsManyAsTold) {
    const auto tries = GetParam().Tries;
    EXPECT_TRUE(RunWithout(static_cast<int>(tries) - 1));
    EXPECT_EQ(Sent().size(), tries);
    EXPECT_FALSE(RunWithout(static_cast<int>(tries)));
    EXPECT_EQ(Sent().size(), tries);
}

INSTANTIATE_TEST_SUITE_P(
    OfEachCommand, CommandTries,
    ::testing::Values(
        TriedCommand{"GetTime", 1,
                     [](FrameExchange& exchange, const SystemClock& clock, LoggerRecord& record) {
                         return cmd::GetLoggerTime(exchange, clock, record);
                     }},
        TriedCommand{"SetTime", 3,
                     [](FrameExchange& exchange, const SystemClock&, LoggerRecord&) {
                         return cmd::SetLoggerTime(exchange, "11/15/26 23:12:05");
                     }},
        TriedCommand{"ClearHistory", 3,
                     [](FrameExchange& exchange, const SystemClock&, LoggerRecord&) {
                         return cmd::ClearLoggerHistory(exchange);
                     }},
        TriedCommand{"RestartSampling", 3,
                     [](FrameExchange& exchange, const SystemClock&, LoggerRecord&) {
                         return cmd::RestartSampling(exchange);
                     }},
        TriedCommand{"ResetPulses", 3,
                     [](FrameExchange& exchange, const SystemClock&, LoggerRecord&) {
                         return cmd::ResetPulseAccumulators(exchange);
                     }},
        TriedCommand{"GetStatus", 3,
                     [](FrameExchange& exchange, const SystemClock&, LoggerRecord& record) {
                         return cmd::GetLoggerStatus(exchange, record);
                     }},
        TriedCommand{"GetVersion", 3,
                     [](FrameExchange& exchange, const SystemClock&, LoggerRecord& record) {
                         return cmd::GetLoggerVersion(exchange, record);
                     }},
        TriedCommand{"ReadSample", 1,
                     [](FrameExchange& exchange, const SystemClock& clock, LoggerRecord& record) {
                         DataPoint point;
                         return cmd::ReadSample(exchange, record, clock, point) !=
                                cmd::SampleResult::NotSent;
                     }}),
    [](const auto& command) { return command.param.Name; });

TEST_F(CommandsTest, ASampleIsRequestedOnceWhateverComesBack) {
    network_.Faults().LoseAnswer();
    cmd::RequestSample(exchange_, cmd::SampleLater);
    cmd::RequestSample(exchange_, cmd::SampleNow);
    EXPECT_EQ(Sent(), (Requests{{0x09, 0x00}, {0x09, 0x01}}));
}

TEST_F(CommandsTest, ASampleIsBroughtTogetherForTheLoggersChannels) {
    ASSERT_TRUE(cmd::GetLoggerVersion(exchange_, record_));
    cmd::RequestSample(exchange_, cmd::SampleNow);
    console_.Outside.Time.Run(testing_support::Second);
    DataPoint point;
    ASSERT_EQ(cmd::ReadSample(exchange_, record_, console_.Outside.Clock, point),
              cmd::SampleResult::Read);
    for (std::size_t channel = 0; channel < 3; ++channel) {
        EXPECT_EQ(point.Raw[channel], logger_.RawCount(channel, console_.Outside.Time.Now()));
    }
}

TEST_F(CommandsTest, AReadThatBringsNoSampleTellsWhatWasWrong) {
    DataPoint point;
    point.Raw.fill(5);
    EXPECT_EQ(cmd::ReadSample(exchange_, record_, console_.Outside.Clock, point),
              cmd::SampleResult::None);
    EXPECT_EQ(point.Raw[9], NoReading);
    point.Raw.fill(5);
    logger_.Answers(0x0A, simulator::Answer{{0xFA}, {0x11}, {}});
    EXPECT_EQ(cmd::ReadSample(exchange_, record_, console_.Outside.Clock, point),
              cmd::SampleResult::Failed);
    EXPECT_EQ(point.Raw[9], 5) << "the newest sample stays";
}

}  // namespace
