// The header of the plot is written with Qt's keywords, which all other files do without.
#undef QT_NO_KEYWORDS

#include "flow/frmRatingCurve.h"

#include <qcustomplot.h>

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleOptionFocusRect>
#include <QStylePainter>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cmath>

#include "common/number_text.h"
#include "platform/qt/text_qt.h"

/// The parts of the plot; all belong to it.
struct RatingCurveView::Plot {
    QCustomPlot* Widget = nullptr;
    QCPGraph* Inside = nullptr;
    QCPGraph* Below = nullptr;
    QCPGraph* Above = nullptr;
    QCPGraph* Own = nullptr;
    QCPGraph* Outliers = nullptr;
    QCPItemStraightLine* Cursor = nullptr;
    QCPItemTracer* Spot = nullptr;
};

namespace {

constexpr int StopsOfAPage = 10;
constexpr double CurveWidth = 2;

/// Axes that begin where figures of one sign do: logarithms have no zero.
void SetData(QCPGraph& graph, const std::vector<RatingSpot>& spots, bool positive) {
    QVector<double> heads;
    QVector<double> flows;
    for (const RatingSpot& spot : spots) {
        if (!positive || (spot.Head > 0 && spot.Flow > 0)) {
            heads.push_back(spot.Head);
            flows.push_back(spot.Flow);
        }
    }
    graph.setData(heads, flows);
}

std::vector<RatingSpot> Only(const std::vector<RatingSpot>& spots, bool marked) {
    std::vector<RatingSpot> some;
    std::copy_if(spots.begin(), spots.end(), std::back_inserter(some),
                 [marked](const RatingSpot& spot) { return spot.Marked == marked; });
    return some;
}

/// Marks at 1, 2 and 5, which the plot's own marks of powers alone are too sparse for.
QSharedPointer<QCPAxisTicker> LogTicker(const QCPRange& range) {
    auto ticker = QSharedPointer<QCPAxisTickerText>::create();
    for (const double tick : LogarithmicTicks(range.lower, range.upper)) {
        ticker->addTick(tick, ToQt(DoubleToText(tick)));
    }
    return ticker;
}

QCPGraph* AddGraph(QCustomPlot& plot, const char* meaning) {
    QCPGraph* graph = plot.addGraph();
    graph->setName(QLatin1String(meaning));
    return graph;
}

}  // namespace

RatingCurveView::RatingCurveView(QWidget* parent)
    : QFrame(parent), plot_(std::make_unique<Plot>()) {
    setObjectName(QStringLiteral("pctCurve"));
    setAccessibleName(QStringLiteral("Curve of the rating"));
    setFrameStyle(QFrame::StyledPanel);
    setFocusPolicy(Qt::StrongFocus);
    plot_->Widget = new QCustomPlot(this);
    QCustomPlot& plot = *plot_->Widget;
    // The frame takes keys and clicks, the plot only draws.
    plot.setAttribute(Qt::WA_TransparentForMouseEvents);
    plot.setFocusPolicy(Qt::NoFocus);
    QLocale figures = QLocale::c();
    figures.setNumberOptions(QLocale::OmitGroupSeparator);
    plot.setLocale(figures);
    plot_->Below = AddGraph(plot, "Estimate");
    plot_->Above = AddGraph(plot, "Estimate");
    plot_->Inside = AddGraph(plot, "Rating");
    plot_->Own = AddGraph(plot, "Points");
    plot_->Outliers = AddGraph(plot, "Outliers");
    plot_->Cursor = new QCPItemStraightLine(&plot);
    plot_->Spot = new QCPItemTracer(&plot);
    plot.axisRect()->insetLayout()->setInsetAlignment(0, Qt::AlignTop | Qt::AlignLeft);
    auto* column = new QVBoxLayout(this);
    const int margin = 2 * frameWidth();
    column->setContentsMargins(margin, margin, margin, margin);
    column->addWidget(&plot);
    ApplyStyle();
}

RatingCurveView::~RatingCurveView() = default;

void RatingCurveView::ApplyStyle() {
    QCustomPlot& plot = *plot_->Widget;
    const QColor text = palette().color(QPalette::Text);
    const QColor curve = palette().color(QPalette::Highlight);
    QColor faint = text;
    constexpr double FaintShare = 0.18;
    faint.setAlphaF(FaintShare);
    plot.setBackground(palette().brush(QPalette::Base));
    for (QCPAxis* axis : {plot.xAxis, plot.yAxis}) {
        axis->setBasePen(text);
        axis->setTickPen(text);
        axis->setSubTickPen(text);
        axis->setTickLabelColor(text);
        axis->setLabelColor(text);
        axis->setTickLabelFont(font());
        axis->setLabelFont(font());
        axis->setNumberFormat(QStringLiteral("g"));
        axis->grid()->setPen(QPen(faint));
        axis->grid()->setZeroLinePen(QPen(faint));
    }
    plot_->Inside->setPen(QPen(curve, CurveWidth));
    for (QCPGraph* estimate : {plot_->Below, plot_->Above}) {
        estimate->setPen(QPen(curve, CurveWidth, Qt::DashLine));
    }
    const double dot = fontMetrics().height() / 2.0;
    for (QCPGraph* points : {plot_->Own, plot_->Outliers}) {
        points->setLineStyle(QCPGraph::lsNone);
        points->setPen(QPen(text));
    }
    plot_->Own->setScatterStyle(QCPScatterStyle(QCPScatterStyle::ssCircle, dot));
    plot_->Outliers->setScatterStyle(QCPScatterStyle(QCPScatterStyle::ssCross, dot));
    plot_->Cursor->setPen(QPen(text, 1, Qt::DotLine));
    plot_->Spot->setStyle(QCPItemTracer::tsCircle);
    plot_->Spot->setPen(QPen(text));
    plot_->Spot->setBrush(curve);
    plot_->Spot->setSize(dot);
    plot.legend->setFont(font());
    plot.legend->setTextColor(text);
    plot.legend->setBrush(palette().brush(QPalette::Base));
    plot.legend->setBorderPen(QPen(faint));
    plot.replot(QCustomPlot::rpQueuedReplot);
}

