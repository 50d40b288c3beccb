#include "flow/rating_picture.h"

#include <algorithm>
#include <cmath>

#include "common/number_text.h"
#include "flow/rating_method.h"
#include "flow/unit_names.h"

namespace {

constexpr int TableLines = 60;
constexpr int ShownDigits = 5;
constexpr std::string_view BeyondText = "an estimate";
constexpr std::string_view OutlierText = "far from what the others suggest";

std::string HeadName(const RatingDevice& device) {
    const RatingGroup group = device.Kind->Group;
    return group == RatingGroup::Channel || group == RatingGroup::OwnPoints ? "Level" : "Head";
}

double ShownHead(double feet, int unit) {
    return MetersToLength(feet * config::MetersPerFoot, unit);
}

/// Parts the curve at the ends of the range; without a range all of it is an estimate.
void TakeCurve(const RatingDevice& device, const Rating& rating, RatingPicture& picture) {
    const FlowTable curve = RatingCurve(rating, device.LengthUnit, device.FlowUnit);
    const RatingSpot least{ShownHead(rating.LeastHead, device.LengthUnit),
                           CfsToFlow(rating.LeastFlow, device.FlowUnit), false};
    const RatingSpot greatest{ShownHead(rating.GreatestHead, device.LengthUnit),
                              CfsToFlow(rating.GreatestFlow, device.FlowUnit), false};
    const bool ranged = rating.GreatestHead > 0;
    if (ranged) {
        picture.Inside.push_back(least);
    }
    for (const FlowTablePoint& point : curve) {
        const bool above = ranged && point.Level > greatest.Head;
        const bool below = !ranged || point.Level < least.Head;
        picture.Curve.push_back({point.Level, point.Flow, above || below});
        (above ? picture.Above : (below ? picture.Below : picture.Inside))
            .push_back(picture.Curve.back());
    }
    if (ranged) {
        picture.Inside.push_back(greatest);
        if (!picture.Below.empty()) {
            picture.Below.push_back(least);
        }
        if (!picture.Above.empty()) {
            picture.Above.insert(picture.Above.begin(), greatest);
        }
    }
}

void TakeTable(const RatingDevice& device, const Rating& rating, RatingPicture& picture) {
    picture.Table.Headings = {picture.HeadTitle, picture.FlowTitle};
    for (const RatingListingLine& line :
         ListRating(rating, device.LengthUnit, device.FlowUnit, TableLines)) {
        picture.Stops.push_back({line.Head, line.Flow, line.Beyond});
        picture.Table.Rows.push_back({{line.HeadText, line.FlowText},
                                      line.Beyond,
                                      std::string(line.Beyond ? BeyondText : "")});
    }
}

void TakeOwnPoints(const RatingDevice& device, const Rating& rating, RatingPicture& picture) {
    if (rating.Residuals.empty()) {
        return;
    }
    picture.Residuals.Headings = {picture.HeadTitle, picture.FlowTitle, "Residual, %"};
    for (const RatingResidual& residual : rating.Residuals) {
        const double head = ShownHead(residual.Head, device.LengthUnit);
        const double flow = CfsToFlow(residual.Flow, device.FlowUnit);
        picture.OwnPoints.push_back({head, flow, residual.Outlier});
        picture.Residuals.Rows.push_back(
            {{DoubleToText(RoundTo(head, ShownDigits)), DoubleToText(RoundTo(flow, ShownDigits)),
              FormatFixed(residual.Percent, 1)},
             residual.Outlier,
             std::string(residual.Outlier ? OutlierText : "")});
    }
}

RatingChapter RemarksOf(const Rating& rating, RatingWeight weight, std::string heading) {
    RatingChapter chapter{std::move(heading), {}, weight != RatingWeight::Note};
    for (const RatingRemark& remark : rating.Remarks) {
        if (remark.Weight == weight) {
            chapter.Lines.push_back(remark.Text);
        }
    }
    return chapter;
}

}  // namespace

RatingPicture PictureOf(const RatingDevice& device, const Rating& rating) {
    RatingPicture picture;
    picture.HeadTitle = HeadName(device) + ", " + RatingUnitText(device, RatingUnits::Length);
    picture.FlowTitle = "Flow, " + RatingUnitText(device, RatingUnits::Flow);
    TakeCurve(device, rating, picture);
    TakeTable(device, rating, picture);
    TakeOwnPoints(device, rating, picture);
    return picture;
}

std::string StopText(const RatingPicture& picture, const RatingDevice& device, std::size_t stop) {
    if (stop >= picture.Table.Rows.size()) {
        return {};
    }
    const RatingSheet::Row& row = picture.Table.Rows[stop];
    return HeadName(device) + " " + row.Cells[0] + " " +
           RatingUnitText(device, RatingUnits::Length) + ", flow " + row.Cells[1] + " " +
           RatingUnitText(device, RatingUnits::Flow) + (row.Marked ? ", " + row.Remark : "") + ".";
}

std::size_t NearestStop(const RatingPicture& picture, double head) {
    const auto nearest =
        std::min_element(picture.Stops.begin(), picture.Stops.end(),
                         [head](const RatingSpot& a, const RatingSpot& b) {
                             return std::fabs(a.Head - head) < std::fabs(b.Head - head);
                         });
    return nearest == picture.Stops.end()
               ? 0
               : static_cast<std::size_t>(nearest - picture.Stops.begin());
}

std::vector<double> LogarithmicTicks(double first, double last) {
    constexpr double LongAxis = 3;  // powers of ten
    std::vector<double> ticks;
    if (!(first > 0 && last > first && std::isfinite(last))) {
        return ticks;
    }
    const int low = static_cast<int>(std::floor(std::log10(first)));
    const int high = static_cast<int>(std::floor(std::log10(last)));
    const bool powersAlone = std::log10(last / first) > LongAxis;
    for (int power = low; power <= high; ++power) {
        for (const double step : {1.0, 2.0, 5.0}) {
            const double tick = RoundTo(step * std::pow(10.0, power), 1);
            if (tick >= first && tick <= last && (step == 1 || !powersAlone)) {
                ticks.push_back(tick);
            }
        }
    }
    return ticks;
}

std::vector<RatingChapter> ChaptersOf(const RatingDevice& device, const Rating& rating) {
    std::vector<RatingChapter> chapters;
    const auto add = [&chapters](RatingChapter chapter) {
        if (!chapter.Lines.empty()) {
            chapters.push_back(std::move(chapter));
        }
    };
    add(RemarksOf(rating, RatingWeight::Refused, "No table can be made"));
    add(RemarksOf(rating, RatingWeight::Beyond, "Outside the limits"));
    if (rating.Made()) {
        add({"Range", {RatingRangeText(rating, device.LengthUnit, device.FlowUnit)}, false});
        add({"Uncertainty", {RatingUncertaintyText(rating)}, false});
        add({"Equations", rating.Equations, false});
        add({"Sources", rating.Sources, false});
        add({"Points of the table", {IntegerToText(rating.Points.UpperBound())}, false});
    }
    add(RemarksOf(rating, RatingWeight::Note, "Notes"));
    return chapters;
}
