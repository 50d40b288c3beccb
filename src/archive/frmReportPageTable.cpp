#include "archive/frmReportPageTable.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QPen>
#include <algorithm>

#include "platform/qt/text_qt.h"

namespace {

// Tenths of a pixel.
constexpr double TableLetters = 100;
constexpr double LetterSpacing = 0.02;
constexpr double CellMargin = 30;  ///< at both sides of a text
constexpr double RowHeight = 150;
constexpr double TotalHeight = 190;
constexpr double TotalGap = 20;  ///< between the rows and that of the whole
constexpr double GroupHeight = 160;
constexpr double HeadingMargin = 30;
constexpr double WrapSlack = 10;  ///< what breaking a heading needs beside its letters
constexpr double Hairline = 5;
constexpr double Line = 10;

const QColor Faint(222, 222, 222);
const QColor Shade(244, 244, 244);

/// Draws a line of text, narrower if it would not fit.
void DrawFitted(QPainter& painter, const QRectF& where, Qt::Alignment align, const QString& text) {
    const double width = QFontMetricsF(painter.font()).horizontalAdvance(text);
    const int flags = static_cast<int>(align) | Qt::TextSingleLine | Qt::TextDontClip;
    if (width <= where.width() || where.width() <= 0) {
        painter.drawText(where, flags, text);
        return;
    }
    const double narrow = where.width() / width;
    painter.save();
    painter.translate(where.topLeft());
    painter.scale(narrow, 1);
    painter.drawText(QRectF(0, 0, width, where.height()), flags, text);
    painter.restore();
}

QRectF Inside(const QRectF& cell) {
    return cell.adjusted(CellMargin, 0, -CellMargin, 0);
}

Qt::Alignment AlignmentOf(const ReportColumn& column) {
    return column.IsNumber ? Qt::AlignRight : Qt::AlignLeft;
}

/// The width in which a heading takes two lines, or one without a blank.
double HeadingWidth(const std::string& heading, const QFontMetricsF& metrics) {
    const QString text = ToQt(heading);
    double least = metrics.horizontalAdvance(text);
    for (qsizetype blank = text.indexOf(QLatin1Char(' ')); blank >= 0;
         blank = text.indexOf(QLatin1Char(' '), blank + 1)) {
        least = std::min(least, std::max(metrics.horizontalAdvance(text.left(blank)),
                                         metrics.horizontalAdvance(text.mid(blank + 1))));
    }
    return least + WrapSlack;
}

}  // namespace

QFont PageFont(double size, bool bold) {
    QFont font(QGuiApplication::font().family());
    font.setPixelSize(static_cast<int>(size));
    font.setBold(bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    // Spaced letters are not joined: who searches a PDF for "Offset" finds it.
    font.setLetterSpacing(QFont::AbsoluteSpacing, LetterSpacing);
    return font;
}

ReportPageTable::ReportPageTable(const Report& report)
    : report_(report), groups_(GroupsOf(report.Columns)) {}

// ----- measuring

double ReportPageTable::WidthOf(std::size_t column) const {
    const QFontMetricsF plain(PageFont(TableLetters));
    const QFontMetricsF bold(PageFont(TableLetters, true));
    double width = HeadingWidth(report_.Columns[column].Heading, bold);
    std::size_t longest = 0;
    for (const std::vector<std::string>& row : report_.Rows) {
        // Digits are all as wide: a text much shorter than another needs no look.
        if (row[column].size() + 2 >= longest) {
            width = std::max(width, plain.horizontalAdvance(ToQt(row[column])));
            longest = std::max(longest, row[column].size());
        }
    }
    if (!report_.Total.empty()) {
        width = std::max(width, bold.horizontalAdvance(ToQt(report_.Total[column])));
    }
    return width + 2 * CellMargin;
}

double ReportPageTable::HeadingHeight(const std::vector<double>& widths) const {
    const QFontMetricsF bold(PageFont(TableLetters, true));
    double height = 0;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        const QRectF room(0, 0, widths[i] - 2 * CellMargin + 1, 1e6);
        const QRectF needed =
            bold.boundingRect(room, Qt::TextWordWrap, ToQt(report_.Columns[i].Heading));
        height = std::max(height, needed.height());
    }
    return GroupHeight + height + HeadingMargin;
}

