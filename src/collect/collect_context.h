#ifndef ORVIA_COLLECT_COLLECT_CONTEXT_H
#define ORVIA_COLLECT_COLLECT_CONTEXT_H

#include "archive/upload_filer.h"
#include "collect/late_answers.h"
#include "console/logger_operations.h"
#include "history/history_store.h"
#include "platform/archive_store.h"
#include "records/address_book.h"
#include "records/client_windows.h"
#include "records/diverted_boxes.h"

/// What a collection works on. The boxes of `operation` are those of the operator; what happens
/// while a logger is in hand is written down instead.
struct CollectContext {
    OperationContext operation;
    AddressBook& book;
    ClientWindows& windows;
    HistoryStore& history;
    UploadFiler& filer;
    ArchiveStore& archive;
    DivertedBoxes& windowBoxes;  ///< through which client windows tell
    const LateAnswers& late;
};

#endif  // ORVIA_COLLECT_COLLECT_CONTEXT_H
