#ifndef ORVIA_LOGGER_FRAME_EXCHANGE_H
#define ORVIA_LOGGER_FRAME_EXCHANGE_H

#include <cstdint>
#include <span>
#include <string_view>

#include "common/bytes.h"

/// What the commands of a logger ask of the link to it. The radio is tuned to the logger already.
class FrameExchange {
 public:
    virtual ~FrameExchange() = default;

    /// Sends a payload of up to 253 bytes as a frame; True when the logger acknowledged it.
    /// `retries` counts further tries and is used up: 0 is one try, 2 are three.
    [[nodiscard]] virtual bool SendFrame(std::span<const std::uint8_t> payload,
                                         std::int16_t& retries) = 0;

    /// Waits for the reply frame. `payload` has the exact size expected; True when a frame of just
    /// that size arrived whole, which it then holds.
    [[nodiscard]] virtual bool ReceiveFrame(Bytes& payload) = 0;

    /// One byte outside frames, 0 to 255, or -1 when none came within the time for a reply.
    [[nodiscard]] virtual std::int16_t ReadReplyByte() = 0;

    /// Told how far a command of several exchanges is, as "try", 2, 3. Nothing hangs on it.
    virtual void NoteProgress(std::string_view /*what*/, int /*number*/, int /*of*/) {}
};

#endif  // ORVIA_LOGGER_FRAME_EXCHANGE_H
