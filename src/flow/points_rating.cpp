#include <algorithm>
#include <cmath>

#include "common/number_text.h"
#include "flow/power_law_fit.h"
#include "flow/rating_method.h"
#include "flow/unit_names.h"

namespace {

constexpr double GreatestFigure = 1e9;  // feet or cfs: beyond any channel

enum class Curve { Straight, Logarithms, PowerLaw };

constexpr std::size_t MostSaid = 5;  // of one kind of remark

std::string CountText(std::size_t count) {
    return IntegerToText(static_cast<std::int64_t>(count));
}

/// Adds the first of remarks of one kind and the number of the others.
void SayFirst(RatingMethod& method, const std::vector<std::string>& texts) {
    for (std::size_t i = 0; i < std::min(texts.size(), MostSaid); ++i) {
        Say(method, RatingWeight::Beyond, texts[i]);
    }
    if (texts.size() > MostSaid) {
        Say(method, RatingWeight::Beyond,
            "The same holds for " + CountText(texts.size() - MostSaid) + " more.");
    }
}

/// The rows in feet and cfs by level, without those at or below 0 and with one of each level; tells
/// of what was done to them.
std::vector<FlowTablePoint> PointsInOrder(const RatingDevice& device, RatingMethod& method) {
    std::vector<FlowTablePoint> points;
    std::vector<std::string> leftOut;
    for (std::size_t i = 0; i < device.Rows.size(); ++i) {
        const double level = config::LengthToFeet(device.Rows[i][0], device.LengthUnit);
        const double flow = FlowToCfs(device.Rows[i][1], device.FlowUnit);
        const bool held = std::fabs(level) <= GreatestFigure && std::fabs(flow) <= GreatestFigure;
        if (!held || (level > 0 && flow <= 0)) {
            leftOut.push_back("Row " + CountText(i + 1) +
                              " has no flow that could be; it was left out.");
        } else if (level > 0) {
            points.push_back({level, flow});
        }
    }
    SayFirst(method, leftOut);
    const auto lower = [](const FlowTablePoint& a, const FlowTablePoint& b) {
        return a.Level < b.Level;
    };
    if (!std::is_sorted(points.begin(), points.end(), lower)) {
        Say(method, RatingWeight::Note, "The rows were put in the order of their levels.");
        std::stable_sort(points.begin(), points.end(), lower);
    }
    return points;
}

/// Rows of one level become one with their mean flow.
void JoinEqualLevels(std::vector<FlowTablePoint>& points, RatingMethod& method) {
    std::vector<FlowTablePoint> joined;
    for (std::size_t i = 0; i < points.size();) {
        double sum = 0;
        std::size_t next = i;
        while (next < points.size() && points[next].Level == points[i].Level) {
            sum += points[next++].Flow;
        }
        joined.push_back({points[i].Level, sum / static_cast<double>(next - i)});
        i = next;
    }
    if (joined.size() < points.size()) {
        Say(method, RatingWeight::Note, "Rows of one level count as one, with their mean flow.");
    }
    points = std::move(joined);
}

void TellOrder(const std::vector<FlowTablePoint>& points, const RatingDevice& device,
               RatingMethod& method) {
    std::vector<std::string> places;
    for (std::size_t i = 1; i < points.size(); ++i) {
        if (points[i].Flow <= points[i - 1].Flow) {
            places.push_back("The flow does not rise from " +
                             LengthText(device, points[i - 1].Level * config::MetersPerFoot) +
                             " to " + LengthText(device, points[i].Level * config::MetersPerFoot) +
                             ".");
        }
    }
    SayFirst(method, places);
}

void TellFit(const std::vector<FlowTablePoint>& points, const PowerLawFit& fit,
             const RatingDevice& device, RatingMethod& method) {
    std::vector<std::string> outliers;
    for (std::size_t i = 0; i < points.size(); ++i) {
        method.Told.Residuals.push_back(
            {points[i].Level, points[i].Flow, fit.Residuals[i], fit.Outliers[i]});
        if (fit.Outliers[i]) {
            outliers.push_back(
                "The flow at " + LengthText(device, points[i].Level * config::MetersPerFoot) +
                " lies " + FormatFixed(std::fabs(fit.Residuals[i]), 1) + " % " +
                (fit.Residuals[i] > 0 ? "above" : "below") + " what the others suggest.");
        }
    }
    SayFirst(method, outliers);
    Say(method, RatingWeight::Note,
        "The points suggest Q = C (H + A)^B in feet and cubic feet per second with A, B, C = " +
            DoubleToText(RoundTo(fit.Law.Offset, 6)) + ", " +
            DoubleToText(RoundTo(fit.Law.Exponent, 6)) + ", " +
            DoubleToText(RoundTo(fit.Law.Multiplier, 6)) + ".");
}

/// Straight in logarithms between the points; heads outside them continue the nearest stretch.
double LogFlow(const std::vector<FlowTablePoint>& points, double level) {
    std::size_t i = 1;
    while (i + 1 < points.size() && points[i].Level < level) {
        ++i;
    }
    const FlowTablePoint& low = points[i - 1];
    const FlowTablePoint& high = points[i];
    const double exponent = std::log(high.Flow / low.Flow) / std::log(high.Level / low.Level);
    return low.Flow * std::pow(level / low.Level, exponent);
}

/// A method over heads in metres for a curve over feet.
template <typename Function>
std::function<double(double)> InMeters(const Function& cfs) {
    return
        [cfs](double head) { return cfs(head / config::MetersPerFoot) * CubicMetersPerCubicFoot; };
}

void GivePoints(const std::vector<FlowTablePoint>& points, RatingMethod& method) {
    for (const FlowTablePoint& point : points) {
        method.Points.Append({RoundTo(point.Level, 8), RoundTo(point.Flow, 8)});
    }
    method.Told.Equations = {"Straight lines between the points"};
}

}  // namespace

