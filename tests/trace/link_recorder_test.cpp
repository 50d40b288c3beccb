#include "trace/link_recorder.h"

#include <gtest/gtest.h>

#include "common/fault.h"
#include "link/port.h"
#include "logger/commands.h"
#include "platform/moments.h"
#include "support/virtual_console.h"
#include "trace/exchange_words.h"

namespace {

using testing_support::BasicSite;
using testing_support::Millisecond;
using testing_support::Second;
using testing_support::VirtualConsole;

class LinkRecorderTest : public ::testing::Test {
 protected:
    LinkRecorderTest() {
        console_.Connect();
        EXPECT_TRUE(comm::SelectClient(console_.Radio(), console_.State.Book.Entries[entry_]));
        console_.Outside.Time.Run(Second);
        console_.State.LinkRecord.MSComm1.ClearInBuffer();
        first_ = Kept().End();
    }

    const TraceStore& Kept() const { return console_.State.Recorder.Kept(); }
    std::size_t Count() const { return Kept().End() - first_; }
    ExchangeWords Words(std::size_t index) const {
        return InWords(Kept().At(first_ + index),
                       NamesOf(console_.State.Recorder.Loggers(), console_.State.Book));
    }
    bool ReadStatus() { return cmd::GetLoggerStatus(console_.State.Exchange, record_); }

