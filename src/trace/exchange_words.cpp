#include "trace/exchange_words.h"

#include <algorithm>
#include <string_view>

#include "common/number_text.h"
#include "common/text.h"
#include "link/frame_codec.h"
#include "logger/command_codes.h"
#include "platform/moments.h"
#include "trace/link_recorder.h"
#include "trace/request_words.h"

namespace {

constexpr std::uint8_t HistoryCode = 0x0D;

/// What the request of an entry carries; empty if it is none to a logger.
Bytes PayloadOf(const TraceEntry& entry) {
    return entry.Record.Event == TraceEvent::Exchange && !IsRadioRequest(entry.Sent)
               ? PayloadIn(entry.Sent).value_or(Bytes{})
               : Bytes{};
}

std::string Plain(std::span<const std::uint8_t> bytes) {
    return {bytes.begin(), bytes.end()};
}

std::string SecondsOf(int ticks) {
    constexpr double TicksInASecond = 10;
    return FormatFixed(ticks / TicksInASecond, 1) + " s";
}

std::string Missing(const std::string& what, const TraceRecord& record) {
    return "no " + what + " within " + SecondsOf(record.Ticks);
}

std::string EchoFault(const TraceEntry& entry) {
    constexpr std::uint8_t ChannelCode = 0x02;
    const bool ofChannel = entry.Sent.size() > 1 && entry.Sent[1] == ChannelCode;
    return std::string("echo of the ") + (ofChannel ? "channel" : "address") + " differs";
}

/// The name of what the link found wrong; empty if nothing was.
std::string LinkFault(const TraceEntry& entry) {
    switch (entry.Record.Finding) {
        case LinkFinding::NoAcknowledge:
            return Missing("acknowledge", entry.Record);
        case LinkFinding::WrongAcknowledge:
            return "another byte in place of the acknowledge";
        case LinkFinding::NoStatus:
            return Missing("status", entry.Record);
        case LinkFinding::NoFrame:
        case LinkFinding::RadioSilence:
            return Missing("answer", entry.Record);
        case LinkFinding::NoFrameStart:
            return "no frame begins in what came";
        case LinkFinding::FrameSilence:
            return "silence of " + SecondsOf(entry.Record.Ticks) + " inside the frame";
        case LinkFinding::FrameLength:
            return "frame of another length than expected";
        case LinkFinding::FrameEscape:
            return "escape in the frame is wrong";
        case LinkFinding::FrameEnd:
            return "end of the frame is wrong";
        case LinkFinding::FrameCrc:
            return "CRC differs";
        case LinkFinding::RadioShort:
            return "answer is too short";
        case LinkFinding::RadioOther:
            return "another answer than expected";
        case LinkFinding::RadioEcho:
            return EchoFault(entry);
        case LinkFinding::BrokenOff:
            return "broken off by the end of the program";
        default:
            return {};
    }
}

/// What a good acknowledge is followed by.
LoggerAnswer AnswerOf(const TraceEntry& entry, const Bytes& payload) {
    const bool acknowledged = !entry.Taken.empty() && entry.Taken.front() == comm::Acknowledge;
    return acknowledged ? ReadAnswer(payload, entry.Taken.subspan(1)) : LoggerAnswer{};
}

std::string LoggerFault(const TraceEntry& entry, const LoggerAnswer& answer) {
    const std::string fault = LinkFault(entry);
    return fault.empty() ? answer.Fault : fault;
}

std::string CameFromLogger(const TraceEntry& entry, const LoggerAnswer& answer) {
    if (entry.Taken.empty()) {
        return {};
    }
    if (entry.Taken.front() != comm::Acknowledge) {
        return HexText(entry.Taken);
    }
    return "acknowledged" + (answer.Words.empty() ? "" : ", " + answer.Words);
}

/// The answer to a change to normal mode is thrown away unread; it is told all the same.
std::string CameFromRadio(const TraceEntry& entry) {
    if (IsFault(entry.Record.Finding)) {
        return HexText(entry.Taken);
    }
    return RadioAnswerWords(entry.Sent, entry.Taken);
}

std::string ThrownWords(const TraceEntry& entry) {
    const std::size_t count = entry.Thrown.size() + entry.Record.NotKept;
    if (count == 0) {
        return {};
    }
    return IntegerToText(static_cast<std::int64_t>(count)) +
           (count == 1 ? " byte thrown away" : " bytes thrown away");
}

void AddPart(std::string& text, const std::string& part) {
    text += (text.empty() || part.empty() ? "" : ", ") + part;
}

std::string DirectionOf(const TraceEntry& entry) {
    const bool out = !entry.Sent.empty();
    const bool in = !entry.Taken.empty() || !entry.Thrown.empty();
    return out && in ? "out, in" : out ? "out" : "in";
}

void TellPort(const TraceEntry& entry, ExchangeWords& words) {
    words.Who = "port";
    switch (entry.Record.Event) {
        case TraceEvent::PortOpened:
            words.Asked = "open " + Plain(entry.Sent);
            words.Came = "opened";
            return;
        case TraceEvent::PortRefused:
            words.Asked = "open " + Plain(entry.Sent);
            words.Came = Plain(entry.Taken);
            words.Fault = "cannot be opened";
            return;
        case TraceEvent::PortClosed:
            words.Asked = "close " + Plain(entry.Sent);
            words.Came = "closed";
            return;
        default:
            words.Came = Plain(entry.Sent);
            words.Fault = "the device is gone";
    }
}

void TellExchange(const TraceEntry& entry, const LoggerNames& names, ExchangeWords& words) {
    if (IsRadioRequest(entry.Sent)) {
        words.Who = "server radio";
        words.Asked = RadioRequestWords(entry.Sent);
        words.Came = CameFromRadio(entry);
        words.Fault = LinkFault(entry);
    } else {
        const Bytes payload = PayloadOf(entry);
        const LoggerAnswer answer = AnswerOf(entry, payload);
        words.Who = LoggerText(entry.Record.Address(), names);
        words.Asked = LoggerRequestWords(payload);
        words.Came = CameFromLogger(entry, answer);
        words.Fault = LoggerFault(entry, answer);
    }
    if (entry.Record.AnswerAfter >= 0) {
        words.After = IntegerToText(entry.Record.AnswerAfter) + " ms";
    }
    if (entry.Record.Tries > 1) {
        words.Try = IntegerToText(entry.Record.Try) + " of " + IntegerToText(entry.Record.Tries);
    }
}

void AddHex(std::string& text, const TraceEntry& entry) {
    constexpr std::string_view Indent = "    ";
    const std::string hex = HexOf(entry);
    std::string_view rest = hex;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        text += Indent;
        text += rest.substr(0, end);
        text += '\n';
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
}

}  // namespace

