#ifndef ORVIA_ARCHIVE_FRM_PLOT_CHART_H
#define ORVIA_ARCHIVE_FRM_PLOT_CHART_H

#include <QFrame>
#include <QImage>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "archive/plot_scene.h"
#include "archive/plot_view.h"
#include "platform/host.h"

class PlotCanvas;
class QRubberBand;

/// Columns of series drawn over time, an axis for each unit, in the colours and the font of the
/// desktop; on paper black on white. Wheel, drag and keys go through time; a cursor follows the
/// pointer or the arrow keys.
class PlotChart : public QFrame {
    Q_OBJECT

 public:
    PlotChart(const SystemClock& clock, QWidget* parent);
    ~PlotChart() override;

    /// What stands above the plot on paper.
    void SetTitle(const QString& title) { title_ = title; }
    /// Shows these lines, each in a look of its own.
    void SetLines(std::vector<PlotLine> lines);
    /// Shows the time from one moment to another, both inside: that is all of it.
    void SetSpan(Moment from, Moment to);
    /// A new "all": it is shown if all was, else what is shown stays.
    void MoveSpan(Moment from, Moment to);
    /// Says something where nothing is drawn.
    void SetNote(const QString& note);

    /// Draws the window's pixels at once, which else waits for its turn among the events.
    void DrawNow();
    /// Draws what is shown, black on white with its legend, into a rectangle, as vectors where the
    /// painter takes them. Texts are in the painter's font. Needs no window.
    void PaintOn(QPainter& painter, const QRectF& where) const;
    /// The same as a picture of the chart's size, `scale` times as fine.
    [[nodiscard]] QImage Picture(double scale) const;

    [[nodiscard]] const PlotScene& Scene() const { return scene_; }
    [[nodiscard]] const PlotPart& Shown() const { return view_.Shown(); }
    [[nodiscard]] const PlotView& View() const { return view_; }
    /// Where the cursor stands, once it was moved.
    [[nodiscard]] std::optional<Moment> Cursor() const { return cursor_; }
    /// Where the lines are drawn, in this widget.
    [[nodiscard]] QRect Area() const;
    /// The ranges of the axes, by unit.
    [[nodiscard]] const std::map<std::string, ValueRange>& Ranges() const;

    void ZoomIn();
    void ZoomOut();
    void ZoomAll();
    void ZoomBack();
    /// Whether a drag chooses a period, as it does with Shift, instead of panning.
    void SetChoosing(bool on);
    void SetCursor(Moment at);
    /// Says in words what is under the cursor.
    void Describe(const QString& words);

    /// Called when another part is shown, and when the cursor was moved.
    std::function<void()> PartChanged;
    std::function<void()> CursorMoved;

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;

 private:
    enum class Drag { None, Panning, Choosing };

    void ShowPart();
    [[nodiscard]] double ShareRight(int x) const;
    [[nodiscard]] double ShareUp(int y) const;
    [[nodiscard]] double CursorShare() const;
    void ShowBand(int x);
    void EndBand(int x);
    void StepCursor(bool later, bool far);
    void Reveal(Moment at);
    [[nodiscard]] bool TakesZoomKey(int key, bool values);
    [[nodiscard]] bool TakesWayKey(int key, bool far);

    const SystemClock& clock_;
    std::unique_ptr<PlotCanvas> canvas_;
    QRubberBand* band_;
    PlotScene scene_;
    PlotView view_;
    QString title_;
    QString note_;
    std::optional<Moment> cursor_;
    Drag drag_ = Drag::None;
    QPoint pressed_;
    bool choosing_ = false;
};

#endif  // ORVIA_ARCHIVE_FRM_PLOT_CHART_H
