#ifndef ORVIA_TESTS_SUPPORT_QT_FIND_CONTROL_H
#define ORVIA_TESTS_SUPPORT_QT_FIND_CONTROL_H

#include <QWidget>
#include <stdexcept>
#include <string>

#include "platform/qt/text_qt.h"

namespace testing_support {

/// The control of that name in the window; a wrong name fails with those that exist.
template <typename Control = QWidget>
Control* Find(const QWidget& window, const std::string& name) {
    auto* control = window.findChild<Control*>(ToQt(name));
    if (control == nullptr) {
        std::string names;
        for (const QWidget* child : window.findChildren<QWidget*>()) {
            names += FromQt(child->objectName()) + " ";
        }
        throw std::logic_error("no control " + name + " among " + names);
    }
    return control;
}

}  // namespace testing_support

#endif  // ORVIA_TESTS_SUPPORT_QT_FIND_CONTROL_H
