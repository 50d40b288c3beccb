#include <algorithm>
#include <cmath>
#include <limits>

#include "common/number_text.h"
#include "flow/long_throat.h"
#include "flow/rating_method.h"
#include "flow/thin_plate_weirs.h"
#include "flow/unit_names.h"

// Limits: Bos (1989) and ISO 1438, as docs/flow-devices.md lists them.

namespace {

constexpr double Unlimited = std::numeric_limits<double>::infinity();
constexpr double LeastNotchHead = 0.06;
constexpr double GreatestNotchHead = 0.38;

/// The smaller of a limit and a share of a dimension that may have been left open (0).
double Held(double limit, double share, double dimension) {
    return dimension > 0 ? std::min(limit, share * dimension) : limit;
}

double InFeet(double meters) {
    return meters / config::MetersPerFoot;
}

}  // namespace

RatingMethod VNotchMethod(const RatingDevice& device) {
    const double angle = RatingValue(device, "angle");
    RatingMethod method;
    method.Flow = [angle](double head) { return NotchFlow(angle, head); };
    const double greatest = Held(Held(GreatestNotchHead, 0.4, RatingValue(device, "crest-height")),
                                 0.2, RatingValue(device, "channel-width"));
    SetHeads(method, device, LeastNotchHead, greatest);
    method.Told.Uncertainty = 1;
    method.Told.UncertaintyText =
        "of the coefficient of a fully contracted notch; what the gauge adds is not in it";
    method.Told.Equations = {
        "Kindsvater and Shen: Q = 8/15 Ce sqrt(2 g) tan(angle / 2) (h + k)^2.5"};
    method.Told.Sources = {"ISO 1438", "J. Shen, USGS Water-Supply Paper 1617-B, 1981",
                           "M. G. Bos, Discharge Measurement Structures, 1989"};
    if (angle < 20 || angle > 100) {
        SayOf(
            method, device, "angle", RatingWeight::Beyond,
            "No coefficient is published for angles outside 20 to 100 degrees; that of the nearer "
            "end stands in for it. Take the table for an estimate.");
        method.Told.Uncertainty = 0;
    } else if (angle < 25) {
        SayOf(method, device, "angle", RatingWeight::Beyond,
              "Shen's own curves begin at 25 degrees; ISO 1438 has them down to 20. Below 25 the "
              "coefficient is less certain.");
    }
    Say(method, RatingWeight::Note,
        "Fully contracted: the head at most 0.4 of the notch's height above the bed and 0.2 of the "
        "channel's width, and the water behind below the notch.");
    return method;
}

RatingMethod RectangularWeirMethod(const RatingDevice& device) {
    const double crest = RatingValue(device, "crest");
    const double channel = RatingValue(device, "channel-width");
    const double height = RatingValue(device, "crest-height");
    if (channel > 0 && channel < crest * (1 - 1e-9)) {
        return RefuseFor(device, "channel-width", "The crest is longer than the channel is wide.");
    }
    const double share = channel > 0 ? std::min(1.0, crest / channel) : 0;
    RatingMethod method;
    method.Flow = [=](double head) { return RectangularWeirFlow(crest, share, height, head); };
    constexpr double GreatestOverHeight = 2.5;
    SetHeads(method, device, 0.03, std::min(GreatestOverHeight * height, crest));
    const double over = method.Last / height;
    method.Told.Uncertainty = over <= 1 ? 1.5 : over <= 1.5 ? 2 : 3;
    method.Told.UncertaintyText = "of the coefficient, growing with head over crest height";
    method.Told.Equations = {
        "Kindsvater and Carter: Q = 2/3 Ce sqrt(2 g) (b + kb) (h + 0.001 m)^1.5"};
    method.Told.Sources = {"ISO 1438", "M. G. Bos, Discharge Measurement Structures, 1989"};
    const double end = (channel - crest) / 2;
    if (channel > 0 && end > 1e-9 * crest && end < 0.1) {
        SayOf(method, device, "channel-width", RatingWeight::Beyond,
              "Each end of the crest has to be " + LengthText(device, 0.1) +
                  " or more from the wall, or at it.");
    }
    if (crest < 0.15) {
        SayOf(method, device, "crest", RatingWeight::Beyond,
              "The crest is shorter than " + LengthText(device, 0.15) + ".");
    }
    if (height < 0.1) {
        SayOf(method, device, "crest-height", RatingWeight::Beyond,
              "The crest stands less than " + LengthText(device, 0.1) + " above the bed.");
    }
    Say(method, RatingWeight::Note,
        share >= 1 ? "Full width: the space below the falling water has to be aired."
        : share <= 0
            ? "Fully contracted: the channel's walls are taken for far away."
            : "The crest takes " + FormatFixed(100 * share, 0) + " % of the channel's width.");
    return method;
}

