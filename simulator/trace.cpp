#include "simulator/trace.h"

#include "simulator/text.h"

namespace simulator {

namespace {

constexpr std::uint8_t SetChannelCode = 0x02;
constexpr std::uint8_t SetMacCode = 0x10;
constexpr std::uint8_t ReadSignalCode = 0x26;
constexpr std::uint8_t ReadSystemIdCode = 0xC0;

std::string Hex(std::uint8_t byte) {
    return HexText({&byte, 1});
}

std::string HexFrom(const Bytes& bytes, std::size_t from) {
    return HexText(std::span(bytes).subspan(std::min(from, bytes.size())));
}

std::string RadioRequest(const Bytes& command) {
    if (command.front() == 'A') {
        return "AT+++";
    }
    switch (command[1]) {
        case SetChannelCode:
            return "CC 02 channel " + HexFrom(command, 2);
        case SetMacCode:
            return "CC 10 address " + HexFrom(command, 2);
        case ReadSignalCode:
            return "CC 26 signal";
        case ReadSystemIdCode:
            return "CC C0 system id";
        default:
            return "CC ATO";
    }
}

/// What a radio's answer of the right form means.
std::string RadioReply(const Bytes& command, const Bytes& sent) {
    if (command.front() == 'A') {
        return "command mode";
    }
    switch (command[1]) {
        case SetChannelCode:
        case SetMacCode:
            return "taken";
        case ReadSignalCode:
            return "signal " + std::to_string(sent[1]);
        case ReadSystemIdCode:
            return "system id " + std::to_string(sent[3]);
        default:
            return "normal mode";
    }
}

std::string ReadText(const Bytes& request) {
    if (request.size() != 5) {
        return "read";
    }
    return "read " + std::to_string(request[4]) + " bytes at " +
           std::to_string(GetU16(request, 1) + request[3] * 0x10000);
}

std::string WriteText(const Bytes& request) {
    if (request.size() < 7) {
        return "write";
    }
    return "write " + std::to_string(request.size() - 7) + " bytes at " +
           std::to_string(GetU16(request, 3));
}

std::string HistoryText(const Bytes& request) {
    switch (request.size() == 2 ? request[1] : 0xFF) {
        case 0:
            return "history, first block";
        case 1:
            return "history, next block";
        case 2:
            return "history, last block again";
        default:
            return "history";
    }
}

std::string CommandText(const Bytes& request) {
    switch (request.front()) {
        case 0x00:
            return "read clock";
        case 0x01:
            return "set clock " + HexFrom(request, 1);
        case 0x04:
            return "clear history";
        case 0x07:
            return WriteText(request);
        case 0x08:
            return ReadText(request);
        case 0x09:
            return "request sample";
        case 0x0A:
            return "read sample";
        case 0x0B:
            return "restart sampling";
        case 0x0C:
            return "status";
        case 0x0D:
            return HistoryText(request);
        case 0x0E:
            return "reset pulses";
        case 0x0F:
            return "version";
        default:
            return "unknown command";
    }
}

/// A frame of an answer; those that are short enough to be read with their bytes.
std::string FrameText(std::uint8_t command, const Bytes& payload) {
    constexpr std::size_t shortest = 24;
    std::string text = "frame of " + std::to_string(payload.size());
    if (command == 0x0D && !payload.empty()) {
        text += " with " + std::to_string(payload.front()) + " records";
    } else if (payload.size() <= shortest) {
        text += ": " + HexText(payload);
    }
    return text;
}

void AddPart(std::string& text, const std::string& part) {
    text += (text.empty() ? "" : ", ") + part;
}

std::string LoggerReply(std::uint8_t command, const Bytes& sent) {
    std::string text;
    FrameReader reader;
    for (const std::uint8_t byte : sent) {
        const bool outside = !reader.InsideFrame();
        const FrameReader::Outcome outcome = reader.Take(byte);
        if (outcome == FrameReader::Outcome::Good) {
            AddPart(text, FrameText(command, reader.Payload()));
        } else if (outcome == FrameReader::Outcome::Bad) {
            AddPart(text, "bad frame");
        } else if (outside && !reader.InsideFrame()) {
            AddPart(text, Hex(byte));
        }
    }
    if (reader.InsideFrame()) {
        AddPart(text, "part of a frame");
    }
    return text;
}

std::string TimeText(Microseconds time) {
    constexpr std::size_t width = 13;
    const std::string fraction = std::to_string(time % Second + Second).substr(1);
    const std::string text = std::to_string(time / Second) + "." + fraction;
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

}  // namespace

std::string RequestText(const Exchange& exchange) {
    if (exchange.OfRadio) {
        return RadioRequest(exchange.Request);
    }
    return Hex(exchange.Request.front()) + " " + CommandText(exchange.Request);
}

std::string ReplyText(const Exchange& exchange) {
    if (exchange.Sent.empty()) {
        return "nothing";
    }
    if (!exchange.OfRadio) {
        return LoggerReply(exchange.Request.front(), exchange.Sent);
    }
    const bool whole = exchange.Fault == FaultKind::None;
    return whole ? RadioReply(exchange.Request, exchange.Sent) : HexText(exchange.Sent);
}

std::string TraceLine(const Exchange& exchange) {
    const std::string who = exchange.OfRadio ? "radio" : exchange.LoggerName;
    std::string line = TimeText(exchange.Time) + "  " + who + ": " + RequestText(exchange) +
                       " -> " + ReplyText(exchange);
    if (exchange.Fault != FaultKind::None) {
        line += "  (" + std::string(NameOf(exchange.Fault)) + ")";
    }
    return line;
}

}  // namespace simulator
