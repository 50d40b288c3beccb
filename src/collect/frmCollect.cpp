#include "collect/frmCollect.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QTimeEdit>
#include <algorithm>
#include <exception>

#include "collect/collect_words.h"
#include "collect/plan_settings.h"
#include "common/mac_text.h"
#include "common/number_text.h"
#include "console/entry_texts.h"
#include "platform/qt/text_qt.h"

namespace {

constexpr int MinutesPerHour = 60;
/// Rounds that can be looked at.
constexpr int MostRounds = 60;

/// A round as the list names it: when it began, as its log tells, and how it went.
std::string NameOfRound(const ArchiveRound& round) {
    constexpr std::size_t SizeOfMoment = 19;
    return round.Log.substr(0, SizeOfMoment) + ", " + IntegerToText(round.Done) + " of " +
           IntegerToText(round.Loggers) + " loggers done" +
           (round.End ? "" : ", not brought to its end");
}

/// Shows a text, staying at its end if that was in sight.
void ShowText(QPlainTextEdit& field, const std::string& text) {
    const QString shown = ToQt(text);
    if (field.toPlainText() == shown) {
        return;
    }
    QScrollBar* bar = field.verticalScrollBar();
    const bool atEnd = bar->value() == bar->maximum();
    const int before = bar->value();
    field.setPlainText(shown);
    bar->setValue(atEnd ? bar->maximum() : before);
}

}  // namespace

// ----- opening and closing

void frmCollect::ShowOrRaise() {
    if (unloaded_) {
        return;
    }
    if (!isVisible()) {
        ShowKept();
        listed_ = false;
    }
    show();
    raise();
    activateWindow();
    Refresh();
    refresh_.start();
}

void frmCollect::Unload() {
    unloaded_ = true;
    refresh_.stop();
    hide();
}

void frmCollect::reject() {
    close();
}

void frmCollect::closeEvent(QCloseEvent* event) {
    if (!unloaded_ && !MayClose()) {
        event->ignore();
        return;
    }
    refresh_.stop();
    event->accept();
}

bool frmCollect::MayClose() {
    if (!IsChanged()) {
        return true;
    }
    const BoxAnswer answer =
        work_.outside.Boxes.Show({.Text = "Do you want to save what you changed?",
                                  .Title = "Collect Regularly",
                                  .Icon = BoxIcon::Question,
                                  .Buttons = BoxButtons::YesNoCancel});
    if (unloaded_) {
        return true;
    }
    if (answer == BoxAnswer::Yes) {
        Save();
    }
    return answer != BoxAnswer::Cancel;
}

// ----- what is chosen

void frmCollect::ShowKept() {
    kept_ = {.Plan = work_.schedule.Plan(),
             .Limits = ReadLimits(work_.outside.Store),
             .Delivery = ReadDelivery(work_.outside.Store),
             .AtStart = work_.outside.AtStart != nullptr && work_.outside.AtStart->IsOn()};
    const CollectPlan& plan = kept_.Plan;
    chkOn_->setChecked(plan.On);
    (plan.Step == PlanStep::Hours    ? optHours_
     : plan.Step == PlanStep::Weekly ? optWeekly_
                                     : optDaily_)
        ->setChecked(true);
    spnHours_->setValue(plan.Hours);
    cmbWeekday_->setCurrentIndex(plan.Weekday - 1);
    tmeAt_->setTime(QTime(plan.Minute / MinutesPerHour, plan.Minute % MinutesPerHour));
    const bool book = plan.Choice.Scope == CollectScope::WholeBook;
    (book ? optBook_ : optWindows_)->setChecked(true);
    chkSync_->setChecked(plan.Choice.SyncTime);
    chkAtStart_->setChecked(kept_.AtStart);
    spnMemory_->setValue(static_cast<int>(kept_.Limits.MemoryRecords));
    chkCommand_->setChecked(kept_.Delivery.RunsCommand);
    txtCommand_->setText(ToQt(kept_.Delivery.Command));
    const std::string file = DigestFile(work_.outside);
    lblFile_->setText(
        ToQt(file.empty() ? std::string() : "The newest digest always lies in " + file));
    lowest_ = kept_.Limits.LowestValues;
    const int logger = std::max(cmbLogger_->currentIndex(), 0);
    cmbLogger_->clear();
    for (const ClientRadio& entry : work_.book.Entries) {
        cmbLogger_->addItem(ToQt(InOneLine(ShownName(entry.Name))));
    }
    cmbLogger_->setCurrentIndex(logger < cmbLogger_->count() ? logger : 0);
    ShowLowest();
    lblState_->clear();
    Changed();
}

frmCollect::Choices frmCollect::Chosen() const {
    Choices choices = kept_;
    CollectPlan& plan = choices.Plan;
    plan.On = chkOn_->isChecked();
    plan.Step = optHours_->isChecked()    ? PlanStep::Hours
                : optWeekly_->isChecked() ? PlanStep::Weekly
                                          : PlanStep::Daily;
    plan.Hours = spnHours_->value();
    plan.Weekday = cmbWeekday_->currentIndex() + 1;
    plan.Minute = tmeAt_->time().hour() * MinutesPerHour + tmeAt_->time().minute();
    plan.Choice = {.Scope = optBook_->isChecked() ? CollectScope::WholeBook : CollectScope::Windows,
                   .SyncTime = chkSync_->isChecked()};
    choices.Limits.MemoryRecords = spnMemory_->value();
    choices.Limits.LowestValues = lowest_;
    choices.Delivery = {.RunsCommand = chkCommand_->isChecked(),
                        .Command = FromQt(txtCommand_->text())};
    choices.AtStart = chkAtStart_->isChecked();
    return choices;
}