    VirtualConsole console_;
    int entry_ = console_.AddSite(BasicSite(1));
    simulator::Network& network_ = console_.Outside.Network;
    LoggerRecord record_;
    std::uint64_t first_ = 0;
};

TEST_F(LinkRecorderTest, AnExchangeIsToldWithTimeLoggerAnswerAndDelay) {
    ASSERT_TRUE(ReadStatus());
    ASSERT_EQ(Count(), 1U);
    const ExchangeWords words = Words(0);
    EXPECT_EQ(words.Who, "Site 1 (channel 10, MAC 00-00-01)");
    EXPECT_EQ(words.Direction, "out, in");
    EXPECT_EQ(words.Asked, "read status");
    EXPECT_EQ(words.Came, "acknowledged, 0 records, Logging");
    EXPECT_EQ(words.Try, "1 of 3");
    EXPECT_EQ(words.Fault, "");
    // Six bytes at 38400 baud, 5 ms of air, 3 ms of thought, 5 ms of air and the acknowledge.
    EXPECT_EQ(words.After, "15 ms");
}

TEST_F(LinkRecorderTest, TheTimeIsTheLocalOneToTheMillisecond) {
    console_.Outside.Clock.Start = {2026, 12, 31, 23, 59, 59, 0};
    const std::int64_t now = console_.Outside.Time.Now() / Millisecond % 1000;
    ASSERT_TRUE(ReadStatus());
    const std::string text = Words(0).Time;
    EXPECT_EQ(text.substr(0, 11), "2027-01-01 ");
    EXPECT_EQ(text.substr(19), "." + std::to_string(1000 + now).substr(1));
}

TEST_F(LinkRecorderTest, EveryTryStandsForItselfWithItsNumber) {
    network_.Faults().LoseAnswer().NextReply(simulator::WrongAck(0x41));
    ASSERT_TRUE(ReadStatus());
    ASSERT_EQ(Count(), 3U);
    EXPECT_EQ(Words(0).Try, "1 of 3");
    EXPECT_EQ(Words(0).Fault, "no acknowledge within 0.8 s");
    EXPECT_EQ(Words(0).Direction, "out");
    EXPECT_EQ(Words(0).Came, "");
    EXPECT_EQ(Words(0).After, "");
    EXPECT_EQ(Words(1).Try, "2 of 3");
    EXPECT_EQ(Words(1).Fault, "another byte in place of the acknowledge");
    EXPECT_EQ(Words(2).Try, "3 of 3");
    EXPECT_EQ(Words(2).Fault, "");
}

TEST_F(LinkRecorderTest, WhatComesTooLateIsKeptAsThrownAway) {
    network_.Faults().NextReply(simulator::LateReply(3 * Second));
    EXPECT_FALSE(ReadStatus());
    console_.Outside.Time.Run(5 * Second);
    ASSERT_TRUE(ReadStatus());
    EXPECT_EQ(Words(0).Fault, "no answer within 1.1 s");
    EXPECT_EQ(Words(0).Came, "acknowledged, 10 bytes thrown away");
    EXPECT_EQ(Words(1).Fault, "");
}

TEST_F(LinkRecorderTest, TheEndOfTheProgramIsNoSilenceOfTheLogger) {
    network_.Faults().LoseAnswer();
    console_.Outside.Time.In(300 * Millisecond,
                             [this] { console_.State.LinkRecord.ShuttingDown = True; });
    EXPECT_FALSE(ReadStatus());
    EXPECT_EQ(Words(0).Fault, "broken off by the end of the program");
}

TEST_F(LinkRecorderTest, TellsWhatBefallsThePort) {
    comm::Disconnect(console_.State.LinkRecord, console_.View);
    console_.Outside.Port.Missing.insert(2);
    EXPECT_FALSE(comm::OpenPort(console_.State.LinkRecord, console_.View, 2, "9600,N,8,1"));
    EXPECT_TRUE(comm::OpenPort(console_.State.LinkRecord, console_.View, 3, "9600,N,8,1"));
    console_.Outside.Port.PullOut();
    console_.Outside.Time.Run(Second);
    ASSERT_EQ(Count(), 4U);
    EXPECT_EQ(LineOf(Words(0)).substr(25), "port: close COM1 38400,N,8,1 -> closed");
    EXPECT_EQ(LineOf(Words(1)).substr(25),
              "port: open COM2 9600,N,8,1 -> no such port  ! cannot be opened");
    EXPECT_EQ(LineOf(Words(2)).substr(25), "port: open COM3 9600,N,8,1 -> opened");
    EXPECT_EQ(LineOf(Words(3)).substr(25), "port:  -> COM3 9600,N,8,1  ! the device is gone");
    EXPECT_EQ(KindOf(Kept().At(first_)), TraceKind::Port);
    EXPECT_FALSE(IsFaulty(Kept().At(first_)));
    EXPECT_TRUE(IsFaulty(Kept().At(first_ + 1)));
    EXPECT_FALSE(IsFaulty(Kept().At(first_ + 2)));
    EXPECT_TRUE(IsFaulty(Kept().At(first_ + 3)));
}

TEST_F(LinkRecorderTest, BytesNobodyAskedForAreAnEntryOfTheirOwn) {
    comm::ClosePort(console_.State.LinkRecord);
    ASSERT_TRUE(comm::OpenPort(console_.State.LinkRecord, console_.View, 1, "38400,N,8,1"));
    console_.Outside.Port.Receive({1, 2, 3});
    console_.State.LinkRecord.MSComm1.ClearInBuffer();
    ASSERT_EQ(Count(), 3U);
    EXPECT_EQ(KindOf(Kept().At(first_ + 2)), TraceKind::Unasked);
    EXPECT_EQ(Words(2).Direction, "in");
    EXPECT_EQ(LineOf(Words(2)).substr(25), "line: <- 3 bytes thrown away");
    EXPECT_EQ(HexOf(Kept().At(first_ + 2)), "thrown away: 01 02 03");
}

/// A port that notes every call, in order, and answers with bytes of its own.
class NotingPort final : public SerialPort {
 public:
    int CommPort() const override { return 3; }
    void SetCommPort(int number) override { Notes += "number " + std::to_string(number) + ";"; }
    std::string Settings() const override { return "s"; }
    void SetSettings(const std::string& settings) override {
        Notes += "settings " + settings + ";";
    }
    bool PortOpen() const override { return Open; }
    void SetPortOpen(bool open) override {
        Notes += open ? "open;" : "close;";
        if (Refuses) {
            throw Fault("not allowed");
        }
        Open = open;
    }
    void SetDTREnable(bool enable) override { Notes += enable ? "dtr on;" : "dtr off;"; }
    int InBufferCount() const override { return static_cast<int>(Waiting.size()); }
    void ClearInBuffer() override {
        Notes += "clear;";
        Waiting.clear();
    }
    Bytes Input(int InputLen) override {
        const std::size_t count =
            InputLen == 0 ? Waiting.size() : std::min<std::size_t>(1, Waiting.size());
        Bytes taken(Waiting.begin(), Waiting.begin() + static_cast<std::ptrdiff_t>(count));
        Waiting.erase(Waiting.begin(), Waiting.begin() + static_cast<std::ptrdiff_t>(count));
        return taken;
    }
    void Output(std::span<const std::uint8_t> bytes) override {
        Notes += "out " + std::to_string(bytes.size()) + ";";
    }
    void Expect(int count) override { Notes += "expect " + std::to_string(count) + ";"; }
    void LookForHangUp() override { Notes += "look;"; }

