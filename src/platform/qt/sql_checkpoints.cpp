#include "platform/qt/sql_checkpoints.h"

#include <utility>

#include "platform/qt/sql_schema.h"
#include "platform/qt/sql_statement.h"

SqlCheckpoints::SqlCheckpoints(QString file) : file_(std::move(file)), thread_([this] { Run(); }) {}

SqlCheckpoints::~SqlCheckpoints() {
    {
        const std::lock_guard lock(mutex_);
        ends_ = true;
    }
    changed_.notify_one();
    thread_.join();
}

void SqlCheckpoints::Ask() {
    {
        const std::lock_guard lock(mutex_);
        asked_ = true;
    }
    changed_.notify_one();
}

bool SqlCheckpoints::AwaitAsked() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return asked_ || ends_; });
    asked_ = false;
    return !ends_;
}

void SqlCheckpoints::Run() {
    // A connection is made when there is something to do: most runs of the console upload nothing.
    while (AwaitAsked()) {
        try {
            RunAsked();
        } catch (const ArchiveFault&) {
            // The log stays as it is, which loses nothing; the next commits ask again.
            continue;
        }
    }
}

void SqlCheckpoints::RunAsked() {
    QSqlDatabase database = ConnectSql(file_, 0, SqlOpening::Existing);
    try {
        do {
            static_cast<void>(AskSql(database, "PRAGMA wal_checkpoint(PASSIVE)"));
        } while (AwaitAsked());
    } catch (const ArchiveFault&) {
        DisconnectSql(database);
        throw;
    }
    DisconnectSql(database);
}
