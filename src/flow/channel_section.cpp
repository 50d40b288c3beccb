#include "flow/channel_section.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

/// Half the angle that the wetted arc of a circle spans.
double HalfArc(double depth, double diameter) {
    return std::acos(std::clamp(1 - 2 * depth / diameter, -1.0, 1.0));
}

/// Area between the axis of a circle and its arc, from the centre up to `height`.
double UnderArc(double height, double radius) {
    const double at = std::clamp(height, -radius, radius);
    return (at * std::sqrt(radius * radius - at * at) + radius * radius * std::asin(at / radius)) /
           2;
}

/// Angle of an arc's point at `height` above its centre.
double ArcAngle(double height, double radius) {
    return std::asin(std::clamp(height / radius, -1.0, 1.0));
}

// The egg in parts of its height.
constexpr double InvertRadius = 1.0 / 6;
constexpr double InvertEnd = 1.0 / 15;  // where the invert's arc meets the sides'
constexpr double CrownRadius = 1.0 / 3;
constexpr double CrownStart = 2.0 / 3;  // the sides' arcs have their centres at this height
constexpr double SideOffset = 2.0 / 3;  // and that far beyond the axis; their radius is the height

double HalfEgg(double depth) {
    const double up = depth - CrownStart;
    if (depth <= InvertEnd) {
        return std::sqrt(std::max(0.0, depth * (2 * InvertRadius - depth)));
    }
    if (depth < CrownStart) {
        return std::sqrt(1 - up * up) - SideOffset;
    }
    return std::sqrt(std::max(0.0, CrownRadius * CrownRadius - up * up));
}

double HalfEggArea(double depth) {
    double area = UnderArc(std::min(depth, InvertEnd) - InvertRadius, InvertRadius) -
                  UnderArc(-InvertRadius, InvertRadius);
    if (depth > InvertEnd) {
        const double end = std::min(depth, CrownStart);
        area += UnderArc(end - CrownStart, 1) - UnderArc(InvertEnd - CrownStart, 1) -
                SideOffset * (end - InvertEnd);
    }
    if (depth > CrownStart) {
        area += UnderArc(depth - CrownStart, CrownRadius);
    }
    return area;
}

double HalfEggPerimeter(double depth) {
    double length =
        InvertRadius *
        (ArcAngle(std::min(depth, InvertEnd) - InvertRadius, InvertRadius) + std::numbers::pi / 2);
    if (depth > InvertEnd) {
        length += ArcAngle(std::min(depth, CrownStart) - CrownStart, 1) -
                  ArcAngle(InvertEnd - CrownStart, 1);
    }
    if (depth > CrownStart) {
        length += CrownRadius * ArcAngle(depth - CrownStart, CrownRadius);
    }
    return length;
}

/// Depth at which a trapezoid on a sill is as wide as the pipe around it.
double Meeting(const TrapezoidSection& trapezoid, const PipeAboveSill& pipe) {
    double below = 0;
    double above = pipe.Height();
    for (int i = 0; i < 60; ++i) {
        const double middle = (below + above) / 2;
        (trapezoid.Width(middle) < pipe.Width(middle) ? below : above) = middle;
    }
    return below;
}

}  // namespace

double TrapezoidSection::Area(double depth) const {
    const double d = std::max(0.0, depth);
    return (bottom_ + slope_ * d) * d;
}

double TrapezoidSection::Perimeter(double depth) const {
    return bottom_ + 2 * std::max(0.0, depth) * std::sqrt(1 + slope_ * slope_);
}

double TrapezoidSection::Width(double depth) const {
    return bottom_ + 2 * slope_ * std::max(0.0, depth);
}

double CircleSection::Area(double depth) const {
    const double half = HalfArc(depth, diameter_);
    return diameter_ * diameter_ / 4 * (half - std::sin(half) * std::cos(half));
}

double CircleSection::Perimeter(double depth) const {
    return diameter_ * HalfArc(depth, diameter_);
}

double CircleSection::Width(double depth) const {
    return diameter_ * std::sin(HalfArc(depth, diameter_));
}

double USection::Area(double depth) const {
    const double radius = diameter_ / 2;
    return circle_.Area(std::min(depth, radius)) + diameter_ * std::max(0.0, depth - radius);
}

double USection::Perimeter(double depth) const {
    const double radius = diameter_ / 2;
    return circle_.Perimeter(std::min(depth, radius)) + 2 * std::max(0.0, depth - radius);
}

double USection::Width(double depth) const {
    return circle_.Width(std::min(depth, diameter_ / 2));
}

double EggSection::Area(double depth) const {
    return 2 * height_ * height_ * HalfEggArea(std::clamp(depth / height_, 0.0, 1.0));
}

double EggSection::Perimeter(double depth) const {
    return 2 * height_ * HalfEggPerimeter(std::clamp(depth / height_, 0.0, 1.0));
}

double EggSection::Width(double depth) const {
    return 2 * height_ * HalfEgg(std::clamp(depth / height_, 0.0, 1.0));
}

std::vector<double> EggSection::Bends() const {
    return {InvertEnd * height_, CrownStart * height_};
}

PipeAboveSill::PipeAboveSill(double diameter, double sill)
    : pipe_(diameter),
      sill_(std::clamp(sill, 0.0, diameter)),
      filled_(pipe_.Area(sill_)),
      covered_(pipe_.Perimeter(sill_)),
      sillWidth_(pipe_.Width(sill_)) {}

double PipeAboveSill::Area(double depth) const {
    return std::max(0.0, pipe_.Area(sill_ + depth) - filled_);
}

double PipeAboveSill::Perimeter(double depth) const {
    return std::max(0.0, pipe_.Perimeter(sill_ + depth) - covered_) + sillWidth_;
}

double PipeAboveSill::Width(double depth) const {
    return pipe_.Width(sill_ + depth);
}

TrapezoidInPipe::TrapezoidInPipe(double diameter, double sill, double bottom, double slope)
    : trapezoid_(bottom, slope), pipe_(diameter, sill), meeting_(Meeting(trapezoid_, pipe_)) {}

double TrapezoidInPipe::Area(double depth) const {
    const double walls = trapezoid_.Area(std::min(depth, meeting_));
    return depth <= meeting_ ? walls : walls + pipe_.Area(depth) - pipe_.Area(meeting_);
}

double TrapezoidInPipe::Perimeter(double depth) const {
    const double walls = trapezoid_.Perimeter(std::min(depth, meeting_));
    return depth <= meeting_ ? walls : walls + pipe_.Perimeter(depth) - pipe_.Perimeter(meeting_);
}

double TrapezoidInPipe::Width(double depth) const {
    return std::min(trapezoid_.Width(depth), pipe_.Width(depth));
}