RatingMethod StandardWeirMethod(const RatingDevice& device) {
    const double crest = RatingValue(device, "crest");
    const int contractions = 2 - static_cast<int>(RatingValue(device, "contractions"));
    RatingMethod method;
    method.Flow = [=](double head) {
        return FrancisFlow(InFeet(crest), contractions, InFeet(head)) * CubicMetersPerCubicFoot;
    };
    SetHeads(method, device, 0.1 * config::MetersPerFoot, crest / 3);
    method.Falls = true;  // far above its limit the contractions would use up the crest
    method.Told.UncertaintyText = "none is published for the equation";
    method.Told.Equations = {contractions == 0   ? "Francis: Q = 3.33 L H^1.5 (feet)"
                             : contractions == 1 ? "Francis: Q = 3.33 (L - 0.1 H) H^1.5 (feet)"
                                                 : "Francis: Q = 3.33 (L - 0.2 H) H^1.5 (feet)"};
    method.Told.Sources = {"U.S. Bureau of Reclamation, Water Measurement Manual, 1997"};
    Say(method, RatingWeight::Note,
        "The approach has to be deep and slow: crest and ends at least twice the head from bed and "
        "walls.");
    return method;
}

RatingMethod CipollettiMethod(const RatingDevice& device) {
    const double crest = RatingValue(device, "crest");
    const double height = RatingValue(device, "crest-height");
    const double channel = RatingValue(device, "channel-width");
    if (channel > 0 && channel < crest * (1 - 1e-9)) {
        return RefuseFor(device, "channel-width", "The crest is longer than the channel is wide.");
    }
    RatingMethod method;
    method.Flow = [=](double head) {
        return CipollettiFlow(InFeet(crest), InFeet(head)) * CubicMetersPerCubicFoot;
    };
    const double ends = channel > 0 ? (channel - crest) / 4 : Unlimited;  // twice the head each
    SetHeads(method, device, 0.2 * config::MetersPerFoot,
             std::max(1e-3, std::min(Held(std::min(crest / 3, 0.6), 0.5, height), ends)));
    method.Told.Uncertainty = 5;
    method.Told.UncertaintyText = "of the coefficient";
    method.Told.Equations = {"Cipolletti: Q = 3.367 L H^1.5 (feet)"};
    method.Told.Sources = {"U.S. Bureau of Reclamation, Water Measurement Manual, 1997",
                           "M. G. Bos, Discharge Measurement Structures, 1989"};
    Say(method, RatingWeight::Note,
        "Bed and walls have to be twice the head or more from the crest and its ends.");
    return method;
}

RatingMethod SutroMethod(const RatingDevice& device) {
    const double height = RatingValue(device, "base-height");
    const double width = RatingValue(device, "base-width");
    const double opening = RatingValue(device, "opening-height");
    const bool oneSided = RatingValue(device, "sides") == 1;
    if (opening <= height) {
        return RefuseFor(device, "opening-height",
                         "The opening has to be higher than its rectangular base.");
    }
    RatingMethod method;
    method.Flow = [=](double head) { return SutroFlow(height, width, oneSided, head); };
    method.Bends = {height};
    SetHeads(method, device, std::max(2 * height, 0.03), opening);
    method.Told.Uncertainty = 2;
    method.Told.UncertaintyText = "of the coefficient, of a plate cut with care";
    method.Told.Equations = {"Sutro: Q = Cd b sqrt(2 g a) (h - a / 3)"};
    method.Told.Sources = {"M. G. Bos, Discharge Measurement Structures, 1989",
                           "E. Soucek, H. E. Howe and F. T. Mavis, 1936 (coefficients)"};
    constexpr double Foot = config::MetersPerFoot;
    if (height < 0.02 * Foot || height > 0.3 * Foot || width < 0.5 * Foot || width > 1.5 * Foot) {
        Say(method, RatingWeight::Beyond,
            "Coefficients are published for bases " + LengthText(device, 0.02 * Foot) + " to " +
                LengthText(device, 0.3 * Foot) + " high and " + LengthText(device, 0.5 * Foot) +
                " to " + LengthText(device, 1.5 * Foot) +
                " wide; that of the nearest base stands in for it.");
    }
    const double crest = RatingValue(device, "crest-height");
    const double channel = RatingValue(device, "channel-width");
    if ((crest > 0 && crest > width) || (channel > 0 && channel < 3 * width)) {
        Say(method, RatingWeight::Beyond,
            "The base has to be wider than the crest is high above the bed, and the channel three "
            "times as wide as the base.");
    }
    const double half = (opening - height) / 2;
    Say(method, RatingWeight::Note,
        LengthText(device, half) + " above the base the opening has to be " +
            LengthText(device, width * SutroWidthShare(half, height)) + " wide, at its top " +
            LengthText(device, width * SutroWidthShare(2 * half, height)) + ".");
    return method;
}
