#include "history/frmProgress.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>

void BarFollower::SetValue(std::int32_t value) {
    constexpr std::uint32_t CallsBetweenLooks = 256;
    constexpr qint64 MillisecondsBetweenMoves = 40;
    if (++calls_ % CallsBetweenLooks != 0 || sinceMove_.elapsed() < MillisecondsBetweenMoves) {
        return;
    }
    sinceMove_.start();
    bar_.setValue(value);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

frmProgress::frmProgress(QWidget* parent) : QDialog(parent) {
    constexpr int Characters = 50;
    setObjectName(QStringLiteral("frmProgress"));
    setWindowTitle(QStringLiteral("Formatting Data"));
    auto* column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetFixedSize);
    auto* lblStatusBar =
        new QLabel(QStringLiteral("Please wait while data is being formatted"), this);
    lblStatusBar->setObjectName(QStringLiteral("lblStatusBar"));
    lblStatusBar->setMinimumWidth(fontMetrics().averageCharWidth() * Characters);
    column->addWidget(lblStatusBar);
    ProgressBar_ = new QProgressBar(this);
    ProgressBar_->setObjectName(QStringLiteral("ProgressBar"));
    ProgressBar_->setAccessibleName(QStringLiteral("Records formatted"));
    column->addWidget(ProgressBar_);
}
