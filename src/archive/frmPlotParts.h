#ifndef ORVIA_ARCHIVE_FRM_PLOT_PARTS_H
#define ORVIA_ARCHIVE_FRM_PLOT_PARTS_H

// What the library draws of a plot. Its header is seen by frmPlotCanvas.cpp alone.
#include <qcustomplot.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "archive/frmPlotStyle.h"
#include "archive/plot_path.h"
#include "archive/plot_scene.h"
#include "archive/plot_ticks.h"
#include "archive/plot_view.h"
#include "archive/value_axis.h"
#include "platform/qt/text_qt.h"

namespace plot_parts {

inline constexpr double LineWidth = 1.6;
inline constexpr double MarkerDistance = 90;  // pixels
inline constexpr double MarkShare = 0.6;
inline constexpr double PaperDetail = 3;  // pixels of paper to one of a screen
inline constexpr double GoldenShare = 0.618;

/// Marks of the axis of time, in the console's own texts.
class TimeTicker final : public QCPAxisTicker {
 public:
    TimeTicker(const QCPAxis& axis, const SystemClock& clock) : axis_(axis), clock_(clock) {}

    void generate(const QCPRange& range, const QLocale& /*locale*/, QChar /*format*/,
                  int /*precision*/, QVector<double>& ticks, QVector<double>* subTicks,
                  QVector<QString>* tickLabels) override {
        const auto from = static_cast<Moment>(std::llround(range.lower));
        const auto to = static_cast<Moment>(std::llround(range.upper));
        const QFontMetrics metrics(axis_.tickLabelFont());
        const QString sample = ToQt(TickText(from - from % SecondsPerDay, SecondsPerDay, clock_));
        const int room = metrics.horizontalAdvance(sample) + 2 * metrics.averageCharWidth();
        const int width = std::max(axis_.axisRect()->width(), room);
        const TimeTicks made = TimeTicksOf(from, to, width / room);
        ticks.clear();
        QVector<QString> texts;
        for (const Moment tick : made.At) {
            ticks.push_back(static_cast<double>(tick));
            texts.push_back(ToQt(TickText(tick, made.Step, clock_)));
        }
        if (subTicks != nullptr) {
            subTicks->clear();
        }
        if (tickLabels != nullptr) {
            *tickLabels = texts;
        }
    }

 private:
    const QCPAxis& axis_;
    const SystemClock& clock_;
};

/// Marks of an axis of values.
class ValueTicker final : public QCPAxisTicker {
 public:
    explicit ValueTicker(const QCPAxis& axis) : axis_(axis) {}

    void generate(const QCPRange& range, const QLocale& /*locale*/, QChar /*format*/,
                  int /*precision*/, QVector<double>& ticks, QVector<double>* subTicks,
                  QVector<QString>* tickLabels) override {
        const int line = QFontMetrics(axis_.tickLabelFont()).lineSpacing();
        const int most = axis_.axisRect()->height() / (2 * line);
        const ValueTicks made = ValueTicksOf({range.lower, range.upper}, most);
        ticks = QVector<double>(made.At.begin(), made.At.end());
        if (subTicks != nullptr) {
            subTicks->clear();
        }
        if (tickLabels != nullptr) {
            tickLabels->clear();
            for (const std::string& text : made.Texts) {
                tickLabels->push_back(ToQt(text));
            }
        }
    }

 private:
    const QCPAxis& axis_;
};

/// A line of the scene. Its points are those that its pixels need.
class LineDrawing final : public QCPAbstractPlottable {
 public:
    LineDrawing(QCPAxis* time, QCPAxis* value, std::shared_ptr<const PlotColumn> column,
                std::size_t look, const PlotStyle& style)
        : QCPAbstractPlottable(time, value),
          column_(std::move(column)),
          number_(look),
          look_(PlotLookOf(look)),
          style_(style) {}

    void SetSpan(Moment from, Moment to) {
        from_ = from;
        to_ = to;
    }

    double selectTest(const QPointF& /*pos*/, bool /*onlySelectable*/,
                      QVariant* /*details*/) const override {
        return -1;
    }
    QCPRange getKeyRange(bool& foundRange, QCP::SignDomain /*domain*/) const override {
        foundRange = false;
        return {};
    }
    QCPRange getValueRange(bool& foundRange, QCP::SignDomain /*domain*/,
                           const QCPRange& /*keys*/) const override {
        foundRange = false;
        return {};
    }

    [[nodiscard]] PlotBox Box() const {
        const QRect area = keyAxis()->axisRect()->rect();
        const QCPRange values = valueAxis()->range();
        return {static_cast<double>(area.left()),
                static_cast<double>(area.top()),
                static_cast<double>(area.width()),
                static_cast<double>(area.height()),
                from_,
                to_,
                {values.lower, values.upper}};
    }
    /// A dot where the cursor reads the line.
    void DrawReading(QCPPainter& painter, Moment cursor) const {
        const PlotBox box = Box();
        const auto reading = column_->ReadingAt(cursor, PlotPart{from_, to_, {}}.Reach());
        if (reading && from_ <= reading->Time && reading->Time <= to_) {
            DrawPlotMarker(painter, look_.Marker, {box.XOf(reading->Time), box.YOf(reading->Value)},
                           MarkerSize() * 1.5, style_.Of(look_), style_.Ground);
        }
    }

