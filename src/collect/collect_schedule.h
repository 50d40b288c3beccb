#ifndef ORVIA_COLLECT_COLLECT_SCHEDULE_H
#define ORVIA_COLLECT_COLLECT_SCHEDULE_H

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "collect/collect_plan.h"
#include "collect/collect_round.h"
#include "collect/digest.h"
#include "collect/round_log.h"

/// What a schedule asks of the program around it.
class ScheduleDesk {
 public:
    virtual ~ScheduleDesk() = default;

    /// Has Step called soon, by the event loop and not from inside this call.
    virtual void QueueStep() = 0;
    /// Whether the operator has a dialog, a box or a menu open.
    [[nodiscard]] virtual bool DialogStands() = 0;
    /// A round is over that began `when`, and this needs a person; empty if nothing does. What went
    /// wrong with handing it on is told in the log.
    [[nodiscard]] virtual std::string RoundEnded(const std::string& digest,
                                                 const std::string& when) = 0;
};

/// What a schedule works on.
struct ScheduleContext {
    CollectContext collect;  ///< its log is not used
    SettingsStore& store;
    ScheduleDesk& desk;
};

/// Rounds that collect by themselves, a logger at a time. The operator comes first: a round waits
/// until he has let the link alone for a while, and steps back between two loggers when he clicks.
/// No box is ever shown: what one would say stands in the log.
///
/// The link is connected if it is not, and closed again if nobody else has used it. Loggers that
/// fail are tried twice again at the end. A round whose time passes while the program does not run,
/// the computer sleeps or the operator works is made up once.
class CollectSchedule {
 public:
    explicit CollectSchedule(const ScheduleContext& context);

    /// A tick of the console.
    void Tick();
    /// Goes on by one logger, unless the operator is there.
    void Step();

    /// Keeps `click`, an operator's, for when the logger in hand is done; false if none is in hand,
    /// and it can be done at once. Of several the last one counts.
    [[nodiscard]] bool Defer(std::function<void()> click);
    /// The same at once: the upload in hand ends too.
    [[nodiscard]] bool DeferUrgently(std::function<void()> click);

    [[nodiscard]] const CollectPlan& Plan() const { return plan_; }
    /// Takes and keeps another plan. Rounds count from now on.
    void SetPlan(const CollectPlan& plan);
    /// A round comes as soon as the operator lets it, whether or not the plan is on.
    void StartNow();
    /// Ends the round that runs or waits.
    void Stop();

    /// Whether a round is under way, or waits for the operator.
    [[nodiscard]] bool RoundRuns() const { return round_ != nullptr; }
    [[nodiscard]] bool RoundWaits() const { return round_ == nullptr && wanted_; }
    /// When the next round is due; nothing if the plan is off.
    [[nodiscard]] std::optional<Moment> NextRound() const;
    /// What came of the last round, in a line.
    [[nodiscard]] const std::string& LastRound() const { return last_; }
    /// What is being done, in a line.
    [[nodiscard]] std::string StateText() const;
    /// The log of the newest round of this run.
    [[nodiscard]] const std::string& LogText() const { return log_.Text(); }
    /// What the last round found that needs a person.
    [[nodiscard]] const std::string& Digest() const { return digest_; }
    [[nodiscard]] const CollectProgress& Progress() const { return progress_; }

    DigestLimits Limits;  ///< from when something needs a person

 private:
    enum class Reaching { Reached, NotYet, GivenUp };

    [[nodiscard]] const OperationContext& Work() const { return context_.collect.operation; }
    [[nodiscard]] Link& LinkRecord() const { return Work().radio.link; }
    [[nodiscard]] Moment Now() const;
    [[nodiscard]] bool OperatorIsThere() const;
    void LookAtClock();
    void Queue();

    void BeginRound();
    [[nodiscard]] Reaching ReachRadio();
    [[nodiscard]] bool Connect();
    void CollectNext();
    void NextPass();
    void EndRound(bool wholeWay);
    void CloseAgain();
    /// Tells the log how many there were; of how many all came.
    std::int64_t CountLoggers();
    void TellStepBack();

    const ScheduleContext context_;
    CollectPlan plan_;
    PlanMark mark_;
    std::string last_;
    std::string digest_;
    RoundLog log_;
    CollectProgress progress_;

    bool wanted_ = false;  ///< a round is due, and not over
    bool queued_ = false;
    bool stepRuns_ = false;
    bool stop_ = false;   ///< the round is to end
    bool hurry_ = false;  ///< the upload in hand is to end
    int quiet_ = 0;       ///< ticks since the operator was last there
    int pause_ = 0;       ///< ticks before the radio is tried again
    int ticks_ = 0;       ///< since the clock was last looked at
    std::function<void()> click_;

    std::unique_ptr<CollectRound> round_;
    std::optional<Moment> due_;  ///< of the round that is wanted
    int pass_ = 0;
    int radioTries_ = 0;
    bool closes_ = false;  ///< the port is to be closed at the end
    bool steppedBack_ = false;
};

#endif  // ORVIA_COLLECT_COLLECT_SCHEDULE_H
