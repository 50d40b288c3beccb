#ifndef ORVIA_ARCHIVE_PAGE_LAYOUT_H
#define ORVIA_ARCHIVE_PAGE_LAYOUT_H

#include <cstddef>
#include <span>
#include <vector>

/// Numbers from First on.
struct IndexRange {
    std::size_t First = 0;
    std::size_t Count = 0;

    [[nodiscard]] std::size_t End() const { return First + Count; }
    bool operator==(const IndexRange&) const = default;
};

/// Widens the columns of each group evenly so that together they are as wide as its heading.
void WidenColumns(std::span<const IndexRange> groups, std::span<const double> headings,
                  std::vector<double>& widths);

/// What goes onto pages, measured, all in one unit.
struct PageMeasures {
    double Width = 0;                ///< room of a page
    double Height = 0;               ///< the same
    std::vector<double> Lines;       ///< heights of the lines that come first
    double Plot = 0;                 ///< height of the plot behind them; 0 for none
    double Gap = 0;                  ///< between lines, plot and tables
    double Headings = 0;             ///< height of the headings of a table
    double Row = 0;                  ///< of a row
    double Total = 0;                ///< of the row of the whole; 0 for none
    std::vector<double> Columns;     ///< widths
    std::vector<IndexRange> Groups;  ///< of the columns; the first holds the first column alone
    std::size_t Rows = 0;
};

/// A piece of a page, as wide as the page.
struct PagePart {
    enum class Kind { Line, Plot, Table };

    Kind What = Kind::Line;
    double Top = 0;
    std::size_t Line = 0;  ///< number of a line
    // Of a table:
    IndexRange Columns;  ///< beside the first column, which is in all tables
    IndexRange Rows;
    bool HasTotal = false;
    double Scale = 1;  ///< less for a column that is wider than a page
};

using Page = std::vector<PagePart>;

/// The columns in pieces that fit on a page beside the first one. A group is parted only if it
/// would not fit by itself.
[[nodiscard]] std::vector<IndexRange> ColumnPieces(const PageMeasures& measures);

/// A height for the plot, from `least` to `most`, with which the first table stays whole on the
/// first page; `most` if none does that.
[[nodiscard]] double PlotHeightFor(const PageMeasures& measures, double least, double most);

/// Puts lines, plot and table on pages. Columns that find no room make further tables below. The
/// first table begins under the plot; the others are kept whole where a page can hold them.
/// Headings stand over each piece of a table, and the total never without a row.
[[nodiscard]] std::vector<Page> LayOutPages(const PageMeasures& measures);

#endif  // ORVIA_ARCHIVE_PAGE_LAYOUT_H