TraceKind KindOf(const TraceEntry& entry) {
    if (entry.Record.Event != TraceEvent::Exchange) {
        return entry.Record.Event == TraceEvent::Unasked ? TraceKind::Unasked : TraceKind::Port;
    }
    if (IsRadioRequest(entry.Sent)) {
        return TraceKind::Radio;
    }
    const Bytes payload = PayloadOf(entry);
    switch (payload.empty() ? 0xFF : payload.front()) {
        case cmd::GetTimeCode:
        case cmd::SetTimeCode:
            return TraceKind::Clock;
        case cmd::ReadMemoryCode:
        case cmd::WriteMemoryCode:
            return TraceKind::Memory;
        case cmd::RequestSampleCode:
        case cmd::ReadSampleCode:
            return TraceKind::Sample;
        case cmd::GetStatusCode:
        case cmd::GetVersionCode:
            return TraceKind::Status;
        case HistoryCode:
            return TraceKind::History;
        case cmd::ClearHistoryCode:
        case cmd::RestartSamplingCode:
        case cmd::ResetPulsesCode:
            return TraceKind::Order;
        default:
            return TraceKind::Other;
    }
}

bool IsOfLogger(const TraceEntry& entry) {
    return entry.Record.Event == TraceEvent::Exchange && !IsRadioRequest(entry.Sent);
}

