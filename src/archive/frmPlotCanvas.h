#ifndef ORVIA_ARCHIVE_FRM_PLOT_CANVAS_H
#define ORVIA_ARCHIVE_FRM_PLOT_CANVAS_H

#include <QFont>
#include <QPalette>
#include <QRect>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "archive/plot_scene.h"
#include "archive/plot_view.h"
#include "platform/host.h"

class QPainter;
class QWidget;

/// Draws a part of a scene, in a window or on paper. The one place that knows the library.
class PlotCanvas {
 public:
    /// Of a parent, the canvas draws in a widget of its own; of none, on paper alone.
    PlotCanvas(const SystemClock& clock, QWidget* parent);
    ~PlotCanvas();
    PlotCanvas(const PlotCanvas&) = delete;
    PlotCanvas& operator=(const PlotCanvas&) = delete;

    [[nodiscard]] QWidget& Widget() const;

    void SetStyle(const QPalette& palette, const QFont& font);
    /// Shows the lines of a scene, which outlives this; to be called again when they change.
    void SetScene(const PlotScene& scene);
    void SetPart(const PlotPart& part);
    /// What is said where nothing is drawn.
    void SetNote(const QString& note);
    /// Stands above the plot.
    void SetTitle(const QString& title);
    /// Tells the lines and marks below the plot.
    void ShowLegend();
    /// Puts the cursor on a moment, or takes it away.
    void SetCursor(std::optional<Moment> at);
    /// Moves nothing but the cursor, which is quick.
    void DrawCursor();
    /// Draws all, before the window is shown next, or now.
    void DrawSoon();
    void DrawNow();
    /// Draws all into a rectangle, as vectors where the painter takes them; `scale` is what a pixel
    /// of the canvas is there.
    void Paint(QPainter& painter, const QRectF& where, double scale);

    /// Where the lines are drawn, in the widget.
    [[nodiscard]] QRect Area() const;
    /// The ranges of the axes, by unit.
    [[nodiscard]] const std::map<std::string, ValueRange>& Ranges() const;

 private:
    struct Parts;

    std::unique_ptr<Parts> parts_;
};

#endif  // ORVIA_ARCHIVE_FRM_PLOT_CANVAS_H
