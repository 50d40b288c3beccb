#ifndef ORVIA_ARCHIVE_PLOT_SCENE_H
#define ORVIA_ARCHIVE_PLOT_SCENE_H

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "archive/named_series.h"
#include "archive/periods.h"
#include "archive/plot_data.h"
#include "archive/plot_marks.h"

/// A line of a plot: a column of a series.
struct PlotLine {
    std::shared_ptr<const NamedSeries> Series;
    std::size_t Column = 0;
    int Look = -1;  ///< number of its colour and marker; -1: that of its place among the lines
    bool operator==(const PlotLine&) const = default;
};

/// The axis of all lines that have one unit.
struct PlotAxis {
    std::string Unit;                ///< "Feet", "GPM"; may be empty
    std::string Title;               ///< what stands beside it
    std::vector<std::size_t> Lines;  ///< numbers of the lines, from 0
};

/// A mark and the series that it is of.
struct SceneMark {
    PlotMark Mark;
    std::shared_ptr<const NamedSeries> Series;
};

/// "Feet" of a channel in feet, "GPM" of "Flow (GPM)".
[[nodiscard]] std::string UnitOf(const SeriesColumn& column);

/// The columns that a plot begins with: channel 1, and flow if there is one.
[[nodiscard]] std::vector<std::size_t> FirstChoice(const SeriesValues& values);

/// "Plot of Hill Tanks", "Plot of Hill Tanks and Mill", "Plot of 3 Loggers".
[[nodiscard]] std::string PlotTitle(const std::vector<std::shared_ptr<const NamedSeries>>& series);

/// From the earliest record of some series to the latest, both inside; empty without records.
[[nodiscard]] Period WholeOf(const std::vector<std::shared_ptr<const NamedSeries>>& series);

/// The lines of a plot, an axis for each unit, and the marks.
class PlotScene {
 public:
    /// Shows these lines. What was worked out for lines that stay is kept.
    void SetLines(const std::vector<PlotLine>& lines);

    [[nodiscard]] const std::vector<PlotLine>& Lines() const { return lines_; }
    [[nodiscard]] const std::vector<PlotAxis>& Axes() const { return axes_; }
    [[nodiscard]] const std::vector<SceneMark>& Marks() const { return marks_; }
    [[nodiscard]] std::size_t AxisOf(std::size_t line) const;
    [[nodiscard]] const PlotColumn& ColumnOf(std::size_t line) const { return *columns_[line]; }
    /// The same to keep; it keeps its series.
    [[nodiscard]] const std::shared_ptr<const PlotColumn>& SharedColumn(std::size_t line) const {
        return columns_[line];
    }
    [[nodiscard]] const SeriesColumn& HeadingOf(std::size_t line) const;
    /// Number of a line's look.
    [[nodiscard]] std::size_t LookOf(std::size_t line) const;
    /// "Channel 1 (Feet)"; where several series are shown, "Hill Tanks: Channel 1 (Feet)".
    [[nodiscard]] std::string TitleOf(std::size_t line) const;
    [[nodiscard]] bool HasSeveralSeries() const;

    /// The range that an axis takes by itself: what its lines have from one moment to another, with
    /// some room.
    [[nodiscard]] ValueRange RangeOf(std::size_t axis, Moment from, Moment to) const;

    /// Marks from one moment to another, both inside, in the order of the series.
    [[nodiscard]] std::vector<SceneMark> MarksIn(Moment from, Moment to) const;

    /// Time of the first record behind a moment that is `step` seconds or more away, or of the last
    /// such one before it. If none is as far it is the end record, and nothing without any there.
    [[nodiscard]] std::optional<Moment> RecordFrom(Moment moment, Moment step, bool later) const;
    /// Time of the latest record, or of the earliest.
    [[nodiscard]] std::optional<Moment> EndRecord(bool latest) const;

    /// Bytes that this holds, the series not counted.
    [[nodiscard]] std::size_t Memory() const;

 private:
    void FindAxes();
    void FindMarks();

    std::vector<PlotLine> lines_;
    std::vector<std::shared_ptr<const PlotColumn>> columns_;  ///< by line
    std::vector<PlotAxis> axes_;
    std::vector<std::shared_ptr<const NamedSeries>> marked_;  ///< whose marks are there
    std::vector<SceneMark> marks_;
};

#endif  // ORVIA_ARCHIVE_PLOT_SCENE_H
