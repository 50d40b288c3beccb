#include "archive/frmPlotSave.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <algorithm>

#include "archive/frmPlotChart.h"
#include "archive/frmPlotVector.h"
#include "common/file_rewrite.h"

namespace {

constexpr double PngScale = 2;
constexpr double PaperPoints = 9;  // height of texts
constexpr double Margin = 15;      // mm

void WritePng(const PlotChart& chart, QIODevice& file) {
    // A failure shows in the bytes, which are then none.
    chart.Picture(PngScale).save(&file, "PNG");
}

void WriteSvg(const PlotChart& chart, QIODevice& file) {
    VectorSheet sheet(file, chart.size());
    QPainter painter(&sheet);
    painter.setFont(chart.font());
    chart.PaintOn(painter, QRectF(QPointF(0, 0), QSizeF(chart.size())));
}

void WritePdf(const PlotChart& chart, QIODevice& file, const QString& title) {
    QPdfWriter pdf(&file);
    pdf.setTitle(title);
    pdf.setCreator(QStringLiteral("Orvia"));
    pdf.setPageSize(QPageSize(QPageSize::A4));
    pdf.setPageOrientation(QPageLayout::Landscape);
    pdf.setPageMargins({Margin, Margin, Margin, Margin}, QPageLayout::Millimeter);
    static_cast<void>(PrintPlot(chart, pdf));
}

}  // namespace

bool PrintPlot(const PlotChart& chart, QPagedPaintDevice& paper) {
    QPainter painter;
    if (!painter.begin(&paper)) {
        return false;
    }
    QFont font = chart.font();
    font.setPointSizeF(PaperPoints);
    painter.setFont(font);
    // The whole page; of an upright one the upper half, which is as broad as it is high.
    QRectF page(painter.viewport());
    page.setHeight(std::min(page.height(), page.width()));
    chart.PaintOn(painter, page);
    return painter.end();
}

QByteArray PlotBytes(const PlotChart& chart, PlotFormat format, const QString& title) {
    QByteArray bytes;
    QBuffer file(&bytes);
    file.open(QIODevice::WriteOnly);
    switch (format) {
        case PlotFormat::Png:
            WritePng(chart, file);
            break;
        case PlotFormat::Svg:
            WriteSvg(chart, file);
            break;
        case PlotFormat::Pdf:
            WritePdf(chart, file, title);
            break;
    }
    return bytes;
}

bool SavePlot(const PlotChart& chart, const std::string& path, PlotFormat format,
              const QString& title) {
    const QByteArray bytes = PlotBytes(chart, format, title);
    return !bytes.isEmpty() &&
           RewriteFile(path, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
}
