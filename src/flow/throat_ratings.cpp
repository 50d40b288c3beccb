#include <algorithm>
#include <cmath>
#include <memory>

#include "common/number_text.h"
#include "flow/long_throat.h"
#include "flow/rating_method.h"

namespace {

constexpr double LeastOverLength = 0.07;
constexpr double GreatestOverLength = 0.7;
constexpr double GreatestFroude = 0.5;
constexpr double LeastNarrowing = 0.95;  // area of the throat over that of the approach
constexpr double FastestFroude = 0.75;   // above, the flow is near critical before the throat too
constexpr double PipeFilling = 0.9;  // of the pipe before the throat: nearer its crown flow pulses

/// A throat with all that it is made of.
struct OwnedThroat {
    std::unique_ptr<ChannelSection> Throat;
    std::unique_ptr<ChannelSection> Approach;
    LongThroat Device;
};

/// The throat's section with floor and sides moved inward by `d`.
std::unique_ptr<ChannelSection> ThroatOf(const RatingDevice& device, double d) {
    const std::string_view key = device.Kind->Key;
    const double width = RatingValue(device, "throat-width");
    const double slope = RatingValue(device, "throat-slope");
    // What moving a leaning side inward leaves of the floor's width.
    const double narrower = 2 * d * (std::sqrt(1 + slope * slope) - slope);
    const double bottom = std::max(1e-6, width - narrower);
    // Floor and wall of a pipe move alike, so the sill keeps its height above the invert.
    const double pipe = RatingValue(device, "pipe-diameter");
    const double sill = RatingValue(device, "sill");
    if (key == "throat-u") {
        return std::make_unique<USection>(
            std::max(1e-6, RatingValue(device, "throat-diameter") - 2 * d));
    }
    if (key == "throat-triangular") {
        return std::make_unique<TrapezoidSection>(0, slope);
    }
    if (key == "pipe-sill") {
        return std::make_unique<PipeAboveSill>(pipe - 2 * d, sill);
    }
    if (key == "palmer-bowlus") {
        return std::make_unique<TrapezoidInPipe>(pipe - 2 * d, sill, bottom, slope);
    }
    return std::make_unique<TrapezoidSection>(bottom, slope);
}

std::shared_ptr<OwnedThroat> Build(const RatingDevice& device) {
    auto built = std::make_shared<OwnedThroat>();
    LongThroat& throat = built->Device;
    throat.Length = RatingValue(device, "throat-length");
    throat.Boundary =
        RatingValue(device, "boundary") == 1 ? BoundaryLayer::Displacement : BoundaryLayer::Drag;
    const double moved =
        throat.Boundary == BoundaryLayer::Displacement ? DisplacementShare * throat.Length : 0;
    built->Throat = ThroatOf(device, moved);
    const double pipe = RatingValue(device, "pipe-diameter");
    if (pipe > 0) {
        built->Approach = std::make_unique<CircleSection>(pipe);
    } else {
        built->Approach = std::make_unique<TrapezoidSection>(RatingValue(device, "approach-width"),
                                                             RatingValue(device, "approach-slope"));
    }
    throat.Throat = built->Throat.get();
    throat.Approach = built->Approach.get();
    throat.Sill = RatingValue(device, "sill");
    throat.GaugeDistance = RatingValue(device, "gauge-distance");
    throat.NarrowingLength = RatingValue(device, "narrowing-length");
    throat.RoughnessHeight = RatingValue(device, "roughness-height");
    throat.ExitSlope = RatingValue(device, "exit-slope");
    // A triangle's floor is its lowest point: its sides moved inward meet higher.
    const double slope = RatingValue(device, "throat-slope");
    throat.Displaced = device.Kind->Key == "throat-triangular"
                           ? moved * std::sqrt(1 + slope * slope) / slope
                           : moved;
    return built;
}

/// The highest head up to `last` at which `holds`, if it does at `first`; 0 if it does not.
template <typename Condition>
double HighestHead(double first, double last, const Condition& holds) {
    if (!holds(first)) {
        return 0;
    }
    if (holds(last)) {
        return last;
    }
    for (int i = 0; i < 50; ++i) {
        const double middle = (first + last) / 2;
        (holds(middle) ? first : last) = middle;
    }
    return first;
}

std::string PercentText(double share) {
    return FormatFixed(100 * share, 0) + " %";
}

void SayModularLimit(RatingMethod& method, const LongThroat& throat, double least,
                     double greatest) {
    const std::optional<ThroatFlow> low = FlowThroughThroat(throat, least);
    const std::optional<ThroatFlow> high = FlowThroughThroat(throat, greatest);
    if (low && high) {
        Say(method, RatingWeight::Note,
            "Modular limit: the water behind may stand up to " +
                PercentText(ModularLimit(throat, least, *low)) +
                " of the head above the sill at the least head and " +
                PercentText(ModularLimit(throat, greatest, *high)) +
                " at the greatest, if the channel behind is the one before.");
    }
}

/// Ends the table where the throat no longer rules the flow; false if it nowhere does.
bool HoldToThroat(RatingMethod& method, const RatingDevice& device, const LongThroat& throat) {
    const auto rules = [&](double head) {
        const std::optional<ThroatFlow> flow = FlowThroughThroat(throat, head);
        return flow && flow->Froude <= FastestFroude &&
               throat.Throat->Area(head - throat.Displaced) <=
                   LeastNarrowing * throat.Approach->Area(head + throat.Sill);
    };
    if (!rules(method.First)) {
        // Shallow water over a long throat may be boundary layer throughout: begin higher.
        double first = method.First;
        for (int i = 0; i < 40 && first < method.Last && !rules(first); ++i) {
            first *= 1.1;
        }
        method.First = first;
    }
    const double highest = HighestHead(method.First, method.Last, rules);
    if (highest < 2 * method.First) {
        return false;
    }
    if (highest < method.Last) {
        method.Last = highest;
        Say(method, RatingWeight::Beyond,
            "The table ends at " + LengthText(device, highest) +
                ": above, the throat does not rule the flow.");
    }
    return true;
}

void TellSources(RatingMethod& method, const RatingDevice& device, BoundaryLayer boundary) {
    if (boundary == BoundaryLayer::Drag) {
        method.Told.Equations = {"Critical depth: Q = sqrt(g A^3 / (alpha B))",
                                 "Loss of head by the drag of the boundary layer"};
        method.Told.Sources = {
            "A. J. Clemmens, T. L. Wahl, M. G. Bos and J. A. Replogle, Water Measurement with "
            "Flumes and Weirs, 2001",
            "M. G. Bos, J. A. Replogle and A. J. Clemmens, Flow Measuring Flumes, 1984"};
        method.Told.Uncertainty = 2;
        method.Told.UncertaintyText =
            "of the computed rating, for heads of 0.07 to 0.7 of the throat's length";
    } else {
        method.Told.Equations = {"Critical depth: Q = sqrt(g A^3 / B)",
                                 "Displacement thickness: 0.003 of the throat's length"};
        method.Told.Sources = {"ISO 4359"};
        method.Told.Uncertainty = 3;
        method.Told.UncertaintyText = "of the computed rating, as the usual case of the standard";
    }
    Say(method, RatingWeight::Note,
        "Heads below 0.07 of the throat's length, " +
            LengthText(device, LeastOverLength * RatingValue(device, "throat-length")) +
            ", are outside the method: there the surface's roughness decides.");
}

}  // namespace

