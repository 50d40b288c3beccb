// The header of the plot is written with Qt's keywords, which all other files do without.
#undef QT_NO_KEYWORDS

#include "archive/frmPlotCanvas.h"

#include <QPicture>
#include <algorithm>
#include <cmath>
#include <vector>

#include "archive/frmPlotParts.h"
#include "archive/frmPlotStyle.h"
#include "archive/plot_path.h"
#include "archive/plot_readout.h"
#include "platform/qt/text_qt.h"

using namespace plot_parts;

namespace {

constexpr double FaintShare = 0.16;

}  // namespace

/// The parts of the plot; all of the library's belong to it.
struct PlotCanvas::Parts {
    Parts(const SystemClock& clock, QWidget* parent)
        : Clock(clock), Own(parent == nullptr ? new QCustomPlot : nullptr) {
        Plot = parent == nullptr ? Own.get() : new QCustomPlot(parent);
    }

    const SystemClock& Clock;
    std::unique_ptr<QCustomPlot> Own;
    QCustomPlot* Plot = nullptr;
    QCPAxisRect* Rect = nullptr;
    QCPAxis* Time = nullptr;
    QCPLegend* Legend = nullptr;
    QCPTextElement* Title = nullptr;
    QCPTextElement* Meaning = nullptr;  ///< of the marks, below the legend
    QCPItemText* Note = nullptr;
    MarkDrawing* Marks = nullptr;
    CursorDrawing* Cursor = nullptr;
    std::vector<LineDrawing*> Lines;
    std::vector<QCPAxis*> Axes;  ///< of values
    std::map<std::string, ValueRange> Ranges;
    const PlotScene* Scene = nullptr;
    PlotPart Part;
    PlotStyle Style;

    void Build();
    void StyleAxis(QCPAxis& axis) const;
    void ApplyStyle();
    void MakeAxis(std::size_t number);
    void FillLegend();
    void FitColumns(int width) const;
    void Settle() const;
};

void PlotCanvas::Parts::Build() {
    Plot->setFocusPolicy(Qt::NoFocus);
    Plot->setAttribute(Qt::WA_TransparentForMouseEvents);
    Plot->setAutoAddPlottableToLegend(false);
    Plot->setPlottingHint(QCP::phFastPolylines, true);
    Plot->plotLayout()->clear();
    Plot->addLayer(QStringLiteral("cursor"), Plot->layer(QStringLiteral("overlay")));
    Plot->layer(QStringLiteral("cursor"))->setMode(QCPLayer::lmBuffered);
    Plot->setCurrentLayer(QStringLiteral("main"));
    Rect = new QCPAxisRect(Plot, false);
    Plot->plotLayout()->addElement(0, 0, Rect);
    Time = Rect->addAxis(QCPAxis::atBottom);
    Time->grid()->setVisible(true);
    Time->setTicker(QSharedPointer<TimeTicker>::create(*Time, Clock));
    Note = new QCPItemText(Plot);
    Note->position->setType(QCPItemPosition::ptAxisRectRatio);
    Note->position->setAxisRect(Rect);
    Note->position->setCoords(0.5, 0.5);
    Note->setClipToAxisRect(false);
    Marks = new MarkDrawing(Plot, *Rect, Style);
    Cursor = new CursorDrawing(Plot, *Rect, Style, Lines);
    QObject::connect(Plot, &QCustomPlot::beforeReplot, Plot, [this] { Settle(); });
}

void PlotCanvas::Parts::StyleAxis(QCPAxis& axis) const {
    axis.setBasePen(Style.Text);
    axis.setTickPen(Style.Text);
    axis.setSubTickPen(Style.Text);
    axis.setTickLabelColor(Style.Text);
    axis.setLabelColor(Style.Text);
    axis.setTickLabelFont(Style.Font);
    axis.setLabelFont(Style.Font);
    // Many axes may stand beside each other.
    axis.setLabelPadding(1);
    axis.setTickLabelPadding(3);
    axis.setPadding(2);
    axis.grid()->setPen(QPen(Style.Faint(FaintShare)));
    axis.grid()->setZeroLinePen(QPen(Style.Faint(FaintShare)));
}

