#include "platform/qt/status_line.h"

#include <QPainter>
#include <QStyle>
#include <QTextDocument>

#include "platform/qt/text_qt.h"

StatusLine::StatusLine(QWidget* parent, const QString& name) : QLabel(parent) {
    setObjectName(name);
    setTextFormat(Qt::PlainText);
    setAccessibleDescription(QStringLiteral("What is being done, or what came of it"));
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void StatusLine::Tell(const std::string& text) {
    const QString shown = ToQt(text);
    if (shown != QLabel::text()) {
        setText(shown);
        TellWhole();
    }
}

QSize StatusLine::minimumSizeHint() const {
    return {0, fontMetrics().height()};
}

QString StatusLine::Cut() const {
    return fontMetrics().elidedText(text(), Qt::ElideRight, width());
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
    style()->drawItemText(&painter, rect(), Qt::AlignLeft | Qt::AlignVCenter, palette(), true,
                          Cut(), foregroundRole());
}
