#ifndef ORVIA_COLLECT_LATE_ANSWERS_H
#define ORVIA_COLLECT_LATE_ANSWERS_H

#include <functional>
#include <optional>

#include "archive/record_moment.h"
#include "platform/host.h"
#include "records/link.h"

/// Watches the link for answers that stay out. One may come seconds late, and bears no sender:
/// where the next logger's own is lost, it would be taken for that.
class LateAnswers final : public LinkListener {
 public:
    /// `beside` is told all that this is told. Both outlive it.
    LateAnswers(LinkListener& beside, const SystemClock& clock) : beside_(beside), clock_(clock) {}

    void OnTry(const LinkTry& attempt) override { beside_.OnTry(attempt); }
    void OnFinding(LinkFinding finding, std::int16_t ticks) override;

    /// Whether one that stayed out may still come: for five seconds.
    [[nodiscard]] bool MayCome() const { return TicksLeft() > 0; }
    /// Lets `link` rest, with events running, until none can come any more. False if `stop` or the
    /// program's end cut that short.
    [[nodiscard]] bool LetPass(Link& link, const std::function<bool()>& stop) const;

 private:
    [[nodiscard]] int TicksLeft() const;

    LinkListener& beside_;
    const SystemClock& clock_;
    std::optional<Moment> stayedOut_;  ///< when the last one was missed
};

#endif  // ORVIA_COLLECT_LATE_ANSWERS_H
