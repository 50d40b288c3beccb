#include "client/frmClientFrame.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

QRect frmClientFrame::TitleRect() const {
    const QSize text = fontMetrics().size(Qt::TextShowMnemonic, title());
    const int gap = fontMetrics().height() / 4;
    const int width = text.width() + 2 * gap;
    const bool centred = (alignment() & Qt::AlignHCenter) != 0;
    return {centred ? (this->width() - width) / 2 : gap, 0, width, text.height()};
}

void frmClientFrame::paintEvent(QPaintEvent* /*event*/) {
    constexpr double Corner = 3;
    const QRect shown = TitleRect();
    QColor line = palette().color(QPalette::WindowText);
    line.setAlphaF(0.3F);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(line);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, shown.height() / 2 + 0.5, -0.5, -0.5),
                            Corner, Corner);
    if (title().isEmpty()) {
        return;
    }
    painter.fillRect(shown, palette().color(QPalette::Window));
    style()->drawItemText(&painter, shown, Qt::AlignCenter | Qt::TextShowMnemonic, palette(),
                          isEnabled(), title(), foregroundRole());
}
