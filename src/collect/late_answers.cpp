#include "collect/late_answers.h"

#include <algorithm>

#include "link/port.h"

namespace {

constexpr Moment LongestDelay = 5;  // seconds
constexpr int TicksPerSecond = 10;
/// How long the link rests before somebody may cut that short.
constexpr std::int16_t RestTicks = 2;

bool IsAnswer(LinkFinding finding) {
    return finding == LinkFinding::Acknowledged || finding == LinkFinding::FrameRead ||
           finding == LinkFinding::StatusRead || finding == LinkFinding::RadioAnswered;
}

}  // namespace

void LateAnswers::OnFinding(LinkFinding finding, std::int16_t ticks) {
    if (!IsAnswer(finding)) {
        stayedOut_ = MomentOf(clock_.Now());
    }
    beside_.OnFinding(finding, ticks);
}

/// A clock that was set back meanwhile makes the rest a whole one.
int LateAnswers::TicksLeft() const {
    if (!stayedOut_) {
        return 0;
    }
    const Moment since = MomentOf(clock_.Now()) - *stayedOut_;
    return TicksPerSecond *
           static_cast<int>(LongestDelay - std::clamp<Moment>(since, 0, LongestDelay));
}

bool LateAnswers::LetPass(Link& link, const std::function<bool()>& stop) const {
    for (int left = TicksLeft(); left > 0; left -= RestTicks) {
        if (link.ShuttingDown != False || stop()) {
            return false;
        }
        comm::Pause(link, RestTicks);
    }
    return true;
}
