#ifndef ORVIA_ARCHIVE_PLOT_DATA_H
#define ORVIA_ARCHIVE_PLOT_DATA_H

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "archive/series_values.h"

/// A point of a drawn line, or a break of it, behind which a new one begins.
struct PlotPoint {
    Moment Time = 0;
    double Value = 0;  ///< in the column's unit; no number at a break

    [[nodiscard]] bool IsBreak() const { return std::isnan(Value); }
};

/// What stands under a cursor.
struct PlotReading {
    std::size_t Record = 0;
    Moment Time = 0;
    double Value = 0;
};

/// Smallest and largest figure.
struct ValueRange {
    double Lowest = 0;
    double Highest = 0;
};

/// A column of a series as a plot draws it, at any zoom without looking at every record: smallest
/// and largest figure of 16 records, of 16 of those, and so on, half a byte a record. Figures are
/// taken from the values, which are referred to and must outlive this.
class PlotColumn {
 public:
    PlotColumn(const SeriesValues& values, std::size_t column);

    /// What a line from one moment to another needs that is drawn over so many pixels (1 or more):
    /// all records where there are few, else first, smallest, largest and last of each pixel, so
    /// that it covers the same pixels; and the records next to both ends. Breaks stand in gaps,
    /// where the column is missing and where the clock was set back: time goes back only there. A
    /// point between two breaks stands alone.
    [[nodiscard]] std::vector<PlotPoint> PointsIn(Moment from, Moment to, int pixels) const;

    /// The record nearest to a moment, of equally near ones the earlier in time, and where the
    /// clock was set back the later in the logger's order. Nothing in a gap and outside, unless a
    /// record is no more than `reach` seconds away.
    [[nodiscard]] std::optional<PlotReading> ReadingAt(Moment time, Moment reach) const;

    /// Extremes of the records from one moment to another, both inside.
    [[nodiscard]] std::optional<ValueRange> RangeIn(Moment from, Moment to) const;

    /// Bytes that this holds, the values not counted.
    [[nodiscard]] std::size_t Memory() const;

 private:
    /// Records one behind the other that all have the column, time never going back; end excluded.
    struct Track {
        std::size_t Begin;
        std::size_t End;
    };
    /// The records that hold the extremes of a block.
    struct Extremes {
        std::uint32_t Lowest;
        std::uint32_t Highest;
    };
    class Finder;
    class Pen;

    void FindTracks();
    void BuildLevels();
    [[nodiscard]] double ValueOf(std::size_t record) const { return values_.At(column_, record); }
    [[nodiscard]] Moment TimeOf(std::size_t record) const { return values_.Times().At(record); }
    [[nodiscard]] Extremes BlockAt(std::size_t level, std::size_t block) const;
    /// Of records begin to end - 1 of a track, at least one.
    [[nodiscard]] Extremes ExtremesOf(std::size_t begin, std::size_t end) const;
    /// The first record of a track, from `first` on, at a moment or behind it; its end if none is.
    [[nodiscard]] std::size_t FirstFrom(const Track& track, std::size_t first, Moment moment) const;
    void DrawTrack(const Track& track, Moment from, Moment to, int pixels, Pen& pen) const;
    void DrawPixels(const Track& inside, Moment from, Moment to, int pixels, Pen& pen) const;
    void DrawPixel(std::size_t begin, std::size_t end, Pen& pen) const;
    [[nodiscard]] std::optional<PlotReading> ReadingIn(const Track& track, Moment time,
                                                       Moment reach) const;

    const SeriesValues& values_;
    const std::size_t column_;
    std::vector<Track> tracks_;                  ///< in the logger's order
    std::vector<std::uint32_t> gaps_;            ///< records behind a gap, ascending
    std::vector<std::vector<Extremes>> levels_;  ///< of blocks of 16, 256, 4096... records
};

#endif  // ORVIA_ARCHIVE_PLOT_DATA_H
