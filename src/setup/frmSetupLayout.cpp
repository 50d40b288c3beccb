// How the set-up dialog is put together; what it does is in frmSetup.cpp.
#include <QAction>
#include <QBoxLayout>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QTabBar>

#include "common/help_file.h"
#include "platform/qt/focus_guard.h"
#include "platform/qt/status_line.h"
#include "setup/calibration.h"
#include "setup/frmCalibrate.h"
#include "setup/frmSetup.h"
#include "setup/frmSetupPages.h"
#include "setup/frmSetupParts.h"
#include "setup/setup_filing.h"
#include "setup/setup_flow_page.h"
#include "setup/setup_form_state.h"
#include "setup/setup_programming.h"

using namespace setup_parts;

void frmSetup::BuildTabs() {
    struct Tab {
        const char* Caption;
        const char* Key;
    };
    static constexpr std::array<Tab, 4> Tabs{{{"Analog Channels", "Analog"},
                                              {"Digital Channels", "Digital"},
                                              {"General", "General"},
                                              {"Flow Calculation ", "Flow"}}};
    TabStrip_ = new QTabBar(this);
    TabStrip_->setObjectName(Named("TabStrip"));
    TabStrip_->setAccessibleName(QStringLiteral("Pages of the setup"));
    for (std::size_t i = 0; i < Tabs.size(); ++i) {
        TabStrip_->addTab(QString::fromLatin1(Tabs[i].Caption));
        TabStrip_->setTabData(static_cast<int>(i), QString::fromLatin1(Tabs[i].Key));
    }
    if (records_.global.NumAnalogChannels != FlowAnalogChannels) {
        TabStrip_->removeTab(FlowFrame);
    }
    TabStrip_->setCurrentIndex(GeneralFrame);
    scroll_ = new QScrollArea(this);
    pages_ = new frmSetupPages(records_, scroll_);
    scroll_->setWidget(pages_);
    scroll_->setWidgetResizable(true);
    scroll_->setFocusPolicy(Qt::NoFocus);
    connect(TabStrip_, &QTabBar::currentChanged, this, [this](int n) { pages_->SelectFrame(n); });
    auto* rows = new QVBoxLayout(this);
    rows->setSpacing(0);
    rows->addWidget(TabStrip_);
    rows->addWidget(scroll_, 1);
}

void frmSetup::BuildButtons() {
    const auto button = [this](const char* name, const char* caption) {
        QPushButton* made = NamedButton(this, Named(name), QString::fromLatin1(caption));
        made->setMinimumWidth(made->sizeHint().width() + made->fontMetrics().height());
        return made;
    };
    cmdOK_ = button("cmdOK", "Program Settings");
    Tell(*cmdOK_, "Write setup values to logger flash memory");
    cmdCancel_ = button("cmdCancel", "Back to Main Window");
    connect(cmdOK_, &QPushButton::clicked, this, [this] { ProgramSettings(Context()); });
    connect(cmdCancel_, &QPushButton::clicked, this, [this] { close(); });
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, fontMetrics().height() / 2, 0, 0);
    row->setSpacing(fontMetrics().height() / 2);
    // In the room beside the buttons, of which it asks nothing.
    lblStatus_ = new StatusLine(this, Named("lblStatus"));
    row->addWidget(lblStatus_, 1);
    row->addWidget(cmdOK_);
    row->addWidget(cmdCancel_);
    static_cast<QBoxLayout*>(layout())->addLayout(row);
}

QAction* frmSetup::AddItem(QMenu& menu, const char* name, const char* caption,
                           std::function<void()> action) {
    QAction* item = menu.addAction(QString::fromLatin1(caption), this, std::move(action));
    item->setObjectName(Named(name));
    return item;
}

