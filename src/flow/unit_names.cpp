#include "flow/unit_names.h"

#include <algorithm>
#include <array>

#include "common/text.h"

namespace {

enum LengthUnit { Feet, Inches, Meters, Centimeters };

constexpr double InchesPerFoot = 12.0;
constexpr double CentimetersPerMeter = 100.0;

constexpr std::array<std::string_view, 5> FlowUnitNames = {"CFS", "GPM", "MGD", "CMS", "LPS"};
constexpr std::array<std::string_view, 4> FlowLevelUnits = {"inches", "feet", "meters", "cm"};

}  // namespace

namespace config {

std::string LengthUnitName(int code, bool plural) {
    switch (code) {
        case Inches:
            return plural ? "Inches" : "Inch";
        case Meters:
            return plural ? "Meters" : "Meter";
        case Centimeters:
            return "cm";
        default:
            return plural ? "Feet" : "Foot";
    }
}

std::string FlowUnitName(int code) {
    if (code < 0 || static_cast<std::size_t>(code) >= FlowUnitNames.size()) {
        return {};
    }
    return std::string(FlowUnitNames[static_cast<std::size_t>(code)]);
}

bool IsFlowUnit(std::string_view unit) {
    const std::string name = ToLower(Trim(unit));
    return std::find(FlowLevelUnits.begin(), FlowLevelUnits.end(), name) != FlowLevelUnits.end();
}

int LevelUnitCode(std::string_view unit) {
    const std::string_view name = TrimLeft(unit);
    switch (name.empty() ? ' ' : name.front()) {
        case 'i':
        case 'I':
            return Inches;
        case 'm':
        case 'M':
            return Meters;
        case 'c':
        case 'C':
            return Centimeters;
        default:
            return Feet;
    }
}

double LengthToFeet(double length, int code) {
    switch (code) {
        case Inches:
            return length / InchesPerFoot;
        case Meters:
            return length / MetersPerFoot;
        case Centimeters:
            return length / CentimetersPerMeter / MetersPerFoot;
        default:
            return length;
    }
}

}  // namespace config
