#include <algorithm>
#include <cmath>

#include "common/number_text.h"
#include "common/text.h"
#include "flow/rating_method.h"
#include "flow/unit_names.h"

namespace {

constexpr int WordDigits = 4;

// As in the flow calculation, whose figures the operator will see.
constexpr double GpmPerCfs = 448.8;
constexpr double MgdPerCfs = 0.6463;
constexpr double CmsPerCfs = 0.02832;
constexpr double LpsPerCfs = 7.4805 * 3.7854;

double FlowFactor(int unit) {
    switch (unit) {
        case 1:
            return GpmPerCfs;
        case 2:
            return MgdPerCfs;
        case 3:
            return CmsPerCfs;
        case 4:
            return LpsPerCfs;
        default:
            return 1;
    }
}

}  // namespace

double RoundTo(double value, int digits) {
    if (value == 0 || !std::isfinite(value)) {
        return value;
    }
    // By powers of ten above 1 alone: those below are no doubles and would leave their own error.
    const int places = digits - 1 - static_cast<int>(std::floor(std::log10(std::fabs(value))));
    const double scale = std::pow(10.0, std::abs(places));
    const double rounded =
        places >= 0 ? std::round(value * scale) / scale : std::round(value / scale) * scale;
    return std::isfinite(rounded) ? rounded : value;
}

double LengthToMeters(double length, int unit) {
    return config::LengthToFeet(length, unit) * config::MetersPerFoot;
}

double MetersToLength(double meters, int unit) {
    return meters / LengthToMeters(1, unit);
}

double FlowToCfs(double flow, int unit) {
    return flow / FlowFactor(unit);
}

double CfsToFlow(double cfs, int unit) {
    return cfs * FlowFactor(unit);
}

std::string LengthText(const RatingDevice& device, double meters) {
    const double length = RoundTo(MetersToLength(meters, device.LengthUnit), WordDigits);
    return DoubleToText(length) + " " +
           ToLower(config::LengthUnitName(device.LengthUnit, length != 1));
}

std::string FlowText(double cfs, int flowUnit) {
    return DoubleToText(RoundTo(CfsToFlow(cfs, flowUnit), WordDigits)) + " " +
           config::FlowUnitName(flowUnit);
}

void Say(RatingMethod& method, RatingWeight weight, std::string text) {
    method.Told.Remarks.push_back({weight, std::move(text), -1});
}

void SayOf(RatingMethod& method, const RatingDevice& device, std::string_view key,
           RatingWeight weight, std::string text) {
    const std::optional<std::size_t> field = RatingFieldAt(*device.Kind, key);
    method.Told.Remarks.push_back({weight, std::move(text), field ? static_cast<int>(*field) : -1});
}

RatingMethod Refuse(std::string text) {
    RatingMethod method;
    Say(method, RatingWeight::Refused, std::move(text));
    return method;
}

RatingMethod RefuseFor(const RatingDevice& device, std::string_view key, std::string text) {
    RatingMethod method;
    SayOf(method, device, key, RatingWeight::Refused, std::move(text));
    return method;
}

void SetHeads(RatingMethod& method, const RatingDevice& device, double least, double greatest) {
    constexpr double BelowLeast = 10;
    constexpr double LongestTable = 1000;  // last head over first
    const double asked = RatingValue(device, "greatest-head");
    method.Least = least;
    method.Greatest = greatest;
    method.Last = asked > 0 ? asked : greatest;
    const double first =
        std::max(std::min(least, method.Last) / BelowLeast, method.Last / LongestTable);
    // A round figure in feet, as the table has it.
    method.First = RoundTo(first / config::MetersPerFoot, 2) * config::MetersPerFoot;
    if (asked > greatest * (1 + 1e-9)) {
        SayOf(method, device, "greatest-head", RatingWeight::Beyond,
              "Above " + LengthText(device, greatest) +
                  " the table is an estimate: the method does not hold there.");
    }
}
