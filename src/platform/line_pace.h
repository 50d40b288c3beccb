#ifndef ORVIA_PLATFORM_LINE_PACE_H
#define ORVIA_PLATFORM_LINE_PACE_H

#include <chrono>
#include <optional>

/// How fast bytes come in, as long as they come one by one.
class LinePace {
 public:
    using Time = std::chrono::steady_clock::time_point;

    /// Bytes of which the system has just told.
    void Came(Time now, int bytes);
    /// Bytes that came since then, while nobody looked.
    void CameUnseen(Time now, int bytes);
    /// Nothing is known of what comes next.
    void Forget();

    /// How long most of so many further bytes cannot be in, however fast they come: three quarters
    /// of their time at this pace. 0 if they come in packs or behind a silence, or so fast that
    /// nothing is won.
    [[nodiscard]] std::chrono::milliseconds RestFor(int count) const;

 private:
    void Take(Time now, int bytes);

    std::optional<Time> last_;
    std::chrono::nanoseconds perByte_{0};
};

#endif  // ORVIA_PLATFORM_LINE_PACE_H
