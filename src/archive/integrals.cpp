#include "archive/integrals.h"

namespace {

/// A straight line between two records, the second one later.
struct Line {
    Moment From;
    Moment To;
    double First;
    double Last;

    /// Weighted so, that the difference of two values need not be a double.
    [[nodiscard]] double At(Moment moment) const {
        const double part = static_cast<double>(moment - From) / static_cast<double>(To - From);
        return First * (1 - part) + Last * part;
    }
};

// Half of each end: the sum of both need not be a double.
void AddPiece(const Line& line, Moment begin, Moment end, Integral& integral) {
    const double seconds = static_cast<double>(end - begin);
    integral.Sum.Add(line.At(begin), seconds / 2);
    integral.Sum.Add(line.At(end), seconds / 2);
    integral.Covered += end - begin;
}

}  // namespace

std::vector<Integral> IntegrateColumn(const SeriesValues& values, std::size_t column,
                                      const Periods& periods) {
    std::vector<Integral> integrals(periods.Count());
    const SeriesTimes& times = values.Times();
    for (std::size_t record = 1; record < values.RecordCount(); ++record) {
        if (times.Pair(record) != PairKind::Joined || times.At(record) == times.At(record - 1) ||
            !values.Has(column, record - 1) || !values.Has(column, record)) {
            continue;
        }
        const Line line{times.At(record - 1), times.At(record), values.At(column, record - 1),
                        values.At(column, record)};
        const bool timeless = !times.Spacing(record).IsScheduled();
        periods.Cut(line.From, line.To, [&](std::size_t number, Moment begin, Moment end) {
            AddPiece(line, begin, end, integrals[number]);
            integrals[number].Timeless |= timeless;
        });
    }
    return integrals;
}
