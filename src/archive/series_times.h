#ifndef ORVIA_ARCHIVE_SERIES_TIMES_H
#define ORVIA_ARCHIVE_SERIES_TIMES_H

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

#include "archive/record_moment.h"
#include "archive/series.h"

/// How two records, one behind the other in the logger's order, lie in time.
enum class PairKind {
    Joined,  ///< no further apart than the interval tells
    Gap,     ///< records are missing between them
    SetBack  ///< the clock was set back; no gap
};

/// When records of some settings are due.
struct RecordSpacing {
    enum class Style { Fixed, Fast, Unscheduled };

    Style Kind = Style::Unscheduled;
    Moment Interval = 0;  ///< seconds, 1 or more where the style is Fixed

    /// Whether it can be told when records are due: not for logarithmic timing, for logging on
    /// change, and for an interval of nothing.
    [[nodiscard]] bool IsScheduled() const { return Kind != Style::Unscheduled; }

    /// What a step (seconds) to a record of these settings is. More than one and a half times the
    /// interval is a gap; in fast mode, ten records to each second, two seconds or more.
    [[nodiscard]] PairKind KindOf(Moment step) const {
        if (step < 0) {
            return PairKind::SetBack;
        }
        const bool gap = (Kind == Style::Fixed && 2 * step > 3 * Interval) ||
                         (Kind == Style::Fast && step >= FastGap);
        return gap ? PairKind::Gap : PairKind::Joined;
    }

    static constexpr Moment FastGap = 2;          ///< seconds
    static constexpr Moment RecordsASecond = 10;  ///< in fast mode
};

/// How the settings space their records. Logging on change goes before the timing; a timing that
/// is neither logarithmic nor fast is the sample interval.
[[nodiscard]] RecordSpacing SpacingOf(const LoggerRecord& logger);

/// Times of a series' records, in the logger's order, and how they lie together. Keeps eight bytes
/// a record, and a reference to the series, which must outlive it.
class SeriesTimes {
 public:
    explicit SeriesTimes(const Series& series);

    [[nodiscard]] std::size_t Count() const { return times_.size(); }
    [[nodiscard]] std::span<const Moment> All() const { return times_; }
    /// Time of record 0 to Count - 1.
    [[nodiscard]] Moment At(std::size_t record) const { return times_[record]; }
    /// How its settings space a record.
    [[nodiscard]] const RecordSpacing& Spacing(std::size_t record) const {
        const std::size_t settings = series_.Records[record].Settings;
        return settings < spacings_.size() ? spacings_[settings] : unknown_;
    }
    /// Whether all settings tell when records are due.
    [[nodiscard]] bool AreScheduled() const {
        return std::all_of(spacings_.begin(), spacings_.end(),
                           [](const RecordSpacing& spacing) { return spacing.IsScheduled(); });
    }
    /// How record - 1 and record lie together; record 1 to Count - 1.
    [[nodiscard]] PairKind Pair(std::size_t record) const {
        return Spacing(record).KindOf(times_[record] - times_[record - 1]);
    }

 private:
    const Series& series_;
    std::vector<Moment> times_;
    std::vector<RecordSpacing> spacings_;  ///< by settings
    RecordSpacing unknown_;                ///< of a record whose settings are missing
};

#endif  // ORVIA_ARCHIVE_SERIES_TIMES_H
