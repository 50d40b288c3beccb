#include "flow/rating_made.h"

#include <algorithm>
#include <cmath>

#include "common/number_text.h"
#include "common/text.h"
#include "flow/rating.h"
#include "flow/rating_method.h"
#include "flow/rating_points.h"
#include "flow/unit_names.h"

namespace {

// What straight lines may be off in choosing; the rest of the tolerance is for what lies between
// the samples, and for the rounding of the figures.
constexpr double ChoosingTolerance = 0.8 * RatingTolerance;
constexpr int FlowDigits = 7;
constexpr int EndDigits = 7;
constexpr int HighestDigits = 4;

struct KindMethod {
    std::string_view Key;
    RatingMethod (*Method)(const RatingDevice&);
};

constexpr KindMethod Methods[] = {{"v-notch", VNotchMethod},
                                  {"rectangular-weir", RectangularWeirMethod},
                                  {"standard-weir", StandardWeirMethod},
                                  {"cipolletti", CipollettiMethod},
                                  {"sutro", SutroMethod},
                                  {"throat-rectangular", ThroatMethod},
                                  {"throat-trapezoidal", ThroatMethod},
                                  {"throat-triangular", ThroatMethod},
                                  {"throat-u", ThroatMethod},
                                  {"pipe-sill", ThroatMethod},
                                  {"palmer-bowlus", ThroatMethod},
                                  {"broad-crested", BroadCrestedMethod},
                                  {"parshall", ParshallMethod},
                                  {"hs-flume", HFlumeMethod},
                                  {"h-flume", HFlumeMethod},
                                  {"hl-flume", HFlumeMethod},
                                  {"cutthroat", CutthroatMethod},
                                  {"channel-rectangular", ChannelMethod},
                                  {"channel-trapezoidal", ChannelMethod},
                                  {"channel-triangular", ChannelMethod},
                                  {"channel-circular", ChannelMethod},
                                  {"channel-egg", ChannelMethod},
                                  {"channel-section", SectionMethod},
                                  {"points", PointsMethod}};

/// The method of a device whose figures are accepted; otherwise it is refused with a remark for
/// each that is not.
RatingMethod MethodOf(const RatingDevice& device) {
    if (device.Kind == nullptr || device.Values.size() != device.Kind->Fields.size()) {
        return Refuse("No kind of device is chosen.");
    }
    RatingMethod refused;
    for (std::size_t i = 0; i < device.Values.size(); ++i) {
        const std::string fault = RatingFieldFault(device, i);
        if (!fault.empty()) {
            SayOf(refused, device, device.Kind->Fields[i].Key, RatingWeight::Refused, fault);
        }
    }
    if (!refused.Told.Remarks.empty()) {
        return refused;
    }
    for (const KindMethod& method : Methods) {
        if (method.Key == device.Kind->Key) {
            return method.Method(device);
        }
    }
    return Refuse("No method is known for this kind of device.");
}

bool Refused(const Rating& rating) {
    return std::any_of(
        rating.Remarks.begin(), rating.Remarks.end(),
        [](const RatingRemark& remark) { return remark.Weight == RatingWeight::Refused; });
}

double Feet(double meters) {
    return RoundTo(meters / config::MetersPerFoot, EndDigits);
}

FlowTablePoint PointAt(const RatingMethod& method, double head) {
    // The ends are rounded: they must not slip out of what the method can tell.
    const double meters = std::clamp(head * config::MetersPerFoot, method.First, method.Last);
    return {head, RoundTo(method.Flow(meters) / CubicMetersPerCubicFoot, FlowDigits)};
}

/// The curve at heads close to one another, in feet and cfs.
std::vector<FlowTablePoint> Sample(const RatingMethod& method) {
    std::vector<double> bends;
    for (const double bend : method.Bends) {
        bends.push_back(Feet(bend));
    }
    std::vector<FlowTablePoint> samples;
    for (const double head : SampleHeads(Feet(method.First), Feet(method.Last), bends)) {
        samples.push_back(PointAt(method, head));
    }
    return samples;
}

/// The highest flow between two heads in feet with one hill, by golden sections.
FlowTablePoint HighestBetween(const RatingMethod& method, double low, double high) {
    const double golden = (std::sqrt(5.0) - 1) / 2;
    for (int i = 0; i < 40; ++i) {
        const double inner = golden * (high - low);
        const double left = high - inner;
        const double right = low + inner;
        if (method.Flow(left * config::MetersPerFoot) >
            method.Flow(right * config::MetersPerFoot)) {
            high = right;
        } else {
            low = left;
        }
    }
    return PointAt(method, RoundTo((low + high) / 2, HighestDigits));
}

/// Ends the samples of a closed section where the flow is highest.
void EndAtHighest(RatingMethod& method, std::vector<FlowTablePoint>& samples) {
    const auto highest = std::max_element(
        samples.begin(), samples.end(),
        [](const FlowTablePoint& a, const FlowTablePoint& b) { return a.Flow < b.Flow; });
    const double full = samples.back().Level;
    if (highest != samples.begin() && highest + 1 != samples.end()) {
        const FlowTablePoint top =
            HighestBetween(method, (highest - 1)->Level, (highest + 1)->Level);
        samples.erase(highest, samples.end());
        samples.push_back(top);
    }
    method.Last = method.Greatest = samples.back().Level * config::MetersPerFoot;
    Say(method, RatingWeight::Note,
        "The table ends at " + FormatFixed(samples.back().Level / full, 2) +
            " of the height, where the flow stops rising: nearer the crown it is not steady.");
}

/// Holds the flow where it would fall with rising head, and tells of it.
void HoldHighest(RatingMethod& method, const RatingDevice& device,
                 std::vector<FlowTablePoint>& samples) {
    double from = 0;
    double to = 0;
    for (std::size_t i = 1; i < samples.size(); ++i) {
        if (samples[i].Flow < samples[i - 1].Flow) {
            samples[i].Flow = samples[i - 1].Flow;
            from = from > 0 ? from : samples[i - 1].Level;
            to = samples[i].Level;
        }
    }
    if (to > 0) {
        Say(method, RatingWeight::Beyond,
            "Between " + LengthText(device, from * config::MetersPerFoot) + " and " +
                LengthText(device, to * config::MetersPerFoot) +
                " the equation lets the flow fall in places, as where water spreads over a bank; "
                "the table keeps the highest flow there.");
    }
}

/// The table's points; false, with a remark, if the method cannot tell them all.
bool TakePoints(RatingMethod& method, const RatingDevice& device) {
    Rating& rating = method.Told;
    if (method.Points.UpperBound() > 0) {
        rating.Points = method.Points;
        return true;
    }
    std::vector<FlowTablePoint> samples = Sample(method);
    const bool sound =
        samples.size() >= 2 && samples.back().Flow > 0 &&
        std::all_of(samples.begin(), samples.end(), [](const FlowTablePoint& sample) {
            return std::isfinite(sample.Flow) && sample.Flow >= 0;
        });
    if (!sound) {
        rating.Remarks = Refuse("No rating follows from these figures.").Told.Remarks;
        return false;
    }
    if (method.EndsAtHighest) {
        EndAtHighest(method, samples);
    }
    if (method.Falls || method.EndsAtHighest) {
        HoldHighest(method, device, samples);
    }
    rating.Points = ChoosePoints(samples, ChoosingTolerance, MostRatingPoints);
    return true;
}

/// Where the method holds and points lie.
void TakeRange(const RatingMethod& method, const RatingDevice& device, Rating& rating) {
    const double first = rating.Points[1].Level;
    const double last = rating.Points[rating.Points.UpperBound()].Level;
    const double least = std::clamp(Feet(method.Least), first, last);
    const double greatest = std::clamp(Feet(method.Greatest), first, last);
    if (!(least < greatest)) {
        rating.Remarks.push_back(
            {RatingWeight::Beyond,
             "No head is inside the limits of the method: it asks for " +
                 LengthText(device, method.Least) + " at least, and these dimensions allow " +
                 LengthText(device, std::min(method.Greatest, method.Last)) + " at most.",
             -1});
        return;
    }
    rating.LeastHead = least;
    rating.GreatestHead = greatest;
    rating.LeastFlow = RatingFlowAt(rating, least);
    rating.GreatestFlow = RatingFlowAt(rating, greatest);
    if (first < least * (1 - 1e-9)) {
        rating.Remarks.push_back({RatingWeight::Note,
                                  "Below " + LengthText(device, least * config::MetersPerFoot) +
                                      " the table goes on by the same equation, as an estimate.",
                                  -1});
    }
}

/// A step of 1, 2 or 5 times a power of ten that parts a span into about so many.
double RoundStep(double span, int parts) {
    const double rough = span / std::max(1, parts);
    const double power = std::pow(10.0, std::floor(std::log10(rough)));
    for (const double step : {1.0, 2.0, 5.0}) {
        if (rough <= step * power * 1.25) {
            return step * power;
        }
    }
    return 10 * power;
}

/// Decimals that tell a step apart.
int PlacesOf(double step) {
    return std::clamp(static_cast<int>(std::ceil(-std::log10(step) - 1e-9)), 0, 6);
}

/// A flow with four digits, its decimals held to what a listing can show.
std::string ListedFlow(double flow) {
    constexpr int Digits = 4;
    return flow > 0 ? FormatFixed(flow, Digits - 1 - static_cast<int>(std::floor(std::log10(flow))))
                    : std::string("0");
}

RatingListingLine LineAt(const Rating& rating, double head, int places, int lengthUnit,
                         int flowUnit) {
    const double feet = config::LengthToFeet(head, lengthUnit);
    RatingListingLine line;
    line.Head = head;
    line.Flow = CfsToFlow(RatingFlowAt(rating, feet), flowUnit);
    line.HeadText = FormatFixed(head, places);
    line.FlowText = ListedFlow(line.Flow);
    constexpr double Slack = 1e-6;
    line.Beyond =
        !(feet >= rating.LeastHead * (1 - Slack) && feet <= rating.GreatestHead * (1 + Slack));
    return line;
}

}  // namespace

