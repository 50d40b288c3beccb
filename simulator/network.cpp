#include "simulator/network.h"

#include <algorithm>
#include <utility>

namespace simulator {

namespace {

/// A logger that has half a frame forgets it when nothing more comes for so long.
constexpr Microseconds FramePause = 100 * Millisecond;

std::optional<Microseconds> Earlier(std::optional<Microseconds> a, std::optional<Microseconds> b) {
    if (a && b) {
        return std::min(*a, *b);
    }
    return a ? a : b;
}

/// The byte by which a script of faults knows a command of the radio.
std::uint8_t CodeOf(const Bytes& command) {
    constexpr std::uint8_t commandStart = 0xCC;
    return command.front() == commandStart ? command[1] : command.front();
}

}  // namespace

Network::Network(CivilSeconds start) : start_(start) {}

CivilSeconds Network::DefaultStart() {
    return ToSeconds({2024, 3, 5, 8, 0, 0});
}

void Network::Write(Microseconds now, std::span<const std::uint8_t> bytes) {
    Advance(now);
    fromConsole_.Send(now_, bytes, LineBaud);
    counters_.BytesWritten += static_cast<std::int64_t>(bytes.size());
    if (KeepsRecord) {
        written_.insert(written_.end(), bytes.begin(), bytes.end());
    }
}

std::optional<Microseconds> Network::NextInside() const {
    std::optional<Microseconds> next = fromConsole_.NextDue();
    if (!air_.empty()) {
        next = Earlier(next, air_.front().Due);
    }
    if (!outgoing_.empty()) {
        next = Earlier(next, outgoing_.begin()->first);
    }
    return next;
}

std::optional<Microseconds> Network::NextEvent() const {
    return Earlier(NextInside(), toConsole_.NextDue());
}

Bytes Network::Read(Microseconds now) {
    Advance(now);
    Bytes bytes;
    for (auto due = toConsole_.NextDue(); due && *due <= now_; due = toConsole_.NextDue()) {
        bytes.push_back(toConsole_.Take().Byte);
    }
    counters_.BytesToConsole += static_cast<std::int64_t>(bytes.size());
    return bytes;
}

void Network::Babble(Microseconds now, std::span<const std::uint8_t> bytes) {
    Advance(now);
    toConsole_.Send(now_, bytes, LineBaud);
}

Logger& Network::AddLogger(LoggerSetup setup) {
    loggers_.push_back(std::make_unique<Logger>(std::move(setup), start_));
    return *loggers_.back();
}

Logger* Network::FindLogger(std::uint8_t channel, const Mac3& mac) {
    for (const auto& logger : loggers_) {
        if (logger->Channel() == channel && logger->Mac() == mac) {
            return logger.get();
        }
    }
    return nullptr;
}

Logger* Network::FindLogger(const std::string& name) {
    for (const auto& logger : loggers_) {
        if (logger->Name() == name) {
            return logger.get();
        }
    }
    return nullptr;
}

std::vector<Bytes> Network::RequestsTo(const Logger& logger) const {
    std::vector<Bytes> requests;
    for (const Exchange& exchange : record_) {
        if (!exchange.OfRadio && exchange.LoggerName == logger.Name()) {
            requests.push_back(exchange.Request);
        }
    }
    return requests;
}

std::vector<Bytes> Network::RadioCommands() const {
    std::vector<Bytes> commands;
    for (const Exchange& exchange : record_) {
        if (exchange.OfRadio) {
            commands.push_back(exchange.Request);
        }
    }
    return commands;
}

void Network::ClearRecord() {
    written_.clear();
    record_.clear();
}

void Network::Advance(Microseconds now) {
    now = std::max(now, now_);
    for (auto due = NextInside(); due && *due <= now; due = NextInside()) {
        Step(*due);
    }
    now_ = now;
}

/// Does the one thing that is due first; of several at one moment, what is nearest to the console.
void Network::Step(Microseconds due) {
    now_ = std::max(now_, due);
    if (!outgoing_.empty() && outgoing_.begin()->first <= due) {
        const auto node = outgoing_.extract(outgoing_.begin());
        Depart(due, node.mapped());
    } else if (!air_.empty() && air_.front().Due <= due) {
        const AirByte byte = air_.front();
        air_.pop_front();
        ReachLogger(byte);
    } else {
        ReachRadio(fromConsole_.Take());
    }
}

void Network::ReachRadio(const Line::Arrival& arrival) {
    if (radio_.IsSilent()) {
        return;
    }
    const ServerRadio::Intake intake = radio_.Take(arrival.Byte, arrival.Due);
    Transmit(intake.Through, arrival.Due);
    if (!intake.Command.empty()) {
        Command(intake.Command, arrival.Due);
    }
}

void Network::Command(const Bytes& command, Microseconds now) {
    ++counters_.RadioCommands;
    const LineFault fault = radioFaults_.Take(CodeOf(command));
    Answer answer;
    if (fault.Kind == FaultKind::Silent) {
        radio_.Silence();
    } else if (fault.Kind != FaultKind::LoseRequest) {
        answer.Status = radio_.Carry(command);
    }
    const std::vector<Sending> sendings = Suffer(fault, answer);
    for (const Sending& sending : sendings) {
        outgoing_.emplace(now + RadioDelay + sending.Delay, Outgoing{nullptr, sending.Data});
    }
    Note({now, true, {}, command, {}, fault.Kind}, sendings);
}

void Network::Transmit(const Bytes& bytes, Microseconds now) {
    for (const std::uint8_t byte : bytes) {
        air_.push_back({now + AirDelay, radio_.Channel(), radio_.Mac(), byte});
    }
}

void Network::ReachLogger(const AirByte& byte) {
    Logger* logger = FindLogger(byte.Channel, byte.Mac);
    if (logger == nullptr || logger->IsSilent()) {
        ++counters_.Unheard;
        return;
    }
    Ear& ear = ears_[logger];
    if (ear.Reader.InsideFrame() && byte.Due - ear.LastByte > FramePause) {
        ear.Reader.Reset();
        ++counters_.BadFrames;
    }
    ear.LastByte = byte.Due;
    const FrameReader::Outcome outcome = ear.Reader.Take(byte.Byte);
    if (outcome == FrameReader::Outcome::Good) {
        Request(*logger, ear.Reader.Payload(), byte.Due);
    } else if (outcome == FrameReader::Outcome::Bad) {
        ++counters_.BadFrames;
    }
}

void Network::Request(Logger& logger, const Bytes& payload, Microseconds now) {
    ++counters_.Requests;
    const LineFault fault = loggerFaults_.Take(payload.front());
    std::vector<Sending> sendings;
    if (fault.Kind == FaultKind::Silent) {
        logger.Silence();
    } else if (fault.Kind != FaultKind::LoseRequest) {
        if (const auto answer = logger.Carry(payload, now)) {
            sendings = Suffer(fault, *answer);
        } else {
            ++counters_.Unanswered;
        }
    }
    for (const Sending& sending : sendings) {
        outgoing_.emplace(now + LoggerDelay + AirDelay + sending.Delay,
                          Outgoing{&logger, sending.Data});
    }
    Note({now, false, logger.Name(), payload, {}, fault.Kind}, sendings);
}

/// The radio hears a logger only in normal mode and on the logger's channel.
void Network::Depart(Microseconds now, const Outgoing& outgoing) {
    if (outgoing.From != nullptr) {
        if (radio_.IsSilent() || radio_.InCommandMode() ||
            radio_.Channel() != outgoing.From->Channel()) {
            counters_.Drowned += static_cast<std::int64_t>(outgoing.Data.size());
            return;
        }
        radio_.Hear(outgoing.From->SignalAt(now));
    }
    toConsole_.Send(now, outgoing.Data, LineBaud);
}

void Network::Note(Exchange exchange, const std::vector<Sending>& sendings) {
    if (!KeepsRecord && !trace_) {
        return;
    }
    for (const Sending& sending : sendings) {
        exchange.Sent.insert(exchange.Sent.end(), sending.Data.begin(), sending.Data.end());
    }
    if (trace_) {
        trace_(exchange);
    }
    if (KeepsRecord) {
        record_.push_back(std::move(exchange));
    }
}

}  // namespace simulator
