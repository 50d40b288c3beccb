// The trace against the simulator's own, over a session of random requests and faults: what the
// console says of an exchange is what the other end of the wire says of it.
#include <gtest/gtest.h>

#include <random>
#include <regex>
#include <string>

#include "logger/commands.h"
#include "logger/memory.h"
#include "platform/moments.h"
#include "simulator/trace.h"
#include "support/virtual_console.h"
#include "trace/exchange_words.h"

namespace {

using simulator::Exchange;
using simulator::FaultKind;
using testing_support::BasicSite;
using testing_support::VirtualConsole;

constexpr std::uint8_t Ack = 0xFA;

// ----- what the other end says, in the trace's words

std::string AskedBy(const Exchange& exchange) {
    static const std::vector<std::pair<std::regex, std::string>> Words{
        {std::regex("AT\\+\\+\\+"), "command mode on"},
        {std::regex("CC ATO"), "command mode off"},
        {std::regex("CC 02 channel (..)"), "set channel $1"},
        {std::regex("CC 10 address (..) (..) (..)"), "set address $1-$2-$3"},
        {std::regex("CC 26 signal"), "read signal"},
        {std::regex("CC C0 system id"), "read system id"},
        {std::regex("01 set clock (..) (..) (..) .. (..) (..) (..)"),
         "set clock to 20$6-$5-$4 $3:$2:$1"},
        {std::regex("0C status"), "read status"},
        {std::regex("0F version"), "read version"},
        {std::regex(".. (.* )1 bytes at (.*)"), "$011 byte at $2"},
        {std::regex("[0-9A-F]{2} (.*)"), "$1"}};
    const std::string told = simulator::RequestText(exchange);
    for (const auto& [pattern, words] : Words) {
        if (std::regex_match(told, pattern)) {
            return std::regex_replace(told, pattern, words);
        }
    }
    return told;
}

std::string Counted(int count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

/// The frame in the simulator's line, byte by byte; empty if it is too long to be told.
simulator::Bytes FrameBytes(const std::string& told) {
    simulator::Bytes bytes;
    const std::size_t at = told.find(": ");
    for (std::size_t i = at + 2; at != std::string::npos && i + 1 < told.size(); i += 3) {
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(told.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

std::string FrameBy(const Exchange& exchange, const std::string& told) {
    const simulator::Bytes bytes = FrameBytes(told);
    std::smatch found;
    const auto two = [&](std::size_t i) { return simulator::HexText(std::span(&bytes[i], 1)); };
    switch (exchange.Request.front()) {
        case 0x00:
            return "clock 20" + two(6) + "-" + two(5) + "-" + two(4) + " " + two(2) + ":" + two(1) +
                   ":" + two(0);
        case 0x08:
            return Counted(exchange.Request[4], "byte") + " from " +
                   std::to_string(exchange.Request[1] + 0x100 * exchange.Request[2] +
                                  0x10000 * exchange.Request[3]);
        case 0x0A:
            return "sample";
        case 0x0C:
            return Counted(bytes[0] + 0x100 * bytes[1] + 0x10000 * bytes[2], "record") + ", " +
                   cmd::LoggingStateText(static_cast<std::uint32_t>(bytes[3] + 0x100 * bytes[4]));
        case 0x0D:
            EXPECT_TRUE(std::regex_search(told, found, std::regex("with (\\d+) records")));
            return "block of " + Counted(std::stoi(found[1]), "record");
        case 0x0F:
            return "firmware " + std::to_string(bytes[0]) + ", " +
                   Counted(bytes[1], "analog channel") + ", " + Counted(bytes[2], "pulse channel");
        default:
            return "unforeseen";
    }
}

std::string CameFromRadio(const Exchange& exchange, const std::string& told) {
    if (told == "normal mode") {
        return "4 bytes thrown away";
    }
    // What was taken is what was asked for.
    return told == "taken" ? AskedBy(exchange).substr(4) : told;
}

/// What came of an exchange without a fault.
std::string CameBy(const Exchange& exchange) {
    const std::string told = simulator::ReplyText(exchange);
    if (exchange.OfRadio) {
        return CameFromRadio(exchange, told);
    }
    const bool order = exchange.Request.front() != 0x09;
    if (told == "FA") {
        return "acknowledged";
    }
    if (told == "FA, FC") {
        return order ? "acknowledged, done" : "acknowledged, status FC";
    }
    if (told == "FA, FD") {
        return "acknowledged, no sample";
    }
    if (told.size() == 6) {
        return "acknowledged, status " + told.substr(4);
    }
    return "acknowledged, " + FrameBy(exchange, told);
}

// ----- what must be wrong with an exchange, by the rules of the wire

std::size_t ExpectedSize(const Exchange& exchange) {
    switch (exchange.Request.front()) {
        case 0x00:
            return 7;
        case 0x08:
            return 3U + exchange.Request[4];
        case 0x0A:
            return 24;
        case 0x0C:
            return 5;
        case 0x0D:
            return 241;
        default:
            return 8;
    }
}

std::string WrongWithBody(std::span<const std::uint8_t> body, std::size_t size) {
    simulator::Bytes plain;
    std::size_t i = 0;
    for (; i < body.size() && plain.size() < size + 2; ++i) {
        if (body[i] != 0xFE) {
            plain.push_back(body[i]);
        } else if (++i < body.size()) {
            if (body[i] > 6) {
                return "escape in the frame is wrong";
            }
            plain.push_back(static_cast<std::uint8_t>(body[i] + 0xF8));
        }
    }
    if (i >= body.size()) {
        return "silence of 0.8 s inside the frame";
    }
    if (body[i] != 0xF9) {
        return "end of the frame is wrong";
    }
    const std::uint16_t crc = simulator::Crc16(std::span(plain).first(size));
    return crc == plain[size] + 0x100 * plain[size + 1] ? "" : "CRC differs";
}

std::string WrongWithFrame(std::span<const std::uint8_t> bytes, std::size_t size) {
    if (bytes.empty()) {
        return "no answer within 1.1 s";
    }
    const auto start = std::find(bytes.begin(), bytes.end(), 0xF8);
    if (start == bytes.end()) {
        return "no frame begins in what came";
    }
    const auto frame = bytes.last(static_cast<std::size_t>(bytes.end() - start));
    if (frame.size() < 2) {
        return "silence of 0.8 s inside the frame";
    }
    return frame[1] != size + 2 ? "frame of another length than expected"
                                : WrongWithBody(frame.subspan(2), size);
}

std::string WrongWithLogger(const Exchange& exchange, std::span<const std::uint8_t> bytes) {
    if (bytes.empty()) {
        return "no acknowledge within 0.8 s";
    }
    if (bytes.front() != Ack) {
        return "another byte in place of the acknowledge";
    }
    const auto rest = bytes.subspan(1);
    const std::uint8_t code = exchange.Request.front();
    if (code == 0x07) {
        return "";
    }
    const bool order = code == 0x01 || code == 0x04 || code == 0x0B || code == 0x0E;
    if (!order && code != 0x09 && code != 0x0A) {
        return WrongWithFrame(rest, ExpectedSize(exchange));
    }
    if (rest.empty()) {
        return "no status within 0.8 s";
    }
    if (order) {
        return rest.front() == 0xFC ? "" : "status is not FC";
    }
    if (code == 0x09 || rest.front() == 0xFD) {
        return "";
    }
    return rest.front() == 0xFA ? WrongWithFrame(rest.subspan(1), ExpectedSize(exchange))
                                : "status is neither FA nor FD";
}

std::string WrongWithTuning(const Exchange& exchange, std::span<const std::uint8_t> bytes,
                            const std::string& what) {
    const auto told = std::span(exchange.Request).subspan(2);
    const bool echoed =
        bytes.size() > told.size() && std::equal(told.begin(), told.end(), bytes.begin() + 1);
    if (echoed) {
        return "";
    }
    const std::size_t whole = what == "channel" ? 3 : 4;
    return bytes.size() < whole ? "answer is too short" : "echo of the " + what + " differs";
}

/// Nothing of the change to normal mode: it is looked at here and not there.
std::string WrongWithRadio(const Exchange& exchange, std::span<const std::uint8_t> bytes) {
    if (bytes.empty()) {
        return "no answer within 0.5 s";
    }
    if (exchange.Request.front() == 'A') {
        const simulator::Bytes good{0xCC, 'C', 'O', 'M'};
        return std::equal(bytes.begin(), bytes.end(), good.begin(), good.end())
                   ? ""
                   : "another answer than expected";
    }
    switch (exchange.Request[1]) {
        case 0x02:
            return WrongWithTuning(exchange, bytes, "channel");
        case 0x10:
            return WrongWithTuning(exchange, bytes, "address");
        case 0x26:
            return bytes.size() >= 2 && bytes[0] == 0xCC ? ""
                   : bytes.size() < 4                    ? "answer is too short"
                                                         : "another answer than expected";
        default:
            return "";
    }
}

std::string FaultBy(const Exchange& exchange) {
    std::span<const std::uint8_t> inTime(exchange.Sent);
    if (exchange.Fault == FaultKind::Late) {
        inTime = {};
    } else if (exchange.Fault == FaultKind::LateReply) {
        const bool ackAlone = exchange.OfRadio || exchange.Request.front() == 0x07;
        inTime = inTime.first(ackAlone ? 0 : 1);
    }
    return exchange.OfRadio ? WrongWithRadio(exchange, inTime) : WrongWithLogger(exchange, inTime);
}

// ----- the session

class Session {
 public:
    explicit Session(unsigned seed) : random_(seed) {
        for (int number = 1; number <= 3; ++number) {
            console_.AddSite(BasicSite(number));
        }
        record_.NumAnalogChannels = 8;
        record_.NumDigitalChannels = 2;
        console_.Connect();
    }

    void Run(int steps) {
        for (int step = 0; step < steps; ++step) {
            ScriptFaults();
            if (comm::SelectClient(console_.Radio(),
                                   console_.State.Book.Entries[static_cast<int>(Below(3)) + 1])) {
                Command(Below(13));
            } else {
                // The radio may have taken an address of which the console saw no echo.
                console_.State.LinkRecord.CurrentMAC = {0xFF, 0xFF, 0xFF};
            }
            // What comes late comes now.
            console_.Outside.Time.Run(60 * testing_support::Second);
            console_.Outside.Network.Faults().Clear();
            console_.Outside.Network.RadioFaults().Clear();
        }
        // The last answer that nobody looks at.
        console_.State.LinkRecord.MSComm1.ClearInBuffer();
    }

    VirtualConsole& Console() { return console_; }

 private:
    unsigned Below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }

    simulator::LineFault AnyFault(bool ofRadio) {
        using namespace simulator;
        const Microseconds long_ = 30 * Second;
        const auto byte = static_cast<std::uint8_t>(Below(0xF0));
        switch (Below(ofRadio ? 7 : 13)) {
            case 0:
                return Plain(FaultKind::LoseRequest);
            case 1:
                return Plain(FaultKind::LoseAnswer);
            case 2:
                return Late(long_);
            case 3:
                return CutAfter(static_cast<int>(Below(ofRadio ? 4 : 30)));
            case 4:
            case 5:
                return CorruptByte(static_cast<int>(Below(ofRadio ? 4 : 14)),
                                   static_cast<std::uint8_t>(1 + Below(0xFF)));
            case 6:
                return Plain(FaultKind::LoseReply);
            case 7:
                return Plain(FaultKind::LoseAck);
            case 8:
                return LateReply(long_);
            case 9:
                return NoiseBefore({byte, byte});
            case 10:
                return NoiseAhead({byte});
            case 11:
                return WrongLength(Below(2) == 0 ? 1 : -1);
            default:
                return Below(2) == 0 ? WrongAck(byte) : Plain(FaultKind::Repeat);
        }
    }

    void ScriptFaults() {
        if (Below(2) == 0) {
            console_.Outside.Network.Faults().NextReply(AnyFault(false),
                                                        static_cast<int>(1 + Below(3)));
        }
        if (Below(6) == 0) {
            console_.Outside.Network.RadioFaults()
                .Pass(static_cast<int>(Below(3)))
                .NextReply(AnyFault(true));
        }
    }

    void AskHistory() {
        const Bytes request{0x0D, static_cast<std::uint8_t>(Below(3))};
        std::int16_t retries = 1;
        Bytes block(241);
        if (exchange_.SendFrame(request, retries)) {
            static_cast<void>(exchange_.ReceiveFrame(block));
        }
    }

    void Sample() {
        DataPoint point;
        static_cast<void>(cmd::ReadSample(exchange_, record_, console_.Outside.Clock, point));
    }

    void Memory(bool write) {
        Bytes bytes{1, 2, 3, 4, 5, 6, 7, 8};
        std::int32_t address = 0x100 + static_cast<std::int32_t>(Below(64));
        const int count = static_cast<int>(1 + Below(8));
        static_cast<void>(write ? cmd::WriteLoggerMemory(exchange_, bytes, 0, count, address)
                                : cmd::ReadLoggerMemory(exchange_, bytes, 0, count, address));
    }

    void Command(unsigned which) {
        std::uint8_t signal = 0;
        switch (which) {
            case 0:
                return static_cast<void>(
                    cmd::GetLoggerTime(exchange_, console_.Outside.Clock, record_));
            case 1:
                return static_cast<void>(cmd::SetLoggerTime(exchange_, "11/15/26 21:07:09"));
            case 2:
                return static_cast<void>(cmd::GetLoggerStatus(exchange_, record_));
            case 3:
                return static_cast<void>(cmd::GetLoggerVersion(exchange_, record_));
            case 4:
                return static_cast<void>(cmd::ClearLoggerHistory(exchange_));
            case 5:
                return static_cast<void>(cmd::RestartSampling(exchange_));
            case 6:
                return static_cast<void>(cmd::ResetPulseAccumulators(exchange_));
            case 7:
                return cmd::RequestSample(exchange_, static_cast<std::uint8_t>(1));
            case 8:
                return Sample();
            case 9:
                return Memory(false);
            case 10:
                return Memory(true);
            case 11:
                return AskHistory();
            default:
                return static_cast<void>(
                    comm::ReadRadioSignal(console_.State.LinkRecord, console_.State.Boxes, signal));
        }
    }

    std::mt19937 random_;
    VirtualConsole console_;
    FrameExchange& exchange_ = console_.State.Exchange;
    LoggerRecord record_;
};

class TraceAgreement : public ::testing::TestWithParam<unsigned> {
 protected:
    void SetUp() override {
        session_.Run(400);
        names_ = NamesOf(State().Recorder.Loggers(), State().Book);
    }

    SharedState& State() { return session_.Console().State; }
    const TraceStore& Kept() { return State().Recorder.Kept(); }
    const std::vector<Exchange>& Record() { return session_.Console().Outside.Network.Record(); }

    /// The number of the request that had gone out last at a moment of the simulator's.
    std::uint64_t RequestBefore(simulator::Microseconds moment) {
        const std::int64_t start = ToMilliseconds(session_.Console().Outside.Clock.Start);
        std::uint64_t last = 0;
        for (std::uint64_t number = cursor_; number < Kept().End(); ++number) {
            const TraceRecord& record = Kept().At(number).Record;
            if ((record.Time - start) * 1000 > moment) {
                break;
            }
            last = record.Event == TraceEvent::Exchange ? number : last;
        }
        return last;
    }

    void Compare(const Exchange& exchange, const TraceEntry& entry) {
        const ExchangeWords words = InWords(entry, names_);
        const std::string told =
            simulator::TraceLine(exchange) + "\n" + LineOf(words) + "\n" + HexOf(entry);
        EXPECT_EQ(words.Asked, AskedBy(exchange)) << told;
        EXPECT_EQ(words.Who.substr(0, words.Who.find(" (")),
                  exchange.OfRadio ? "server radio" : exchange.LoggerName)
            << told;
        const bool leaves = exchange.OfRadio && words.Asked == "command mode off";
        if (!leaves || exchange.Sent.empty()) {
            EXPECT_EQ(words.Fault, FaultBy(exchange)) << told;
        }
        EXPECT_EQ(IsFaulty(entry), !words.Fault.empty()) << told;
        if (exchange.Fault == FaultKind::None &&
            !(leaves && entry.Thrown.size() != exchange.Sent.size())) {
            EXPECT_EQ(WithoutOthers(words.Came, entry), CameBy(exchange)) << told;
            EXPECT_TRUE(leaves || std::equal(entry.Taken.begin(), entry.Taken.end(),
                                             exchange.Sent.begin(), exchange.Sent.end()))
                << told;
        }
        named_ += words.Fault.empty() ? 0 : 1;
    }

    /// Without what came late of exchanges before and was thrown away.
    static std::string WithoutOthers(const std::string& came, const TraceEntry& entry) {
        const std::size_t comma = came.rfind(", ");
        return entry.Taken.empty() || entry.Thrown.empty() ? came : came.substr(0, comma);
    }

    Session session_{GetParam()};
    LoggerNames names_;
    std::uint64_t cursor_ = 1;
    int named_ = 0;
};

TEST_P(TraceAgreement, SaysOfEveryExchangeWhatTheOtherEndSays) {
    ASSERT_GT(Record().size(), 1000U);
    for (const Exchange& exchange : Record()) {
        const std::uint64_t number = RequestBefore(exchange.Time);
        ASSERT_GE(number, cursor_) << simulator::TraceLine(exchange);
        for (; cursor_ < number; ++cursor_) {
            // A request that the other end never heard of.
            const TraceEntry unheard = Kept().At(cursor_);
            EXPECT_TRUE(unheard.Record.Event != TraceEvent::Exchange || IsFaulty(unheard))
                << LineOf(InWords(unheard, names_));
        }
        Compare(exchange, Kept().At(number));
        ++cursor_;
    }
    EXPECT_GT(named_, 100) << "faults enough";
}

INSTANTIATE_TEST_SUITE_P(Seeds, TraceAgreement, ::testing::Values(1U, 2U, 3U, 4U));

}  // namespace
