#ifndef ORVIA_TESTS_SUPPORT_QT_MODAL_ANSWER_H
#define ORVIA_TESTS_SUPPORT_QT_MODAL_ANSWER_H

#include <QApplication>
#include <QTimer>
#include <functional>

/// Does `act` with the next modal window of type T, once it has come up; nothing if none does.
template <typename T>
class ModalAnswer final {
 public:
    explicit ModalAnswer(std::function<void(T&)> act) : act_(std::move(act)) {
        QObject::connect(&look_, &QTimer::timeout, &look_, [this] { Look(); });
        look_.start(0);
    }

    [[nodiscard]] bool Given() const { return given_; }

 private:
    void Look() {
        auto* window = qobject_cast<T*>(QApplication::activeModalWidget());
        if (window != nullptr && window->isVisible()) {
            look_.stop();
            given_ = true;
            act_(*window);
        }
    }

    QTimer look_;
    std::function<void(T&)> act_;
    bool given_ = false;
};

#endif  // ORVIA_TESTS_SUPPORT_QT_MODAL_ANSWER_H
