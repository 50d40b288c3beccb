#include "archive/value_axis.h"

#include <algorithm>
#include <cmath>

#include "common/number_text.h"

namespace {

constexpr double Room = 0.05;           // of the range, at each end
constexpr double LeastExtent = 1e-9;    // of the larger figure: below it ticks are all alike
constexpr double LargestShown = 1e300;  // so that no sum overflows
constexpr int MostPlaces = 6;
constexpr int MostDigits = 15;
constexpr double LargestFixed = 1e12;

double RoundStep(double least) {
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        // What power rounds must not cost a step.
        if (factor * power >= least * (1 - 1e-9)) {
            return factor * power;
        }
    }
    return 10 * power;
}

std::string TickText(double tick, double step, double largest) {
    const int places = static_cast<int>(std::ceil(-std::log10(step) - 1e-9));
    if (places > MostPlaces || largest >= LargestFixed) {
        const double digits = std::ceil(std::log10(largest / step)) + 1;
        return FormatSignificant(tick, std::clamp(static_cast<int>(digits), 1, MostDigits));
    }
    return FormatFixed(tick, std::max(places, 0));
}

}  // namespace

ValueRange RangeWithRoom(const std::optional<ValueRange>& figures) {
    if (!figures) {
        return {0, 1};
    }
    const double low = std::clamp(figures->Lowest, -LargestShown, LargestShown);
    const double high = std::clamp(figures->Highest, -LargestShown, LargestShown);
    const double larger = std::max(std::fabs(low), std::fabs(high));
    if (high - low <= larger * LeastExtent) {
        const double extent = larger == 0 ? 1 : larger / 10;
        return {low - extent, high + extent};
    }
    const double room = (high - low) * Room;
    return {low - room, high + room};
}

ValueTicks ValueTicksOf(const ValueRange& range, int most) {
    ValueTicks ticks;
    const double extent = range.Highest - range.Lowest;
    const double step = RoundStep(extent / std::max(most - 1, 1));
    const double largest = std::max(std::fabs(range.Lowest), std::fabs(range.Highest));
    const double first = std::ceil(range.Lowest / step - 1e-9);
    const double last = std::floor(range.Highest / step + 1e-9);
    for (double number = first; number <= last && ticks.At.size() < 100; ++number) {
        ticks.At.push_back(number * step);
        ticks.Texts.push_back(TickText(number * step, step, largest));
    }
    return ticks;
}
