#include "flow/power_law_fit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <utility>

namespace {

constexpr double LeastExponent = 0.5;
constexpr double GreatestExponent = 5;
constexpr double OutlierFactor = 3.5;
constexpr double MedianToDeviation = 1.4826;  // of a normal distribution
constexpr double LeastOutlier = 0.02;
constexpr std::size_t NumbersOfLaw = 3;

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

/// Sizes of the residuals in logarithms; of no bound where the law has no flow.
std::vector<double> Sizes(std::span<const FlowTablePoint> points, const PowerLaw& law) {
    const double multiplier = std::log(law.Multiplier);
    std::vector<double> sizes;
    sizes.reserve(points.size());
    for (const FlowTablePoint& point : points) {
        const double head = point.Level + law.Offset;
        const double size =
            std::fabs(std::log(point.Flow) - multiplier - law.Exponent * std::log(head));
        sizes.push_back(head > 0 && std::isfinite(size) ? size : HUGE_VAL);
    }
    return sizes;
}

/// The size within which a law has half of the points that do not serve to tell its numbers.
double SizeOfMost(std::vector<double> sizes) {
    const std::size_t most = (sizes.size() + NumbersOfLaw + 1) / 2;
    const auto last = sizes.begin() + static_cast<std::ptrdiff_t>(most - 1);
    std::nth_element(sizes.begin(), last, sizes.end());
    return *last;
}

/// Calls `use` with places of four points: with every four if they are few, else with some that
/// lie in the four quarters, the same ones each time.
template <typename Use>
void ForFours(std::size_t count, Use use) {
    constexpr std::size_t Few = 12;
    constexpr int Draws = 500;
    if (count > Few) {
        std::minstd_rand random;
        const auto draw = [&](std::size_t quarter) {
            const std::size_t from = count * quarter / 4;
            return from + random() % (count * (quarter + 1) / 4 - from);
        };
        for (int i = 0; i < Draws; ++i) {
            use(std::array{draw(0), draw(1), draw(2), draw(3)});
        }
        return;
    }
    for (std::size_t a = 0; a < count; ++a) {
        for (std::size_t b = a + 1; b < count; ++b) {
            for (std::size_t c = b + 1; c < count; ++c) {
                for (std::size_t d = c + 1; d < count; ++d) {
                    use(std::array{a, b, c, d});
                }
            }
        }
    }
}

/// A law and the deviation of the points near it, in logarithms.
struct LawOfMost {
    PowerLaw Law;
    double Deviation = HUGE_VAL;
};

/// A law that most points lie near, whatever the others do.
std::optional<LawOfMost> FindLawOfMost(std::span<const FlowTablePoint> points) {
    const std::optional<PowerLaw> ofAll = FitPowerLaw(points);
    if (!ofAll) {
        return std::nullopt;
    }
    const auto deviation = [points](const PowerLaw& law) {
        return MedianToDeviation * SizeOfMost(Sizes(points, law));
    };
    LawOfMost best{*ofAll, deviation(*ofAll)};
    ForFours(points.size(), [&](const std::array<std::size_t, 4>& places) {
        std::array<FlowTablePoint, 4> four;
        std::transform(places.begin(), places.end(), four.begin(),
                       [points](std::size_t place) { return points[place]; });
        const std::optional<PowerLaw> law = FitPowerLaw(four);
        const double size = law ? deviation(*law) : HUGE_VAL;
        if (size < best.Deviation) {
            best = {*law, size};
        }
    });
    return best;
}

/// The size of a residual beyond which a point is an outlier of a law that `others` points of that
/// deviation suggest. The fewer they are, the less they tell: the factors follow Student's
/// distribution.
double OutlierLimit(double deviation, std::size_t others) {
    const double spare = others > NumbersOfLaw ? static_cast<double>(others - NumbersOfLaw) : 1;
    const double factor = OutlierFactor * (1 + 3 / spare + 10 / (spare * spare));
    return std::max(LeastOutlier, factor * deviation);
}

/// The law of the points of weight 1, and how these lie about it.
struct WeighedFit {
    std::vector<double> Weights;
    PowerLaw Law;
    double Squares = 0;  ///< sum of those of their residuals
    std::size_t Count = 0;

    /// Standard deviation; 0 where no point is left to tell it.
    [[nodiscard]] double Deviation() const {
        return Count > NumbersOfLaw ? std::sqrt(Squares / static_cast<double>(Count - NumbersOfLaw))
                                    : 0;
    }
};

std::optional<WeighedFit> Fit(std::span<const FlowTablePoint> points, std::vector<double> weights) {
    const std::optional<PowerLaw> law = FitPowerLaw(points, weights);
    if (!law) {
        return std::nullopt;
    }
    WeighedFit fit{std::move(weights), *law};
    const std::vector<double> sizes = Sizes(points, *law);
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (fit.Weights[i] > 0) {
            fit.Squares += sizes[i] * sizes[i];
            ++fit.Count;
        }
    }
    return fit;
}

/// Takes points back into a fit, the nearest first, as long as the others can be of one law with
/// them: a law that was sought among few points leaves out some that only chance set apart, most of
/// them at the ends.
void TakeBack(std::span<const FlowTablePoint> points, std::vector<std::size_t> far,
              const std::vector<double>& sizes, WeighedFit& fit) {
    std::sort(far.begin(), far.end(),
              [&sizes](std::size_t a, std::size_t b) { return sizes[a] < sizes[b]; });
    // Where more are left out than chance does, one law is not what they follow; each costs a fit.
    constexpr std::size_t MostTakenBack = 8;
    far.resize(std::min(far.size(), MostTakenBack));
    for (const std::size_t place : far) {
        std::vector<double> weights = fit.Weights;
        weights[place] = 1;
        std::optional<WeighedFit> with = Fit(points, std::move(weights));
        const double limit = OutlierLimit(fit.Deviation(), fit.Count);
        if (!with || with->Squares - fit.Squares > limit * limit) {
            return;
        }
        fit = *std::move(with);
    }
}

PowerLawFit Told(std::span<const FlowTablePoint> points, const WeighedFit& fit) {
    PowerLawFit told;
    told.Law = fit.Law;
    told.Spread = 100 * fit.Deviation();
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double flow = fit.Law.Flow(points[i].Level);
        told.Residuals.push_back(flow > 0 ? 100 * (points[i].Flow / flow - 1) : 0);
        told.Outliers.push_back(!(fit.Weights[i] > 0));
    }
    return told;
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
    const std::optional<LawOfMost> most = FindLawOfMost(points);
    if (!most) {
        return std::nullopt;
    }
    const std::vector<double> sizes = Sizes(points, most->Law);
    const double limit = OutlierLimit(most->Deviation, points.size());
    std::vector<double> weights(points.size(), 1);
    std::vector<std::size_t> far;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (sizes[i] > limit) {
            weights[i] = 0;
            far.push_back(i);
        }
    }
    std::optional<WeighedFit> fit = Fit(points, std::move(weights));
    if (!fit) {
        // So few are near one law that none can be called far from it.
        fit = Fit(points, std::vector<double>(points.size(), 1));
    } else {
        TakeBack(points, std::move(far), sizes, *fit);
    }
    return fit ? std::optional(Told(points, *fit)) : std::nullopt;
}
