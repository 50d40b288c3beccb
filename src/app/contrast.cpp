#include "app/contrast.h"

#include <algorithm>
#include <cmath>

namespace {

double Linear(std::uint8_t channel) {
    const double value = channel / 255.0;
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double Luminance(Colour colour) {
    return 0.2126 * Linear(colour.Red) + 0.7152 * Linear(colour.Green) +
           0.0722 * Linear(colour.Blue);
}

}  // namespace

double ContrastRatio(Colour a, Colour b) {
    const auto [darker, lighter] = std::minmax({Luminance(a), Luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

Colour GroundFor(Colour text) {
    constexpr Colour Ink{20, 22, 25};
    constexpr Colour Slate{190, 196, 206};
    return ContrastRatio(text, Ink) >= ContrastRatio(text, Slate) ? Ink : Slate;
}
