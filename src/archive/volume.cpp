#include "archive/volume.h"

#include "archive/integrals.h"
#include "common/number_text.h"

namespace {

enum FlowUnit { Cfs, Gpm, Mgd, Cms, Lps };

// Cubic millimetres: of an inch of 25.4 mm all of them are known exactly.
constexpr double CubicInch = 25.4 * 25.4 * 25.4;
constexpr double CubicFoot = 1728 * CubicInch;
constexpr double Gallon = 231 * CubicInch;
constexpr double AcreFoot = 43'560 * CubicFoot;
constexpr double Liter = 1e6;
constexpr double CubicMeter = 1e9;
constexpr double Million = 1e6;
constexpr double SecondsAMinute = 60;
constexpr double SecondsADay = 86'400;

constexpr int VolumeDigits = 6;

double MillimetersOf(VolumeUnit unit) {
    switch (unit) {
        case VolumeUnit::AcreFeet:
            return AcreFoot;
        case VolumeUnit::Gallons:
            return Gallon;
        case VolumeUnit::MillionGallons:
            return Million * Gallon;
        case VolumeUnit::CubicMeters:
            return CubicMeter;
        case VolumeUnit::Liters:
            return Liter;
        default:
            return CubicFoot;
    }
}

/// What runs through in a second at a flow of one.
double MillimetersASecond(int flowUnits) {
    switch (flowUnits) {
        case Gpm:
            return Gallon / SecondsAMinute;
        case Mgd:
            return Million * Gallon / SecondsADay;
        case Cms:
            return CubicMeter;
        case Lps:
            return Liter;
        default:
            return CubicFoot;
    }
}

}  // namespace

std::string VolumeUnitName(VolumeUnit unit) {
    switch (unit) {
        case VolumeUnit::AcreFeet:
            return "Acre-Feet";
        case VolumeUnit::Gallons:
            return "Gallons";
        case VolumeUnit::MillionGallons:
            return "Million Gallons";
        case VolumeUnit::CubicMeters:
            return "Cubic Meters";
        case VolumeUnit::Liters:
            return "Liters";
        default:
            return "Cubic Feet";
    }
}

std::vector<VolumeUnit> VolumeUnitsFor(int flowUnits) {
    using enum VolumeUnit;
    switch (flowUnits) {
        case Gpm:
            return {Gallons, MillionGallons, CubicFeet, AcreFeet};
        case Mgd:
            return {MillionGallons, Gallons, CubicFeet, AcreFeet};
        case Cms:
            return {CubicMeters, Liters};
        case Lps:
            return {Liters, CubicMeters};
        default:
            return {CubicFeet, AcreFeet, Gallons, MillionGallons};
    }
}

std::vector<std::optional<FlowVolume>> VolumesOf(const SeriesValues& values, VolumeUnit unit,
                                                 const Periods& periods) {
    std::vector<std::optional<FlowVolume>> volumes(periods.Count());
    const std::optional<std::size_t> flow = values.FlowColumn();
    if (!flow) {
        return volumes;
    }
    const double flowSeconds = MillimetersOf(unit) / MillimetersASecond(values.FlowUnits());
    const std::vector<Integral> integrals = IntegrateColumn(values, *flow, periods);
    for (std::size_t number = 0; number < periods.Count(); ++number) {
        const Integral& integral = integrals[number];
        if (integral.Covered > 0) {
            volumes[number] = FlowVolume{integral.Sum.Divided(flowSeconds), integral.Covered};
        }
    }
    return volumes;
}

std::string VolumeText(double volume) {
    return FormatSignificant(volume, VolumeDigits);
}
