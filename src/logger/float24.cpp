#include "logger/float24.h"

#include <algorithm>
#include <cmath>

#include "common/fault.h"
#include "common/number_text.h"

namespace config {

namespace {

constexpr std::int32_t MantissaMask = 0x0FFFFF;
constexpr std::int32_t LargestMantissa = 999999;
constexpr int ScaleShift = 20;
constexpr int LargestScale = 7;
constexpr std::int32_t SignBit = 0x800000;

/// From here on a further decimal would round to seven digits.
constexpr double SixDigits = 99999.95;

}  // namespace

std::int32_t EncodeFloat24(double value) {
    if (std::isnan(value)) {
        throw Fault("not a number");
    }
    if (value == 0) {
        return 0;
    }
    double rest = std::min(std::fabs(value), static_cast<double>(LargestMantissa));
    std::int32_t scale = 0;
    while (rest < SixDigits && scale < LargestScale) {
        rest *= 10;
        ++scale;
    }
    // The way through 15 digits takes off what the multiplications added behind them.
    const double rounded = LeadingNumber(DoubleToText(rest + 0.5));
    const auto mantissa = std::min(static_cast<std::int32_t>(rounded), LargestMantissa);
    return mantissa + (value < 0 ? SignBit : 0) + (scale << ScaleShift);
}

double DecodeFloat24(std::int32_t bits) {
    double value = bits & MantissaMask;
    for (int scale = bits >> ScaleShift & LargestScale; scale > 0; --scale) {
        value /= 10;
    }
    return value != 0 && (bits & SignBit) != 0 ? -value : value;
}

}  // namespace config
