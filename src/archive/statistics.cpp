#include "archive/statistics.h"

#include "archive/integrals.h"

namespace {

/// The sums of a column's records in a period.
struct RecordSums {
    ExactSum Sum;
    bool Timeless = false;
};

void TakeRecord(double value, std::size_t record, ColumnStatistics& found) {
    ++found.Count;
    if (!found.Minimum || value < found.Minimum->Value) {
        found.Minimum = Extreme{value, record};
    }
    if (!found.Maximum || value > found.Maximum->Value) {
        found.Maximum = Extreme{value, record};
    }
}

std::optional<double> MeanOf(const ColumnStatistics& found, const RecordSums& records,
                             const Integral& integral) {
    if ((records.Timeless || integral.Timeless) && integral.Covered > 0) {
        return integral.Sum.Divided(static_cast<double>(integral.Covered));
    }
    return found.Count == 0 ? std::nullopt
                            : std::optional(records.Sum.Divided(static_cast<double>(found.Count)));
}

/// The moments at which records are due: `last` and each interval before it, behind `first`.
class DueCount {
 public:
    DueCount(const Periods& periods, std::vector<Attendance>& counts)
        : periods_(periods), counts_(counts) {}

    /// One at a moment.
    void At(Moment moment) {
        if (periods_.Hold(moment)) {
            ++counts_[periods_.NumberOf(moment)].Due;
        }
    }
    /// At `last` and each interval before it, above `above`.
    void Back(Moment above, Moment last, Moment interval) {
        periods_.Cut(above, last + 1, [&](std::size_t number, Moment begin, Moment end) {
            const Moment lowest = std::max(begin, above + 1);
            const Moment highest = std::min(end - 1, last);
            counts_[number].Due +=
                Steps(last - lowest, interval) - Steps(last - highest - 1, interval);
        });
    }
    /// So many to each second from `from` to `to`.
    void Throughout(Moment from, Moment to, Moment rate) {
        periods_.Cut(from, to, [&](std::size_t number, Moment begin, Moment end) {
            counts_[number].Due += (end - begin) * rate;
        });
    }

 private:
    /// How many of 0, interval, 2 intervals... are no more than `distance`.
    static Moment Steps(Moment distance, Moment interval) {
        return distance < 0 ? 0 : distance / interval + 1;
    }

    const Periods& periods_;
    std::vector<Attendance>& counts_;
};

void CountRecord(const SeriesTimes& times, std::size_t record, const Periods& periods,
                 std::vector<Attendance>& counts) {
    const Moment moment = times.At(record);
    if (periods.Hold(moment)) {
        Attendance& period = counts[periods.NumberOf(moment)];
        ++period.Records;
        period.Scheduled += times.Spacing(record).IsScheduled() ? 1 : 0;
    }
}

void CountBreak(const SeriesTimes& times, std::size_t record, const Periods& periods,
                std::vector<Attendance>& counts) {
    const PairKind kind = times.Pair(record);
    if (kind == PairKind::Gap && periods.Hold(times.At(record - 1))) {
        ++counts[periods.NumberOf(times.At(record - 1))].Gaps;
    }
    if (kind == PairKind::SetBack && periods.Hold(times.At(record))) {
        ++counts[periods.NumberOf(times.At(record))].ClockChanges;
    }
}

/// What is due behind the record before, up to this one.
void CountDue(const SeriesTimes& times, std::size_t record, DueCount& due) {
    const RecordSpacing& spacing = times.Spacing(record);
    const Moment moment = times.At(record);
    if (!spacing.IsScheduled()) {
        return;
    }
    if (record == 0 || times.Pair(record) != PairKind::Gap) {
        due.At(moment);
    } else if (spacing.Kind == RecordSpacing::Style::Fast) {
        due.Throughout(times.At(record - 1) + 1, moment, RecordSpacing::RecordsASecond);
        due.At(moment);
    } else {
        const Moment half = (spacing.Interval - 1) / 2;  // as far as half an interval, inside
        due.Back(times.At(record - 1) + half, moment, spacing.Interval);
    }
}

/// What is due before the earliest record and behind the latest.
void CountAround(const SeriesTimes& times, const Periods& periods, DueCount& due) {
    const auto all = times.All();
    const auto [earliest, latest] = std::minmax_element(all.begin(), all.end());
    const Period whole = periods.Whole();
    const RecordSpacing& first = times.Spacing(static_cast<std::size_t>(earliest - all.begin()));
    const RecordSpacing& last = times.Spacing(static_cast<std::size_t>(latest - all.begin()));
    if (first.Kind == RecordSpacing::Style::Fixed) {
        due.Back(whole.Begin - 1, *earliest - first.Interval, first.Interval);
    } else if (first.IsScheduled()) {
        due.Throughout(whole.Begin, *earliest, RecordSpacing::RecordsASecond);
    }
    if (last.Kind == RecordSpacing::Style::Fixed) {
        const Moment steps = std::max<Moment>(whole.End - 1 - *latest, 0) / last.Interval;
        due.Back(*latest, *latest + steps * last.Interval, last.Interval);
    } else if (last.IsScheduled()) {
        due.Throughout(*latest + 1, whole.End, RecordSpacing::RecordsASecond);
    }
}

}  // namespace

std::vector<ColumnStatistics> StatisticsOf(const SeriesValues& values, std::size_t column,
                                           const Periods& periods) {
    std::vector<ColumnStatistics> statistics(periods.Count());
    std::vector<RecordSums> sums(periods.Count());
    const SeriesTimes& times = values.Times();
    for (std::size_t record = 0; record < values.RecordCount(); ++record) {
        if (periods.Hold(times.At(record)) && values.Has(column, record)) {
            const std::size_t number = periods.NumberOf(times.At(record));
            const double value = values.At(column, record);
            TakeRecord(value, record, statistics[number]);
            sums[number].Sum.Add(value);
            sums[number].Timeless |= !times.Spacing(record).IsScheduled();
        }
    }
    // Only where time counts in a mean.
    const std::vector<Integral> integrals = times.AreScheduled()
                                                ? std::vector<Integral>(periods.Count())
                                                : IntegrateColumn(values, column, periods);
    for (std::size_t number = 0; number < periods.Count(); ++number) {
        statistics[number].Mean = MeanOf(statistics[number], sums[number], integrals[number]);
    }
    return statistics;
}

std::optional<double> Attendance::Completeness() const {
    return Due == 0 ? std::nullopt
                    : std::optional(static_cast<double>(Scheduled) / static_cast<double>(Due));
}

std::vector<Attendance> AttendanceOf(const SeriesTimes& times, const Periods& periods) {
    std::vector<Attendance> counts(periods.Count());
    if (times.Count() == 0 || periods.Count() == 0) {
        return counts;
    }
    DueCount due(periods, counts);
    for (std::size_t record = 0; record < times.Count(); ++record) {
        CountRecord(times, record, periods, counts);
        CountDue(times, record, due);
        if (record > 0) {
            CountBreak(times, record, periods, counts);
        }
    }
    CountAround(times, periods, due);
    return counts;
}
