#include "flow/thin_plate_weirs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "flow/long_throat.h"
#include "flow/unit_names.h"

namespace {

double TwoG() {
    return std::sqrt(2 * Gravity);
}

/// Position between the entries of a rising list: the lower one's number and how far beyond it.
template <std::size_t N>
struct Place {
    std::size_t Below = 0;
    double Share = 0;

    Place(const std::array<double, N>& list, double value) {
        const double held = std::clamp(value, list.front(), list.back());
        while (Below + 2 < N && held >= list[Below + 1]) {
            ++Below;
        }
        Share = (held - list[Below]) / (list[Below + 1] - list[Below]);
    }
    [[nodiscard]] double In(const std::array<double, N>& values) const {
        return values[Below] + Share * (values[Below + 1] - values[Below]);
    }
};

// Bos (1989), Georgia Institute of Technology: by crest length over channel width.
constexpr std::array<double, 11> CrestShares = {0, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7, 0.8, 0.9, 1};
constexpr std::array<double, 11> Coefficients = {0.587, 0.588, 0.589, 0.590, 0.591, 0.592,
                                                 0.593, 0.595, 0.597, 0.599, 0.602};
constexpr std::array<double, 11> Rises = {-0.0023, -0.0021, -0.0018, 0.0020, 0.0058, 0.010,
                                          0.018,   0.030,   0.045,   0.064,  0.075};
// The figures written on the curve of the width correction, metres.
constexpr std::array<double, 6> CorrectionShares = {0, 0.2, 0.4, 0.6, 0.8, 1};
constexpr std::array<double, 6> WidthCorrections = {0.0024, 0.0024, 0.0027,
                                                    0.0036, 0.0042, -0.0009};
constexpr double RectangularHeadCorrection = 0.001;

// Base heights and widths in feet, coefficients of weirs with two curved sides.
constexpr std::array<double, 7> BaseHeights = {0.02, 0.05, 0.10, 0.15, 0.20, 0.25, 0.30};
constexpr std::array<double, 5> BaseWidths = {0.50, 0.75, 1.00, 1.25, 1.50};
constexpr std::array<std::array<double, 5>, 7> SutroTable = {
    {{0.6080, 0.6130, 0.6170, 0.6185, 0.6190},
     {0.6060, 0.6110, 0.6150, 0.6170, 0.6175},
     {0.6030, 0.6080, 0.6120, 0.6135, 0.6140},
     {0.6010, 0.6055, 0.6100, 0.6115, 0.6120},
     {0.5990, 0.6040, 0.6080, 0.6095, 0.6100},
     {0.5980, 0.6025, 0.6065, 0.6080, 0.6085},
     {0.5970, 0.6020, 0.6060, 0.6075, 0.6080}}};
constexpr double OneSidedExtra = 0.006;  // all through the table of one curved side

}  // namespace

NotchFigures FiguresOfNotch(double degrees) {
    // Curves laid through the figures of Shen (1981); the correction in feet.
    const double a = std::clamp(degrees, 20.0, 100.0);
    const double correction =
        0.0144902648 + a * (-0.00033955535 + a * (3.29819003e-6 - a * 1.06215442e-8));
    return {0.607165052 + a * (-0.000874466963 + a * 6.10393334e-6),
            correction * config::MetersPerFoot};
}

double NotchFlow(double degrees, double head) {
    const NotchFigures figures = FiguresOfNotch(degrees);
    const double halfAngle = degrees * std::numbers::pi / 360;
    return 8.0 / 15 * figures.Coefficient * TwoG() * std::tan(halfAngle) *
           std::pow(head + figures.HeadCorrection, 2.5);
}

RectangularWeirFigures FiguresOfRectangularWeir(double share) {
    const Place coefficients(CrestShares, share);
    const Place corrections(CorrectionShares, share);
    return {coefficients.In(Coefficients), coefficients.In(Rises),
            corrections.In(WidthCorrections)};
}

double RectangularWeirFlow(double crest, double share, double crestHeight, double head) {
    const RectangularWeirFigures figures = FiguresOfRectangularWeir(share);
    return (figures.Coefficient + figures.Rise * head / crestHeight) * 2 / 3 * TwoG() *
           (crest + figures.WidthCorrection) * std::pow(head + RectangularHeadCorrection, 1.5);
}

double FrancisFlow(double crestFeet, int contractions, double headFeet) {
    // The law turns down where 2.5 times the head's part of the crest is 1.5 times the crest.
    const double lost = 0.1 * contractions;
    const double head = lost > 0 ? std::min(headFeet, 0.6 * crestFeet / lost) : headFeet;
    return 3.33 * (crestFeet - lost * head) * std::pow(head, 1.5);
}

double CipollettiFlow(double crestFeet, double headFeet) {
    return 3.367 * crestFeet * std::pow(headFeet, 1.5);
}

double SutroCoefficient(double baseHeight, double baseWidth, bool oneSided) {
    const Place height(BaseHeights, baseHeight / config::MetersPerFoot);
    const Place width(BaseWidths, baseWidth / config::MetersPerFoot);
    const double below = width.In(SutroTable[height.Below]);
    const double above = width.In(SutroTable[height.Below + 1]);
    return below + height.Share * (above - below) + (oneSided ? OneSidedExtra : 0);
}

double SutroFlow(double baseHeight, double baseWidth, bool oneSided, double head) {
    const double factor = SutroCoefficient(baseHeight, baseWidth, oneSided) * baseWidth * TwoG();
    if (head < baseHeight) {
        return factor * 2 / 3 * std::pow(head, 1.5);
    }
    return factor * std::sqrt(baseHeight) * (head - baseHeight / 3);
}

double SutroWidthShare(double heightAboveBase, double baseHeight) {
    return 1 - 2 / std::numbers::pi * std::atan(std::sqrt(heightAboveBase / baseHeight));
}
