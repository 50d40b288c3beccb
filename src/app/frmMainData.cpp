// The windows of the main window on data: flow tables, what was collected, plots and reports.
#include "app/frmMain.h"
#include "archive/frmArchive.h"
#include "archive/frmArchiveSettings.h"
#include "archive/frmPlot.h"
#include "archive/frmReport.h"
#include "archive/viewed_series.h"
#include "client/frmClient.h"
#include "common/fault.h"
#include "common/text.h"
#include "flow/frmRating.h"
#include "history/frmGetHistory.h"

void frmMain::ShowRating() {
    if (rating_ == nullptr) {
        rating_ = new frmRating(state_.Outside, this);
    }
    rating_->ShowOrRaise();
}

void frmMain::ShowArchive() {
    if (archive_ == nullptr) {
        archive_ = new frmArchive(contexts_.Archive(), this);
        archive_->ShowPlot = [this](auto series, const Period& span) {
            PlotSeries(std::move(series), span);
        };
        archive_->ShowReport = [this](auto series, const Period& span) {
            ReportSeries(std::move(series), span);
        };
    }
    archive_->ShowOrRaise();
}

void frmMain::ShowArchiveSettings() {
    if (archiveSettings_ == nullptr) {
        archiveSettings_ =
            new frmArchiveSettings({.sharing = state_.Sharing, .outside = state_.Outside}, this);
    }
    archiveSettings_->ShowOrRaise();
}

void frmMain::FollowSharing() {
    const auto line = state_.Sharing.Tick();
    // A walk that runs writes a line of its own, piece by piece.
    if (line && state_.OperationsRecord.OperationBusy == False) {
        log_->AppendLog(*line + std::string(LineBreak));
    }
}

void frmMain::PlotSeries(std::vector<std::shared_ptr<const NamedSeries>> series,
                         const Period& span) {
    (new frmPlot(contexts_.Collected(), std::move(series), span, this))->show();
}

void frmMain::ReportSeries(std::shared_ptr<const NamedSeries> series, const Period& span) {
    (new frmReport(contexts_.Collected(), std::move(series), span, this))->show();
}

void frmMain::ShowLivePlot() {
    for (const std::shared_ptr<ClientWindow>& window : state_.Windows.Slots) {
        const auto client = std::dynamic_pointer_cast<frmClient>(window);
        if (client == nullptr || client->IsActive() == False) {
            continue;
        }
        const std::string name = client->Caption();
        auto* plot = new frmPlot(
            contexts_.Collected(), name,
            [this, name, closed = std::weak_ptr(client)] {
                const std::shared_ptr<frmClient> open = closed.lock();
                return open ? state_.Live.Of(open->Model(), name) : nullptr;
            },
            this);
        plot->show();
        return;
    }
    state_.Boxes.Show({.Text = "There is no active client window. A live plot shows the readings "
                               "of one.",
                       .Title = "Live Plot",
                       .Icon = BoxIcon::Exclamation});
}

void frmMain::UploadHistory(const OperationContext& context) {
    GetHistoryInWindows(
        context, contexts_.History(), this,
        [this](const FlowTable& points, QDialog& viewer) { PlotViewed(points, viewer); });
}

void frmMain::PlotViewed(const FlowTable& points, QDialog& viewer) {
    auto series = ViewedSeries(state_.History, state_.Logger, points);
    // Whatever does not belong to the modal viewer is out of reach beside it.
    auto* plot = new frmPlot(contexts_.Collected(), {std::move(series)}, {}, &viewer);
    connect(&viewer, &QDialog::finished, plot, [this, plot] {
        const bool seen = plot->isVisible();
        plot->setParent(this, plot->windowFlags());
        plot->setVisible(seen);
    });
    plot->show();
}

void frmMain::CloseDataWindows() {
    if (rating_ != nullptr) {
        TrapFault([this] { rating_->Unload(); });
    }
    if (archive_ != nullptr) {
        TrapFault([this] { archive_->Unload(); });
    }
    if (archiveSettings_ != nullptr) {
        TrapFault([this] { archiveSettings_->Unload(); });
    }
    for (frmPlot* plot : findChildren<frmPlot*>()) {
        TrapFault([plot] { plot->Unload(); });
    }
    for (frmReport* report : findChildren<frmReport*>()) {
        TrapFault([report] { report->close(); });
    }
}
