#include "flow/flow_calculation.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "flow/finite.h"
#include "flow/flow_mode.h"
#include "flow/pipe_section.h"
#include "flow/rating.h"
#include "flow/unit_names.h"

namespace {

constexpr double ManningFactor = 1.486;  // US units: feet and seconds
constexpr double HydraulicRadiusExponent = 0.667;
constexpr double SmallestDiameter = 0.01;  // feet
constexpr double SmallestRoughness = 0.001;
constexpr double PercentPerOne = 100.0;

constexpr double GpmPerCfs = 448.8;
constexpr double MgdPerCfs = 0.6463;
constexpr double CmsPerCfs = 0.02832;
constexpr double GallonsPerCubicFoot = 7.4805;
constexpr double LitersPerGallon = 3.7854;

enum FlowUnit { Cfs, Gpm, Mgd, Cms, Lps };
enum VelocityUnit { FeetPerSecond, MetersPerSecond };

struct Figures {
    double Flow = 0;
    double Velocity = 0;
};

/// Level above the zero of the rating, in feet, 0 if the channel is dry.
std::optional<double> LevelInFeet(const LoggerRecord& record, double level) {
    const double feet = config::LengthToFeet(level, config::LevelUnitCode(record.EngUnits[0]));
    const double offset = config::LengthToFeet(record.LevelOffset, record.LevelOffsetType);
    if (!AllFinite(feet, offset)) {
        return std::nullopt;
    }
    // The offset stays out of a dry channel: it would otherwise show a flow for ever.
    return feet <= 0 ? 0 : IfFinite(std::max(feet + offset, 0.0));
}

/// Manning's equation for a round pipe; cfs and feet per second. A surcharged pipe counts as
/// exactly full.
std::optional<Figures> ManningFigures(const LoggerRecord& record, double level) {
    const double size = config::LengthToFeet(record.ManningsD, record.ManningsDType);
    const double slope =
        record.ManningsSType != 0 ? record.ManningsS / PercentPerOne : record.ManningsS;
    if (!AllFinite(size, slope, record.ManningsN)) {
        return std::nullopt;
    }
    const double diameter = std::max(size, SmallestDiameter);
    const double depth = std::min(level, diameter);
    const double roughness = std::max(record.ManningsN, SmallestRoughness);
    const double perimeter = WettedPerimeter(depth, diameter);
    const double area = WettedArea(depth, diameter);
    const double radius = area / perimeter;
    if (!AllFinite(perimeter, area, radius)) {
        return std::nullopt;
    }
    // The root is the power of 0.5, and makes the calculation an eighth quicker.
    const double velocity =
        std::sqrt(slope) * (ManningFactor / roughness) * std::pow(radius, HydraulicRadiusExponent);
    const double flow = velocity * area;
    return AllFinite(velocity, flow) ? std::optional(Figures{flow, velocity}) : std::nullopt;
}

double FlowInUnits(double cfs, int units) {
    switch (units) {
        case Gpm:
            return cfs * GpmPerCfs;
        case Mgd:
            return cfs * MgdPerCfs;
        case Cms:
            return cfs * CmsPerCfs;
        case Lps:
            return cfs * GallonsPerCubicFoot * LitersPerGallon;
        default:
            return cfs;
    }
}

/// Both figures in cfs and feet per second.
std::optional<Figures> FiguresAt(const LoggerRecord& record, const FlowTable& table, double feet) {
    if (record.FlowMode == ManningMode) {
        return ManningFigures(record, feet);
    }
    const std::optional<double> flow = RatingFlow(record, table, feet);
    return flow ? std::optional(Figures{*flow, 0}) : std::nullopt;
}

std::optional<Figures> Calculate(const LoggerRecord& record, const FlowTable& table, double level) {
    const std::optional<double> feet = LevelInFeet(record, level);
    if (!feet || *feet == 0) {
        return std::nullopt;
    }
    std::optional<Figures> figures = FiguresAt(record, table, *feet);
    if (figures) {
        figures->Flow = FlowInUnits(figures->Flow, record.FlowUnits);
        figures->Velocity *= record.VelUnits == MetersPerSecond ? config::MetersPerFoot : 1.0;
    }
    return figures && AllFinite(figures->Flow) ? figures : std::nullopt;
}

}  // namespace

double CalculateFlow(const LoggerRecord& record, const FlowTable& table, double level,
                     double& velocity) {
    const std::optional<Figures> figures =
        record.FlowMode == NoFlowMode ? std::nullopt : Calculate(record, table, level);
    velocity = figures ? figures->Velocity : 0;
    return figures ? figures->Flow : 0;
}
