#include "archive/frmPlotChart.h"

#include <QAccessible>
#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QRubberBand>
#include <QStyleOptionFocusRect>
#include <QStylePainter>
#include <QToolTip>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <utility>

#include "archive/frmPlotCanvas.h"
#include "archive/frmPlotStyle.h"
#include "archive/plot_readout.h"
#include "platform/qt/text_qt.h"

namespace {

constexpr double ZoomStep = 0.5;
constexpr double ValueStep = 0.8;
constexpr double PageShare = 0.5;
constexpr double FarShare = 0.1;
constexpr double Middle = 0.5;
constexpr int PaperPixels = 12;  // height of the canvas' text on paper
constexpr int LeastBand = 4;     // pixels; less is a click

}  // namespace

PlotChart::PlotChart(const SystemClock& clock, QWidget* parent)
    : QFrame(parent),
      clock_(clock),
      canvas_(std::make_unique<PlotCanvas>(clock, this)),
      band_(new QRubberBand(QRubberBand::Rectangle, this)) {
    setObjectName(QStringLiteral("pctPlot"));
    setAccessibleName(QStringLiteral("Plot"));
    setFrameStyle(QFrame::StyledPanel);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    auto* column = new QVBoxLayout(this);
    const int margin = 2 * frameWidth();
    column->setContentsMargins(margin, margin, margin, margin);
    column->addWidget(&canvas_->Widget());
    canvas_->SetStyle(palette(), font());
    canvas_->SetNote(note_);
}

PlotChart::~PlotChart() = default;

// ----- what is shown

void PlotChart::SetLines(std::vector<PlotLine> lines) {
    scene_.SetLines(lines);
    canvas_->SetScene(scene_);
    ShowPart();
}

void PlotChart::SetSpan(Moment from, Moment to) {
    view_ = PlotView();
    view_.SetWhole({from, to + 1});
    view_.ZoomAll();
    view_.Forget();
    ShowPart();
}

void PlotChart::MoveSpan(Moment from, Moment to) {
    view_.SetWhole({from, to + 1});
    ShowPart();
}

void PlotChart::SetNote(const QString& note) {
    if (note != note_) {
        note_ = note;
        canvas_->SetNote(note);
        canvas_->DrawSoon();
    }
}

void PlotChart::ShowPart() {
    canvas_->SetPart(view_.Shown());
    canvas_->DrawSoon();
    if (PartChanged) {
        PartChanged();
    }
}

QRect PlotChart::Area() const {
    return canvas_->Area().translated(canvas_->Widget().pos());
}

const std::map<std::string, ValueRange>& PlotChart::Ranges() const {
    return canvas_->Ranges();
}

void PlotChart::DrawNow() {
    canvas_->DrawNow();
}

void PlotChart::PaintOn(QPainter& painter, const QRectF& where) const {
    PlotCanvas paper(clock_, nullptr);
    QFont font = painter.font();
    font.setPixelSize(PaperPixels);
    paper.SetStyle(PaperPalette(), font);
    if (!title_.isEmpty()) {
        paper.SetTitle(title_);
    }
    paper.ShowLegend();
    paper.SetNote(note_);
    paper.SetScene(scene_);
    paper.SetPart(view_.Shown());
    const double pixels = painter.fontInfo().pixelSize();
    paper.Paint(painter, where, pixels / PaperPixels);
}

QImage PlotChart::Picture(double scale) const {
    QImage picture(size() * scale, QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.setFont(font());
    PaintOn(painter, QRectF(QPointF(0, 0), QSizeF(size())));
    return picture;
}

// ----- zooming

void PlotChart::ZoomIn() {
    view_.ZoomTime(ZoomStep, CursorShare(), PlotView::Gesture::Single);
    ShowPart();
}

void PlotChart::ZoomOut() {
    view_.ZoomTime(1 / ZoomStep, CursorShare(), PlotView::Gesture::Single);
    ShowPart();
}

void PlotChart::ZoomAll() {
    view_.ZoomAll();
    ShowPart();
}

void PlotChart::ZoomBack() {
    view_.Back();
    ShowPart();
}

void PlotChart::SetChoosing(bool on) {
    choosing_ = on;
    setCursor(on ? Qt::IBeamCursor : Qt::ArrowCursor);
}

double PlotChart::ShareRight(int x) const {
    const QRect area = Area();
    return static_cast<double>(x - area.left()) / std::max(area.width(), 1);
}

double PlotChart::ShareUp(int y) const {
    const QRect area = Area();
    return static_cast<double>(area.bottom() - y) / std::max(area.height(), 1);
}

/// Where to zoom without a pointer.
double PlotChart::CursorShare() const {
    return cursor_ ? view_.Shown().ShareOf(*cursor_).value_or(Middle) : Middle;
}

void PlotChart::wheelEvent(QWheelEvent* event) {
    const QPoint turned = event->angleDelta();
    // Some desktops turn the wheel aside while a key is held.
    const double factor = WheelFactor(turned.y() != 0 ? turned.y() : turned.x());
    const QPoint at = event->position().toPoint();
    if ((event->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier)) != 0) {
        view_.ZoomValues(factor, ShareUp(at.y()), canvas_->Ranges(), PlotView::Gesture::Wheel);
    } else {
        view_.ZoomTime(factor, ShareRight(at.x()), PlotView::Gesture::Wheel);
    }
    event->accept();
    ShowPart();
}

// ----- pointer

