// How the main window is put together; what it does is in frmMain.cpp.
#include <QBoxLayout>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>

#include "app/frmAbout.h"
#include "app/frmMain.h"
#include "console/frmClientList.h"
#include "console/logger_orders.h"
#include "link/sampling.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/status_line.h"
#include "platform/qt/text_qt.h"
#include "platform/qt/twips.h"

namespace {

/// A field that only shows: readable and selectable, but no stop of the tab key.
QLineEdit* ShowingField(QWidget* parent, const QString& name, const QString& meaning,
                        int characters) {
    auto* field = new QLineEdit(parent);
    field->setObjectName(name);
    field->setReadOnly(true);
    field->setFocusPolicy(Qt::ClickFocus);
    field->setAccessibleName(meaning);
    field->setFixedWidth(field->fontMetrics().averageCharWidth() * characters +
                         2 * field->fontMetrics().height());
    return field;
}

QLabel* Caption(QWidget* parent, const QString& name, const QString& text) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QWidget* Panel(QWidget* parent, const QString& name) {
    auto* panel = new QWidget(parent);
    panel->setObjectName(name);
    return panel;
}

}  // namespace

void frmMain::BuildTopPanel() {
    pctTop_ = Panel(this, QStringLiteral("pctTop"));
    txtServerState_ = ShowingField(pctTop_, QStringLiteral("txtServerState"),
                                   QStringLiteral("Server Radio Status"), 24);
    // Its ground is a sign of the state, not a field to write in.
    txtServerState_->setFrame(false);
    QFont strong = txtServerState_->font();
    strong.setBold(true);
    txtServerState_->setFont(strong);
    txtServerState_->setAlignment(Qt::AlignCenter);
    lblSystemID_ = Caption(pctTop_, QStringLiteral("lblSystemID"), QStringLiteral("System ID:"));
    txtSystemID_ =
        ShowingField(pctTop_, QStringLiteral("txtSystemID"), QStringLiteral("System ID"), 4);
    lblComPort_ = Caption(pctTop_, QStringLiteral("lblComPort"), QStringLiteral("Com Port:"));
    txtComPort_ =
        ShowingField(pctTop_, QStringLiteral("txtComPort"), QStringLiteral("Com Port"), 7);
    cmdConnect_ = NamedButton(pctTop_, QStringLiteral("cmdConnect"), QStringLiteral("C&onnect"));
    connect(cmdConnect_, &QPushButton::clicked, this,
            [this] { OrLater([this] { ToggleConnection(); }); });

    auto* row = new QHBoxLayout(pctTop_);
    row->addWidget(
        Caption(pctTop_, QStringLiteral("Label3"), QStringLiteral("Server Radio Status")));
    for (QWidget* widget : std::initializer_list<QWidget*>{
             txtServerState_, lblSystemID_, txtSystemID_, lblComPort_, txtComPort_}) {
        row->addWidget(widget);
    }
    row->addStretch();
    row->addWidget(cmdConnect_);
}

void frmMain::BuildLeftPanel() {
    constexpr int LowestListTwips = 1300;
    pctLeft_ = Panel(this, QStringLiteral("pctLeft"));
    lblAddressBook_ = Caption(pctLeft_, QStringLiteral("lblAddressBook"), QString());
    lblAddressBook_->setAccessibleDescription(QStringLiteral("Name of the address book in use"));
    lblAddressBook_->setWordWrap(true);
    lvwClients_ = new ClientListWidget(
        pctLeft_,
        {[this] { ViewClient(); }, [this] { mnuClientS_->popup(QCursor::pos()); },
         [this](const auto& text, int y) { DropOnList(contexts_.Drops(*lvwClients_), text, y); }});
    lvwClients_->setMinimumHeight(PixelsOfTwips(LowestListTwips));
    lvwClients_->installEventFilter(this);
    lvwClients_->viewport()->installEventFilter(this);
    QLabel* heading = Caption(pctLeft_, QStringLiteral("Label2"), QStringLiteral("Client Radios"));
    heading->setBuddy(lvwClients_);

    auto* column = new QVBoxLayout(pctLeft_);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(Caption(pctLeft_, QStringLiteral("Label1"), QStringLiteral("Address Book:")));
    column->addWidget(lblAddressBook_);
    column->addWidget(heading);
    column->addWidget(lvwClients_, 1);
}

