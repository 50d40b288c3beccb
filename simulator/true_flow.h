#ifndef ORVIA_SIMULATOR_TRUE_FLOW_H
#define ORVIA_SIMULATOR_TRUE_FLOW_H

#include <string>
#include <vector>

#include "simulator/settings.h"

namespace simulator {

/// A point of a rating: level in feet, flow in cubic feet per second.
struct RatingPoint {
    double Level = 0;
    double Flow = 0;
};

/// How a flow site rates: by a power law or, where there are points, by straight lines through
/// them, their levels ascending.
struct SiteRating {
    double Offset = 0;      ///< A of multiplier x (level + A)^exponent, level in feet
    double Exponent = 0;    ///< B
    double Multiplier = 0;  ///< C, for cubic feet per second
    std::vector<RatingPoint> Points;
};

struct Flow {
    double Rate = 0;      ///< in the site's flow unit
    double Velocity = 0;  ///< in the site's velocity unit; 0 but for a pipe
};

/// What flows at a site whose sensor stands at `level`, in the units of `levelUnits` (its first
/// letter: i inches, m metres, c centimetres, any other feet). A pipe flows by Manning's equation
/// in the form of the US handbooks (1.486 for feet, hydraulic radius to the power 0.667). What has
/// no finite answer flows 0.
[[nodiscard]] Flow TrueFlow(const FlowSettings& settings, const SiteRating& rating, double level,
                            const std::string& levelUnits);

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_TRUE_FLOW_H