    std::string Notes;
    Bytes Waiting;
    bool Open = false;
    bool Refuses = false;
};

TEST(LinkRecorder, TellsOfTheNextChangeOnceAndOfNoneThatWasTakenBack) {
    NotingPort port;
    testing_support::VirtualHost host;
    LinkRecorder recorder(port, host.Clock);
    int told = 0;
    const auto count = [&told] { ++told; };
    recorder.TellNextChange(count);
    recorder.Expect(2);
    recorder.LookForHangUp();
    EXPECT_EQ(told, 0) << "nothing was kept";
    recorder.Output(Bytes{1});
    recorder.Output(Bytes{1});
    EXPECT_EQ(told, 1);
    port.Waiting = {7};
    recorder.TellNextChange(count);
    EXPECT_EQ(recorder.Input(1), Bytes{7});
    EXPECT_EQ(told, 2);
    recorder.TellNextChange(count);
    recorder.OnFinding(LinkFinding::Acknowledged, 0);
    EXPECT_EQ(told, 3);
    recorder.TellNextChange(count);
    recorder.SetPortOpen(true);
    EXPECT_EQ(told, 4);
    recorder.TellNextChange(count);
    recorder.TellNextChange(nullptr);
    recorder.Output(Bytes{1});
    EXPECT_EQ(told, 4);
}

TEST(LinkRecorder, EveryCallGoesThroughAsItIs) {
    NotingPort port;
    testing_support::VirtualHost host;
    LinkRecorder recorder(port, host.Clock);
    recorder.SetCommPort(5);
    recorder.SetSettings("x");
    recorder.SetPortOpen(true);
    recorder.SetDTREnable(true);
    recorder.Output(Bytes{1, 2});
    port.Waiting = {7, 8, 9};
    EXPECT_EQ(recorder.InBufferCount(), 3);
    EXPECT_EQ(recorder.Input(1), (Bytes{7}));
    EXPECT_EQ(recorder.Input(0), (Bytes{8, 9}));
    EXPECT_EQ(recorder.Input(0), Bytes());
    port.Waiting = {4};
    recorder.ClearInBuffer();
    EXPECT_EQ(recorder.InBufferCount(), 0);
    recorder.Expect(6);
    recorder.LookForHangUp();
    recorder.SetPortOpen(false);
    EXPECT_EQ(port.Notes, "number 5;settings x;open;dtr on;out 2;clear;expect 6;look;close;");
    EXPECT_EQ(recorder.CommPort(), 3);
    EXPECT_EQ(recorder.Settings(), "s");
    EXPECT_FALSE(recorder.PortOpen());
    port.Refuses = true;
    EXPECT_THROW(recorder.SetPortOpen(true), Fault);
}

TEST(LinkRecorder, MillisecondsGoBackToTheMomentTheyCameFrom) {
    EXPECT_EQ(ToMilliseconds({2000, 1, 1, 0, 0, 0, 0}), 0);
    EXPECT_EQ(ToMilliseconds({2000, 3, 1, 0, 0, 1, 5}), 60LL * 86'400'000 + 1005);
    for (std::int64_t milliseconds = -987'654'321; milliseconds < 2'000'000'000'000;
         milliseconds += 97'777'777'777) {
        EXPECT_EQ(ToMilliseconds(FromMilliseconds(milliseconds)), milliseconds);
    }
}

}  // namespace
