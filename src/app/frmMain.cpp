#include "app/frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QTextDocument>
#include <QWindow>
#include <map>

#include "app/contrast.h"
#include "app/frmAbout.h"
#include "app/frmSplash.h"
#include "app/help_pages.h"
#include "app/lifecycle.h"
#include "app/window_place.h"
#include "client/frmClient.h"
#include "collect/frmCollect.h"
#include "common/fault.h"
#include "common/help_file.h"
#include "console/client_list.h"
#include "console/frmClientList.h"
#include "flow/frmRating.h"
#include "link/busy_guard.h"
#include "link/frmConnect.h"
#include "link/sampling.h"
#include "link/supervision.h"
#include "platform/qt/pictures.h"
#include "platform/qt/status_line.h"
#include "platform/qt/text_qt.h"
#include "platform/qt/twips.h"
#include "setup/frmSetup.h"
#include "setup/setup_operation.h"
#include "trace/frmSupport.h"
#include "trace/frmTrace.h"

namespace {

constexpr int WidthTwips = 13400;  // of a first start
constexpr int HeightTwips = 9500;
constexpr const char* PlaceSection = "Windows";
constexpr const char* PlaceKey = "Main";

QColor ToQt(Colour colour) {
    return {colour.Red, colour.Green, colour.Blue};
}

/// The picture as it stands on the selected row too, where the style would tint it until it is lost
/// in the highlight.
QIcon ListPicture(const QString& name) {
    const QIcon drawn = Picture(name);
    QIcon picture;
    for (const int side : {16, 20, 24, 32, 48, 64}) {
        const QPixmap pixels = drawn.pixmap(QSize(side, side), 1.0);
        picture.addPixmap(pixels, QIcon::Normal);
        picture.addPixmap(pixels, QIcon::Selected);
    }
    return picture;
}

const QIcon& ListIcon(std::uint8_t icon) {
    static const std::map<std::uint8_t, QIcon> Icons{
        {IconNoWindow, ListPicture(QStringLiteral("client-closed"))},
        {IconWindowOpen, ListPicture(QStringLiteral("client-open"))},
        {IconAddressed, ListPicture(QStringLiteral("client-active"))}};
    return Icons.at(icon);
}

/// What the picture of an entry says, for who cannot see it.
QString IconMeaning(std::uint8_t icon) {
    switch (icon) {
        case IconWindowOpen:
            return QStringLiteral("window open");
        case IconAddressed:
            return QStringLiteral("window open, radio addressed");
        default:
            return QStringLiteral("no window");
    }
}

/// Closes what stands modally over the windows, the innermost first. A dialog goes as it is:
/// whoever showed it unwinds, and nobody is asked anything.
void CloseDialogs() {
    QWidget* closed = nullptr;
    for (QWidget* modal = QApplication::activeModalWidget(); modal != nullptr && modal != closed;
         modal = QApplication::activeModalWidget()) {
        closed = modal;
        if (auto* dialog = qobject_cast<QDialog*>(modal)) {
            TrapFault([dialog] { dialog->done(QDialog::Rejected); });
        }
    }
}

void ColourText(QWidget& field, Colour text, Colour ground) {
    QPalette palette = field.palette();
    palette.setColor(QPalette::Text, ToQt(text));
    palette.setColor(QPalette::Base, ToQt(ground));
    field.setPalette(palette);
}

void ColourButton(QPushButton& button, bool highlighted) {
    constexpr Colour Highlight{240, 240, 0};
    constexpr Colour Black{0, 0, 0};
    if (!highlighted) {
        button.setPalette({});
        return;
    }
    QPalette palette = button.palette();
    palette.setColor(QPalette::Button, ToQt(Highlight));
    palette.setColor(QPalette::ButtonText, ToQt(Black));
    button.setPalette(palette);
}

}  // namespace

