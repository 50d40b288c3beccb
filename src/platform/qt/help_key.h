#ifndef ORVIA_PLATFORM_QT_HELP_KEY_H
#define ORVIA_PLATFORM_QT_HELP_KEY_H

#include <QObject>
#include <functional>
#include <string>
#include <vector>

/// Listens for F1 in every window of the program, modal ones among them.
class HelpKey final : public QObject {
 public:
    /// Names of the control that has the focus and of all around it, from the inside out. Around a
    /// box or a dialog is the window that it stands before.
    using Pressed = std::function<void(const std::vector<std::string>& names)>;

    explicit HelpKey(Pressed pressed);

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    Pressed pressed_;
};

#endif  // ORVIA_PLATFORM_QT_HELP_KEY_H
