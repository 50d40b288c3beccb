#ifndef ORVIA_HISTORY_UPLOAD_H
#define ORVIA_HISTORY_UPLOAD_H

#include <cstdint>
#include <string>

#include "history/history_store.h"
#include "history/upload_listener.h"
#include "logger/frame_exchange.h"
#include "logger/logger_state.h"
#include "platform/host.h"
#include "records/link.h"

// The upload of a logger's history; docs/history.md has the bytes.

/// Title of every box of Get History, and of the progress dialog.
inline constexpr const char* GetHistoryTitle = "Get History Data";

/// What the Tag of the progress dialog says.
inline constexpr const char* TagStarting = "Starting";  ///< loaded
inline constexpr const char* TagRunning = "Running";    ///< the upload owns the dialog
inline constexpr const char* TagCancel = "Cancel";      ///< stopped, or the store is full
inline constexpr const char* TagOkay = "Okay";          ///< acknowledged as complete

/// The progress dialog, as the upload sees it.
class UploadView {
 public:
    virtual ~UploadView() = default;

    /// One of the texts above: how far the dialog is, and how it was left.
    [[nodiscard]] virtual std::string Tag() const = 0;
    /// Sets it; a running upload looks at it behind each exchange.
    virtual void SetTag(const std::string& tag) = 0;

    // ProgressBar1, whose minimum is 0.
    virtual void SetBarMaximum(std::int32_t maximum) = 0;
    virtual void SetBarValue(std::int32_t value) = 0;
    virtual void SetRetries(const std::string& text) = 0;   // lblRetries
    virtual void SetProgress(const std::string& text) = 0;  // lblGetHistoryData

    /// Lets the operator press "Okay", which has the focus, and no longer "Stop".
    virtual void AllowOkay() = 0;
    virtual void Hide() = 0;
};

/// What the upload works on. The radio is on the logger, whose settings are the current ones.
struct UploadContext {
    Link& link;
    FrameExchange& exchange;
    const LoggerRecord& global;
    HistoryStore& store;
    MessageBoxes& boxes;
    UploadListener* listener = nullptr;  ///< hears of the records and of the end
    bool toTheEnd = false;  ///< counts a block full when no more records fit; see MaxPerBlock
};

/// Most records of a block that a logger with so many channels may count: 240 bytes by the size of
/// a record, rounded to nearest with ties to even. With 9 channels that is 11, of which 10 fit.
[[nodiscard]] int MaxPerBlock(int channels);
/// Records that fit into a block: the same but for 9 channels, whose full block of 10 MaxPerBlock
/// takes for the last one.
[[nodiscard]] int RecordsThatFit(int channels);

/// Reads all records of the logger into the store; `totalRecords` is how many it says it has. Runs
/// until the dialog hides: the Tag is then "Okay" or "Cancel", or still "Running" after an error,
/// of which the operator has been told. Does nothing unless the Tag is "Starting".
void RunUpload(const UploadContext& context, UploadView& view, std::int32_t totalRecords);

#endif  // ORVIA_HISTORY_UPLOAD_H
