#include "archive/frmArchive.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitter>

#include "archive/archive_words.h"
#include "archive/frmArchiveLists.h"
#include "history/frmProgress.h"
#include "platform/qt/text_qt.h"

namespace {

/// The wait pointer over all windows as long as it lives.
class Hourglass {
 public:
    Hourglass() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~Hourglass() { QApplication::restoreOverrideCursor(); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;
};

Moment DayOf(const QDateEdit& field) {
    const QDate day = field.date();
    return MomentOf(LocalTime{day.year(), day.month(), day.day()});
}

}  // namespace

// ----- opening and closing

void frmArchive::ShowOrRaise() {
    if (unloaded_) {
        return;
    }
    show();
    raise();
    activateWindow();
}

void frmArchive::Unload() {
    unloaded_ = true;
    step_.stop();
    hide();
}

void frmArchive::closeEvent(QCloseEvent* event) {
    event->accept();
    hide();
}

void frmArchive::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    Refresh();
    look_.start();
}

void frmArchive::hideEvent(QHideEvent* event) {
    QDialog::hideEvent(event);
    look_.stop();
    count_.stop();
}

// ----- what is shown

void frmArchive::Refresh() {
    const bool changed = session_.Refresh();
    ShowChoice();
    if (changed) {
        TakeList();
    }
    if (NextToCount()) {
        count_.start();
    }
}

/// Looks at the shared archive, or at this computer's.
void frmArchive::LookAt(bool shared) {
    session_.LookAtShared(shared);
    lblState_->clear();
    static_cast<void>(session_.Refresh());
    ShowChoice();
    TakeList();
    Refresh();
}

/// The choice of an archive is there while one is shared.
void frmArchive::ShowChoice() {
    pnlChoice_->setVisible(session_.MayShare());
    (session_.IsShared() ? optShared_ : optLocal_)->setChecked(true);
    if (!care_.Busy()) {
        care_.TakeCareOf(session_.Store(), session_.IsShared());
    }
}

void frmArchive::TakeList() {
    const bool first = model_->rowCount() == 0;
    model_->SetLines(session_.Loggers());
    const QString notice = ToQt(session_.Notice());
    lblNotice_->setText(notice);
    lblNotice_->setVisible(!notice.isEmpty());
    lists_->setVisible(notice.isEmpty());
    if (first && order_->rowCount() > 0) {
        lvwLoggers_->setCurrentIndex(order_->index(0, 0));
    }
    ShowCount();
    ShowUploads();
    ShowStates();
}

void frmArchive::ShowCount() {
    const int shown = order_->rowCount();
    const int all = model_->rowCount();
    const QString loggers = all == 1 ? QStringLiteral("logger") : QStringLiteral("loggers");
    lblCount_->setText(all == 0 ? QString()
                       : shown == all
                           ? QStringLiteral("%1 %2").arg(all).arg(loggers)
                           : QStringLiteral("%1 of %2 %3").arg(shown).arg(all).arg(loggers));
}

void frmArchive::ShowUploads() {
    const std::vector<LoggerLine> chosen = Chosen();
    const bool one = chosen.size() == 1;
    uploads_->SetLines(one ? session_.UploadsOf(chosen.front().Summary.Logger.Id)
                           : std::vector<UploadLine>());
    lblUploads_->setText(
        one ? QStringLiteral("&Uploads of ") +
                  EscapedAmpersands(LoggerLabel(chosen.front().Summary.Logger.Name)) +
                  QLatin1Char(':')
            : QStringLiteral("&Uploads: choose one logger to see them."));
}

void frmArchive::ShowStates() {
    const auto chosen = lvwLoggers_->selectionModel()->selectedRows().size();
    const bool idle = !care_.Busy() && !asking_;
    const bool days = cmbPeriod_->currentIndex() == cmbPeriod_->count() - 1;
    cmdPlot_->setEnabled(chosen > 0 && !asking_);
    cmdReport_->setEnabled(chosen == 1 && !asking_);
    cmdSaveCsv_->setEnabled(chosen == 1 && !asking_);
    cmdDelete_->setEnabled(chosen == 1 && idle);
    cmdBackUp_->setEnabled(session_.HasArchive() && idle);
    cmdCheck_->setEnabled(session_.HasArchive() && idle);
    optShared_->setEnabled(idle);
    optLocal_->setEnabled(idle);
    dtpFrom_->setEnabled(days);
    dtpTo_->setEnabled(days);
    cmdCancel_->setVisible(care_.CanCancel());
    ProgressBar_->setVisible(care_.Busy());
    if (care_.Busy()) {
        const auto done = care_.PerCent();
        ProgressBar_->setMaximum(done ? 100 : 0);
        ProgressBar_->setValue(done.value_or(0));
        lblState_->setText(ToQt(care_.Doing()));
    }
}

void frmArchive::TakeFilter(const QString& text) {
    order_->SetFilter(FromQt(text));
    ShowCount();
    ShowUploads();
    ShowStates();
    count_.start();
}

// ----- gaps