void frmSetup::BuildMenus() {
    menus_ = new QMenuBar(this);
    menus_->setNativeMenuBar(false);
    layout()->setMenuBar(menus_);
    const auto menu = [this](const char* name, const char* caption) {
        QMenu* made = menus_->addMenu(QString::fromLatin1(caption));
        made->setObjectName(Named(name));
        return made;
    };
    BuildFileMenu(*menu("File", "&File"));
    QMenu& action = *menu("mnuAction", "&Action");
    AddItem(action, "mnuDownload", "&Program Settings", [this] {
        ProgramSettings(Context());
    })->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    AddItem(action, "mnuInitialize", "&Initialize to Default Values",
            [this] { InitializeSetup(Context()); });
    QMenu& help = *menu("mnuHelp", "&Help");
    AddItem(help, "mnuLaunchHelp", "&Help", [this] {
        const std::string file = HelpFile(records_.outside.AppPath);
        if (!file.empty()) {
            records_.outside.Help.Open(file);
        }
    });
    AddItem(help, "mnuAbout", "&About", [this] { services_.ShowAbout(*this); });
}

void frmSetup::BuildFileMenu(QMenu& menu) {
    AddItem(menu, "mnuSave", "&Save Setup File", [this] {
        static_cast<void>(SaveSetupFile(Context()));
    })->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    AddItem(menu, "mnuLoad", "&Load Setup File", [this] {
        LoadSetupFile(Context());
    })->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    menu.addSeparator()->setObjectName(Named("mnuSep1"));
    for (int place = 0; place < static_cast<int>(mnuHist_.size()); ++place) {
        QAction* item =
            AddItem(menu, "mnuHist", "", [this, place] { LoadRecentFile(Context(), place); });
        item->setObjectName(Indexed("mnuHist", place));
        item->setText(QStringLiteral("%1.").arg(place + 1));
        mnuHist_.at(static_cast<std::size_t>(place)) = item;
    }
    menu.addSeparator()->setObjectName(Named("mnuSep2"));
    AddItem(menu, "mnuExit", "E&xit Back to Main Window", [this] { close(); });
}

void frmSetup::BuildShortcuts() {
    const auto turn = [this](QKeyCombination keys, int step) {
        auto* shortcut = new QShortcut(QKeySequence(keys), this);
        connect(shortcut, &QShortcut::activated, this, [this, step] { TurnPage(step); });
    };
    turn(Qt::CTRL | Qt::Key_PageUp, -1);
    turn(Qt::CTRL | Qt::Key_PageDown, 1);
}

void frmSetup::ConnectPages() {
    for (std::size_t i = 0; i < pages_->Calibrate().size(); ++i) {
        connect(pages_->Calibrate()[i], &QPushButton::clicked, this, [this, i] {
            Calibrate(Context(), static_cast<int>(i),
                      [this] { return std::make_unique<frmCalibrate>(records_, this); });
        });
    }
    connect(pages_->Browse(), &QPushButton::clicked, this, [this] { BrowseTable(Context()); });
    for (QRadioButton* option : pages_->FlowOptions()) {
        connect(option, &QRadioButton::toggled, this, [this](bool on) {
            if (on && !showing_) {
                UpdateFlowOptions(Context());
            }
        });
    }
    // No button is the default one: Enter in a field programs nothing.
    for (QPushButton* button : findChildren<QPushButton*>()) {
        button->setAutoDefault(false);
    }
}

void frmSetup::GuardFields() {
    guard_ = new FocusGuard(this);
    for (const frmSetupFields::Field& field : pages_->Fields().Validated()) {
        if (field.Check) {
            guard_->AddField(field.Widget, [this, &field] { return Validate(field); });
        }
    }
    guard_->LeavesWithoutValidating(cmdCancel_);
}

void frmSetup::FitScreen() {
    // As large as the largest page needs; pages scroll on a screen that is smaller.
    const QSize chrome = sizeHint() - scroll_->sizeHint();
    const QSize border(2 * scroll_->frameWidth(), 2 * scroll_->frameWidth());
    const QSize wanted = pages_->minimumSizeHint().expandedTo(pages_->sizeHint()) + border + chrome;
    resize(wanted.boundedTo(screen()->availableSize()));
}
