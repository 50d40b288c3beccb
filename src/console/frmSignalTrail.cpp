#include "console/frmSignalTrail.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <optional>

#include "platform/qt/named_controls.h"
#include "platform/qt/text_qt.h"

namespace {

constexpr double PointRadius = 3.5;

/// Room for the line at the edges of the curve.
constexpr double Edge = 4;

QRectF Room(const QWidget& curve) {
    return QRectF(curve.rect()).adjusted(Edge, Edge, -Edge, -Edge);
}

QPointF PointAt(const TrailPlace& place, const QRectF& room) {
    return {room.left() + place.Across * room.width(), room.top() + place.Down * room.height()};
}

/// The readings as a line that is broken where there was no level.
QPainterPath LineThrough(const SignalTrail& trail, const QRectF& room) {
    QPainterPath line;
    bool connected = false;
    for (const SignalTrail::Reading& reading : trail.Readings()) {
        if (reading.DBm) {
            const QPointF point = PointAt(PlaceOf(reading, trail.Readings().back().Time), room);
            if (!connected) {
                // A level that stands alone between two losses is a dot.
                constexpr double Dot = 0.1;
                line.moveTo(point - QPointF(Dot, 0));
            }
            line.lineTo(point);
        }
        connected = reading.DBm.has_value();
    }
    return line;
}

void DrawMinutes(QPainter& painter, const QRectF& room) {
    constexpr int Minutes = 5;
    for (int minute = 0; minute <= Minutes; ++minute) {
        const double x = room.left() + room.width() * minute / Minutes;
        painter.drawLine(QPointF(x, room.top()), QPointF(x, room.bottom()));
    }
}

}  // namespace

// ----- the curve

frmTrailCurve::frmTrailCurve(const SignalTrail& trail, QWidget* parent)
    : QWidget(parent), trail_(trail) {
    setObjectName(QStringLiteral("pctTrail"));
    setAccessibleName(QStringLiteral("Signal level of the last five minutes"));
}

QSize frmTrailCurve::sizeHint() const {
    constexpr int Lines = 6;
    constexpr int Characters = 50;
    return {fontMetrics().averageCharWidth() * Characters, fontMetrics().height() * Lines};
}

void frmTrailCurve::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    const QRectF room = Room(*this);
    painter.setPen(palette().color(QPalette::Midlight));
    DrawMinutes(painter, room);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    const auto best = trail_.Best();
    if (!best) {
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF mark = PointAt(PlaceOf(*best, trail_.Readings().back().Time), room);
    painter.setPen(QPen(palette().color(QPalette::Text), 1, Qt::DashLine));
    painter.drawLine(QPointF(room.left(), mark.y()), QPointF(room.right(), mark.y()));
    constexpr double Width = 1.6;
    painter.setPen(QPen(palette().color(QPalette::Highlight), Width, Qt::SolidLine, Qt::RoundCap));
    painter.drawPath(LineThrough(trail_, room));
    painter.setBrush(palette().color(QPalette::Text));
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(mark, PointRadius, PointRadius);
}

// ----- the part

frmSignalTrail::frmSignalTrail(Bell& sound, QWidget* parent) : QFrame(parent), sound_(sound) {
    setObjectName(QStringLiteral("frmSignalTrail"));
    curve_ = new frmTrailCurve(trail_, this);
    lblBest_ = ValueLabel(this, QStringLiteral("lblBest"),
                          QStringLiteral("Strongest level of the last five minutes"));
    // The window keeps its size whatever the label says.
    lblBest_->setMinimumWidth(
        lblBest_->fontMetrics().horizontalAdvance(QStringLiteral("Best: -100 DBm, 300 s ago")));
    chkBeep_ = new QCheckBox(QStringLiteral("&Beep when as good as the best"), this);
    chkBeep_->setObjectName(QStringLiteral("chkBeep"));
    auto* ends = new QHBoxLayout;
    ends->addWidget(new QLabel(QStringLiteral("5 minutes ago"), this));
    ends->addStretch();
    ends->addWidget(new QLabel(QStringLiteral("now"), this));
    auto* below = new QHBoxLayout;
    below->addWidget(lblBest_, 1);
    below->addWidget(chkBeep_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(curve_);
    column->addLayout(ends);
    column->addLayout(below);
    ShowTrail();
}

void frmSignalTrail::Add(const SignalTrail::Reading& reading) {
    trail_.Add(reading);
    ShowTrail();
    if (chkBeep_->isChecked() && trail_.NewestIsBest()) {
        sound_.Ring();
    }
}

void frmSignalTrail::Clear() {
    trail_.Clear();
    ShowTrail();
}

void frmSignalTrail::ShowTrail() {
    lblBest_->setText(ToQt(trail_.BestText()));
    curve_->update();
}
