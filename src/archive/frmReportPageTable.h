#ifndef ORVIA_ARCHIVE_FRM_REPORT_PAGE_TABLE_H
#define ORVIA_ARCHIVE_FRM_REPORT_PAGE_TABLE_H

#include <QFont>
#include <vector>

#include "archive/page_layout.h"
#include "archive/report.h"
#include "archive/report_words.h"

class QPainter;
class QRectF;

/// A font of the pages, whose letters are as wide on every device.
[[nodiscard]] QFont PageFont(double size, bool bold = false);

/// The table of a report on paper.
class ReportPageTable final {
 public:
    explicit ReportPageTable(const Report& report);

    /// Takes widths and heights of the table into the measures.
    void Measure(PageMeasures& measures) const;
    /// Paints a piece of the table.
    void Paint(QPainter& painter, const PageMeasures& measures, const PagePart& part) const;

 private:
    struct Column {
        std::size_t Number;
        double Left;
        double Width;
    };
    [[nodiscard]] double WidthOf(std::size_t column) const;
    [[nodiscard]] double HeadingHeight(const std::vector<double>& widths) const;
    void PaintHeadings(QPainter& painter, const std::vector<Column>& columns, double height) const;
    void PaintGroups(QPainter& painter, const std::vector<Column>& columns) const;
    void PaintRow(QPainter& painter, const std::vector<Column>& columns,
                  const std::vector<std::string>& cells, const QRectF& where) const;

    const Report& report_;
    std::vector<ColumnGroup> groups_;
};

#endif  // ORVIA_ARCHIVE_FRM_REPORT_PAGE_TABLE_H
