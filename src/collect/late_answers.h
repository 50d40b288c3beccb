#ifndef ORVIA_COLLECT_LATE_ANSWERS_H
#define ORVIA_COLLECT_LATE_ANSWERS_H

#include <functional>
#include <optional>

#include "archive/record_moment.h"
#include "platform/host.h"
#include "records/link.h"

/// Watches for answers that stay out. One may come seconds late, and bears no sender: where the
/// next logger's own is lost, it would be taken for that.
class LateAnswers final : public LinkListener {
 public:
    /// Listens on the link, beside whoever does, until it goes. Both outlive it.
    LateAnswers(Link& link, const SystemClock& clock);
    ~LateAnswers() override;
    LateAnswers(const LateAnswers&) = delete;
    LateAnswers& operator=(const LateAnswers&) = delete;

    void OnTry(const LinkTry& attempt) override;
    void OnFinding(LinkFinding finding, std::int16_t ticks) override;

    /// Lets the link rest, with events running, until what stayed out comes no more: five seconds
    /// behind the last such answer, none where all came. `stop` and the program's end cut it short.
    void LetPass(const std::function<bool()>& stop) const;

 private:
    [[nodiscard]] int TicksLeft() const;

    Link& link_;
    const SystemClock& clock_;
    LinkListener* const beside_;
    std::optional<Moment> stayedOut_;  ///< when the last one was missed
};

#endif  // ORVIA_COLLECT_LATE_ANSWERS_H
