#ifndef ORVIA_TESTS_INSTALLED_GUIDE_H
#define ORVIA_TESTS_INSTALLED_GUIDE_H

#include <QApplication>
#include <QImage>
#include <QString>
#include <QThread>
#include <QWidget>
#include <functional>
#include <stdexcept>

namespace installed {

/// What the console did not do, or did not show.
class Wrong : public std::runtime_error {
 public:
    explicit Wrong(const QString& what) : std::runtime_error(what.toStdString()) {}
};

/// A hand on the windows of a console that knows nothing of it. It stands on a thread of its own;
/// what it does to windows is done on theirs, inside whatever loop runs there. Windows and controls
/// are named as the program names them.
class Guide {
 public:
    /// Waits until it holds, or complains that `what` did not happen. So does a message box that
    /// comes up meanwhile.
    void Await(const QString& what, const std::function<bool()>& holds);
    /// Waits for a message box, closes it and gives all that it says.
    [[nodiscard]] QString AwaitBox();

    /// Presses a button as soon as that is possible.
    void Press(const QString& form, const QString& button);
    /// Chooses a row of the main window's menus.
    void Choose(const QString& row);
    /// Chooses the item that begins so from a list that folds.
    void Select(const QString& form, const QString& list, const QString& beginning);
    /// Clicks the item of the list of radios, and waits for that radio's window.
    void OpenClient(const QString& site);
    /// The rows of a list that folds.
    [[nodiscard]] QStringList ItemsOf(const QString& form, const QString& list);
    /// Pixels that a button's picture changes on the screen.
    [[nodiscard]] int InkOf(const QString& form, const QString& button);
    /// Keeps a picture of a window in the folder, unless that is empty.
    void Keep(const QString& folder, const QString& form, const QString& name);

    /// Keeps one of all that is on the screen, to see what went wrong.
    static void KeepAll(const QString& folder);

    /// Does it where windows are, and waits for its end.
    template <typename Work>
    static auto There(Work work) {
        using Result = decltype(work());
        Result result{};
        QMetaObject::invokeMethod(
            qApp, [&] { result = work(); }, Qt::BlockingQueuedConnection);
        return result;
    }

    /// The shown window of that name; of several the newest that is active. Null if none is shown.
    [[nodiscard]] static QWidget* Form(const QString& name);

 private:
    void AwaitUnder(bool boxes, const QString& what, const std::function<bool()>& holds);
};

/// Starts simulator and walk; returns when the console may look for its settings and port.
void StartWalk();

}  // namespace installed

#endif  // ORVIA_TESTS_INSTALLED_GUIDE_H
