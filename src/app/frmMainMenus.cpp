// The menus of the main window on the book's entries and on all client windows.
#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include "app/frmMain.h"
#include "console/frmClientList.h"

void frmMain::BuildClientMenus() {
    mnuClientS_ = new QMenu(QStringLiteral("ClientsPopUp"), this);
    mnuClientS_->setObjectName(QStringLiteral("mnuClientS"));
    AddItem(*mnuClientS_, QStringLiteral("mnuAddClient"), QStringLiteral("Add New Client Radio"),
            [this] { AddClientRadio(Entries()); });
    AddEntryRow(*mnuClientS_, QStringLiteral("mnuEditClient"),
                QStringLiteral("Edit Client Settings"), [this] { EditClientRadio(Entries()); });
    AddEntryRow(*mnuClientS_, QStringLiteral("mnuViewClient"),
                QStringLiteral("View Client Logger "), [this] { ViewClient(); });
    AddEntryRow(*mnuClientS_, QStringLiteral("mnuDeleteClient"),
                QStringLiteral("Delete Client Radio"), [this] { DeleteClientRadio(Entries()); });

    QMenu& client = *menuBar()->addMenu(QStringLiteral("  &Client"));
    client.setObjectName(QStringLiteral("mnuClient"));
    AddItem(client, QStringLiteral("mnuAddClient2"), QStringLiteral("Add New Client Radio"),
            [this] { AddClientRadio(Entries()); });
    AddEntryRow(client, QStringLiteral("mnuEditClient2"),
                QStringLiteral("Edit Client Radio From List"),
                [this] { WithChosenClient([this] { EditClientRadio(Entries()); }); });
    AddEntryRow(client, QStringLiteral("mnuViewClient2"),
                QStringLiteral("View Client Logger From List"),
                [this] { WithChosenClient([this] { ViewClient(); }); });
    AddEntryRow(client, QStringLiteral("mnuDeleteClient2"),
                QStringLiteral("Delete Client Radio From List"),
                [this] { WithChosenClient([this] { DeleteClientRadio(Entries()); }); });
}

void frmMain::AddEntryRow(QMenu& menu, const QString& name, const QString& text,
                          std::function<void()> action) {
    QAction* row = AddItem(menu, name, text, std::move(action));
    row->setEnabled(false);
    entryActions_.push_back(row);
}

void frmMain::WithChosenClient(const std::function<void()>& action) {
    if (ChooseClientFromList(Entries())) {
        action();
    }
}

void frmMain::BuildForAllMenu() {
    QMenu& all = *menuBar()->addMenu(QStringLiteral("  For &All...  "));
    all.setObjectName(QStringLiteral("cmdForAll"));
    const auto row = [this, &all](const char* name, const char* text, ForAllRow run) {
        QAction* item = AddItem(all, QLatin1String(name), QLatin1String(text),
                                [this, run] { OrLater([this, run] { run(Walking()); }); });
        item->setEnabled(false);
        forAllActions_.push_back(item);
    };
    row("mnuGetSettingsFACW", "Get Sample for All Client Windows", GetSampleForAll);
    mnuAutoUpdateFACW_ = AddItem(all, QStringLiteral("mnuAutoUpdateFACW"),
                                 QStringLiteral("Update All Client Windows Every Minute"),
                                 [this] { ToggleAutoUpdate(); });
    mnuAutoUpdateFACW_->setCheckable(true);
    mnuAutoUpdateFACW_->setEnabled(false);
    row("mnuClearHistoryFACW", "Clear History for All Client Windows", ClearHistoryForAll);
    row("mnuSyncFACW", "Sync Time for All Client Windows", SyncTimeForAll);
    row("mnuStartupFACW", "Restart Sampling for All Client Windows", RestartSamplingForAll);
}

void frmMain::BuildDataMenu() {
    QMenu& making = *menuBar()->addMenu(QStringLiteral("&Data"));
    making.setObjectName(QStringLiteral("mnuData"));
    QAction* archive = AddItem(making, QStringLiteral("mnuArchive"), QStringLiteral("&Archive..."),
                               [this] { ShowArchive(); });
    archive->setEnabled(state_.Outside.Archive != nullptr);
    AddItem(making, QStringLiteral("mnuNewFlowTable"), QStringLiteral("&New Flow Table..."),
            [this] { ShowRating(); });
    AddItem(making, QStringLiteral("mnuLivePlot"), QStringLiteral("&Live Plot"),
            [this] { ShowLivePlot(); });
    BuildCollectRows(making);
    AddItem(making, QStringLiteral("mnuArchiveSettings"), QStringLiteral("Archive &Settings..."),
            [this] { ShowArchiveSettings(); })
        ->setEnabled(state_.Outside.Archive != nullptr && state_.Outside.Shared != nullptr);
}

void frmMain::BuildTraceRows(QMenu& help) {
    AddItem(help, QStringLiteral("mnuTrace"), QStringLiteral("&Trace of the Link..."),
            [this] { ShowTrace(); });
    AddItem(help, QStringLiteral("mnuSupport"), QStringLiteral("&Save Report for Support..."),
            [this] { ShowSupport(); });
}

void frmMain::ToggleAutoUpdate() {
    // The mark shows the mode, and not that the row was chosen.
    mnuAutoUpdateFACW_->setChecked(statesShown_.AutoUpdateChecked);
    OrLater([this] { ::ToggleAutoUpdate(Walking()); });
}

EntryContext frmMain::Entries() {
    return contexts_.Entries(*lvwClients_, entryForms_);
}
