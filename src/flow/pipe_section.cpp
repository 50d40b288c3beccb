#include "flow/pipe_section.h"

#include <algorithm>

double ArcCos(double x) {
    constexpr double Limit = 0.999999;
    if (x > Limit) {
        return 0;
    }
    if (x < -Limit) {
        return Pi;
    }
    return std::atan(-x / std::sqrt(-x * x + 1)) + 2 * std::atan(1.0);
}

double HalfAngle(double depth, double diameter) {
    const double radius = diameter / 2;
    return Pi - ArcCos(std::clamp((depth - radius) / radius, -1.0, 1.0));
}
