#include "platform/qt/sql_beside.h"

#include <chrono>
#include <future>

#include "platform/qt/sql_schema.h"
#include "platform/qt/sql_statement.h"

namespace {

constexpr std::chrono::milliseconds BetweenLooks(40);

constexpr const char* WrongCounts =
    "SELECT mac FROM loggers WHERE records <> "
    "(SELECT count(*) FROM records WHERE records.logger = loggers.id)";
constexpr const char* Strays =
    "SELECT count(*) FROM records WHERE upload NOT IN (SELECT id FROM uploads)";

}  // namespace

void RunSqlBeside(const std::function<QSqlDatabase()>& connect,
                  const std::function<void(const QSqlDatabase&)>& work,
                  const ArchiveStore::Meanwhile& meanwhile) {
    auto done = std::async(std::launch::async, [&connect, &work] {
        QSqlDatabase database = connect();
        try {
            work(database);
        } catch (const ArchiveFault&) {
            DisconnectSql(database);
            throw;
        }
        DisconnectSql(database);
    });
    while (done.wait_for(BetweenLooks) == std::future_status::timeout) {
        meanwhile();
    }
    done.get();
}

void CheckSqlRows(const QSqlDatabase& database, SqlDialect& dialect,
                  std::vector<std::string>& wrong) {
    SqlStatement counts(database, WrongCounts, dialect);
    for (SqlRows rows(counts); rows.Next();) {
        wrong.push_back("wrong count of records: " + rows->Text(0));
    }
    if (AskSql(database, Strays, dialect) != 0) {
        wrong.emplace_back("records without an upload");
    }
}
