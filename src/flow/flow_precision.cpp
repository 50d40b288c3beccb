#include "flow/flow_precision.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "flow/finite.h"
#include "flow/flow_calculation.h"

namespace {

// The sweep: 64 points over the range of a 16-bit channel, each with the point 16 counts above.
constexpr int SweepEnd = 65536;
constexpr int SweepStep = 1024;
constexpr int PairDistance = 16;

constexpr double StepsPerPlace = 10.0;
constexpr std::int16_t PlacesWithoutRange = 2;

struct Extremes {
    double MaxFlow = 0;
    double MaxVel = 0;
    double StepFlow = 0;
    double StepVel = 0;
};

struct Scale {
    double RawLower;
    double RawUpper;
    double Bottom;
    double Span;

    [[nodiscard]] double LevelAt(int raw) const {
        return Span * ((raw - RawLower) / (RawUpper - RawLower)) + Bottom;
    }
};

/// Scaling of channel 1, nothing if it has no range.
std::optional<Scale> ScaleOf(const LoggerRecord& record) {
    const double span = record.UpperLimit[0] - record.LowerLimit[0];
    if (record.RawScaleLower[0] == record.RawScaleUpper[0] || !AllFinite(span) ||
        std::fabs(span) < SmallestSpan) {
        return std::nullopt;
    }
    return Scale{static_cast<double>(record.RawScaleLower[0]),
                 static_cast<double>(record.RawScaleUpper[0]), record.LowerLimit[0], span};
}

/// Takes one pair of neighbouring levels in; false if a figure leaves the range of a double.
bool TakePair(const LoggerState& state, double level1, double level2, Extremes& found) {
    double vel1 = 0;
    double vel2 = 0;
    const double flow1 = CalculateFlow(state, state.FlowTable, level1, vel1);
    const double flow2 = CalculateFlow(state, state.FlowTable, level2, vel2);
    found.MaxFlow = std::max(found.MaxFlow, flow2);
    found.MaxVel = std::max(found.MaxVel, vel2);
    if (flow1 > 0 && flow2 > 0) {
        found.StepFlow = std::max(found.StepFlow, std::fabs(flow2 - flow1));
    }
    if (vel1 >= 0 && vel2 >= 0) {
        found.StepVel = std::max(found.StepVel, std::fabs(vel2 - vel1));
    }
    return AllFinite(level1, level2);
}

std::optional<Extremes> Sweep(const LoggerState& state) {
    const std::optional<Scale> scale = ScaleOf(state);
    if (!scale) {
        return std::nullopt;
    }
    Extremes found;
    for (int raw = 0; raw < SweepEnd; raw += SweepStep) {
        if (!TakePair(state, scale->LevelAt(raw), scale->LevelAt(raw + PairDistance), found)) {
            return std::nullopt;
        }
    }
    return found;
}

}  // namespace

void CalculateFlowVelPrecision(LoggerState& state, LoggerState& global) {
    const std::optional<Extremes> found = Sweep(state);
    if (!found) {
        // Settled so: without a range the window keeps its figures, and the current logger, which
        // may be another one, takes these.
        global.FlowDecPlaces = PlacesWithoutRange;
        global.VelDecPlaces = PlacesWithoutRange;
        return;
    }
    state.FlowDecPlaces = PickDecPlaces(found->MaxFlow, found->StepFlow / StepsPerPlace);
    state.VelDecPlaces = PickDecPlaces(found->MaxVel, found->StepVel / StepsPerPlace);
}

std::int16_t PickDecPlaces(double max, double step) {
    if (max >= 4096.0 || step >= 1.0) {
        return 0;
    }
    if (max >= 409.0 || step >= 0.1) {
        return 1;
    }
    if (max >= 40.0 || step >= 0.01) {
        return 2;
    }
    return max < 4.0 && step < 0.001 ? 4 : 3;
}
