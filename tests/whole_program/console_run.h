#ifndef ORVIA_TESTS_WHOLE_PROGRAM_CONSOLE_RUN_H
#define ORVIA_TESTS_WHOLE_PROGRAM_CONSOLE_RUN_H

#include <QElapsedTimer>
#include <QMessageBox>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QTimer>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>

#include "app/frmMain.h"
#include "app/shared_state.h"
#include "archive/sharing_worker.h"
#include "client/frmClient.h"
#include "platform/qt/qt_host.h"
#include "platform/qt/qt_sharing_stores.h"

namespace whole_program {

/// The settings with which a console begins. On Windows they lie in the registry, and each console
/// that starts there has to be given its own just before.
struct FirstSettings {
    QString Port = QStringLiteral("COM1");
    QString Baud = QStringLiteral("38400");
    QString Book = {};

    /// `folder` is the one that holds the folders of the console's settings and of its data.
    void Write(const QString& folder) const;
};

/// A home of its own for the console's settings, with "COM1" standing for a pseudo-terminal.
class Home {
 public:
    /// `book` is an address book, of which the home gets a copy to work on; may be empty.
    explicit Home(const QString& book);
    /// Where the link to the pseudo-terminal belongs; on Windows the port itself.
    [[nodiscard]] QString PortLink() const;
    [[nodiscard]] QString Book() const;
    /// The path of a file in this home.
    [[nodiscard]] QString PathOf(const QString& name) const { return folder_.filePath(name); }

 private:
    QTemporaryDir folder_;
};

/// The system's clock, which can be set ahead so that nobody need wait for a minute.
class ClockAhead final : public SystemClock {
 public:
    explicit ClockAhead(SystemClock& system) : system_(system) {}

    void GoAhead(int seconds) { ahead_ += seconds; }
    [[nodiscard]] LocalTime Now() const override;
    [[nodiscard]] std::string DateText(const LocalTime& time) const override {
        return system_.DateText(time);
    }
    [[nodiscard]] std::string TimeText(const LocalTime& time) const override {
        return system_.TimeText(time);
    }

 private:
    SystemClock& system_;
    int ahead_ = 0;
};

/// The console as main() makes it, with a hand on its mouse and keys. Message boxes, file dialogs
/// and forms that come up are answered as was told beforehand.
class ConsoleRun {
 public:
    using FormAction = std::function<void(QWidget& form)>;

    ConsoleRun();
    ~ConsoleRun();

    /// Starts the console, pressing `button` of the connect dialog.
    void Start(const QString& button = QStringLiteral("cmdConnect"));
    /// Clicks item `number` of the client list and gives the window that is open then.
    std::shared_ptr<frmClient> OpenClient(int number);
    /// Drags an item of the client list onto another.
    void Drag(int number, int onto);
    /// Clicks the button of that name in the main window or a child of `parent`, and returns when
    /// all that it began is over.
    void Click(const QString& name, QWidget* parent = nullptr);
    /// Chooses the menu row of that name, likewise.
    void Choose(const QString& name, QWidget* parent = nullptr);
    /// Types a text in place of what a field, or an editable list, of `form` holds.
    static void Type(QWidget& form, const QString& name, const QString& text);
    /// Selects the item of a list that begins so.
    static void Select(QWidget& form, const QString& name, const QString& beginning);
    /// The text that a label, field, list or button of `parent` shows.
    [[nodiscard]] static QString TextOf(QWidget& parent, const QString& name);

    // ----- what will come up

    /// The form with that name is dealt with so, once; a form told of twice comes up twice.
    void OnForm(const QString& name, FormAction action);
    /// Done as soon as `holds`, one after the other in the order told: for forms in which a loop
    /// of the console's own runs, which goes on only behind what is done.
    void When(std::function<bool()> holds, std::function<void()> act);
    /// The modal form of that name, if it is up.
    [[nodiscard]] static QWidget* Modal(const QString& name);
    /// The next box that has such a button is answered with it; others get their default.
    void Answer(QMessageBox::StandardButton button) { answers_.push_back(button); }
    /// The next file dialog is given that path.
    void Pick(const QString& path) { picks_.push_back(path); }
    /// The boxes that came up since the last call: title, text, and what stands below it.
    [[nodiscard]] QStringList TakeBoxes() { return std::exchange(boxes_, {}); }
    /// Whether everything told has come up.
    [[nodiscard]] bool AllCameUp() const;

    /// Lets the console run for so long.
    static void RunFor(int milliseconds);
    /// Lets the console run for so long by itself: nothing here looks on, or uses the processor.
    void LeaveAlone(int milliseconds);
    /// Looks on no more for so long, while the console goes on with what it does.
    void LookAway(int milliseconds);
    /// Lets the console run until `done`; False after `limit` milliseconds.
    static bool RunUntil(const std::function<bool()>& done, int limit);
    /// Closes the main window.
    bool Close();

    [[nodiscard]] frmMain& Window() { return *window_; }
    [[nodiscard]] SharedState& State() { return *state_; }
    [[nodiscard]] ClockAhead& Clock() { return clock_; }

 private:
    void Look();
    void AnswerBox(QMessageBox& box);
    void AnswerForm(QWidget& form);
    void ActWhenItHolds();

    QtHost host_;
    SharingWorker sharing_{SharingStoresFor(ArchiveFile())};
    ClockAhead clock_;
    std::unique_ptr<SharedState> state_;
    std::unique_ptr<frmMain> window_;
    QTimer watch_;
    struct Awaited {
        std::function<bool()> Holds;
        std::function<void()> Act;
    };

    std::map<QString, std::deque<FormAction>> forms_;
    std::set<QString> acted_;  ///< forms that are being dealt with
    std::deque<Awaited> awaited_;
    QElapsedTimer sinceLastAwaited_;
    std::deque<QMessageBox::StandardButton> answers_;
    std::deque<QString> picks_;
    QStringList boxes_;
};

}  // namespace whole_program

#endif  // ORVIA_TESTS_WHOLE_PROGRAM_CONSOLE_RUN_H