RatingMethod ThroatMethod(const RatingDevice& device) {
    const double pipe = RatingValue(device, "pipe-diameter");
    if (pipe > 0 && RatingValue(device, "sill") >= 0.8 * pipe) {
        return RefuseFor(device, "sill", "The sill takes more than 0.8 of the pipe's height.");
    }
    if (pipe > 0 && RatingValue(device, "throat-width") >= pipe) {
        return RefuseFor(device, "throat-width", "The throat is wider than the pipe.");
    }
    const std::shared_ptr<OwnedThroat> built = Build(device);
    if (!(built->Approach->Area(1) > 0)) {
        return RefuseFor(device, "approach-width", "The approach channel has no width.");
    }
    const LongThroat& throat = built->Device;
    RatingMethod method;
    method.Flow = [built](double head) {
        const std::optional<ThroatFlow> flow = FlowThroughThroat(built->Device, head);
        return flow ? flow->Flow : std::nan("");
    };
    SetHeads(method, device, LeastOverLength * throat.Length, GreatestOverLength * throat.Length);
    if (pipe > 0) {
        const double room = PipeFilling * pipe - throat.Sill;
        method.Greatest = std::min(method.Greatest, room);
        method.Last = std::min(method.Last, room);
    }
    if (!HoldToThroat(method, device, throat)) {
        return Refuse(
            "The throat hardly narrows the channel: the flow would not pass through its critical "
            "depth there.");
    }
    const double calm = HighestHead(method.First, method.Last, [&](double head) {
        const std::optional<ThroatFlow> flow = FlowThroughThroat(throat, head);
        return flow && flow->Froude <= GreatestFroude;
    });
    if (calm < std::min(method.Last, method.Greatest)) {
        method.Greatest = calm;
        Say(method, RatingWeight::Beyond,
            calm > 0 ? "Above " + LengthText(device, calm) +
                           " the approach is too fast for a steady surface (Froude number above "
                           "0.5)."
                     : "The approach is too fast for a steady surface (Froude number above 0.5).");
    }
    SayModularLimit(method, throat, std::clamp(method.Least, method.First, method.Last),
                    std::clamp(method.Greatest, method.First, method.Last));
    TellSources(method, device, throat.Boundary);
    return method;
}

RatingMethod BroadCrestedMethod(const RatingDevice& device) {
    const double width = RatingValue(device, "crest");
    const double sill = RatingValue(device, "sill");
    const double length = RatingValue(device, "throat-length");
    constexpr double Coefficient = 0.848;
    RatingMethod method;
    method.Flow = [=](double head) {
        const double ideal = Coefficient * std::pow(2.0 / 3, 1.5) * std::sqrt(Gravity) * width;
        double flow = 0;
        // The approach's velocity head adds to the head; each step adds less than the one before.
        for (int i = 0; i < 60; ++i) {
            const double velocity = flow / (width * (head + sill));
            const double next = ideal * std::pow(head + velocity * velocity / (2 * Gravity), 1.5);
            if (next - flow <= 1e-13 * next) {
                break;
            }
            flow = next;
        }
        return flow;
    };
    const double least = std::max(0.06, 0.08 * length);
    SetHeads(method, device, least, std::min(0.33 * length, 0.35 / 0.65 * sill));
    method.Told.Uncertainty = 3;
    method.Told.UncertaintyText =
        "of the coefficient while the head is 0.08 to 0.33 of the crest's length";
    method.Told.Equations = {"Q = 0.848 (2/3)^1.5 sqrt(g) b H^1.5, H with the approach's velocity"};
    method.Told.Sources = {"M. G. Bos, Discharge Measurement Structures, 1989", "ISO 3846"};
    Say(method, RatingWeight::Note,
        "The constant coefficient needs a head of 0.08 to 0.33 of the crest's length, and at most "
        "0.35 of the head and the crest's height together.");
    if (width < 0.3 || sill < 0.15) {
        Say(method, RatingWeight::Beyond,
            "The crest has to be " + LengthText(device, 0.3) + " wide and " +
                LengthText(device, 0.15) + " high at least.");
    }
    return method;
}
