#include "simulator/true_flow.h"

#include <algorithm>
#include <cmath>

namespace simulator {

namespace {

constexpr double InchesPerFoot = 12.0;
constexpr double MetersPerFoot = 0.3048;
constexpr double CentimetersPerMeter = 100.0;
constexpr double ManningFactor = 1.486;
constexpr double RadiusExponent = 0.667;
constexpr double SmallestDiameter = 0.01;
constexpr double SmallestRoughness = 0.001;

double ToFeet(double length, LengthUnit unit) {
    switch (unit) {
        case LengthUnit::Inch:
            return length / InchesPerFoot;
        case LengthUnit::Meter:
            return length / MetersPerFoot;
        case LengthUnit::Centimeter:
            return length / CentimetersPerMeter / MetersPerFoot;
        case LengthUnit::Foot:
            break;
    }
    return length;
}

LengthUnit UnitNamed(const std::string& name) {
    const std::size_t first = name.find_first_not_of(' ');
    switch (first == std::string::npos ? ' ' : name[first]) {
        case 'i':
        case 'I':
            return LengthUnit::Inch;
        case 'm':
        case 'M':
            return LengthUnit::Meter;
        case 'c':
        case 'C':
            return LengthUnit::Centimeter;
        default:
            return LengthUnit::Foot;
    }
}

double FromCfs(double rate, FlowUnit unit) {
    switch (unit) {
        case FlowUnit::Gpm:
            return rate * 448.8;
        case FlowUnit::Mgd:
            return rate * 0.6463;
        case FlowUnit::Cms:
            return rate * 0.02832;
        case FlowUnit::Lps:
            return rate * 7.4805 * 3.7854;
        case FlowUnit::Cfs:
            break;
    }
    return rate;
}

/// A circular pipe filled to `depth`: the wetted arc spans twice the angle t at the centre, with
/// cos t = 1 - 2 depth / diameter. Perimeter t D, area (t - sin t cos t) D^2 / 4.
Flow PipeFlow(const FlowSettings& pipe, double depth) {
    const double diameter = std::max(ToFeet(pipe.ManningsD, pipe.ManningsDType), SmallestDiameter);
    const double roughness = std::max(pipe.ManningsN, SmallestRoughness);
    const double slope = pipe.ManningsSPercent ? pipe.ManningsS / 100.0 : pipe.ManningsS;
    const double filled = std::clamp(depth / diameter, 0.0, 1.0);
    const double angle = std::acos(1 - 2 * filled);
    const double perimeter = angle * diameter;
    const double area = (angle - std::sin(angle) * std::cos(angle)) * diameter * diameter / 4;
    const double velocity =
        ManningFactor / roughness * std::pow(area / perimeter, RadiusExponent) * std::sqrt(slope);
    return {velocity * area, velocity};
}

/// Straight lines from the origin through the points and on beyond the last.
double TableFlow(const std::vector<RatingPoint>& points, double level) {
    if (points.size() < 2) {
        return 0;
    }
    RatingPoint low;
    RatingPoint high = points.front();
    for (std::size_t i = 1; i < points.size() && level >= high.Level; ++i) {
        low = high;
        high = points[i];
    }
    if (low.Level >= high.Level) {
        return low.Flow;
    }
    return low.Flow + (high.Flow - low.Flow) * (level - low.Level) / (high.Level - low.Level);
}

double RatedFlow(const FlowSettings& settings, const SiteRating& rating, double level) {
    if (!rating.Points.empty() || settings.Mode == FlowMode::Table) {
        return TableFlow(rating.Points, level);
    }
    return rating.Multiplier * std::pow(level + rating.Offset, rating.Exponent);
}

}  // namespace

Flow TrueFlow(const FlowSettings& settings, const SiteRating& rating, double level,
              const std::string& levelUnits) {
    const double bare = ToFeet(level, UnitNamed(levelUnits));
    const double head = bare + ToFeet(settings.LevelOffset, settings.LevelOffsetType);
    // A dry channel stays dry, whatever the offset of its sensor.
    if (settings.Mode == FlowMode::None || !(bare > 0) || !(head > 0)) {
        return {};
    }
    Flow flow = settings.Mode == FlowMode::Manning ? PipeFlow(settings, head)
                                                   : Flow{RatedFlow(settings, rating, head), 0};
    flow.Rate = FromCfs(flow.Rate, settings.FlowUnits);
    if (settings.VelUnits == VelocityUnit::Mps) {
        flow.Velocity *= MetersPerFoot;
    }
    return std::isfinite(flow.Rate) && std::isfinite(flow.Velocity) ? flow : Flow{};
}

}  // namespace simulator
