#include "platform/qt/qt_event_pump.h"

#include <QCoreApplication>
#include <QTimer>
#include <chrono>

void QtEventPump::RunPendingEvents() {
    QCoreApplication::processEvents(QEventLoop::AllEvents);
}

void QtEventPump::WaitForMoreEvents() {
    QTimer wake;
    wake.setSingleShot(true);
    wake.start(std::chrono::seconds(1));
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}