frmMain::frmMain(SharedState& state)
    : state_(state),
      contexts_(state, *this),
      clients_(contexts_.Clients(*this)),
      helpFile_(HelpFile(state.Outside.AppPath)),
      helpKey_([this](const std::vector<std::string>& names) { ShowHelpOn(names); }),
      entryForms_(state.Book, state.Boxes, *this),
      signalForms_(*this, state.Outside.Sound) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(::ToQt(ApplicationTitle()));
    setWindowIcon(Picture(QStringLiteral("orvia")));
    BuildTopPanel();
    BuildLeftPanel();
    BuildButtonBar();
    BuildArea();
    BuildFileMenu();
    BuildClientMenus();
    BuildForAllMenu();
    BuildDataMenu();
    BuildWindowMenu();
    BuildHelpMenu();
    BuildPopup();
    BuildTimers();
    MakeSchedule();
}

frmMain::~frmMain() = default;

void frmMain::Load(bool unattended) {
    frmSplash splash;
    splash.show();
    BeginStart(state_, *this);
    resize(PixelsOfTwips(WidthTwips), PixelsOfTwips(HeightTwips));
    TakePlace();
    Timer1_.start();
    AwaitSplash(state_.LinkRecord);
    splash.close();
    ReadCatalogues(state_);
    lblAddressBook_->clear();
    show();
    // In step from here on: what wakes the program for one tick serves the other.
    Timer1_.start();
    Timer2_.start();
    AwaitPlace();
    if (!unattended) {
        ShowConnect();
    }
    EndStart(state_, *this);
}

void frmMain::AwaitPlace() {
    constexpr std::int16_t MostTicks = 10;
    Link& link = state_.LinkRecord;
    link.WaitTicks = MostTicks;
    while (!windowHandle()->isExposed() && link.WaitTicks > 0 && link.ShuttingDown == False) {
        link.Events.WaitForMoreEvents();
    }
}

void frmMain::TakePlace() {
    const auto kept = PlaceOfText(state_.Outside.Store.Read(PlaceSection, PlaceKey).value_or(""));
    if (!kept) {
        return;
    }
    std::vector<DesktopBox> screens;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect area = screen->availableGeometry();
        screens.push_back({area.left(), area.top(), area.width(), area.height()});
    }
    const WindowPlace place =
        FitToScreens(*kept, screens, {PixelsOfTwips(WidthTwips), PixelsOfTwips(HeightTwips)});
    setGeometry(place.Box.Left, place.Box.Top, place.Box.Width, place.Box.Height);
    setWindowState(place.Maximized ? Qt::WindowMaximized : Qt::WindowNoState);
}

void frmMain::KeepPlace() {
    const QRect box = isMaximized() || isMinimized() ? normalGeometry() : geometry();
    state_.Outside.Store.Write(
        PlaceSection, PlaceKey,
        TextOfPlace({{box.left(), box.top(), box.width(), box.height()}, isMaximized()}));
}

void frmMain::SetPointer(Pointer pointer) {
    if (pointer == Pointer::Hourglass) {
        setCursor(Qt::WaitCursor);
    } else {
        unsetCursor();
    }
}

void frmMain::SetComPort(const std::string& text) {
    txtComPort_->setText(::ToQt(text));
}

void frmMain::SetServerState(const std::string& text, Colour colour) {
    txtServerState_->setText(::ToQt(text));
    ColourText(*txtServerState_, colour, GroundFor(colour));
}

void frmMain::SetSystemID(const std::string& text) {
    txtSystemID_->setText(::ToQt(text));
}

void frmMain::ShowLinkFields(bool linked) {
    if (linked == txtComPort_->isVisibleTo(this)) {
        return;
    }
    for (QWidget* field :
         std::initializer_list<QWidget*>{lblSystemID_, txtSystemID_, lblComPort_, txtComPort_}) {
        field->setVisible(linked);
    }
    cmdConnect_->setText(linked ? QStringLiteral("Disc&onnect") : QStringLiteral("C&onnect"));
}

void frmMain::SetCommandStates(const CommandStates& states) {
    if (states == statesShown_) {
        return;
    }
    for (QPushButton* button : operationButtons_) {
        button->setEnabled(states.Operations);
    }
    for (QAction* action : entryActions_) {
        action->setEnabled(states.BookEntries);
    }
    for (QAction* action : forAllActions_) {
        action->setEnabled(states.Operations);
    }
    mnuCollect_->setEnabled(states.Collection && state_.Filer);
    mnuAutoUpdateFACW_->setEnabled(states.SampleContinuously);
    mnuAutoUpdateFACW_->setChecked(states.AutoUpdateChecked);
    cmdSampleContinuously_->setEnabled(states.SampleContinuously);
    cmdSampleContinuously_->setText(QLatin1Char('&') + ::ToQt(states.SampleCaption));
    ColourButton(*cmdSampleContinuously_, states.SampleHighlighted);
    statesShown_ = states;
}

