#ifndef ORVIA_FLOW_LONG_THROAT_H
#define ORVIA_FLOW_LONG_THROAT_H

#include <optional>

#include "flow/channel_section.h"

// Flow through a long throat from its geometry: critical depth in the throat, the approach's
// velocity, and the boundary layer, in metres and cubic metres per second. docs/flow-devices.md
// gives the equations with their sources.

/// Acceleration of gravity, metres per second squared.
inline constexpr double Gravity = 9.80665;

/// Share of the throat's length that the boundary layer displaces at its end, as ISO 4359 has it.
inline constexpr double DisplacementShare = 0.003;

enum class BoundaryLayer {
    Drag,  ///< loss of head in throat and approach, uneven velocities (Bos, Replogle, Clemmens)
    Displacement  ///< floor and sides moved inward (ISO 4359): the throat is given so, see
                  ///< Displaced
};

/// A device: throat and the channel in which the head is measured.
struct LongThroat {
    const ChannelSection* Throat = nullptr;
    const ChannelSection* Approach = nullptr;
    double Sill = 0;             ///< floor of the throat above the bed of the approach
    double Length = 0;           ///< of the throat
    double GaugeDistance = 0;    ///< gauge to the narrowing
    double NarrowingLength = 0;  ///< narrowing to the throat
    double RoughnessHeight = 0;
    double ExitSlope = 0;  ///< run over drop of the ramp behind the throat; 0: abrupt
    BoundaryLayer Boundary = BoundaryLayer::Drag;
    double Displaced = 0;  ///< how far the floor of `Throat` was moved up for its boundary layer
};

/// Flow at one head.
struct ThroatFlow {
    double Flow = 0;
    double CriticalDepth = 0;
    double EnergyHead = 0;    ///< upstream, above the sill
    double Froude = 0;        ///< in the approach
    double EnergyBehind = 0;  ///< above the sill, at the end of the throat
};

/// The flow at a head above the sill; nothing if the throat does not bring it to critical depth.
[[nodiscard]] std::optional<ThroatFlow> FlowThroughThroat(const LongThroat& device, double head);

/// Depth of water above the sill behind the device, as a share of the head, up to which `flow`
/// stays free, where the channel behind is the one before; 0 if even its critical depth lies
/// higher.
[[nodiscard]] double ModularLimit(const LongThroat& device, double head, const ThroatFlow& flow);

/// Drag coefficient of a smooth or rough plate of that length over density times half the velocity
/// squared: laminar up to a Reynolds number of 350,000 plus length over roughness, turbulent
/// behind.
[[nodiscard]] double DragCoefficient(double velocity, double length, double roughnessHeight);

#endif  // ORVIA_FLOW_LONG_THROAT_H
