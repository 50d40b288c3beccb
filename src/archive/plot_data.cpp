#include "archive/plot_data.h"

#include <algorithm>

namespace {

constexpr std::size_t BlockSize = 16;
constexpr std::size_t PointsAPixel = 4;  // first, smallest, largest, last

}  // namespace

/// Puts records down as points, in the logger's order, with a break wherever a gap lies between.
class PlotColumn::Pen {
 public:
    Pen(const PlotColumn& column, std::vector<PlotPoint>& points)
        : column_(column), points_(points), gap_(column.gaps_.begin()) {}

    /// Goes on to a record; with a break if a gap lies before it.
    void Put(std::size_t record) {
        const auto last = column_.gaps_.end();
        if (gap_ != last && *gap_ < next_) {
            gap_ = std::lower_bound(gap_, last, next_);
        }
        if (gap_ != last && *gap_ <= record) {
            Lift();
        }
        PutOn(record);
    }
    /// Goes on to a record whatever lies before it.
    void PutOn(std::size_t record) {
        points_.push_back({column_.TimeOf(record), column_.ValueOf(record)});
        next_ = record + 1;
    }
    /// Ends the line, if there is one.
    void Lift() {
        if (!points_.empty() && !points_.back().IsBreak()) {
            points_.push_back({points_.back().Time, std::numeric_limits<double>::quiet_NaN()});
        }
    }
    /// Ends the line before a track that begins at a record.
    void Begin(std::size_t record) {
        Lift();
        next_ = record + 1;  // what lies before the track's first record is no gap of the track
    }

 private:
    const PlotColumn& column_;
    std::vector<PlotPoint>& points_;
    std::vector<std::uint32_t>::const_iterator gap_;
    std::size_t next_ = 0;  ///< behind the record put down last
};

PlotColumn::PlotColumn(const SeriesValues& values, std::size_t column)
    : values_(values), column_(column) {
    FindTracks();
    BuildLevels();
}

void PlotColumn::FindTracks() {
    bool open = false;
    for (std::size_t record = 0; record < values_.RecordCount(); ++record) {
        const bool has = values_.Has(column_, record);
        const PairKind pair = record == 0 ? PairKind::SetBack : values_.Times().Pair(record);
        if (has && open && pair != PairKind::SetBack) {
            tracks_.back().End = record + 1;
            if (pair == PairKind::Gap) {
                gaps_.push_back(static_cast<std::uint32_t>(record));
            }
        } else if (has) {
            tracks_.push_back({record, record + 1});
        }
        open = has;
    }
}

/// Finds the extremes of what it is shown, each figure looked up once.
class PlotColumn::Finder {
 public:
    Finder(const PlotColumn& column, std::size_t level, std::size_t first) : column_(column) {
        found_ = column.BlockAt(level, first);
        lowest_ = column.ValueOf(found_.Lowest);
        highest_ = level == 0 ? lowest_ : column.ValueOf(found_.Highest);
    }

    void Take(std::size_t level, std::size_t block) {
        const Extremes extremes = column_.BlockAt(level, block);
        const double low = column_.ValueOf(extremes.Lowest);
        const double high = level == 0 ? low : column_.ValueOf(extremes.Highest);
        if (low < lowest_) {
            lowest_ = low;
            found_.Lowest = extremes.Lowest;
        }
        if (high > highest_) {
            highest_ = high;
            found_.Highest = extremes.Highest;
        }
    }

    [[nodiscard]] const Extremes& Found() const { return found_; }

 private:
    const PlotColumn& column_;
    Extremes found_{};
    double lowest_ = 0;
    double highest_ = 0;
};

PlotColumn::Extremes PlotColumn::BlockAt(std::size_t level, std::size_t block) const {
    const auto record = static_cast<std::uint32_t>(block);
    return level == 0 ? Extremes{record, record} : levels_[level - 1][block];
}

// Blocks with records that do not have the column are never asked for, and hold anything.
void PlotColumn::BuildLevels() {
    std::size_t below = values_.RecordCount();
    for (std::size_t level = 0; below > BlockSize; ++level) {
        std::vector<Extremes> blocks((below + BlockSize - 1) / BlockSize);
        for (std::size_t block = 0; block < blocks.size(); ++block) {
            const std::size_t begin = block * BlockSize;
            Finder finder(*this, level, begin);
            for (std::size_t at = begin + 1; at < std::min(begin + BlockSize, below); ++at) {
                finder.Take(level, at);
            }
            blocks[block] = finder.Found();
        }
        below = blocks.size();
        levels_.push_back(std::move(blocks));
    }
}

PlotColumn::Extremes PlotColumn::ExtremesOf(std::size_t begin, std::size_t end) const {
    Finder finder(*this, 0, begin);
    for (std::size_t level = 0; begin < end; ++level) {
        const bool top = level == levels_.size();
        for (; begin < end && (top || begin % BlockSize != 0); ++begin) {
            finder.Take(level, begin);
        }
        for (; begin < end && end % BlockSize != 0; --end) {
            finder.Take(level, end - 1);
        }
        begin /= BlockSize;
        end /= BlockSize;
    }
    return finder.Found();
}

