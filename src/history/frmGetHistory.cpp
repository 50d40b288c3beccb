#include "history/frmGetHistory.h"

#include "history/frmGetHistoryData.h"
#include "history/frmHistory.h"
#include "history/get_history.h"

namespace {

class HistoryWindows final : public HistoryDialogs {
 public:
    HistoryWindows(const HistoryContext& history, QWidget* parent, const ShowRecordPlot& plot)
        : history_(history), parent_(parent), plot_(plot) {}

    std::string RunUploadDialog(std::int32_t totalRecords) override {
        frmGetHistoryData dialog(history_, totalRecords, parent_);
        dialog.exec();
        return dialog.Tag();
    }

    void ShowViewer(const std::shared_ptr<ClientWindow>& window) override {
        frmHistory viewer(history_, window, parent_, plot_);
        viewer.Load();
        // The program can close while the rows are formatted.
        if (history_.link.ShuttingDown == False) {
            viewer.exec();
        }
    }

 private:
    const HistoryContext& history_;
    QWidget* parent_;
    const ShowRecordPlot& plot_;
};

}  // namespace

void GetHistoryInWindows(const OperationContext& context, const HistoryContext& history,
                         QWidget* parent, const ShowRecordPlot& plot) {
    HistoryWindows windows(history, parent, plot);
    GetHistory(context, history.store, windows, history.listener);
}
