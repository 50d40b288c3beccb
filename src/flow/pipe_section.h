#ifndef ORVIA_FLOW_PIPE_SECTION_H
#define ORVIA_FLOW_PIPE_SECTION_H

#include <cmath>

// Cross-section of a partly full round pipe, by the half angle that the wetted arc spans from the
// invert. All lengths in feet; depths below the invert or above the crown count as empty or full.
// Inline, since a live sample goes through all of it four times.

/// Half a turn, to the digits that the figures of this calculation are told with.
inline constexpr double Pi = 3.14159265358979;

/// The angle in radians whose cosine is `x`: 0 above 0.999999 and Pi below -0.999999, where the
/// arc tangent that it is built from would lose its digits.
[[nodiscard]] inline double ArcCos(double x) {
    constexpr double Limit = 0.999999;
    if (x > Limit) {
        return 0;
    }
    if (x < -Limit) {
        return Pi;
    }
    return std::atan(-x / std::sqrt(-x * x + 1)) + 2 * std::atan(1.0);
}

/// Half the angle that the wetted arc spans, in radians: 0 of an empty pipe, Pi of a full one.
[[nodiscard]] inline double HalfAngle(double depth, double diameter) {
    const double radius = diameter / 2;
    double x = (depth - radius) / radius;
    if (x < -1) {
        x = -1;
    }
    if (x > 1) {
        x = 1;
    }
    return Pi - ArcCos(x);
}

/// Wetted perimeter for a half angle that is known already.
[[nodiscard]] inline double PerimeterAt(double halfAngle, double diameter) {
    return halfAngle * diameter;
}

/// Wetted area, square feet, for a half angle that is known already.
[[nodiscard]] inline double AreaAt(double halfAngle, double diameter) {
    const double radius = diameter / 2;
    return (halfAngle - std::sin(2 * halfAngle) * 0.5) * radius * radius;
}

/// Length of the wetted arc of a pipe.
[[nodiscard]] inline double WettedPerimeter(double depth, double diameter) {
    return PerimeterAt(HalfAngle(depth, diameter), diameter);
}

/// Area of the water in the cross-section of a pipe, square feet.
[[nodiscard]] inline double WettedArea(double depth, double diameter) {
    return AreaAt(HalfAngle(depth, diameter), diameter);
}

#endif  // ORVIA_FLOW_PIPE_SECTION_H