bool frmCollect::IsChanged() const {
    const Choices chosen = Chosen();
    return chosen.Plan != kept_.Plan || chosen.Delivery != kept_.Delivery ||
           chosen.AtStart != kept_.AtStart ||
           chosen.Limits.MemoryRecords != kept_.Limits.MemoryRecords ||
           chosen.Limits.LowestValues != kept_.Limits.LowestValues;
}

void frmCollect::Changed() {
    spnHours_->setEnabled(optHours_->isChecked());
    cmbWeekday_->setEnabled(optWeekly_->isChecked());
    tmeAt_->setEnabled(!optHours_->isChecked());
    txtCommand_->setEnabled(chkCommand_->isChecked());
    cmdSave_->setEnabled(IsChanged());
}

void frmCollect::Save() {
    const Choices chosen = Chosen();
    std::string told = "Saved";
    if (chosen.AtStart != kept_.AtStart && work_.outside.AtStart != nullptr &&
        !work_.outside.AtStart->Switch(chosen.AtStart)) {
        told = "\"Open at Start\" could not be changed";
    }
    KeepLimits(chosen.Limits, work_.outside.Store);
    KeepDelivery(chosen.Delivery, work_.outside.Store);
    work_.schedule.Limits = chosen.Limits;
    work_.schedule.SetPlan(chosen.Plan);
    ShowKept();
    lblState_->setText(ToQt(told));
    Refresh();
}

// ----- lowest values

void frmCollect::ShowLowest() {
    lstLowest_->clear();
    for (const auto& [channel, value] : lowest_) {
        std::string name = MacText(channel.first);
        for (const ClientRadio& entry : work_.book.Entries) {
            if (entry.Mac == channel.first) {
                name = InOneLine(ShownName(entry.Name));
            }
        }
        lstLowest_->addItem(
            ToQt(name + ", channel " + IntegerToText(channel.second) + ": " + DoubleToText(value)));
    }
    cmdRemove_->setEnabled(false);
    cmdAdd_->setEnabled(cmbLogger_->count() > 0);
}

void frmCollect::AddLowest() {
    const int number = cmbLogger_->currentIndex() + 1;
    if (work_.book.Entries.Holds(number)) {
        lowest_[{work_.book.Entries[number].Mac, spnChannel_->value()}] = spnLowest_->value();
        ShowLowest();
        Changed();
    }
}

void frmCollect::RemoveLowest() {
    const int row = lstLowest_->currentRow();
    if (row >= 0 && row < static_cast<int>(lowest_.size())) {
        lowest_.erase(std::next(lowest_.begin(), row));
        ShowLowest();
        Changed();
    }
}

// ----- rounds

void frmCollect::Refresh() {
    const CollectSchedule& schedule = work_.schedule;
    const auto next = schedule.NextRound();
    lblNext_->setText(ToQt(next ? MomentText(*next) : "none"));
    lblLast_->setText(ToQt(schedule.LastRound().empty() ? "none" : schedule.LastRound()));
    lblRound_->setText(ToQt(schedule.StateText()));
    const bool runs = schedule.RoundRuns() || schedule.RoundWaits();
    cmdNow_->setEnabled(!runs);
    cmdStop_->setEnabled(runs);
    const std::string shown = schedule.LastRound() + (schedule.RoundRuns() ? "+" : "");
    const bool lacksNewest =
        schedule.RoundRuns() && (rounds_.empty() || rounds_.front().End.has_value());
    if (!listed_ || shown != lastShown_ || lacksNewest) {
        lastShown_ = shown;
        LoadRounds();
    } else if (schedule.RoundRuns()) {
        ShowRound();
    }
}

void frmCollect::LoadRounds() {
    const int before = listed_ ? std::max(cmbRounds_->currentIndex(), 0) : 0;
    const auto newest = rounds_.empty() ? 0 : rounds_.front().Id;
    try {
        ArchiveStore& store = *work_.outside.Archive;
        rounds_.clear();
        if (store.Exists()) {
            store.Open();
            rounds_ = store.Rounds(MostRounds);
        }
    } catch (const std::exception&) {
        // What another program holds is read the next time.
        lastShown_.clear();
    }
    const bool more = !rounds_.empty() && rounds_.front().Id != newest;
    {
        const QSignalBlocker quiet(cmbRounds_);
        cmbRounds_->clear();
        for (const ArchiveRound& round : rounds_) {
            cmbRounds_->addItem(ToQt(NameOfRound(round)));
        }
        // Who reads the newest one goes on reading the newest one.
        cmbRounds_->setCurrentIndex(more && before > 0 ? before + 1 : before);
    }
    listed_ = true;
    ShowRound();
}

void frmCollect::ShowRound() {
    const int row = cmbRounds_->currentIndex();
    const bool known = row >= 0 && row < static_cast<int>(rounds_.size());
    const ArchiveRound round = known ? rounds_[static_cast<std::size_t>(row)] : ArchiveRound();
    const bool runs = row == 0 && work_.schedule.RoundRuns() && !round.End;
    ShowText(*txtDigest_, !known || !round.End   ? ""
                          : round.Digest.empty() ? "Nothing needs a person."
                                                 : round.Digest);
    ShowText(*txtLog_, runs ? work_.schedule.LogText() : round.Log);
}
