#include "trace/link_recorder.h"

#include <algorithm>
#include <limits>
#include <string>

#include "common/fault.h"
#include "common/number_text.h"
#include "platform/moments.h"

namespace {

constexpr int MostTries = 255;

std::uint8_t Counted(int tries) {
    return static_cast<std::uint8_t>(std::clamp(tries, 1, MostTries));
}

std::span<const std::uint8_t> BytesOf(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

}  // namespace

bool IsFault(LinkFinding finding) {
    switch (finding) {
        case LinkFinding::None:
        case LinkFinding::Acknowledged:
        case LinkFinding::StatusRead:
        case LinkFinding::FrameRead:
        case LinkFinding::RadioAnswered:
            return false;
        default:
            return true;
    }
}

std::int64_t LinkRecorder::Now() const {
    return ToMilliseconds(clock_.Now());
}

void LinkRecorder::TellChange() {
    if (changed_) {
        std::exchange(changed_, nullptr)();
    }
}

void LinkRecorder::NotePort(TraceEvent event, const std::string& reason) {
    const std::string text = "COM" + IntegerToText(port_.CommPort()) + " " + port_.Settings();
    store_.Begin({.Time = Now(), .Event = event}, BytesOf(text));
    store_.Receive(BytesOf(reason), false);
    exchanging_ = false;
    open_ = port_.PortOpen();
    TellChange();
}

/// A device that is gone has closed its port by itself.
void LinkRecorder::NoteLoss() {
    if (open_ && !port_.PortOpen()) {
        NotePort(TraceEvent::PortLost);
    }
}

void LinkRecorder::SetPortOpen(bool open) {
    NoteLoss();
    try {
        port_.SetPortOpen(open);
    } catch (const Fault& fault) {
        NotePort(TraceEvent::PortRefused, fault.what());
        throw;
    }
    if (port_.PortOpen() != open_) {
        NotePort(open ? TraceEvent::PortOpened : TraceEvent::PortClosed);
    } else if (open && !open_) {
        NotePort(TraceEvent::PortRefused);
    }
}

void LinkRecorder::LookForHangUp() {
    port_.LookForHangUp();
    NoteLoss();
}

void LinkRecorder::Receive(const Bytes& bytes, bool thrown) {
    if (!exchanging_) {
        store_.Begin({.Time = Now(), .Event = TraceEvent::Unasked}, {});
        exchanging_ = true;
    }
    store_.Receive(bytes, thrown);
    TraceRecord& record = store_.Newest();
    if (!thrown && record.AnswerAfter < 0) {
        const std::int64_t after = std::max<std::int64_t>(Now() - record.Time, 0);
        record.AnswerAfter = static_cast<std::int32_t>(
            std::min<std::int64_t>(after, std::numeric_limits<std::int32_t>::max()));
    }
    TellChange();
}

void LinkRecorder::ClearInBuffer() {
    if (port_.InBufferCount() > 0) {
        Receive(port_.Input(0), true);
    }
    port_.ClearInBuffer();
}

Bytes LinkRecorder::Input(int InputLen) {
    Bytes bytes = port_.Input(InputLen);
    if (!bytes.empty()) {
        Receive(bytes, false);
    }
    return bytes;
}

void LinkRecorder::Output(std::span<const std::uint8_t> bytes) {
    NoteLoss();
    const LinkTry attempt = announced_ ? next_ : LinkTry{};
    announced_ = false;
    store_.Begin({.Time = Now(),
                  .Try = Counted(attempt.Number),
                  .Tries = Counted(attempt.Of),
                  .Channel = attempt.Channel,
                  .Mac = attempt.Mac},
                 bytes);
    exchanging_ = true;
    TellChange();
    port_.Output(bytes);
}

void LinkRecorder::OnTry(const LinkTry& attempt) {
    next_ = attempt;
    announced_ = true;
    loggers_.insert({attempt.Channel, attempt.Mac});
}

/// What went wrong first stays: what follows from it is no news. Only the server radio's answer is
/// measured before it is looked at, and a short one can do all the same.
void LinkRecorder::OnFinding(LinkFinding finding, std::int16_t ticks) {
    if (!exchanging_) {
        return;
    }
    TraceRecord& record = store_.Newest();
    if (!IsFault(record.Finding) || finding == LinkFinding::RadioAnswered) {
        record.Finding = finding;
        record.Ticks = ticks;
        TellChange();
    }
}
