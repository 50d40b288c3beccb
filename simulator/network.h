#ifndef ORVIA_SIMULATOR_NETWORK_H
#define ORVIA_SIMULATOR_NETWORK_H

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "simulator/answer.h"
#include "simulator/bytes.h"
#include "simulator/faults.h"
#include "simulator/frame.h"
#include "simulator/line.h"
#include "simulator/logger.h"
#include "simulator/server_radio.h"

namespace simulator {

/// One request and what came of it.
struct Exchange {
    Microseconds Time = 0;  ///< when the request had arrived whole
    bool OfRadio = false;   ///< the server radio's; else that of the logger named
    std::string LoggerName;
    Bytes Request;  ///< the radio's command, or the payload of the logger's frame
    Bytes Sent;     ///< the bytes that go back for it, acknowledge first; faults included
    FaultKind Fault = FaultKind::None;
};

/// What has gone through since the start.
struct Counters {
    std::int64_t BytesWritten = 0;  ///< by the console
    std::int64_t BytesToConsole = 0;
    std::int64_t RadioCommands = 0;
    std::int64_t Requests = 0;    ///< good frames that reached a logger
    std::int64_t BadFrames = 0;   ///< malformed, cut short or with a wrong CRC
    std::int64_t Unanswered = 0;  ///< good frames met with silence: unknown, or wrong guard bytes
    std::int64_t Unheard = 0;     ///< bytes sent through the air to nobody
    std::int64_t Drowned = 0;     ///< bytes of loggers that the radio did not hear, being elsewhere
};

/// The whole network behind the console's serial port: a server radio and any number of loggers.
/// It has no clock: whoever drives it says what time it is, and time never runs back.
class Network {
 public:
    /// `start` is the true time at moment 0.
    explicit Network(CivilSeconds start = DefaultStart());

    // ----- the serial line, as the console's host drives it

    /// Bytes that the console sends at `now`. They travel at the baud rate and are acted on when
    /// each has arrived.
    void Write(Microseconds now, std::span<const std::uint8_t> bytes);
    /// When something next happens: a byte for the console is due, or something inside the network
    /// that may lead to one. Nothing if all is quiet.
    [[nodiscard]] std::optional<Microseconds> NextEvent() const;
    /// Goes on to `now` and returns the bytes that have come out for the console by then.
    [[nodiscard]] Bytes Read(Microseconds now);
    /// Puts bytes on the line to the console at `now`, out of the blue.
    void Babble(Microseconds now, std::span<const std::uint8_t> bytes);

    int LineBaud = 38400;                        ///< 0 for no pacing
    Microseconds RadioDelay = 2 * Millisecond;   ///< the server radio thinks that long
    Microseconds AirDelay = 5 * Millisecond;     ///< a byte is in the air that long, each way
    Microseconds LoggerDelay = 3 * Millisecond;  ///< a logger thinks that long

    // ----- who is there

    /// Adds a logger; the reference holds as long as the network.
    Logger& AddLogger(LoggerSetup setup);
    /// The logger with that channel and the last three bytes of that address; null if none has.
    [[nodiscard]] Logger* FindLogger(std::uint8_t channel, const Mac3& mac);
    [[nodiscard]] Logger* FindLogger(const std::string& name);
    [[nodiscard]] const std::vector<std::unique_ptr<Logger>>& Loggers() const { return loggers_; }
    [[nodiscard]] ServerRadio& Radio() { return radio_; }

    /// The script of what befalls the loggers' exchanges, and of what befalls the server radio's.
    [[nodiscard]] FaultScript& Faults() { return loggerFaults_; }
    [[nodiscard]] FaultScript& RadioFaults() { return radioFaults_; }

    // ----- what went on

    /// Called with every exchange as it happens.
    using TraceListener = std::function<void(const Exchange&)>;
    void SetTrace(TraceListener listener) { trace_ = std::move(listener); }

    bool KeepsRecord = true;  ///< without it, the three lists below stay empty
    /// Every byte that the console wrote.
    [[nodiscard]] const Bytes& Written() const { return written_; }
    /// Every exchange, in order.
    [[nodiscard]] const std::vector<Exchange>& Record() const { return record_; }
    /// The payloads that reached a logger, in order.
    [[nodiscard]] std::vector<Bytes> RequestsTo(const Logger& logger) const;
    /// The commands that reached the server radio, in order.
    [[nodiscard]] std::vector<Bytes> RadioCommands() const;
    void ClearRecord();

    [[nodiscard]] const Counters& Count() const { return counters_; }

    /// The true time at moment 0, and a start that serves where none is asked for: Tuesday, the
    /// 5th of March 2024, 8:00.
    [[nodiscard]] CivilSeconds Start() const { return start_; }
    [[nodiscard]] static CivilSeconds DefaultStart();

 private:
    /// A byte in the air, on its way to a client radio.
    struct AirByte {
        Microseconds Due = 0;
        std::uint8_t Channel = 0;
        Mac3 Mac{};
        std::uint8_t Byte = 0;
    };
    /// Bytes on their way to the console's line: of the radio itself, or of a logger.
    struct Outgoing {
        const Logger* From = nullptr;
        Bytes Data;
    };
    /// A logger's ear: what it has of a frame.
    struct Ear {
        FrameReader Reader;
        Microseconds LastByte = 0;
    };

    void Advance(Microseconds now);
    void Step(Microseconds due);
    [[nodiscard]] std::optional<Microseconds> NextInside() const;
    void ReachRadio(const Line::Arrival& arrival);
    void Command(const Bytes& command, Microseconds now);
    void Transmit(const Bytes& bytes, Microseconds now);
    void ReachLogger(const AirByte& byte);
    void Request(Logger& logger, const Bytes& payload, Microseconds now);
    void Depart(Microseconds now, const Outgoing& outgoing);
    void Note(Exchange exchange, const std::vector<Sending>& sendings);

    CivilSeconds start_;
    Microseconds now_ = 0;
    ServerRadio radio_;
    std::vector<std::unique_ptr<Logger>> loggers_;
    std::map<const Logger*, Ear> ears_;
    FaultScript loggerFaults_;
    FaultScript radioFaults_;

    Line fromConsole_;
    Line toConsole_;
    std::deque<AirByte> air_;
    std::multimap<Microseconds, Outgoing> outgoing_;

    TraceListener trace_;
    Bytes written_;
    std::vector<Exchange> record_;
    Counters counters_;
};

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_NETWORK_H