void RatingCurveView::FitAxes() {
    QCustomPlot& plot = *plot_->Widget;
    for (QCPAxis* axis : {plot.xAxis, plot.yAxis}) {
        axis->setScaleType(logarithmic_ ? QCPAxis::stLogarithmic : QCPAxis::stLinear);
    }
    plot.rescaleAxes();
    constexpr double Headroom = 0.03;  // of the axis
    for (QCPAxis* axis : {plot.xAxis, plot.yAxis}) {
        const QCPRange range = axis->range();
        if (logarithmic_) {
            const double factor = std::pow(range.upper / range.lower, Headroom);
            axis->setRange(range.lower / factor, range.upper * factor);
        } else {
            axis->setRange(std::min(0.0, range.lower), range.upper * (1 + Headroom));
        }
        axis->setTicker(logarithmic_ ? LogTicker(axis->range())
                                     : QSharedPointer<QCPAxisTicker>::create());
    }
}

void RatingCurveView::Show(const RatingPicture& picture, std::size_t stop) {
    picture_ = picture;
    stop_ = stop;
    QCustomPlot& plot = *plot_->Widget;
    plot.xAxis->setLabel(ToQt(picture.HeadTitle));
    plot.yAxis->setLabel(ToQt(picture.FlowTitle));
    const bool drawn = !picture.Curve.empty();
    SetData(*plot_->Inside, picture.Inside, logarithmic_);
    SetData(*plot_->Below, picture.Below, logarithmic_);
    SetData(*plot_->Above, picture.Above, logarithmic_);
    SetData(*plot_->Own, Only(picture.OwnPoints, false), logarithmic_);
    SetData(*plot_->Outliers, Only(picture.OwnPoints, true), logarithmic_);
    plot.legend->clearItems();
    QCPGraph* estimate = picture.Above.empty() ? plot_->Below : plot_->Above;
    for (QCPGraph* graph : {plot_->Inside, estimate, plot_->Own, plot_->Outliers}) {
        if (!graph->data()->isEmpty()) {
            graph->addToLegend();
        }
    }
    plot.legend->setVisible(plot.legend->itemCount() > 1);
    plot_->Cursor->setVisible(drawn && stop < picture.Stops.size());
    plot_->Spot->setVisible(plot_->Cursor->visible());
    FitAxes();
    SetStop(stop, accessibleDescription());
}

void RatingCurveView::SetLogarithmic(bool on) {
    logarithmic_ = on;
    Show(RatingPicture(picture_), stop_);
}

void RatingCurveView::SetStop(std::size_t stop, const QString& told) {
    stop_ = stop;
    if (stop < picture_.Stops.size()) {
        const RatingSpot& spot = picture_.Stops[stop];
        plot_->Cursor->point1->setCoords(spot.Head, spot.Flow);
        // Any other flow at the same head makes the line upright.
        plot_->Cursor->point2->setCoords(spot.Head, spot.Flow > 0 ? spot.Flow * 2 : 1);
        plot_->Spot->position->setCoords(spot.Head, spot.Flow);
    }
    if (accessibleDescription() != told) {
        setAccessibleDescription(told);
        QAccessibleEvent changed(this, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&changed);
    }
    plot_->Widget->replot(QCustomPlot::rpQueuedReplot);
}

void RatingCurveView::Choose(std::size_t stop) {
    if (!picture_.Stops.empty() && StopChosen) {
        StopChosen(std::min(stop, picture_.Stops.size() - 1));
    }
}

void RatingCurveView::keyPressEvent(QKeyEvent* event) {
    const auto back = [this](std::size_t by) { Choose(stop_ - std::min(stop_, by)); };
    switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Down:
            return back(1);
        case Qt::Key_Right:
        case Qt::Key_Up:
            return Choose(stop_ + 1);
        case Qt::Key_PageUp:
            return Choose(stop_ + StopsOfAPage);
        case Qt::Key_PageDown:
            return back(StopsOfAPage);
        case Qt::Key_Home:
            return Choose(0);
        case Qt::Key_End:
            return Choose(picture_.Stops.size());
        default:
            QFrame::keyPressEvent(event);
    }
}

void RatingCurveView::mousePressEvent(QMouseEvent* event) {
    const int x = plot_->Widget->mapFrom(this, event->pos()).x();
    Choose(NearestStop(picture_, plot_->Widget->xAxis->pixelToCoord(x)));
}

void RatingCurveView::paintEvent(QPaintEvent* event) {
    QFrame::paintEvent(event);
    if (hasFocus()) {
        QStylePainter painter(this);
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.rect = rect();
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, option);
    }
}

void RatingCurveView::focusInEvent(QFocusEvent* event) {
    QFrame::focusInEvent(event);
    update();
}

void RatingCurveView::focusOutEvent(QFocusEvent* event) {
    QFrame::focusOutEvent(event);
    update();
}

void RatingCurveView::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    const bool looks = event->type() == QEvent::PaletteChange ||
                       event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange;
    if (looks && plot_ != nullptr && plot_->Spot != nullptr) {
        ApplyStyle();
    }
}
