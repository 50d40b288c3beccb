#include <cmath>

#include "common/number_text.h"
#include "flow/rating_method.h"
#include "flow/standard_flumes.h"
#include "flow/unit_names.h"

namespace {

constexpr std::string_view Bos = "M. G. Bos, Discharge Measurement Structures, 1989";

std::size_t SizeOf(const RatingDevice& device) {
    return static_cast<std::size_t>(RatingValue(device, "size"));
}

double InFeet(double meters) {
    return meters / config::MetersPerFoot;
}

RatingMethod LawMethod(const RatingDevice& device, const FlumeLaw& law) {
    RatingMethod method;
    method.Flow = [law](double head) {
        return law.Multiplier * std::pow(InFeet(head), law.Exponent) * CubicMetersPerCubicFoot;
    };
    SetHeads(method, device, law.LeastHead * config::MetersPerFoot,
             law.GreatestHead * config::MetersPerFoot);
    method.Told.Uncertainty = 3;
    method.Told.UncertaintyText = "of a flume built to its standard dimensions, in free flow";
    method.Told.Equations = {"Q = " + DoubleToText(law.Multiplier) + " H^" +
                             DoubleToText(law.Exponent) + " (feet)"};
    if (law.Submergence > 0) {
        Say(method, RatingWeight::Note,
            "Free flow as long as the second gauge reads no more than " +
                DoubleToText(law.Submergence) + " % of the head.");
    }
    return method;
}

}  // namespace

RatingMethod ParshallMethod(const RatingDevice& device) {
    RatingMethod method = LawMethod(device, ParshallLaw(SizeOf(device)));
    method.Told.Equations.front().insert(0, "Parshall: ");
    method.Told.Sources = {"U.S. Bureau of Reclamation, Water Measurement Manual, 1997",
                           std::string(Bos)};
    return method;
}

RatingMethod CutthroatMethod(const RatingDevice& device) {
    RatingMethod method = LawMethod(device, CutthroatLaw(SizeOf(device)));
    method.Told.Equations.front().insert(0, "Skogerboe: ");
    method.Told.Sources = {"Openchannelflow, Cutthroat flume flow characteristics"};
    Say(method, RatingWeight::Note, "The head has to lie between 0.1 and 1/3 of the length.");
    return method;
}

RatingMethod HFlumeMethod(const RatingDevice& device) {
    const HFlumeKind kind = device.Kind->Key == "hs-flume"  ? HFlumeKind::Hs
                            : device.Kind->Key == "h-flume" ? HFlumeKind::H
                                                            : HFlumeKind::Hl;
    const HFlumeLaw law = LawOfHFlume(kind, SizeOf(device));
    RatingMethod method;
    method.Flow = [law](double head) {
        return HFlumeFlow(law, InFeet(head)) * CubicMetersPerCubicFoot;
    };
    // The laws bend more and more below their least head: the table begins there.
    method.First = method.Least = LeastHFlumeHead * config::MetersPerFoot;
    method.Last = method.Greatest = law.Depth * config::MetersPerFoot;
    method.Told.Uncertainty = 3;
    method.Told.UncertaintyText = "of a flume built to its standard dimensions, in free flow";
    method.Told.Equations = {"log Q = " + DoubleToText(law.A) + " + " + DoubleToText(law.B) +
                             " log h + " + DoubleToText(law.C) + " (log h)^2 (metres)"};
    method.Told.Sources = {std::string(Bos)};
    if (law.ScaledFrom > 0) {
        method.Told.Uncertainty = 4;
        method.Told.UncertaintyText =
            "3 % of the flume it is scaled from, and 1 % by which H flumes scaled so differ from "
            "their own laws";
        SayOf(method, device, "size", RatingWeight::Beyond,
              "No law of this depth was found published: the rating is that of " +
                  DoubleToText(law.ScaledFrom) + " ft, scaled by Froude's law of similarity.");
    }
    Say(method, RatingWeight::Note,
        "Water behind the flume up to 30 % of the head changes the flow by about 1 %.");
    return method;
}
