#include "platform/serial_line.h"

#include <algorithm>
#include <utility>

void SerialLine::Start() {
    Listen();
}

void SerialLine::OnSignal() {
    if (failed_) {
        return;
    }
    FinishWait();
    FinishRead();
    FinishWrite();
    Listen();
}

void SerialLine::Look() {
    if (failed_) {
        return;
    }
    emptyWaits_ = 0;
    OnSignal();
    ReadAll();
    failed_ = failed_ || !calls_.IsThere();
}

void SerialLine::FinishWait() {
    if (!waits_) {
        return;
    }
    const CallState state = calls_.EndWait();
    waits_ = state == CallState::Pending;
    emptyWaits_ += state == CallState::Done ? 1 : 0;
    failed_ = failed_ || state == CallState::Failed;
}

void SerialLine::FinishRead() {
    if (!reads_ || failed_) {
        return;
    }
    Bytes bytes;
    const CallState state = calls_.EndRead(bytes);
    reads_ = state == CallState::Pending;
    failed_ = state == CallState::Failed;
    if (state == CallState::Done) {
        Keep(bytes);
    }
}

void SerialLine::FinishWrite() {
    if (sending_.empty() || failed_) {
        return;
    }
    std::size_t count = 0;
    const CallState state = calls_.EndWrite(count);
    if (state == CallState::Pending) {
        return;
    }
    // A line without a limit of time takes something of what it is given, or is none.
    failed_ = state == CallState::Failed || count == 0;
    const auto went = static_cast<std::ptrdiff_t>(std::min(count, sending_.size()));
    queued_.insert(queued_.begin(), sending_.begin() + went, sending_.end());
    sending_.clear();
    BeginSending();
}

/// Waits for bytes unless that is under way, then reads what came before the wait began. A device
/// that ends every wait at once is left alone until the next tick.
void SerialLine::Listen() {
    if (failed_ || emptyWaits_ > MostEmptyWaits) {
        failed_ = failed_ || !calls_.IsThere();
        return;
    }
    if (!waits_) {
        waits_ = calls_.BeginWait();
        failed_ = !waits_;
        ReadAll();
    }
}

void SerialLine::ReadAll() {
    std::size_t before = 0;
    do {
        if (failed_ || reads_) {
            return;
        }
        before = received_.size();
        reads_ = calls_.BeginRead();
        failed_ = !reads_;
        FinishRead();
    } while (received_.size() > before);
}

void SerialLine::Keep(const Bytes& bytes) {
    emptyWaits_ = bytes.empty() ? emptyWaits_ : 0;
    const std::size_t room = MaxWaiting - received_.size();
    const auto count = static_cast<std::ptrdiff_t>(std::min(room, bytes.size()));
    received_.insert(received_.end(), bytes.begin(), bytes.begin() + count);
}

Bytes SerialLine::Take(std::size_t most) {
    const std::size_t count = most == 0 ? received_.size() : std::min(most, received_.size());
    const auto end = received_.begin() + static_cast<std::ptrdiff_t>(count);
    Bytes taken(received_.begin(), end);
    received_.erase(received_.begin(), end);
    return taken;
}

void SerialLine::Purge() {
    // What a read has brought goes as well; one that still waits will bring what comes from now on.
    FinishRead();
    received_.clear();
    if (!failed_) {
        calls_.Purge();
    }
}

void SerialLine::Send(std::span<const std::uint8_t> bytes) {
    queued_.insert(queued_.end(), bytes.begin(), bytes.end());
    BeginSending();
}

void SerialLine::BeginSending() {
    if (failed_ || queued_.empty() || !sending_.empty()) {
        return;
    }
    sending_ = std::exchange(queued_, {});
    failed_ = !calls_.BeginWrite(sending_);
}
