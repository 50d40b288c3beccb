#include "archive/plot_path.h"

#include <algorithm>
#include <cmath>

#include "common/text.h"
#include "logger/date_text.h"

namespace {

constexpr double Margin = 4000;         // pixels outside the box that are still drawn
constexpr double FewDistance = 14;      // pixels between points that each have a marker
constexpr std::size_t DensePoints = 2;  // to a pixel

/// Cuts a stroke from `a` to `b` to where `inside` of one coordinate lies: the share of the way at
/// which it enters and leaves.
bool CutTo(double from, double to, double low, double high, double& enter, double& leave) {
    const double way = to - from;
    if (way == 0) {
        return low <= from && from <= high;
    }
    const double first = (low - from) / way;
    const double second = (high - from) / way;
    enter = std::max(enter, std::min(first, second));
    leave = std::min(leave, std::max(first, second));
    return enter <= leave;
}

/// Puts strokes together, cut to a band around the box.
class Strokes {
 public:
    Strokes(const PlotBox& box, PlotPath& path) : box_(box), path_(path) {}

    void GoTo(const PlotSpot& spot) {
        if (!down_) {
            last_ = spot;
            down_ = true;
            if (IsNear(spot)) {
                path_.Spots.push_back(spot);
            }
            return;
        }
        IsNear(last_) && IsNear(spot) ? path_.Spots.push_back(spot) : Cut(spot);
        last_ = spot;
    }
    void Lift() {
        End();
        down_ = false;
    }
    [[nodiscard]] bool IsNear(const PlotSpot& spot) const {
        return std::fabs(spot.X - box_.Left) <= Margin + box_.Width &&
               std::fabs(spot.Y - box_.Top) <= Margin + box_.Height;
    }

 private:
    void Cut(const PlotSpot& spot) {
        double enter = 0;
        double leave = 1;
        const double width = Margin + box_.Width;
        const double height = Margin + box_.Height;
        if (CutTo(last_.X, spot.X, box_.Left - width, box_.Left + width, enter, leave) &&
            CutTo(last_.Y, spot.Y, box_.Top - height, box_.Top + height, enter, leave)) {
            const auto at = [&](double share) {
                return PlotSpot{last_.X + (spot.X - last_.X) * share,
                                last_.Y + (spot.Y - last_.Y) * share};
            };
            if (enter > 0) {
                End();
                path_.Spots.push_back(at(enter));
            }
            path_.Spots.push_back(at(leave));
        }
        if (!IsNear(spot)) {
            End();
        }
    }
    void End() {
        const std::size_t begin = path_.Ends.empty() ? 0 : path_.Ends.back();
        if (path_.Spots.size() > begin + 1) {
            path_.Ends.push_back(path_.Spots.size());
        } else {
            path_.Spots.resize(begin);
        }
    }

    const PlotBox& box_;
    PlotPath& path_;
    PlotSpot last_;
    bool down_ = false;
};

/// Chooses the points that get a marker: the first one of each stretch of time, the stretches
/// hanging on nothing but the zoom, so that markers stay on their points while a plot is panned.
class MarkerPlaces {
 public:
    MarkerPlaces(const PlotBox& box, double distance, double shift)
        : stretch_(static_cast<double>(box.To - box.From) * distance / box.Width), shift_(shift) {}

    [[nodiscard]] bool Takes(Moment time) {
        const double stretch = std::floor(static_cast<double>(time) / stretch_ + shift_);
        const bool fresh = stretch != last_;
        last_ = stretch;
        return fresh;
    }

 private:
    double stretch_;
    double shift_;
    double last_ = std::numeric_limits<double>::quiet_NaN();
};

bool IsInside(const PlotBox& box, const PlotSpot& spot) {
    return box.Left <= spot.X && spot.X <= box.Left + box.Width && box.Top <= spot.Y &&
           spot.Y <= box.Top + box.Height;
}

bool StandsAlone(const std::vector<PlotPoint>& points, std::size_t at) {
    return (at == 0 || points[at - 1].IsBreak()) &&
           (at + 1 == points.size() || points[at + 1].IsBreak());
}

}  // namespace

PlotPath PathOf(const std::vector<PlotPoint>& points, const PlotBox& box, double distance,
                double shift) {
    PlotPath path;
    path.Spots.reserve(points.size());
    const auto count = static_cast<double>(points.size());
    const bool few = count * FewDistance <= box.Width;
    path.Dense = count > DensePoints * box.Width;
    Strokes strokes(box, path);
    MarkerPlaces places(box, distance, shift);
    for (std::size_t at = 0; at < points.size(); ++at) {
        if (points[at].IsBreak()) {
            strokes.Lift();
            continue;
        }
        const PlotSpot spot{box.XOf(points[at].Time), box.YOf(points[at].Value)};
        strokes.GoTo(spot);
        const bool marked = few || places.Takes(points[at].Time) || StandsAlone(points, at);
        if (marked && IsInside(box, spot)) {
            path.Markers.push_back(spot);
        }
    }
    strokes.Lift();
    return path;
}

std::string MomentText(Moment moment, const SystemClock& clock) {
    const LocalTime time = TimeOfMoment(moment);
    return cmd::ShortDateText(clock, time.Year, time.Month, time.Day) + " " + TwoDigits(time.Hour) +
           ":" + TwoDigits(time.Minute) + ":" + TwoDigits(time.Second);
}

std::string SpanText(Moment from, Moment to, const SystemClock& clock) {
    return MomentText(from, clock) + " to " + MomentText(to, clock);
}
