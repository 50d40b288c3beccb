#include "support/virtual_time.h"

#include <algorithm>
#include <stdexcept>

namespace testing_support {

namespace {

constexpr std::int64_t MostJumps = 50'000'000;

}  // namespace

void VirtualTime::StartTimer(Microseconds interval, std::function<void()> handler) {
    timers_.push_back({interval, now_ + interval, std::move(handler)});
}

void VirtualTime::In(Microseconds delay, std::function<void()> action) {
    actions_.emplace(now_ + delay, std::move(action));
}

void VirtualTime::SetSource(std::function<std::optional<Microseconds>()> next,
                            std::function<void()> deliver) {
    next_ = std::move(next);
    deliver_ = std::move(deliver);
}

void VirtualTime::RunDue() {
    if (deliver_) {
        deliver_();
    }
    RunTimers();
    RunActions();
}

void VirtualTime::JumpToNextEvent() {
    const std::optional<Microseconds> due = NextDue();
    if (!due || ++jumps_ > MostJumps) {
        throw std::logic_error("this wait does not end");
    }
    now_ = std::max(now_, *due);
    RunDue();
}

void VirtualTime::Run(Microseconds duration) {
    const Microseconds end = now_ + duration;
    for (auto due = NextDue(); due && *due <= end; due = NextDue()) {
        JumpToNextEvent();
    }
    now_ = std::max(now_, end);
}

bool VirtualTime::RunUntil(const std::function<bool()>& done, Microseconds limit) {
    const Microseconds end = now_ + limit;
    while (!done() && now_ < end) {
        JumpToNextEvent();
    }
    return done();
}

std::optional<Microseconds> VirtualTime::NextDue() const {
    std::optional<Microseconds> due = next_ ? next_() : std::nullopt;
    const auto sooner = [&due](Microseconds moment) {
        due = due ? std::min(*due, moment) : moment;
    };
    for (const Timer& timer : timers_) {
        sooner(timer.Due);
    }
    if (!actions_.empty()) {
        sooner(actions_.begin()->first);
    }
    return due;
}

void VirtualTime::RunTimers() {
    for (Timer& timer : timers_) {
        if (timer.Due > now_) {
            continue;
        }
        timer.Due = now_ + timer.Interval - (now_ - timer.Due) % timer.Interval;
        if (!timer.Runs) {
            timer.Runs = true;
            timer.Handler();
            timer.Runs = false;
        }
    }
}

void VirtualTime::RunActions() {
    while (!actions_.empty() && actions_.begin()->first <= now_) {
        const auto action = std::move(actions_.begin()->second);
        actions_.erase(actions_.begin());
        action();
    }
}

}  // namespace testing_support
