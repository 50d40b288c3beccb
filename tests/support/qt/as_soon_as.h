#ifndef ORVIA_TESTS_SUPPORT_QT_AS_SOON_AS_H
#define ORVIA_TESTS_SUPPORT_QT_AS_SOON_AS_H

#include <QTimer>
#include <functional>
#include <utility>

/// Does `act` once, as soon as `moment` holds, inside whatever runs events then. Looks every
/// millisecond for as long as it lives, so that a slow run misses nothing.
class AsSoonAs final {
 public:
    AsSoonAs(std::function<bool()> moment, std::function<void()> act)
        : moment_(std::move(moment)), act_(std::move(act)) {
        QObject::connect(&look_, &QTimer::timeout, &look_, [this] { Look(); });
        look_.start(1);
    }

    [[nodiscard]] bool Done() const { return done_; }

 private:
    void Look() {
        if (!done_ && moment_()) {
            look_.stop();
            done_ = true;
            act_();
        }
    }

    QTimer look_;
    std::function<bool()> moment_;
    std::function<void()> act_;
    bool done_ = false;
};

#endif  // ORVIA_TESTS_SUPPORT_QT_AS_SOON_AS_H
