#ifndef ORVIA_TESTS_SUPPORT_WORK_TIME_H
#define ORVIA_TESTS_SUPPORT_WORK_TIME_H

#include <ctime>

namespace testing_support {

/// Processor time that work takes, in milliseconds: what stands on a clock on the wall depends on
/// who else uses the machine. Nothing that is measured so may wait for anything.
class WorkTime {
 public:
    /// Since the start, or the last restart.
    [[nodiscard]] double Milliseconds() const {
        return static_cast<double>(std::clock() - start_) * 1000 / CLOCKS_PER_SEC;
    }
    /// The same, which begins anew.
    double Restart() {
        const double passed = Milliseconds();
        start_ = std::clock();
        return passed;
    }

 private:
    std::clock_t start_ = std::clock();
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_SUPPORT_WORK_TIME_H
