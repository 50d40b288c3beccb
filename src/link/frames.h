#ifndef ORVIA_LINK_FRAMES_H
#define ORVIA_LINK_FRAMES_H

#include <cstdint>
#include <span>

#include "common/bytes.h"
#include "logger/frame_exchange.h"
#include "records/link.h"
#include "records/operation_status.h"

namespace comm {

/// Sends `payload` as a frame, after throwing away what an earlier exchange left in the input;
/// True when the logger acknowledged. `retries` counts further tries and is used up. False at
/// once while another exchange is on the link. A payload too long is a Fault.
[[nodiscard]] bool SendFrame(Link& link, std::span<const std::uint8_t> payload,
                             std::int16_t& retries);

/// Waits for a frame of exactly payload.size() bytes and fills `payload` with it. Noise ahead of
/// it is dropped. A frame that is late, cut, of another length or damaged is False, with the
/// input emptied; asking again is the caller's matter.
[[nodiscard]] bool ReceiveFrame(Link& link, Bytes& payload);

}  // namespace comm

/// The exchange of frames over the link, for the commands of loggers.
class LinkFrames final : public FrameExchange {
 public:
    /// `status`, if any, is told how far commands are.
    explicit LinkFrames(Link& link, OperationStatus* status = nullptr)
        : link_(link), status_(status) {}

    [[nodiscard]] bool SendFrame(std::span<const std::uint8_t> payload,
                                 std::int16_t& retries) override;
    [[nodiscard]] bool ReceiveFrame(Bytes& payload) override;
    [[nodiscard]] std::int16_t ReadReplyByte() override;
    void NoteProgress(std::string_view what, int number, int of) override;

 private:
    Link& link_;
    OperationStatus* status_;
};

#endif  // ORVIA_LINK_FRAMES_H
