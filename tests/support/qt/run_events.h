#ifndef ORVIA_TESTS_SUPPORT_QT_RUN_EVENTS_H
#define ORVIA_TESTS_SUPPORT_QT_RUN_EVENTS_H

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEvent>
#include <QTimer>
#include <functional>
#include <utility>

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

/// Does `act` once, `milliseconds` from now, while events run.
class Later final {
 public:
    Later(int milliseconds, std::function<void()> act) : act_(std::move(act)) {
        timer_.setSingleShot(true);
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { act_(); });
        timer_.start(milliseconds);
    }

 private:
    QTimer timer_;
    std::function<void()> act_;
};

/// Does `act` once, in the next turn of events, before anything that the system has to tell.
class Posted final : public QObject {
 public:
    explicit Posted(std::function<void()> act) : act_(std::move(act)) {
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }

    bool event(QEvent* event) override {
        const bool mine = event->type() == QEvent::User;
        if (mine) {
            act_();
        }
        return mine || QObject::event(event);
    }

 private:
    std::function<void()> act_;
};

#endif  // ORVIA_TESTS_SUPPORT_QT_RUN_EVENTS_H