RatingMethod PointsMethod(const RatingDevice& device) {
    RatingMethod method;
    std::vector<FlowTablePoint> points = PointsInOrder(device, method);
    JoinEqualLevels(points, method);
    if (points.size() < 2) {
        RatingMethod refused = Refuse("A table needs two points of different level at least.");
        refused.Told.Remarks.insert(refused.Told.Remarks.end(), method.Told.Remarks.begin(),
                                    method.Told.Remarks.end());
        return refused;
    }
    TellOrder(points, device, method);
    method.First = method.Least = points.front().Level * config::MetersPerFoot;
    method.Last = method.Greatest = points.back().Level * config::MetersPerFoot;
    method.Falls = true;
    method.Told.Sources = {"The operator's own points"};
    method.Told.UncertaintyText = "that of the points";
    const std::optional<PowerLawFit> fit = FitWithoutOutliers(points);
    if (fit) {
        TellFit(points, *fit, device, method);
    }
    switch (static_cast<Curve>(static_cast<int>(RatingValue(device, "curve")))) {
        case Curve::Straight:
            GivePoints(points, method);
            break;
        case Curve::Logarithms:
            method.Flow = InMeters([points](double level) { return LogFlow(points, level); });
            for (const FlowTablePoint& point : points) {
                method.Bends.push_back(point.Level * config::MetersPerFoot);
            }
            method.Told.Equations = {"Straight lines between the points' logarithms"};
            break;
        case Curve::PowerLaw:
            if (!fit) {
                return RefuseFor(device, "curve", "A power law needs four points at least.");
            }
            method.Flow = InMeters([law = fit->Law](double level) { return law.Flow(level); });
            method.Told.Equations = {"Power law with offset, least squares of the logarithms"};
            method.Told.Uncertainty = RoundTo(2 * fit->Spread, 2);
            method.Told.UncertaintyText = "twice the standard deviation of the points' residuals";
            break;
    }
    return method;
}
