// The main window collects the history of many loggers.
#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QMenu>

#include "app/frmMain.h"
#include "collect/collect_settings.h"
#include "collect/collect_walk.h"
#include "collect/digest_settings.h"
#include "collect/frmCollect.h"

void frmMain::BuildCollectRows(QMenu& menu) {
    mnuCollect_ = AddItem(menu, QStringLiteral("mnuCollect"),
                          QStringLiteral("&Collect History from All Client Windows"),
                          [this] { CollectFromAll(); });
    mnuCollect_->setEnabled(false);
    QMenu& how = *menu.addMenu(QStringLiteral("Collect &From"));
    how.setObjectName(QStringLiteral("mnuCollectFrom"));
    how.setEnabled(state_.Outside.Archive != nullptr);
    const CollectChoice kept = ReadCollectChoice(state_.Outside.Store);
    auto* scope = new QActionGroup(this);
    const auto row = [&](const char* name, const char* text, bool checked) {
        QAction* item =
            AddItem(how, QLatin1String(name), QLatin1String(text), [this] { KeepChoice(); });
        item->setCheckable(true);
        item->setChecked(checked);
        return item;
    };
    const bool book = kept.Scope == CollectScope::WholeBook;
    scope->addAction(row("mnuCollectWindows", "&Windows", !book));
    mnuCollectBook_ = row("mnuCollectBook", "Whole &Book", book);
    scope->addAction(mnuCollectBook_);
    how.addSeparator();
    mnuCollectSync_ = row("mnuCollectSync", "and &Sync Time", kept.SyncTime);
    AddItem(menu, QStringLiteral("mnuCollectRegularly"), QStringLiteral("Collect &Regularly..."),
            [this] { ShowCollect(); })
        ->setEnabled(state_.Outside.Archive != nullptr);
}

void frmMain::KeepChoice() {
    KeepCollectChoice(
        {.Scope = mnuCollectBook_->isChecked() ? CollectScope::WholeBook : CollectScope::Windows,
         .SyncTime = mnuCollectSync_->isChecked()},
        state_.Outside.Store);
}

void frmMain::CollectFromAll() {
    if (state_.Filer) {
        OrLater([this] {
            ::CollectFromAll(contexts_.Collection(*log_), ReadCollectChoice(state_.Outside.Store),
                             ReadLimits(state_.Outside.Store), *log_, state_.Collecting);
        });
    }
}

void frmMain::FollowCollection() {
    state_.Collecting.Tick();
    state_.Late.Tick();
    const std::string text = state_.Collecting.Text();
    if (!text.empty()) {
        log_->SetFoot(text);
    }
    if (schedule_) {
        schedule_->Tick();
    }
}

// ----- rounds that come by themselves

void frmMain::MakeSchedule() {
    if (!state_.Filer) {
        return;
    }
    schedule_ = std::make_unique<CollectSchedule>(ScheduleContext{
        .collect = contexts_.Collection(*log_), .store = state_.Outside.Store, .desk = *this});
    schedule_->Limits = ReadLimits(state_.Outside.Store);
}

void frmMain::ShowCollect() {
    if (collect_ == nullptr) {
        collect_ = new frmCollect(
            {.schedule = *schedule_, .book = state_.Book, .outside = state_.Outside}, this);
    }
    collect_->ShowOrRaise();
}

void frmMain::OrLater(std::function<void()> click) {
    if (!schedule_ || !schedule_->Defer(click)) {
        click();
    }
}

void frmMain::QueueStep() {
    QMetaObject::invokeMethod(
        this, [this] { schedule_->Step(); }, Qt::QueuedConnection);
}

bool frmMain::DialogStands() {
    return QApplication::activeModalWidget() != nullptr ||
           QApplication::activePopupWidget() != nullptr;
}

std::string frmMain::RoundEnded(const std::string& digest, const std::string& when) {
    return Deliver(digest, when, state_.Outside);
}
