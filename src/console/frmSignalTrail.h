#ifndef ORVIA_CONSOLE_FRM_SIGNAL_TRAIL_H
#define ORVIA_CONSOLE_FRM_SIGNAL_TRAIL_H

#include <QFrame>
#include <QWidget>

#include "console/signal_trail.h"
#include "platform/host.h"

class QCheckBox;
class QLabel;

/// The curve of the last five minutes, its best value marked.
class frmTrailCurve final : public QWidget {
    Q_OBJECT

 public:
    frmTrailCurve(const SignalTrail& trail, QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    const SignalTrail& trail_;
};

/// The part of the signal monitor for whoever aims an antenna: the curve, the best value in words,
/// and a sound whenever the level is as good as that.
class frmSignalTrail final : public QFrame {
    Q_OBJECT

 public:
    frmSignalTrail(Bell& sound, QWidget* parent);

    void Add(const SignalTrail::Reading& reading);
    /// Another radio comes into view.
    void Clear();

 private:
    void ShowTrail();

    Bell& sound_;
    SignalTrail trail_;
    frmTrailCurve* curve_ = nullptr;
    QLabel* lblBest_ = nullptr;
    QCheckBox* chkBeep_ = nullptr;
};

#endif  // ORVIA_CONSOLE_FRM_SIGNAL_TRAIL_H
