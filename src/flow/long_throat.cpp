#include "flow/long_throat.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double Viscosity = 1.14e-6;   // of water at 15 degrees Celsius, square metres per second
constexpr double ApproachAlpha = 1.04;  // velocity head in the approach, by its mean velocity
constexpr double ApproachDrag = 0.00235;       // of approach and narrowing
constexpr double LaminarReynolds = 350000;     // of smooth surfaces
constexpr double HighestThroatFilling = 0.98;  // of a closed throat: above, its width vanishes

/// Drag of a plate with a turbulent layer from its edge on. Its own value stands on both sides; the
/// steps close in by a factor of ten and more, and the count bounds them.
double TurbulentDrag(double reynolds, double lengthOverRoughness) {
    double drag = 0.005;
    for (int i = 0; i < 12; ++i) {
        const double root = std::sqrt(drag);
        const double log =
            std::log(1 / (reynolds * drag) + 1 / (4.84 * root * lengthOverRoughness));
        drag = std::clamp(0.544 * root / (5.61 * root - 0.638 - log), 1e-5, 0.1);
    }
    return drag;
}

double VelocityHead(double velocity) {
    return velocity * velocity / (2 * Gravity);
}

/// Energy over mean velocity head at the critical section, of a boundary layer that has not reached
/// the surface.
double ThroatAlpha(double drag, double length, double radius, double hydraulicDepth) {
    const double epsilon = 1.77 * std::sqrt(drag);
    const double shape = std::clamp(1.5 * hydraulicDepth / radius - 0.5, 1.0, 2.0);
    const double growth = std::clamp(0.025 * length / radius - 0.05, 0.0, 1.0);
    return 1 + (3 - 2 * epsilon) * epsilon * epsilon * shape * growth;
}

/// Flow, velocity and losses if that is the critical depth.
struct CriticalFlow {
    double Flow = 0;
    double Energy = 0;  // above the throat's floor, at the critical section
    double Velocity = 0;
    double Radius = 0;
    double Loss = 0;  // of head in the throat
};

CriticalFlow AtCriticalDepth(const LongThroat& device, double depth) {
    const double area = device.Throat->Area(depth);
    const double width = device.Throat->Width(depth);
    const double hydraulicDepth = area / width;
    CriticalFlow at;
    at.Radius = area / device.Throat->Perimeter(depth);
    double alpha = 1;
    double drag = 0;
    // The drag follows from the velocity, and that, a little, from the drag.
    for (int i = 0; i < 2; ++i) {
        at.Velocity = std::sqrt(Gravity * hydraulicDepth / alpha);
        if (device.Boundary == BoundaryLayer::Displacement) {
            break;
        }
        drag = DragCoefficient(at.Velocity, device.Length, device.RoughnessHeight);
        alpha = ThroatAlpha(drag, device.Length, at.Radius, hydraulicDepth);
    }
    at.Velocity = std::sqrt(Gravity * hydraulicDepth / alpha);
    at.Flow = at.Velocity * area;
    at.Energy = depth + alpha * VelocityHead(at.Velocity);
    at.Loss = drag * device.Length / at.Radius * VelocityHead(at.Velocity);
    return at;
}

/// Loss of head from the gauge to the throat.
double ApproachLoss(const LongThroat& device, const CriticalFlow& critical, double velocity,
                    double depth) {
    if (device.Boundary == BoundaryLayer::Displacement) {
        return 0;
    }
    const double radius = device.Approach->Area(depth) / device.Approach->Perimeter(depth);
    const double before = VelocityHead(velocity) / radius;
    const double behind = VelocityHead(critical.Velocity) / critical.Radius;
    return ApproachDrag *
           (device.GaugeDistance * before + device.NarrowingLength * (before + behind) / 2);
}

/// By how much the energy that a critical depth asks for exceeds what the head brings.
double Excess(const LongThroat& device, double head, double depth) {
    const CriticalFlow critical = AtCriticalDepth(device, depth);
    const double above = head + device.Sill;
    const double velocity = critical.Flow / device.Approach->Area(above);
    const double alpha = device.Boundary == BoundaryLayer::Drag ? ApproachAlpha : 1;
    return device.Displaced + critical.Energy + critical.Loss +
           ApproachLoss(device, critical, velocity, above) - head - alpha * VelocityHead(velocity);
}

