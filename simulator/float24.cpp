#include "simulator/float24.h"

#include <algorithm>
#include <cmath>

namespace simulator {

namespace {

constexpr int LargestScale = 7;
constexpr double LargestMantissa = 999999.0;
constexpr std::uint32_t SignBit = 0x800000;
constexpr int ScaleShift = 20;
constexpr std::uint32_t MantissaMask = 0xFFFFF;

/// 10^scale, 0 to 7: exact in a double.
double PowerOfTen(unsigned scale) {
    double power = 1;
    for (unsigned i = 0; i < scale; ++i) {
        power *= 10;
    }
    return power;
}

}  // namespace

std::uint32_t EncodeFloat24(double value) {
    if (value == 0 || std::isnan(value)) {
        return 0;
    }
    const double magnitude = std::min(std::fabs(value), LargestMantissa);
    unsigned scale = LargestScale;
    double mantissa = std::floor(magnitude * PowerOfTen(scale) + 0.5);
    while (mantissa > LargestMantissa) {
        --scale;
        mantissa = std::floor(magnitude * PowerOfTen(scale) + 0.5);
    }
    const std::uint32_t sign = value < 0 ? SignBit : 0;
    return static_cast<std::uint32_t>(mantissa) | scale << ScaleShift | sign;
}

double DecodeFloat24(std::uint32_t bits) {
    const unsigned scale = bits >> ScaleShift & LargestScale;
    const double magnitude = (bits & MantissaMask) / PowerOfTen(scale);
    return (bits & SignBit) != 0 ? -magnitude : magnitude;
}

}  // namespace simulator
