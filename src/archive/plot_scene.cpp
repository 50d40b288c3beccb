#include "archive/plot_scene.h"

#include <algorithm>

#include "archive/value_axis.h"
#include "common/number_text.h"

namespace {

using SharedSeries = std::shared_ptr<const NamedSeries>;

std::vector<SharedSeries> SeriesOf(const std::vector<PlotLine>& lines) {
    std::vector<SharedSeries> series;
    for (const PlotLine& line : lines) {
        if (std::find(series.begin(), series.end(), line.Series) == series.end()) {
            series.push_back(line.Series);
        }
    }
    return series;
}

const SeriesColumn& ColumnAt(const PlotLine& line) {
    return line.Series->Values().Columns()[line.Column];
}

/// A column and the series that it refers to.
struct KeptColumn {
    explicit KeptColumn(const PlotLine& line)
        : Series(line.Series), Column(Series->Values(), line.Column) {}

    SharedSeries Series;
    PlotColumn Column;
};

std::shared_ptr<const PlotColumn> MakeColumn(const PlotLine& line) {
    auto kept = std::make_shared<const KeptColumn>(line);
    return {kept, &kept->Column};
}

}  // namespace

std::string UnitOf(const SeriesColumn& column) {
    const std::string& heading = column.Heading;
    if (column.Kind == ColumnKind::Analog || column.Kind == ColumnKind::Pulse) {
        return heading;
    }
    const std::size_t open = heading.find('(');
    const std::size_t close = heading.rfind(')');
    return open < close && close != std::string::npos ? heading.substr(open + 1, close - open - 1)
                                                      : heading;
}

std::vector<std::size_t> FirstChoice(const SeriesValues& values) {
    std::vector<std::size_t> first;
    if (!values.Columns().empty()) {
        first.push_back(0);
    }
    const auto flow = values.FlowColumn();
    if (flow && *flow != 0) {
        first.push_back(*flow);
    }
    return first;
}

std::string PlotTitle(const std::vector<SharedSeries>& series) {
    switch (series.size()) {
        case 1:
            return "Plot of " + series.front()->Name();
        case 2:
            return "Plot of " + series.front()->Name() + " and " + series.back()->Name();
        default:
            return "Plot of " + IntegerToText(static_cast<std::int64_t>(series.size())) +
                   " Loggers";
    }
}

Period WholeOf(const std::vector<SharedSeries>& series) {
    std::optional<Period> whole;
    for (const SharedSeries& one : series) {
        const Period own = NamedPeriodOf(one->Values().Times(), NamedPeriod::All);
        if (!own.IsEmpty()) {
            whole = whole ? Period{std::min(whole->Begin, own.Begin), std::max(whole->End, own.End)}
                          : own;
        }
    }
    return whole.value_or(Period{});
}

void PlotScene::SetLines(const std::vector<PlotLine>& lines) {
    std::vector<std::shared_ptr<const PlotColumn>> columns;
    for (const PlotLine& line : lines) {
        const auto known = std::find_if(lines_.begin(), lines_.end(), [&](const PlotLine& old) {
            return old.Series == line.Series && old.Column == line.Column;
        });
        columns.push_back(known != lines_.end()
                              ? columns_[static_cast<std::size_t>(known - lines_.begin())]
                              : MakeColumn(line));
    }
    columns_ = std::move(columns);
    lines_ = lines;
    FindAxes();
    FindMarks();
}

void PlotScene::FindAxes() {
    axes_.clear();
    for (std::size_t line = 0; line < lines_.size(); ++line) {
        const std::string unit = UnitOf(HeadingOf(line));
        auto axis = std::find_if(axes_.begin(), axes_.end(),
                                 [&](const PlotAxis& one) { return one.Unit == unit; });
        if (axis == axes_.end()) {
            axis = axes_.insert(axes_.end(), {unit, ::TitleOf(HeadingOf(line)), {}});
        } else {
            axis->Title = unit.empty() ? "No unit" : unit;
        }
        axis->Lines.push_back(line);
    }
}

void PlotScene::FindMarks() {
    std::vector<SharedSeries> series = SeriesOf(lines_);
    if (series == marked_) {
        return;
    }
    marks_.clear();
    for (const SharedSeries& one : series) {
        for (const PlotMark& mark : MarksOf(one->Records(), one->Values().Times())) {
            marks_.push_back({mark, one});
        }
    }
    marked_ = std::move(series);
}

std::size_t PlotScene::AxisOf(std::size_t line) const {
    const auto holds = [line](const PlotAxis& axis) {
        return std::find(axis.Lines.begin(), axis.Lines.end(), line) != axis.Lines.end();
    };
    return static_cast<std::size_t>(std::find_if(axes_.begin(), axes_.end(), holds) -
                                    axes_.begin());
}

const SeriesColumn& PlotScene::HeadingOf(std::size_t line) const {
    return ColumnAt(lines_[line]);
}

std::size_t PlotScene::LookOf(std::size_t line) const {
    const int look = lines_[line].Look;
    return look < 0 ? line : static_cast<std::size_t>(look);
}

bool PlotScene::HasSeveralSeries() const {
    return marked_.size() > 1;
}

std::string PlotScene::TitleOf(std::size_t line) const {
    const std::string title = ::TitleOf(HeadingOf(line));
    return HasSeveralSeries() ? lines_[line].Series->Name() + ": " + title : title;
}

ValueRange PlotScene::RangeOf(std::size_t axis, Moment from, Moment to) const {
    std::optional<ValueRange> all;
    for (const std::size_t line : axes_[axis].Lines) {
        if (const auto own = columns_[line]->RangeIn(from, to)) {
            all = all ? ValueRange{std::min(all->Lowest, own->Lowest),
                                   std::max(all->Highest, own->Highest)}
                      : *own;
        }
    }
    return RangeWithRoom(all);
}

std::vector<SceneMark> PlotScene::MarksIn(Moment from, Moment to) const {
    std::vector<SceneMark> inside;
    std::copy_if(
        marks_.begin(), marks_.end(), std::back_inserter(inside),
        [&](const SceneMark& mark) { return from <= mark.Mark.Time && mark.Mark.Time <= to; });
    return inside;
}

std::optional<Moment> PlotScene::RecordFrom(Moment moment, Moment step, bool later) const {
    // Seen backwards, earlier records are later ones.
    const Moment sign = later ? 1 : -1;
    const Moment least = sign * moment + std::max<Moment>(step, 1);
    std::optional<Moment> nearest;
    std::optional<Moment> last;
    for (const SharedSeries& series : marked_) {
        for (const Moment time : series->Values().Times().All()) {
            const Moment seen = sign * time;
            if (seen >= least && (!nearest || seen < *nearest)) {
                nearest = seen;
            }
            if (seen > sign * moment && (!last || seen > *last)) {
                last = seen;
            }
        }
    }
    const std::optional<Moment>& found = nearest ? nearest : last;
    return found ? std::optional(sign * *found) : std::nullopt;
}

std::optional<Moment> PlotScene::EndRecord(bool latest) const {
    const Period whole = WholeOf(marked_);
    if (whole.IsEmpty()) {
        return std::nullopt;
    }
    return latest ? whole.End - 1 : whole.Begin;
}

std::size_t PlotScene::Memory() const {
    std::size_t bytes = marks_.capacity() * sizeof(SceneMark);
    for (const auto& column : columns_) {
        bytes += column->Memory();
    }
    return bytes;
}