void frmMain::SetStatus(const std::string& text, bool failed) {
    lblStatus_->Tell(text, failed);
}

void frmMain::SetAddressBookName(const std::string& text) {
    lblAddressBook_->setText(::ToQt(text));
    const QString path = ::ToQt(state_.SettingsRecord.AddressBookPath);
    lblAddressBook_->setToolTip(path.isEmpty() ? path : Qt::convertFromPlainText(path));
}

void frmMain::ClearClients() {
    lvwClients_->clear();
}

void frmMain::AddClient(const std::string& name, std::uint8_t icon) {
    lvwClients_->addItem(::ToQt(name));
    SetClientIcon(lvwClients_->count(), icon);
}

void frmMain::SetClientIcon(int item, std::uint8_t icon) {
    if (QListWidgetItem* shown = lvwClients_->item(item - 1)) {
        shown->setIcon(ListIcon(icon));
        shown->setData(Qt::AccessibleDescriptionRole, IconMeaning(icon));
    }
}

int frmMain::ClientCount() const {
    return lvwClients_->count();
}

int frmMain::SelectedClient() const {
    // The current row has the focus of the keys and is not always highlighted.
    const QList<QListWidgetItem*> selected = lvwClients_->selectedItems();
    return selected.isEmpty() ? 0 : lvwClients_->row(selected.front()) + 1;
}

std::shared_ptr<ClientWindow> frmMain::NewClientWindow() {
    std::shared_ptr<frmClient> window = frmClient::Make(clients_);
    area_->addSubWindow(window.get());
    window->show();
    return window;
}

std::shared_ptr<ClientWindow> frmMain::NewClientWindowBehind() {
    const QPointer<QMdiSubWindow> active = area_->currentSubWindow();
    const QPointer<QWidget> focus = QApplication::focusWidget();
    std::shared_ptr<ClientWindow> window = NewClientWindow();
    if (!active.isNull()) {
        area_->setActiveSubWindow(active);
    }
    if (!focus.isNull()) {
        focus->setFocus();
    }
    return window;
}

void frmMain::CloseAllChildForms() {
    CloseDialogs();
    CloseDataWindows();
    if (trace_ != nullptr) {
        trace_->Unload();
    }
    if (support_ != nullptr) {
        support_->Unload();
    }
    if (collect_ != nullptr) {
        collect_->Unload();
    }
    const QList<QMdiSubWindow*> opened = area_->subWindowList(QMdiArea::CreationOrder);
    for (auto window = opened.rbegin(); window != opened.rend(); ++window) {
        TrapFault([this, window] { UnloadChild(**window); });
    }
}

void frmMain::UnloadChild(QMdiSubWindow& child) {
    if (auto* client = dynamic_cast<ClientWindow*>(&child)) {
        client->Unload();
    } else {
        log_->Unload();
    }
}

void frmMain::ShowClientPopup(const std::string& sampleCaption) {
    mnuClientSampleContinuously_->setText(::ToQt(sampleCaption));
    mnuClientPopup_->popup(QCursor::pos());
}

void frmMain::closeEvent(QCloseEvent* event) {
    // In the middle of an exchange the close would be refused.
    if (state_.LinkRecord.CommBusy != False && schedule_ &&
        schedule_->DeferUrgently([this] { close(); })) {
        event->ignore();
        return;
    }
    const WindowSize size{TwipsOfPixels(width()), TwipsOfPixels(height())};
    const bool closes =
        state_.LinkRecord.ShuttingDown != False ||
        (KeepsFlowTable() && QueryUnload(state_, *this, size, [this] { CloseAllChildForms(); }));
    event->setAccepted(closes);
    if (closes) {
        TrapFault([this] { KeepPlace(); });
        QApplication::quit();
    }
}

void frmMain::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && area_ != nullptr) {
        ColourArea();
    }
}

