#ifndef ORVIA_SETUP_FRMSETUP_H
#define ORVIA_SETUP_FRMSETUP_H

#include <QDialog>
#include <QTimer>
#include <array>
#include <functional>
#include <string>

#include "setup/frmSetupFields.h"
#include "setup/setup_context.h"

class FocusGuard;
class QAction;
class QMenu;
class QMenuBar;
class QPushButton;
class QScrollArea;
class QTabBar;
class StatusLine;
class frmSetupPages;

/// The dialog in which the settings of the current logger are edited, filed, programmed and
/// calibrated.
class frmSetup final : public QDialog, private SetupView {
    Q_OBJECT

 public:
    /// What the dialog asks of those who show it.
    struct Services {
        std::function<bool()> Reselect;           ///< brings the server radio back to the logger
        std::function<void(QWidget&)> ShowAbout;  ///< shows what the program is, above a window
    };

    frmSetup(const SetupRecords& records, Services services, QWidget* parent);

    /// Opens the dialog on the current logger and returns when it has been closed.
    void ShowModally();
    /// The first half of that: fills the dialog and starts its timer, without a window yet.
    void Load();

    /// Escape acts as the close box.
    void reject() override { close(); }

 protected:
    void closeEvent(QCloseEvent* event) override;

 private:
    // SetupView
    [[nodiscard]] SetupControls Controls() const override;
    void ShowControls(const SetupControls& controls) override;
    [[nodiscard]] bool ValidateField() override;
    void EnableFlow(const FlowStates& states) override;
    void SetTableFile(const std::string& path) override;
    void SetCalibration(int channel, const CalibrationValues& values) override;
    void EnableAlarm(int alarm, bool on) override;
    void SetRecentFile(int place, std::string_view name) override;
    void SetPointer(Pointer pointer) override;
    void EnableCancel(bool on) override;
    void FocusCancel() override;
    void HoldInput(bool held) override;

    void BuildTabs();
    void BuildButtons();
    void BuildMenus();
    void BuildFileMenu(QMenu& menu);
    void BuildShortcuts();
    void ConnectPages();
    void GuardFields();
    void FitScreen();
    QAction* AddItem(QMenu& menu, const char* name, const char* caption,
                     std::function<void()> action);

    [[nodiscard]] SetupContext Context();
    [[nodiscard]] bool Validate(const frmSetupFields::Field& field);
    void OnTimer1();
    void TurnPage(int step);

    const SetupRecords records_;
    const Services services_;
    SetupDialog dialog_;
    bool showing_ = false;  ///< the program, not the user, changes the controls
    bool remarks_ = true;   ///< validators show what they tell of a value that they accept
    QWidget* focusBefore_ = nullptr;

    QMenuBar* menus_ = nullptr;
    QTabBar* TabStrip_ = nullptr;
    QScrollArea* scroll_ = nullptr;
    frmSetupPages* pages_ = nullptr;
    StatusLine* lblStatus_ = nullptr;
    QPushButton* cmdOK_ = nullptr;
    QPushButton* cmdCancel_ = nullptr;
    std::array<QAction*, 4> mnuHist_ = {};
    FocusGuard* guard_ = nullptr;
    QTimer Timer1_{this};
};

#endif  // ORVIA_SETUP_FRMSETUP_H
