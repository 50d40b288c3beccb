#include "platform/qt/status_line.h"

#include <QIcon>
#include <QPainter>
#include <QStyle>
#include <QTextDocument>
#include <algorithm>

#include "platform/qt/text_qt.h"

StatusLine::StatusLine(QWidget* parent, const QString& name) : QLabel(parent) {
    setObjectName(name);
    setTextFormat(Qt::PlainText);
    setAccessibleDescription(QStringLiteral("What is being done, or what came of it"));
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void StatusLine::Tell(const std::string& text, bool failed) {
    const QString shown = ToQt(text);
    if (shown != QLabel::text() || failed != failed_) {
        failed_ = failed;
        setText(shown);
        update();
        TellWhole();
    }
}

QSize StatusLine::minimumSizeHint() const {
    return {0, fontMetrics().height()};
}

QString StatusLine::Cut() const {
    return fontMetrics().elidedText(text(), Qt::ElideRight, width() - SignWidth());
}

int StatusLine::SignWidth() const {
    return failed_ ? fontMetrics().height() * 5 / 4 : 0;
}

void StatusLine::TellWhole() {
    setToolTip(Cut() == text() ? QString() : Qt::convertFromPlainText(text()));
}

void StatusLine::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    TellWhole();
}

void StatusLine::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QIcon sign = style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this);
    if (failed_) {
        const int side = std::min(fontMetrics().height(), height());
        sign.paint(&painter, 0, (height() - side) / 2, side, side);
    }
    style()->drawItemText(&painter, rect().adjusted(SignWidth(), 0, 0, 0),
                          Qt::AlignLeft | Qt::AlignVCenter, palette(), true, Cut(),
                          foregroundRole());
}