QPushButton* frmMain::AddButton(const QString& name, const QString& text,
                                const Operation& operation) {
    QPushButton* button = NamedButton(Picture1_, name, text);
    button->setEnabled(false);
    connect(button, &QPushButton::clicked, this,
            [this, operation] { OrLater([this, operation] { operation(Operating()); }); });
    Picture1_->layout()->addWidget(button);
    return button;
}

void frmMain::BuildButtonBar() {
    Picture1_ = Panel(this, QStringLiteral("Picture1"));
    auto* column = new QVBoxLayout(Picture1_);
    column->setContentsMargins(0, 0, 0, 0);
    operationButtons_ = {
        AddButton(QStringLiteral("cmdGetSettings"), QStringLiteral("&Get Sample"), GetSample)};
    cmdSampleContinuously_ = AddButton(QStringLiteral("cmdSampleContinuously"),
                                       QStringLiteral("&Sample Continuously"), SampleContinuously);
    operationButtons_.push_back(AddButton(
        QStringLiteral("cmdSignalLevel"), QStringLiteral("Signal &Level"),
        [this](const OperationContext& context) { ShowSignalLevel(context, signalForms_); }));
    operationButtons_.push_back(
        AddButton(QStringLiteral("cmdGetHistory"), QStringLiteral("Get H&istory"),
                  [this](const OperationContext& context) { UploadHistory(context); }));
    operationButtons_.push_back(AddButton(QStringLiteral("cmdClearHistory"),
                                          QStringLiteral("Clear Histor&y"), ClearHistory));
    operationButtons_.push_back(
        AddButton(QStringLiteral("cmdSyncTime"), QStringLiteral("Sync &Time"), SyncTime));
    operationButtons_.push_back(
        AddButton(QStringLiteral("cmdSetup"), QStringLiteral("Set&up"),
                  [this](const OperationContext& context) { ShowSetup(context); }));
}

void frmMain::ColourArea() {
    constexpr int Darker = 120;  // per cent, of the window's own ground
    area_->setBackground(palette().color(QPalette::Window).darker(Darker));
}

void frmMain::BuildArea() {
    area_ = new QMdiArea(this);
    area_->setObjectName(QStringLiteral("MDIArea"));
    ColourArea();
    area_->setActivationOrder(QMdiArea::CreationOrder);
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);

    // Narrow enough for a window of bars beside it at the size that the console starts with.
    constexpr int LeftCharacters = 28;
    for (QWidget* panel : {pctLeft_, Picture1_}) {
        panel->setFixedWidth(fontMetrics().averageCharWidth() * LeftCharacters);
    }
    auto* left = new QVBoxLayout;
    left->addWidget(pctLeft_, 1);
    left->addWidget(Picture1_);
    auto* body = new QHBoxLayout;
    body->addLayout(left);
    body->addWidget(area_, 1);
    auto* centre = new QWidget(this);
    auto* rows = new QVBoxLayout(centre);
    rows->addWidget(pctTop_);
    rows->addLayout(body, 1);
    // In the place of the margin, so that little of the windows' area is lost to it.
    lblStatus_ = new StatusLine(centre, QStringLiteral("lblStatus"));
    rows->addWidget(lblStatus_);
    QMargins around = rows->contentsMargins();
    around.setBottom(rows->spacing() / 2);
    rows->setContentsMargins(around);
    pctTop_->layout()->setContentsMargins(0, 0, 0, 0);
    setCentralWidget(centre);
    log_ = std::make_unique<WalkLogForm>(*this, *area_, *pctLeft_);
    setTabOrder(lvwClients_, operationButtons_.front());
    setTabOrder(operationButtons_.back(), cmdConnect_);
}

