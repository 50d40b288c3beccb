#include "history/frmGetHistory.h"

#include "history/frmGetHistoryData.h"
#include "history/frmHistory.h"
#include "history/get_history.h"

namespace {

class HistoryWindows final : public HistoryDialogs {
 public:
    HistoryWindows(SharedState& state, MainView& view, QWidget* parent)
        : state_(state), view_(view), parent_(parent) {}

    std::string RunUploadDialog(std::int32_t totalRecords) override {
        frmGetHistoryData dialog(state_, totalRecords, parent_);
        dialog.exec();
        return dialog.Tag();
    }

    void ShowViewer(const std::shared_ptr<ClientWindow>& window) override {
        frmHistory viewer(state_, view_, window, parent_);
        viewer.Load();
        // The program can close while the rows are formatted.
        if (state_.LinkRecord.ShuttingDown == False) {
            viewer.exec();
        }
    }

 private:
    SharedState& state_;
    MainView& view_;
    QWidget* parent_;
};

}  // namespace

void GetHistoryInWindows(const OperationContext& context, SharedState& state, MainView& view,
                         QWidget* parent) {
    HistoryWindows windows(state, view, parent);
    GetHistory(context, state.History, windows);
}
