#include "trace/request_words.h"

#include <algorithm>

#include "common/number_text.h"
#include "common/text.h"
#include "link/frame_codec.h"
#include "logger/bcd.h"
#include "logger/command_codes.h"
#include "logger/commands.h"

namespace {

using Span = std::span<const std::uint8_t>;

constexpr std::uint8_t CommandMark = 0xCC;
constexpr std::uint8_t ChannelCode = 0x02;
constexpr std::uint8_t AddressCode = 0x10;
constexpr std::uint8_t SignalCode = 0x26;
constexpr std::uint8_t SystemIdCode = 0xC0;
constexpr std::uint8_t HistoryCode = 0x0D;
constexpr std::size_t WriteHead = 7;  ///< code, guard and both ends, before the memory's bytes

std::uint8_t At(Span bytes, std::size_t index) {
    return index < bytes.size() ? bytes[index] : std::uint8_t{0};
}

int U16(Span bytes, std::size_t index) {
    return At(bytes, index) | At(bytes, index + 1) << 8;
}

int U24(Span bytes, std::size_t index) {
    return U16(bytes, index) | At(bytes, index + 2) << 16;
}

std::string CountOf(std::size_t count, const std::string& what) {
    return IntegerToText(static_cast<std::int64_t>(count)) + " " + what + (count == 1 ? "" : "s");
}

/// A clock of seven bytes in BCD: second, minute, hour, weekday, day, month, year.
std::string ClockText(Span clock) {
    constexpr std::uint8_t TwelveHourBit = 0x40;
    constexpr std::uint8_t PmBit = 0x20;
    constexpr std::uint8_t TwelveHourMask = 0x1F;
    std::uint8_t hour = At(clock, 2);
    std::string half;
    if ((hour & TwelveHourBit) != 0) {
        half = (hour & PmBit) != 0 ? " PM" : " AM";
        hour &= TwelveHourMask;
    }
    return "20" + HexText(At(clock, 6)) + "-" + HexText(At(clock, 5)) + "-" +
           HexText(At(clock, 4)) + " " + HexText(hour) + ":" + HexText(At(clock, 1)) + ":" +
           HexText(At(clock, 0)) + half;
}

std::string HistoryRequestWords(Span payload) {
    switch (payload.size() == 2 ? payload[1] : 0xFF) {
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

std::string ReadWords(Span payload) {
    if (payload.size() != 5) {
        return "read memory";
    }
    return "read " + CountOf(payload[4], "byte") + " at " + IntegerToText(U24(payload, 1));
}

std::string WriteWords(Span payload) {
    if (payload.size() < WriteHead) {
        return "write memory";
    }
    return "write " + CountOf(payload.size() - WriteHead, "byte") + " at " +
           IntegerToText(U16(payload, 3));
}

std::string SetClockWords(Span payload) {
    return payload.size() == 1 + cmd::TimeReplySize
               ? "set clock to " + ClockText(payload.subspan(1))
               : "set clock";
}

std::string RequestSampleWords(Span payload) {
    return std::string("request sample") +
           (payload.size() == 2 && payload[1] == cmd::SampleLater ? " for the next pass" : "");
}

std::string StatusWords(Span reply) {
    const auto word = static_cast<std::uint32_t>(U16(reply, 3));
    return CountOf(static_cast<std::size_t>(U24(reply, 0)), "record") + ", " +
           cmd::LoggingStateText(word);
}

std::string VersionWords(Span reply) {
    return "firmware " + IntegerToText(At(reply, 0)) + ", " +
           CountOf(At(reply, 1), "analog channel") + ", " + CountOf(At(reply, 2), "pulse channel");
}

std::string SizeWords(Span reply) {
    return "frame of " + CountOf(reply.size(), "byte");
}

std::string FrameWords(std::uint8_t code, Span reply) {
    switch (code) {
        case cmd::GetTimeCode:
            return reply.size() == cmd::TimeReplySize ? "clock " + ClockText(reply)
                                                      : SizeWords(reply);
        case cmd::ReadMemoryCode:
            return CountOf(reply.size() - std::min<std::size_t>(reply.size(), 3), "byte") +
                   " from " + IntegerToText(U24(reply, 0));
        case cmd::ReadSampleCode:
            return "sample";
        case cmd::GetStatusCode:
            return reply.size() == cmd::StatusReplySize ? StatusWords(reply) : SizeWords(reply);
        case cmd::GetVersionCode:
            return reply.size() == cmd::VersionReplySize ? VersionWords(reply) : SizeWords(reply);
        case HistoryCode:
            return "block of " + CountOf(At(reply, 0), "record");
        default:
            return SizeWords(reply);
    }
}

/// Whether a single byte says that the command was carried out.
bool IsOrder(std::uint8_t code) {
    return code == cmd::SetTimeCode || code == cmd::ClearHistoryCode ||
           code == cmd::RestartSamplingCode || code == cmd::ResetPulsesCode;
}

bool SaysStatus(std::uint8_t code) {
    return IsOrder(code) || code == cmd::RequestSampleCode || code == cmd::ReadSampleCode;
}

LoggerAnswer ReadStatus(std::uint8_t code, std::uint8_t status) {
    if (IsOrder(code)) {
        return status == cmd::StatusDone
                   ? LoggerAnswer{"done", ""}
                   : LoggerAnswer{"status " + HexText(status), "status is not FC"};
    }
    if (code == cmd::ReadSampleCode && status == cmd::StatusNoSample) {
        return {"no sample", ""};
    }
    if (code == cmd::ReadSampleCode && status != cmd::StatusSampleFollows) {
        return {"status " + HexText(status), "status is neither FA nor FD"};
    }
    return code == cmd::ReadSampleCode ? LoggerAnswer{}
                                       : LoggerAnswer{"status " + HexText(status), ""};
}

void AddPart(std::string& text, const std::string& part) {
    text += (text.empty() || part.empty() ? "" : ", ") + part;
}

/// Whether the answer to a read of memory is about another place than was asked for.
bool EchoDiffers(Span payload, Span reply) {
    constexpr std::size_t Echo = cmd::MemoryEchoSize;
    return payload.front() == cmd::ReadMemoryCode && payload.size() > Echo &&
           (reply.size() < Echo ||
            !std::equal(reply.begin(), reply.begin() + Echo, payload.begin() + 1));
}

}  // namespace

std::string HexText(std::uint8_t byte) {
    constexpr char Digits[] = "0123456789ABCDEF";
    return {Digits[byte >> 4], Digits[byte & 0xF]};
}

std::string HexText(Span bytes, char mark) {
    std::string text;
    text.reserve(3 * bytes.size());
    for (const std::uint8_t byte : bytes) {
        if (!text.empty()) {
            text += mark;
        }
        text += HexText(byte);
    }
    return text;
}

std::optional<Bytes> PayloadIn(Span bytes) {
    constexpr std::size_t CrcSize = 2;
    const auto start = std::find(bytes.begin(), bytes.end(), comm::FrameStart);
    const Span frame = bytes.last(static_cast<std::size_t>(bytes.end() - start));
    if (frame.size() < 2 || frame[1] < CrcSize) {
        return std::nullopt;
    }
    Bytes payload(frame[1] - CrcSize);
    comm::FrameDecoder decoder(payload);
    auto progress = comm::FrameDecoder::Progress::More;
    for (std::size_t i = 1; i < frame.size() && progress == comm::FrameDecoder::Progress::More;
         ++i) {
        progress = decoder.Take(frame[i]);
    }
    return progress == comm::FrameDecoder::Progress::Good ? std::optional(std::move(payload))
                                                          : std::nullopt;
}

bool IsRadioRequest(Span bytes) {
    return !bytes.empty() && (bytes.front() == CommandMark || bytes.front() == 'A');
}

std::string RadioRequestWords(Span request) {
    if (At(request, 0) == 'A') {
        return "command mode on";
    }
    switch (At(request, 1)) {
        case ChannelCode:
            return "set channel " + HexText(At(request, 2));
        case AddressCode:
            return "set address " + HexText(request.subspan(2), '-');
        case SignalCode:
            return "read signal";
        case SystemIdCode:
            return "read system id";
        case 'A':
            return "command mode off";
        default:
            return "unknown command";
    }
}

std::string RadioAnswerWords(Span request, Span answer) {
    if (answer.empty()) {
        return {};
    }
    if (At(request, 0) == 'A') {
        return "command mode";
    }
    switch (At(request, 1)) {
        case ChannelCode:
            return "channel " + HexText(At(answer, 1));
        case AddressCode:
            return "address " +
                   HexText(answer.subspan(std::min<std::size_t>(1, answer.size())), '-');
        case SignalCode:
            return "signal " + IntegerToText(At(answer, 1));
        case SystemIdCode:
            return "system id " + IntegerToText(At(answer, 3));
        default:
            return "normal mode";
    }
}

std::string LoggerRequestWords(Span payload) {
    switch (payload.empty() ? 0xFF : payload.front()) {
        case cmd::GetTimeCode:
            return "read clock";
        case cmd::SetTimeCode:
            return SetClockWords(payload);
        case cmd::ClearHistoryCode:
            return "clear history";
        case cmd::WriteMemoryCode:
            return WriteWords(payload);
        case cmd::ReadMemoryCode:
            return ReadWords(payload);
        case cmd::RequestSampleCode:
            return RequestSampleWords(payload);
        case cmd::ReadSampleCode:
            return "read sample";
        case cmd::RestartSamplingCode:
            return "restart sampling";
        case cmd::GetStatusCode:
            return "read status";
        case HistoryCode:
            return HistoryRequestWords(payload);
        case cmd::ResetPulsesCode:
            return "reset pulses";
        case cmd::GetVersionCode:
            return "read version";
        default:
            return "unknown command";
    }
}

LoggerAnswer ReadAnswer(Span payload, Span bytes) {
    LoggerAnswer answer;
    if (payload.empty() || bytes.empty()) {
        return answer;
    }
    const std::uint8_t code = payload.front();
    if (SaysStatus(code)) {
        answer = ReadStatus(code, bytes.front());
        bytes = bytes.subspan(1);
    }
    if (bytes.empty()) {
        return answer;
    }
    const std::optional<Bytes> reply = PayloadIn(bytes);
    AddPart(answer.Words,
            reply ? FrameWords(code, *reply) : CountOf(bytes.size(), "byte") + " of no good frame");
    if (reply && answer.Fault.empty() && EchoDiffers(payload, *reply)) {
        answer.Fault = "echo of the memory address differs";
    }
    return answer;
}
