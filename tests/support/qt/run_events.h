#ifndef ORVIA_TESTS_SUPPORT_QT_RUN_EVENTS_H
#define ORVIA_TESTS_SUPPORT_QT_RUN_EVENTS_H

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

/// Runs events until `condition()` holds, sleeping between them; false if five seconds pass.
template <typename Condition>
[[nodiscard]] bool RunEventsUntil(Condition condition) {
    const QDeadlineTimer deadline(5000);
    QTimer wake;
    wake.start(20);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

#endif  // ORVIA_TESTS_SUPPORT_QT_RUN_EVENTS_H
