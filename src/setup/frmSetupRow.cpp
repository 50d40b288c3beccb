#include "setup/frmSetupRow.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

frmSetupRow::frmSetupRow(const QString& title, QWidget* parent) : QGroupBox(title, parent) {
    KeepRoomForTitle();
}

int frmSetupRow::TitleWidth() const {
    return fontMetrics().horizontalAdvance(QLatin1Char('0')) + fontMetrics().height() / 2;
}

void frmSetupRow::KeepRoomForTitle() {
    setContentsMargins(TitleWidth(), 0, 0, 0);
}

// The toolkit's box would take the margins back that it keeps for a title above.
void frmSetupRow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
}

void frmSetupRow::changeEvent(QEvent* event) {
    QGroupBox::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        KeepRoomForTitle();
    }
}

void frmSetupRow::paintEvent(QPaintEvent* /*event*/) {
    constexpr double Corner = 3;
    const double left = TitleWidth();
    QColor line = palette().color(QPalette::WindowText);
    line.setAlphaF(isEnabled() ? 0.35F : 0.2F);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(line, 1, isEnabled() ? Qt::SolidLine : Qt::DotLine));
    painter.drawRoundedRect(QRectF(rect()).adjusted(left + 0.5, 0.5, -0.5, -0.5), Corner, Corner);
    const QRect beside(0, 0, TitleWidth() - fontMetrics().height() / 4, height());
    style()->drawItemText(&painter, beside, Qt::AlignRight | Qt::AlignVCenter, palette(),
                          isEnabled(), title(), foregroundRole());
}
