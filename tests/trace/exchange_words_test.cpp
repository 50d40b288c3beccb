#include "trace/exchange_words.h"

#include <gtest/gtest.h>

#include "link/frame_codec.h"
#include "trace/request_words.h"
#include "trace/trace_filter.h"

namespace {

class ExchangeWordsTest : public ::testing::Test {
 protected:
    /// An entry of a request to a logger and what came of it.
    std::uint64_t Add(const Bytes& sent, const Bytes& came, LinkFinding finding = LinkFinding::None,
                      std::int16_t ticks = 0) {
        store_.Begin(
            {.Ticks = ticks, .Finding = finding, .Channel = 0x1A, .Mac = {0x00, 0x02, 0x44}}, sent);
        store_.Receive(came, false);
        return store_.End() - 1;
    }
    ExchangeWords Words(std::uint64_t number) const { return InWords(store_.At(number), names_); }
    /// What a logger's answer of acknowledge, `status` and a frame with `reply` says.
    std::string Came(const Bytes& payload, const Bytes& status, const Bytes& reply = {}) {
        Bytes came{0xFA};
        came.insert(came.end(), status.begin(), status.end());
        if (!reply.empty()) {
            const Bytes frame = comm::EncodeFrame(reply);
            came.insert(came.end(), frame.begin(), frame.end());
        }
        return Words(Add(comm::EncodeFrame(payload), came, LinkFinding::FrameRead)).Came;
    }
    std::string Fault(LinkFinding finding, std::int16_t ticks = 0, const Bytes& sent = {0xF8}) {
        return Words(Add(sent, {}, finding, ticks)).Fault;
    }