void PlotCanvas::Parts::ApplyStyle() {
    Plot->setBackground(QBrush(Style.Ground));
    StyleAxis(*Time);
    for (QCPAxis* axis : Axes) {
        StyleAxis(*axis);
    }
    Note->setFont(Style.Font);
    Note->setColor(Style.Text);
    // Room for the texts of marks above, and for half a text of the axis at both sides.
    const QFontMetrics metrics(Style.Font);
    Rect->setMinimumMargins(
        {metrics.averageCharWidth() * 4, metrics.height() + 4, metrics.averageCharWidth() * 4, 0});
    for (QCPTextElement* text : {Title, Meaning}) {
        if (text != nullptr) {
            text->setFont(Style.Font);
            text->setTextColor(Style.Text);
        }
    }
    if (Legend != nullptr) {
        Legend->setFont(Style.Font);
        Legend->setTextColor(Style.Text);
        Legend->setBrush(Qt::NoBrush);
        Legend->setBorderPen(Qt::NoPen);
        Legend->setIconSize(metrics.height() * 2, metrics.height());
    }
}

void PlotCanvas::Parts::MakeAxis(std::size_t number) {
    const PlotAxis& told = Scene->Axes()[number];
    // In turn at the left and at the right.
    QCPAxis* axis = Rect->addAxis(number % 2 == 0 ? QCPAxis::atLeft : QCPAxis::atRight);
    axis->setTicker(QSharedPointer<ValueTicker>::create(*axis));
    axis->setLabel(ToQt(told.Title));
    axis->grid()->setVisible(number == 0);
    StyleAxis(*axis);
    if (told.Lines.size() == 1 && Scene->Axes().size() > 1) {
        const PlotLook look = PlotLookOf(Scene->LookOf(told.Lines.front()));
        axis->setBasePen(QPen(Style.Of(look), 2));
        axis->setTickPen(QPen(Style.Of(look), 1));
    }
    Axes.push_back(axis);
    for (const std::size_t line : told.Lines) {
        auto* drawing =
            new LineDrawing(Time, axis, Scene->SharedColumn(line), Scene->LookOf(line), Style);
        drawing->setName(ToQt(Scene->TitleOf(line)));
        Lines.push_back(drawing);
    }
}

void PlotCanvas::Parts::FillLegend() {
    if (Legend == nullptr) {
        return;
    }
    Legend->clearItems();
    for (LineDrawing* line : Lines) {
        line->addToLegend(Legend);
    }
}

/// As many columns of the legend as the paper has room for.
void PlotCanvas::Parts::FitColumns(int width) const {
    if (Legend == nullptr || Lines.empty()) {
        return;
    }
    const QFontMetrics metrics(Style.Font);
    int widest = 0;
    for (const LineDrawing* line : Lines) {
        widest = std::max(widest, metrics.horizontalAdvance(line->name()));
    }
    const int one = widest + Legend->iconSize().width() + 4 * metrics.averageCharWidth();
    Legend->setWrap(std::clamp(width / one, 1, static_cast<int>(Lines.size())));
    Legend->setFillOrder(QCPLegend::foColumnsFirst);
}

/// Lays out once ahead, since the marks of an axis hang on its length.
void PlotCanvas::Parts::Settle() const {
    for (const auto phase : {QCPLayoutElement::upPreparation, QCPLayoutElement::upMargins,
                             QCPLayoutElement::upLayout}) {
        Plot->plotLayout()->update(phase);
    }
}

PlotCanvas::PlotCanvas(const SystemClock& clock, QWidget* parent)
    : parts_(std::make_unique<Parts>(clock, parent)) {
    parts_->Build();
}

PlotCanvas::~PlotCanvas() = default;

QWidget& PlotCanvas::Widget() const {
    return *parts_->Plot;
}

void PlotCanvas::SetStyle(const QPalette& palette, const QFont& font) {
    parts_->Style = PlotStyleOf(palette, font);
    parts_->ApplyStyle();
    if (parts_->Scene != nullptr) {
        SetScene(*parts_->Scene);
    }
}

void PlotCanvas::SetScene(const PlotScene& scene) {
    Parts& parts = *parts_;
    parts.Scene = &scene;
    parts.Lines.clear();
    parts.Plot->clearPlottables();
    for (QCPAxis* axis : parts.Axes) {
        parts.Rect->removeAxis(axis);
    }
    parts.Axes.clear();
    for (std::size_t axis = 0; axis < scene.Axes().size(); ++axis) {
        parts.MakeAxis(axis);
    }
    parts.FillLegend();
    SetPart(parts.Part);
}