Rating ComputeRating(const RatingDevice& device) {
    RatingMethod method = MethodOf(device);
    Rating rating;
    if (!Refused(method.Told) && TakePoints(method, device)) {
        rating = method.Told;
        TakeRange(method, device, rating);
    } else {
        rating.Remarks = method.Told.Remarks;
    }
    std::stable_sort(
        rating.Remarks.begin(), rating.Remarks.end(),
        [](const RatingRemark& a, const RatingRemark& b) { return a.Weight > b.Weight; });
    return rating;
}

double RatingFlowAt(const Rating& rating, double head) {
    return rating.Points.UpperBound() >= 2 && head > 0 ? TableFlow(rating.Points, head).value_or(0)
                                                       : 0;
}

std::vector<RatingListingLine> ListRating(const Rating& rating, int lengthUnit, int flowUnit,
                                          int lines) {
    std::vector<RatingListingLine> listing;
    if (!rating.Made()) {
        return listing;
    }
    const double first = MetersToLength(rating.Points[1].Level * config::MetersPerFoot, lengthUnit);
    const double last = MetersToLength(
        rating.Points[rating.Points.UpperBound()].Level * config::MetersPerFoot, lengthUnit);
    if (!(first < last)) {
        return listing;
    }
    const double step = RoundStep(last - first, lines);
    const double start = std::ceil(first / step - 1e-9);
    const int count = static_cast<int>(std::floor(last / step + 1e-9) - start) + 1;
    for (int i = 0; i < count; ++i) {
        listing.push_back(LineAt(rating, (start + i) * step, PlacesOf(step), lengthUnit, flowUnit));
    }
    return listing;
}

