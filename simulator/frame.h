#ifndef ORVIA_SIMULATOR_FRAME_H
#define ORVIA_SIMULATOR_FRAME_H

#include <optional>

#include "simulator/bytes.h"

// The frame that console and logger exchange, from the logger's side. docs/simulator.md shows the
// bytes of one.

namespace simulator {

inline constexpr std::uint8_t FrameStart = 0xF8;
inline constexpr std::uint8_t FrameEnd = 0xF9;
inline constexpr std::uint8_t FrameEscape = 0xFE;

/// Bytes that a logger sends outside frames.
inline constexpr std::uint8_t Acknowledge = 0xFA;
inline constexpr std::uint8_t CarriedOut = 0xFC;
inline constexpr std::uint8_t NoSample = 0xFD;

/// The largest payload that the length byte can count.
inline constexpr std::size_t LargestPayload = 253;

/// CRC-16 with the reflected polynomial A001 and initial value 0 ("123456789" gives BB3D).
[[nodiscard]] std::uint16_t Crc16(std::span<const std::uint8_t> bytes);

/// The payload as it goes on the wire. A payload above `LargestPayload` is cut to it.
[[nodiscard]] Bytes EncodeFrame(std::span<const std::uint8_t> payload);

/// Takes a stream of bytes and finds the frames in it. It is strict: bytes F8 to FD stand raw only
/// in their own places and in that of the length, so a start byte inside a frame begins a new one
/// and the others spoil it.
class FrameReader {
 public:
    /// What a byte brought to an end.
    enum class Outcome { None, Good, Bad };

    /// Takes one byte. After Good, `Payload` holds what the frame carried; after Bad, the frame was
    /// malformed or its CRC wrong, and is dropped.
    Outcome Take(std::uint8_t byte);

    /// Drops a frame that is half received.
    void Reset() { state_ = State::Hunt; }

    [[nodiscard]] bool InsideFrame() const { return state_ != State::Hunt; }
    [[nodiscard]] const Bytes& Payload() const { return payload_; }

 private:
    enum class State { Hunt, Length, Body, Escaped, End };

    Outcome TakeLength(std::uint8_t byte);
    Outcome TakeBody(std::uint8_t byte);
    Outcome TakeEnd(std::uint8_t byte);
    Outcome Drop();

    State state_ = State::Hunt;
    std::size_t length_ = 0;
    Bytes payload_;
};

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_FRAME_H