    TraceStore store_{100, 1 << 16};
    LoggerNames names_;
};

TEST_F(ExchangeWordsTest, ALoggerIsToldByItsNameWhereTheBookHasIt) {
    const std::uint64_t number = Add(comm::EncodeFrame(Bytes{0x0C}), {});
    EXPECT_EQ(Words(number).Who, "channel 1A, MAC 00-02-44");
    AddressBook book;
    ClientRadio entry;
    entry.Name = "Hill Tanks";
    entry.Channel = 0x1A;
    entry.Mac = {9, 9, 9, 0x00, 0x02, 0x44};
    book.Entries.Append(entry);
    entry.Name = "A second of the same address";
    book.Entries.Append(entry);
    names_ = NamesOf({{0x1A, {0x00, 0x02, 0x44}}}, book);
    EXPECT_EQ(Words(number).Who, "Hill Tanks (channel 1A, MAC 00-02-44)");
    EXPECT_TRUE(NamesOf({{0x1B, {0x00, 0x02, 0x44}}}, book).empty());
}

TEST_F(ExchangeWordsTest, AnswersAreToldByWhatTheySay) {
    EXPECT_EQ(Came({0x00}, {}, {0x09, 0x07, 0x21, 1, 0x15, 0x11, 0x26}),
              "acknowledged, clock 2026-11-15 21:07:09");
    EXPECT_EQ(Came({0x00}, {}, {0x09, 0x07, 0x69, 1, 0x15, 0x11, 0x26}),
              "acknowledged, clock 2026-11-15 09:07:09 PM");
    EXPECT_EQ(Came({0x00}, {}, {0x09, 0x07, 0x52, 1, 0x15, 0x11, 0x26}),
              "acknowledged, clock 2026-11-15 12:07:09 AM");
    EXPECT_EQ(Came({0x0C}, {}, {0x40, 0x0D, 0x03, 0x80, 0x10}),
              "acknowledged, 200000 records, Logging Until Alarm 2");
    EXPECT_EQ(Came({0x0F}, {}, {42, 8, 1, 0, 0, 0, 0, 0}),
              "acknowledged, firmware 42, 8 analog channels, 1 pulse channel");
    EXPECT_EQ(Came({0x08, 8, 0, 0, 2}, {}, {8, 0, 0, 1, 2}), "acknowledged, 2 bytes from 8");
    EXPECT_EQ(Came({0x0D, 1}, {}, {17, 0, 0}), "acknowledged, block of 17 records");
    EXPECT_EQ(Came({0x0A}, {0xFD}), "acknowledged, no sample");
    EXPECT_EQ(Came({0x0A}, {0xFA}, {1, 2, 3}), "acknowledged, sample");
    EXPECT_EQ(Came({0x0B, 0xAB, 0xBA}, {0xFC}), "acknowledged, done");
    EXPECT_EQ(Came({0x09, 1}, {0xFC}), "acknowledged, status FC");
    EXPECT_EQ(Came({0x55}, {}, {1, 2}), "acknowledged, frame of 2 bytes");
    EXPECT_EQ(Came({0x0C}, {7, 7, 7}), "acknowledged, 3 bytes of no good frame");
}

TEST_F(ExchangeWordsTest, FaultsAreNamed) {
    EXPECT_EQ(Fault(LinkFinding::NoAcknowledge, 8), "no acknowledge within 0.8 s");
    EXPECT_EQ(Fault(LinkFinding::NoFrame, 11), "no answer within 1.1 s");
    EXPECT_EQ(Fault(LinkFinding::NoStatus, 8), "no status within 0.8 s");
    EXPECT_EQ(Fault(LinkFinding::NoFrameStart), "no frame begins in what came");
    EXPECT_EQ(Fault(LinkFinding::FrameSilence, 8), "silence of 0.8 s inside the frame");
    EXPECT_EQ(Fault(LinkFinding::FrameLength), "frame of another length than expected");
    EXPECT_EQ(Fault(LinkFinding::FrameEscape), "escape in the frame is wrong");
    EXPECT_EQ(Fault(LinkFinding::FrameEnd), "end of the frame is wrong");
    EXPECT_EQ(Fault(LinkFinding::FrameCrc), "CRC differs");
    EXPECT_EQ(Fault(LinkFinding::RadioSilence, 5), "no answer within 0.5 s");
    EXPECT_EQ(Fault(LinkFinding::RadioEcho, 0, {0xCC, 0x02, 5}), "echo of the channel differs");
    EXPECT_EQ(Fault(LinkFinding::RadioEcho, 0, {0xCC, 0x10, 1, 2, 3}),
              "echo of the address differs");
    EXPECT_EQ(Fault(LinkFinding::FrameRead), "");
}

TEST_F(ExchangeWordsTest, AnAnswerAboutAnotherPlaceInMemoryIsAFault) {
    const Bytes request = comm::EncodeFrame(Bytes{0x08, 8, 0, 0, 2});
    for (const std::uint8_t place : {8, 9}) {
        Bytes came{0xFA};
        const Bytes frame = comm::EncodeFrame(Bytes{place, 0, 0, 1, 2});
        came.insert(came.end(), frame.begin(), frame.end());
        const std::uint64_t number = Add(request, came, LinkFinding::FrameRead);
        EXPECT_EQ(Words(number).Fault, place == 8 ? "" : "echo of the memory address differs");
        EXPECT_EQ(IsFaulty(store_.At(number)), place != 8);
    }
}

TEST_F(ExchangeWordsTest, AnOrderWithAnotherStatusIsAFault) {
    const std::uint64_t number =
        Add(comm::EncodeFrame(Bytes{0x0E, 3}), {0xFA, 0x05}, LinkFinding::StatusRead);
    EXPECT_EQ(Words(number).Came, "acknowledged, status 05");
    EXPECT_EQ(Words(number).Fault, "status is not FC");
    EXPECT_TRUE(IsFaulty(store_.At(number)));
}

TEST_F(ExchangeWordsTest, BytesAreToldInHexadecimal) {
    const std::uint64_t number = Add({0xF8, 0x03}, {0xFA});
    store_.Receive(Bytes{0x0B, 0xC0}, true);
    EXPECT_EQ(HexOf(store_.At(number)), "sent: F8 03\ncame: FA\nthrown away: 0B C0");
}

TEST_F(ExchangeWordsTest, EveryRequestHasItsKind) {
    const auto kind = [this](const Bytes& payload) {
        return KindOf(store_.At(Add(comm::EncodeFrame(payload), {})));
    };
    EXPECT_EQ(kind({0x00}), TraceKind::Clock);
    EXPECT_EQ(kind({0x01}), TraceKind::Clock);
    EXPECT_EQ(kind({0x04, 0xA4, 0x4A}), TraceKind::Order);
    EXPECT_EQ(kind({0x07}), TraceKind::Memory);
    EXPECT_EQ(kind({0x08}), TraceKind::Memory);
    EXPECT_EQ(kind({0x09, 1}), TraceKind::Sample);
    EXPECT_EQ(kind({0x0A}), TraceKind::Sample);
    EXPECT_EQ(kind({0x0B}), TraceKind::Order);
    EXPECT_EQ(kind({0x0C}), TraceKind::Status);
    EXPECT_EQ(kind({0x0D, 0}), TraceKind::History);
    EXPECT_EQ(kind({0x0E, 3}), TraceKind::Order);
    EXPECT_EQ(kind({0x0F}), TraceKind::Status);
    EXPECT_EQ(kind({0x77}), TraceKind::Other);
    EXPECT_EQ(KindOf(store_.At(Add({0xCC, 0x26}, {}))), TraceKind::Radio);
    EXPECT_EQ(KindOf(store_.At(Add({'A', 'T'}, {}))), TraceKind::Radio);
}

TEST(RequestWords, CutRequestsHaveWordsToo) {
    for (int code = 0; code < 256; ++code) {
        const auto byte = static_cast<std::uint8_t>(code);
        EXPECT_FALSE(LoggerRequestWords(Bytes{byte}).empty());
        EXPECT_FALSE(RadioRequestWords(Bytes{0xCC, byte}).empty());
    }
    EXPECT_EQ(LoggerRequestWords(Bytes{0x08}), "read memory");
    EXPECT_EQ(LoggerRequestWords(Bytes{0x07, 0xA7}), "write memory");
    EXPECT_EQ(LoggerRequestWords(Bytes{0x01}), "set clock");
    EXPECT_EQ(LoggerRequestWords({}), "unknown command");
}

// ----- the rows that are shown

class TraceRowsTest : public ExchangeWordsTest {
 protected:
    void Follow() {
        rows_.DropOutdated(rows_.Outdated());
        if (rows_.LastFails()) {
            rows_.DropLast();
        }
        rows_.Append(rows_.Fresh());
    }
    std::vector<std::uint64_t> Shown() const {
        std::vector<std::uint64_t> numbers;
        for (std::size_t row = 0; row < rows_.Count(); ++row) {
            numbers.push_back(rows_.Number(row));
        }
        return numbers;
    }
    void AddStatus(LinkFinding finding = LinkFinding::FrameRead) {
        Add(comm::EncodeFrame(Bytes{0x0C}), {0xFA}, finding);
    }

