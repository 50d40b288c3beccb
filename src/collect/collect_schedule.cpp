#include "collect/collect_schedule.h"

#include <exception>
#include <utility>

#include "collect/collect_words.h"
#include "collect/noted_boxes.h"
#include "collect/plan_settings.h"
#include "common/fault.h"
#include "common/number_text.h"
#include "link/busy_guard.h"
#include "link/connecting.h"

namespace {

constexpr int TicksPerSecond = 10;
/// The operator has gone when he has let the link alone for so long.
constexpr int QuietTicks = 30 * TicksPerSecond;
/// Between two tries to reach the server radio.
constexpr int RadioPause = 60 * TicksPerSecond;
constexpr int RadioTries = 3;
/// What an archive did not take is tried again so often.
constexpr int KeepTicks = 10 * TicksPerSecond;
/// Loggers that failed are tried again so often.
constexpr int MostPasses = 3;
/// A round that comes later than this was missed.
constexpr Moment Lateness = 5 * SecondsPerMinute;

}  // namespace

CollectSchedule::CollectSchedule(const ScheduleContext& context)
    : context_(context),
      plan_(ReadPlan(context.store)),
      last_(ReadLastRound(context.store)),
      log_(context.collect.archive, context.collect.operation.clock) {
    // A plan without a mark was made by hand: it counts from now on.
    mark_ = ReadMark(context.store).value_or(PlanMark{Now(), Now()});
}

Moment CollectSchedule::Now() const {
    return MomentOf(Work().clock.Now());
}

bool CollectSchedule::OperatorIsThere() const {
    return Work().operations.OperationBusy != False || Work().sampling.StepRuns != False ||
           Work().sampling.ContinuousMode != SamplingIdle || LinkRecord().CommBusy != False ||
           context_.desk.DialogStands();
}

// ----- from tick to tick

void CollectSchedule::Tick() {
    progress_.Tick();
    if (LinkRecord().ShuttingDown != False || stepRuns_) {
        return;
    }
    ++ticks_;
    if (ticks_ % KeepTicks == 0 && log_.Owes()) {
        log_.Keep();
    }
    if (ticks_ % TicksPerSecond == 0 && !wanted_) {
        LookAtClock();
    }
    if (!wanted_ || queued_) {
        return;
    }
    if (OperatorIsThere()) {
        quiet_ = 0;
        // A port that somebody else has used is left to the idle limit.
        closes_ = closes_ && Work().operations.OperationBusy == False;
    } else {
        ++quiet_;
    }
    pause_ -= pause_ > 0 ? 1 : 0;
    if (quiet_ >= QuietTicks && pause_ == 0) {
        Queue();
    }
}

void CollectSchedule::LookAtClock() {
    if (!plan_.On) {
        return;
    }
    const Moment now = Now();
    if (FollowClock(mark_, now)) {
        TrapFault([this] { KeepMark(mark_, context_.store); });
    }
    const Moment due = NextDue(plan_, mark_.Anchor, mark_.Done);
    if (due <= now) {
        due_ = due;
        wanted_ = true;
        quiet_ = 0;
    }
}

void CollectSchedule::Queue() {
    queued_ = true;
    context_.desk.QueueStep();
}

void CollectSchedule::Step() {
    queued_ = false;
    if (!wanted_ || stepRuns_ || LinkRecord().ShuttingDown != False) {
        return;
    }
    if (OperatorIsThere()) {
        quiet_ = 0;
        return;
    }
    stepRuns_ = true;
    {
        const BusyGuard busy(Work().operations.OperationBusy);
        if (round_ == nullptr) {
            BeginRound();
        }
        if (round_ != nullptr && ReachRadio() == Reaching::Reached) {
            CollectNext();
        }
    }
    stepRuns_ = false;
    hurry_ = false;
    log_.Keep();
    if (click_) {
        TellStepBack();
        std::exchange(click_, nullptr)();
    } else if (wanted_ && pause_ == 0) {
        Queue();
    }
}

bool CollectSchedule::Defer(std::function<void()> click) {
    if (!stepRuns_) {
        return false;
    }
    click_ = std::move(click);
    Work().radio.status.HowFar("what you clicked comes next");
    return true;
}

bool CollectSchedule::DeferUrgently(std::function<void()> click) {
    hurry_ = stepRuns_;
    return Defer(std::move(click));
}

void CollectSchedule::TellStepBack() {
    quiet_ = 0;
    closes_ = false;
    if (round_ != nullptr) {
        steppedBack_ = true;
        log_.Append("Steps back for the operator\n");
    }
}

// ----- the round

void CollectSchedule::BeginRound() {
    const Moment now = Now();
    mark_.Done = now;
    TrapFault([this] { KeepMark(mark_, context_.store); });
    log_.Begin();
    log_.Append("Round begins");
    if (due_ && now - *due_ > Lateness) {
        log_.Append(", made up: it was due at " + MomentText(*due_));
    }
    log_.Append("\n");
    round_ = std::make_unique<CollectRound>(
        context_.collect, plan_.Choice,
        CollectWatch{.progress = progress_, .stopWanted = [this] { return stop_ || hurry_; }});
    pass_ = 1;
    radioTries_ = 0;
    steppedBack_ = false;
    closes_ = LinkRecord().LinkState == LinkDisconnected;
}

