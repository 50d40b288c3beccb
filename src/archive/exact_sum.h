#ifndef ORVIA_ARCHIVE_EXACT_SUM_H
#define ORVIA_ARCHIVE_EXACT_SUM_H

#include <algorithm>
#include <cmath>
#include <limits>

/// A sum that keeps what each addition rounds away, so that the sum of a month and the sum of its
/// days agree far beyond the digits that are printed (Neumaier, Zeitschrift für Angewandte
/// Mathematik und Mechanik 54, 1974). It neither overflows nor loses digits for terms up to the
/// largest double and a billion seconds times a billion terms: it is kept in smaller units.
class ExactSum {
 public:
    /// Adds `value` times `weight`, both finite; weights are seconds or counts, below 1E+12.
    void Add(double value, double weight = 1) {
        const double term = value * Smaller * weight;
        const double sum = sum_ + term;
        const bool larger = std::fabs(sum_) >= std::fabs(term);
        lost_ += larger ? (sum_ - sum) + term : (term - sum) + sum_;
        sum_ = sum;
    }

    /// The sum divided by `divisor`, above 0; what no double holds is the largest one.
    [[nodiscard]] double Divided(double divisor) const {
        constexpr double Largest = std::numeric_limits<double>::max();
        return std::clamp((sum_ + lost_) / divisor / Smaller, -Largest, Largest);
    }

 private:
    // A power of two rounds nothing.
    static constexpr double Smaller = 0x1p-160;

    double sum_ = 0;
    double lost_ = 0;
};

#endif  // ORVIA_ARCHIVE_EXACT_SUM_H
