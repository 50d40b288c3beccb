#ifndef ORVIA_HISTORY_HISTORY_CONTEXT_H
#define ORVIA_HISTORY_HISTORY_CONTEXT_H

#include <string>

#include "history/history_store.h"
#include "history/upload_listener.h"
#include "logger/frame_exchange.h"
#include "logger/logger_state.h"
#include "platform/host.h"
#include "records/link.h"
#include "records/main_view.h"
#include "records/operation_status.h"
#include "records/settings.h"

/// What the windows of history work on.
struct HistoryContext {
    Link& link;
    FrameExchange& exchange;
    const LoggerState& global;  ///< the current logger, whose records the store holds
    HistoryStore& store;
    Settings& settings;
    std::string& lastFolder;  ///< of the last history file saved, empty at start
    const Host& outside;
    MainView& view;
    OperationStatus& status;
    UploadListener* listener = nullptr;  ///< hears of every upload
};

#endif  // ORVIA_HISTORY_HISTORY_CONTEXT_H
