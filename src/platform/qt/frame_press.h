#ifndef ORVIA_PLATFORM_QT_FRAME_PRESS_H
#define ORVIA_PLATFORM_QT_FRAME_PRESS_H

#include <QMouseEvent>

/// A move of the pointer to where that press is, no button down. A child window decides by the
/// last move what a press on its frame is for; behind a click on its title that is still to move
/// the window, and a first press on the close box is lost. Handed to the window ahead of the press,
/// this puts it right.
[[nodiscard]] inline QMouseEvent MoveAheadOf(const QMouseEvent& press) {
    return {QEvent::MouseMove, press.position(), press.scenePosition(), press.globalPosition(),
            Qt::NoButton,      Qt::NoButton,     press.modifiers(),     press.pointingDevice()};
}

#endif  // ORVIA_PLATFORM_QT_FRAME_PRESS_H
