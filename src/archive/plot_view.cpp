#include "archive/plot_view.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t MostBefore = 100;
constexpr double LargestZoomed = 1e300;

bool Same(const ValueRange& a, const ValueRange& b) {
    return a.Lowest == b.Lowest && a.Highest == b.Highest;
}

Moment Share(Moment width, double share) {
    return static_cast<Moment>(std::llround(static_cast<double>(width) * share));
}

/// A range that can be drawn: of some extent and finite.
bool IsDrawable(const ValueRange& range) {
    const double larger = std::max(std::fabs(range.Lowest), std::fabs(range.Highest));
    return larger < LargestZoomed && range.Highest - range.Lowest > larger * 1e-12;
}

/// Moves the picture up, so that lower values are shown.
void MoveValues(PlotPart& part, double up) {
    for (auto& [unit, range] : part.Values) {
        const double by = (range.Highest - range.Lowest) * up;
        const ValueRange moved{range.Lowest - by, range.Highest - by};
        range = IsDrawable(moved) ? moved : range;
    }
}

}  // namespace

double WheelFactor(int turned) {
    constexpr double Notch = 120;
    constexpr double NotchFactor = 0.8;
    return std::pow(NotchFactor, turned / Notch);
}

Moment PlotPart::At(double share) const {
    return From + Share(Width(), std::clamp(share, 0.0, 1.0));
}

std::optional<double> PlotPart::ShareOf(Moment moment) const {
    if (moment < From || moment > To) {
        return std::nullopt;
    }
    return static_cast<double>(moment - From) / static_cast<double>(Width());
}

bool PlotPart::operator==(const PlotPart& other) const {
    const auto same = [](const auto& a, const auto& b) {
        return a.first == b.first && Same(a.second, b.second);
    };
    return From == other.From && To == other.To &&
           std::equal(Values.begin(), Values.end(), other.Values.begin(), other.Values.end(), same);
}

void PlotView::SetWhole(const Period& whole) {
    const bool all = ShowsAll();
    const Moment last = std::max(whole.End - 1, whole.Begin);
    const Moment missing = std::max<Moment>(0, LeastWidth - (last - whole.Begin));
    whole_ = {whole.Begin - missing / 2, last + missing - missing / 2, {}};
    shown_ = all ? whole_ : Kept(shown_);
}

PlotPart PlotView::Kept(PlotPart part) const {
    const Moment width = std::clamp(part.Width(), LeastWidth, whole_.Width());
    // Half of what is shown may lie outside.
    const Moment from =
        std::clamp(part.From, whole_.From - width / 2, whole_.To - width + width / 2);
    part.From = width == whole_.Width() && part.Width() > width ? whole_.From : from;
    part.To = part.From + width;
    return part;
}

void PlotView::Go(PlotPart part, Gesture gesture) {
    part = Kept(std::move(part));
    if (part == shown_) {
        return;
    }
    if (gesture == Gesture::Single || gesture != last_) {
        before_.push_back(shown_);
        if (before_.size() > MostBefore) {
            before_.erase(before_.begin());
        }
    }
    last_ = gesture;
    shown_ = std::move(part);
}

void PlotView::ZoomAll() {
    Go(whole_, Gesture::Single);
}

void PlotView::ZoomTo(Moment from, Moment to) {
    PlotPart part = shown_;
    part.From = std::min(from, to);
    part.To = std::max(from, to);
    const Moment missing = std::max<Moment>(0, LeastWidth - part.Width());
    part.From -= missing / 2;
    part.To += missing - missing / 2;
    Go(std::move(part), Gesture::Single);
}

void PlotView::ZoomTime(double factor, double at, Gesture gesture) {
    const Moment width = shown_.Width();
    const auto wanted = std::max(LeastWidth, Share(width, factor));
    PlotPart part = shown_;
    part.From += Share(width - wanted, std::clamp(at, 0.0, 1.0));
    part.To = part.From + wanted;
    // So that zooming out ends with all, and not with a part that hangs over one end.
    if (wanted >= whole_.Width()) {
        part.From = whole_.From;
        part.To = whole_.To;
    }
    Go(std::move(part), gesture);
}

void PlotView::ZoomValues(double factor, double at, const std::map<std::string, ValueRange>& ranges,
                          Gesture gesture) {
    PlotPart part = shown_;
    for (const auto& [unit, range] : ranges) {
        const double extent = range.Highest - range.Lowest;
        const double low = range.Lowest + extent * (1 - factor) * std::clamp(at, 0.0, 1.0);
        const ValueRange zoomed{low, low + extent * factor};
        if (IsDrawable(zoomed)) {
            part.Values[unit] = zoomed;
        }
    }
    Go(std::move(part), gesture);
}

void PlotView::Pan(double share) {
    PlotPart part = shown_;
    part.From += Share(shown_.Width(), share);
    part.To = part.From + shown_.Width();
    Go(std::move(part), Gesture::Single);
}

void PlotView::Reveal(Moment moment) {
    if (moment < shown_.From || moment > shown_.To) {
        PlotPart part = shown_;
        part.From =
            moment < shown_.From ? moment - part.Reach() : moment + part.Reach() - part.Width();
        part.To = part.From + shown_.Width();
        Go(std::move(part), Gesture::Drag);
    }
}

void PlotView::PanValues(double share) {
    PlotPart part = shown_;
    MoveValues(part, -share);
    Go(std::move(part), Gesture::Drag);
}

void PlotView::DragBy(double right, double up) {
    PlotPart part = dragged_;
    part.From -= Share(dragged_.Width(), right);
    part.To = part.From + dragged_.Width();
    MoveValues(part, up);
    Go(std::move(part), Gesture::Drag);
}

void PlotView::Back() {
    if (CanGoBack()) {
        shown_ = Kept(std::move(before_.back()));
        before_.pop_back();
        last_ = Gesture::Single;
    }
}
