#ifndef ORVIA_ARCHIVE_FRM_REPORT_PAGES_H
#define ORVIA_ARCHIVE_FRM_REPORT_PAGES_H

#include <QPageLayout>
#include <QRectF>
#include <QString>
#include <functional>
#include <vector>

#include "archive/page_layout.h"
#include "archive/report.h"

class QPagedPaintDevice;
class QPainter;

/// What stands on the pages of a report beside its table.
struct PageTexts {
    QString Title;   ///< over the first page
    QString Footer;  ///< under each page, before its number
};

/// A report on paper: title, lines of its head, plot and table. Lengths are tenths of a pixel of 96
/// an inch, which is fine enough for letters to keep their widths.
class ReportPages final {
 public:
    /// Paints the plot into a place, its texts in the painter's font.
    using Plot = std::function<void(QPainter& painter, const QRectF& where)>;

    /// Lays the report out on the device's pages as they are set; an empty `plot` is left out. The
    /// report must outlive this.
    ReportPages(const Report& report, PageTexts texts, Plot plot, QPagedPaintDevice& device);

    [[nodiscard]] int Count() const { return static_cast<int>(pages_.size()); }
    /// Paints pages, numbered from 1, on the device; False if it did not take one.
    [[nodiscard]] bool Paint(QPainter& painter, int first, int last) const;

    /// Upright where all columns find room on such a page, else across.
    [[nodiscard]] static QPageLayout::Orientation OrientationFor(const Report& report,
                                                                 const QPageSize& size);
    /// The margins of a page, in millimetres.
    [[nodiscard]] static QMarginsF Margins();

 private:
    void MeasurePage();
    void MeasureLines();
    void PaintPage(QPainter& painter, std::size_t number) const;
    void PaintLine(QPainter& painter, const PagePart& part) const;
    void PaintPlot(QPainter& painter, const PagePart& part) const;
    void PaintFooter(QPainter& painter, std::size_t number) const;

    const Report& report_;
    const PageTexts texts_;
    const Plot plot_;
    QPagedPaintDevice& device_;
    double dots_ = 1;  ///< of the device for a unit
    double footer_ = 0;
    double labels_ = 0;  ///< room for the labels of lines
    PageMeasures measures_;
    std::vector<Page> pages_;
};

#endif  // ORVIA_ARCHIVE_FRM_REPORT_PAGES_H
