#ifndef ORVIA_FLOW_RATING_METHOD_H
#define ORVIA_FLOW_RATING_METHOD_H

#include <functional>
#include <string>
#include <vector>

#include "flow/rating_device.h"
#include "flow/rating_made.h"

// How the flow of one device follows from its head, between the kinds of device that tell it and
// the making of a table. Heads in metres, flows in cubic metres per second.

struct RatingMethod {
    std::function<double(double head)> Flow;
    double First = 0;  ///< heads of the table's ends
    double Last = 0;
    double Least = 0;  ///< heads between which the method holds
    double Greatest = 0;
    std::vector<double> Bends;   ///< heads at which the curve may bend sharply
    FlowTable Points;            ///< the table itself where it is given (feet, cfs)
    Rating Told;                 ///< equations, sources, uncertainty, remarks, residuals
    bool Falls = false;          ///< the flow may fall in places: the table then keeps the highest
    bool EndsAtHighest = false;  ///< a closed section: the table ends at the highest flow
};

/// Table's ends where the method holds from `least` to `greatest` metres: a tenth of the least head
/// below it, since levels are not held to a range, up to the greatest head asked for or else the
/// method's. Tells of a greatest head that goes beyond.
void SetHeads(RatingMethod& method, const RatingDevice& device, double least, double greatest);

/// Adds a remark; `key` names the field that it is about.
void Say(RatingMethod& method, RatingWeight weight, std::string text);
void SayOf(RatingMethod& method, const RatingDevice& device, std::string_view key,
           RatingWeight weight, std::string text);

/// A method that cannot be: one remark tells why.
[[nodiscard]] RatingMethod Refuse(std::string text);
[[nodiscard]] RatingMethod RefuseFor(const RatingDevice& device, std::string_view key,
                                     std::string text);

/// A length or flow in the device's units, in words: "0.2 feet", "1.5 CFS".
[[nodiscard]] std::string LengthText(const RatingDevice& device, double meters);
[[nodiscard]] std::string FlowText(double cfs, int flowUnit);

/// The value with that many significant digits.
[[nodiscard]] double RoundTo(double value, int digits);

/// Metres of a length in one of the units of length, and back.
[[nodiscard]] double LengthToMeters(double length, int unit);
[[nodiscard]] double MetersToLength(double meters, int unit);

/// Cubic feet per second of a flow in one of the units of flow, and back; the factors are those of
/// the flow calculation.
[[nodiscard]] double FlowToCfs(double flow, int unit);
[[nodiscard]] double CfsToFlow(double cfs, int unit);

inline constexpr double CubicMetersPerCubicFoot = 0.3048 * 0.3048 * 0.3048;

// The kinds, each by its group.
[[nodiscard]] RatingMethod VNotchMethod(const RatingDevice& device);
[[nodiscard]] RatingMethod RectangularWeirMethod(const RatingDevice& device);
[[nodiscard]] RatingMethod StandardWeirMethod(const RatingDevice& device);
[[nodiscard]] RatingMethod CipollettiMethod(const RatingDevice& device);
[[nodiscard]] RatingMethod SutroMethod(const RatingDevice& device);
[[nodiscard]] RatingMethod ThroatMethod(const RatingDevice& device);
[[nodiscard]] RatingMethod BroadCrestedMethod(const RatingDevice& device);
[[nodiscard]] RatingMethod ParshallMethod(const RatingDevice& device);
[[nodiscard]] RatingMethod HFlumeMethod(const RatingDevice& device);
[[nodiscard]] RatingMethod CutthroatMethod(const RatingDevice& device);
[[nodiscard]] RatingMethod ChannelMethod(const RatingDevice& device);
[[nodiscard]] RatingMethod SectionMethod(const RatingDevice& device);
[[nodiscard]] RatingMethod PointsMethod(const RatingDevice& device);

#endif  // ORVIA_FLOW_RATING_METHOD_H
