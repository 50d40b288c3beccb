#ifndef ORVIA_APP_FRM_MAIN_H
#define ORVIA_APP_FRM_MAIN_H

#include <QMainWindow>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/contexts.h"
#include "app/shared_state.h"
#include "client/client_context.h"
#include "client/client_popup.h"
#include "collect/collect_schedule.h"
#include "console/book_operations.h"
#include "console/entry_editing.h"
#include "console/for_all.h"
#include "console/frmEntryDialogs.h"
#include "console/frmSignalLevel.h"
#include "console/frmWalkLog.h"
#include "console/list_drop.h"
#include "console/logger_operations.h"
#include "link/connecting.h"
#include "link/sampling.h"
#include "platform/qt/help_key.h"
#include "records/main_view.h"

class ClientListWidget;
class QAction;
class QDialog;
class QLabel;
class QLineEdit;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QPushButton;
class StatusLine;
class frmArchive;
class frmArchiveSettings;
class frmCollect;
class frmRating;
class frmSupport;
class frmTrace;
struct SupportSource;

/// The main window: parent of all client windows, with the client list, the operations and the
/// state of the link. Its two timers are the console's main loop.
class frmMain final : public QMainWindow,
                      public MainView,
                      public ClientPopup,
                      private ScheduleDesk {
 public:
    /// Makes the window, hidden and at rest; Load brings it to life.
    explicit frmMain(SharedState& state);
    ~frmMain() override;

    /// Takes the console from launch to the main window with the connect dialog behind it: splash,
    /// settings, catalogues, connection, book. Returns when that dialog is gone. A console that a
    /// session starts, where nobody may be there, does without it.
    void Load(bool unattended = false);

    // MainView
    [[nodiscard]] bool IsVisible() const override { return isVisible(); }
    void SetPointer(Pointer pointer) override;
    void SetComPort(const std::string& text) override;
    void SetServerState(const std::string& text, Colour colour) override;
    void SetSystemID(const std::string& text) override;
    void ShowLinkFields(bool linked) override;
    void SetCommandStates(const CommandStates& states) override;
    void SetStatus(const std::string& text, bool failed) override;
    void SetAddressBookName(const std::string& text) override;
    void ClearClients() override;
    void AddClient(const std::string& name, std::uint8_t icon) override;
    void SetClientIcon(int item, std::uint8_t icon) override;
    [[nodiscard]] int ClientCount() const override;
    [[nodiscard]] int SelectedClient() const override;
    [[nodiscard]] std::shared_ptr<ClientWindow> NewClientWindow() override;
    [[nodiscard]] std::shared_ptr<ClientWindow> NewClientWindowBehind() override;
    void CloseAllChildForms() override;

    // ClientPopup
    void ShowClientPopup(const std::string& sampleCaption) override;

 protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    using Operation = std::function<void(const OperationContext&)>;
    using ForAllRow = void (*)(const ForAllContext&);

    void BuildTopPanel();
    void BuildLeftPanel();
    void BuildButtonBar();
    void BuildArea();
    void ColourArea();
    void BuildFileMenu();
    void BuildClientMenus();
    void BuildForAllMenu();
    void BuildDataMenu();
    void BuildTraceRows(QMenu& help);
    void BuildWindowMenu();
    void BuildHelpMenu();
    void BuildPopup();
    void BuildTimers();
    QPushButton* AddButton(const QString& name, const QString& text, const Operation& operation);
    QAction* AddItem(QMenu& menu, const QString& name, const QString& text,
                     std::function<void()> action);

    /// Lets the window system bring the window to the screen, which gives it its place: a dialog
    /// that comes up before stands over another one. Not for longer than a second.
    void AwaitPlace();
    /// Stands where the window of the last run stood, if there was one.
    void TakePlace();
    void KeepPlace();
    void ShowConnect();
    void ShowSetup(const OperationContext& context);
    void ToggleConnection();
    void Supervise();
    void ViewClient();
    void AddEntryRow(QMenu& menu, const QString& name, const QString& text,
                     std::function<void()> action);
    void WithChosenClient(const std::function<void()>& action);
    void ToggleAutoUpdate();
    void ShowRating();
    void ShowHelpOn(const std::vector<std::string>& names);
    void ShowArchive();
    void ShowArchiveSettings();
    void FollowSharing();
    void ShowLivePlot();
    void PlotSeries(std::vector<std::shared_ptr<const NamedSeries>> series, const Period& span);
    void ReportSeries(std::shared_ptr<const NamedSeries> series, const Period& span);
    void UploadHistory(const OperationContext& context);
    void BuildCollectRows(QMenu& menu);
    void CollectFromAll();
    void KeepChoice();
    void FollowCollection();
    void ShowCollect();
    void MakeSchedule();
    /// Does what the operator clicked, or has it done when a round has done with its logger.
    void OrLater(std::function<void()> click);
    // ScheduleDesk
    void QueueStep() override;
    [[nodiscard]] bool DialogStands() override;
    [[nodiscard]] std::string RoundEnded(const std::string& digest,
                                         const std::string& when) override;
    void PlotViewed(const FlowTable& points, QDialog& viewer);
    void CloseDataWindows();
    void ShowTrace();
    void ShowSupport();
    [[nodiscard]] SupportSource Support() const;
    [[nodiscard]] bool KeepsFlowTable();
    void ListWindows();
    void UnloadChild(QMdiSubWindow& child);
    [[nodiscard]] bool TakesListEvent(const QEvent& event);

    [[nodiscard]] OperationContext Operating() const { return contexts_.Operation(*log_); }
    [[nodiscard]] ForAllContext Walking() const { return {.operation = Operating(), .log = *log_}; }
    [[nodiscard]] EntryContext Entries();

    SharedState& state_;
    const Contexts contexts_;
    ClientContext clients_;
    std::string helpFile_;
    HelpKey helpKey_;
    EntryForms entryForms_;
    SignalForms signalForms_;
    std::unique_ptr<WalkLogForm> log_;
    frmRating* rating_ = nullptr;                    ///< none until it is asked for
    frmArchive* archive_ = nullptr;                  ///< the same
    frmArchiveSettings* archiveSettings_ = nullptr;  ///< the same
    frmTrace* trace_ = nullptr;                      ///< the same
    frmSupport* support_ = nullptr;                  ///< the same
    frmCollect* collect_ = nullptr;                  ///< the same
    std::unique_ptr<CollectSchedule> schedule_;      ///< none without an archive
    bool togglePostponed_ = false;

    QWidget* pctTop_ = nullptr;
    QWidget* pctLeft_ = nullptr;
    QWidget* Picture1_ = nullptr;
    QLineEdit* txtServerState_ = nullptr;
    QLabel* lblSystemID_ = nullptr;
    QLineEdit* txtSystemID_ = nullptr;
    QLabel* lblComPort_ = nullptr;
    QLineEdit* txtComPort_ = nullptr;
    QPushButton* cmdConnect_ = nullptr;
    QLabel* lblAddressBook_ = nullptr;
    ClientListWidget* lvwClients_ = nullptr;
    QMdiArea* area_ = nullptr;
    StatusLine* lblStatus_ = nullptr;
    QPushButton* cmdSampleContinuously_ = nullptr;
    std::vector<QPushButton*> operationButtons_;  ///< all but cmdSampleContinuously
    std::vector<QAction*> entryActions_;
    std::vector<QAction*> forAllActions_;  ///< all but mnuAutoUpdateFACW
    QAction* mnuAutoUpdateFACW_ = nullptr;
    QAction* mnuCollect_ = nullptr;
    QAction* mnuCollectBook_ = nullptr;
    QAction* mnuCollectSync_ = nullptr;
    QMenu* mnuWindow_ = nullptr;
    QMenu* mnuClientS_ = nullptr;
    QMenu* mnuClientPopup_ = nullptr;
    QAction* mnuClientSampleContinuously_ = nullptr;

    CommandStates statesShown_;
    QTimer Timer1_;
    QTimer Timer2_;
};

#endif  // ORVIA_APP_FRM_MAIN_H
