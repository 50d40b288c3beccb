#ifndef ORVIA_FLOW_FINITE_H
#define ORVIA_FLOW_FINITE_H

#include <cmath>
#include <optional>

// An overflow, a division by zero or a root of a negative number leaves an infinity or a NaN
// behind, which a later step may hide (1 / infinity is 0). So each step that can do so is tested.

/// Whether every one of the figures is a number.
template <typename... Figures>
[[nodiscard]] bool AllFinite(Figures... figures) {
    return (std::isfinite(figures) && ...);
}

/// The figure, nothing if it is not a number.
[[nodiscard]] inline std::optional<double> IfFinite(double figure) {
    return std::isfinite(figure) ? std::optional(figure) : std::nullopt;
}

#endif  // ORVIA_FLOW_FINITE_H
