#ifndef ORVIA_ARCHIVE_ARCHIVE_TRANSACTION_H
#define ORVIA_ARCHIVE_ARCHIVE_TRANSACTION_H

#include "platform/archive_store.h"

/// A transaction, taken back unless it was committed.
class ArchiveTransaction {
 public:
    enum class Kind { Reading, Writing };

    ArchiveTransaction(ArchiveStore& store, Kind kind) : store_(store) {
        try {
            kind == Kind::Writing ? store_.Begin() : store_.BeginReading();
        } catch (...) {
            // It may have begun all the same.
            store_.Rollback();
            throw;
        }
    }
    ~ArchiveTransaction() {
        if (!committed_) {
            store_.Rollback();
        }
    }
    ArchiveTransaction(const ArchiveTransaction&) = delete;
    ArchiveTransaction& operator=(const ArchiveTransaction&) = delete;

    void Commit() {
        store_.Commit();
        committed_ = true;
    }

 private:
    ArchiveStore& store_;
    bool committed_ = false;
};

#endif  // ORVIA_ARCHIVE_ARCHIVE_TRANSACTION_H
