#include <algorithm>
#include <string>
#include <utility>

#include "simulator/frame.h"
#include "simulator/logger.h"

// The commands of a logger, by their codes. A request reaches this file as the payload of a good
// frame, with at least one byte in it.

namespace simulator {

namespace {

enum Command : std::uint8_t {
    ReadClockCode = 0x00,
    SetClockCode = 0x01,
    ClearHistoryCode = 0x04,
    WriteMemoryCode = 0x07,
    ReadMemoryCode = 0x08,
    RequestSampleCode = 0x09,
    ReadSampleCode = 0x0A,
    RestartSamplingCode = 0x0B,
    ReadStatusCode = 0x0C,
    ReadHistoryCode = 0x0D,
    ResetPulsesCode = 0x0E,
    ReadVersionCode = 0x0F,
};

enum HistoryBlock : std::uint8_t { FirstBlock = 0, NextBlockAfter = 1, LastBlockAgain = 2 };

constexpr std::size_t EchoSize = 3;
constexpr std::size_t WriteHeaderSize = 7;

Answer Acknowledged() {
    return {{Acknowledge}, {}, std::nullopt};
}

Answer Done() {
    return {{Acknowledge}, {CarriedOut}, std::nullopt};
}

Answer Framed(Bytes payload) {
    return {{Acknowledge}, {}, std::move(payload)};
}

}  // namespace

std::optional<Answer> Logger::Carry(Request request, Microseconds now) {
    if (const auto fixed = fixed_.find(request.front()); fixed != fixed_.end()) {
        return fixed->second;
    }
    return Dispatch(request, now);
}

Logger::Reply Logger::Dispatch(Request request, Microseconds now) {
    switch (request.front()) {
        case ReadClockCode:
            return ReadClock(request, now);
        case SetClockCode:
            return SetClock(request, now);
        case ClearHistoryCode:
            return ClearHistory(request, now);
        case WriteMemoryCode:
            return WriteMemory(request);
        case ReadMemoryCode:
            return ReadMemory(request);
        case RequestSampleCode:
            return RequestSample(request, now);
        case ReadSampleCode:
            return ReadSample(request, now);
        case RestartSamplingCode:
            return RestartSampling(request, now);
        case ReadStatusCode:
            return ReadStatus(request, now);
        case ReadHistoryCode:
            return ReadHistory(request, now);
        case ResetPulsesCode:
            return ResetPulses(request, now);
        case ReadVersionCode:
            return ReadVersion(request);
        default:
            return Refuse(request.front(), "unknown command");
    }
}

Logger::Reply Logger::Refuse(std::uint8_t command, const std::string& why) {
    constexpr std::size_t most = 1000;
    if (refused_.size() < most) {
        refused_.push_back(HexText({&command, 1}) + ": " + why);
    }
    return std::nullopt;
}

bool Logger::IsPlain(Request request) {
    if (request.size() != 1) {
        Refuse(request.front(), "length");
        return false;
    }
    return true;
}

/// The guard bytes keep a stray frame from doing harm.
bool Logger::HasGuards(Request request, std::uint8_t first, std::uint8_t second) {
    const bool guarded = request.size() >= 3 && request[1] == first && request[2] == second;
    const bool carriesData = request.front() == WriteMemoryCode;
    if (!guarded || (request.size() > 3 && !carriesData)) {
        Refuse(request.front(), guarded ? "length" : "guard bytes");
        return false;
    }
    return true;
}

Logger::Reply Logger::ReadClock(Request request, Microseconds now) {
    if (!IsPlain(request)) {
        return std::nullopt;
    }
    const CivilSeconds clock = ClockAt(now);
    const CivilTime time = FromSeconds(clock);
    return Framed({Bcd(time.Second), Bcd(time.Minute), HourByte(time.Hour, setup_.Clock),
                   Bcd(Weekday(clock)), Bcd(time.Day), Bcd(time.Month), Bcd(time.Year % 100)});
}

Logger::Reply Logger::SetClock(Request request, Microseconds now) {
    if (request.size() != 8) {
        return Refuse(request.front(), "length");
    }
    const auto field = [&](std::size_t i) { return FromBcdByte(request[i]).value_or(-1); };
    const int year = field(7);
    const CivilTime time = {
        year < 0 ? -1 : 2000 + year, field(6), field(5), field(3), field(2), field(1)};
    if (field(4) != 1 || !IsCivilTime(time)) {
        return Refuse(request.front(), "not a time");
    }
    const CivilSeconds before = ClockAt(now);
    clock_ = ToSeconds(time);
    clockSet_ = now;
    if (logging_) {
        // What was logged keeps its stamps; the records to come follow the new clock.
        history_.End(before);
        BeginRun(now, logFrom_ > before ? logFrom_ : 0, logUntil_);
    }
    return Done();
}

Logger::Reply Logger::ClearHistory(Request request, Microseconds now) {
    if (!HasGuards(request, 0xA4, 0x4A)) {
        return std::nullopt;
    }
    history_.Clear();
    nextRecord_ = 0;
    lastBlock_.clear();
    if (logging_) {
        BeginRun(now, logFrom_, logUntil_);
    }
    return Done();
}

Logger::Reply Logger::WriteMemory(Request request) {
    if (!HasGuards(request, 0xA7, 0x7A)) {
        return std::nullopt;
    }
    if (request.size() <= WriteHeaderSize) {
        return Refuse(request.front(), "length");
    }
    const std::size_t first = GetU16(request, 3);
    const std::size_t last = GetU16(request, 5);
    const Request data = request.subspan(WriteHeaderSize);
    if (last < first || last - first + 1 != data.size()) {
        return Refuse(request.front(), "addresses");
    }
    for (std::size_t i = 0; i < data.size(); ++i) {
        if (!stubborn_.contains(first + i)) {
            memory_[first + i] = data[i];
        }
    }
    return Acknowledged();
}

Logger::Reply Logger::ReadMemory(Request request) {
    if (request.size() != 5) {
        return Refuse(request.front(), "length");
    }
    const std::size_t count = request[4];
    if (count + EchoSize > LargestPayload) {
        return Refuse(request.front(), "count");
    }
    const std::size_t address = GetU16(request, 1) + (std::size_t{request[3]} << 16);
    Bytes reply(request.begin() + 1, request.begin() + 1 + EchoSize);
    for (std::size_t i = address; i < address + count; ++i) {
        reply.push_back(i < memory_.size() ? memory_[i] : 0xFF);
    }
    return Framed(std::move(reply));
}

Logger::Reply Logger::RequestSample(Request request, Microseconds now) {
    if (request.size() != 2 || request[1] > 1) {
        return Refuse(request.front(), "parameter");
    }
    sampleTaken_ = now + setup_.SampleDelay;
    return Done();
}

Logger::Reply Logger::ReadSample(Request request, Microseconds now) {
    if (!IsPlain(request)) {
        return std::nullopt;
    }
    const auto taken = SampleMoment(now);
    if (!taken) {
        return Answer{{Acknowledge}, {NoSample}, std::nullopt};
    }
    return Answer{{Acknowledge}, {Acknowledge}, SampleFrame(*taken)};
}

Logger::Reply Logger::RestartSampling(Request request, Microseconds now) {
    if (!HasGuards(request, 0xAB, 0xBA)) {
        return std::nullopt;
    }
    const CivilSeconds clock = ClockAt(now);
    const CivilSeconds from = NextAlarm(0, clock).value_or(0);
    logging_ = true;
    sampleTaken_.reset();
    BeginRun(now, from, NextAlarm(1, std::max(clock, from)));
    return Done();
}

Logger::Reply Logger::ReadStatus(Request request, Microseconds now) {
    if (!IsPlain(request)) {
        return std::nullopt;
    }
    Bytes reply(5);
    PutU24(reply, 0, setup_.ReportedSamples.value_or(RecordsAt(now)));
    PutU16(reply, 3, StatusWordAt(now));
    return Framed(std::move(reply));
}

Logger::Reply Logger::ReadHistory(Request request, Microseconds now) {
    if (request.size() != 2 || request[1] > LastBlockAgain) {
        return Refuse(request.front(), "parameter");
    }
    if (request[1] == FirstBlock) {
        nextRecord_ = 0;
    }
    // A logger that has sent no block yet has none to repeat, and sends the first.
    if (request[1] != LastBlockAgain || lastBlock_.empty()) {
        lastBlock_ = NextBlock(now);
    }
    return Framed(lastBlock_);
}

Logger::Reply Logger::ResetPulses(Request request, Microseconds now) {
    if (request.size() != 2 || request[1] != 0x03) {
        return Refuse(request.front(), "guard bytes");
    }
    pulseResets_.push_back(TrueTime(now));
    return Done();
}

Logger::Reply Logger::ReadVersion(Request request) {
    if (!IsPlain(request)) {
        return std::nullopt;
    }
    return Framed({setup_.FirmwareVersion, static_cast<std::uint8_t>(AnalogChannels()),
                   static_cast<std::uint8_t>(PulseChannels()),
                   static_cast<std::uint8_t>(setup_.SodAvailable ? 1 : 0), 0, 0, 0, 0});
}

}  // namespace simulator
