#include "history/get_history.h"

#include "console/operation_shape.h"
#include "history/upload.h"

namespace {

class GetHistoryOperation {
 public:
    GetHistoryOperation(const OperationContext& context, HistoryStore& store,
                        HistoryDialogs& dialogs, UploadListener* listener)
        : context_(context), store_(store), dialogs_(dialogs), listener_(listener) {}

    /// False if the logger could not be reached.
    [[nodiscard]] bool Run() {
        const Target target = ActiveWindow(context_);
        if (!SelectRadioOf(context_, target) || !target.Window->GetStatus()) {
            return false;
        }
        Point(Pointer::Normal);
        if (target.Window->NumSamples() == 0) {
            Tell("No history in memory!", BoxIcon::Information);
        } else if (!ReadSettings(*target.Window)) {
            Tell("Error: unable to read logger settings!", BoxIcon::Information);
        } else {
            UploadAndShow(target);
        }
        return true;
    }

    void Tell(const std::string& text, BoxIcon icon) const {
        Point(Pointer::Normal);
        context_.radio.boxes.Show({.Text = text, .Title = GetHistoryTitle, .Icon = icon});
    }

 private:
    void Point(Pointer pointer) const { context_.radio.view.SetPointer(pointer); }

    [[nodiscard]] bool ReadSettings(ClientWindow& window) const {
        if (window.SettingsValid() == False) {
            Point(Pointer::Hourglass);
            static_cast<void>(window.GetSettings());
            Point(Pointer::Normal);
        }
        return window.SettingsValid() != False;
    }

    void UploadAndShow(const Target& target) {
        target.Window->ClientSetGlobalState();
        const std::string tag = RunUploadOf(target);
        if (store_.HistoryCount() >= 1 && (tag == TagOkay || tag == TagCancel)) {
            Show(target);
        }
        if (!ShuttingDown()) {
            static_cast<void>(target.Window->GetStatus());
        }
    }

    [[nodiscard]] std::string RunUploadOf(const Target& target) {
        const std::int32_t records = target.Window->NumSamples();
        if (listener_ == nullptr) {
            return dialogs_.RunUploadDialog(records);
        }
        listener_->Began({.Mac = target.Radio->Mac,
                          .Name = target.Radio->Name,
                          .Logger = context_.global,
                          .Table = target.Window->FlowPoints(),
                          .Records = records});
        const std::string tag = dialogs_.RunUploadDialog(records);
        listener_->Settle();
        return tag;
    }

    void Show(const Target& target) {
        if (ShuttingDown()) {
            return;
        }
        Point(Pointer::Hourglass);
        static_cast<void>(target.Window->GetStatus());
        dialogs_.ShowViewer(target.Window);
        Point(Pointer::Normal);
    }

    [[nodiscard]] bool ShuttingDown() const { return context_.radio.link.ShuttingDown != False; }

    const OperationContext& context_;
    HistoryStore& store_;
    HistoryDialogs& dialogs_;
    UploadListener* listener_;
};

}  // namespace

void GetHistory(const OperationContext& context, HistoryStore& store, HistoryDialogs& dialogs,
                UploadListener* listener) {
    if (!MayStart(context)) {
        return;
    }
    const OperationScope scope(context);
    store.Clear();
    GetHistoryOperation operation(context, store, dialogs, listener);
    bool reached = false;
    try {
        reached = operation.Run();
    } catch (const Fault&) {
        reached = false;
    }
    if (!reached) {
        operation.Tell("Error: upload not successful!", BoxIcon::Stop);
    }
}
