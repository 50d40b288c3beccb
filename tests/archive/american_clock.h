#ifndef ORVIA_TESTS_ARCHIVE_AMERICAN_CLOCK_H
#define ORVIA_TESTS_ARCHIVE_AMERICAN_CLOCK_H

#include <string>

#include "platform/host.h"

namespace testing_support {

/// A clock that stands still, of a system that shows 11/15/2026 and 11:21:05 PM.
class AmericanClock final : public SystemClock {
 public:
    LocalTime Now() const override { return {2026, 11, 15, 23, 21, 5, 0}; }
    std::string DateText(const LocalTime& time) const override {
        return std::to_string(time.Month) + "/" + std::to_string(time.Day) + "/" +
               std::to_string(time.Year);
    }
    std::string TimeText(const LocalTime&) const override { return "11:21:05 PM"; }
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_ARCHIVE_AMERICAN_CLOCK_H
