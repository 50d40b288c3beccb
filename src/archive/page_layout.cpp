#include "archive/page_layout.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

/// So few rows do not begin a table at the foot of a page.
constexpr std::size_t FewestRows = 4;
/// Sums of widths may miss by less than that.
constexpr double Tolerance = 1e-6;

double WidthOf(const std::vector<double>& widths, const IndexRange& columns) {
    const auto first = widths.begin() + static_cast<std::ptrdiff_t>(columns.First);
    return std::accumulate(first, first + static_cast<std::ptrdiff_t>(columns.Count), 0.0);
}

/// Gathers columns into pieces no wider than there is room.
class PieceMaker {
 public:
    PieceMaker(const std::vector<double>& widths, double room) : widths_(widths), room_(room) {}

    void Add(const IndexRange& columns) {
        const double width = WidthOf(widths_, columns);
        if (Pieces.empty() || width_ + width > room_ + Tolerance) {
            Pieces.push_back({columns.First, 0});
            width_ = 0;
        }
        Pieces.back().Count += columns.Count;
        width_ += width;
    }
    [[nodiscard]] bool Fits(const IndexRange& columns) const {
        return WidthOf(widths_, columns) <= room_ + Tolerance;
    }

    std::vector<IndexRange> Pieces;

 private:
    const std::vector<double>& widths_;
    double room_;
    double width_ = 0;
};

/// Fills page after page from its top.
class PageFiller {
 public:
    explicit PageFiller(const PageMeasures& measures) : measures_(measures), pages_(1) {}

    void AddLine(std::size_t number) {
        PagePart part;
        part.Line = number;
        Put(part, measures_.Lines[number]);
    }

    void AddPlot() {
        PagePart part;
        part.What = PagePart::Kind::Plot;
        Skip();
        Put(part, measures_.Plot);
    }

    void AddTable(const IndexRange& columns, bool whole) {
        const std::size_t rows = measures_.Rows;
        const double all = HeightOf(rows, true);
        Skip();
        if (whole && !Fits(all) && all <= measures_.Height + Tolerance) {
            TurnPage();
        }
        std::size_t done = 0;
        for (bool last = false; !last;) {
            const std::size_t left = rows - done;
            const std::size_t count = RowsThatFit(left);
            const bool fits = Fits(HeightOf(count, true));
            const bool few = count < std::min(FewestRows, left) || (left == 0 && !fits);
            if (few && !IsFresh()) {
                TurnPage();
                continue;
            }
            last = count == left && (fits || left == 0);
            PutRows(columns, {done, count}, last);
            done += count;
            if (!last) {
                TurnPage();
            }
        }
    }

    [[nodiscard]] std::vector<Page> Filled() && { return std::move(pages_); }

 private:
    [[nodiscard]] bool IsFresh() const { return pages_.back().empty(); }
    [[nodiscard]] double Room() const { return measures_.Height - top_; }
    [[nodiscard]] bool Fits(double height) const { return height <= Room() + Tolerance; }
    [[nodiscard]] double HeightOf(std::size_t rows, bool total) const {
        return measures_.Headings + static_cast<double>(rows) * measures_.Row +
               (total ? measures_.Total : 0);
    }

    /// Of the rows that are left; the last one waits for the total.
    [[nodiscard]] std::size_t RowsThatFit(std::size_t left) const {
        if (Fits(HeightOf(left, true))) {
            return left;
        }
        const double free = std::max(Room() + Tolerance - measures_.Headings, 0.0);
        const auto fit = static_cast<std::size_t>(free / measures_.Row);
        const std::size_t most = left > 1 ? left - 1 : left;
        const std::size_t least = IsFresh() ? 1 : 0;
        return std::min(std::max(fit, least), most);
    }

    void PutRows(const IndexRange& columns, const IndexRange& rows, bool total) {
        PagePart part;
        part.What = PagePart::Kind::Table;
        part.Columns = columns;
        part.Rows = rows;
        part.HasTotal = total && measures_.Total > 0;
        const double width = measures_.Columns.front() + WidthOf(measures_.Columns, columns);
        part.Scale = std::min(1.0, measures_.Width / width);
        Put(part, HeightOf(rows.Count, total));
    }

    void Put(PagePart part, double height) {
        if (!Fits(height) && !IsFresh()) {
            TurnPage();
        }
        part.Top = top_;
        top_ += height;
        pages_.back().push_back(part);
    }
    void Skip() {
        if (!IsFresh()) {
            top_ += measures_.Gap;
        }
    }
    void TurnPage() {
        pages_.emplace_back();
        top_ = 0;
    }

    const PageMeasures& measures_;
    double top_ = 0;
    std::vector<Page> pages_;
};

}  // namespace

void WidenColumns(std::span<const IndexRange> groups, std::span<const double> headings,
                  std::vector<double>& widths) {
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const double missing = headings[i] - WidthOf(widths, groups[i]);
        for (std::size_t column = groups[i].First; missing > 0 && column < groups[i].End();
             ++column) {
            widths[column] += missing / static_cast<double>(groups[i].Count);
        }
    }
}

std::vector<IndexRange> ColumnPieces(const PageMeasures& measures) {
    if (measures.Columns.empty()) {
        return {};
    }
    PieceMaker maker(measures.Columns, measures.Width - measures.Columns.front());
    for (const IndexRange& group : measures.Groups) {
        if (group.First == 0) {
            continue;
        }
        if (maker.Fits(group)) {
            maker.Add(group);
            continue;
        }
        for (std::size_t column = group.First; column < group.End(); ++column) {
            maker.Add({column, 1});
        }
    }
    return maker.Pieces;
}

double PlotHeightFor(const PageMeasures& measures, double least, double most) {
    const double lines = std::accumulate(measures.Lines.begin(), measures.Lines.end(), 0.0);
    const double table =
        measures.Headings + static_cast<double>(measures.Rows) * measures.Row + measures.Total;
    const double gaps = (measures.Lines.empty() ? 1 : 2) * measures.Gap;
    const double room = measures.Height - lines - table - gaps;
    return room < least ? most : std::min(room, most);
}

std::vector<Page> LayOutPages(const PageMeasures& measures) {
    PageFiller filler(measures);
    for (std::size_t line = 0; line < measures.Lines.size(); ++line) {
        filler.AddLine(line);
    }
    if (measures.Plot > 0) {
        filler.AddPlot();
    }
    bool whole = false;
    for (const IndexRange& columns : ColumnPieces(measures)) {
        filler.AddTable(columns, whole);
        whole = true;
    }
    return std::move(filler).Filled();
}
