#ifndef ORVIA_FLOW_COMPOSITE_ROUGHNESS_H
#define ORVIA_FLOW_COMPOSITE_ROUGHNESS_H

#include <span>
#include <vector>

#include "flow/rating_device.h"

// Manning's equation for cross-sections with one or several roughnesses, in metres and cubic
// metres per second: Q = A R^(2/3) S^(1/2) / n.

/// How several roughnesses make one flow; the order is that of the choices of a section by points.
enum class Composing {
    OneVelocity,  ///< Horton and Einstein: every part flows at the mean velocity
    Forces,       ///< Pavlovskii: the drag of the parts adds up
    Conveyances   ///< Lotter: the flows of the parts add up, parted by verticals
};

/// The water beside one stretch of the wetted edge.
struct RoughPart {
    double Perimeter = 0;
    double Roughness = 0;
    double Area = 0;  ///< above it; only Lotter asks for it
};

/// The one roughness that stands for several; 0 without any wetted edge. Lotter's has none.
[[nodiscard]] double ComposedRoughness(std::span<const RoughPart> parts, Composing composing);

/// Flow through an area with that edge.
[[nodiscard]] double ManningFlow(double area, std::span<const RoughPart> parts, double slope,
                                 Composing composing);

/// A cross-section by points: distances, elevations, and the roughness from each point to the next.
class PointSection {
 public:
    /// Roughnesses of 0 take that of the row before, `roughness` at first.
    PointSection(const std::vector<RatingRow>& rows, double roughness);

    /// Depth at which the section is full, from its lowest point: the lower of its two ends, or its
    /// crown if it is closed. 0 if it holds no water.
    [[nodiscard]] double Depth() const { return depth_; }
    /// Whether its last point is its first.
    [[nodiscard]] bool Closed() const { return closed_; }
    /// Whether it has a part above another: sides that lean back, or a roof.
    [[nodiscard]] bool Overhangs() const { return overhangs_; }
    /// Whether it has more than one roughness.
    [[nodiscard]] bool SeveralRoughnesses() const;
    /// Depths of its points, from its lowest.
    [[nodiscard]] std::vector<double> Bends() const;

    /// Wetted area at a depth.
    [[nodiscard]] double Area(double depth) const;
    /// Flow at a depth.
    [[nodiscard]] double Flow(double depth, double slope, Composing composing) const;

 private:
    struct Stretch {
        double FromX, FromY, ToX, ToY;  // elevations count from the lowest point
        double Roughness;
    };

    [[nodiscard]] std::vector<RoughPart> Parts(double depth) const;

    std::vector<Stretch> stretches_;
    double depth_ = 0;
    bool closed_ = false;
    bool overhangs_ = false;
};

#endif  // ORVIA_FLOW_COMPOSITE_ROUGHNESS_H
