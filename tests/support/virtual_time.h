#ifndef ORVIA_TESTS_SUPPORT_VIRTUAL_TIME_H
#define ORVIA_TESTS_SUPPORT_VIRTUAL_TIME_H

#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <optional>

namespace testing_support {

using Microseconds = std::int64_t;
inline constexpr Microseconds Millisecond = 1000;
inline constexpr Microseconds Second = 1000 * Millisecond;

/// A clock that jumps from event to event. Timers repeat; actions happen once. A timer's handler
/// is never entered while it runs, and drops the ticks that fall into it, as on the desktop.
class VirtualTime {
 public:
    [[nodiscard]] Microseconds Now() const { return now_; }

    /// Starts a repeating timer.
    void StartTimer(Microseconds interval, std::function<void()> handler);

    /// Has `action` happen once, `delay` from now: a click of the operator, say.
    void In(Microseconds delay, std::function<void()> action);

    /// Something outside that has events of its own: when the next is due, and what to do then.
    void SetSource(std::function<std::optional<Microseconds>()> next,
                   std::function<void()> deliver);

    /// Handles what is due now.
    void RunDue();

    /// Jumps to the next event and handles what is due then. Throws when nothing will ever happen
    /// again, or more has happened than any test could mean: a wait that does not end.
    void JumpToNextEvent();

    /// Lets `duration` pass.
    void Run(Microseconds duration);

    /// Lets time pass until `done` or for `limit`; True if done.
    [[nodiscard]] bool RunUntil(const std::function<bool()>& done, Microseconds limit);

 private:
    struct Timer {
        Microseconds Interval = 0;
        Microseconds Due = 0;
        std::function<void()> Handler;
        bool Runs = false;
    };

    [[nodiscard]] std::optional<Microseconds> NextDue() const;
    void RunTimers();
    void RunActions();

    Microseconds now_ = 0;
    std::list<Timer> timers_;
    std::multimap<Microseconds, std::function<void()>> actions_;
    std::function<std::optional<Microseconds>()> next_;
    std::function<void()> deliver_;
    std::int64_t jumps_ = 0;
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_SUPPORT_VIRTUAL_TIME_H
