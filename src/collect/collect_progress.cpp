#include "collect/collect_progress.h"

#include <algorithm>
#include <cmath>

#include "collect/collect_words.h"
#include "common/number_text.h"
#include "common/text.h"

namespace {

constexpr int TicksPerSecond = 10;
/// Ticks that the rate looks back on, and the fewest that tell one.
constexpr std::size_t LongestLook = std::size_t{5} * TicksPerSecond;
constexpr std::size_t ShortestLook = TicksPerSecond;

/// "0:45", "12:05", "1:02:05".
std::string TimeLeft(std::int64_t seconds) {
    constexpr int PerMinute = 60;
    const int second = static_cast<int>(seconds % PerMinute);
    const std::int64_t minutes = seconds / PerMinute;
    const std::int64_t hours = minutes / PerMinute;
    const int minute = static_cast<int>(minutes % PerMinute);
    return (hours > 0 ? IntegerToText(hours) + ":" + TwoDigits(minute) : IntegerToText(minute)) +
           ":" + TwoDigits(second);
}

}  // namespace

void CollectProgress::Begin(const std::string& name) {
    *this = {};
    name_ = name;
    runs_ = true;
}

void CollectProgress::Expect(std::int64_t records) {
    expects_ = true;
    expected_ = records;
}

void CollectProgress::End() {
    *this = {};
}

void CollectProgress::Tick() {
    if (!expects_) {
        return;
    }
    before_.push_back(came_);
    if (before_.size() > LongestLook + 1) {
        before_.pop_front();
    }
}

double CollectProgress::Rate() const {
    const std::size_t ticks = before_.empty() ? 0 : before_.size() - 1;
    if (ticks < ShortestLook) {
        return 0;
    }
    return static_cast<double>(before_.back() - before_.front()) * TicksPerSecond /
           static_cast<double>(ticks);
}

std::string CollectProgress::Text() const {
    if (!runs_) {
        return {};
    }
    std::string text = name_;
    if (!expects_) {
        return text + "...";
    }
    text += ": " + IntegerToText(came_) + " of " + CountOfRecords(std::max(came_, expected_));
    const double rate = Rate();
    if (rate > 0) {
        const auto left = static_cast<double>(std::max<std::int64_t>(expected_ - came_, 0)) / rate;
        text += ", " + FormatFixed(rate, 0) + " a second, " +
                TimeLeft(static_cast<std::int64_t>(std::ceil(left))) + " left";
    }
    return text;
}
