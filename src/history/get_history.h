#ifndef ORVIA_HISTORY_GET_HISTORY_H
#define ORVIA_HISTORY_GET_HISTORY_H

#include <cstdint>
#include <memory>
#include <string>

#include "console/logger_operations.h"
#include "history/history_store.h"
#include "history/upload_listener.h"
#include "records/client_window.h"

/// The windows that Get History runs, each modal until it returns.
class HistoryDialogs {
 public:
    virtual ~HistoryDialogs() = default;

    /// Runs the upload of `totalRecords` records in its progress dialog; the Tag that it ends with.
    [[nodiscard]] virtual std::string RunUploadDialog(std::int32_t totalRecords) = 0;
    /// Shows the store's records. `window`, never null, is that of their logger and computes their
    /// flow; the operator may have closed it since, and opened another in its slot.
    virtual void ShowViewer(const std::shared_ptr<ClientWindow>& window) = 0;
};

/// "Get History": uploads the history of the logger whose window is the active one, and shows what
/// came. Guarded as every operation is. `listener`, if there is one, hears of the upload.
void GetHistory(const OperationContext& context, HistoryStore& store, HistoryDialogs& dialogs,
                UploadListener* listener = nullptr);

#endif  // ORVIA_HISTORY_GET_HISTORY_H
