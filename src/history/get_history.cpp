#include "history/get_history.h"

#include "common/number_text.h"
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
        if (!SelectRadioOf(context_, target) || !ReadStatus(target)) {
            return false;
        }
        Point(Pointer::Normal);
        if (target.Window->NumSamples() == 0) {
            Status().Came(NameOf(target) + " has no history in memory");
            Tell("No history in memory!", BoxIcon::Information);
        } else if (!ReadSettings(target)) {
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

    [[nodiscard]] OperationStatus& Status() const { return context_.radio.status; }

    [[nodiscard]] bool ReadStatus(const Target& target) const {
        Status().Doing("Reading status of " + NameOf(target));
        const bool answered = target.Window->GetStatus();
        if (!answered) {
            Status().Came(NameOf(target) + " did not answer", false);
        }
        return answered;
    }

    [[nodiscard]] bool ReadSettings(const Target& target) const {
        if (target.Window->SettingsValid() == False) {
            Point(Pointer::Hourglass);
            ReadSettingsOf(context_, target);
            Point(Pointer::Normal);
        }
        return target.Window->SettingsValid() != False;
    }

    void UploadAndShow(const Target& target) {
        target.Window->ClientSetGlobalState();
        Status().Doing("Uploading history of " + NameOf(target));
        const std::string tag = RunUploadOf(target);
        Status().Came("History of " + NameOf(target) + ": " + IntegerToText(store_.HistoryCount()) +
                      " of " + IntegerToText(target.Window->NumSamples()) + " records uploaded");
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
                          .Logger = static_cast<const LoggerRecord&>(context_.global),
                          .Table = target.Window->FlowPoints(),
                          .Records = records});
        std::string tag = dialogs_.RunUploadDialog(records);
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
