#ifndef ORVIA_ARCHIVE_PLOT_VIEW_H
#define ORVIA_ARCHIVE_PLOT_VIEW_H

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "archive/periods.h"
#include "archive/plot_data.h"

/// The part of time and values that a plot shows.
struct PlotPart {
    Moment From = 0;
    Moment To = 1;  ///< behind From; both inside
    /// By unit, the ranges that the operator chose; others follow what is shown.
    std::map<std::string, ValueRange> Values;

    [[nodiscard]] Moment Width() const { return To - From; }
    /// A hundredth of the width: what is no further apart is near each other.
    [[nodiscard]] Moment Reach() const { return Width() / 100; }
    /// The moment at a share of the width, no further than its ends.
    [[nodiscard]] Moment At(double share) const;
    /// The share at which a moment lies; nothing outside.
    [[nodiscard]] std::optional<double> ShareOf(Moment moment) const;
    [[nodiscard]] bool operator==(const PlotPart& other) const;
};

/// What a turn of the wheel zooms by: a fifth closer for each notch (120) away from the operator.
[[nodiscard]] double WheelFactor(int turned);

/// How an operator goes through time and values: zooming, panning, and back. Shares are parts of
/// what is shown: 0 is its left or lower end, 1 the right or upper one.
class PlotView {
 public:
    /// Steps that belong together, as the notches of one turn of a wheel, are taken back together.
    enum class Gesture { Single, Wheel, Drag };

    /// No part is narrower, in seconds.
    static constexpr Moment LeastWidth = 10;

    /// Sets what "all" is; an empty or short period is widened. What is shown stays as it is if it
    /// was a part, and follows if it was all.
    void SetWhole(const Period& whole);

    [[nodiscard]] const PlotPart& Shown() const { return shown_; }
    /// Whether all of the time is shown, and by the values' own ranges.
    [[nodiscard]] bool ShowsAll() const { return shown_ == whole_; }

    void ZoomAll();
    void ZoomTo(Moment from, Moment to);
    /// Shows `factor` times the time; what lies at the share `at` stays there.
    void ZoomTime(double factor, double at, Gesture gesture);
    /// The same for values; `ranges` are those now shown, by unit.
    void ZoomValues(double factor, double at, const std::map<std::string, ValueRange>& ranges,
                    Gesture gesture);
    /// Goes by a share of the width, to later times if it is above 0.
    void Pan(double share);
    /// Goes as far as it takes to show a moment.
    void Reveal(Moment moment);
    /// Goes up or down by a share of the height, in the ranges that the operator chose.
    void PanValues(double share);
    /// Goes back to what was shown before.
    void Back();
    [[nodiscard]] bool CanGoBack() const { return !before_.empty(); }

    // Dragging what is shown with the pointer.
    void BeginDrag() { dragged_ = shown_; }
    /// Shows what was shown when the drag began, moved by shares to the right and up.
    void DragBy(double right, double up);

    /// There is no way back from here.
    void Forget() { before_.clear(); }

    /// The next step is none of those before.
    void EndGesture() { last_ = Gesture::Single; }

 private:
    void Go(PlotPart part, Gesture gesture);
    [[nodiscard]] PlotPart Kept(PlotPart part) const;

    PlotPart whole_;
    PlotPart shown_;
    PlotPart dragged_;
    std::vector<PlotPart> before_;
    Gesture last_ = Gesture::Single;
};

#endif  // ORVIA_ARCHIVE_PLOT_VIEW_H