void ReportPageTable::Measure(PageMeasures& measures) const {
    const QFontMetricsF bold(PageFont(TableLetters, true));
    measures.Columns.clear();
    for (std::size_t i = 0; i < report_.Columns.size(); ++i) {
        measures.Columns.push_back(WidthOf(i));
    }
    std::vector<double> names;
    measures.Groups.clear();
    for (const ColumnGroup& group : groups_) {
        measures.Groups.push_back({group.First, group.Count});
        names.push_back(bold.horizontalAdvance(ToQt(group.Name)) + 2 * CellMargin);
    }
    WidenColumns(measures.Groups, names, measures.Columns);
    measures.Headings = HeadingHeight(measures.Columns);
    measures.Row = RowHeight;
    measures.Total = report_.Total.empty() ? 0 : TotalHeight + TotalGap;
    measures.Rows = report_.Rows.size();
}

// ----- painting

void ReportPageTable::Paint(QPainter& painter, const PageMeasures& measures,
                            const PagePart& part) const {
    std::vector<Column> columns{{0, 0, measures.Columns.front()}};
    for (std::size_t i = part.Columns.First; i < part.Columns.End(); ++i) {
        columns.push_back({i, columns.back().Left + columns.back().Width, measures.Columns[i]});
    }
    const double width = columns.back().Left + columns.back().Width;
    painter.save();
    painter.translate(0, part.Top);
    painter.scale(part.Scale, 1);
    PaintHeadings(painter, columns, measures.Headings);
    double top = measures.Headings;
    painter.setFont(PageFont(TableLetters));
    for (std::size_t row = part.Rows.First; row < part.Rows.End(); ++row) {
        const QRectF where(0, top, width, RowHeight);
        if (row % 2 == 1) {
            painter.fillRect(where, Shade);
        }
        PaintRow(painter, columns, report_.Rows[row], where);
        top += RowHeight;
    }
    painter.setPen(QPen(part.HasTotal ? QColor(Qt::black) : Faint, Hairline));
    painter.drawLine(QPointF(0, top), QPointF(width, top));
    if (part.HasTotal) {
        painter.setFont(PageFont(TableLetters, true));
        PaintRow(painter, columns, report_.Total, {0, top + TotalGap, width, TotalHeight});
        top += TotalHeight + TotalGap;
        painter.drawLine(QPointF(0, top), QPointF(width, top));
    }
    painter.restore();
}

void ReportPageTable::PaintHeadings(QPainter& painter, const std::vector<Column>& columns,
                                    double height) const {
    painter.setFont(PageFont(TableLetters, true));
    painter.setPen(Qt::black);
    for (const Column& column : columns) {
        const ReportColumn& told = report_.Columns[column.Number];
        const QRectF cell(column.Left, GroupHeight, column.Width,
                          height - GroupHeight - HeadingMargin / 2);
        painter.drawText(Inside(cell).adjusted(-1, 0, 1, 0),
                         static_cast<int>(AlignmentOf(told)) | Qt::AlignBottom | Qt::TextWordWrap,
                         ToQt(told.Heading));
    }
    PaintGroups(painter, columns);
    painter.setPen(QPen(Qt::black, Line));
    painter.drawLine(QPointF(0, height),
                     QPointF(columns.back().Left + columns.back().Width, height));
}

void ReportPageTable::PaintGroups(QPainter& painter, const std::vector<Column>& columns) const {
    for (const ColumnGroup& group : groups_) {
        const auto inGroup = [&group](const Column& column) {
            return group.First <= column.Number && column.Number < group.First + group.Count;
        };
        const auto first = std::find_if(columns.begin(), columns.end(), inGroup);
        if (group.Name.empty() || first == columns.end()) {
            continue;
        }
        const auto end = std::find_if_not(first, columns.end(), inGroup);
        const double right = std::prev(end)->Left + std::prev(end)->Width;
        const QRectF over(first->Left, 0, right - first->Left, GroupHeight);
        painter.setPen(Qt::black);
        DrawFitted(painter, Inside(over), Qt::AlignCenter, ToQt(group.Name));
        painter.setPen(QPen(Qt::black, Hairline));
        painter.drawLine(Inside(over).bottomLeft(), Inside(over).bottomRight());
    }
}

void ReportPageTable::PaintRow(QPainter& painter, const std::vector<Column>& columns,
                               const std::vector<std::string>& cells, const QRectF& where) const {
    painter.setPen(Qt::black);
    for (const Column& column : columns) {
        const QRectF cell(column.Left, where.top(), column.Width, where.height());
        DrawFitted(painter, Inside(cell),
                   AlignmentOf(report_.Columns[column.Number]) | Qt::AlignVCenter,
                   ToQt(cells[column.Number]));
    }
}
