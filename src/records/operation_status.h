#ifndef ORVIA_RECORDS_OPERATION_STATUS_H
#define ORVIA_RECORDS_OPERATION_STATUS_H

#include <string>
#include <string_view>
#include <utility>

#include "common/number_text.h"
#include "platform/host.h"

/// What the console is doing for the operator, or what came of what it did last: the line at the
/// main window's lower edge. Every operation tells it here, and the ticks show it; nothing waits
/// for it or hangs on it.
class OperationStatus {
 public:
    explicit OperationStatus(const SystemClock& clock) : clock_(clock) {}

    /// This is being done: "Reading settings of Hill Tanks".
    void Doing(std::string what) {
        what_ = std::move(what);
        when_.clear();
        howFar_.clear();
        busy_ = true;
        failed_ = false;
    }
    /// How far that is: "12 of 48 records".
    void HowFar(const std::string& what) {
        if (busy_) {
            howFar_ = ", " + what;
        }
    }
    /// The same in numbers: "try 2 of 3".
    void HowFar(std::string_view what, int number, int of) {
        HowFar(std::string(what) + " " + IntegerToText(number) + " of " + IntegerToText(of));
    }
    /// What is done is for the `number`th of `of` loggers, until RoundOver.
    void Round(int number, int of) {
        round_ = IntegerToText(number) + " of " + IntegerToText(of) + ": ";
    }
    void RoundOver() { round_.clear(); }
    /// This came of it, at this moment: "Hill Tanks did not answer", and whether that is good.
    void Came(const std::string& what, bool good = true) {
        what_ = what;
        failed_ = !good;
        when_ = clock_.TimeText(clock_.Now()) + "  ";
        howFar_.clear();
        busy_ = false;
    }
    /// The operation is over on a way that told nothing of what came of it.
    void End() {
        if (busy_) {
            Came(what_ + " was not completed", false);
        }
    }

    [[nodiscard]] bool Busy() const { return busy_; }
    /// Whether the line tells of a failure.
    [[nodiscard]] bool Failed() const { return failed_; }
    /// The line; empty before the first operation.
    [[nodiscard]] std::string Text() const {
        return when_ + round_ + what_ + howFar_ + (busy_ ? "..." : "");
    }

 private:
    const SystemClock& clock_;
    std::string when_;   ///< empty while something is being done
    std::string round_;  ///< empty for one logger alone
    std::string what_;
    std::string howFar_;
    bool busy_ = false;
    bool failed_ = false;
};

#endif  // ORVIA_RECORDS_OPERATION_STATUS_H
