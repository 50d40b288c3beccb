#include "client/frmClientColumn.h"

#include <QPainter>

frmClientColumn::frmClientColumn(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void frmClientColumn::SetGeometryOfBar(const TwipsBox& bar, const TwipsBox& column,
                                       double pixelsPerTwip) {
    bar_ = bar;
    column_ = column;
    pixelsPerTwip_ = pixelsPerTwip;
    // The rest of the column is left to the frame around it.
    setMask(Outline().toAlignedRect());
    update();
}

void frmClientColumn::Fill(const std::vector<BarFill>& fills) {
    fills_ = fills;
    QRectF changed;
    for (const BarFill& fill : fills_) {
        changed |= PixelsOf(fill.Box);
    }
    // The line on top of the bar stands one pixel above it.
    update(changed.toAlignedRect().adjusted(-1, -1, 1, 1));
}

void frmClientColumn::Clear() {
    fills_.clear();
    update();
}

QRectF frmClientColumn::PixelsOf(const TwipsBox& box) const {
    return {(box.Left - column_.Left) * pixelsPerTwip_, (box.Top - column_.Top) * pixelsPerTwip_,
            box.Width * pixelsPerTwip_, box.Height * pixelsPerTwip_};
}

QRectF frmClientColumn::Outline() const {
    return PixelsOf(bar_).adjusted(-1, -1, 1, 1);
}

QColor frmClientColumn::ColourOf(BarColour colour) const {
    switch (colour) {
        case BarColour::Channel:
            return {128, 128, 255};
        case BarColour::Flow:
            return {128, 0, 128};
        default:
            return palette().color(QPalette::Window);
    }
}

void frmClientColumn::paintEvent(QPaintEvent* /*event*/) {
    const QColor ground = ColourOf(BarColour::Ground);
    const QColor text = palette().color(QPalette::WindowText);
    QColor outline = text;
    outline.setAlphaF(0.55F);
    QPainter painter(this);
    painter.fillRect(rect(), ground);
    painter.fillRect(Outline(), outline);
    painter.fillRect(PixelsOf(bar_), ground);
    for (const BarFill& fill : fills_) {
        const QRectF box = PixelsOf(fill.Box);
        painter.fillRect(box, ColourOf(fill.Colour));
        // The told colours are weak against some grounds; a line marks the level on all of them.
        if (fill.Colour != BarColour::Ground && fill.Box.Height > 0) {
            painter.fillRect(QRectF(box.left(), box.top() - 1, box.width(), 1), text);
        }
    }
}
