#include "flow/power_law_fit.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double LeastExponent = 0.5;
constexpr double GreatestExponent = 5;
constexpr double OutlierFactor = 3.5;
constexpr double MedianToDeviation = 1.4826;  // of a normal distribution
constexpr double LeastOutlier = 0.02;

struct Candidate {
    PowerLaw Law;
    double Squares = HUGE_VAL;
};

bool Taken(const std::vector<bool>& left, std::size_t i) {
    return left.empty() || !left[i];
}

/// The best law with that offset: a straight line through the logarithms.
Candidate WithOffset(std::span<const FlowTablePoint> points, const std::vector<bool>& left,
                     double offset) {
    double count = 0;
    double sumX = 0;
    double sumY = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (Taken(left, i)) {
            ++count;
            sumX += std::log(points[i].Level + offset);
            sumY += std::log(points[i].Flow);
        }
    }
    const double meanX = sumX / count;
    const double meanY = sumY / count;
    double xx = 0;
    double xy = 0;
    double yy = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (Taken(left, i)) {
            const double x = std::log(points[i].Level + offset) - meanX;
            const double y = std::log(points[i].Flow) - meanY;
            xx += x * x;
            xy += x * y;
            yy += y * y;
        }
    }
    Candidate result;
    if (!(xx > 0)) {
        return result;
    }
    const double exponent = std::clamp(xy / xx, LeastExponent, GreatestExponent);
    result.Law = {offset, exponent, std::exp(meanY - exponent * meanX)};
    result.Squares = yy - 2 * exponent * xy + exponent * exponent * xx;
    return std::isfinite(result.Squares) && std::isfinite(result.Law.Multiplier) ? result
                                                                                 : Candidate{};
}

/// Least and greatest level of the points taken; nothing if they are too few or cannot be fitted.
std::optional<std::array<double, 2>> Levels(std::span<const FlowTablePoint> points,
                                            const std::vector<bool>& left) {
    std::size_t count = 0;
    std::array<double, 2> levels = {HUGE_VAL, -HUGE_VAL};
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (!Taken(left, i)) {
            continue;
        }
        if (!(points[i].Flow > 0) || !std::isfinite(points[i].Flow) ||
            !std::isfinite(points[i].Level)) {
            return std::nullopt;
        }
        ++count;
        levels = {std::min(levels[0], points[i].Level), std::max(levels[1], points[i].Level)};
    }
    if (count < FewestFitPoints || !(levels[1] - levels[0] > 0)) {
        return std::nullopt;
    }
    return levels;
}

double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

std::vector<double> LogResiduals(std::span<const FlowTablePoint> points, const PowerLaw& law) {
    std::vector<double> residuals;
    residuals.reserve(points.size());
    for (const FlowTablePoint& point : points) {
        residuals.push_back(std::log(point.Flow / law.Flow(point.Level)));
    }
    return residuals;
}

/// Which residuals are far beyond the usual one.
std::vector<bool> FarOnes(const std::vector<double>& residuals) {
    std::vector<double> sizes;
    sizes.reserve(residuals.size());
    for (const double residual : residuals) {
        sizes.push_back(std::fabs(residual));
    }
    const double limit = std::max(LeastOutlier, OutlierFactor * MedianToDeviation * Median(sizes));
    std::vector<bool> far;
    far.reserve(sizes.size());
    for (const double size : sizes) {
        far.push_back(!(size <= limit));
    }
    return far;
}

}  // namespace

double PowerLaw::Flow(double level) const {
    return level + Offset > 0 ? Multiplier * std::pow(level + Offset, Exponent) : 0;
}

std::optional<PowerLaw> FitPowerLaw(std::span<const FlowTablePoint> points,
                                    const std::vector<bool>& left) {
    const std::optional<std::array<double, 2>> levels = Levels(points, left);
    if (!levels) {
        return std::nullopt;
    }
    // The offset is sought by the distance that it leaves below the lowest level: on a grid of
    // ratios of the range, then between the neighbours of the best by golden sections.
    const double span = (*levels)[1] - (*levels)[0];
    const auto at = [&](double power) {
        return WithOffset(points, left, span * std::pow(10.0, power) - (*levels)[0]);
    };
    constexpr double First = -4;
    constexpr double Last = 1.5;
    constexpr int Steps = 55;
    constexpr double Step = (Last - First) / Steps;
    Candidate best;
    double bestPower = First;
    for (int i = 0; i <= Steps; ++i) {
        const Candidate candidate = at(First + Step * i);
        if (candidate.Squares < best.Squares) {
            best = candidate;
            bestPower = First + Step * i;
        }
    }
    const double golden = (std::sqrt(5.0) - 1) / 2;
    double low = bestPower - Step;
    double high = bestPower + Step;
    for (int i = 0; i < 60; ++i) {
        const double inner = golden * (high - low);
        const double lower = high - inner;
        const double upper = low + inner;
        if (at(lower).Squares <= at(upper).Squares) {
            high = upper;
        } else {
            low = lower;
        }
    }
    const Candidate refined = at((low + high) / 2);
    const Candidate& result = refined.Squares <= best.Squares ? refined : best;
    return std::isfinite(result.Squares) ? std::optional(result.Law) : std::nullopt;
}

std::optional<PowerLawFit> FitWithoutOutliers(std::span<const FlowTablePoint> points) {
    const std::optional<PowerLaw> first = FitPowerLaw(points);
    if (!first) {
        return std::nullopt;
    }
    PowerLawFit fit;
    fit.Law = *first;
    fit.Outliers = FarOnes(LogResiduals(points, *first));
    if (const std::optional<PowerLaw> second = FitPowerLaw(points, fit.Outliers)) {
        fit.Law = *second;
        // Whether a point was far only because others drew the first law is seen now.
        fit.Outliers = FarOnes(LogResiduals(points, *second));
    } else {
        fit.Outliers.assign(points.size(), false);
    }
    double squares = 0;
    double count = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double flow = fit.Law.Flow(points[i].Level);
        const double share = flow > 0 ? points[i].Flow / flow - 1 : 0;
        fit.Residuals.push_back(100 * share);
        if (!fit.Outliers[i]) {
            squares += share * share;
            ++count;
        }
    }
    constexpr double NumbersOfLaw = 3;
    fit.Spread = count > NumbersOfLaw ? 100 * std::sqrt(squares / (count - NumbersOfLaw)) : 0;
    return fit;
}
