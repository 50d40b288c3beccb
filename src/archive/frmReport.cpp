#include "archive/frmReport.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <chrono>
#include <utility>

#include "archive/frmReportTable.h"
#include "archive/report_words.h"
#include "platform/qt/text_qt.h"

namespace {

using namespace std::chrono_literals;

/// What is ready by then is shown without a sign of work.
constexpr auto Patience = 100ms;
constexpr int PollMilliseconds = 40;

}  // namespace

frmReport::~frmReport() = default;

void frmReport::closeEvent(QCloseEvent* event) {
    choice_.Remember();
    event->accept();
    if (IsWorking()) {
        // It goes when the work is done, so that nobody has to wait.
        setAttribute(Qt::WA_DeleteOnClose, false);
        gone_ = true;
    }
}

// ----- working out

void frmReport::Refresh() {
    const std::string fault = choice_.Fault();
    ShowFault(fault);
    if (!fault.empty()) {
        stale_ = false;
    } else if (IsWorking()) {
        stale_ = true;
    } else {
        StartWork();
    }
    EnableOutput();
}

void frmReport::StartWork() {
    stale_ = false;
    asked_ = choice_.Request();
    made_ = std::async(std::launch::async,
                       [make = Make, series = series_, request = asked_, &clock = outside_.Clock] {
                           return make(series->Values(), request, clock);
                       });
    if (made_.wait_for(Patience) == std::future_status::ready) {
        TakeWork();
        return;
    }
    ShowWorking(true);
    poll_.start(PollMilliseconds);
}

void frmReport::TakeWork() {
    if (made_.wait_for(0s) != std::future_status::ready) {
        return;
    }
    poll_.stop();
    report_ = std::make_shared<const Report>(made_.get());
    if (gone_) {
        deleteLater();
        return;
    }
    shown_ = asked_;
    if (stale_) {
        StartWork();
        return;
    }
    ShowWorking(false);
    ShowReport();
}

void frmReport::ShowWorking(bool working) {
    ProgressBar_->setVisible(working);
    lblState_->setVisible(!working);
    working ? setCursor(Qt::WaitCursor) : unsetCursor();
    EnableOutput();
}

void frmReport::ShowReport() {
    table_->SetReport(report_);
    ShowFault(choice_.Fault());
    EnableOutput();
}

void frmReport::ShowFault(const std::string& fault) {
    lblState_->clear();
    QFont letters = font();
    letters.setBold(!fault.empty() || (report_ != nullptr && !HasRecords(*report_)));
    lblSummary_->setFont(letters);
    if (!fault.empty()) {
        lblSummary_->setText(ToQt(fault));
    } else if (report_ != nullptr) {
        lblSummary_->setText(ToQt(PeriodSummary(*report_)));
    }
}

void frmReport::EnableOutput() {
    const bool ready =
        !IsWorking() && choice_.Fault().empty() && report_ != nullptr && !report_->Rows.empty();
    for (QPushButton* button : {cmdCopy_, cmdCsv_, cmdPdf_, cmdPrint_}) {
        button->setEnabled(ready);
    }
}
