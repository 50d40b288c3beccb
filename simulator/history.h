#ifndef ORVIA_SIMULATOR_HISTORY_H
#define ORVIA_SIMULATOR_HISTORY_H

#include <cstdint>
#include <optional>
#include <vector>

#include "simulator/calendar.h"
#include "simulator/signal.h"

namespace simulator {

/// One record: what the logger's clock stamped, and the true moment at which it was taken.
struct RecordTimes {
    CivilSeconds Stamp = 0;
    SiteSeconds Taken = 0;
};

/// When a logger took its records. Records are not held: each follows from the run that it belongs
/// to, so a history may have any length.
class History {
 public:
    /// A stretch of logging with one interval and one setting of the clock.
    struct Run {
        CivilSeconds First = 0;     ///< stamp of its first record
        CivilSeconds Interval = 1;  ///< seconds, 1 or more
        SiteSeconds Shift = 0;      ///< clock minus true time
        /// The clock's moment after which nothing is logged.
        std::optional<CivilSeconds> Until;
    };

    /// Starts a run at the clock's moment `clock`; the run before ends there.
    void Begin(CivilSeconds clock, const Run& run);
    /// Ends the run under way at the clock's moment `clock`.
    void End(CivilSeconds clock);
    /// Drops all records and ends the run.
    void Clear();

    /// Records in memory at the clock's moment `clock`.
    [[nodiscard]] std::uint32_t Count(CivilSeconds clock) const;
    /// Times of record `index`, 0 the oldest, below the count.
    [[nodiscard]] RecordTimes TimesOf(std::uint32_t index) const;

 private:
    struct Ended {
        Run Of;
        std::uint32_t Records = 0;
    };

    [[nodiscard]] static std::uint32_t RecordsOf(const Run& run, CivilSeconds clock);

    std::vector<Ended> ended_;
    std::optional<Run> open_;
};

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_HISTORY_H
