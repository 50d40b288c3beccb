#ifndef ORVIA_ARCHIVE_INTEGRALS_H
#define ORVIA_ARCHIVE_INTEGRALS_H

#include <vector>

#include "archive/exact_sum.h"
#include "archive/periods.h"
#include "archive/series_values.h"

/// A figure over time, by trapezoids.
struct Integral {
    ExactSum Sum;           ///< of the figure times seconds
    Moment Covered = 0;     ///< seconds over which it was summed
    bool Timeless = false;  ///< part of it is of settings that tell no interval
};

/// Integrates a column over each of the periods: in a straight line between two records that both
/// have the column and are no gap apart; a pair that lies across a bound is cut there. Where the
/// clock was set back nothing is between two records.
[[nodiscard]] std::vector<Integral> IntegrateColumn(const SeriesValues& values, std::size_t column,
                                                    const Periods& periods);

#endif  // ORVIA_ARCHIVE_INTEGRALS_H
