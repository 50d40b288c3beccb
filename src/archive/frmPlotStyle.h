#ifndef ORVIA_ARCHIVE_FRM_PLOT_STYLE_H
#define ORVIA_ARCHIVE_FRM_PLOT_STYLE_H

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QPixmap>

#include "archive/plot_looks.h"

class QPainter;

/// Colours and font in which a plot is drawn.
struct PlotStyle {
    QColor Ground = Qt::white;
    QColor Text = Qt::black;
    QFont Font;
    bool Dark = false;

    /// The text's colour with a share of its strength.
    [[nodiscard]] QColor Faint(double share) const;
    /// The colour of a look on this ground.
    [[nodiscard]] QColor Of(const PlotLook& look) const;
};

/// The colours of a palette's fields; dark if its ground is darker than its text.
[[nodiscard]] PlotStyle PlotStyleOf(const QPalette& palette, const QFont& font);

/// Black on white, whatever the desktop's colours are.
[[nodiscard]] QPalette PaperPalette();

/// Draws a marker on a line, with an edge in the colour of the ground.
void DrawPlotMarker(QPainter& painter, PlotMarker marker, QPointF at, double size,
                    const QColor& colour, const QColor& ground);

/// A sample of a line, for a list.
[[nodiscard]] QPixmap PlotSwatch(std::size_t look, const PlotStyle& style, QSize size,
                                 qreal devicePixelRatio);

#endif  // ORVIA_ARCHIVE_FRM_PLOT_STYLE_H
