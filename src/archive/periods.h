#ifndef ORVIA_ARCHIVE_PERIODS_H
#define ORVIA_ARCHIVE_PERIODS_H

#include <algorithm>
#include <cstddef>
#include <vector>

#include "archive/series_times.h"

/// Moments from Begin on, up to but without End. By the records' own time.
struct Period {
    Moment Begin = 0;
    Moment End = 0;

    [[nodiscard]] bool Holds(Moment moment) const { return Begin <= moment && moment < End; }
    [[nodiscard]] bool IsEmpty() const { return End <= Begin; }
    bool operator==(const Period&) const = default;
};

/// The periods that can be asked for by name.
enum class NamedPeriod { All, LastDay, LastWeek, LastMonth };

/// A named period of a series. All reaches from the earliest record to the latest, both inside. The
/// others end with the newest record, inside, which is the last one in the logger's order: a clock
/// that once ran ahead does not decide what is last. They are 24 hours, seven days and a calendar
/// month long. Empty for a series without records.
[[nodiscard]] Period NamedPeriodOf(const SeriesTimes& times, NamedPeriod name);
/// The last day, week or month that ends with the newest record, inside.
[[nodiscard]] Period PeriodUpTo(Moment newest, NamedPeriod name);

/// From one moment to another, the last one without; none if they stand the wrong way round. Cut to
/// what a packed time can tell.
[[nodiscard]] Period PeriodFromTo(Moment from, Moment to);

/// What a report is divided by.
enum class PeriodStep { Day, Week, Month };

/// Periods one behind the other, without holes.
class Periods {
 public:
    /// One period; none if it is empty.
    explicit Periods(const Period& whole);
    /// The days, weeks (from Monday) or months that a period reaches into, the first and the last
    /// cut to it.
    Periods(const Period& whole, PeriodStep step);

    [[nodiscard]] std::size_t Count() const { return bounds_.size() - 1; }
    [[nodiscard]] Period At(std::size_t number) const {
        return {bounds_[number], bounds_[number + 1]};
    }
    [[nodiscard]] Period Whole() const { return {bounds_.front(), bounds_.back()}; }

    /// Whether a period holds the moment.
    [[nodiscard]] bool Hold(Moment moment) const { return Whole().Holds(moment); }
    /// Number of the period that holds a moment that one holds.
    [[nodiscard]] std::size_t NumberOf(Moment moment) const {
        const auto behind = std::upper_bound(bounds_.begin(), bounds_.end(), moment);
        return static_cast<std::size_t>(behind - bounds_.begin()) - 1;
    }
    /// Calls `piece(number, begin, end)` for each part of [from, to] that lies in a period and has
    /// a length, in order.
    template <typename Piece>
    void Cut(Moment from, Moment to, Piece piece) const {
        Moment begin = std::max(from, bounds_.front());
        const Moment last = std::min(to, bounds_.back());
        if (begin >= last) {
            return;
        }
        for (std::size_t number = NumberOf(begin); begin < last; ++number) {
            const Moment end = std::min(last, bounds_[number + 1]);
            piece(number, begin, end);
            begin = end;
        }
    }

 private:
    std::vector<Moment> bounds_;  ///< ascending; one more than periods
};

#endif  // ORVIA_ARCHIVE_PERIODS_H