// It is mostly near: looked for in steps that double.
std::size_t PlotColumn::FirstFrom(const Track& track, std::size_t first, Moment moment) const {
    std::size_t step = 1;
    while (step < track.End - first && TimeOf(first + step) < moment) {
        step *= 2;
    }
    const auto all = values_.Times().All();
    const auto begin = all.begin() + static_cast<std::ptrdiff_t>(first + step / 2);
    const auto end = all.begin() + static_cast<std::ptrdiff_t>(std::min(first + step, track.End));
    return static_cast<std::size_t>(std::lower_bound(begin, end, moment) - all.begin());
}

void PlotColumn::DrawPixel(std::size_t begin, std::size_t end, Pen& pen) const {
    if (end - begin <= PointsAPixel) {
        for (std::size_t record = begin; record < end; ++record) {
            pen.Put(record);
        }
        return;
    }
    // A gap inside is narrower than the pixel.
    const Extremes found = ExtremesOf(begin, end);
    const std::size_t earlier = std::min(found.Lowest, found.Highest);
    const std::size_t later = std::max(found.Lowest, found.Highest);
    pen.Put(begin);
    if (earlier > begin) {
        pen.PutOn(earlier);
    }
    if (later > earlier && later < end - 1) {
        pen.PutOn(later);
    }
    if (earlier < end - 1) {
        pen.PutOn(end - 1);
    }
}

void PlotColumn::DrawPixels(const Track& inside, Moment from, Moment to, int pixels,
                            Pen& pen) const {
    const double width = (static_cast<double>(to - from) + 1) / pixels;
    std::size_t begin = inside.Begin;
    while (begin < inside.End) {
        const double pixel = std::floor(static_cast<double>(TimeOf(begin) - from) / width);
        const auto edge = from + static_cast<Moment>(std::ceil((pixel + 1) * width));
        const Moment next = std::max(edge, TimeOf(begin) + 1);
        const std::size_t end = FirstFrom(inside, begin, next);
        DrawPixel(begin, end, pen);
        begin = end;
    }
}

void PlotColumn::DrawTrack(const Track& track, Moment from, Moment to, int pixels, Pen& pen) const {
    const std::size_t begin = FirstFrom(track, track.Begin, from);
    const std::size_t end = FirstFrom(track, begin, to + 1);
    if ((begin == track.End) || (end == track.Begin)) {
        return;
    }
    pen.Begin(track.Begin);
    if (begin > track.Begin) {
        pen.Put(begin - 1);
    }
    if (end - begin <= PointsAPixel * static_cast<std::size_t>(pixels)) {
        for (std::size_t record = begin; record < end; ++record) {
            pen.Put(record);
        }
    } else {
        DrawPixels({begin, end}, from, to, pixels, pen);
    }
    if (end < track.End) {
        pen.Put(end);
    }
}

std::vector<PlotPoint> PlotColumn::PointsIn(Moment from, Moment to, int pixels) const {
    std::vector<PlotPoint> points;
    points.reserve(
        std::min(values_.RecordCount(),
                 PointsAPixel * static_cast<std::size_t>(std::clamp(pixels, 1, 10'000))));
    Pen pen(*this, points);
    if (from <= to) {
        for (const Track& track : tracks_) {
            DrawTrack(track, from, to, std::max(pixels, 1), pen);
        }
    }
    return points;
}

std::optional<PlotReading> PlotColumn::ReadingIn(const Track& track, Moment time,
                                                 Moment reach) const {
    const std::size_t behind = FirstFrom(track, track.Begin, time);
    std::size_t nearest = behind;
    if (behind == track.End ||
        (behind > track.Begin && time - TimeOf(behind - 1) <= TimeOf(behind) - time)) {
        // The first of those that have the time of the one before.
        nearest = FirstFrom(track, track.Begin, TimeOf(behind - 1));
    }
    const bool between = behind > track.Begin && behind < track.End &&
                         !std::binary_search(gaps_.begin(), gaps_.end(), behind);
    if (TimeOf(nearest) != time && !between && std::abs(TimeOf(nearest) - time) > reach) {
        return std::nullopt;
    }
    return PlotReading{nearest, TimeOf(nearest), ValueOf(nearest)};
}

std::optional<PlotReading> PlotColumn::ReadingAt(Moment time, Moment reach) const {
    std::optional<PlotReading> best;
    for (auto track = tracks_.rbegin(); track != tracks_.rend(); ++track) {
        const std::optional<PlotReading> found = ReadingIn(*track, time, reach);
        if (found && (!best || std::abs(found->Time - time) < std::abs(best->Time - time))) {
            best = found;
        }
    }
    return best;
}

std::optional<ValueRange> PlotColumn::RangeIn(Moment from, Moment to) const {
    std::optional<ValueRange> range;
    for (const Track& track : tracks_) {
        const std::size_t begin = FirstFrom(track, track.Begin, from);
        const std::size_t end = from <= to ? FirstFrom(track, begin, to + 1) : begin;
        if (begin < end) {
            const Extremes found = ExtremesOf(begin, end);
            const double low = ValueOf(found.Lowest);
            const double high = ValueOf(found.Highest);
            range = range ? ValueRange{std::min(range->Lowest, low), std::max(range->Highest, high)}
                          : ValueRange{low, high};
        }
    }
    return range;
}

std::size_t PlotColumn::Memory() const {
    std::size_t bytes = tracks_.capacity() * sizeof(Track) + gaps_.capacity() * sizeof(gaps_[0]);
    for (const std::vector<Extremes>& level : levels_) {
        bytes += level.capacity() * sizeof(Extremes);
    }
    return bytes;
}