CollectSchedule::Reaching CollectSchedule::ReachRadio() {
    if (std::exchange(steppedBack_, false)) {
        log_.Append("Goes on\n");
    }
    // A port that was closed since is opened by the first logger.
    if (LinkRecord().Connected != False || stop_ || Connect()) {
        radioTries_ = 0;
        return Reaching::Reached;
    }
    if (LinkRecord().ShuttingDown != False) {
        return Reaching::NotYet;
    }
    if (++radioTries_ < RadioTries) {
        pause_ = RadioPause;
        return Reaching::NotYet;
    }
    EndRound(false);
    return Reaching::GivenUp;
}

bool CollectSchedule::Connect() {
    log_.Append("Connecting with the server radio on " + Work().radio.settings.PortName + "...");
    std::vector<std::string> told;
    NotedBoxes boxes(told);
    comm::ConnectDialog dialog;
    try {
        comm::Connect(WithBoxes(Work(), boxes).radio, dialog, [](Pointer) {});
    } catch (const Fault&) {
        LinkRecord().Connected = False;
    }
    const bool connected = LinkRecord().Connected != False;
    log_.Append(connected ? "OK\n" : "FAIL\n");
    for (const std::string& text : told) {
        log_.Append("    " + text + "\n");
    }
    return connected;
}

void CollectSchedule::CollectNext() {
    if (stop_) {
        EndRound(false);
        return;
    }
    const bool visited = round_->Step([this](const std::string& text) { log_.Append(text); });
    static_cast<void>(CountLoggers());
    if (LinkRecord().ShuttingDown != False || stop_) {
        EndRound(false);
    } else if (!visited) {
        NextPass();
    }
}

void CollectSchedule::NextPass() {
    if (pass_ < MostPasses && round_->TryFailedAgain()) {
        ++pass_;
        log_.Append("Trying those that failed again\n");
    } else {
        EndRound(true);
    }
}

std::int64_t CollectSchedule::CountLoggers() {
    std::int64_t done = 0;
    for (const CollectedLogger& logger : round_->Results()) {
        done += logger.IsDone() ? 1 : 0;
    }
    log_.Count(static_cast<std::int64_t>(round_->Results().size()), done);
    return done;
}

void CollectSchedule::EndRound(bool wholeWay) {
    const std::int64_t done = CountLoggers();
    const auto all = static_cast<std::int64_t>(round_->Results().size());
    const std::string result = IntegerToText(done) + " of " + IntegerToText(all) + " loggers done";
    log_.Append((wholeWay ? "Round is over: " : "Round was ended: ") + result + "\n");
    digest_ = radioTries_ < RadioTries ? std::string()
                                       : "The server radio on " + Work().radio.settings.PortName +
                                             " could not be reached\n";
    digest_ += DigestText(round_->Results(), Limits);
    const std::string trouble = context_.desk.RoundEnded(digest_, MomentText(mark_.Done));
    if (!trouble.empty()) {
        log_.Append(trouble + "\n");
    }
    log_.End(digest_);
    last_ = MomentText(mark_.Done) + ", " + result + (wholeWay ? "" : ", ended before its end");
    TrapFault([this] { KeepLastRound(last_, context_.store); });
    Work().radio.status.RoundOver();
    Work().radio.status.Came("Regular collection: " + result, wholeWay && done == all);
    round_.reset();
    wanted_ = stop_ = false;
    due_.reset();
    progress_.End();
    CloseAgain();
}

void CollectSchedule::CloseAgain() {
    if (std::exchange(closes_, false) && LinkRecord().LinkState != LinkDisconnected &&
        LinkRecord().ShuttingDown == False) {
        comm::Disconnect(LinkRecord(), Work().radio.view);
    }
}

// ----- the plan

void CollectSchedule::SetPlan(const CollectPlan& plan) {
    const bool counts = plan.On && !plan_.On;
    const bool sameTimes = plan.Step == plan_.Step && plan.Hours == plan_.Hours &&
                           plan.Weekday == plan_.Weekday && plan.Minute == plan_.Minute;
    plan_ = plan;
    if (counts || !sameTimes) {
        mark_ = {.Anchor = Now(), .Done = Now()};
    }
    TrapFault([this] { KeepMark(mark_, context_.store); });
    TrapFault([this] { KeepPlan(plan_, context_.store); });
    if (!plan_.On) {
        Stop();
    }
}

void CollectSchedule::StartNow() {
    if (!wanted_) {
        wanted_ = true;
        // Who asks for it does not wait for himself to go.
        quiet_ = QuietTicks;
    }
}

void CollectSchedule::Stop() {
    if (round_ == nullptr) {
        wanted_ = false;
        due_.reset();
        return;
    }
    stop_ = true;
    pause_ = 0;
    quiet_ = QuietTicks;
}

std::optional<Moment> CollectSchedule::NextRound() const {
    return plan_.On ? std::optional(due_ ? *due_ : NextDue(plan_, mark_.Anchor, mark_.Done))
                    : std::nullopt;
}

std::string CollectSchedule::StateText() const {
    if (round_ != nullptr) {
        return stepRuns_ ? progress_.Text()
                         : "A round is under way, and lets the operator go first";
    }
    return wanted_ ? "A round waits until the operator is done" : std::string();
}
