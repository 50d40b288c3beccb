#ifndef ORVIA_ARCHIVE_PLOT_PATH_H
#define ORVIA_ARCHIVE_PLOT_PATH_H

#include <cstddef>
#include <string>
#include <vector>

#include "archive/plot_data.h"
#include "platform/host.h"

/// Where a plot is drawn, in pixels, y downwards, and what of time and values fills it.
struct PlotBox {
    double Left = 0;
    double Top = 0;
    double Width = 1;
    double Height = 1;
    Moment From = 0;
    Moment To = 1;
    ValueRange Values;

    [[nodiscard]] double XOf(Moment time) const {
        return Left + Width * static_cast<double>(time - From) / static_cast<double>(To - From);
    }
    [[nodiscard]] double YOf(double value) const {
        return Top + Height * (Values.Highest - value) / (Values.Highest - Values.Lowest);
    }
};

/// A place in pixels.
struct PlotSpot {
    double X = 0;
    double Y = 0;
};

/// A line as it is drawn.
struct PlotPath {
    std::vector<PlotSpot> Spots;    ///< of all strokes, one behind the other
    std::vector<std::size_t> Ends;  ///< one past the last spot of each stroke
    std::vector<PlotSpot> Markers;  ///< where the line's marker stands
    bool Dense = false;             ///< so many spots that strokes lie beside each other
};

/// The path of points. It is cut far outside the box, so that no coordinate is too large to be
/// drawn. Markers stand about `distance` pixels apart, and on every point where the points are few
/// or stand alone; `shift`, 0 to 1, moves them along, so that those of two lines do not cover each
/// other.
[[nodiscard]] PlotPath PathOf(const std::vector<PlotPoint>& points, const PlotBox& box,
                              double distance, double shift);

/// A moment as the console writes times: "1/14/24 13:05:00".
[[nodiscard]] std::string MomentText(Moment moment, const SystemClock& clock);

/// What an axis of time shows, in words: "1/14/24 08:00:00 to 1/15/24 07:59:59".
[[nodiscard]] std::string SpanText(Moment from, Moment to, const SystemClock& clock);

#endif  // ORVIA_ARCHIVE_PLOT_PATH_H
