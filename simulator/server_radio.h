#ifndef ORVIA_SIMULATOR_SERVER_RADIO_H
#define ORVIA_SIMULATOR_SERVER_RADIO_H

#include <optional>

#include "simulator/bytes.h"

namespace simulator {

/// The modem on the console's serial line.
///
/// In normal mode it sends what it gets through the air to the client radio that it is tuned to,
/// and watches for "AT+++" and a carriage return, which it keeps to itself: bytes that may belong
/// to it are held back until it is certain. In command mode it answers commands that begin with CC
/// and sends nothing through the air; what else it gets, "AT+++" among it, it ignores. A command
/// that is not finished within 100 ms of its last byte is forgotten. It keeps mode, channel and
/// address whatever becomes of the serial port.
class ServerRadio {
 public:
    /// What one byte brought about.
    struct Intake {
        Bytes Command;  ///< a whole command, to be carried out; empty if none was completed
        Bytes Through;  ///< bytes for the air
    };

    /// Takes one byte from the serial line.
    [[nodiscard]] Intake Take(std::uint8_t byte, Microseconds now);

    /// Carries a command out and gives the answer; empty for one that has none.
    [[nodiscard]] Bytes Carry(std::span<const std::uint8_t> command);

    [[nodiscard]] bool InCommandMode() const { return commandMode_; }
    void SetCommandMode(bool on) { commandMode_ = on; }
    [[nodiscard]] std::uint8_t Channel() const { return channel_; }
    [[nodiscard]] const Mac3& Mac() const { return mac_; }
    /// Tunes it by hand.
    void Tune(std::uint8_t channel, const Mac3& mac) {
        channel_ = channel;
        mac_ = mac;
    }

    void SetSystemId(std::uint8_t id) { systemId_ = id; }
    /// Fixes the strength that it reports; without one it reports that of the logger last heard.
    void FixSignal(std::optional<std::uint8_t> strength) { fixedSignal_ = strength; }
    /// Notes the strength with which a logger came in.
    void Hear(std::uint8_t strength) { heard_ = strength; }

    /// A silent radio takes no byte and says nothing.
    void Silence() { silent_ = true; }
    void Wake() { silent_ = false; }
    [[nodiscard]] bool IsSilent() const { return silent_; }

 private:
    void TakeCommandByte(std::uint8_t byte, Intake& intake);
    void TakeDataByte(std::uint8_t byte, Intake& intake);

    bool commandMode_ = false;
    bool silent_ = false;
    std::uint8_t channel_ = 0;
    Mac3 mac_ = {};
    std::uint8_t systemId_ = 1;
    std::optional<std::uint8_t> fixedSignal_;
    std::uint8_t heard_ = 0xFF;  ///< nothing heard yet: as weak as can be
    Bytes pending_;              ///< a command, or what may become "AT+++", so far
    Microseconds lastByte_ = 0;
};

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_SERVER_RADIO_H