QAction* frmMain::AddItem(QMenu& menu, const QString& name, const QString& text,
                          std::function<void()> action) {
    QAction* item = menu.addAction(text, this, std::move(action));
    item->setObjectName(name);
    return item;
}

void frmMain::BuildFileMenu() {
    QMenu& file = *menuBar()->addMenu(QStringLiteral("&File"));
    file.setObjectName(QStringLiteral("mnuFile"));
    AddItem(file, QStringLiteral("mnuLoadAddressbook"), QStringLiteral("Load Address Book"),
            [this] { OrLater([this] { LoadOtherBook(contexts_.Book()); }); });
    AddItem(file, QStringLiteral("mnuNewAddressBook"), QStringLiteral("New Blank Address Book"),
            [this] { OrLater([this] { CreateBlankBook(contexts_.Book()); }); });
    file.addSeparator();
    AddItem(file, QStringLiteral("mnuExit"), QStringLiteral("E&xit"), [this] { close(); });
}

void frmMain::BuildWindowMenu() {
    mnuWindow_ = menuBar()->addMenu(QStringLiteral("&Window"));
    mnuWindow_->setObjectName(QStringLiteral("mnuWindow"));
    connect(mnuWindow_, &QMenu::aboutToShow, this, [this] { ListWindows(); });
}

void frmMain::BuildHelpMenu() {
    QMenu& help = *menuBar()->addMenu(QStringLiteral(" &Help"));
    help.setObjectName(QStringLiteral("mnuHelp"));
    AddItem(help, QStringLiteral("mnuLaunchHelp"), QStringLiteral("&Help"), [this] {
        if (!helpFile_.empty()) {
            state_.Outside.Help.Open(helpFile_);
        }
    });
    AddItem(help, QStringLiteral("mnuAbout"), QStringLiteral("&About"),
            [this] { frmAbout(this).exec(); });
    BuildTraceRows(help);
}

void frmMain::BuildPopup() {
    mnuClientPopup_ = new QMenu(this);
    mnuClientPopup_->setObjectName(QStringLiteral("mnuClientPopup"));
    const auto row = [this](const char* name, const char* text, const Operation& operation) {
        return AddItem(
            *mnuClientPopup_, QLatin1String(name), QLatin1String(text),
            [this, operation] { OrLater([this, operation] { operation(Operating()); }); });
    };
    row("mnuClientGetSettings", "Get Sample", GetSample);
    mnuClientSampleContinuously_ =
        row("mnuClientSampleContinuously", "Sample Continuously", SampleContinuously);
    row("mnuClientSignalLevel", "Signal Level",
        [this](const OperationContext& context) { ShowSignalLevel(context, signalForms_); });
    row("mnuClientGetHistory", "Get History",
        [this](const OperationContext& context) { UploadHistory(context); });
    row("mnuClientClearHistory", "Clear History", ClearHistory);
    row("mnuClientSyncTime", "Sync Time", SyncTime);
    row("mnuClientSetup", "Setup", [this](const OperationContext& context) { ShowSetup(context); });
    row("mnuClientFirmwareVersion", "Firmware Version", ShowFirmwareVersion);
    row("mnuClientResetPulseAccs", "Reset Pulse Accumulators", ResetPulseAccumulators);
}

void frmMain::BuildTimers() {
    for (QTimer* timer : {&Timer1_, &Timer2_}) {
        timer->setTimerType(Qt::PreciseTimer);
        timer->setInterval(state_.Outside.TickMilliseconds);
    }
    Timer1_.setObjectName(QStringLiteral("Timer1"));
    Timer2_.setObjectName(QStringLiteral("Timer2"));
    connect(&Timer1_, &QTimer::timeout, this, [this] { Supervise(); });
    connect(&Timer2_, &QTimer::timeout, this, [this] { comm::SampleTick(contexts_.Machines()); });
}