std::optional<std::int64_t> frmArchive::NextToCount() const {
    const int last = order_->rowCount() - 1;
    const int top = lvwLoggers_->rowAt(0);
    const int bottom = lvwLoggers_->rowAt(lvwLoggers_->viewport()->height() - 1);
    // In order of their gaps all must be known.
    const bool all = order_->sortColumn() == static_cast<int>(LoggerColumn::Gaps);
    const int from = all ? 0 : std::max(top, 0);
    const int to = all || bottom < 0 ? last : std::min(bottom, last);
    for (int row = from; isVisible() && row <= to; ++row) {
        const LoggerLine& line = order_->Line(row);
        if (session_.LacksGaps(line)) {
            return line.Summary.Logger.Id;
        }
    }
    return std::nullopt;
}

void frmArchive::CountGaps() {
    const auto logger = NextToCount();
    if (!logger) {
        count_.stop();
        return;
    }
    const auto line = session_.CountOn(*logger);
    if (line) {
        const LoggerLine& counted = session_.Loggers()[*line];
        model_->SetGaps(counted.Summary.Logger.Id, *counted.Gaps);
    } else if (!session_.HasArchive()) {
        // It was lost meanwhile.
        TakeList();
        count_.stop();
    }
}

// ----- what is chosen

std::vector<LoggerLine> frmArchive::Chosen() const {
    std::vector<LoggerLine> chosen;
    for (const QModelIndex& row : lvwLoggers_->selectionModel()->selectedRows()) {
        chosen.push_back(order_->Line(row.row()));
    }
    return chosen;
}

PeriodChoice frmArchive::ChosenPeriod() const {
    const QVariant name = cmbPeriod_->currentData();
    PeriodChoice choice{.Name = {}, .From = DayOf(*dtpFrom_), .To = DayOf(*dtpTo_)};
    if (name.isValid()) {
        choice.Name = static_cast<NamedPeriod>(name.toInt());
    }
    return choice;
}

/// Does what lets events run, with the buttons out of reach meanwhile.
template <typename Act>
auto frmArchive::WhileAsking(Act act) {
    asking_ = true;
    ShowStates();
    auto result = act();
    asking_ = false;
    ShowStates();
    return result;
}

ChosenSeries frmArchive::ReadChosen() {
    std::vector<std::int64_t> loggers;
    for (const LoggerLine& line : Chosen()) {
        loggers.push_back(line.Summary.Logger.Id);
    }
    ChosenSeries chosen;
    try {
        const Hourglass pointer;
        chosen = session_.Read(loggers, ChosenPeriod());
    } catch (const ArchiveFault& fault) {
        session_.Lost(fault);
        Tell({.Good = false, .Text = session_.WordsOf(fault)});
        return {};
    }
    lblState_->setText(
        chosen.Series.empty() ? QStringLiteral("There are no records in this period.") : QString());
    return chosen;
}

// ----- what is made of it

void frmArchive::Plot() {
    const ChosenSeries chosen = ReadChosen();
    if (!chosen.Series.empty() && ShowPlot) {
        ShowPlot(chosen.Series, chosen.Span);
    }
}

void frmArchive::Report() {
    const ChosenSeries chosen = ReadChosen();
    if (!chosen.Series.empty() && ShowReport) {
        ShowReport(chosen.Series.front(), chosen.Span);
    }
}

void frmArchive::SaveCsv() {
    const ChosenSeries chosen = ReadChosen();
    if (chosen.Series.empty()) {
        return;
    }
    lblState_->setText(ToQt(WhileAsking([this, &chosen] {
        ProgressBar_->setRange(0, static_cast<int>(chosen.Series.front()->Values().RecordCount()));
        BarFollower follower(*ProgressBar_);
        return session_.SaveCsv(chosen, chkMachine_->isChecked(), follower);
    })));
}

void frmArchive::DeleteLogger() {
    const std::vector<LoggerLine> chosen = Chosen();
    if (chosen.size() != 1 || Refuses(session_.WhyNotDelete())) {
        return;
    }
    const ArchiveLogger logger = chosen.front().Summary.Logger;
    const BoxAnswer answer = WhileAsking([this, &logger] {
        return session_.Work().windows.outside.Boxes.Show(session_.DeletionQuestion(logger));
    });
    if (answer == BoxAnswer::Yes && !unloaded_) {
        care_.Delete(logger);
        step_.start();
    }
    ShowStates();
}

void frmArchive::BackUp() {
    if (Refuses(session_.WhyNotBackUp())) {
        return;
    }
    const auto path = WhileAsking([this] { return session_.AskForBackUp(); });
    if (path && !unloaded_) {
        care_.BackUp(*path);
        step_.start();
    }
    ShowStates();
}

void frmArchive::Check() {
    care_.Check();
    step_.start();
    ShowStates();
}

void frmArchive::Cancel() {
    care_.Cancel();
}

void frmArchive::StepCare() {
    const auto result = care_.Step();
    if (!care_.Busy()) {
        step_.stop();
    }
    ShowStates();
    if (result) {
        Refresh();
        Tell(*result);
    }
}

bool frmArchive::Refuses(const std::optional<std::string>& why) {
    if (why) {
        Tell({.Good = false, .Text = *why});
    }
    return why.has_value();
}

void frmArchive::Tell(const CareResult& result) {
    if (result.Good) {
        lblState_->setText(ToQt(result.Text));
        return;
    }
    lblState_->clear();
    WhileAsking([this, &result] {
        return session_.Work().windows.outside.Boxes.Show(
            {.Text = result.Text, .Title = ArchiveTitle, .Icon = BoxIcon::Exclamation});
    });
}