bool frmMain::KeepsFlowTable() {
    // While an exchange runs the close is refused anyway, without a word.
    return rating_ == nullptr || state_.LinkRecord.CommBusy != False || rating_->MayClose();
}

void frmMain::ShowTrace() {
    if (trace_ == nullptr) {
        trace_ = new frmTrace(state_.Recorder, state_.Book, state_.Outside, this);
    }
    trace_->ShowOrRaise();
}

void frmMain::ShowSupport() {
    if (support_ == nullptr) {
        support_ = new frmSupport([this] { return Support(); }, state_.Outside, this);
    }
    support_->ShowOrRaise();
}

SupportSource frmMain::Support() const {
    return {.Version = VersionText(),
            .System = state_.Outside.SystemText,
            .Made = state_.Outside.Clock.Now(),
            .SettingsRecord = state_.SettingsRecord,
            .Book = state_.Book,
            .Recorder = state_.Recorder,
            .Log = log_->Text()};
}

void frmMain::ShowHelpOn(const std::vector<std::string>& names) {
    if (!helpFile_.empty()) {
        state_.Outside.Help.Open(HelpTopic(helpFile_, HelpPageAt(names)));
    }
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    const bool ofList = watched == lvwClients_ || watched == lvwClients_->viewport();
    if (ofList && TakesListEvent(*event)) {
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

bool frmMain::TakesListEvent(const QEvent& event) {
    switch (event.type()) {
        case QEvent::KeyPress: {
            const int key = static_cast<const QKeyEvent&>(event).key();
            if (key != Qt::Key_Return && key != Qt::Key_Enter) {
                return false;
            }
            ViewClient();
            return true;
        }
        case QEvent::ContextMenu:
            if (static_cast<const QContextMenuEvent&>(event).reason() ==
                QContextMenuEvent::Keyboard) {
                mnuClientS_->popup(lvwClients_->mapToGlobal(QPoint(0, 0)));
            }
            return true;
        default:
            return false;
    }
}

void frmMain::ShowConnect() {
    frmConnect dialog(contexts_.Radio(), state_.SettingsRecord, state_.Outside, this);
    dialog.exec();
}

void frmMain::ShowSetup(const OperationContext& context) {
    Setup(context, [this](const std::function<bool()>& reselect) {
        const auto showAbout = [](QWidget& above) { frmAbout(&above).exec(); };
        frmSetup(contexts_.Setup(), {reselect, showAbout}, this).ShowModally();
    });
}

void frmMain::ToggleConnection() {
    switch (comm::ToggleConnection(contexts_.Toggling())) {
        case comm::Toggle::Nothing:
            return;
        case comm::Toggle::Postponed:
            togglePostponed_ = true;
            return;
        case comm::Toggle::Connect:
            break;
    }
    const BusyGuard busy(state_.OperationsRecord.OperationBusy);
    const std::string before = state_.SettingsRecord.AddressBookPath;
    ShowConnect();
    TakeBookOfConnectDialog(contexts_.Book(), before);
}

void frmMain::Supervise() {
    comm::SuperviseTick(contexts_.Supervision());
    if (state_.Filer) {
        state_.Filer->Tick();
    }
    FollowCollection();
    FollowSharing();
    if (togglePostponed_ && state_.SamplingRecord.StepRuns == False) {
        togglePostponed_ = false;
        QMetaObject::invokeMethod(
            this, [this] { ToggleConnection(); }, Qt::QueuedConnection);
    }
}

void frmMain::ViewClient() {
    OpenOrActivateClient(state_.Book, state_.Windows, *this);
}

void frmMain::ListWindows() {
    mnuWindow_->clear();
    const QMdiSubWindow* current = area_->currentSubWindow();
    for (QMdiSubWindow* window : area_->subWindowList()) {
        const QString title = EscapedAmpersands(FromQt(window->windowTitle()));
        QAction* item = mnuWindow_->addAction(title, this, [this, window] {
            window->isMinimized() ? window->showNormal() : window->show();
            area_->setActiveSubWindow(window);
        });
        item->setCheckable(true);
        item->setChecked(window == current);
    }
    if (mnuWindow_->isEmpty()) {
        mnuWindow_->addAction(QStringLiteral("No client window is open"))->setEnabled(false);
    }
}
