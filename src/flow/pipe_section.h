#ifndef ORVIA_FLOW_PIPE_SECTION_H
#define ORVIA_FLOW_PIPE_SECTION_H

#include <cmath>

// Cross-section of a partly full round pipe, by the half angle that the wetted arc spans from the
// invert. All lengths in feet; depths below the invert or above the crown count as empty or full.

// Tells the compiler that a figure hangs on nothing but the arguments, so that it works out once
// what perimeter and area of one depth both ask for.
#if defined(__GNUC__)
#define ORVIA_FIGURE [[nodiscard, gnu::const]]
#else
#define ORVIA_FIGURE [[nodiscard]]
#endif

/// Half a turn, to the digits that the figures of this calculation are told with.
inline constexpr double Pi = 3.14159265358979;

/// The angle in radians whose cosine is `x`: 0 above 0.999999 and Pi below -0.999999, where the
/// arc tangent that it is built from would lose its digits.
ORVIA_FIGURE double ArcCos(double x);

/// Half the angle that the wetted arc spans, in radians: 0 of an empty pipe, Pi of a full one.
ORVIA_FIGURE double HalfAngle(double depth, double diameter);

/// Length of the wetted arc of a pipe.
[[nodiscard]] inline double WettedPerimeter(double depth, double diameter) {
    return HalfAngle(depth, diameter) * diameter;
}

/// Area of the water in the cross-section of a pipe, square feet.
[[nodiscard]] inline double WettedArea(double depth, double diameter) {
    const double halfAngle = HalfAngle(depth, diameter);
    const double radius = diameter / 2;
    return (halfAngle - std::sin(2 * halfAngle) * 0.5) * radius * radius;
}

#undef ORVIA_FIGURE

#endif  // ORVIA_FLOW_PIPE_SECTION_H