/// The critical depth between two depths of opposite excess: false position with the weight of an
/// end that stays halved (Illinois), which closes in faster than by halves and never leaves them.
double CriticalDepthBetween(const LongThroat& device, double head, double low, double high,
                            double lowExcess, double highExcess) {
    double depth = low;
    int side = 0;
    for (int i = 0; i < 80 && high - low > 1e-12 * high; ++i) {
        depth = (low * highExcess - high * lowExcess) / (highExcess - lowExcess);
        const double excess = Excess(device, head, depth);
        if (!(std::fabs(excess) > 1e-13 * head)) {
            break;
        }
        if (excess > 0) {
            high = depth;
            highExcess = excess;
            lowExcess /= side == 1 ? 2 : 1;
            side = 1;
        } else {
            low = depth;
            lowExcess = excess;
            highExcess /= side == -1 ? 2 : 1;
            side = -1;
        }
    }
    return depth;
}

/// Energy behind the device at a depth of water above the sill, less what the flow has left.
double Behind(const LongThroat& device, double depth, const ThroatFlow& flow, double throatVelocity,
              double loss) {
    const double velocity = flow.Flow / device.Approach->Area(depth + device.Sill);
    return depth + VelocityHead(velocity) + loss * VelocityHead(throatVelocity - velocity) -
           flow.EnergyBehind;
}

}  // namespace

double DragCoefficient(double velocity, double length, double roughnessHeight) {
    const double reynolds = velocity * length / Viscosity;
    if (!(reynolds > 0)) {
        return 0;
    }
    const double lengthOverRoughness = length / roughnessHeight;
    const double edge = LaminarReynolds + lengthOverRoughness;
    if (reynolds <= edge) {
        return 1.328 / std::sqrt(reynolds);
    }
    const double share = edge / reynolds;  // of the length, with a laminar layer
    return TurbulentDrag(reynolds, lengthOverRoughness) -
           share * TurbulentDrag(edge, share * lengthOverRoughness) +
           share * 1.328 / std::sqrt(edge);
}

std::optional<ThroatFlow> FlowThroughThroat(const LongThroat& device, double head) {
    const double room = head - device.Displaced;
    const double low = room * 1e-3;
    const double high = std::min(room, device.Throat->Height() * HighestThroatFilling);
    if (!(room > 0) || head + device.Sill > device.Approach->Height() || !(low < high)) {
        return std::nullopt;
    }
    const double lowExcess = Excess(device, head, low);
    const double highExcess = Excess(device, head, high);
    if (!(lowExcess < 0) || !(highExcess > 0)) {
        return std::nullopt;
    }
    ThroatFlow result;
    result.CriticalDepth = CriticalDepthBetween(device, head, low, high, lowExcess, highExcess);
    const CriticalFlow critical = AtCriticalDepth(device, result.CriticalDepth);
    const double depth = head + device.Sill;
    const double area = device.Approach->Area(depth);
    const double velocity = critical.Flow / area;
    result.Flow = critical.Flow;
    result.EnergyHead = head + VelocityHead(velocity) *
                                   (device.Boundary == BoundaryLayer::Drag ? ApproachAlpha : 1);
    result.Froude = velocity / std::sqrt(Gravity * area / device.Approach->Width(depth));
    result.EnergyBehind = device.Displaced + critical.Energy;
    return result;
}

double ModularLimit(const LongThroat& device, double head, const ThroatFlow& flow) {
    // Loss of a sudden or gradual expansion, as a share of the head of the velocity lost.
    const double halfAngle =
        device.ExitSlope > 0 ? std::atan(1 / device.ExitSlope) : std::acos(-1.0) / 2;
    const double loss = std::max(0.0, (std::log10(114.59 * halfAngle) - 0.165) / 1.742);
    const double throatVelocity = flow.Flow / device.Throat->Area(flow.CriticalDepth);
    const auto excess = [&](double depth) {
        return Behind(device, depth, flow, throatVelocity, loss);
    };
    // From the head down to the first depth that the energy left suffices for.
    constexpr int Steps = 100;
    double high = head;
    for (int i = 1; i < Steps; ++i) {
        double low = head - (head + device.Sill) * i / Steps;
        if (excess(low) > 0) {
            high = low;
            continue;
        }
        for (int halving = 0; halving < 40; ++halving) {
            const double middle = (low + high) / 2;
            (excess(middle) > 0 ? high : low) = middle;
        }
        return std::max(0.0, low / head);
    }
    return 0;
}
