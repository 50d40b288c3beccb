#include "console/signal_level.h"

#include <algorithm>
#include <array>

#include "common/number_text.h"

namespace {

/// A measured point of the radio.
struct SignalPoint {
    int Value = 0;
    int DBm = 0;
};

constexpr std::array<SignalPoint, 14> Points{{{14, -49},
                                              {17, -52},
                                              {23, -56},
                                              {28, -59},
                                              {43, -62},
                                              {64, -66},
                                              {85, -69},
                                              {98, -72},
                                              {113, -76},
                                              {120, -79},
                                              {132, -82},
                                              {154, -86},
                                              {173, -89},
                                              {189, -92}}};

int OnLine(int value, const SignalPoint& lower, const SignalPoint& upper) {
    const double slope =
        static_cast<double>(lower.DBm - upper.DBm) / static_cast<double>(lower.Value - upper.Value);
    return static_cast<int>(RoundTiesToEven((value - upper.Value) * slope + upper.DBm));
}

}  // namespace

int RssiToDBm(std::uint8_t value) {
    constexpr int Saturated = 12;
    constexpr int NearlySaturated = 13;
    if (value <= Saturated) {
        return -40;
    }
    if (value == NearlySaturated) {
        return -46;
    }
    // The last line goes on past its upper point.
    const auto upper =
        std::find_if(Points.begin() + 1, Points.end() - 1,
                     [value](const SignalPoint& point) { return value <= point.Value; });
    return OnLine(value, *(upper - 1), *upper);
}

int BarLength(std::optional<int> dBm) {
    return std::clamp(dBm.value_or(WeakestDBm) - WeakestDBm, 0, BarMaximum);
}

std::string LevelText(std::optional<int> dBm) {
    return dBm ? IntegerToText(*dBm) + " DBm" : "---";
}
