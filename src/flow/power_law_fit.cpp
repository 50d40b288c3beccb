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

// The offset is sought by the distance that it leaves below the lowest level, as a power of ten of
// the range of levels: on a grid, then between the neighbours of the best by golden sections.
constexpr double FirstPower = -4;
constexpr double LastPower = 1.5;
constexpr int PowerSteps = 33;
constexpr int GoldenSteps = 30;

struct Candidate {
    PowerLaw Law;
    double Squares = HUGE_VAL;
};

/// The points with their weights and the logarithms of their flows.
class Search {
 public:
    Search(std::span<const FlowTablePoint> points, const std::vector<double>& weights)
        : points_(points), weights_(weights) {
        if (weights_.empty()) {
            weights_.assign(points.size(), 1);
        }
        logs_.reserve(points.size());
        for (std::size_t i = 0; i < points.size(); ++i) {
            logs_.push_back(weights_[i] > 0 ? std::log(points[i].Flow) : 0);
        }
    }

    /// Whether a law can be fitted at all.
    [[nodiscard]] bool Sound() {
        std::size_t count = 0;
        for (std::size_t i = 0; i < points_.size(); ++i) {
            if (weights_[i] <= 0) {
                continue;
            }
            if (!std::isfinite(logs_[i]) || !std::isfinite(points_[i].Level)) {
                return false;
            }
            ++count;
            lowest_ = std::min(lowest_, points_[i].Level);
            highest_ = std::max(highest_, points_[i].Level);
        }
        return count >= FewestFitPoints && highest_ > lowest_ && std::isfinite(highest_ - lowest_);
    }

    /// The best law whose offset leaves that power of ten of the range below the lowest level: a
    /// straight line through the logarithms.
    [[nodiscard]] Candidate At(double power) const {
        const double offset = (highest_ - lowest_) * std::pow(10.0, power) - lowest_;
        std::vector<double> x(points_.size());
        double sum = 0;
        double sumX = 0;
        double sumY = 0;
        for (std::size_t i = 0; i < points_.size(); ++i) {
            if (weights_[i] > 0) {
                x[i] = std::log(points_[i].Level + offset);
                sum += weights_[i];
                sumX += weights_[i] * x[i];
                sumY += weights_[i] * logs_[i];
            }
        }
        return Line(x, offset, sumX / sum, sumY / sum);
    }

 private:
    [[nodiscard]] Candidate Line(const std::vector<double>& x, double offset, double meanX,
                                 double meanY) const {
        double xx = 0;
        double xy = 0;
        double yy = 0;
        for (std::size_t i = 0; i < points_.size(); ++i) {
            if (weights_[i] > 0) {
                const double dx = x[i] - meanX;
                const double dy = logs_[i] - meanY;
                xx += weights_[i] * dx * dx;
                xy += weights_[i] * dx * dy;
                yy += weights_[i] * dy * dy;
            }
        }
        Candidate result;
        if (xx > 0) {
            const double exponent = std::clamp(xy / xx, LeastExponent, GreatestExponent);
            result.Law = {offset, exponent, std::exp(meanY - exponent * meanX)};
            result.Squares = yy - 2 * exponent * xy + exponent * exponent * xx;
        }
        const bool sound = std::isfinite(result.Squares) && std::isfinite(result.Law.Multiplier);
        return sound ? result : Candidate{};
    }

    std::span<const FlowTablePoint> points_;
    std::vector<double> weights_;
    std::vector<double> logs_;
    double lowest_ = HUGE_VAL;
    double highest_ = -HUGE_VAL;
};

double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Sizes of the residuals in logarithms.
std::vector<double> Residuals(std::span<const FlowTablePoint> points, const PowerLaw& law) {
    std::vector<double> residuals;
    residuals.reserve(points.size());
    for (const FlowTablePoint& point : points) {
        residuals.push_back(std::fabs(std::log(point.Flow / law.Flow(point.Level))));
    }
    return residuals;
}

/// The law with about the least sum of residuals, which a few far points hardly draw: squares, each
/// weighed by one over the residual that the law before left it.
std::optional<PowerLaw> FitMostPoints(std::span<const FlowTablePoint> points) {
    constexpr int Rounds = 6;
    constexpr double LeastResidual = 0.002;
    std::optional<PowerLaw> law = FitPowerLaw(points);
    for (int i = 0; i < Rounds && law; ++i) {
        std::vector<double> weights = Residuals(points, *law);
        for (double& weight : weights) {
            weight = std::isfinite(weight) ? 1 / std::max(weight, LeastResidual) : 0;
        }
        const std::optional<PowerLaw> next = FitPowerLaw(points, weights);
        if (!next) {
            break;
        }
        law = next;
    }
    return law;
}

}  // namespace

double PowerLaw::Flow(double level) const {
    return level + Offset > 0 ? Multiplier * std::pow(level + Offset, Exponent) : 0;
}

std::optional<PowerLaw> FitPowerLaw(std::span<const FlowTablePoint> points,
                                    const std::vector<double>& weights) {
    Search search(points, weights);
    if (!search.Sound()) {
        return std::nullopt;
    }
    constexpr double Step = (LastPower - FirstPower) / PowerSteps;
    Candidate best;
    double bestPower = FirstPower;
    for (int i = 0; i <= PowerSteps; ++i) {
        const Candidate candidate = search.At(FirstPower + Step * i);
        if (candidate.Squares < best.Squares) {
            best = candidate;
            bestPower = FirstPower + Step * i;
        }
    }
    const double golden = (std::sqrt(5.0) - 1) / 2;
    double low = bestPower - Step;
    double high = bestPower + Step;
    for (int i = 0; i < GoldenSteps; ++i) {
        const double inner = golden * (high - low);
        const double lower = high - inner;
        const double upper = low + inner;
        if (search.At(lower).Squares <= search.At(upper).Squares) {
            high = upper;
        } else {
            low = lower;
        }
    }
    const Candidate refined = search.At((low + high) / 2);
    const Candidate& result = refined.Squares <= best.Squares ? refined : best;
    return std::isfinite(result.Squares) ? std::optional(result.Law) : std::nullopt;
}

std::optional<PowerLawFit> FitWithoutOutliers(std::span<const FlowTablePoint> points) {
    const std::optional<PowerLaw> first = FitMostPoints(points);
    if (!first) {
        return std::nullopt;
    }
    const std::vector<double> sizes = Residuals(points, *first);
    const double limit = std::max(LeastOutlier, OutlierFactor * MedianToDeviation * Median(sizes));
    PowerLawFit fit;
    std::vector<double> weights;
    for (const double size : sizes) {
        fit.Outliers.push_back(!(size <= limit));
        weights.push_back(size <= limit ? 1 : 0);
    }
    fit.Law = FitPowerLaw(points, weights).value_or(*first);
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