 protected:
    void draw(QCPPainter* painter) override {
        const PlotBox box = Box();
        const bool paper = painter->modes().testFlag(QCPPainter::pmVectorized);
        const double detail = paper ? PaperDetail : 1;
        const int pixels = std::max(1, static_cast<int>(box.Width * detail));
        const PlotPath path = PathOf(column_->PointsIn(from_, to_, pixels), box, MarkerDistance,
                                     GoldenShare * static_cast<double>(number_));
        // Where strokes lie beside each other, smooth and broad ones only cost time.
        const bool plain = path.Dense && !paper;
        painter->setAntialiasing(!plain);
        QPen pen(style_.Of(look_), path.Dense ? 1 : LineWidth);
        pen.setJoinStyle(Qt::BevelJoin);
        painter->setPen(pen);
        painter->setBrush(Qt::NoBrush);
        std::vector<QPointF> spots(path.Spots.size());
        std::transform(path.Spots.begin(), path.Spots.end(), spots.begin(),
                       [](const PlotSpot& spot) { return QPointF(spot.X, spot.Y); });
        std::size_t begin = 0;
        for (const std::size_t end : path.Ends) {
            painter->drawPolyline(spots.data() + begin, static_cast<int>(end - begin));
            begin = end;
        }
        painter->setAntialiasing(true);
        for (const PlotSpot& spot : path.Markers) {
            DrawPlotMarker(*painter, look_.Marker, {spot.X, spot.Y}, MarkerSize(), style_.Of(look_),
                           style_.Ground);
        }
    }
    void drawLegendIcon(QCPPainter* painter, const QRectF& rect) const override {
        painter->setAntialiasing(true);
        painter->setPen(QPen(style_.Of(look_), LineWidth));
        painter->drawLine(QLineF(rect.left(), rect.center().y(), rect.right(), rect.center().y()));
        DrawPlotMarker(*painter, look_.Marker, rect.center(), MarkerSize(), style_.Of(look_),
                       style_.Ground);
    }

 private:
    [[nodiscard]] double MarkerSize() const { return QFontMetricsF(style_.Font).height() * 0.45; }

    std::shared_ptr<const PlotColumn> column_;
    std::size_t number_;
    PlotLook look_;
    const PlotStyle& style_;
    Moment from_ = 0;
    Moment to_ = 1;
};

/// Marks over all the height, with a short text at the top.
class MarkDrawing final : public QCPLayerable {
 public:
    MarkDrawing(QCustomPlot* plot, QCPAxisRect& rect, const PlotStyle& style)
        : QCPLayerable(plot, QStringLiteral("grid")), rect_(rect), style_(style) {}

    void Show(std::vector<SceneMark> marks, Moment from, Moment to) {
        marks_ = std::move(marks);
        from_ = from;
        to_ = to;
    }

 protected:
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override {
        painter->setAntialiasing(false);
    }
    void draw(QCPPainter* painter) override {
        const QRect area = rect_.rect();
        const PlotBox box{static_cast<double>(area.left()),
                          0,
                          static_cast<double>(area.width()),
                          1,
                          from_,
                          to_,
                          {}};
        painter->setFont(style_.Font);
        int behind = std::numeric_limits<int>::min();
        int last = behind;
        for (const SceneMark& mark : marks_) {
            const auto x = static_cast<int>(std::lround(box.XOf(mark.Mark.Time)));
            if (x == last) {
                continue;
            }
            last = x;
            painter->setPen(QPen(style_.Faint(MarkShare), 1, Qt::DashLine));
            painter->drawLine(QLineF(x, area.top(), x, area.bottom()));
            const QString text = ToQt(ShortTextOf(mark.Mark.Kind));
            const int width = painter->fontMetrics().horizontalAdvance(text);
            const int begin = std::min(x - width / 2, area.right() - width);
            if (begin > behind) {
                const QRect place(begin, area.top() - painter->fontMetrics().height(), width,
                                  painter->fontMetrics().height());
                painter->setPen(style_.Text);
                painter->drawText(place, Qt::AlignCenter, text);
                behind = place.right() + painter->fontMetrics().averageCharWidth();
            }
        }
    }

 private:
    QCPAxisRect& rect_;
    const PlotStyle& style_;
    std::vector<SceneMark> marks_;
    Moment from_ = 0;
    Moment to_ = 1;
};

/// The cursor and the dots where it reads the lines.
class CursorDrawing final : public QCPLayerable {
 public:
    CursorDrawing(QCustomPlot* plot, const QCPAxisRect& rect, const PlotStyle& style,
                  const std::vector<LineDrawing*>& lines)
        : QCPLayerable(plot, QStringLiteral("cursor")), rect_(rect), style_(style), lines_(lines) {}

    std::optional<Moment> At;

 protected:
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override {
        painter->setAntialiasing(false);
    }
    QRect clipRect() const override { return rect_.rect(); }
    void draw(QCPPainter* painter) override {
        if (!At || lines_.empty()) {
            return;
        }
        const double x = lines_.front()->Box().XOf(*At);
        painter->setPen(QPen(style_.Text, 1));
        painter->drawLine(QLineF(x, rect_.top(), x, rect_.bottom()));
        painter->setAntialiasing(true);
        for (const LineDrawing* line : lines_) {
            line->DrawReading(*painter, *At);
        }
    }

 private:
    const QCPAxisRect& rect_;
    const PlotStyle& style_;
    const std::vector<LineDrawing*>& lines_;
};

}  // namespace plot_parts

#endif  // ORVIA_ARCHIVE_FRM_PLOT_PARTS_H
