// Any bytes behind the start of a frame: the decoder ends where the format says it does, and what
// it calls good is just what the encoder makes of that payload, but for raw bytes that need no
// escape to be read.

#include <cstdint>
#include <cstdlib>
#include <span>

#include "link/frame_codec.h"

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void RequireRoundTrip(const Bytes& payload) {
    const Bytes frame = comm::EncodeFrame(payload);
    Bytes decoded(payload.size());
    comm::FrameDecoder decoder(decoded);
    auto progress = comm::FrameDecoder::Progress::More;
    for (std::size_t i = 1; i < frame.size(); ++i) {
        Require(progress == comm::FrameDecoder::Progress::More);
        progress = decoder.Take(frame[i]);
    }
    Require(progress == comm::FrameDecoder::Progress::Good);
    Require(decoded == payload);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    Bytes payload(data[0] % 244);
    comm::FrameDecoder decoder(payload);
    for (const std::uint8_t byte : std::span(data, size).subspan(1)) {
        const auto progress = decoder.Take(byte);
        if (progress == comm::FrameDecoder::Progress::Good) {
            RequireRoundTrip(payload);
        }
        if (progress != comm::FrameDecoder::Progress::More) {
            break;
        }
    }
    return 0;
}