bool IsFaulty(const TraceEntry& entry) {
    switch (entry.Record.Event) {
        case TraceEvent::PortRefused:
        case TraceEvent::PortLost:
            return true;
        case TraceEvent::Exchange:
            return IsFault(entry.Record.Finding) ||
                   (IsOfLogger(entry) && !AnswerOf(entry, PayloadOf(entry)).Fault.empty());
        default:
            return false;
    }
}

std::string TraceTimeText(std::int64_t milliseconds) {
    const LocalTime time = FromMilliseconds(milliseconds);
    const std::string fraction = IntegerToText(1000 + time.Millisecond).substr(1);
    return IntegerToText(time.Year) + "-" + TwoDigits(time.Month) + "-" + TwoDigits(time.Day) +
           " " + TwoDigits(time.Hour) + ":" + TwoDigits(time.Minute) + ":" +
           TwoDigits(time.Second) + "." + fraction;
}

ExchangeWords InWords(const TraceEntry& entry, const LoggerNames& names) {
    ExchangeWords words;
    words.Time = TraceTimeText(entry.Record.Time);
    switch (entry.Record.Event) {
        case TraceEvent::Exchange:
            words.Direction = DirectionOf(entry);
            TellExchange(entry, names, words);
            AddPart(words.Came, ThrownWords(entry));
            break;
        case TraceEvent::Unasked:
            words.Direction = DirectionOf(entry);
            words.Who = "line";
            words.Came = HexText(entry.Taken);
            AddPart(words.Came, ThrownWords(entry));
            break;
        default:
            TellPort(entry, words);
    }
    return words;
}

LoggerNames NamesOf(const std::set<TraceAddress>& loggers, const AddressBook& book) {
    LoggerNames names;
    for (int number = 1; number <= book.Entries.UpperBound(); ++number) {
        const ClientRadio& entry = book.Entries[number];
        const TraceAddress address{entry.Channel, AddressOf(entry.Mac)};
        if (loggers.contains(address)) {
            names.emplace(address, entry.Name);
        }
    }
    return names;
}

std::string LoggerText(const TraceAddress& logger, const LoggerNames& names) {
    const std::string address =
        "channel " + HexText(logger.Channel) + ", MAC " + HexText(logger.Mac, '-');
    const auto name = names.find(logger);
    return name == names.end() ? address : name->second + " (" + address + ")";
}

std::string LineOf(const ExchangeWords& words) {
    std::string line = words.Time + "  " + words.Who + ": ";
    line += words.Asked;
    line += words.Direction == "in" ? "<- " : " -> ";
    line += words.Came.empty() ? "nothing" : words.Came;
    if (!words.After.empty()) {
        line += " after " + words.After;
    }
    if (!words.Try.empty()) {
        line += "  [try " + words.Try + "]";
    }
    if (!words.Fault.empty()) {
        line += "  ! " + words.Fault;
    }
    return line;
}

std::string HexOf(const TraceEntry& entry) {
    std::string text;
    const auto add = [&text](std::string_view what, std::span<const std::uint8_t> bytes) {
        if (!bytes.empty()) {
            text += (text.empty() ? "" : "\n") + std::string(what) + HexText(bytes);
        }
    };
    add("sent: ", entry.Sent);
    add("came: ", entry.Taken);
    add("thrown away: ", entry.Thrown);
    if (entry.Record.NotKept > 0) {
        text += "\n" + IntegerToText(entry.Record.NotKept) + " bytes more were not kept";
    }
    return text;
}

std::string SavedText(const TraceEntry& entry, const ExchangeWords& words, bool hex) {
    std::string text = LineOf(words) + "\n";
    if (hex) {
        AddHex(text, entry);
    }
    return text;
}
