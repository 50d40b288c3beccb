#ifndef ORVIA_FLOW_POWER_LAW_FIT_H
#define ORVIA_FLOW_POWER_LAW_FIT_H

#include <optional>
#include <span>
#include <vector>

#include "logger/logger_state.h"

// The power law with offset that suits points of level and flow best, and what lies far from it.

/// Q = C (H + A)^B, in the units of the points.
struct PowerLaw {
    double Offset = 0;      ///< A
    double Exponent = 0;    ///< B
    double Multiplier = 0;  ///< C

    [[nodiscard]] double Flow(double level) const;
};

/// Fewest points that a law is fitted to: it has three numbers, and one point more may say whether
/// it fits.
inline constexpr std::size_t FewestFitPoints = 4;

/// The law with the least squares of the relative residuals, B held to 0.5 to 5 as open channels
/// have it; nothing for fewer than FewestFitPoints, levels that do not differ, or flows that are
/// not above 0. `weights`, one a point, tell how much each counts (empty: all alike; 0: not at
/// all).
[[nodiscard]] std::optional<PowerLaw> FitPowerLaw(std::span<const FlowTablePoint> points,
                                                  const std::vector<double>& weights = {});

/// A law and how the points lie about it.
struct PowerLawFit {
    PowerLaw Law;
    std::vector<double> Residuals;  ///< percent by which a flow exceeds that of the law
    std::vector<bool> Outliers;     ///< far from the law, which was fitted to the others
    double Spread = 0;              ///< standard deviation of the others' residuals, percent
};

/// The law of the points without those that are far from what the others suggest. It begins with
/// the law that most points lie near, of the laws through four of them each that with the least
/// median of residuals (P. J. Rousseeuw and A. M. Leroy, "Robust Regression and Outlier Detection",
/// 1987), and takes in all points that can be of one law with these; an outlier is 2 % off at
/// least. The points are in the order of their levels.
[[nodiscard]] std::optional<PowerLawFit> FitWithoutOutliers(std::span<const FlowTablePoint> points);

#endif  // ORVIA_FLOW_POWER_LAW_FIT_H
