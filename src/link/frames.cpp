#include "link/frames.h"

#include "link/busy_guard.h"
#include "link/frame_codec.h"
#include "link/listening.h"
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

/// Which of how many tries.
struct Attempt {
    int Number;
    int Of;
};

/// One try; True when it was acknowledged.
bool SendOnce(Link& link, const Bytes& frame, const Attempt& attempt) {
    PurgeInput(link);
    TellTry(link, attempt.Number, attempt.Of);
    link.MSComm1.Output(frame);
    WaitForBytes(link, link.ReplyTicks, 1);
    const Bytes reply = link.MSComm1.Input(1);
    link.StrayInput = ToFlag(!reply.empty() && reply.front() != Acknowledge);
    if (reply.empty()) {
        TellMissing(link, LinkFinding::NoAcknowledge, link.ReplyTicks);
        return false;
    }
    const bool acknowledged = link.StrayInput == False;
    Tell(link, acknowledged ? LinkFinding::Acknowledged : LinkFinding::WrongAcknowledge);
    return acknowledged;
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

LinkFinding FindingOf(FrameDecoder::Flaw flaw) {
    switch (flaw) {
        case FrameDecoder::Flaw::Length:
            return LinkFinding::FrameLength;
        case FrameDecoder::Flaw::Escape:
            return LinkFinding::FrameEscape;
        case FrameDecoder::Flaw::End:
            return LinkFinding::FrameEnd;
        case FrameDecoder::Flaw::Crc:
            return LinkFinding::FrameCrc;
        default:
            return LinkFinding::FrameRead;
    }
}

bool TakeFrame(Link& link, Bytes& payload) {
    const auto ticks = static_cast<std::int16_t>(link.ReplyTicks + FrameTicks);
    WaitForBytes(link, ticks, FirstBytes);
    const bool silent = link.MSComm1.InBufferCount() == 0;
    if (!FindStart(link.MSComm1)) {
        TellMissing(link, silent ? LinkFinding::NoFrame : LinkFinding::NoFrameStart, ticks);
        return false;
    }
    FrameDecoder decoder(payload);
    auto progress = FrameDecoder::Progress::More;
    while (progress == FrameDecoder::Progress::More) {
        const auto together = static_cast<std::int16_t>(decoder.StillMissing());
        const std::int16_t byte = ReadByteWait(link, link.ReplyTicks, together);
        if (byte < 0) {
            TellMissing(link, LinkFinding::FrameSilence, link.ReplyTicks);
            return false;
        }
        progress = decoder.Take(static_cast<std::uint8_t>(byte));
    }
    Tell(link, FindingOf(decoder.Why()));
    return progress == FrameDecoder::Progress::Good;
}

}  // namespace

bool SendFrame(Link& link, std::span<const std::uint8_t> payload, std::int16_t& retries) {
    if (link.CommBusy != False) {
        return false;
    }
    const BusyGuard busy(link.CommBusy);
    const Bytes frame = EncodeFrame(payload);
    Attempt attempt{1, 1 + retries};
    while (!SendOnce(link, frame, attempt)) {
        if (retries <= 0 || link.ShuttingDown != False) {
            return false;
        }
        --retries;
        ++attempt.Number;
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
    const std::int16_t byte = comm::ReadByteWait(link_, link_.ReplyTicks);
    if (byte < 0) {
        comm::TellMissing(link_, LinkFinding::NoStatus, link_.ReplyTicks);
    } else {
        comm::Tell(link_, LinkFinding::StatusRead);
    }
    return byte;
}

void LinkFrames::NoteProgress(std::string_view what, int number, int of) {
    if (status_ != nullptr) {
        status_->HowFar(what, number, of);
    }
}
