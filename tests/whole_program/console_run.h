#ifndef ORVIA_TESTS_WHOLE_PROGRAM_CONSOLE_RUN_H
#define ORVIA_TESTS_WHOLE_PROGRAM_CONSOLE_RUN_H

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>
#include <memory>

#include "app/frmMain.h"
#include "app/shared_state.h"
#include "client/frmClient.h"
#include "platform/qt/qt_host.h"

namespace whole_program {

/// A home of its own for the console's settings, with "COM1" standing for a pseudo-terminal.
class Home {
 public:
    /// `book` is the address book that the settings name; may be empty.
    explicit Home(const QString& book);
    /// Where the link to the pseudo-terminal belongs.
    [[nodiscard]] QString PortLink() const;
    [[nodiscard]] QString SettingsFile() const;

 private:
    QTemporaryDir folder_;
};

/// The console as main() makes it, with a hand on its mouse.
class ConsoleRun {
 public:
    ConsoleRun();
    ~ConsoleRun();

    /// Starts the console, pressing `button` of the connect dialog.
    void Start(const QString& button = QStringLiteral("cmdConnect"));
    /// Clicks item `number` of the client list and gives the window that is open then.
    std::shared_ptr<frmClient> OpenClient(int number);
    /// Clicks the button of that name in the main window or a child of `parent`, and returns when
    /// all that it began is over.
    void Click(const QString& name, QWidget* parent = nullptr);
    /// Lets the console run for so long.
    static void RunFor(int milliseconds);
    /// Lets the console run until `done`; False after `limit` milliseconds.
    static bool RunUntil(const std::function<bool()>& done, int limit);
    /// Closes the main window.
    bool Close();

    [[nodiscard]] frmMain& Window() { return *window_; }
    [[nodiscard]] SharedState& State() { return *state_; }
    /// Texts of the message boxes that came up and were answered with Enter.
    [[nodiscard]] const QStringList& Boxes() const { return boxes_; }

 private:
    void AnswerBoxes();

    QtHost host_;
    std::unique_ptr<SharedState> state_;
    std::unique_ptr<frmMain> window_;
    QTimer watch_;
    QString connectButton_;
    QStringList boxes_;
};

}  // namespace whole_program

#endif  // ORVIA_TESTS_WHOLE_PROGRAM_CONSOLE_RUN_H