    using Numbers = std::vector<std::uint64_t>;
    TraceRows rows_{store_};
};

TEST_F(TraceRowsTest, FollowTheTraceStepByStep) {
    Follow();
    EXPECT_EQ(Shown(), Numbers());
    AddStatus();
    AddStatus();
    Follow();
    Follow();
    EXPECT_EQ(Shown(), (Numbers{1, 2}));
    AddStatus();
    Follow();
    EXPECT_EQ(Shown(), (Numbers{1, 2, 3}));
}

TEST_F(TraceRowsTest, AreOfTheWantedKindLoggerOrFaultsAlone) {
    AddStatus();
    Add({0xCC, 0x26}, {}, LinkFinding::RadioSilence, 5);
    AddStatus(LinkFinding::FrameCrc);
    rows_.SetFilter({.Kind = TraceKind::Radio});
    Follow();
    EXPECT_EQ(Shown(), (Numbers{2}));
    rows_.SetFilter({.FaultsOnly = true});
    Follow();
    EXPECT_EQ(Shown(), (Numbers{2, 3}));
    rows_.SetFilter({.Logger = TraceAddress{0x1A, {0x00, 0x02, 0x44}}});
    Follow();
    EXPECT_EQ(Shown(), (Numbers{1, 3}));
    rows_.SetFilter({.Logger = TraceAddress{0x1B, {0x00, 0x02, 0x44}}});
    Follow();
    EXPECT_EQ(Shown(), Numbers());
}

TEST_F(TraceRowsTest, AnEntryThatChangesItsMindComesAndGoes) {
    rows_.SetFilter({.FaultsOnly = true});
    AddStatus();
    Follow();
    EXPECT_EQ(Shown(), Numbers());
    store_.Newest().Finding = LinkFinding::FrameCrc;
    Follow();
    EXPECT_EQ(Shown(), (Numbers{1}));
    Follow();
    EXPECT_EQ(Shown(), (Numbers{1})) << "not twice";
    store_.Newest().Finding = LinkFinding::FrameRead;
    Follow();
    EXPECT_EQ(Shown(), Numbers());
}

TEST_F(TraceRowsTest, GoWithTheirEntries) {
    AddStatus();
    Follow();
    for (int i = 0; i < 250; ++i) {
        AddStatus();
    }
    EXPECT_EQ(rows_.Outdated(), 1U);
    Follow();
    EXPECT_EQ(rows_.Count(), 100U);
    EXPECT_EQ(rows_.Number(0), store_.First());
    EXPECT_EQ(rows_.Number(99), store_.End() - 1);
}

TEST_F(TraceRowsTest, SearchGoesRoundInBothDirectionsAndKnowsNoCase) {
    AddStatus();
    Add({0xCC, 0x26}, {});
    AddStatus(LinkFinding::FrameCrc);
    Add({0xCC, 0x02, 0x3C}, {});
    Follow();
    using Row = std::optional<std::size_t>;
    EXPECT_EQ(rows_.Find("READ SIGNAL", std::nullopt, true, names_), Row(1));
    EXPECT_EQ(rows_.Find("status", std::nullopt, true, names_), Row(0));
    EXPECT_EQ(rows_.Find("status", 0, true, names_), Row(2));
    EXPECT_EQ(rows_.Find("status", 2, true, names_), Row(0));
    EXPECT_EQ(rows_.Find("status", 0, false, names_), Row(2));
    EXPECT_EQ(rows_.Find("status", std::nullopt, false, names_), Row(2));
    EXPECT_EQ(rows_.Find("crc", 2, true, names_), Row(2)) << "the only one";
    EXPECT_EQ(rows_.Find("cc 02 3c", 0, true, names_), Row(3)) << "in the bytes";
    EXPECT_EQ(rows_.Find("no such thing", 0, true, names_), Row());
    EXPECT_EQ(rows_.Find("", 0, true, names_), Row());
}

TEST_F(TraceRowsTest, TextHasALineForEachRowWithItsBytesIfWanted) {
    Add({0xCC, 0x26}, {0xCC, 0x80, 0, 0}, LinkFinding::RadioAnswered);
    Follow();
    const std::string line = "2000-01-01 00:00:00.000  server radio: read signal -> signal 128\n";
    EXPECT_EQ(rows_.Text({0}, false, names_), line);
    EXPECT_EQ(rows_.Text({0}, true, names_), line + "    sent: CC 26\n    came: CC 80 00 00\n");
}

}  // namespace
