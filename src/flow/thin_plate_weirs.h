#ifndef ORVIA_FLOW_THIN_PLATE_WEIRS_H
#define ORVIA_FLOW_THIN_PLATE_WEIRS_H

// Flow over thin-plate weirs, in metres and cubic metres per second unless told; heads above 0.
// docs/flow-devices.md gives the equations with their sources and limits.

/// Effective coefficient and head correction (metres) of Kindsvater and Shen for a notch of that
/// angle in degrees; angles outside 20 to 100 take the figures of the nearer end.
struct NotchFigures {
    double Coefficient = 0;
    double HeadCorrection = 0;
};
[[nodiscard]] NotchFigures FiguresOfNotch(double degrees);

/// V-notch by Kindsvater and Shen.
[[nodiscard]] double NotchFlow(double degrees, double head);

/// Effective coefficient (its value without approach velocity, and its rise with head over crest
/// height) and width correction (metres) of Kindsvater and Carter for a crest of that share of the
/// channel's width, 0 to 1.
struct RectangularWeirFigures {
    double Coefficient = 0;
    double Rise = 0;
    double WidthCorrection = 0;
};
[[nodiscard]] RectangularWeirFigures FiguresOfRectangularWeir(double share);

/// Rectangular weir by Kindsvater and Carter.
[[nodiscard]] double RectangularWeirFlow(double crest, double share, double crestHeight,
                                         double head);

/// Standard rectangular weir by Francis, in feet and cubic feet per second, with 0 to 2 end
/// contractions. Heads at which the contractions would use up the crest count as the highest
/// before.
[[nodiscard]] double FrancisFlow(double crestFeet, int contractions, double headFeet);

/// Cipolletti weir, in feet and cubic feet per second.
[[nodiscard]] double CipollettiFlow(double crestFeet, double headFeet);

/// Proportional weir: the rectangular base below, straight above it.
[[nodiscard]] double SutroFlow(double baseHeight, double baseWidth, bool oneSided, double head);

/// Coefficient of a proportional weir by its base, between and at the ends of the published table.
[[nodiscard]] double SutroCoefficient(double baseHeight, double baseWidth, bool oneSided);

/// Share of the base's width that the opening of a proportional weir keeps at a height above the
/// base.
[[nodiscard]] double SutroWidthShare(double heightAboveBase, double baseHeight);

#endif  // ORVIA_FLOW_THIN_PLATE_WEIRS_H
