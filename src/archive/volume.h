#ifndef ORVIA_ARCHIVE_VOLUME_H
#define ORVIA_ARCHIVE_VOLUME_H

#include <optional>
#include <string>
#include <vector>

#include "archive/periods.h"
#include "archive/series_values.h"

/// Units of a volume.
enum class VolumeUnit { CubicFeet, AcreFeet, Gallons, MillionGallons, CubicMeters, Liters };

/// "Cubic Feet", "Acre-Feet", "Gallons", "Million Gallons", "Cubic Meters", "Liters".
[[nodiscard]] std::string VolumeUnitName(VolumeUnit unit);

/// The units that fit a flow in `flowUnits` (0 CFS, 1 GPM, 2 MGD, 3 CMS, 4 LPS; any other as CFS),
/// the one that belongs to it first.
[[nodiscard]] std::vector<VolumeUnit> VolumeUnitsFor(int flowUnits);

/// What ran through in a period.
struct FlowVolume {
    double Volume = 0;
    Moment Covered = 0;  ///< seconds of the period of which the flow is known
};

/// Volumes in `unit` for each of the periods: the flow as shown, integrated by trapezoids between
/// records that are no gap apart, by exact factors (a gallon is 231 cubic inches, a foot 0.3048 m,
/// an acre 43,560 square feet: NIST Handbook 44, appendix C). Nothing where no flow is known.
[[nodiscard]] std::vector<std::optional<FlowVolume>> VolumesOf(const SeriesValues& values,
                                                               VolumeUnit unit,
                                                               const Periods& periods);

/// Six significant digits, or all whole units where those are more: "0.0123457", "1234.50",
/// "12345678". Zero is "0"; below 1E-04 in the form "1.23457E-05".
[[nodiscard]] std::string VolumeText(double volume);

#endif  // ORVIA_ARCHIVE_VOLUME_H
