#include <algorithm>
#include <cmath>
#include <memory>

#include "common/number_text.h"
#include "flow/channel_section.h"
#include "flow/composite_roughness.h"
#include "flow/long_throat.h"
#include "flow/rating_method.h"

namespace {

constexpr double TableRatio = 500;  // last depth over first
constexpr double GreatestFigure = 1e6;

double SlopeOf(const RatingDevice& device) {
    return RatingValue(device, "slope") / 100;
}

void TellManning(RatingMethod& method) {
    method.Told.Equations = {"Manning: Q = A R^(2/3) S^(1/2) / n (metres)"};
    method.Told.Sources = {"V. T. Chow, Open-Channel Hydraulics, 1959"};
    method.Told.UncertaintyText =
        "no better than the roughness: 10 % of it is 10 % of the flow, 10 % of the slope 5 %";
    Say(method, RatingWeight::Note,
        "Holds where the flow is even: a long straight reach, no backwater.");
}

void SetDepths(RatingMethod& method, double depth) {
    method.Last = method.Greatest = depth;
    method.First = method.Least = depth / TableRatio;
}

/// Tells where the flow would be faster than waves.
void TellFroude(RatingMethod& method, double flow, double area, double width) {
    const double froude = flow / area / std::sqrt(Gravity * area / width);
    if (froude > 0.85) {
        Say(method, RatingWeight::Note,
            "The channel is so steep that the flow is near or above its critical speed (Froude "
            "number " +
                FormatFixed(froude, 1) + "): waves disturb the level.");
    }
}

std::unique_ptr<ChannelSection> SectionOf(const RatingDevice& device) {
    const std::string_view key = device.Kind->Key;
    if (key == "channel-circular") {
        return std::make_unique<CircleSection>(RatingValue(device, "pipe-diameter"));
    }
    if (key == "channel-egg") {
        return std::make_unique<EggSection>(RatingValue(device, "height"));
    }
    return std::make_unique<TrapezoidSection>(RatingValue(device, "width"),
                                              RatingValue(device, "side-slope"));
}

const char* ComposingName(Composing composing) {
    switch (composing) {
        case Composing::Forces:
            return "Pavlovskii: n = (sum of P n^2 / P)^(1/2)";
        case Composing::Conveyances:
            return "Lotter: Q = sum of the flows of the parts, parted by verticals";
        case Composing::OneVelocity:
            break;
    }
    return "Horton and Einstein: n = (sum of P n^1.5 / P)^(2/3)";
}

/// Why rows make no cross-section; empty if they do.
std::string RowsFault(const RatingDevice& device) {
    if (device.Rows.size() < 3) {
        return "A cross-section needs three points at least.";
    }
    for (std::size_t i = 0; i < device.Rows.size(); ++i) {
        const RatingRow& row = device.Rows[i];
        const bool held = std::fabs(row[0]) <= GreatestFigure &&
                          std::fabs(row[1]) <= GreatestFigure && row[2] >= 0 && row[2] <= 1;
        if (!held || (row[2] > 0 && row[2] < 0.001)) {
            return "Row " + IntegerToText(static_cast<std::int64_t>(i) + 1) +
                   " has a figure that cannot be meant: roughnesses lie between 0.001 and 1.";
        }
    }
    return {};
}

std::vector<RatingRow> RowsInMeters(const RatingDevice& device) {
    std::vector<RatingRow> rows = device.Rows;
    for (RatingRow& row : rows) {
        row[0] = LengthToMeters(row[0], device.LengthUnit);
        row[1] = LengthToMeters(row[1], device.LengthUnit);
    }
    return rows;
}

}  // namespace

RatingMethod ChannelMethod(const RatingDevice& device) {
    const std::shared_ptr<ChannelSection> section = SectionOf(device);
    const double bed = RatingValue(device, "width");
    const double roughness = RatingValue(device, "roughness");
    const double asked = RatingValue(device, "wall-roughness");
    const double walls = asked > 0 ? asked : roughness;
    const double slope = SlopeOf(device);
    RatingMethod method;
    method.Flow = [=](double depth) {
        const double wetted = section->Perimeter(depth);
        const RoughPart parts[] = {{bed, roughness}, {wetted - bed, walls}};
        return ManningFlow(section->Area(depth), parts, slope, Composing::OneVelocity);
    };
    method.EndsAtHighest = std::isfinite(section->Height());
    SetDepths(method, method.EndsAtHighest ? section->Height() : RatingValue(device, "depth"));
    method.Bends = section->Bends();
    TellManning(method);
    if (walls != roughness) {
        method.Told.Equations.emplace_back(ComposingName(Composing::OneVelocity));
    }
    const double deep = method.Last * 0.8;
    TellFroude(method, method.Flow(deep), section->Area(deep), section->Width(deep));
    return method;
}

RatingMethod SectionMethod(const RatingDevice& device) {
    const std::string fault = RowsFault(device);
    if (!fault.empty()) {
        return Refuse(fault);
    }
    const auto section =
        std::make_shared<PointSection>(RowsInMeters(device), RatingValue(device, "roughness"));
    if (!(section->Depth() > 1e-6) || !(section->Area(section->Depth()) > 0)) {
        return Refuse("The points hold no water: both ends have to stand above the lowest point.");
    }
    const auto composing =
        static_cast<Composing>(static_cast<int>(RatingValue(device, "composing")));
    const double slope = SlopeOf(device);
    if (composing == Composing::Conveyances && section->Overhangs()) {
        return RefuseFor(device, "composing",
                         "Sides that lean over the water cannot be parted by verticals: choose "
                         "another way for several roughnesses.");
    }
    RatingMethod method;
    method.Flow = [=](double depth) { return section->Flow(depth, slope, composing); };
    SetDepths(method, section->Depth());
    const double asked = RatingValue(device, "greatest-head");
    if (asked > 0) {
        SetDepths(method, std::min(asked, section->Depth()));
        if (asked > section->Depth()) {
            SayOf(method, device, "greatest-head", RatingWeight::Beyond,
                  "The section is full at " + LengthText(device, section->Depth()) + ".");
        }
    }
    method.EndsAtHighest = section->Closed();
    method.Falls = !section->Closed();
    method.Bends = section->Bends();
    TellManning(method);
    if (section->SeveralRoughnesses()) {
        method.Told.Equations.emplace_back(ComposingName(composing));
    }
    return method;
}
