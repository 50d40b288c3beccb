#include "logger/commands.h"

#include <array>
#include <limits>
#include <optional>

#include "common/number_text.h"
#include "common/text.h"
#include "logger/bcd.h"
#include "logger/command_codes.h"
#include "logger/date_text.h"
#include "logger/image_bytes.h"
#include "logger/sample_frame.h"

namespace cmd {

namespace {

constexpr std::int16_t NoRetries = 0;
constexpr std::int16_t TwoRetries = 2;

// Bits of the hour byte of a clock that runs in 12-hour form.
constexpr std::uint8_t TwelveHourBit = 0x40;
constexpr std::uint8_t PmBit = 0x20;
constexpr std::uint8_t TwelveHourMask = 0x1F;
constexpr std::uint8_t TwelveBcd = 0x12;

template <std::size_t Size>
bool Send(FrameExchange& exchange, const std::array<std::uint8_t, Size>& payload,
          std::int16_t retries) {
    return exchange.SendFrame(payload, retries);
}

bool Ask(FrameExchange& exchange, std::uint8_t code, std::int16_t retries, Bytes& reply) {
    return Send(exchange, std::array{code}, retries) && exchange.ReceiveFrame(reply);
}

template <std::size_t Size>
bool Order(FrameExchange& exchange, const std::array<std::uint8_t, Size>& payload) {
    return Send(exchange, payload, TwoRetries) && exchange.ReadReplyByte() == StatusDone;
}

/// The hour byte as it is shown. 12-hour form adds a plain 18 for the afternoon, without BCD
/// correction: 08 PM reads "1:", as it always has.
std::uint8_t ShownHour(std::uint8_t hour) {
    if ((hour & TwelveHourBit) == 0) {
        return hour;
    }
    const auto low = static_cast<std::uint8_t>(hour & TwelveHourMask);
    if ((hour & PmBit) != 0) {
        return low == TwelveBcd ? low : static_cast<std::uint8_t>(low + 18);
    }
    return low == TwelveBcd ? 0 : low;
}

/// The hour byte as an hour of the day.
int HourOfDay(std::uint8_t hour) {
    constexpr int Noon = 12;
    if ((hour & TwelveHourBit) == 0) {
        return FromBcd(hour);
    }
    const int onDial = FromBcd(static_cast<std::uint8_t>(hour & TwelveHourMask)) % Noon;
    return (hour & PmBit) != 0 ? onDial + Noon : onDial;
}

/// Takes what stands before `mark` off the text, as a number from 0 to `largest`; nothing if
/// there is no mark or no such number.
std::optional<int> TakeNumber(std::string_view& text, char mark, int largest = 99) {
    const std::size_t at = text.find(mark);
    std::int32_t value = 0;
    if (at == std::string_view::npos || !TextToLong(text.substr(0, at), value) || value < 0 ||
        value > largest) {
        return std::nullopt;
    }
    text.remove_prefix(at + 1);
    return value;
}

std::optional<LocalTime> ParseClockText(std::string_view text) {
    constexpr int AnyYear = std::numeric_limits<int>::max();
    const bool pm = text.find("PM") != std::string_view::npos;
    const bool am = text.find("AM") != std::string_view::npos;
    const std::string closed = std::string(text) + " ";
    std::string_view rest = closed;
    const auto month = TakeNumber(rest, '/');
    const auto day = month ? TakeNumber(rest, '/') : std::nullopt;
    const auto year = day ? TakeNumber(rest, ' ', AnyYear) : std::nullopt;
    const auto hour = year ? TakeNumber(rest, ':') : std::nullopt;
    const auto minute = hour ? TakeNumber(rest, ':') : std::nullopt;
    const auto second = minute ? TakeNumber(rest, ' ') : std::nullopt;
    if (!second) {
        return std::nullopt;
    }
    LocalTime time{*year % 100, *month, *day, *hour, *minute, *second};
    if (pm && time.Hour != 12) {
        time.Hour += 12;
    } else if (!pm && am && time.Hour == 12) {
        time.Hour = 0;
    }
    return time;
}

}  // namespace

bool GetLoggerTime(FrameExchange& exchange, const SystemClock& clock, LoggerRecord& record) {
    record.LoggerTime = "00/00/00 00:00:00";
    Bytes reply(TimeReplySize);
    if (!Ask(exchange, GetTimeCode, NoRetries, reply)) {
        return false;
    }
    // second, minute, hour, weekday, day, month, year
    record.LoggerTime =
        ShortDateText(clock, 2000 + FromBcd(reply[6]), FromBcd(reply[5]), FromBcd(reply[4])) + " " +
        BcdToText(ShownHour(reply[2])) + ":" + BcdToText(reply[1]) + ":" + BcdToText(reply[0]);
    return true;
}

std::optional<LocalTime> ReadLoggerClock(FrameExchange& exchange) {
    Bytes reply(TimeReplySize);
    if (!Ask(exchange, GetTimeCode, NoRetries, reply)) {
        return std::nullopt;
    }
    return LocalTime{.Year = 2000 + FromBcd(reply[6]),
                     .Month = FromBcd(reply[5]),
                     .Day = FromBcd(reply[4]),
                     .Hour = HourOfDay(reply[2]),
                     .Minute = FromBcd(reply[1]),
                     .Second = FromBcd(reply[0])};
}

bool SetLoggerTime(FrameExchange& exchange, std::string_view text) {
    constexpr std::uint8_t Weekday = 1;
    const std::optional<LocalTime> time = ParseClockText(text);
    if (!time) {
        return false;
    }
    return Order(exchange,
                 std::array<std::uint8_t, 8>{SetTimeCode, ToBcd(time->Second), ToBcd(time->Minute),
                                             ToBcd(time->Hour), Weekday, ToBcd(time->Day),
                                             ToBcd(time->Month), ToBcd(time->Year)});
}

bool GetLoggerStatus(FrameExchange& exchange, LoggerRecord& record) {
    Bytes reply(StatusReplySize);
    if (!Ask(exchange, GetStatusCode, TwoRetries, reply)) {
        return false;
    }
    record.NumSamples = static_cast<std::uint32_t>(reply[0] | reply[1] << 8 | reply[2] << 16);
    record.StatusWord = static_cast<std::uint32_t>(config::GetU16(reply, 3));
    record.LoggingState = LoggingStateText(record.StatusWord);
    return true;
}

bool GetLoggerVersion(FrameExchange& exchange, LoggerRecord& record) {
    Bytes reply(VersionReplySize);
    if (!Ask(exchange, GetVersionCode, TwoRetries, reply)) {
        return false;
    }
    record.FirmwareVersion = reply[0];
    if (reply[1] < 1 || reply[1] > AnalogChannels || reply[2] > PulseChannels) {
        return false;
    }
    record.NumAnalogChannels = reply[1];
    record.NumDigitalChannels = reply[2];
    record.SODAvailable = ToFlag(reply[3] != 0);
    return true;
}

bool ClearLoggerHistory(FrameExchange& exchange) {
    return Order(exchange, Guarded(ClearHistoryCode));
}

bool RestartSampling(FrameExchange& exchange) {
    return Order(exchange, Guarded(RestartSamplingCode));
}

bool ResetPulseAccumulators(FrameExchange& exchange) {
    constexpr std::uint8_t AllCounts = 0x03;
    return Order(exchange, std::array{ResetPulsesCode, AllCounts});
}

void RequestSample(FrameExchange& exchange, std::uint8_t way) {
    static_cast<void>(Send(exchange, std::array{RequestSampleCode, way}, NoRetries));
    static_cast<void>(exchange.ReadReplyByte());
}

SampleResult ReadSample(FrameExchange& exchange, const LoggerRecord& counts,
                        const SystemClock& clock, DataPoint& point) {
    if (!Send(exchange, std::array{ReadSampleCode}, NoRetries)) {
        return SampleResult::NotSent;
    }
    const std::int16_t status = exchange.ReadReplyByte();
    if (status == StatusNoSample) {
        point.MarkNoSample();
        return SampleResult::None;
    }
    Bytes frame(SampleFrameSize);
    if (status != StatusSampleFollows || !exchange.ReceiveFrame(frame)) {
        return SampleResult::Failed;
    }
    CompactSampleFrame(frame, counts.NumAnalogChannels, counts.NumDigitalChannels);
    DecodeRecord(frame, 0, AllChannels, clock, point);
    return SampleResult::Read;
}

std::string LoggingStateText(std::uint32_t statusWord) {
    if ((statusWord & 0x0080) == 0) {
        return "Not Logging";
    }
    if ((statusWord & 0x0800) != 0) {
        return "Waiting for Alarm 1";
    }
    if ((statusWord & 0x2000) != 0) {
        return "Stopped by Alarm 2";
    }
    if ((statusWord & 0x1000) != 0) {
        return "Logging Until Alarm 2";
    }
    return "Logging";
}

}  // namespace cmd
