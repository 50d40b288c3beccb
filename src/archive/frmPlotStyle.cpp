#include "archive/frmPlotStyle.h"

#include <QPainter>
#include <QPolygonF>

QColor PlotStyle::Faint(double share) const {
    QColor faint = Text;
    faint.setAlphaF(static_cast<float>(share));
    return faint;
}

QColor PlotStyle::Of(const PlotLook& look) const {
    return QColor::fromRgb(Dark ? look.OnDark : look.OnLight);
}

PlotStyle PlotStyleOf(const QPalette& palette, const QFont& font) {
    const QColor ground = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Text);
    return {ground, text, font, ground.lightness() < text.lightness()};
}

QPalette PaperPalette() {
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    return palette;
}

void DrawPlotMarker(QPainter& painter, PlotMarker marker, QPointF at, double size,
                    const QColor& colour, const QColor& ground) {
    const bool open = marker == PlotMarker::Cross || marker == PlotMarker::Circle;
    painter.setPen(open ? QPen(colour, 2) : QPen(ground, 1));
    painter.setBrush(marker == PlotMarker::Circle ? ground : colour);
    const double half = size / 2;
    const QRectF around(at.x() - half, at.y() - half, size, size);
    switch (marker) {
        case PlotMarker::Disc:
        case PlotMarker::Circle:
            painter.drawEllipse(around);
            break;
        case PlotMarker::Square:
            painter.drawRect(around);
            break;
        case PlotMarker::Triangle:
            painter.drawPolygon(QPolygonF{QPointF(at.x(), around.top()), around.bottomRight(),
                                          around.bottomLeft()});
            break;
        case PlotMarker::Diamond:
            painter.drawPolygon(
                QPolygonF{QPointF(at.x(), around.top()), QPointF(around.right(), at.y()),
                          QPointF(at.x(), around.bottom()), QPointF(around.left(), at.y())});
            break;
        case PlotMarker::Cross:
            painter.drawLine(around.topLeft(), around.bottomRight());
            painter.drawLine(around.topRight(), around.bottomLeft());
            break;
    }
}

QPixmap PlotSwatch(std::size_t look, const PlotStyle& style, QSize size, qreal devicePixelRatio) {
    QPixmap swatch(size * devicePixelRatio);
    swatch.setDevicePixelRatio(devicePixelRatio);
    swatch.fill(Qt::transparent);
    QPainter painter(&swatch);
    painter.setRenderHint(QPainter::Antialiasing);
    const PlotLook told = PlotLookOf(look);
    constexpr double LineWidth = 2;
    const double middle = size.height() / 2.0;
    painter.setPen(QPen(style.Of(told), LineWidth));
    painter.drawLine(QPointF(0, middle), QPointF(size.width(), middle));
    constexpr double MarkerShare = 0.6;
    DrawPlotMarker(painter, told.Marker, QPointF(size.width() / 2.0, middle),
                   size.height() * MarkerShare, style.Of(told), style.Ground);
    return swatch;
}
