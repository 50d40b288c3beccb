#ifndef ORVIA_LINK_FRAME_CODEC_H
#define ORVIA_LINK_FRAME_CODEC_H

#include <cstdint>
#include <span>

#include "common/bytes.h"

// The frame in which console and logger talk; docs/frames.md has the bytes of a worked example.

namespace comm {

/// First and last byte of a frame; neither stands inside one.
inline constexpr std::uint8_t FrameStart = 0xF8;
inline constexpr std::uint8_t FrameEnd = 0xF9;
/// The byte with which a logger answers a frame that it took.
inline constexpr std::uint8_t Acknowledge = 0xFA;
/// First of the pair that stands for a byte F8 to FE; the second is that byte less F8.
inline constexpr std::uint8_t EscapeMark = 0xFE;

/// Most payload bytes that the length byte can count.
inline constexpr int MostPayload = 253;
/// Size of the transmit buffer.
inline constexpr int MostFrame = 512;

/// CRC-16 of buffer[first] to buffer[last]: reflected polynomial A001, initial value 0, no final
/// inversion (CRC-16/ARC). 0 when first > last.
[[nodiscard]] std::uint16_t FrameCrc(std::span<const std::uint8_t> buffer, int first, int last);

/// The frame that carries `payload`. More than MostPayload bytes, or a frame that escaping makes
/// longer than MostFrame, is a Fault.
[[nodiscard]] Bytes EncodeFrame(std::span<const std::uint8_t> payload);

/// Takes a frame in, byte by byte, from behind its start byte.
class FrameDecoder {
 public:
    enum class Progress { More, Good, Bad };
    /// What makes a frame bad.
    enum class Flaw { None, Length, Escape, End, Crc };

    /// Only a frame with just payload.size() bytes is good; they are then in `payload`.
    explicit FrameDecoder(std::span<std::uint8_t> payload) : payload_(payload) {}

    /// Takes the next byte. After Good or Bad the decoder is done.
    [[nodiscard]] Progress Take(std::uint8_t byte);

    /// Fewest bytes that are still to come of a good frame: escapes make it longer.
    [[nodiscard]] std::size_t StillMissing() const;

    /// After Bad, why.
    [[nodiscard]] Flaw Why() const { return flaw_; }

 private:
    enum class Stage { Length, Body, Escaped, End };

    [[nodiscard]] Progress TakeLength(std::uint8_t byte);
    [[nodiscard]] Progress TakeBody(std::uint8_t byte);
    [[nodiscard]] Progress TakeEnd(std::uint8_t byte);
    [[nodiscard]] Progress Refuse(Flaw flaw);
    void Store(std::uint8_t byte);

    std::span<std::uint8_t> payload_;
    Stage stage_ = Stage::Length;
    Flaw flaw_ = Flaw::None;
    std::size_t taken_ = 0;  ///< of payload and CRC
    std::uint16_t crc_ = 0;  ///< as received
};

}  // namespace comm

#endif  // ORVIA_LINK_FRAME_CODEC_H
