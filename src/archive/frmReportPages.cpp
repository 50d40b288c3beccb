#include "archive/frmReportPages.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPen>
#include <algorithm>
#include <utility>

#include "archive/frmReportPageTable.h"
#include "platform/qt/text_qt.h"

namespace {

// Tenths of a pixel of 96 an inch.
constexpr double UnitsAnInch = 960;
constexpr double TitleLetters = 200;
constexpr double TextLetters = 110;
constexpr double PlotLetters = 100;
constexpr double FooterLetters = 90;
constexpr double TitleMargin = 60;   ///< under the title
constexpr double LabelMargin = 120;  ///< behind the longest label
constexpr double FooterHeight = 220;
constexpr double FooterMargin = 30;  ///< under its text
constexpr double Gap = 220;
constexpr double Hairline = 5;
// A smaller page takes all of it smaller.
constexpr double LeastWidth = 3000;
constexpr double LeastHeight = 3000;
// The plot's height, of the page's height and width; at least, of that.
constexpr double MostOfHeight = 0.38;
constexpr double MostOfWidth = 0.5;
constexpr double LeastOfMost = 0.65;

constexpr double MarginMillimeters = 12;

const QColor Gray(90, 90, 90);

/// Between words where each finds room, else anywhere.
int WrapOf(const QString& text, const QFontMetricsF& metrics, double room) {
    for (const QString& word : text.split(QLatin1Char(' '))) {
        if (metrics.horizontalAdvance(word) > room) {
            return Qt::TextWrapAnywhere;
        }
    }
    return Qt::TextWordWrap;
}

}  // namespace

QMarginsF ReportPages::Margins() {
    return {MarginMillimeters, MarginMillimeters, MarginMillimeters, MarginMillimeters};
}

QPageLayout::Orientation ReportPages::OrientationFor(const Report& report, const QPageSize& size) {
    PageMeasures measures;
    ReportPageTable(report).Measure(measures);
    const QPageLayout page(size, QPageLayout::Portrait, Margins(), QPageLayout::Millimeter);
    measures.Width = page.paintRect(QPageLayout::Inch).width() * UnitsAnInch;
    return ColumnPieces(measures).size() <= 1 ? QPageLayout::Portrait : QPageLayout::Landscape;
}

ReportPages::ReportPages(const Report& report, PageTexts texts, Plot plot,
                         QPagedPaintDevice& device)
    : report_(report), texts_(std::move(texts)), plot_(std::move(plot)), device_(device) {
    MeasurePage();
    MeasureLines();
    ReportPageTable(report_).Measure(measures_);
    if (plot_) {
        const double most =
            std::min(measures_.Height * MostOfHeight, measures_.Width * MostOfWidth);
        measures_.Plot = PlotHeightFor(measures_, most * LeastOfMost, most);
    }
    pages_ = LayOutPages(measures_);
}

// ----- measuring

void ReportPages::MeasurePage() {
    const QPageLayout layout = device_.pageLayout();
    const QRectF room = layout.paintRect(QPageLayout::Inch);
    const double width = std::max(room.width() * UnitsAnInch, 1.0);
    const double height = std::max(room.height() * UnitsAnInch, 1.0);
    const double grown = std::max({1.0, LeastWidth / width, LeastHeight / height});
    dots_ = device_.logicalDpiX() / UnitsAnInch / grown;
    measures_.Width = width * grown;
    footer_ = height * grown - FooterHeight;
    measures_.Height = footer_ - Gap / 2;
    measures_.Gap = Gap;
}

void ReportPages::MeasureLines() {
    const QFontMetricsF bold(PageFont(TextLetters, true));
    for (const ReportLine& line : report_.Head) {
        labels_ = std::max(labels_, bold.horizontalAdvance(ToQt(line.Label)) + LabelMargin);
    }
    const QFontMetricsF title(PageFont(TitleLetters, true));
    const QRectF page(0, 0, measures_.Width, 1e6);
    measures_.Lines.push_back(title.boundingRect(page, Qt::TextWordWrap, texts_.Title).height() +
                              TitleMargin);
    const QFontMetricsF plain(PageFont(TextLetters));
    for (const ReportLine& line : report_.Head) {
        const QString text = ToQt(line.Text);
        const QRectF room(0, 0, measures_.Width - labels_, 1e6);
        const double height =
            plain.boundingRect(room, WrapOf(text, plain, room.width()), text).height();
        measures_.Lines.push_back(std::max(height, plain.height()));
    }
}

// ----- painting

bool ReportPages::Paint(QPainter& painter, int first, int last) const {
    for (int page = first; page <= std::min(last, Count()); ++page) {
        if (page > first && !device_.newPage()) {
            return false;
        }
        painter.save();
        painter.scale(dots_, dots_);
        PaintPage(painter, static_cast<std::size_t>(page) - 1);
        painter.restore();
    }
    return true;
}

void ReportPages::PaintPage(QPainter& painter, std::size_t number) const {
    const ReportPageTable table(report_);
    for (const PagePart& part : pages_[number]) {
        switch (part.What) {
            case PagePart::Kind::Line:
                PaintLine(painter, part);
                break;
            case PagePart::Kind::Plot:
                PaintPlot(painter, part);
                break;
            case PagePart::Kind::Table:
                table.Paint(painter, measures_, part);
                break;
        }
    }
    PaintFooter(painter, number);
}

void ReportPages::PaintLine(QPainter& painter, const PagePart& part) const {
    const QRectF where(0, part.Top, measures_.Width, measures_.Lines[part.Line]);
    painter.setPen(Qt::black);
    if (part.Line == 0) {
        painter.setFont(PageFont(TitleLetters, true));
        painter.drawText(where, Qt::TextWordWrap, texts_.Title);
        return;
    }
    const ReportLine& line = report_.Head[part.Line - 1];
    painter.setFont(PageFont(TextLetters, true));
    painter.drawText(where, Qt::TextSingleLine, ToQt(line.Label));
    painter.setFont(PageFont(TextLetters));
    const QRectF room = where.adjusted(labels_, 0, 0, 0);
    const QString text = ToQt(line.Text);
    painter.drawText(room, WrapOf(text, QFontMetricsF(painter.font()), room.width()), text);
}

void ReportPages::PaintPlot(QPainter& painter, const PagePart& part) const {
    painter.save();
    painter.setFont(PageFont(PlotLetters));
    plot_(painter, QRectF(0, part.Top, measures_.Width, measures_.Plot));
    painter.restore();
}

void ReportPages::PaintFooter(QPainter& painter, std::size_t number) const {
    painter.setFont(PageFont(FooterLetters));
    painter.setPen(QPen(Gray, Hairline));
    painter.drawLine(QPointF(0, footer_), QPointF(measures_.Width, footer_));
    painter.setPen(Gray);
    const QString page = QStringLiteral("Page %1 of %2").arg(number + 1).arg(pages_.size());
    const QRectF where(0, footer_, measures_.Width, FooterHeight - FooterMargin);
    painter.drawText(where, Qt::AlignRight | Qt::AlignBottom, page);
    const QFontMetricsF metrics(painter.font());
    const double room = measures_.Width - metrics.horizontalAdvance(page) - LabelMargin;
    painter.drawText(where, Qt::AlignLeft | Qt::AlignBottom,
                     metrics.elidedText(texts_.Footer, Qt::ElideRight, room));
}