void PlotChart::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return QFrame::mousePressEvent(event);
    }
    const bool choose = choosing_ != ((event->modifiers() & Qt::ShiftModifier) != 0);
    drag_ = choose ? Drag::Choosing : Drag::Panning;
    pressed_ = event->pos();
    view_.EndGesture();
    view_.BeginDrag();
}

void PlotChart::mouseMoveEvent(QMouseEvent* event) {
    const QPoint at = event->pos();
    if (drag_ == Drag::Choosing) {
        ShowBand(at.x());
    } else if (drag_ == Drag::Panning) {
        view_.DragBy(ShareRight(at.x()) - ShareRight(pressed_.x()),
                     ShareUp(at.y()) - ShareUp(pressed_.y()));
        ShowPart();
    }
    if (drag_ != Drag::Panning) {
        const PlotPart& part = view_.Shown();
        SetCursor(NearestRecord(scene_, part.At(ShareRight(at.x())), part));
    }
}

void PlotChart::mouseReleaseEvent(QMouseEvent* event) {
    if (drag_ == Drag::Choosing && event->button() == Qt::LeftButton) {
        EndBand(event->pos().x());
    }
    drag_ = Drag::None;
    view_.EndGesture();
}

void PlotChart::ShowBand(int x) {
    const QRect area = Area();
    const QRect band(QPoint(pressed_.x(), area.top()), QPoint(x, area.bottom()));
    band_->setGeometry(band.normalized().intersected(area));
    band_->show();
}

void PlotChart::EndBand(int x) {
    band_->hide();
    if (std::abs(x - pressed_.x()) >= LeastBand) {
        const PlotPart& part = view_.Shown();
        view_.ZoomTo(part.At(ShareRight(pressed_.x())), part.At(ShareRight(x)));
        ShowPart();
    }
}

bool PlotChart::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return QFrame::event(event);
    }
    const auto* help = static_cast<QHelpEvent*>(event);
    const PlotPart& part = view_.Shown();
    const std::string marks = MarksNear(scene_, part.At(ShareRight(help->pos().x())), part, clock_);
    QToolTip::showText(
        help->globalPos(),
        ToQt(marks).toHtmlEscaped().replace(QLatin1Char('\n'), QStringLiteral("<br>")), this);
    return true;
}

// ----- cursor

void PlotChart::SetCursor(Moment at) {
    cursor_ = at;
    canvas_->SetCursor(at);
    canvas_->DrawCursor();
    if (CursorMoved) {
        CursorMoved();
    }
}

void PlotChart::Reveal(Moment at) {
    view_.Reveal(at);
    ShowPart();
    SetCursor(at);
}

void PlotChart::StepCursor(bool later, bool far) {
    const PlotPart& part = view_.Shown();
    const Moment from = cursor_.value_or(later ? part.From - 1 : part.To + 1);
    const Moment step =
        far ? part.At(FarShare) - part.From : part.Width() / std::max(canvas_->Area().width(), 1);
    const std::optional<Moment> next = scene_.RecordFrom(from, step, later);
    if (next) {
        Reveal(*next);
    }
}

void PlotChart::Describe(const QString& words) {
    if (accessibleDescription() != words) {
        setAccessibleDescription(words);
        QAccessibleEvent changed(this, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&changed);
    }
}

// ----- keys

bool PlotChart::TakesZoomKey(int key, bool values) {
    const bool closer = key == Qt::Key_Plus || key == Qt::Key_Equal;
    if (!closer && key != Qt::Key_Minus) {
        return false;
    }
    if (values) {
        view_.ZoomValues(closer ? ValueStep : 1 / ValueStep, Middle, canvas_->Ranges(),
                         PlotView::Gesture::Single);
        ShowPart();
    } else {
        closer ? ZoomIn() : ZoomOut();
    }
    return true;
}

bool PlotChart::TakesWayKey(int key, bool far) {
    switch (key) {
        case Qt::Key_Left:
        case Qt::Key_Right:
            StepCursor(key == Qt::Key_Right, far);
            return true;
        case Qt::Key_Home:
        case Qt::Key_End:
            if (const auto end = scene_.EndRecord(key == Qt::Key_End)) {
                Reveal(*end);
            }
            return true;
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            view_.Pan(key == Qt::Key_PageDown ? PageShare : -PageShare);
            ShowPart();
            return true;
        case Qt::Key_Up:
        case Qt::Key_Down:
            view_.PanValues(key == Qt::Key_Up ? FarShare : -FarShare);
            ShowPart();
            return true;
        default:
            return false;
    }
}

void PlotChart::keyPressEvent(QKeyEvent* event) {
    const bool control = (event->modifiers() & Qt::ControlModifier) != 0;
    view_.EndGesture();
    if (event->key() == Qt::Key_Backspace) {
        return ZoomBack();
    }
    if (!TakesZoomKey(event->key(), control) && !TakesWayKey(event->key(), control)) {
        QFrame::keyPressEvent(event);
    }
}

// ----- looks

void PlotChart::paintEvent(QPaintEvent* event) {
    QFrame::paintEvent(event);
    if (hasFocus()) {
        QStylePainter painter(this);
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.rect = rect();
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, option);
    }
}

void PlotChart::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    canvas_->DrawSoon();
}

void PlotChart::focusInEvent(QFocusEvent* event) {
    QFrame::focusInEvent(event);
    update();
}

void PlotChart::focusOutEvent(QFocusEvent* event) {
    QFrame::focusOutEvent(event);
    update();
}

void PlotChart::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    const bool looks = event->type() == QEvent::PaletteChange ||
                       event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange;
    if (looks && canvas_ != nullptr) {
        canvas_->SetStyle(palette(), font());
        canvas_->DrawSoon();
    }
}
