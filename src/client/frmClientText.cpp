#include "client/frmClientText.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStringList>
#include <QStyle>

namespace {

/// Keeps a text clear of its neighbour's: a share of the font's height, at each end that has one.
constexpr int GapShare = 4;

int Descent(const QFontMetrics& metrics) {
    return metrics.height() - metrics.ascent();
}

}  // namespace

frmClientText::frmClientText(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

int frmClientText::Gap() const {
    return QFontMetrics(parentWidget()->font()).height() / GapShare;
}

int frmClientText::Room() const {
    const int ends = (alignment() & Qt::AlignHCenter) != 0 ? 2 : 1;
    return width() - ends * Gap();
}

bool frmClientText::Fits(const QFont& font) const {
    if (text().isEmpty()) {
        return true;
    }
    const int flags = wordWrap() ? Qt::TextWordWrap : 0;
    const QRect room(0, 0, Room(), height());
    const QSize size = QFontMetrics(font).boundingRect(room, flags, text()).size();
    return size.width() <= room.width() && size.height() <= room.height();
}

std::optional<int> frmClientText::FittingSize(const QFont& largest, int smallest) const {
    QFont font = largest;
    for (int pixels = largest.pixelSize(); pixels >= smallest; --pixels) {
        font.setPixelSize(pixels);
        if (Fits(font)) {
            return pixels;
        }
    }
    return std::nullopt;
}

void frmClientText::ShowAt(int pixels, const QFont& largest) {
    QFont font = largest;
    font.setPixelSize(pixels);
    setFont(font);
    cut_ = !Fits(font);
    const QFontMetrics own(font);
    const QFontMetrics full(largest);
    const int lower = full.ascent() - own.ascent();
    const bool centred = (alignment() & Qt::AlignVCenter) != 0;
    // A margin above moves a text in the middle by half of it.
    const int above = centred ? lower - (Descent(full) - Descent(own)) : lower;
    setContentsMargins((alignment() & Qt::AlignLeft) != 0 ? 0 : Gap(), above,
                       (alignment() & Qt::AlignRight) != 0 ? 0 : Gap(), 0);
}

// Each line that is too long ends in dots; of a text that wraps, each word.
QString frmClientText::CutText() const {
    const QChar between = wordWrap() ? QLatin1Char(' ') : QLatin1Char('\n');
    QStringList parts = text().split(between);
    for (QString& part : parts) {
        part = fontMetrics().elidedText(part, Qt::ElideRight, Room());
    }
    return parts.join(between);
}

void frmClientText::paintEvent(QPaintEvent* event) {
    if (!cut_) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    const int flags = static_cast<int>(alignment()) | (wordWrap() ? Qt::TextWordWrap : 0);
    style()->drawItemText(&painter, contentsRect(), flags, palette(), isEnabled(), CutText(),
                          foregroundRole());
}
