#include "link/frames.h"

#include "link/busy_guard.h"
#include "link/frame_codec.h"
#include "link/port.h"

namespace comm {

namespace {

// Pauses around a frame, in ticks, in which stray bytes of an earlier exchange run out.
constexpr std::int16_t PurgeTicks = 2;
constexpr std::int16_t SecondPurgeTicks = 4;
constexpr std::int16_t FailTicks = 2;
/// What the first bytes of a reply frame may take beyond ReplyTicks.
constexpr std::int16_t FrameTicks = 3;
/// Fewest bytes worth looking at: start, length and CRC.
constexpr std::int16_t FirstBytes = 4;

/// Throws away what comes in before a request goes out: it is not its answer. The radio answers
/// late after a channel change, and a logger may still be talking. Its bytes come one by one: the
/// first of them, taken for an acknowledge, would let every further try fall on the next at once.
void PurgeInput(Link& link) {
    SerialPort& port = link.MSComm1;
    if (link.StrayInput != False || port.InBufferCount() >= 1) {
        port.ClearInBuffer();
        Pause(link, PurgeTicks);
    }
    if (port.InBufferCount() >= 1) {
        port.ClearInBuffer();
        Pause(link, SecondPurgeTicks);
    }
    port.ClearInBuffer();
}

/// One try; True when it was acknowledged.
bool SendOnce(Link& link, const Bytes& frame) {
    PurgeInput(link);
    link.MSComm1.Output(frame);
    WaitForBytes(link, link.ReplyTicks, 1);
    const Bytes reply = link.MSComm1.Input(1);
    link.StrayInput = ToFlag(!reply.empty() && reply.front() != Acknowledge);
    return !reply.empty() && link.StrayInput == False;
}

/// Looks for the start of a frame among the bytes that have arrived.
bool FindStart(SerialPort& port) {
    while (port.InBufferCount() > 0) {
        if (port.Input(1).front() == FrameStart) {
            return true;
        }
    }
    return false;
}

bool TakeFrame(Link& link, Bytes& payload) {
    WaitForBytes(link, static_cast<std::int16_t>(link.ReplyTicks + FrameTicks), FirstBytes);
    if (!FindStart(link.MSComm1)) {
        return false;
    }
    FrameDecoder decoder(payload);
    auto progress = FrameDecoder::Progress::More;
    while (progress == FrameDecoder::Progress::More) {
        const std::int16_t byte = ReadByteWait(link, link.ReplyTicks);
        if (byte < 0) {
            return false;
        }
        progress = decoder.Take(static_cast<std::uint8_t>(byte));
    }
    return progress == FrameDecoder::Progress::Good;
}

}  // namespace

bool SendFrame(Link& link, std::span<const std::uint8_t> payload, std::int16_t& retries) {
    if (link.CommBusy != False) {
        return false;
    }
    const BusyGuard busy(link.CommBusy);
    const Bytes frame = EncodeFrame(payload);
    while (!SendOnce(link, frame)) {
        if (retries <= 0 || link.ShuttingDown != False) {
            return false;
        }
        --retries;
    }
    return true;
}

bool ReceiveFrame(Link& link, Bytes& payload) {
    if (link.CommBusy != False) {
        return false;
    }
    const BusyGuard busy(link.CommBusy);
    if (TakeFrame(link, payload)) {
        return true;
    }
    Pause(link, FailTicks);
    link.MSComm1.ClearInBuffer();
    return false;
}

}  // namespace comm

bool LinkFrames::SendFrame(std::span<const std::uint8_t> payload, std::int16_t& retries) {
    return comm::SendFrame(link_, payload, retries);
}

bool LinkFrames::ReceiveFrame(Bytes& payload) {
    return comm::ReceiveFrame(link_, payload);
}

std::int16_t LinkFrames::ReadReplyByte() {
    return comm::ReadByteWait(link_, link_.ReplyTicks);
}

void LinkFrames::NoteProgress(std::string_view what, int number, int of) {
    if (status_ != nullptr) {
        status_->HowFar(what, number, of);
    }
}
