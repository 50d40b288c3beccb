#ifndef ORVIA_HISTORY_UPLOAD_LISTENER_H
#define ORVIA_HISTORY_UPLOAD_LISTENER_H

#include <cstdint>
#include <span>
#include <string>

#include "history/history_store.h"
#include "logger/logger_state.h"
#include "records/address_book.h"

/// What is known of an upload when it begins.
struct UploadStart {
    MacAddress Mac = {};       ///< of the logger's radio
    std::string Name;          ///< of its entry in the book
    LoggerRecord Logger;       ///< its settings as they were read
    FlowTable Table;           ///< the points of its flow device
    std::int32_t Records = 0;  ///< that it says it has
};

/// How an upload ends.
enum class UploadOutcome {
    Complete,  ///< the last record came
    Stopped,   ///< by the operator, by the end of the program, or since no more records fit
    Failed
};

/// Hears of uploads while they run, in this order: Began, Took any number of times, Ended, Settle.
/// Nothing that it does shows in the upload: it neither waits nor faults.
class UploadListener {
 public:
    virtual ~UploadListener() = default;

    /// An upload is about to run. One that is not heard of again was never started.
    virtual void Began(const UploadStart& start) = 0;
    /// Records that came, behind those that came before.
    virtual void Took(std::span<const HistoryRecord> records) = 0;
    virtual void Ended(UploadOutcome outcome) = 0;
    /// The upload's dialog has gone: what the operator must know can be told now.
    virtual void Settle() = 0;
};

#endif  // ORVIA_HISTORY_UPLOAD_LISTENER_H
