#include "flow/standard_flumes.h"

#include <cmath>

#include "flow/unit_names.h"

namespace {

// Throats up to 8 ft: Water Measurement Manual. Ranges of head: Bos (1989), in feet; share of
// submergence up to which flow is free: the same two.
constexpr std::array<FlumeLaw, 14> SmallParshall = {{{0.338, 1.55, 0.05, 0.7, 50},
                                                     {0.676, 1.55, 0.05, 0.79, 50},
                                                     {0.992, 1.547, 0.1, 1.08, 50},
                                                     {2.06, 1.58, 0.1, 1.5, 60},
                                                     {3.07, 1.53, 0.1, 2, 60},
                                                     {4, 1.522, 0.1, 2.5, 70},
                                                     {6, 1.538, 0.1, 2.5, 70},
                                                     {8, 1.55, 0.15, 2.5, 70},
                                                     {12, 1.566, 0.15, 2.5, 70},
                                                     {16, 1.578, 0.2, 2.5, 70},
                                                     {20, 1.587, 0.2, 2.5, 70},
                                                     {24, 1.595, 0.25, 2.5, 70},
                                                     {28, 1.601, 0.25, 2.5, 70},
                                                     {32, 1.607, 0.25, 2.5, 70}}};

struct LargeParshall {
    double Throat;
    double GreatestHead;
};

constexpr std::array<LargeParshall, 8> LargeSizes = {
    {{10, 3.5}, {12, 4.5}, {15, 5.5}, {20, 6}, {25, 6}, {30, 6}, {40, 6}, {50, 6}}};

struct CutthroatLength {
    double Feet;
    double Exponent;
};

constexpr std::array<CutthroatLength, 4> CutthroatLengths = {
    {{1.5, 2.15}, {3, 1.84}, {4.5, 1.72}, {9, 1.56}}};

constexpr std::array<double, 16> CutthroatMultipliers = {0.494, 0.974, 1.975, 4.03, 0.719, 1.459,
                                                         2.97,  6.04,  0.96,  1.96, 3.98,  8.01,
                                                         3.5,   7.11,  14.49, 22};

// Bos (1989).
constexpr std::array<HFlumeLaw, 4> HsLaws = {{{0.4, -0.4361, 2.5151, 0.1379},
                                              {0.6, -0.4430, 2.4908, 0.1657},
                                              {0.8, -0.4410, 2.4571, 0.1762},
                                              {1, -0.4382, 2.4193, 0.1790}}};
constexpr std::array<HFlumeLaw, 8> HLaws = {{{0.5, 0.0372, 2.6629, 0.1954},
                                             {0.75, 0.0351, 2.6434, 0.2243},
                                             {1, 0.0206, 2.5902, 0.2281},
                                             {1.5, 0.0238, 2.5473, 0.2540},
                                             {2, 0.0237, 2.4918, 0.2605},
                                             {2.5, 0.0268, 2.4402, 0.2600},
                                             {3, 0.0329, 2.3977, 0.2588},
                                             {4.5, 0.0588, 2.3032, 0.2547}}};
constexpr HFlumeLaw HlLaw = {4, 0.3160, 2.3466, 0.2794};
constexpr std::array<double, 5> HlDepths = {2, 2.5, 3, 3.5, 4};

}  // namespace

FlumeLaw ParshallLaw(std::size_t size) {
    if (size < SmallParshall.size()) {
        return SmallParshall[size];
    }
    const LargeParshall& large = LargeSizes[size - SmallParshall.size()];
    return {LargeParshallMultiplier(large.Throat), 1.6, 0.3, large.GreatestHead, 80};
}

FlumeLaw CutthroatLaw(std::size_t size) {
    const CutthroatLength& length = CutthroatLengths[size / 4];
    return {CutthroatMultipliers[size], length.Exponent, 0.1 * length.Feet, length.Feet / 3, 0};
}

HFlumeLaw LawOfHFlume(HFlumeKind kind, std::size_t size) {
    switch (kind) {
        case HFlumeKind::Hs:
            return HsLaws[size];
        case HFlumeKind::H:
            return HLaws[size];
        case HFlumeKind::Hl:
            break;
    }
    HFlumeLaw law = HlLaw;
    if (HlDepths[size] != HlLaw.Depth) {
        law.ScaledFrom = HlLaw.Depth;
        law.Depth = HlDepths[size];
    }
    return law;
}

double HFlumeFlow(const HFlumeLaw& law, double head) {
    constexpr double CubicMetersPerCubicFoot =
        config::MetersPerFoot * config::MetersPerFoot * config::MetersPerFoot;
    const double scale = law.ScaledFrom > 0 ? law.Depth / law.ScaledFrom : 1;
    const double log = std::log10(head / scale * config::MetersPerFoot);
    const double flow = std::pow(10.0, law.A + law.B * log + law.C * log * log);
    return flow * std::pow(scale, 2.5) / CubicMetersPerCubicFoot;
}
