#ifndef ORVIA_BENCH_PLAIN_CLOCK_H
#define ORVIA_BENCH_PLAIN_CLOCK_H

#include <string>

#include "platform/host.h"

/// A clock that stands still, with dates as most systems show them.
class PlainClock final : public SystemClock {
 public:
    [[nodiscard]] LocalTime Now() const override { return {2026, 11, 15, 8, 30, 0, 0}; }
    [[nodiscard]] std::string DateText(const LocalTime& time) const override {
        return std::to_string(time.Month) + "/" + std::to_string(time.Day) + "/" +
               std::to_string(time.Year);
    }
    [[nodiscard]] std::string TimeText(const LocalTime& /*time*/) const override {
        return "8:30:00 AM";
    }
};

#endif  // ORVIA_BENCH_PLAIN_CLOCK_H
