#ifndef ORVIA_TESTS_SUPPORT_QT_FORM_LOOK_H
#define ORVIA_TESTS_SUPPORT_QT_FORM_LOOK_H

#include <string>
#include <vector>

class QWidget;

namespace testing_support {

/// What an eye, a keyboard or a screen reader would stumble over in a form that is on the screen,
/// one line each: texts that are cut, controls that overlap, texts whose contrast is below 4.5,
/// controls that take input and have no name, a way of the Tab key that goes back up, and keys that
/// two controls share.
[[nodiscard]] std::vector<std::string> FaultsOf(const QWidget& form);

}  // namespace testing_support

#endif  // ORVIA_TESTS_SUPPORT_QT_FORM_LOOK_H
