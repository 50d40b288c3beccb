#ifndef ORVIA_COLLECT_LATE_ANSWERS_H
#define ORVIA_COLLECT_LATE_ANSWERS_H

#include <functional>

#include "records/link.h"

/// Watches the link for answers that stay out. One may come seconds late, and bears no sender:
/// where the next logger's own is lost, it would be taken for that. It goes by ticks and not by the
/// clock, which may be set meanwhile.
class LateAnswers final : public LinkListener {
 public:
    /// `beside` is told all that this is told, and outlives it.
    explicit LateAnswers(LinkListener& beside) : beside_(beside) {}

    void OnTry(const LinkTry& attempt) override { beside_.OnTry(attempt); }
    void OnFinding(LinkFinding finding, std::int16_t ticks) override;

    /// A tick of the console.
    void Tick() { ticksLeft_ -= ticksLeft_ > 0 ? 1 : 0; }

    /// Whether one that stayed out may still come: for five seconds.
    [[nodiscard]] bool MayCome() const { return ticksLeft_ > 0; }
    /// Lets `link` rest, with events running, until none can come any more. False if `stop` or the
    /// program's end cut that short.
    [[nodiscard]] bool LetPass(Link& link, const std::function<bool()>& stop) const;

 private:
    LinkListener& beside_;
    int ticksLeft_ = 0;
};

#endif  // ORVIA_COLLECT_LATE_ANSWERS_H