void PlotCanvas::SetPart(const PlotPart& part) {
    Parts& parts = *parts_;
    parts.Part = part;
    parts.Time->setRange(static_cast<double>(part.From), static_cast<double>(part.To));
    parts.Time->setLabel(ToQt(SpanText(part.From, part.To, parts.Clock)));
    for (LineDrawing* line : parts.Lines) {
        line->SetSpan(part.From, part.To);
    }
    parts.Ranges.clear();
    for (std::size_t axis = 0; axis < parts.Axes.size(); ++axis) {
        const std::string& unit = parts.Scene->Axes()[axis].Unit;
        const auto chosen = part.Values.find(unit);
        const ValueRange range = chosen != part.Values.end()
                                     ? chosen->second
                                     : parts.Scene->RangeOf(axis, part.From, part.To);
        parts.Ranges[unit] = range;
        parts.Axes[axis]->setRange(range.Lowest, range.Highest);
    }
    if (parts.Scene != nullptr) {
        parts.Marks->Show(parts.Scene->MarksIn(part.From, part.To), part.From, part.To);
    }
}

void PlotCanvas::SetNote(const QString& note) {
    parts_->Note->setText(note);
    parts_->Note->setVisible(!note.isEmpty());
}

void PlotCanvas::SetTitle(const QString& title) {
    Parts& parts = *parts_;
    if (parts.Title == nullptr) {
        parts.Plot->plotLayout()->insertRow(0);
        parts.Title = new QCPTextElement(parts.Plot);
        parts.Plot->plotLayout()->addElement(0, 0, parts.Title);
    }
    parts.Title->setText(title);
    parts.ApplyStyle();
}

void PlotCanvas::ShowLegend() {
    Parts& parts = *parts_;
    const auto add = [&parts](QCPLayoutElement* element) {
        QCPLayoutGrid* rows = parts.Plot->plotLayout();
        const int row = rows->rowCount();
        rows->addElement(row, 0, element);
        rows->setRowStretchFactor(row, 0.001);
    };
    parts.Legend = new QCPLegend;
    add(parts.Legend);
    parts.Legend->setLayer(QStringLiteral("legend"));
    parts.Meaning = new QCPTextElement(parts.Plot);
    add(parts.Meaning);
    parts.ApplyStyle();
}

void PlotCanvas::SetCursor(std::optional<Moment> at) {
    parts_->Cursor->At = at;
}

void PlotCanvas::DrawCursor() {
    parts_->Plot->layer(QStringLiteral("cursor"))->replot();
}

void PlotCanvas::DrawSoon() {
    parts_->Plot->replot(QCustomPlot::rpQueuedReplot);
}

void PlotCanvas::DrawNow() {
    parts_->Plot->replot(QCustomPlot::rpRefreshHint);
}

void PlotCanvas::Paint(QPainter& painter, const QRectF& where, double scale) {
    const auto width = std::max(1, static_cast<int>(std::lround(where.width() / scale)));
    const auto height = std::max(1, static_cast<int>(std::lround(where.height() / scale)));
    parts_->FitColumns(width);
    if (parts_->Meaning != nullptr && parts_->Scene != nullptr) {
        parts_->Meaning->setText(
            ToQt(MarksInWords(parts_->Scene->MarksIn(parts_->Part.From, parts_->Part.To))));
    }
    // The library wants a painter of its own. A picture hands on what it is told, as it is told.
    parts_->Plot->setViewport({0, 0, width, height});
    parts_->Settle();
    QPicture picture;
    QCPPainter recorder(&picture);
    recorder.setMode(QCPPainter::pmVectorized);
    recorder.setMode(QCPPainter::pmNoCaching);
    parts_->Plot->toPainter(&recorder, width, height);
    recorder.end();
    painter.save();
    painter.translate(where.topLeft());
    // Played back, a picture is enlarged as the device is finer than it is.
    const QPaintDevice& device = *painter.device();
    painter.scale(where.width() / width * picture.logicalDpiX() / device.logicalDpiX(),
                  where.height() / height * picture.logicalDpiY() / device.logicalDpiY());
    painter.drawPicture(0, 0, picture);
    painter.restore();
}

QRect PlotCanvas::Area() const {
    return parts_->Rect->rect();
}

const std::map<std::string, ValueRange>& PlotCanvas::Ranges() const {
    return parts_->Ranges;
}
