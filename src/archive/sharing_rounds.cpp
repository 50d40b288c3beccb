#include "archive/sharing_rounds.h"

#include <algorithm>

namespace {

/// Behind such trouble the next upload would fare no better.
bool StopsAll(ArchiveTrouble kind) {
    return kind == ArchiveTrouble::ReadOnly || kind == ArchiveTrouble::Full ||
           kind == ArchiveTrouble::Away;
}

}  // namespace

void SharingRounds::Aim(const SharingTarget& target) {
    Release();
    target_ = target;
    owesAgain_ = false;
    lately_.reset();
    lastRound_.reset();
    pause_ = {};
    next_ = {};
}

void SharingRounds::Release() {
    Drop();
    local_.reset();
}

void SharingRounds::Drop() {
    hand_.reset();
    server_.reset();
    rests_ = true;
}

SharingRounds::Result SharingRounds::Turn(const std::string& identity) {
    Result result;
    // What is away, or stuck, is left alone until its pause is over.
    result.Asked = hand_ || std::chrono::steady_clock::now() >= next_;
    if (result.Asked) {
        result.Wrong = TroubleIn([&] { Connect(result); });
        if (result.Reached && !result.Wrong) {
            result.Wrong = TroubleIn([&] { HandOverPortion(result); });
        }
        if (result.Wrong && result.Wrong->Kind == ArchiveTrouble::Away) {
            result.Reached = false;
        }
        if (result.Wrong) {
            result.More = false;
        }
        if (!result.More) {
            EndRound(result);
        }
    }
    if (!result.Wrong) {
        result.Wrong = lately_ ? lately_ : lastRound_;
    }
    if (!result.Reached) {
        result.Waiting = CountWaiting(identity);
    }
    return result;
}

void SharingRounds::OpenLocal() {
    if (!local_) {
        local_ = stores_.Local();
    }
    // The first upload makes it, and nothing else does.
    if (local_->Exists()) {
        local_->Open();
    }
}

void SharingRounds::Connect(Result& result) {
    if (!server_) {
        server_ = stores_.Server(target_.Place, target_.Password);
    }
    server_->Open();
    if (rests_) {
        result.Identity = server_->Identity();
        rests_ = false;
    }
    result.Reached = true;
    OpenLocal();
    if (!hand_ && local_->IsOpen()) {
        hand_ = std::make_unique<HandOver>(*local_, *server_);
    }
}

void SharingRounds::HandOverPortion(Result& result) {
    if (!hand_) {
        result.Waiting = 0;
        return;
    }
    if (owesAgain_) {
        hand_->Again();
        owesAgain_ = false;
    }
    try {
        result.More = hand_->Portion();
    } catch (const ArchiveFault& fault) {
        if (StopsAll(fault.Kind())) {
            throw;
        }
        lately_ = {fault.Kind(), fault.what()};
        result.More = true;
    }
    if (!result.More || IsTimeToCount()) {
        result.Waiting = hand_->Waiting();
    }
}

void SharingRounds::EndRound(Result& result) {
    lastRound_ = result.Wrong ? result.Wrong : lately_;
    lately_.reset();
    rests_ = true;
    if (!lastRound_) {
        pause_ = {};
        next_ = std::chrono::steady_clock::now() + pauses_.Idle;
        return;
    }
    const std::string target = hand_ ? hand_->Target() : std::string();
    Release();
    if (result.Reached) {
        result.Waiting = CountWaiting(target);
    }
    // What another console held is free a moment later.
    const bool held = result.Reached && lastRound_->Kind == ArchiveTrouble::Locked;
    pause_ = held || pause_.count() == 0 ? pauses_.First : std::min(2 * pause_, pauses_.Longest);
    next_ = std::chrono::steady_clock::now() + pause_;
}

std::optional<std::int64_t> SharingRounds::CountWaiting(const std::string& identity) {
    std::optional<std::int64_t> waiting;
    static_cast<void>(TroubleIn([&] {
        OpenLocal();
        if (local_->IsOpen() && !identity.empty()) {
            waiting = local_->CountOwed(identity);
        }
    }));
    return waiting;
}

/// Counting goes over all uploads: not behind each portion.
bool SharingRounds::IsTimeToCount() {
    constexpr std::chrono::milliseconds between(250);
    const Instant now = std::chrono::steady_clock::now();
    const bool due = now >= counted_ + between;
    counted_ = due ? now : counted_;
    return due;
}