FlowTable RatingCurve(const Rating& rating, int lengthUnit, int flowUnit) {
    FlowTable curve;
    for (const FlowTablePoint& point : rating.Points) {
        curve.Append({MetersToLength(point.Level * config::MetersPerFoot, lengthUnit),
                      CfsToFlow(point.Flow, flowUnit)});
    }
    return curve;
}

std::string RatingRangeText(const Rating& rating, int lengthUnit, int flowUnit) {
    if (!rating.Made() || !(rating.GreatestHead > 0)) {
        return "none inside the limits of the method";
    }
    constexpr int Digits = 4;
    const auto head = [&](double feet) {
        return DoubleToText(
            RoundTo(MetersToLength(feet * config::MetersPerFoot, lengthUnit), Digits));
    };
    const auto flow = [&](double cfs) {
        return DoubleToText(RoundTo(CfsToFlow(cfs, flowUnit), Digits));
    };
    return head(rating.LeastHead) + " to " + head(rating.GreatestHead) + " " +
           ToLower(config::LengthUnitName(lengthUnit, true)) + ", " + flow(rating.LeastFlow) +
           " to " + flow(rating.GreatestFlow) + " " + config::FlowUnitName(flowUnit);
}

std::string RatingUncertaintyText(const Rating& rating) {
    const std::string covers = rating.UncertaintyText;
    if (!(rating.Uncertainty > 0)) {
        return covers.empty() ? "none is published" : covers;
    }
    const std::string figure = DoubleToText(rating.Uncertainty) + " %";
    return covers.empty() ? figure : figure + ", " + covers;
}
