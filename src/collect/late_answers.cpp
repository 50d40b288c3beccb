#include "collect/late_answers.h"

#include "link/port.h"

namespace {

constexpr int LongestDelay = 50;  // ticks
/// How long the link rests before somebody may cut that short.
constexpr std::int16_t RestTicks = 2;

bool IsAnswer(LinkFinding finding) {
    return finding == LinkFinding::Acknowledged || finding == LinkFinding::FrameRead ||
           finding == LinkFinding::StatusRead || finding == LinkFinding::RadioAnswered;
}

}  // namespace

void LateAnswers::OnFinding(LinkFinding finding, std::int16_t ticks) {
    if (!IsAnswer(finding)) {
        ticksLeft_ = LongestDelay;
    }
    beside_.OnFinding(finding, ticks);
}

bool LateAnswers::LetPass(Link& link, const std::function<bool()>& stop) const {
    while (MayCome()) {
        if (link.ShuttingDown != False || stop()) {
            return false;
        }
        comm::Pause(link, RestTicks);
    }
    return true;
}
