#ifndef ORVIA_FLOW_RATING_MADE_H
#define ORVIA_FLOW_RATING_MADE_H

#include <string>
#include <vector>

#include "flow/rating_device.h"
#include "logger/logger_state.h"

// A rating worked out from a device's dimensions. docs/flow-devices.md names every formula with its
// source, its limits and the published figures that it was compared with.

/// How much a remark weighs.
enum class RatingWeight {
    Note,    ///< worth knowing: how it was composed, where its modular limit lies
    Beyond,  ///< something is outside the limits of the method: an estimate
    Refused  ///< no rating can be made of these figures
};

/// What there is to say about a rating, in one or two sentences.
struct RatingRemark {
    RatingWeight Weight = RatingWeight::Note;
    std::string Text;
    int Field = -1;  ///< position of the field that it is about, -1 for none
};

/// How far one of the operator's own points lies from the power law fitted to them.
struct RatingResidual {
    double Head = 0;     ///< feet
    double Flow = 0;     ///< cfs, as given
    double Percent = 0;  ///< by which the given flow exceeds that of the law
    bool Outlier = false;
};

/// A rating. Without points it was refused, and a remark tells why.
struct Rating {
    FlowTable Points;      ///< feet and cfs; straight lines between them are at most 0.1 % off
    double LeastHead = 0;  ///< feet: where the method holds and points lie; both 0 if nowhere
    double GreatestHead = 0;
    double LeastFlow = 0;  ///< cfs, at the ends of that range
    double GreatestFlow = 0;
    double Uncertainty = 0;       ///< percent of the flow inside the range; 0 if none is published
    std::string UncertaintyText;  ///< what that figure covers, in words
    std::vector<std::string> Equations;  ///< names of the equations
    std::vector<std::string> Sources;
    std::vector<RatingRemark> Remarks;      ///< the weightiest first
    std::vector<RatingResidual> Residuals;  ///< own points only, one a row in the order of heads

    [[nodiscard]] bool Made() const { return Points.UpperBound() > 0; }
};

/// Most points that a made table has: one more would be announced as too many by the page of flow.
inline constexpr int MostRatingPoints = 1000;

/// Farthest that straight lines between the points may be off the equation, as a share of the flow.
inline constexpr double RatingTolerance = 0.001;

/// The rating of a device. Ends for every input, and every figure of the result is finite.
[[nodiscard]] Rating ComputeRating(const RatingDevice& device);

/// Flow in cfs at a head in feet as the table gives it; 0 without points.
[[nodiscard]] double RatingFlowAt(const Rating& rating, double head);

/// One line of a listing, in the units asked for.
struct RatingListingLine {
    double Head = 0;
    double Flow = 0;
    std::string HeadText;
    std::string FlowText;
    bool Beyond = false;  ///< outside the range in which the method holds
};

/// The rating at round heads, some `lines` of them, from the first point to the last; units by
/// their codes (LengthUnitName, FlowUnitName).
[[nodiscard]] std::vector<RatingListingLine> ListRating(const Rating& rating, int lengthUnit,
                                                        int flowUnit, int lines);

/// The rating's points in the units asked for, for a curve.
[[nodiscard]] FlowTable RatingCurve(const Rating& rating, int lengthUnit, int flowUnit);

/// Its range and its uncertainty in words, in the units asked for.
[[nodiscard]] std::string RatingRangeText(const Rating& rating, int lengthUnit, int flowUnit);
[[nodiscard]] std::string RatingUncertaintyText(const Rating& rating);

#endif  // ORVIA_FLOW_RATING_MADE_H
